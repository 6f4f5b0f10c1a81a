// The keys and data that the PC receives, for settings written to the keyboard by the controls.

#include "simulator/TestDrive.h"

#include "qxcontrols/device/QXCommonKeyboard.h"
#include "qxcontrols/device/QXKeyboardAccess.h"
#include "qxcontrols/keyprog/QXFreeProgKeys.h"
#include "qxcontrols/keyprog/QXLayeredFuncKeys.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "qxcontrols/pos/QXPos.h"
#include "qxcontrols/readers/QXBarcode.h"
#include "qxcontrols/readers/QXMagnetCard.h"
#include "simulator/SimulatedDriver.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <functional>
#include <initializer_list>
#include <ostream>
#include <string>

namespace qx::test {

namespace {

using sim::Reception;

void SetCodes(KeySequence& sequence, std::initializer_list<Integer> codes) {
    sequence.Clear();
    for (const Integer code : codes)
        sequence.AddByte(code);
}

std::string OriginText(const sim::Stretch& stretch) {
    const std::string number = std::to_string(stretch.number);
    if (stretch.origin == sim::Origin::OrdinaryKey)
        return "key " + number;
    if (stretch.origin == sim::Origin::ProgrammedKey)
        return std::string(NameOf(stretch.module)) +
               (stretch.layer ? " " + std::to_string(*stretch.layer) : "") + " " + number;
    return ReadText(stretch);
}

// "MODULE_POS 7: +30 -30; data of track 1: abc | a remark".
std::string TextOf(const Reception& reception) {
    std::string text;
    for (const sim::Stretch& stretch : reception.stretches) {
        text += (text.empty() ? "" : "; ") + OriginText(stretch) + ":";
        for (const sim::KeyStroke& stroke : stretch.keys)
            text += (stroke.isReleased ? " -" : " +") + std::to_string(stroke.key);
        if (!stretch.data.empty())
            text += " " + stretch.data;
    }
    for (const sim::Remark& remark : reception.remarks)
        text += " | " + RemarkText(remark);
    return text;
}

// A simulated keyboard to which controls write their settings.
class Keyboard {
public:
    explicit Keyboard(const std::string& model)
        : driver(m_folder / "keyboard.qxk", model), m_access(driver) {
        EXPECT_TRUE(m_access.Init());
        layout.SetLayoutPath(QX_LAYOUTS);
        EXPECT_TRUE(layout.OpenLayoutByName(driver.Layout())) << layout.Error();
    }

    // Downloads the control's default values with this change.
    template <typename Control>
    void Store(const std::function<void(Control&)>& change,
               KeyboardModuleIDs eModule = MODULE_NONE) {
        Control control;
        if (eModule != MODULE_NONE)
            control.SetConfigID(eModule);
        control.SetKeyboard(&m_access);
        control.SetLayoutSource(&layout);
        control.ReloadKeySettings();
        control.DefaultValues();
        change(control);
        m_access.DataTransferPrepare();
        control.DataDownload(true);
        control.PrepareDataDownload(true);
        EXPECT_EQ(m_access.Download(), 0);
        m_access.DataTransferFixUp();
    }

