#include "support/TestKeyboard.h"
#include "support/Widgets.h"
#include "views/BarcodeEditor.h"
#include "views/QXBarcodeView.h"
#include "views/QXMagnetCardView.h"

#include <QLabel>
#include <QSlider>
#include <QSpinBox>

namespace qx::test {
namespace {

TEST(Bindings, ActAfterAFailureToShow) {
    CheckBox child;
    QCheckBox box;
    views::Bindings bindings;
    int clicked = 0;
    bindings.Bind(&box, QStringLiteral("box"), child, [&] { ++clicked; });
    bool fails = true;
    bindings.OnShow([&] {
        if (std::exchange(fails, false))
            throw std::runtime_error("not shown");
    });
    EXPECT_THROW(bindings.ShowAll(), std::runtime_error);
    box.toggle();
    EXPECT_EQ(clicked, 1);
    EXPECT_EQ(child.Value, 1);
    child.Value = 0;
    bindings.ShowAll();
    EXPECT_FALSE(box.isChecked());
    EXPECT_EQ(clicked, 1) << "showing must not run the action";
}

struct QXBarcodeViewTest : testing::Test {
    QXBarcodeViewTest() {
        control.SetKeyboard(&keyboard.access);
        for (Integer ePage = 0; ePage < kBarcodePages; ++ePage)
            control.SetListEntry(ePage, "page " + std::to_string(ePage));
        for (Integer ePage = 0; ePage < kBarcodeOptionPages; ++ePage)
            control.BitPage(ePage).SetOptionNum(3);
        control.AdjustControls();
        view.resize(700, 500);
        view.show();
    }

