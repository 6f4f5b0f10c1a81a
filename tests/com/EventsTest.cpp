// Events as hosts see them: defaults, answers by reference, several sinks, and misbehaving sinks.

#include "Host.h"

#include "qxcontrols/keyprog/QXFreeProgKeys.h"
#include "qxcontrols/keyprog/QXLayeredFuncKeys.h"
#include "qxcontrols/keys/LayoutLine.h"
#include "qxcontrols/pos/QXPos.h"
#include "qxcontrols/readers/QXBarcode.h"
#include "qxcontrols/readers/QXMagnetCard.h"

#include <functional>
#include <optional>

namespace qx::test {
namespace {

using namespace com;

class ComEvents : public testing::Test {
protected:
    // Connects a sink to the event with this name.
    [[nodiscard]] static Subscription On(const ObjectRef& source, std::string_view name,
                                         EventSink sink) {
        const auto& events = source->ClassOf().events;
        const auto event = std::ranges::find(events, name, &EventMember::name);
        if (event == events.end())
            throw std::invalid_argument("no event " + std::string(name));
        return event->Subscribe(*source, std::move(sink));
    }
    // Records all events of the object with their arguments as received.
    void NoteAll(const ObjectRef& source) {
        for (const EventMember& event : source->ClassOf().events)
            subscriptions.push_back(
                event.Subscribe(*source, [this, &event](std::span<Value> arguments) {
                    std::string line(event.name);
                    for (const Value& argument : arguments)
                        line += " " + TextIn(Coerced(argument, {Kind::Text}, "argument"));
                    noted.push_back(line);
                }));
    }
    [[nodiscard]] std::vector<std::string> Noted() { return std::exchange(noted, {}); }

