// Transfers: the state they leave the keyboard in, and the report when they stop half-way.
#include "Desk.h"
#include "app/FilesPage.h"
#include "files/Files.h"
#include "qxcontrols/device/QXCommonKeyboard.h"

#include <QLineEdit>
#include <QSlider>

#include <fstream>

namespace qx::test {
namespace {

TEST(Transfers, AFailedWriteIsReportedAsFailed) {
    Desk desk;
    desk.Page("commonKeyboard");
    desk.Find<QSlider>("slidOutputDelay")->setValue(9);
    desk.InDialog([&](QWidget& dialog) {
        desk.workbench.Simulated()->StopTransferAfter(0);
        Desk::ClickIn(dialog, "cmdWrite");
    });
    desk.window->Transfers().Write();
    ASSERT_EQ(desk.warnings.size(), 1);
    EXPECT_EQ(desk.warnings.front().toStdString(),
              "Reading from the keyboard failed.\nNothing was written.");
    EXPECT_EQ(desk.Notice().count("Reading from the keyboard failed"), 1) << "without a box";
    EXPECT_FALSE(desk.warnings.front().contains(QStringLiteral("QXCFG_")));
    EXPECT_TRUE(desk.details.front().contains(QStringLiteral("QXCFG_")));

    // A transfer that fails but reports success is noticed, and its effects can be recovered.
    int noticed = 0;
    for (std::uint32_t seed = 0; seed < 12; ++seed) {
        const int delay = 20 + static_cast<int>(seed);
        desk.Page("commonKeyboard");
        desk.Find<QSlider>("slidOutputDelay")->setValue(delay);
        desk.warnings.clear();
        desk.timesAsked = 0;
        desk.recover = Desk::Ending::Later;
        desk.InDialog([&](QWidget& dialog) {
            desk.workbench.Simulated()->LieFrom(seed);
            Desk::ClickIn(dialog, "cmdWrite");
        });
        desk.window->Transfers().Write();
        desk.workbench.Simulated()->EndLies();
        const std::string wanted(1, static_cast<char>(delay));
        const bool isHeld = desk.Memory(MODULE_MAGNET_CONFIG, 0, 1) == wanted;
        EXPECT_TRUE(isHeld || desk.warnings.size() + desk.timesAsked == 1) << seed;
        desk.recover = Desk::Ending::Finish;
        desk.window->Transfers().Recover();
        EXPECT_FALSE(desk.window->Transfers().Recover()) << seed;
        noticed += isHeld ? 0 : 1;
    }
    EXPECT_GT(noticed, 0);
}

TEST(Transfers, ADriverMayDieDuringAWrite) {
    Desk desk;
    files::WriteFileAtomically(desk.folder / "other.qxk.wild", "QXCFG_ImageSave crash");
    setup::KeyboardChoice choice{QX_WILD_DRIVER, desk.folder / "other.qxk", "full"};
    ASSERT_TRUE(desk.window->Keyboards().Connect(choice));
    desk.Page("commonKeyboard");
    desk.Find<QSlider>("slidOutputDelay")->setValue(9);
    desk.Write();
    ASSERT_EQ(desk.warnings.size(), 1) << desk.warnings.join(u'\n').toStdString();
    EXPECT_TRUE(
        desk.details.front().contains(QStringLiteral("QXCFG_ImageSave\nThe driver crashed.")))
        << desk.details.front().toStdString();
    EXPECT_EQ(desk.workbench.Records().journal.Entries().size(), 1U);

    files::RemoveFile(desk.folder / "other.qxk.wild");
    ASSERT_TRUE(desk.window->Keyboards().Connect(choice));
    desk.Write();
    EXPECT_TRUE(desk.Notice().contains(QStringLiteral("read back and verified")))
        << desk.Notice().toStdString();
}

TEST(Transfers, TheReviewWarnsOfAnIdentifierThatTheKeyboardDoesNotHave) {
    Desk desk;
    const Long place = desk.workbench.Session().Access().GetBaseAddressForModule(MODULE_GUID);
    const std::pair<std::string, const char*> held[] = {
        {"0123456789ABCDEF", "is replaced by another one"},
        {std::string(16, '\xFF'), "has no identifier and is given one"}};
    for (const auto& [guid, warning] : held) {
        desk.workbench.Simulated()->Poke(place, guid);
        desk.Write();
        EXPECT_TRUE(desk.identifierWarning.contains(QLatin1String(warning)))
            << desk.identifierWarning.toStdString();
        EXPECT_NE(desk.Memory(MODULE_GUID, 0, 16), guid);
    }
    desk.Page("commonKeyboard");
    desk.Find<QSlider>("slidOutputDelay")->setValue(9);
    desk.Write();
    EXPECT_EQ(desk.identifierWarning, QString());
}

TEST(Transfers, AnInterruptedWriteIsOfferedAtTheNextStartAndBackupsAreRestored) {
    const TempFolder shop;
    std::string before;
    {
        Desk desk("full", shop / "");
        before = desk.Memory(MODULE_MAGNET_CONFIG, 0, 8);
        desk.Page("commonKeyboard");
        desk.Find<QSlider>("slidOutputDelay")->setValue(9);
        desk.Page("magnetCard");
        desk.Click("chkMagneticOptions_1");
        desk.AtStep(host::Step::Writing, [&] { // simulates unplugging it
            desk.workbench.Simulated()->FailCall(1, 77, true);
        });
        desk.Write();
        desk.workbench.Simulated()->FailCall(0, 0, false);
        ASSERT_EQ(desk.warnings.size(), 1);
        EXPECT_EQ(desk.warnings.back().toStdString(),
                  "Writing to the keyboard failed.\nThe keyboard may be partly written.\nResolve "
                  "the interrupted write once the keyboard answers again.");
        const auto access =
            desk.workbench.Session().Access().GetBaseAddressForModule(MODULE_MAGNET_CONFIG);
        desk.workbench.Simulated()->Poke(access, "\x09"); // only one byte has arrived
        EXPECT_EQ(desk.timesAsked, 0);
    }
    Desk desk("full", shop / "");
    EXPECT_EQ(desk.timesAsked, 1);
    EXPECT_EQ(desk.Memory(MODULE_MAGNET_CONFIG, 0, 8), before);
    desk.Page("commonKeyboard");
    desk.Find<QSlider>("slidOutputDelay")->setValue(10);
    desk.Write();
    EXPECT_NE(desk.Memory(MODULE_MAGNET_CONFIG, 0, 8), before);
    const std::string ten = desk.Memory(MODULE_MAGNET_CONFIG, 0, 8);
    desk.Page("commonKeyboard");
    desk.Find<QSlider>("slidOutputDelay")->setValue(11);
    desk.Write();

    desk.unsaved = DocumentMenu::Answer::Discard;
    const auto restore = [&](int row) { // row 0 is the newest
        desk.Page("backups");
        auto* list = desk.Find<QTreeWidget>("backups");
        ASSERT_GT(list->topLevelItemCount(), row + 1);
        list->setCurrentItem(list->topLevelItem(row));
        desk.InDialog([](QWidget& dialog) { Desk::ClickIn(dialog, "cmdWrite"); });
        desk.Click("restoreBackup");
        desk.Page("commonKeyboard");
    };
    restore(0);
    EXPECT_EQ(desk.Memory(MODULE_MAGNET_CONFIG, 0, 8), ten);
    EXPECT_EQ(desk.Find<QSlider>("slidOutputDelay")->value(), 10);
    restore(2); // restoring has added one backup
    EXPECT_EQ(desk.Memory(MODULE_MAGNET_CONFIG, 0, 8), before);
    EXPECT_EQ(desk.Find<QSlider>("slidOutputDelay")->value(), 6);
}

// The keyboard then holds everything, and only that is reported.
TEST(Transfers, AProvedWriteThatIsNotRecordedOrNotReadAgainIsNotReportedAsFailed) {
    Desk desk;
    desk.Page("commonKeyboard");
    desk.Find<QSlider>("slidOutputDelay")->setValue(9);
    desk.AtStep(host::Step::ReadingBack,
                [&] { std::ofstream(desk.folder / "records/receipts") << "no folder"; });
    desk.Write();
    EXPECT_EQ(desk.Memory(MODULE_MAGNET_CONFIG, 0, 1), "\x09");
    ASSERT_EQ(desk.warnings.size(), 1);
    EXPECT_EQ(desk.warnings.front().toStdString(),
              "The keyboard was written, read back and verified, but the write could not be "
              "recorded.");
    EXPECT_TRUE(desk.details.front().contains(QStringLiteral("The receipt could not be written.")));

    std::filesystem::remove(desk.folder / "records/receipts");
    desk.warnings.clear();
    desk.unsaved = DocumentMenu::Answer::Discard;
    desk.Page("backups");
    auto* list = desk.Find<QTreeWidget>("backups");
    list->setCurrentItem(list->topLevelItem(0));
    desk.InDialog([](QWidget& dialog) { Desk::ClickIn(dialog, "cmdWrite"); });
    QObject::connect(&desk.workbench, &app::Workbench::Began, list, [&](const QString& text) {
        if (text.startsWith(QStringLiteral("Reading the keyboard")))
            desk.workbench.Simulated()->FailCall(1, 77, true);
    });
    desk.Click("restoreBackup");
    desk.workbench.Simulated()->FailCall(0, 0, false);
    EXPECT_EQ(desk.Memory(MODULE_MAGNET_CONFIG, 0, 1), "\x06");
    EXPECT_EQ(desk.ControlOf<QXCommonKeyboard>("commonKeyboard").OutputDelay(), 9);
    ASSERT_EQ(desk.warnings.size(), 1);
    EXPECT_EQ(desk.warnings.front().toStdString(),
              "The keyboard holds the backup, but could not be read again. The document is "
              "unchanged.\nReading from the keyboard failed.");
}

constexpr Long kDescription = 70000 + 3 * 128;

// Makes the write of a description stop after its first bytes. Returns the text.
QString BreakOffAWrite(Desk& desk, const QString& text = QStringLiteral("Description")) {
    desk.Page("layeredFuncKeys");
    desk.ClickKey("funcKeys", 3);
    desk.Find<QLineEdit>("txtSymbolDesc")->setText(text);
    desk.AtStep(host::Step::Writing, [&] { desk.workbench.Simulated()->StopTransferAfter(5); });
    desk.Write();
    desk.workbench.Simulated()->StopTransferAfter(-1);
    return text;
}

std::string DescriptionBytes(const QString& text) {
    return {reinterpret_cast<const char*>(text.utf16()), static_cast<std::size_t>(text.size()) * 2};
}

TEST(Transfers, AnInterruptedWriteIsFinishedRolledBackOrLeftAtOnce) {
    using Ending = Desk::Ending;
    for (const Ending ending : {Ending::Finish, Ending::RollBack, Ending::Later}) {
        Desk desk;
        desk.recover = ending;
        const QString wanted = BreakOffAWrite(desk);
        EXPECT_EQ(desk.timesAsked, 1);
        EXPECT_EQ(desk.askedToRecover.toStdString(),
                  "Writing to the keyboard failed.\nThe keyboard is partly written.\n\n“Finish "
                  "writing” completes it; “Roll back” restores the keyboard's previous contents.");
        EXPECT_TRUE(desk.warnings.isEmpty()) << "it is reported once";
        const auto holds = [&] {
            const std::string bytes = DescriptionBytes(wanted);
            return desk.workbench.Simulated()->Memory(kDescription,
                                                      static_cast<Long>(bytes.size())) == bytes;
        };
        EXPECT_EQ(holds(), ending == Ending::Finish);
        if (ending != Ending::Later) {
            EXPECT_TRUE(desk.Notice().contains(QStringLiteral("read back and verified")));
            EXPECT_FALSE(desk.window->Transfers().Recover()) << "already recovered";
            EXPECT_TRUE(desk.ShowsState("Not compared with the keyboard"));
            continue;
        }
        desk.Page("overview");
        EXPECT_TRUE(desk.ShowsState("Interrupted write: resolve…"));
        EXPECT_NO_THROW(desk.Find<QWidget>("overviewResolve"));
        EXPECT_TRUE(desk.Notice().contains(QStringLiteral("must be finished or rolled back")));
        EXPECT_EQ(desk.Find<QPushButton>("noticeOffer")->text(), "Resolve…");
        const std::string mixture = desk.Held();
        desk.unsaved = DocumentMenu::Answer::Discard;
        desk.window->Transfers().Read();
        EXPECT_TRUE(desk.Notice().contains(QStringLiteral("mixture")));
        EXPECT_EQ(desk.Held(), mixture) << "reading writes nothing";

        desk.timesAsked = 0;
        desk.recover = Ending::RollBack;
        desk.window->Transfers().Write();
        EXPECT_EQ(desk.timesAsked, 1) << "only the interrupted write is offered";
        EXPECT_TRUE(desk.askedToWrite.isEmpty());
        const std::string rolledBack = desk.Held();
        desk.answer = false;
        desk.window->Transfers().Write();
        EXPECT_EQ(desk.askedToWrite.size(), 1) << "the document is still the mixture";
        EXPECT_EQ(desk.Held(), rolledBack);
        desk.window->Transfers().Read();
        EXPECT_FALSE(desk.workbench.IsMixture());
    }
}

// An indistinguishable keyboard was interrupted in a write that begins identically.
TEST(Transfers, OneOfSeveralInterruptedWritesIsChosen) {
    Desk desk;
    desk.recover = Desk::Ending::Later;
    constexpr Long kSize = 22;
    const std::string before = desk.workbench.Simulated()->Memory(kDescription, kSize);
    const QString wanted = BreakOffAWrite(desk);
    const std::string half = desk.workbench.Simulated()->Memory(kDescription, kSize);
    desk.workbench.Simulated()->Poke(kDescription, before);
    BreakOffAWrite(desk, QStringLiteral("Desktop"));
    desk.recover = Desk::Ending::Finish;
    int chosen = -1;
    desk.window->Transfers().questions.whichWrite = [&](const QString&, const QStringList& writes) {
        EXPECT_EQ(writes.size(), 2);
        return chosen;
    };
    EXPECT_TRUE(desk.window->Transfers().Recover());
    EXPECT_EQ(desk.workbench.Simulated()->Memory(kDescription, kSize), half);
    chosen = 1; // the older write
    EXPECT_TRUE(desk.window->Transfers().Recover());
    EXPECT_EQ(desk.workbench.Simulated()->Memory(kDescription, kSize), DescriptionBytes(wanted));
}

TEST(Transfers, AReadDocumentThatDiffersFromTheLastIsReportedAndShown) {
    Desk desk; // has read
    desk.workbench.Simulated()->Poke(
        desk.workbench.Session().Access().GetBaseAddressForModule(MODULE_MAGNET_CONFIG), "\x09");
    desk.window->Transfers().Read();
    EXPECT_TRUE(
        desk.Notice().contains(QStringLiteral("1 setting differs from the previous document.")))
        << desk.Notice().toStdString();
    desk.InDialog([](QWidget& dialog) {
        auto* tree = dialog.findChild<QTreeWidget*>();
        ASSERT_EQ(tree->topLevelItemCount(), 1);
        EXPECT_EQ(tree->topLevelItem(0)->child(0)->text(1).toStdString(), "6");
        EXPECT_EQ(tree->topLevelItem(0)->child(0)->text(2).toStdString(), "9");
        emit tree->itemActivated(tree->topLevelItem(0)->child(0), 0);
    });
    desk.Click("noticeOffer");
    EXPECT_TRUE(QTest::qWaitFor([] { return QApplication::activeModalWidget() == nullptr; }));
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return desk.Find<QListWidget>("pages")->currentItem()->text() == "Keyboard"; }));
}

