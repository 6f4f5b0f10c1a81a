// Keys edited beside the keyboard: by the pointer, each change reaching the keyboard's memory.
#include "Desk.h"
#include "app/FindableSettings.h"
#include "app/SettingWords.h"
#include "app/TestDriveTexts.h"
#include "qxcontrols/keyprog/QXFreeProgKeys.h"
#include "qxcontrols/readers/QXBarcode.h"
#include "simulator/TestDrive.h"
#include "views/Bindings.h"
#include "views/ChipRow.h"

#include <QAbstractButton>
#include <QLineEdit>
#include <QTabWidget>

#include <algorithm>
#include <fstream>
#include <functional>

namespace qx::test {
namespace {

// "1F" is the press of A, "9F" its release; 3A and BA those of Ctrl.
TEST(InPlace, AKeyIsEditedWithoutAWindow) {
    Desk desk;
    desk.Page("freeProgKeys");
    desk.ClickKey("layoutDisplay", 75);
    EXPECT_EQ(desk.Find<QLabel>("keyTitle")->text().toStdString(), "Key 75 (Ins)");
    desk.Click("key_31");
    desk.Click("hold_58");
    desk.Click("key_31");
    QTest::keyClicks(desk.Find<views::KeyGrid>("layoutDisplay"), "10");
    desk.Click("addTextAndEnter");
    EXPECT_EQ(desk.Find<QLineEdit>("receivedCodes")->text().toStdString(),
              "A ^A Ctrl A ^A ^Ctrl 1 ^1 0 ^0 Enter ^Enter");
    EXPECT_EQ(desk.Write().size(), 1);
    EXPECT_EQ(desk.Memory(MODULE_FREEPROGRAMMABLE_KEYS, 0, 13),
              Bytes("1F 9F 3A 1F 9F BA 02 82 0B 8B 2B AB 00"));

    // Each change is one step.
    for (const char* before : {"A ^A Ctrl A ^A ^Ctrl ", "A ^A ", ""}) {
        desk.UndoAction().trigger();
        EXPECT_EQ(desk.ControlOf<QXFreeProgKeys>("freeProgKeys").lblCurrSeq.Caption, before);
    }
    EXPECT_FALSE(desk.workbench.History().CanUndo());
    EXPECT_FALSE(desk.Find<QWidget>("removeLast")->isEnabled()) << "the inspector follows";
}

TEST(InPlace, TheSelectedKeyIsTheOneThatIsEdited) {
    Desk desk;
    desk.Page("layeredFuncKeys");
    desk.ClickKey("funcKeys", 3);
    EXPECT_EQ(desk.Find<QLabel>("keyTitle")->text().toStdString(), "Layer 0, F4");
    desk.Click("key_31");
    desk.ShowLayer(1);
    EXPECT_EQ(desk.Find<QLabel>("keyTitle")->text().toStdString(), "No key selected");
    desk.ClickKey("funcKeys", 3);
    EXPECT_EQ(desk.Find<QLabel>("keyTitle")->text().toStdString(), "Layer 1, F4");
    EXPECT_FALSE(desk.Find<QWidget>("removeLast")->isEnabled());
    desk.Click("key_48");
    EXPECT_EQ(desk.Write().size(), 2);

    desk.Page("freeProgKeys");
    desk.ClickKey("layoutDisplay", 31);
    const auto* chips = desk.window->findChild<views::ChipRow*>(QStringLiteral("keys"));
    ASSERT_NE(chips, nullptr);
    EXPECT_TRUE(std::ranges::none_of(desk.window->findChildren<views::ChipRow*>(),
                                     [](const QWidget* row) { return row->isVisible(); }))
        << "A cannot be programmed";
}

// "2B" is the press of Enter, "AB" its release.
TEST(InPlace, PrefixesAndSuffixesOfReadersAreEditedOnTheirPages) {
    Desk desk;
    desk.Page("magnetCard");
    desk.Find<QListWidget>("trackList")->setCurrentRow(1);
    desk.Click("lblCurrTerminator");
    EXPECT_TRUE(desk.Find<QLabel>("keyTitle")->text().contains(QStringLiteral("Track 2")));
    QTest::keyClicks(desk.Find<QWidget>("lblCurrTerminator"), "1");
    desk.Click("addTextAndEnter");
    desk.Click("lblCurrHeader");
    EXPECT_FALSE(desk.Find<QWidget>("removeLast")->isEnabled()) << "it is empty";
    desk.Click("key_31");

    desk.Page("barcode");
    desk.ControlOf<QXBarcode>("barcode").lstPrefGroup.ListIndex = BP_Reader_2;
    desk.ControlOf<QXBarcode>("barcode").lstPrefGroup_Click();
    desk.Click("lblReader_1");
    desk.Click("key_2");
    EXPECT_EQ(desk.Write().size(), 3);
    EXPECT_EQ(desk.Memory(MODULE_MAGNET_HEADERS, 2 * 32, 3), Bytes("1F 9F 00"));
    EXPECT_EQ(desk.Memory(MODULE_MAGNET_HEADERS, 3 * 32, 5), Bytes("02 82 2B AB 00"));
    EXPECT_EQ(desk.Memory(MODULE_BARCODE_HEADERS, 3 * 32, 3), Bytes("02 82 00"));
    EXPECT_EQ(desk.Memory(MODULE_BARCODE_HEADERS, 2 * 32, 1), Bytes("00"));
    for (int step = 0; step < 3; ++step)
        desk.UndoAction().trigger();
    EXPECT_FALSE(desk.workbench.History().CanUndo()) << "each change was one step";

    // The kinds of code have no sequences.
    desk.Page("barcode");
    desk.Find<QTabWidget>("barcodeTabs")->setCurrentIndex(0);
    EXPECT_TRUE(std::ranges::none_of(desk.window->findChildren<views::ChipRow*>(),
                                     [](const QWidget* row) { return row->isVisible(); }));
}

TEST(InPlace, APosKeyThatIsClearedIsInNoBlock) {
    Desk desk;
    desk.Page("pos");
    desk.ClickKey("posDisplay", 12);
    desk.Click("key_31");
    EXPECT_EQ(desk.Find<QLabel>("keyTitle")->text().toStdString(),
              "Key 12 (F11) › Block 1 (1 key)");
    desk.Click("clearKeys");
    EXPECT_EQ(desk.Find<QLabel>("keyTitle")->text().toStdString(), "Key 12 (F11)");
    EXPECT_TRUE(desk.ShowsState("In sync"));
}

// POS keys 1 and 2 are the keys 110 (Esc) and 112 (F1).
TEST(InPlace, ThePcReceivesWhatTheTestDriveSays) {
    Desk desk;
    const auto received = [&] { return desk.Find<QLineEdit>("receivedCodes")->text(); };
    const auto warnings = [&] {
        for (const auto* label : desk.window->findChildren<QLabel*>(QStringLiteral("warnings")))
            if (label->isVisible())
                return label->text();
        return QString();
    };
    desk.Page("freeProgKeys");
    desk.ClickKey("layoutDisplay", 112);
    EXPECT_EQ(received(), "F1 ^F1") << "its own codes";
    desk.Click("key_48");
    EXPECT_EQ(received(), "C ^C");
    EXPECT_EQ(warnings(), "");
    const auto isStruck = [&](int key) {
        QApplication::processEvents();
        return desk.Find<views::KeyGrid>("layoutDisplay")->IsStruck(key);
    };
    EXPECT_FALSE(isStruck(112));

    desk.Page("pos");
    desk.ClickKey("posDisplay", 2);
    EXPECT_EQ(received(), "Free keys › Key 112 (F1) sends: C ^C");
    desk.Click("key_31");
    EXPECT_EQ(received(), "A ^A");
    EXPECT_EQ(warnings(), "");

    desk.Page("freeProgKeys");
    EXPECT_EQ(received(), "POS keys › Key 2 (F1) sends: A ^A") << "changed on the other page";
    const QString neverSent =
        "Never sent, as the key sends the sequence of POS keys › Key 2 (F1) instead.";
    EXPECT_EQ(warnings(), neverSent);
    EXPECT_TRUE(isStruck(112));
    EXPECT_FALSE(isStruck(113));
    desk.InDialog([&](QWidget& dialog) {
        const auto* list = dialog.findChild<QListWidget*>(QStringLiteral("warnings"));
        ASSERT_NE(list, nullptr);
        ASSERT_EQ(list->count(), 1);
        EXPECT_EQ(list->item(0)->text(), "Free keys › Key 112 (F1): " + neverSent);
        Desk::ClickIn(dialog, "cmdWrite");
    });
    desk.window->Transfers().Write(); // which leads to the page Test
    desk.Page("freeProgKeys");
    desk.ClickKey("layoutDisplay", 112);
    const sim::TestDrive drive(desk.Held(), desk.workbench.Simulated()->Model(),
                               desk.workbench.Layout());
    const sim::Stretch sent = drive.PressKey(112).stretches.at(0);
    EXPECT_EQ(app::OriginTextOf(sent, desk.workbench.Configuration(), desk.workbench.Layout()) +
                  " sends: " + views::ToQt(ContentText(sent, desk.workbench.Layout())),
              received());

    desk.Click("clearKeys");
    EXPECT_EQ(received(), "POS keys › Key 2 (F1) sends: A ^A");
    EXPECT_EQ(warnings(), "") << "there is nothing to send";
    EXPECT_FALSE(isStruck(112));
}

// The name that lists of settings have for a key is the one on its page, in the search, for undo
// and in the test drive; a block's number follows it.
TEST(InPlace, OneKeyHasOneName) {
    struct Case {
        const char* page;
        const char* grid;
        int key;
        std::string place;
        QString name; // on its page
        QString group;
        std::function<sim::Reception(const sim::TestDrive&)> press;
    };
    const Case cases[] = {
        {"freeProgKeys",
         "layoutDisplay",
         75,
         "/freeProgKeys/keys[75]",
         QStringLiteral("Key 75 (Ins)"),
         {},
         [](const sim::TestDrive& drive) { return drive.PressKey(75); }},
        {"layeredFuncKeys",
         "funcKeys",
         3,
         "/layeredFuncKeys/keys[2][3]",
         QStringLiteral("Layer 2, F4"),
         {},
         [](const sim::TestDrive& drive) { return drive.PressFunctionKey(2, 3); }},
        {"pos", "posDisplay", 3, "/pos/blocks[3]", QStringLiteral("Key 3 (F2)"),
         QStringLiteral(" › Block 1 (1 key)"),
         [](const sim::TestDrive& drive) { return drive.PressPosKey(3); }},
    };
    Desk desk;
    const host::Configuration& configuration = desk.workbench.Configuration();
    for (const Case& each : cases) {
        SCOPED_TRACE(each.place);
        desk.Page(each.page);
        if (each.page == std::string_view("layeredFuncKeys"))
            desk.ShowLayer(2);
        desk.ClickKey(each.grid, each.key);
        desk.Click("key_31");
        EXPECT_EQ(desk.Find<QLabel>("keyTitle")->text(), each.name + each.group);
        const auto& caps = desk.Find<views::KeyGrid>(each.grid)->Keys();
        const auto cap = std::ranges::find(caps, each.key, &views::KeyCap::index);
        ASSERT_NE(cap, caps.end());
        EXPECT_TRUE(cap->name.startsWith(each.name.split(QStringLiteral(", ")).last()))
            << cap->name.toStdString();

        const QString name =
            app::NameText(configuration.NameOf(*configuration.Find(each.page), each.place));
        EXPECT_TRUE(name.endsWith(QStringLiteral(" › ") + each.name)) << name.toStdString();
        EXPECT_TRUE(desk.UndoAction().text().contains(name))
            << desk.UndoAction().text().toStdString();
        const auto found = app::FindableSettings(desk.workbench, [](const std::string&) {});
        EXPECT_EQ(std::ranges::count(found, name + each.group, &app::Findable::text), 1);

        desk.Write();
        const sim::TestDrive drive(desk.Held(), desk.workbench.Simulated()->Model(),
                                   desk.workbench.Layout());
        const sim::Reception received = each.press(drive);
        ASSERT_FALSE(received.stretches.empty());
        EXPECT_EQ(
            app::OriginTextOf(received.stretches.front(), configuration, desk.workbench.Layout()),
            name);
    }
}

// A driver library names no layout.
TEST(InPlace, TheKeysToChooseFromFollowTheLayout) {
    Desk desk;
    desk.window->Keyboards().Connect({QX_WILD_DRIVER, desk.folder / "other.qxk", "full"});
    desk.Page("freeProgKeys");
    desk.ClickKey("layoutDisplay", 75);
    EXPECT_EQ(desk.Find<QAbstractButton>("key_22")->text().toStdString(), "Y");
    desk.workbench.Preferences().SetPreferedKeyLang(1031);
    desk.window->ApplyPreferences();
    EXPECT_EQ(desk.Find<QAbstractButton>("key_22")->text().toStdString(), "Z");
}

TEST(InPlace, UndoAndTheSearchReachTheSequencesOfReaders) {
    Desk desk;
    desk.Page("barcode");
    auto* tabs = desk.Find<QTabWidget>("barcodeTabs");
    tabs->setCurrentIndex(2);
    desk.Click("lblReader_1");
    desk.Click("key_31");
    desk.Click("lblReader_0");
    tabs->setCurrentIndex(1);
    desk.UndoAction().trigger();
    EXPECT_EQ(tabs->currentIndex(), 2);
    EXPECT_EQ(desk.Find<QLabel>("keyTitle")->text().toStdString(), "Reader 2 › Suffix");
    EXPECT_FALSE(desk.Find<QWidget>("removeLast")->isEnabled());
    EXPECT_NO_THROW(desk.Find<QWidget>("changeMark"));

    desk.window->GoTo("/magnetCard/tracks/2/terminator");
    desk.Click("key_31");
    desk.window->GoTo("/barcode/readers/0/header");
    desk.Click("key_32");
    EXPECT_EQ(desk.Write().size(), 2);
    EXPECT_EQ(desk.Memory(MODULE_MAGNET_HEADERS, 5 * 32, 3), Bytes("1F 9F 00"));
    EXPECT_EQ(desk.Memory(MODULE_BARCODE_HEADERS, 0, 3), Bytes("20 A0 00"));
}

// It has the modules of a card reader, but reads no track.
TEST(InPlace, ATrackThatTheKeyboardLacksIsNotEdited) {
    Desk desk;
    const auto model = desk.folder / "no-tracks.json";
    std::ofstream(model) << R"({"keyboard": {"name": "NO-TRACKS", "bootloader": "B100",
        "program": "P100", "country": "US01", "config": "C009", "flags": {
        "freeProgrammableKeys": false, "connectionV24": false, "chipcardReader": false,
        "barcodeReader": false, "magneticTracks": [false, false, false, false]}},
        "layout": "us.qxl", "directory": [
        {"module": "MODULE_MAGNET_CONFIG", "address": 4096},
        {"module": "MODULE_MAGNET_HEADERS", "address": 4864}]})";
    desk.Page("magnetCard");
    desk.Click("key_31");
    const auto received = [&] { return desk.Find<QLineEdit>("receivedCodes")->text(); };
    EXPECT_EQ(received().toStdString(), "A ^A");
    desk.Click("chkUseThisHeader");
    EXPECT_EQ(received().toStdString(), "Nothing: it is switched off.");
    desk.Click("chkUseThisHeader");
    EXPECT_EQ(received().toStdString(), "A ^A");
    EXPECT_TRUE(
        desk.window->Keyboards().Connect({{}, desk.folder / "no-tracks.qxk", model.string()}));
    desk.Page("magnetCard");
    EXPECT_EQ(desk.Find<QLabel>("inspectorHint")->text().toStdString(),
              "This keyboard cannot read this track.");
    EXPECT_THROW(desk.Find<QLineEdit>("receivedCodes"), std::runtime_error);
}

} // namespace
} // namespace qx::test