    TestKeyboard keyboard{{{MODULE_BARCODE_HEADERS, 0x1000}, {MODULE_BARCODE_CONFIG, 0x2000}}};
    QXBarcode control{keyboard.Services()};
    views::QXBarcodeView view{control};
};

TEST_F(QXBarcodeViewTest, OnlyTheChosenPageTakesRoom) {
    const char* readers[] = {"lblHint",   "chkReader_0", "lblReader_1",
                             "cmdEdit_0", "cmdRemove_1", "chkShowDetails"};
    ClickRow(view, "lstPrefGroup", BP_Code39);
    EXPECT_TRUE(IsShown(view, "chkBarOption_2") && IsShown(view, "slidRange_1"));
    EXPECT_TRUE(IsShown(view, "lblRange_0") && IsShown(view, "lblCurrSize_1"));
    EXPECT_FALSE(IsShown(view, "chkBarOption_3"));
    for (const char* name : readers)
        EXPECT_FALSE(IsShown(view, name)) << name;
    ClickRow(view, "lstPrefGroup", BP_EAN);
    EXPECT_TRUE(IsShown(view, "chkBarOption_2"));
    EXPECT_FALSE(IsShown(view, "slidRange_0") || IsShown(view, "lblCurrSize_0"));
    ClickRow(view, "lstPrefGroup", BP_Reader_2);
    for (const char* name : readers)
        EXPECT_TRUE(IsShown(view, name)) << name;
    EXPECT_FALSE(IsShown(view, "chkBarOption_0"));

    control.lstPrefGroup.ListIndex = BP_EAN; // selected by another view or by the host
    control.lstPrefGroup_Click();
    EXPECT_EQ(Find<QListWidget>(view, "lstPrefGroup")->currentRow(), BP_EAN);
    EXPECT_TRUE(IsShown(view, "chkBarOption_0"));
}

TEST_F(QXBarcodeViewTest, ClicksReachTheKeyboard) {
    keyboard.Download(control);
    const std::string defaults = keyboard.driver.memory;
    const auto option = [&] { // Code39's option 1
        return keyboard.driver.memory[0x2000 + 42] & 0x40;
    };
    const int before = option();
    ClickRow(view, "lstPrefGroup", BP_Code39);
    Click(view, "chkBarOption_1");
    EXPECT_TRUE(control.DataChanged());
    auto* least = Find<QSlider>(view, "slidRange_0");
    auto* greatest = Find<QSlider>(view, "slidRange_1");
    QTest::keyClick(least, Qt::Key_Right);
    QTest::keyClick(greatest, Qt::Key_Left);
    QTest::keyClick(greatest, Qt::Key_Left);
    EXPECT_EQ(Find<QLabel>(view, "lblCurrSize_0")->text(), "2");
    EXPECT_EQ(Find<QLabel>(view, "lblCurrSize_1")->text(), "46");
    ClickRow(view, "lstPrefGroup", BP_Code25_Overlapped); // 4 to 80
    QTest::keyClick(least, Qt::Key_End);
    QTest::keyClick(greatest, Qt::Key_Left); // reduces the minimum too
    ClickRow(view, "lstPrefGroup", BP_Reader_2);
    Click(view, "chkReader_1");
    keyboard.Download(control);
    EXPECT_TRUE(keyboard.Holds(MODULE_BARCODE_CONFIG, Bytes("02 2E 00*4 4F 4F"), 2));
    EXPECT_NE(option(), before);
    EXPECT_EQ(keyboard.driver.memory[0x2000 + 48] & 0x0F, 0x07); // the readers' switches

    Click(view, "chkReader_1"); // switches everything back
    for (const Integer ePage : {BP_Code25_Overlapped, BP_Code39}) {
        ClickRow(view, "lstPrefGroup", ePage);
        QTest::keyClick(least, Qt::Key_Home);
        QTest::keyClick(greatest, Qt::Key_End);
    }
    Click(view, "chkBarOption_1");
    keyboard.Download(control);
    EXPECT_EQ(keyboard.driver.memory, defaults);
}

TEST_F(QXBarcodeViewTest, ButtonsAndKeysOnASequenceEditIt) {
    bool fAdvance = true;
    std::string sNext = " 30158";
    const auto advance = control.AdvanceEdit.Subscribe([&](bool& fEdit) { fEdit = fAdvance; });
    const auto edit = control.EditHeader.Subscribe(
        [&](const std::string&, bool& fCancelEdit, std::string& sNewSeq) {
            fCancelEdit = false;
            sNewSeq = sNext;
        });
    const auto remove = control.RemoveHeader.Subscribe([](bool& fRemoveIt) { fRemoveIt = true; });

    ClickRow(view, "lstPrefGroup", BP_Reader_1);
    Click(view, "cmdEdit_1");
    EXPECT_EQ(Find<QLabel>(view, "lblReader_1")->text(), "30 158");
    auto* header = Find<QLabel>(view, "lblReader_0");
    sNext = " 28";
    QTest::keyClick(header, Qt::Key_Down);
    QTest::keyClick(header, Qt::Key_PageUp);
    QTest::keyClick(header, Qt::Key_Shift);
    QTest::keyClick(header, Qt::Key_K, Qt::ControlModifier); // a shortcut of the host
    EXPECT_EQ(header->text(), "");
    // "!" and "(" have the key codes of page up and the down arrow, if mistaken for key codes.
    for (const auto& key : {Qt::Key_A, Qt::Key_Exclam, Qt::Key_ParenLeft, Qt::Key_F5}) {
        QTest::keyClick(header, key, Qt::ShiftModifier);
        EXPECT_EQ(header->text(), "28") << key;
        control.Reader(1).Header().Clear();
        control.AdjustControls();
    }
    fAdvance = false;
    QTest::keyClick(header, Qt::Key_A);
    EXPECT_EQ(header->text(), "");
    Click(view, "cmdEdit_0");
    keyboard.Download(control);
    EXPECT_TRUE(keyboard.Holds(MODULE_BARCODE_HEADERS, Bytes("1C 00*31 1E 9E 00*30 00*64")));
    Click(view, "cmdRemove_0");
    keyboard.Download(control);
    EXPECT_TRUE(keyboard.Holds(MODULE_BARCODE_HEADERS, Bytes("00*32 1E 9E 00*30 00*64")));
}

// By the keyboard alone; each row changes its own symbology, and only that.
TEST_F(QXBarcodeViewTest, TheTableOfCodesReachesTheKeyboard) {
    control.BitPage(BP_Code11).SetMinSize(2); // below its limit, as uploaded
    views::BarcodeEditor editor(control);
    editor.resize(900, 700);
    editor.show();
    keyboard.Download(control);
    std::string wanted = keyboard.driver.memory;

    const auto press = [&](const char* name, Qt::Key key) {
        QTest::keyClick(Find<QWidget>(editor, name), key);
    };
    const auto type = [&](const char* name, const char* number) {
        auto* box = Find<QSpinBox>(editor, name);
        box->setFocus();
        box->selectAll();
        QTest::keyClicks(box, QLatin1String(number));
        QTest::keyClick(box, Qt::Key_Return);
    };
    EXPECT_EQ(Find<QSpinBox>(editor, "Code11.minSize")->value(), 2);
    press("Code39.flags.1", Qt::Key_Space);
    EXPECT_EQ(control.lstPrefGroup.ListIndex, int{BP_Code39});
    press("UPC.flags.0", Qt::Key_Space);
    type("Code25_Overlapped.maxSize", "17");
    type("Code25_Overlapped.minSize", "30"); // raises the maximum too
    type("MSI.minSize", "2");                // out of range: no change
    auto* upc = Find<QWidget>(editor, "UPC.flags.2");
    upc->setFocus();
    QTest::keyClick(upc, Qt::Key_Down);
    EXPECT_EQ(editor.focusWidget(), Find<QWidget>(editor, "Code39.flags.2"));
    keyboard.Download(control);
    wanted[0x2000 + 42] ^= 0x40; // option 1 of Code 39
    wanted[0x2000 + 44] ^= static_cast<char>(0x80);
    wanted.replace(0x2000 + 8, 2, Bytes("1E 1E"));
    EXPECT_EQ(keyboard.driver.memory, wanted);

    editor.setCurrentIndex(2);
    Click(*editor.currentWidget(), "chkReader_0");
    editor.setCurrentIndex(0);
    EXPECT_EQ(control.lstPrefGroup.ListIndex, int{BP_Code25_Overlapped})
        << "the row is still the current one";
    keyboard.Download(control);
    wanted[0x2000 + 48] ^= 0x04;
    EXPECT_EQ(keyboard.driver.memory, wanted);
}

struct QXMagnetCardViewTest : testing::Test {
    QXMagnetCardViewTest() {
        view.resize(700, 500);
        view.show();
        HasTracks(0x60);
    }
    // The upper half of the capability byte reports the keyboard's tracks.
    void HasTracks(Byte bCapabilities) {
        keyboard.driver.image[0x7FF] = static_cast<char>(bCapabilities);
        keyboard.access.Init();
        control.SetKeyboard(&keyboard.access);
    }