TEST(Transfers, AReadComparesWithWhatTheDocumentHad) {
    Desk desk;
    const std::filesystem::path file = desk.folder / "delay.json";
    files::WriteFileAtomically(file, R"({"format": "qx-configuration", "version": 1,
                                         "commonKeyboard": {"outputDelay": 6}})");
    desk.window->Documents().Open(QString::fromStdString(file.string()));
    desk.window->Transfers().Read();
    EXPECT_EQ(desk.Notice().toStdString(),
              "All settings were read; the keyboard itself was not changed.");
}

TEST(Transfers, DamageIsRepairedOnlyWhenTheUserWantsIt) {
    Desk desk;
    desk.Page("commonKeyboard");
    desk.Find<QSlider>("slidOutputDelay")->setValue(9);
    const Long pos = desk.workbench.Session().Access().GetBaseAddressForModule(MODULE_POS);
    desk.workbench.Simulated()->Poke(pos + 6 * 32, "\xC8\x1E\x1F");
    const std::string damaged = desk.Held();

    desk.answer = false;
    desk.window->Transfers().Write();
    ASSERT_EQ(desk.askedToRepair.size(), 1);
    EXPECT_TRUE(desk.askedToRepair.front().contains(QStringLiteral("POS keys")));
    EXPECT_TRUE(desk.warnings.isEmpty()) << desk.warnings.join(' ').toStdString();
    EXPECT_EQ(desk.Held(), damaged);

    desk.answer = true;
    EXPECT_EQ(desk.Write().size(), 2);
    EXPECT_EQ(desk.Memory(MODULE_POS, 6 * 32, 3), Bytes("FF 00 00"));
    EXPECT_EQ(desk.Memory(MODULE_MAGNET_CONFIG, 0, 1), Bytes("09"));

    desk.workbench.Simulated()->Poke(pos + 6 * 32, "\xC8");
    desk.unsaved = DocumentMenu::Answer::Discard;
    desk.window->Transfers().Read();
    EXPECT_TRUE(desk.Notice().contains(QStringLiteral("POS keys: damaged")));
    desk.window->Transfers().Write();
    EXPECT_EQ(desk.askedToRepair.size(), 2) << "a document without the section does not ask";
}