    [[nodiscard]] sim::TestDrive Drive() const {
        return {driver.Memory(0, sim::KeyboardMemory::kSize), driver.Model(), layout};
    }

private:
    TempFolder m_folder;

public:
    sim::SimulatedDriver driver;
    QXKeyboardLayoutData layout;

private:
    QXKeyboardAccess m_access;
};

struct Case {
    const char* name;
    const char* model;
    std::function<void(Keyboard&)> prepare;
    std::function<Reception(const sim::TestDrive&)> act;
    const char* received;
};

void PrintTo(const Case& row, std::ostream* out) {
    *out << row.name;
}

sim::Card CardOf(const std::string& track1, const std::string& track2, const std::string& track3,
                 const std::string& track4) {
    return {{{track1}, {track2}, {track3}, {track4}}};
}

// Keys.

void ProgramKeys(Keyboard& keyboard) {
    keyboard.Store<QXFreeProgKeys>([](QXFreeProgKeys& keys) {
        SetCodes(keys.Sequences().Key(112), {30, 158});
        SetCodes(keys.Sequences().Key(114), {31});
    });
    keyboard.Store<QXPos>([](QXPos& pos) { // position codes 112 and 113; 114; 115; a wide key
        pos.PosData().Block(2).AddKey(2);
        pos.PosData().Block(2).AddKey(3);
        pos.PosData().Block(4).AddKey(4);
        SetCodes(pos.PosData().Block(4).Sequence(), {110, 238});
        pos.PosData().Block(7).AddKey(7);
        pos.PosData().Block(7).AddKey(9);
        SetCodes(pos.PosData().Block(7).Sequence(), {43, 171});
        pos.PosData().Block(93).AddKey(93);
        pos.PosData().Block(94).AddKey(94);
        SetCodes(pos.PosData().Block(94).Sequence(), {61});
    });
    keyboard.Store<QXLayeredFuncKeys>([](QXLayeredFuncKeys& keys) {
        SetCodes(keys.Layer(9).GetKey(23), {44, 31, 159, 172});
    });
}

Reception Press(const sim::TestDrive& drive, Integer key) {
    Reception reception = drive.PressKey(key);
    reception.Append(drive.ReleaseKey(key));
    return reception;
}
Reception PressPos(const sim::TestDrive& drive, Integer index) {
    Reception reception = drive.PressPosKey(index);
    reception.Append(drive.ReleasePosKey(index));
    return reception;
}

const Case kKeyCases[] = {
    {"OwnCodes", "full", ProgramKeys, [](auto& d) { return Press(d, 31); }, "key 31: +31 -31"},
    {"OwnCodesBeyondTheByte", "full", ProgramKeys, [](auto& d) { return Press(d, 140); },
     "key 140: +140 -140"},
    {"NoSuchKey", "full", ProgramKeys, [](auto& d) { return Press(d, 14); },
     " | this keyboard has no key 14"},
    {"FreeKeyInABlockWithoutSequence", "full", ProgramKeys, [](auto& d) { return Press(d, 112); },
     "MODULE_FREEPROGRAMMABLE_KEYS 112: +30 -30"},
    {"BlockBeforeFreeKey", "full", ProgramKeys, [](auto& d) { return Press(d, 114); },
     "MODULE_POS 4: +110 -110"},
    {"WideKey", "full", ProgramKeys, [](auto& d) { return Press(d, 61); }, "MODULE_POS 94: +61"},
    {"PosMajor", "full", ProgramKeys, [](auto& d) { return PressPos(d, 7); },
     "MODULE_POS 7: +43 -43"},
    {"PosMember", "full", ProgramKeys, [](auto& d) { return PressPos(d, 9); },
     "MODULE_POS 7: +43 -43"},
    {"PosWithoutBlock", "full", ProgramKeys, [](auto& d) { return PressPos(d, 1); },
     "key 110: +110 -110"},
    {"PosBesideAWideKeysBlock", "full", ProgramKeys, [](auto& d) { return PressPos(d, 93); },
     "key 61: +61 -61"},
    {"FunctionKey", "full", ProgramKeys, [](auto& d) { return d.PressFunctionKey(9, 23); },
     "MODULE_LAYERED_FUNCKEYS 9 23: +44 +31 -31 -44"},
    {"FunctionKeyOfAnotherLayer", "full", ProgramKeys,
     [](auto& d) { return d.PressFunctionKey(8, 23); }, " | layer 8, F24 has no sequence"},
    {"NoFunctionKeys", "magnet", [](Keyboard&) {}, [](auto& d) { return d.PressFunctionKey(0, 0); },
     " | this keyboard has no layered function keys"},
    {"KeyOfAnOrderOfItsOwn", "x1-4620",
     [](Keyboard& k) {
         k.Store<QXFreeProgKeys>(
             [](QXFreeProgKeys& keys) { SetCodes(keys.Sequences().Key(112), {32}); },
             MODULE_FUNCKEYS_X1_4620);
     },
     [](auto& d) { return Press(d, 112); }, "MODULE_FUNCKEYS_X1_4620 112: +32"},
    {"DamagedPos", "full",
     [](Keyboard& k) { k.driver.Poke(*k.driver.Model().AddressOf(MODULE_POS) + 32, "\xC8"); },
     [](auto& d) { return d.PressKey(110); },
     "key 110: +110 | the POS keys' memory is damaged: POS group 200 is not one of 1 to "
     "105"},
};

// Cards.

const auto kSwipe = [](const sim::TestDrive& drive) {
    return drive.SwipeCard(CardOf("one", "two", "", "four"));
};
const auto kSwipeFaulty = [](const sim::TestDrive& drive) {
    sim::Card card = CardOf("one", "two", "three", "");
    card[0].hasWrongLRC = true;
    card[2].hasWrongLastChar = true;
    return drive.SwipeCard(card);
};

Case CardCase(const char* name, const std::function<void(QXMagnetCard&)>& change,
              const std::function<Reception(const sim::TestDrive&)>& swipe, const char* received) {
    return {name, "full", [change](Keyboard& k) { k.Store<QXMagnetCard>(change); }, swipe,
            received};
}

const Case kCardCases[] = {
    CardCase(
        "FramedInOrder",
        [](QXMagnetCard& card) {
            SetCodes(card.Track1().Header(), {30});
            SetCodes(card.Track1().Terminator(), {43, 171});
            SetCodes(card.Track4().Terminator(), {16});
        },
        kSwipe,
        "prefix of track 1: +30; data of track 1: one; suffix of track 1: +43 -43; "
        "data of track 2: two; data of track 4: four; suffix of track 4: +16"
        " | each track is sent as soon as it has been read"),
    CardCase(
        "SwitchedOff",
        [](QXMagnetCard& card) {
            SetCodes(card.Track1().Header(), {30});
            SetCodes(card.Track1().Terminator(), {31});
            SetCodes(card.Track2().Header(), {32});
            SetCodes(card.Track2().Terminator(), {33});
            card.Track1().SetHeaderEnabled(false);
            card.Track2().SetTerminatorEnabled(false);
            card.Track4().SetEnabled(false);
            card.ReaderOptions().SendImmediate().SetValue(false);
        },
        kSwipe,
        "data of track 1: one; suffix of track 1: +31; prefix of track 2: +32; data of track 2: two"
        " | track 4 is switched off | the tracks are sent once all have been read"),
    CardCase(
        "Verified", [](QXMagnetCard& /*card*/) {}, kSwipeFaulty,
        "data of track 2: two | the checksum (LRC) of track 1 is wrong; the reader rejects the "
        "track"
        " | the last character of track 3 is wrong; the reader rejects the track"
        " | each track is sent as soon as it has been read"),
    CardCase(
        "OneVerificationOff",
        [](QXMagnetCard& card) { card.ReaderOptions().VerifyLRC().SetValue(false); }, kSwipeFaulty,
        "data of track 1: one; data of track 2: two"
        " | the checksum (LRC) of track 1 is wrong; the reader does not verify it"
        " | the last character of track 3 is wrong; the reader rejects the track"
        " | each track is sent as soon as it has been read"),
    {"NoReaderHead", "magnet", [](Keyboard&) {}, kSwipe,
     "data of track 2: two | this keyboard cannot read track 1"
     " | this keyboard cannot read track 4"
     " | each track is sent as soon as it has been read"},
    {"NoReader", "x1-4620", [](Keyboard&) {}, kSwipe,
     " | this keyboard has no magnetic card reader"},
};

// Codes.

void SetUpBarcode(Keyboard& keyboard) {
    keyboard.Store<QXBarcode>([](QXBarcode& barcode) {
        barcode.BitPage(BP_Code39).SetMinSize(4);
        barcode.BitPage(BP_Code39).SetMaxSize(6);
        barcode.BitPage(BP_UPC).Flag(0).SetValue(false);
        SetCodes(barcode.Reader(1).Header(), {30});
        SetCodes(barcode.Reader(1).Terminator(), {43});
        SetCodes(barcode.Reader(2).Header(), {31});
        SetCodes(barcode.Reader(2).Terminator(), {44});
        barcode.Reader(2).SetHeaderEnabled(false);
    });
}

Case CodeCase(const char* name, Integer nReader, BarcodePage eSymbology, const std::string& data,
              const char* received) {
    return {name, "full", SetUpBarcode,
            [=](const sim::TestDrive& d) { return d.ScanCode(nReader, eSymbology, data); },
            received};
}

const Case kCodeCases[] = {
    CodeCase("Shortest", 1, BP_Code39, "ABCD",
             "prefix of reader 1: +30; data of reader 1: ABCD; suffix of reader 1: +43"),
    CodeCase("Longest", 2, BP_Code39, "ABCDEF",
             "data of reader 2: ABCDEF; suffix of reader 2: +44"),
    CodeCase("TooShort", 1, BP_Code39, "ABC",
             " | Code39 accepts 4 to 6 characters; the code has 3"),
    CodeCase("TooLong", 1, BP_Code39, "ABCDEFG",
             " | Code39 accepts 4 to 6 characters; the code has 7"),
    CodeCase("LengthInCharacters", 2, BP_Code39, "ÄÖÜßäö",
             "data of reader 2: ÄÖÜßäö; suffix of reader 2: +44"),
    CodeCase("AnyLength", 2, BP_EAN, "1", "data of reader 2: 1; suffix of reader 2: +44"),
    CodeCase("SwitchedOff", 1, BP_UPC, "12345", " | UPC is switched off"),
    CodeCase("Empty", 1, BP_Code128, "", " | a barcode needs at least one character"),
    {"NoReader", "magnet", [](Keyboard&) {},
     [](const sim::TestDrive& drive) { return drive.ScanCode(1, BP_EAN, "1"); },
     " | this keyboard has no barcode reader"},
};

class TestDriveCases : public testing::TestWithParam<Case> {};

std::string NameOfCase(const testing::TestParamInfo<Case>& info) {
    return info.param.name;
}
INSTANTIATE_TEST_SUITE_P(Keys, TestDriveCases, testing::ValuesIn(kKeyCases), NameOfCase);
INSTANTIATE_TEST_SUITE_P(Cards, TestDriveCases, testing::ValuesIn(kCardCases), NameOfCase);
INSTANTIATE_TEST_SUITE_P(Codes, TestDriveCases, testing::ValuesIn(kCodeCases), NameOfCase);

} // namespace

TEST_P(TestDriveCases, GivesWhatTheMemorySays) {
    Keyboard keyboard(GetParam().model);
    GetParam().prepare(keyboard);
    EXPECT_EQ(TextOf(GetParam().act(keyboard.Drive())), GetParam().received);
}

TEST(TestDrive, AnswersFromTheMemoryNotFromTheImage) {
    Keyboard keyboard("full");
    keyboard.Store<QXCommonKeyboard>([](QXCommonKeyboard& common) { common.SetOutputDelay(250); });
    const Long address = *keyboard.driver.Model().AddressOf(MODULE_LAYERED_FUNCKEYS);
    EXPECT_EQ(keyboard.driver.QXCFG_ImageWriteByte(address, 30), 0);
    const Reception reception = keyboard.Drive().PressFunctionKey(0, 0);
    EXPECT_EQ(TextOf(reception), " | layer 0, F1 has no sequence");
    EXPECT_EQ(reception.outputDelay, Byte{250});
}

TEST(TestDrive, RefusesUnknownKeysAndReaders) {
    const Keyboard keyboard("full");
    const sim::TestDrive drive = keyboard.Drive();
    const std::function<Reception()> refused[] = {
        [&] { return drive.PressKey(-1); },
        [&] { return drive.ReleaseKey(141); },
        [&] { return drive.PressPosKey(0); },
        [&] { return drive.ReleasePosKey(106); },
        [&] { return drive.PressFunctionKey(10, 0); },
        [&] { return drive.PressFunctionKey(0, 24); },
        [&] { return drive.ScanCode(0, BP_EAN, "1"); },
        [&] { return drive.ScanCode(3, BP_EAN, "1"); },
        [&] { return drive.ScanCode(1, BP_CommonSettings, "1"); },
        [&] { return drive.ScanCode(1, BP_Reader_1, "1"); },
    };
    for (const auto& action : refused)
        EXPECT_THROW(static_cast<void>(action()), std::out_of_range);
    EXPECT_THROW(sim::TestDrive("short", keyboard.driver.Model(), keyboard.layout),
                 std::invalid_argument);
}

} // namespace qx::test
