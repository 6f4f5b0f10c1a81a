// Compares the registration with the hand-written lists of the interface and its identifiers.

#include "com/windows/Client.h"
#include "com/windows/Import.h"
#include "com/windows/Members.h"

#include <objsafe.h>
#include <winver.h>

#include <fstream>

namespace qx::test {
namespace {

using Sections = std::map<std::string, std::set<std::string>>;

// The file is found through the environment, since the program does not run near its sources.
Sections Listed(const std::string& file) {
    const char* const folder = std::getenv("QX_INTERFACE");
    std::ifstream stream((folder == nullptr ? "" : folder) + file);
    EXPECT_TRUE(stream) << file;
    Sections sections;
    std::set<std::string>* section = nullptr;
    for (std::string line; std::getline(stream, line);) {
        if (line.starts_with('#'))
            continue;
        if (line.empty()) {
            section = nullptr;
        } else if (section == nullptr) {
            section = &sections[line];
        } else {
            // in a type library, raw memory is an ordinary string
            for (std::size_t at = 0; (at = line.find("As Block", at)) != std::string::npos;)
                line.replace(at, 8, "As String");
            section->insert(line);
        }
    }
    return sections;
}

std::string ParametersText(const std::vector<LibraryMember::Parameter>& parameters) {
    std::string text;
    for (const auto& parameter : parameters) {
        text += text.empty() ? "" : ", ";
        text += parameter.isOptional ? "Optional " : "";
        text += parameter.byReference ? "ByRef " : "";
        text += parameter.name + " As " + parameter.type;
        text += parameter.ifMissing.empty() ? "" : " = " + parameter.ifMissing;
    }
    return "(" + text + ")";
}

std::set<std::string> LinesOf(const LibraryClass& type) {
    std::set<std::string> lines;
    std::map<DISPID, std::pair<std::string, std::string>> properties; // directions, the rest
    const auto asText = [](const std::string& type) { return type.empty() ? "" : " As " + type; };
    for (const LibraryMember& member : type.members) {
        if (member.kind == INVOKE_FUNC) {
            lines.insert("method " + member.name + ParametersText(member.parameters) +
                         asText(member.result));
            continue;
        }
        auto& [directions, rest] = properties[member.id];
        directions += directions.empty() ? "" : ", ";
        if (member.kind == INVOKE_PROPERTYGET) {
            directions += "get";
            rest = member.name +
                   (member.parameters.empty() ? "" : ParametersText(member.parameters)) +
                   asText(member.result);
        } else {
            directions += member.kind == INVOKE_PROPERTYPUT ? "let" : "set";
            const std::string own = member.name + asText(member.parameters.back().type);
            EXPECT_TRUE(rest.empty() || rest == own) << own;
            rest = own;
        }
    }
    for (const auto& [id, property] : properties)
        lines.insert(property.first + " " + property.second);
    for (const LibraryMember& event : type.events)
        lines.insert("event " + std::to_string(event.id) + " " + event.name +
                     ParametersText(event.parameters));
    return lines;
}

// The registration shows whether a control is visible at run time.
std::string LookOf(const LibraryClass& type) {
    DWORD status = 0;
    HKEY control = nullptr;
    const std::string key = "CLSID\\" + GuidText(type.clsid) + "\\Control";
    if (RegOpenKeyExA(HKEY_CLASSES_ROOT, key.c_str(), 0, KEY_READ, &control) != ERROR_SUCCESS)
        return "plain ";
    RegCloseKey(control);
    EXPECT_EQ(OleRegGetMiscStatus(type.clsid, DVASPECT_CONTENT, &status), S_OK) << type.name;
    return (status & OLEMISC_INVISIBLEATRUNTIME) != 0 ? "invisible " : "visible ";
}

class ComRegistration : public ComClient {
protected:
    static void ExpectSame(const Sections& found, const Sections& expected) {
        EXPECT_GT(expected.size(), 20U);
        for (const auto& [heading, lines] : found)
            EXPECT_TRUE(expected.contains(heading)) << heading << " is not listed";
        for (const auto& [heading, lines] : expected) {
            ASSERT_TRUE(found.contains(heading)) << heading << " is missing";
            for (const std::string& line : found.at(heading))
                EXPECT_TRUE(lines.contains(line)) << heading << ": not listed: " << line;
            for (const std::string& line : lines)
                EXPECT_TRUE(found.at(heading).contains(line)) << heading << ": missing: " << line;
        }
    }
};

TEST_F(ComRegistration, TypeLibraryHasAllThatIsListedAndNothingElse) {
    const Library library = RegisteredLibrary();
    Sections found;
    for (const auto& [name, enumeration] : library.enumerations)
        for (const auto& [value, number] : enumeration.values)
            found["enum " + name].insert(value + " = " + std::to_string(number));
    for (const LibraryClass& type : library.classes)
        found[LookOf(type) + type.name] = LinesOf(type);
    ExpectSame(found, Listed("interface.txt"));
}

TEST_F(ComRegistration, IdentifiersAreThoseOfTheList) {
    const Library library = RegisteredLibrary();
    Sections expected = Listed("identifiers.txt");
    EXPECT_EQ(expected["QXControls"], std::set<std::string>{GuidText(library.id) + " 1.0"});
    for (const auto& [name, enumeration] : library.enumerations)
        EXPECT_EQ(expected[name], std::set<std::string>{GuidText(enumeration.iid)}) << name;
    for (const LibraryClass& type : library.classes) {
        std::set<std::string> lines = {"class " + GuidText(type.clsid)};
        for (const auto& [name, iid] : type.interfaces)
            lines.insert(name + " " + GuidText(iid));
        for (const LibraryMember& member : type.members)
            lines.insert(std::to_string(member.id) + " " + member.name);
        EXPECT_EQ(expected[type.name], lines) << type.name;

        CLSID registered{};
        EXPECT_EQ(CLSIDFromProgID(Wide("QXControls." + type.name).c_str(), &registered), S_OK);
        EXPECT_TRUE(IsEqualGUID(registered, type.clsid)) << type.name;
    }
}

// Web pages must not create objects that write to a keyboard.
TEST_F(ComRegistration, NoClassIsSafeForWebPages) {
    for (const LibraryClass& type : RegisteredLibrary().classes) {
        const auto object = NewObject(Wide("QXControls." + type.name));
        EXPECT_FALSE(object.As<IUnknown>(IID_IObjectSafety)) << type.name;
        for (const char* const category :
             {"{7DD95801-9882-11CF-9FA9-00AA006C42C4}", "{7DD95802-9882-11CF-9FA9-00AA006C42C4}"}) {
            const std::string key =
                "CLSID\\" + GuidText(type.clsid) + "\\Implemented Categories\\" + category;
            HKEY found = nullptr;
            EXPECT_EQ(RegOpenKeyExA(HKEY_CLASSES_ROOT, key.c_str(), 0, KEY_READ, &found),
                      ERROR_FILE_NOT_FOUND)
                << key;
        }
    }
}

TEST_F(ComRegistration, TheFileShowsItsVersion) {
    const auto object = NewObject(L"QXControls.OptionBool"); // loads the file
    wchar_t file[MAX_PATH] = {};
    GetModuleFileNameW(GetModuleHandleW(L"QXControls.ocx"), file, MAX_PATH);
    std::vector<char> block(GetFileVersionInfoSizeW(file, nullptr));
    ASSERT_TRUE(GetFileVersionInfoW(file, 0, static_cast<DWORD>(block.size()), block.data()));
    UINT size = 0;
    VS_FIXEDFILEINFO* numbers = nullptr;
    ASSERT_TRUE(VerQueryValueW(block.data(), L"\\", reinterpret_cast<void**>(&numbers), &size));
    EXPECT_EQ(std::to_string(HIWORD(numbers->dwFileVersionMS)) + "." +
                  std::to_string(LOWORD(numbers->dwFileVersionMS)) + "." +
                  std::to_string(HIWORD(numbers->dwFileVersionLS)),
              QX_VERSION);
    const auto text = [&](const std::wstring& name) {
        wchar_t* value = nullptr;
        const std::wstring place = L"\\StringFileInfo\\040904B0\\" + name;
        return VerQueryValueW(block.data(), place.c_str(), reinterpret_cast<void**>(&value), &size)
                   ? Narrow(value)
                   : "missing";
    };
    EXPECT_EQ(text(L"FileVersion"), QX_VERSION);
    EXPECT_EQ(text(L"OriginalFilename"), "QXControls.ocx");
    EXPECT_EQ(text(L"OLESelfRegister"), ""); // installers check for it
}

// An unregistered server, in a process that may not write the machine's keys.
class ComRegistrationWithoutRights : public testing::Test {
protected:
    static LSTATUS WINAPI Refuse(HKEY hive, LPCWSTR name, DWORD reserved, LPWSTR type,
                                 DWORD options, REGSAM rights, const LPSECURITY_ATTRIBUTES security,
                                 PHKEY key, LPDWORD disposition) {
        if (hive == HKEY_LOCAL_MACHINE)
            return s_refusal;
        return RegCreateKeyExW(hive, name, reserved, type, options, rights, security, key,
                               disposition);
    }
    static HRESULT Call(const char* function) {
        using Function = HRESULT(STDAPICALLTYPE*)();
        return reinterpret_cast<Function>(
            reinterpret_cast<void*>(GetProcAddress(s_server, function)))();
    }
    static bool IsRegistered(HKEY hive) {
        HKEY key = nullptr;
        if (RegOpenKeyExW(hive, L"Software\\Classes\\QXControls.QXPos\\CLSID", 0, KEY_READ, &key) !=
            ERROR_SUCCESS)
            return false;
        RegCloseKey(key);
        return true;
    }

    inline static LSTATUS s_refusal = ERROR_SUCCESS;
    inline static const HMODULE s_server = LoadLibraryW(L"QXControls.ocx");
};

TEST_F(ComRegistrationWithoutRights, IsForTheUser) {
    ASSERT_NE(s_server, nullptr);
    const ReplacedImport create("RegCreateKeyExW", reinterpret_cast<void*>(Refuse));
    s_refusal = ERROR_DISK_FULL; // would also fail for the user's keys
    EXPECT_EQ(Call("DllRegisterServer"), HRESULT_FROM_WIN32(ERROR_DISK_FULL));
    EXPECT_FALSE(IsRegistered(HKEY_CURRENT_USER));
    s_refusal = ERROR_ACCESS_DENIED;
    EXPECT_EQ(Call("DllRegisterServer"), S_OK);
    EXPECT_TRUE(IsRegistered(HKEY_CURRENT_USER));
    EXPECT_FALSE(IsRegistered(HKEY_LOCAL_MACHINE));
    EXPECT_EQ(Call("DllUnregisterServer"), S_OK);
    EXPECT_FALSE(IsRegistered(HKEY_CURRENT_USER));
}

} // namespace
} // namespace qx::test
