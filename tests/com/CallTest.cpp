// Calls by name: arguments, results, and errors with the numbers that classic hosts know.

#include "Host.h"

#include "qxcontrols/readers/BarcodePage.h"

namespace qx::test {
namespace {

using namespace com;

class ComCall : public testing::Test {
protected:
    void SetUp() override {
        driver.directory = {{MODULE_POS, 0x4000}};
        ASSERT_EQ(Do(keyboard, "Init"), Value(true));
        driver.calls.clear();
    }

    FakeDriver driver;
    Host host{driver};
    ObjectRef keyboard = host.New("QXKeyboardAccess");
};

TEST_F(ComCall, FindsNamesInAnyCaseAndDistinguishesReadingFromSetting) {
    Let(keyboard, "REPLACMENTCHAR", "?");
    EXPECT_EQ(Do(keyboard, "replacmentchar"), Value(u"?"));
    EXPECT_EQ(ErrorOf([&] { Do(keyboard, "ReplacementChar"); }), 438);
    EXPECT_EQ(ErrorOf([&] { Let(keyboard, "Program", "X"); }), 438); // cannot be set
    EXPECT_EQ(ErrorOf([&] { Do(keyboard, "CommandDelta"); }), 438);  // cannot be read
    EXPECT_EQ(ErrorOf([&] { Let(keyboard, "CommandDelta", 5); }), 0);
}

TEST_F(ComCall, ArgumentsThatAreMissingOrTooManyAreRefused) {
    EXPECT_EQ(ErrorOf([&] { Do(keyboard, "SetNotificationValues", 17, 1025, 3); }), 0);
    EXPECT_EQ(driver.lastArguments, "17 1025 3");
    EXPECT_EQ(ErrorOf([&] { Do(keyboard, "SetNotificationValues", 18, 1026); }), 0);
    EXPECT_EQ(driver.lastArguments, "18 1026 -1");
    EXPECT_EQ(ErrorOf([&] { Do(keyboard, "SetNotificationValues", 19, 1027, Value(Missing())); }),
              0);
    EXPECT_EQ(driver.lastArguments, "19 1027 -1");

    driver.calls.clear();
    EXPECT_EQ(ErrorOf([&] { Do(keyboard, "SetNotificationValues", 20); }), 449);
    EXPECT_EQ(ErrorOf([&] { Do(keyboard, "SetNotificationValues", Value(Missing()), 1); }), 449);
    EXPECT_EQ(ErrorOf([&] { Do(keyboard, "SetNotificationValues", 20, 1, 2, 3); }), 450);
    EXPECT_EQ(ErrorOf([&] { Do(keyboard, "Upload", 1); }), 450);
    EXPECT_EQ(ErrorOf([&] { Do(keyboard, "HasItem", "MODULE_POS"); }), 13);
    EXPECT_EQ(ErrorOf([&] { Do(keyboard, "SelectFunctionKeyLayer", 40000); }), 6);
    EXPECT_TRUE(driver.calls.empty());
}

TEST_F(ComCall, MemoryBlocksTravelWithAllTheirBytes) {
    const std::u16string block = {u'A', u'\0', u'\u00ff', u'\0'};
    EXPECT_EQ(Do(keyboard, "WriteIntoMemory", Value(block), 0x4000, 4), Value(true));
    EXPECT_EQ(driver.image.substr(0x4000, 4), std::string("A\0\xff\0", 4));

    std::vector<Value> arguments{Value(u"before"), Script(0x4000), Script(4)};
    EXPECT_EQ(CallWith(keyboard, "ReadFromMemory", arguments), Value(true));
    EXPECT_EQ(arguments[0], Value(block));

    driver.statuses["QXCFG_ImageRead"] = 7;
    arguments = {Value(u"before"), Script(0x4000), Script(4)};
    EXPECT_EQ(CallWith(keyboard, "ReadFromMemory", arguments), Value(false));
    EXPECT_EQ(arguments[0], Value(u"before"));
    driver.statuses.clear();
    for (const Value& before : {Value(u"\u2026"), Value(keyboard), Value(ObjectRef())}) {
        arguments = {before, Script(0x4000), Script(4)};
        EXPECT_EQ(CallWith(keyboard, "ReadFromMemory", arguments), Value(true));
        EXPECT_EQ(arguments[0], Value(block));
    }

    EXPECT_EQ(ErrorOf([&] { Do(keyboard, "WriteIntoMemory", "\u20ac", 0x4000, 1); }), 5);
    EXPECT_EQ(driver.image[0x4000], 'A');
}

// By-reference arguments always come back in the declared type, whatever type the host passed.
TEST_F(ComCall, ByReferenceArgumentsComeBackInTheirDeclaredTypes) {
    std::vector<Value> arguments{Script(0x4000), Script("12")};
    CallWith(keyboard, "WriteIntIntoImage", arguments);
    EXPECT_EQ(arguments[1], Value(Integer{12}));
    EXPECT_EQ(arguments[0], Script(0x4000)); // passed by value: the host's own is unchanged
    EXPECT_EQ(Do(keyboard, "ReadIntFromImage", 0x4000), Value(Integer{12}));

    arguments = {Value()};
    EXPECT_EQ(CallWith(keyboard, "SaveRomIntoFile", arguments), Value(Long{0}));
    EXPECT_EQ(arguments[0], Value(u""));

    arguments = {Script(0x4000), Script(256)};
    EXPECT_EQ(ErrorOf([&] { CallWith(keyboard, "WriteByteIntoImage", arguments); }), 6);
    EXPECT_EQ(arguments[1], Script(256));
}

TEST_F(ComCall, ErrorsOfThePlainClassesHaveTheirNumbers) {
    const ObjectRef sequence = host.New("KeySequence");
    const ObjectRef keys = host.New("KeyboardSequences");
    const ObjectRef page = host.New("BarcodeOptionPage");
    const ObjectRef barcode = host.New("QXBarcode");
    const ObjectRef blocks = host.New("POSKeyboard");
    const ObjectRef map = host.New("POSCodeMapping");
    const ObjectRef layer = host.New("FuncKeyLayer");
    // outside their ranges
    EXPECT_EQ(ErrorOf([&] { Do(keys, "Key", 141); }), 9);
    EXPECT_EQ(ErrorOf([&] { Do(page, "Flag", 10); }), 9);
    EXPECT_EQ(ErrorOf([&] { Do(page, "Flag", -1); }), 9);
    EXPECT_EQ(ErrorOf([&] { Do(barcode, "BitPage", BP_Reader_1 + 0); }), 9);
    EXPECT_EQ(ErrorOf([&] { Do(barcode, "SetListEntry", 20, "kept"); }), 0);
    EXPECT_EQ(ErrorOf([&] { Do(barcode, "SetListEntry", 21, "not"); }), 9);
    EXPECT_EQ(ErrorOf([&] { Do(blocks, "Block", 0); }), 9);
    EXPECT_EQ(ErrorOf([&] { Do(map, "GetPositionCodeForKey", 106); }), 9);
    EXPECT_EQ(ErrorOf([&] { Do(layer, "GetKey", 24); }), 9);
    // exceeds the 16 bits of a page number: 65536 must not become page 0
    EXPECT_EQ(ErrorOf([&] { Do(barcode, "BitPage", 65536); }), 6);
    // not a code
    EXPECT_EQ(ErrorOf([&] { Do(sequence, "AddByte", 1000); }), 5);
    EXPECT_EQ(Do(sequence, "Length"), Value(Integer{0}));
    // too long
    EXPECT_EQ(ErrorOf([&] { Let(sequence, "KeyString", std::string(3 * 32768, ' ')); }), 6);
    EXPECT_EQ(Do(sequence, "KeyString"), Value(u""));
}

TEST_F(ComCall, ErrorsNameTheMemberAndTheArgument) {
    const auto message = [](const auto& action) -> std::string {
        try {
            action();
        } catch (const Error& error) {
            return error.what();
        }
        return "";
    };
    EXPECT_EQ(message([&] { Do(keyboard, "SelectFunctionKeyLayer", 40000); }),
              "QXKeyboardAccess.SelectFunctionKeyLayer: nLayer: outside -32768 to 32767");
    EXPECT_EQ(message([&] { Do(keyboard, "MemRequestAdd", 0, 1); }),
              "QXKeyboardAccess.MemRequestAdd: lSize: missing");
    EXPECT_EQ(message([&] { Do(keyboard, "Upload", 1); }),
              "QXKeyboardAccess.Upload: takes 0 arguments, not 1");
    EXPECT_EQ(message([&] { Let(host.New("MagneticTrack"), "Header", host.New("POSBlock")); }),
              "MagneticTrack.Header: oNewValue: needs an object of class KeySequence, not of "
              "POSBlock");
}

TEST_F(ComCall, ObjectsOfOtherClassesAreRefused) {
    const ObjectRef track = host.New("MagneticTrack");
    const ObjectRef page = host.New("PosCodePage");
    const Value nothing = ObjectRef();
    EXPECT_EQ(ErrorOf([&] { Let(track, "Header", track); }), 13);
    EXPECT_EQ(ErrorOf([&] { Let(track, "Header", 5); }), 424);
    EXPECT_EQ(ErrorOf([&] { Let(track, "Header", nothing); }), 424);
    // the library itself accepts Nothing here
    EXPECT_EQ(Do(page, "IsEqualPage", nothing), Value(false));
    EXPECT_EQ(Do(page, "IsEqualPage", host.New("PosCodePage")), Value(true));
    EXPECT_EQ(ErrorOf([&] { Do(host.New("KeySequence"), "CopyContent", nothing); }), 0);
    EXPECT_EQ(Do(keyboard, "DirectoryItem", 2), nothing);
}

TEST_F(ComCall, ErrorsInsideAControlDoNotReachTheHost) {
    const ObjectRef pos = host.New("QXPos");
    Let(pos, "Keyboard", keyboard);
    driver.statuses["QXCFG_ImageRead"] = 7;
    driver.statuses["QXCFG_ImageWrite"] = 7;
    EXPECT_EQ(ErrorOf([&] { Do(pos, "DataUpload", true); }), 0);
    EXPECT_EQ(ErrorOf([&] { Do(pos, "DataDownload", true); }), 0);
    EXPECT_EQ(ErrorOf([&] { Do(host.New("QXPos"), "DataUpload", true); }), 0); // no keyboard
}

} // namespace
} // namespace qx::test