TEST(Transfers, KeyboardFilesAreSavedAndLoaded) {
    Desk desk;
    desk.Page("files");
    auto* page = desk.window->findChild<app::FilesPage*>();
    page->chooseFile = [&](const QString&, bool, const QString&) {
        return QString::fromStdString((desk.folder / "memory.bin").string());
    };
    bool mayReplace = false;
    page->confirm = [&](const QString&) { return mayReplace; };
    desk.Click("param_save");
    const std::string before = desk.Memory(MODULE_MAGNET_CONFIG, 0, 8);
    desk.workbench.Simulated()->Poke(4096, "\x55");
    desk.Click("param_load");
    EXPECT_NE(desk.Memory(MODULE_MAGNET_CONFIG, 0, 8), before) << "the user did not agree";
    mayReplace = true;
    desk.Click("param_load");
    EXPECT_EQ(desk.Memory(MODULE_MAGNET_CONFIG, 0, 8), before);
    std::ofstream(desk.folder / "memory.bin") << "no such file";
    desk.Click("param_load");
    EXPECT_EQ(desk.warnings.size(), 1);
    EXPECT_EQ(desk.Memory(MODULE_MAGNET_CONFIG, 0, 8), before);

    const std::string codes(256, '\x42');
    std::ofstream(desk.folder / "memory.bin") << codes;
    desk.workbench.Simulated()->Poke(27776, codes);
    desk.Click("codepage_compare");
    EXPECT_TRUE(desk.Notice().contains(QStringLiteral("code page equals")));
    desk.workbench.Simulated()->Poke(27776, "x");
    desk.Click("codepage_compare");
    EXPECT_TRUE(desk.Notice().contains(QStringLiteral("code page differs")));
}

