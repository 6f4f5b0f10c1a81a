// Every member, used once by its name: it has its own effect and no other.

#include "Host.h"

#include <map>
#include <set>

namespace qx::test {
namespace {

using namespace com;

class ComMembers : public testing::Test {
protected:
    // An argument that the member accepts.
    [[nodiscard]] Value Any(const Type& type) const {
        switch (type.kind) {
        case Kind::Object:
            return host.New(type.object().name);
        case Kind::Enumeration:
            return type.enumeration->values.front().value;
        case Kind::Text:
        case Kind::Block:
            return u"  1";
        default:
            return Coerced(Integer{1}, type, "argument");
        }
    }

    FakeDriver driver;
    Host host{driver};
};

// Every procedure traces its name, except those that are called for every key or byte.
TEST_F(ComMembers, MethodsRunTheProceduresOfTheirNames) {
    const std::set<std::string> silent = {
        "KeySequence.Length",
        "QXKeyboardAccess.ReadByteFromMem",
        "QXKeyboardAccess.ReadByteFromImage",
        "QXKeyboardAccess.WriteByteIntoImage",
        "QXKeyboardAccess.ReadIntFromImage",
        "QXKeyboardAccess.WriteIntIntoImage",
        "QXKeyboardAccess.ReadLongFromImage",
        "QXKeyboardAccess.WriteLongIntoImage",
        "FuncKeyLayer.GetKeyDesc",
        "FuncKeyLayer.SetKeyDesc",
        "FuncKeyLayer.GetKey",
        "POSBlock.AddKey",
        "POSBlock.HasKey",
        "POSBlock.GetKey",
        "POSBlock.GetLast",
        "POSBlock.CleanLast",
        "POSBlock.Clean",
        "POSKeyboard.Block",
        "POSKeyboard.FindBlockForKey",
        "POSKeyboard.VBObjectDump",
        "POSCodeMapping.GetPositionCodeForKey",
        "POSCodeMapping.GetKeyIndex",
        "PosCodePage.GetByte",
    };
    // procedures that trace another text
    const std::map<std::string, std::string> others = {
        {"QXKeyboardAccess.Done", "The Keyboard.Done"},
        {"QXKeyboardAccess.WriteByteMemory", "WriteByteMemory (1) = 1"},
        {"QXMagnetCard.DataDownload", "QXMagnetcard.DataDownload"},
        {"QXMagnetCard.ReloadKeySettings", "QXMagnetCard.ReloadKeysSettings"},
        {"QXFreeProgKeys.PrepareDataDownload", "QXFreeProgKeys.PrepareDataUpload"},
        {"QXFreeProgKeys.ReloadKeySettings", "QXFreeProgKeys.ReloadKeysSettings"},
        {"QXLayeredFuncKeys.PrepareDataDownload", "QXLayeredFuncKeys.PrepareDataUpload"},
    };
    for (const Class* const type : Classes())
        for (const Member& member : type->members) {
            if (member.kind != MemberKind::Method)
                continue;
            const std::string name = std::string(type->name) + "." + std::string(member.name);
            const ObjectRef object = host.New(type->name);
            std::vector<Value> arguments;
            for (const Parameter& parameter : member.parameters)
                arguments.push_back(Any(parameter.type));
            const std::vector<Value> given = arguments;
            const TraceLog trace;
            Value result;
            ASSERT_NO_THROW(result = Call(*object, member, arguments)) << name;
            EXPECT_TRUE(member.result.kind == Kind::Variant ||
                        result.index() == Any(member.result).index())
                << name;
            for (std::size_t i = 0; i < given.size(); ++i)
                EXPECT_TRUE(member.parameters[i].byReference || arguments[i] == given[i]) << name;
            const std::string expected = others.contains(name) ? others.at(name) : name;
            const std::string line = trace.lines.empty() ? "" : trace.lines.front();
            EXPECT_EQ(line.substr(0, line.find_first_of(" (", name.size())),
                      silent.contains(name) ? "" : expected)
                << name;
        }
}

// The values of all properties of the object and its parts, by path.
using Values = std::map<std::string, Value>;
void Collect(const ObjectRef& object, const std::string& path, Values& values) {
    for (const Member& member : object->ClassOf().members) {
        if (member.kind != MemberKind::Get || !member.parameters.empty())
            continue;
        const std::string name = path + std::string(member.name);
        const Value value = Do(object, member.name);
        const auto* const part = std::get_if<ObjectRef>(&value);
        if (part == nullptr)
            values[name] = value;
        else if (*part != nullptr)
            Collect(*part, name + ".", values);
    }
}
Values ValuesOf(const ObjectRef& object) {
    Values values;
    Collect(object, "", values);
    return values;
}

// Sets the first writable property; false if there is none.
bool Alter(const ObjectRef& object);

Value Other(const Value& value) {
    if (const auto* const flag = std::get_if<bool>(&value))
        return !*flag;
    if (const auto* const text = std::get_if<std::u16string>(&value))
        return *text + u"x\\"; // a path may end like this
    if (const auto* const number = std::get_if<Integer>(&value))
        return static_cast<Long>(*number + 1);
    return static_cast<double>(std::get<Long>(value)) + 1;
}

bool Alter(const ObjectRef& object) {
    for (const Member& member : object->ClassOf().members) {
        if (member.kind != MemberKind::Get || !member.parameters.empty())
            continue;
        const Value value = Do(object, member.name);
        if (std::holds_alternative<ObjectRef>(value)) {
            if (ObjectIn(value) != nullptr && Alter(ObjectIn(value)))
                return true;
        } else if (Find(object->ClassOf(), member.id, Use::Set) != nullptr) {
            Let(object, member.name, Other(value));
            return true;
        }
    }
    return false;
}

// A property returns the value it was set to, and no other property changes.
TEST_F(ComMembers, PropertiesHaveTheirOwnPlaces) {
    for (const Class* const type : Classes())
        for (const Member& member : type->members) {
            if (member.kind != MemberKind::Put && member.kind != MemberKind::PutObject)
                continue;
            const std::string name(member.name);
            const ObjectRef object = host.New(type->name);
            const Values before = ValuesOf(object);
            Value set;
            bool isSeen = Find(*type, member.id, Use::Call) != nullptr;
            if (member.kind == MemberKind::Put) {
                set = Other(isSeen ? Do(object, name) : Value(Integer{1}));
            } else {
                set = host.New(member.parameters[0].type.object().name);
                isSeen = isSeen && Alter(ObjectIn(set));
                if (isSeen && ObjectOf(object, name) != nullptr &&
                    ValuesOf(ObjectIn(set)) == ValuesOf(ObjectOf(object, name)))
                    Alter(ObjectIn(set));
            }
            Let(object, name, set);
            const Values after = ValuesOf(object);
            int changes = 0;
            for (const auto& [path, value] : after) {
                const bool isOwn = path == name || path.starts_with(name + ".");
                const bool follows =
                    // the same value as a check box, and the flag for changes
                    (type->name == "OptionBool" && path != "Caption") ||
                    (type->name == "QXProgSettings" && path == "DataChanged");
                const auto was = before.find(path);
                const bool isChanged = was == before.end() || was->second != value;
                changes += isOwn && isChanged ? 1 : 0;
                EXPECT_TRUE(isOwn || follows || !isChanged)
                    << type->name << "." << name << " changes " << path;
            }
            EXPECT_EQ(changes > 0, isSeen) << type->name << "." << name;
            if (member.kind == MemberKind::Put && isSeen) {
                EXPECT_EQ(after.at(name), Coerced(set, member.parameters[0].type, name))
                    << type->name << "." << name;
            }
        }
}

TEST_F(ComMembers, IdentificationIsReadIntoItsProperties) {
    const std::map<int, const char*> flags = {
        {0x01, "FlagFreeProgrammableKeys"}, {0x02, "FlagConnectionV24"},
        {0x04, "FlagChicpcardReader"},      {0x08, "FlagBarcodeReader"},
        {0x10, "FlagMagneticTrack4"},       {0x20, "FlagMagneticTrack3"},
        {0x40, "FlagMagneticTrack2"},       {0x80, "FlagMagneticTrack1"},
    };
    driver.directory = {{MODULE_POS, 0x4000}};
    driver.image.replace(0x7FC0, 32, "KEYBOARD        BOOTPROGCTRYCONF");
    for (const auto& [bit, flag] : flags) {
        driver.image[0x7FF] = static_cast<char>(bit);
        const ObjectRef keyboard = host.New("QXKeyboardAccess");
        ASSERT_EQ(Do(keyboard, "Init"), Value(true));
        for (const auto& [other, name] : flags)
            EXPECT_EQ(Do(keyboard, name), Value(other == bit)) << name << " " << bit;
        EXPECT_EQ(Do(keyboard, "Keyboard"), Value(u"KEYBOARD"));
        EXPECT_EQ(Do(keyboard, "Bootloader"), Value(u"BOOT"));
        EXPECT_EQ(Do(keyboard, "Program"), Value(u"PROG"));
        EXPECT_EQ(Do(keyboard, "Country"), Value(u"CTRY"));
        EXPECT_EQ(Do(keyboard, "Config"), Value(u"CONF"));
        EXPECT_EQ(Do(keyboard, "DirectorySize"), Value(Integer{1}));
    }
}

TEST_F(ComMembers, NumbersOfTheImageHaveTheirWidths) {
    driver.directory = {{MODULE_POS, 0x4000}};
    const ObjectRef keyboard = host.New("QXKeyboardAccess");
    ASSERT_EQ(Do(keyboard, "Init"), Value(true));
    Do(keyboard, "WriteLongIntoImage", 0x100, 0x01020304);
    EXPECT_EQ(Do(keyboard, "ReadLongFromImage", 0x100), Value(Long{0x01020304}));
    EXPECT_EQ(Do(keyboard, "ReadIntFromImage", 0x100), Value(Integer{0x0304}));
    EXPECT_EQ(Do(keyboard, "ReadByteFromImage", 0x102), Value(Byte{0x02}));
    Do(keyboard, "WriteIntIntoImage", 0x100, -2);
    Do(keyboard, "WriteByteIntoImage", 0x103, 0x80);
    EXPECT_EQ(Do(keyboard, "ReadByteFromMem", 0x100), Value(Byte{0xFE}));
    EXPECT_EQ(Do(keyboard, "ReadLongFromImage", 0x100), Value(Long{-2147287042})); // 8002FFFE
}

TEST_F(ComMembers, PlainClassesWorkByTheirNames) {
    const ObjectRef sequence = host.New("KeySequence");
    Do(sequence, "AddByte", 5);
    Do(sequence, "AddByte", 200);
    EXPECT_EQ(Do(sequence, "Length"), Value(Integer{2}));
    EXPECT_EQ(Do(sequence, "GetPositionCode", 2), Value(Integer{200}));

    const ObjectRef keys = host.New("KeyboardSequences");
    EXPECT_EQ(Do(keys, "MinKeyID"), Value(Integer{0}));
    EXPECT_EQ(Do(keys, "MaxKeyID"), Value(Integer{140}));
    Do(ObjectOf(keys, "Key", 140), "CopyContent", sequence);
    Do(ObjectOf(keys, "Key", 140), "CopyContent", ObjectOf(keys, "Key", 140)); // onto itself
    EXPECT_EQ(Do(ObjectOf(keys, "Key", 140), "KeyString"), Value(u"  5200"));

    const ObjectRef layer = host.New("FuncKeyLayer");
    Do(layer, "SetKeyDesc", 23, "last");
    EXPECT_EQ(Do(layer, "GetKeyDesc", 23), Value(u"last"));
    Do(ObjectOf(layer, "GetKey", 23), "CopyContent", sequence);
    EXPECT_EQ(Do(ObjectOf(layer, "GetKey", 23), "KeyString"), Value(u"  5200"));
    Do(layer, "CleanLayer");
    EXPECT_EQ(Do(ObjectOf(layer, "GetKey", 23), "Length"), Value(Integer{0}));
    EXPECT_EQ(Do(layer, "GetKeyDesc", 23), Value(u"last"));

    const ObjectRef blocks = host.New("POSKeyboard");
    const ObjectRef block = ObjectOf(blocks, "Block", 3);
    Do(block, "AddKey", 3);
    Do(block, "AddKey", 10);
    EXPECT_EQ(Do(block, "HasKey", 10), Value(true));
    EXPECT_EQ(Do(block, "HasKey", 2), Value(false));
    EXPECT_EQ(Do(block, "GetKey", 1), Value(Integer{3}));
    EXPECT_EQ(Do(block, "GetLast"), Value(Integer{10}));
    EXPECT_EQ(Do(blocks, "FindBlockForKey", 10), Value(Integer{3}));
    EXPECT_EQ(Do(blocks, "BlockNum"), Value(Integer{0}));
    Do(blocks, "CalcDefinedBlockNum");
    EXPECT_EQ(Do(blocks, "BlockNum"), Value(Integer{1}));
    Do(block, "CleanLast");
    EXPECT_EQ(Do(block, "BlockSize"), Value(Integer{1}));
    Do(block, "Clean");
    EXPECT_EQ(Do(block, "BlockSize"), Value(Integer{0}));

    const ObjectRef map = host.New("POSCodeMapping");
    EXPECT_EQ(Do(map, "GetKeyIndex", 61), Value(Integer{93}));
    EXPECT_EQ(Do(map, "GetPositionCodeForKey", 18), Value(Integer{75}));

    const ObjectRef settings = host.New("QXProgSettings");
    Do(settings, "SetWinParam", 1, 70002, 70003, 70004, 70005);
    EXPECT_EQ(Do(settings, "WinState"), Value(Integer{1}));
    EXPECT_EQ(Do(settings, "WinWidth"), Value(Long{70002}));
    EXPECT_EQ(Do(settings, "WinHeight"), Value(Long{70003}));
    EXPECT_EQ(Do(settings, "WinTop"), Value(Long{70004}));
    EXPECT_EQ(Do(settings, "WinLeft"), Value(Long{70005}));

    const ObjectRef pages = host.New("QXPosCodePage");
    driver.directory = {{MODULE_POS, 0x4000}};
    driver.memory[27776 + 255] = '\x7f';
    const ObjectRef keyboard = host.New("QXKeyboardAccess");
    ASSERT_EQ(Do(keyboard, "Init"), Value(true));
    EXPECT_EQ(Do(ObjectOf(pages, "KeyboardPage"), "LoadPageFromKeyboard", keyboard), Value(true));
    EXPECT_EQ(Do(ObjectOf(pages, "KeyboardPage"), "GetByte", 256), Value(Byte{0x7f}));
    EXPECT_EQ(Do(pages, "PagesAreEqual"), Value(false));
    Let(pages, "FilePage", ObjectOf(pages, "KeyboardPage"));
    EXPECT_EQ(Do(pages, "PagesAreEqual"), Value(true));
}

} // namespace
} // namespace qx::test
