#include "com/windows/Registration.h"

#include "com/Library.h"
#include "com/windows/Resources.h"
#include "com/windows/Server.h"

#include <shlwapi.h>

#include <set>
#include <vector>

namespace qx::com {
namespace {

constexpr wchar_t kClasses[] = L"Software\\Classes\\";
constexpr wchar_t kDispatchProxy[] = L"{00020420-0000-0000-C000-000000000046}";
constexpr wchar_t kControlCategory[] = L"{40FC6ED4-2438-11CF-A3DB-080036F12502}";
#ifdef _WIN64
constexpr wchar_t kPlatform[] = L"win64";
constexpr wchar_t kOtherPlatform[] = L"win32";
#else
constexpr wchar_t kPlatform[] = L"win32";
constexpr wchar_t kOtherPlatform[] = L"win64";
#endif

// One value below the classes' key; an empty name is the key's default value.
struct Row {
    std::wstring tree; // deleted as a whole when unregistering, unless it is shared
    std::wstring key;  // relative to the tree
    std::wstring name;
    std::wstring data;
};

std::wstring Version() {
    return Wide(kLibraryVersion);
}

std::wstring LibraryTree() {
    return L"TypeLib\\" + Wide(kLibraryId);
}

// Relative to the library's tree.
std::wstring FileKey(const wchar_t* platform) {
    return L"\\" + Version() + L"\\0\\" + platform;
}

void AddTypeLibrary(std::vector<Row>& rows, const std::wstring& file) {
    const std::wstring tree = LibraryTree();
    const std::wstring folder = file.substr(0, file.find_last_of(L'\\'));
    rows.push_back({tree, L"\\" + Version(), L"", Wide(kLibraryTitle)});
    rows.push_back({tree, FileKey(kPlatform), L"", file});
    rows.push_back({tree, L"\\" + Version() + L"\\FLAGS", L"", L"0"});
    rows.push_back({tree, L"\\" + Version() + L"\\HELPDIR", L"", folder});
}

void AddInterface(std::vector<Row>& rows, std::string_view iid, const std::wstring& name) {
    const std::wstring tree = L"Interface\\" + Wide(iid);
    rows.push_back({tree, L"", L"", name});
    rows.push_back({tree, L"\\ProxyStubClsid32", L"", kDispatchProxy});
    rows.push_back({tree, L"\\TypeLib", L"", Wide(kLibraryId)});
    rows.push_back({tree, L"\\TypeLib", L"Version", Version()});
}

void AddControl(std::vector<Row>& rows, const std::wstring& tree, const Class& type,
                const std::wstring& file) {
    rows.push_back({tree, L"\\Control", L"", L""});
    rows.push_back(
        {tree, std::wstring(L"\\Implemented Categories\\") + kControlCategory, L"", L""});
    rows.push_back({tree, L"\\MiscStatus", L"", L"0"});
    rows.push_back({tree, L"\\MiscStatus\\1", L"", std::to_wstring(MiscStatusOf(type))});
    rows.push_back(
        {tree, L"\\ToolboxBitmap32", L"", file + L", " + std::to_wstring(QX_TOOLBOX_BITMAP)});
}

void AddClass(std::vector<Row>& rows, const Class& type, const std::wstring& file) {
    const std::wstring progId = ProgIdOf(type);
    rows.push_back({progId, L"", L"", progId});
    rows.push_back({progId, L"\\CLSID", L"", Wide(type.clsid)});

    const std::wstring tree = L"CLSID\\" + Wide(type.clsid);
    rows.push_back({tree, L"", L"", progId});
    rows.push_back({tree, L"\\InprocServer32", L"", file});
    rows.push_back({tree, L"\\InprocServer32", L"ThreadingModel", L"Apartment"});
    rows.push_back({tree, L"\\ProgID", L"", progId});
    rows.push_back({tree, L"\\VersionIndependentProgID", L"", progId});
    rows.push_back({tree, L"\\Programmable", L"", L""});
    rows.push_back({tree, L"\\TypeLib", L"", Wide(kLibraryId)});
    rows.push_back({tree, L"\\Version", L"", Version()});
    if (type.look != Look::None)
        AddControl(rows, tree, type, file);

    AddInterface(rows, type.iid, L"_" + Wide(type.name));
    if (!type.eventsIid.empty())
        AddInterface(rows, type.eventsIid, L"__" + Wide(type.name));
}

std::vector<Row> Rows() {
    const std::wstring file = FileOfModule(Module());
    std::vector<Row> rows;
    AddTypeLibrary(rows, file);
    for (const Class* type : Classes())
        AddClass(rows, *type, file);
    return rows;
}

LSTATUS Write(HKEY hive, const Row& row) {
    HKEY key = nullptr;
    const LSTATUS status = RegCreateKeyExW(hive, (kClasses + row.tree + row.key).c_str(), 0,
                                           nullptr, 0, KEY_SET_VALUE, nullptr, &key, nullptr);
    if (status != ERROR_SUCCESS)
        return status;
    LSTATUS written = ERROR_SUCCESS;
    if (!row.name.empty() || !row.data.empty()) {
        const auto* const data = reinterpret_cast<const BYTE*>(row.data.c_str());
        const auto size = static_cast<DWORD>((row.data.size() + 1) * sizeof(wchar_t));
        written = RegSetValueExW(key, row.name.c_str(), 0, REG_SZ, data, size);
    }
    RegCloseKey(key);
    return written;
}

// Each word size has its own classes and interfaces; program names and the type library are shared.
bool IsShared(const std::wstring& tree) {
    return !tree.starts_with(L"CLSID\\") && !tree.starts_with(L"Interface\\");
}

// Whether the server of the other word size is registered as well.
bool HasOtherWordSize(HKEY hive) {
    HKEY key = nullptr;
    const std::wstring name = kClasses + LibraryTree() + FileKey(kOtherPlatform);
    if (RegOpenKeyExW(hive, name.c_str(), 0, KEY_QUERY_VALUE, &key) != ERROR_SUCCESS)
        return false;
    RegCloseKey(key);
    return true;
}

LSTATUS DeleteFrom(HKEY hive) {
    const bool isAlone = !HasOtherWordSize(hive);
    std::set<std::wstring> trees;
    for (const Row& row : Rows())
        if (isAlone || !IsShared(row.tree))
            trees.insert(row.tree);
    if (!isAlone)
        trees.insert(LibraryTree() + FileKey(kPlatform));
    LSTATUS result = ERROR_SUCCESS;
    for (const std::wstring& tree : trees) {
        const LSTATUS status = RegDeleteTreeW(hive, (kClasses + tree).c_str());
        if (status != ERROR_SUCCESS && status != ERROR_FILE_NOT_FOUND)
            result = status;
    }
    if (hive == HKEY_CURRENT_USER) // these folders may not have existed before
        for (const wchar_t* const folder : {L"CLSID", L"Interface", L"TypeLib"})
            SHDeleteEmptyKeyW(hive, (std::wstring(kClasses) + folder).c_str());
    return result;
}

LSTATUS WriteTo(HKEY hive) {
    for (const Row& row : Rows())
        if (const LSTATUS status = Write(hive, row); status != ERROR_SUCCESS) {
            (void)DeleteFrom(hive);
            return status;
        }
    return ERROR_SUCCESS;
}

} // namespace

HRESULT RegisterServer(Scope scope) {
    return Guarded([&] {
        LSTATUS status = ERROR_ACCESS_DENIED;
        if (scope != Scope::User)
            status = WriteTo(HKEY_LOCAL_MACHINE);
        if (scope == Scope::User ||
            (scope == Scope::MachineOrUser && status == ERROR_ACCESS_DENIED))
            status = WriteTo(HKEY_CURRENT_USER);
        return HRESULT_FROM_WIN32(static_cast<DWORD>(status));
    });
}

HRESULT UnregisterServer(Scope scope) {
    return Guarded([&] {
        LSTATUS status = ERROR_SUCCESS;
        if (scope != Scope::Machine)
            status = DeleteFrom(HKEY_CURRENT_USER);
        if (scope != Scope::User)
            if (const LSTATUS machine = DeleteFrom(HKEY_LOCAL_MACHINE); machine != ERROR_SUCCESS)
                status = machine;
        return HRESULT_FROM_WIN32(static_cast<DWORD>(status));
    });
}

} // namespace qx::com