    TestKeyboard keyboard{{{MODULE_MAGNET_HEADERS, 0x1000}, {MODULE_MAGNET_CONFIG, 0x2000}}};
    QXMagnetCard control{keyboard.Services()};
    views::QXMagnetCardView view{control};
};

TEST_F(QXMagnetCardViewTest, TheCurrentTrackIsEditedAndWritten) {
    control.DefaultValues();
    auto* tracks = Find<QListWidget>(view, "trackList");
    ASSERT_EQ(tracks->count(), 2);
    EXPECT_EQ(tracks->accessibleName(), "#Tracks");
    EXPECT_EQ(tracks->currentRow(), -1); // track 1 is current but does not exist
    EXPECT_FALSE(Find<QWidget>(view, "cmdCreate_0")->isEnabled());
    Click(view, "chkUseThisHeader");
    EXPECT_FALSE(control.DataChanged());

    std::string asked;
    const auto advance = control.AdvanceEdit.Subscribe([](bool& fEdit) { fEdit = true; });
    const auto header = control.EditCurrentHeader.Subscribe(
        [&](Integer nTrackId, const std::string&, bool&, std::string& sOut) {
            asked += "h" + std::to_string(nTrackId);
            sOut = " 30";
        });
    const auto terminator = control.EditCurrentTerminator.Subscribe(
        [&](Integer nTrackId, const std::string&, bool&, std::string& sOut) {
            asked += "t" + std::to_string(nTrackId);
            sOut = " 28";
        });
    ClickRow(view, "trackList", 1);
    Click(view, "cmdCreate_1");
    QTest::keyClick(Find<QWidget>(view, "lblCurrHeader"), Qt::Key_F5); // types no character
    EXPECT_EQ(asked, "t3");
    QTest::keyClick(Find<QWidget>(view, "lblCurrHeader"), Qt::Key_X);
    EXPECT_EQ(asked, "t3h3");
    EXPECT_EQ(Find<QLabel>(view, "lblCurrHeader")->text(), "30");
    ClickRow(view, "trackList", 0);
    EXPECT_EQ(Find<QLabel>(view, "lblCurrHeader")->text(), "");
    QTest::keyClick(Find<QWidget>(view, "lblCurrTerminator"), Qt::Key_Space);
    Click(view, "cmdRemove_1");
    EXPECT_EQ(asked, "t3h3t2");

    keyboard.Download(control);
    EXPECT_TRUE(keyboard.Holds(MODULE_MAGNET_HEADERS, Bytes("00*128 1E 00*31 1C 00*31 00*64")));

    ClickRow(view, "trackList", 1);
    Click(view, "chkEnableCurrentTrack");
    Click(view, "chkUseThisTerminator");
    Click(view, "chkMagneticOptions_2");
    keyboard.Download(control);
    // Track 3's terminator is off, and so are the track and immediate sending.
    EXPECT_TRUE(keyboard.Holds(MODULE_MAGNET_CONFIG, Bytes("DF 0B 6E"), 5));
}

} // namespace
} // namespace qx::test