TEST(Transfers, ABackupOfAnotherKeyboardIsRestoredOnlyWhenTheUserAgrees) {
    Desk first;
    first.Page("commonKeyboard");
    first.Find<QSlider>("slidOutputDelay")->setValue(9);
    first.Write();
    Desk desk("full", {}, first.folder / "records");
    desk.Page("commonKeyboard");
    desk.workbench.Simulated()->Poke(4096, "\x55");
    const std::string held = desk.Held();
    for (const bool agrees : {false, true}) {
        desk.answer = agrees;
        desk.askedToWrite.clear();
        desk.Page("backups");
        auto* list = desk.Find<QTreeWidget>("backups");
        list->setCurrentItem(list->topLevelItem(0));
        if (agrees)
            desk.InDialog([](QWidget& dialog) { Desk::ClickIn(dialog, "cmdWrite"); });
        desk.Click("restoreBackup");
        ASSERT_EQ(desk.askedToWrite.size(), 1);
        EXPECT_TRUE(desk.askedToWrite[0].contains(QStringLiteral("connected differently")));
        EXPECT_EQ(desk.Held() == held, !agrees);
    }
    EXPECT_EQ(desk.Memory(MODULE_MAGNET_CONFIG, 0, 1), "\x06");
}

} // namespace
} // namespace qx::test