    FakeDriver driver;
    Host host{driver};
    std::vector<Subscription> subscriptions;
    std::vector<std::string> noted;
};

using Lines = std::vector<std::string>;

TEST_F(ComEvents, StartUpReportsItsStagesInOrder) {
    const ObjectRef keyboard = host.New("QXKeyboardAccess");
    NoteAll(keyboard);
    driver.statuses["QXCFG_Init"] = 7;
    EXPECT_EQ(Do(keyboard, "Init"), Value(false));
    EXPECT_EQ(Noted(),
              (Lines{"InitDriver", "InitDriverWithDelta 0", "InitDriverFailed 7", "InitFailed 0"}));
    driver.statuses.clear();
    EXPECT_EQ(Do(keyboard, "Init"), Value(false)); // an empty directory
    EXPECT_EQ(Noted(),
              (Lines{"InitDriver", "InitDriverWithDelta 0", "InitDriverOK",
                     "InitConfigurationTable", "InitConfigurationTableFailed 0", "InitFailed 0"}));
    driver.directory = {{MODULE_POS, 0x4000}};
    driver.statuses["QXCFG_ImageRead"] = 7;
    EXPECT_EQ(Do(keyboard, "Init"), Value(true));
    EXPECT_EQ(Noted(), (Lines{"InitDriver", "InitDriverWithDelta 0", "InitDriverOK",
                              "InitConfigurationTable", "InitConfigurationTableOK",
                              "InitKeyboardNaming", "InitKeyboardNamingFailed 0"}));
    driver.statuses.clear();
    EXPECT_EQ(Do(keyboard, "Init"), Value(true));
    EXPECT_EQ(Noted().back(), "InitKeyboardNamingOK");
}

TEST_F(ComEvents, EachRequestHasItsPresets) {
    const ObjectRef barcode = host.New("QXBarcode");
    NoteAll(barcode);
    auto& reader = Native<QXBarcode>(barcode);
    reader.lstPrefGroup.ListIndex = BP_Reader_2;
    reader.lstPrefGroup_Click();
    reader.Reader(2).Terminator().SetBytes("\x1e");
    reader.cmdEdit_Click(1);
    reader.cmdRemove_Click(0);
    reader.cmdRemove_Click(1);
    reader.lblReader_KeyDown(1, 65);
    EXPECT_EQ(Noted(), (Lines{"EditHeader  30 True  30", "RemoveHeader False",
                              "RemoveTerminator False", "AdvanceEdit False"}));

    const ObjectRef card = host.New("QXMagnetCard");
    NoteAll(card);
    auto& magnet = Native<QXMagnetCard>(card);
    magnet.Track1().Header().SetBytes("\x05");
    magnet.cmdCreate_Click(0);
    magnet.cmdCreate_Click(1);
    magnet.cmdRemove_Click(0);
    magnet.cmdRemove_Click(1);
    magnet.lblCurrHeader_KeyPress();
    EXPECT_EQ(Noted(), (Lines{"EditCurrentHeader 1   5 False   5",
                              "EditCurrentTerminator 1  False ", "ClearCurrentHeader 1 True",
                              "ClearCurrentTerminator 1 True", "AdvanceEdit False"}));

    const ObjectRef free = host.New("QXFreeProgKeys");
    NoteAll(free);
    auto& keys = Native<QXFreeProgKeys>(free);
    keys.cmdEdit_Click(0);
    keys.cmdEdit_Click(2);
    const ObjectRef layout = host.New("QXKeyboardLayoutData");
    Let(layout, "LayoutPath", QX_LAYOUTS);
    ASSERT_EQ(Do(layout, "OpenLayoutByName", "us.qxl"), Value(true));
    EXPECT_NE(Do(layout, "NativeName"), Value(u""));
    Let(free, "LayoutSource", layout);
    Integer key = 0;
    while (Do(layout, "KeySupport", int{key}) != Value(Long{KEYMODE_PROG}))
        ++key;
    keys.layoutDisplay.cmdKey_Click(key);
    keys.cmdEdit_Click(0);
    keys.cmdEdit_Click(1);
    keys.lblCurrSeq_KeyPress();
    EXPECT_EQ(Noted(), (Lines{"KeyNoEditable -1", "RemoveAllSequences True",
                              "EditSequence " + std::to_string(key) + "  False ",
                              "RemoveSequence True", "AdvanceEdit False"}));

    const ObjectRef layered = host.New("QXLayeredFuncKeys");
    NoteAll(layered);
    auto& layers = Native<QXLayeredFuncKeys>(layered);
    layers.cmdEdit_Click(0);
    layers.cmdEdit_Click(1);
    layers.cmdEdit_Click(2);
    layers.cmdEdit_Click(3);
    layers.cmdFuncKey_Click(4);
    layers.cmdEdit_Click(0);
    layers.lblCurrSeq_KeyPress();
    EXPECT_EQ(Noted(),
              (Lines{"NoKeySelectedToEdit", "NoKeySelectedToClean", "CleanThisLayer True",
                     "CleanAllLayers True", "EditLayeredFuncKey  True ", "AdvanceEdit False"}));

    const ObjectRef pos = host.New("QXPos");
    NoteAll(pos);
    Native<QXPos>(pos).cmdEdit_Click();
    Native<QXPos>(pos).cmdCleanAll_Click();
    EXPECT_EQ(Noted(), (Lines{"POSEditorRequested True", "RemoveAllBlocks True"}));
}

TEST_F(ComEvents, AnswersTakeEffect) {
    const ObjectRef barcode = host.New("QXBarcode");
    auto& reader = Native<QXBarcode>(barcode);
    const auto edits = On(barcode, "EditHeader", [](std::span<Value> arguments) {
        arguments[0] = u"999"; // by value: the control keeps its own
        arguments[1] = Integer{0};
        arguments[2] = u" 30158";
    });
    reader.lstPrefGroup.ListIndex = BP_Reader_1;
    reader.lstPrefGroup_Click();
    reader.cmdEdit_Click(0);
    EXPECT_EQ(reader.Reader(1).Header().KeyString(), " 30158");
    EXPECT_EQ(Do(barcode, "DataChanged"), Value(true));

    const auto removes =
        On(barcode, "RemoveHeader", [](std::span<Value> arguments) { arguments[0] = Integer{-1}; });
    reader.cmdRemove_Click(0);
    EXPECT_EQ(reader.Reader(1).Header().Length(), 0);
}

TEST_F(ComEvents, AnAnswerOfAWrongTypeLeavesThePreset) {
    const ObjectRef card = host.New("QXMagnetCard");
    auto& magnet = Native<QXMagnetCard>(card);
    magnet.Track1().Header().SetBytes("\x05");
    const auto edits = On(card, "EditCurrentHeader", [&](std::span<Value> arguments) {
        arguments[2] = u"perhaps";
        arguments[3] = ObjectRef(card);
    });
    const auto removes = On(card, "ClearCurrentHeader",
                            [](std::span<Value> arguments) { arguments[1] = Missing(); });
    magnet.cmdCreate_Click(0);
    EXPECT_EQ(magnet.Track1().Header().KeyString(), "  5");
    magnet.cmdRemove_Click(0);
    EXPECT_EQ(magnet.Track1().Header().Length(), 0);
}

TEST_F(ComEvents, SinksAnswerInTurnEachSeeingTheAnswerBefore) {
    const ObjectRef pos = host.New("QXPos");
    Lines seen;
    const auto sink = [&](const char* name, bool answer) {
        return [&seen, name, answer](std::span<Value> arguments) {
            seen.push_back(name + std::string(std::get<bool>(arguments[0]) ? " True" : " False"));
            arguments[0] = answer;
        };
    };
    auto first = On(pos, "RemoveAllBlocks", sink("first", false));
    const auto second = On(pos, "RemoveAllBlocks", sink("second", true));
    Native<QXPos>(pos).cmdCleanAll_Click();
    EXPECT_EQ(seen, (Lines{"first True", "second False"}));
    EXPECT_EQ(Do(pos, "DataChanged"), Value(false));
    seen.clear();
    first.End();
    Native<QXPos>(pos).cmdCleanAll_Click();
    EXPECT_EQ(seen, (Lines{"second True"}));
}

// The answers of a failing sink are ignored; the other sinks are still called, and the control does
// not notice the error.
TEST_F(ComEvents, ASinkThatFailsHasNotAnswered) {
    const ObjectRef pos = host.New("QXPos");
    int asked = 0;
    const auto failing = On(pos, "RemoveAllBlocks", [&](std::span<Value> arguments) {
        arguments[0] = false;
        throw 7;
    });
    const auto other = On(pos, "RemoveAllBlocks", [&](std::span<Value> arguments) {
        EXPECT_EQ(arguments[0], Value(true));
        ++asked;
    });
    EXPECT_NO_THROW(Native<QXPos>(pos).cmdCleanAll_Click());
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(Do(pos, "DataChanged"), Value(false));

    const ObjectRef keyboard = host.New("QXKeyboardAccess");
    driver.directory = {{MODULE_POS, 0x4000}};
    const auto stage =
        On(keyboard, "InitDriver", [](std::span<Value>) { throw std::runtime_error("host"); });
    EXPECT_EQ(Do(keyboard, "Init"), Value(true));
}

TEST_F(ComEvents, ASinkMayEndItsSubscriptionDuringTheEvent) {
    const ObjectRef pos = host.New("QXPos");
    std::optional<Subscription> first;
    std::optional<Subscription> second;
    int asked = 0;
    first = On(pos, "RemoveAllBlocks", [&](std::span<Value>) {
        ++asked;
        second.reset();
        first.reset();
    });
    second = On(pos, "RemoveAllBlocks", [&](std::span<Value>) { asked += 10; });
    Native<QXPos>(pos).cmdCleanAll_Click();
    Native<QXPos>(pos).cmdCleanAll_Click();
    EXPECT_EQ(asked, 1);
}

TEST_F(ComEvents, TheLastReferenceMayGoDuringACall) {
    ObjectRef keyboard = host.New("QXKeyboardAccess");
    driver.directory = {{MODULE_POS, 0x4000}};
    const std::weak_ptr<Object> watched = keyboard;
    const auto release = On(keyboard, "InitDriver", [&](std::span<Value>) { keyboard.reset(); });
    const com::Member& init = MemberNamed(keyboard, "Init", Use::Call);
    EXPECT_EQ(Call(*keyboard, init, {}), Value(true));
    EXPECT_TRUE(watched.expired());
}

TEST_F(ComEvents, ASinkMayCallTheControlThatAsks) {
    const ObjectRef barcode = host.New("QXBarcode");
    const auto edits = On(barcode, "EditHeader", [&](std::span<Value> arguments) {
        EXPECT_EQ(ErrorOf([&] { Do(barcode, "BitPage", 99); }), 9);
        Do(barcode, "DefaultValues");
        Let(barcode, "DataChanged", false);
        arguments[1] = false;
        arguments[2] = u"  7";
    });
    Native<QXBarcode>(barcode).cmdEdit_Click(0);
    EXPECT_EQ(Native<QXBarcode>(barcode).Reader(2).Header().KeyString(), "  7");
    EXPECT_EQ(Do(barcode, "DataChanged"), Value(true));
}

} // namespace
} // namespace qx::test
