// Compares the tables with two hand-written lists: the interface, and its identifiers.

#include "Host.h"

#include "com/Idl.h"

#include <fstream>
#include <map>
#include <set>
#include <sstream>

namespace qx::test {
namespace {

using namespace com;

// Sections by heading; an empty line ends a section.
using Sections = std::map<std::string, std::set<std::string>>;

Sections Listed(const std::string& file) {
    std::ifstream stream(QX_INTERFACE + file);
    EXPECT_TRUE(stream) << file;
    Sections sections;
    std::set<std::string>* section = nullptr;
    for (std::string line; std::getline(stream, line);) {
        if (line.starts_with('#'))
            continue;
        if (line.empty()) {
            section = nullptr;
        } else if (section == nullptr) {
            EXPECT_FALSE(sections.contains(line)) << line;
            section = &sections[line];
        } else {
            EXPECT_TRUE(section->insert(line).second) << line;
        }
    }
    return sections;
}

std::string TypeText(const Type& type) {
    static const std::map<Kind, std::string> names = {
        {Kind::None, ""},           {Kind::Boolean, "Boolean"}, {Kind::Byte, "Byte"},
        {Kind::Integer, "Integer"}, {Kind::Long, "Long"},       {Kind::Single, "Single"},
        {Kind::Text, "String"},     {Kind::Block, "Block"},     {Kind::Variant, "Variant"},
    };
    if (type.kind == Kind::Enumeration)
        return std::string(type.enumeration->name);
    if (type.kind == Kind::Object)
        return std::string(type.object().name);
    return names.at(type.kind);
}

std::string ParametersText(const std::vector<Parameter>& parameters) {
    std::string text;
    for (const Parameter& parameter : parameters) {
        text += text.empty() ? "" : ", ";
        text += parameter.ifMissing ? "Optional " : "";
        text += parameter.byReference ? "ByRef " : "";
        text += std::string(parameter.name) + " As " + TypeText(parameter.type);
        if (parameter.ifMissing)
            text += " = " + std::to_string(*parameter.ifMissing);
    }
    return "(" + text + ")";
}

std::string AsText(const Type& type) {
    return type.kind == Kind::None ? "" : " As " + TypeText(type);
}

// One line per method, property and event.
std::set<std::string> LinesOf(const Class& type) {
    std::set<std::string> lines;
    std::map<Long, std::pair<std::string, std::string>> properties; // directions, the rest
    for (const Member& member : type.members) {
        const std::string name(member.name);
        if (member.kind == MemberKind::Method) {
            lines.insert("method " + name + ParametersText(member.parameters) +
                         AsText(member.result));
            continue;
        }
        std::string rest = name;
        auto& [directions, text] = properties[member.id];
        if (member.kind == MemberKind::Get) {
            rest += (member.parameters.empty() ? "" : ParametersText(member.parameters)) +
                    AsText(member.result);
            directions += "get";
        } else {
            rest += AsText(member.parameters.back().type);
            directions += directions.empty() ? "" : ", ";
            directions += member.kind == MemberKind::Put ? "let" : "set";
        }
        text = text.empty() || text == rest ? rest : text + " | " + rest;
    }
    for (const auto& [id, property] : properties)
        lines.insert(property.first + " " + property.second);
    for (const EventMember& event : type.events)
        lines.insert("event " + std::to_string(event.id) + " " + std::string(event.name) +
                     ParametersText(event.parameters));
    return lines;
}

std::string LookText(Look look) {
    return look == Look::None ? "plain" : look == Look::Invisible ? "invisible" : "visible";
}

void ExpectSame(const Sections& did, const Sections& expected) {
    for (const auto& [heading, lines] : did)
        EXPECT_TRUE(expected.contains(heading)) << heading << " is not listed";
    for (const auto& [heading, lines] : expected) {
        ASSERT_TRUE(did.contains(heading)) << heading << " is missing";
        const std::set<std::string>& offered = did.at(heading);
        for (const std::string& line : offered)
            EXPECT_TRUE(lines.contains(line)) << heading << ": not listed: " << line;
        for (const std::string& line : lines)
            EXPECT_TRUE(offered.contains(line)) << heading << ": missing: " << line;
    }
}

TEST(ComInterface, HasAllThatIsListedAndNothingElse) {
    Sections offered;
    for (const Enumeration* const enumeration : Enumerations()) {
        std::set<std::string>& lines = offered["enum " + std::string(enumeration->name)];
        for (const auto& [name, value] : enumeration->values)
            lines.insert(std::string(name) + " = " + std::to_string(value));
    }
    for (const Class* const type : Classes())
        offered[LookText(type->look) + " " + std::string(type->name)] = LinesOf(*type);
    ExpectSame(offered, Listed("interface.txt"));
}

TEST(ComInterface, KeepsItsIdentifiers) {
    Sections offered;
    offered[std::string(kLibraryName)] = {std::string(kLibraryId) + " " +
                                          std::string(kLibraryVersion)};
    for (const Enumeration* const enumeration : Enumerations())
        offered[std::string(enumeration->name)] = {std::string(enumeration->iid)};
    for (const Class* const type : Classes()) {
        const std::string name(type->name);
        std::set<std::string>& lines = offered[name];
        lines.insert("class " + std::string(type->clsid));
        lines.insert("_" + name + " " + std::string(type->iid));
        if (!type->eventsIid.empty())
            lines.insert("__" + name + " " + std::string(type->eventsIid));
        for (const Member& member : type->members)
            lines.insert(std::to_string(member.id) + " " + std::string(member.name));
    }
    ExpectSame(offered, Listed("identifiers.txt"));
}

// If two members shared a name or identifier, one of them would be hidden.
TEST(ComInterface, IdentifiersAreTheirMembersAlone) {
    std::set<std::string_view> guids = {kLibraryId};
    const auto isNew = [&](std::string_view guid) { return guids.insert(guid).second; };
    for (const Enumeration* const enumeration : Enumerations())
        EXPECT_TRUE(isNew(enumeration->iid)) << enumeration->name;
    for (const Class* const type : Classes()) {
        EXPECT_TRUE(isNew(type->clsid)) << type->name;
        EXPECT_TRUE(isNew(type->iid)) << type->name;
        EXPECT_EQ(type->eventsIid.empty(), type->look == Look::None) << type->name;
        EXPECT_TRUE(type->eventsIid.empty() || isNew(type->eventsIid)) << type->name;
        std::map<Long, std::string> names;
        std::set<std::pair<Long, MemberKind>> kinds;
        for (const Member& member : type->members) {
            EXPECT_EQ(names.emplace(member.id, member.name).first->second, member.name)
                << type->name;
            EXPECT_EQ(IdOf(*type, Utf16FromUtf8(member.name)), member.id)
                << type->name << "." << member.name;
            EXPECT_TRUE(kinds.emplace(member.id, member.kind).second)
                << type->name << "." << member.name;
        }
    }
}

TEST(ComInterface, TypeLibrarySourceHasEachKindOfMember) {
    std::istringstream idl(IdlText());
    std::set<std::string> lines;
    for (std::string line; std::getline(idl, line);)
        lines.insert(line);
    for (const char* const line : {
             "    [id(16), propget] BSTR ReplacmentChar();",
             "    [id(16), propput] void ReplacmentChar([in] BSTR vNewValue);",
             "    [id(1), propputref] void Keyboard([in] _QXKeyboardAccess* oNewValue);",
             "    [id(6), propget] long TransferSize([in] VARIANT_BOOL LoadInKeyboard);",
             "    [id(20)] _ConfigDirEntry* DirectoryItemByModule([in] KeyboardModuleIDs eModule);",
             "    [id(28)] void WriteByteIntoImage([in] long lAddress, "
             "[in, out] unsigned char* bByte);",
             "    [id(39)] void SetNotificationValues([in] long theWindow, [in] long lMsg, "
             "[in, defaultvalue(-1)] long lWhat);",
             "    [id(3)] VARIANT GetKey([in] short nIndex);",
             "    [id(11)] float KeyX([in] long lID);",
             "    [id(4)] void KeyNoEditable([in] VARIANT nPositionCode);",
             "    MODULE_LAYER_FUNCKEY_DESC = 255,",
             "    [default] dispinterface _QXPosDisplay;",
             "    [default, source] dispinterface __QXPosDisplay;",
             "    [default, source] dispinterface __QXCommonKeyboard;",
             "  [uuid(FBE8421D-BE12-4556-9FA9-752660D10CDC), control]",
         })
        EXPECT_TRUE(lines.contains(line)) << line;
    EXPECT_FALSE(lines.contains("    [default, source] dispinterface __KeySequence;"));
}

} // namespace
} // namespace qx::test
