// The window as a whole, from the first click to the bytes in the keyboard's memory.
#include "Desk.h"

#include "app/SheetMenu.h"
#include "app/TestDrivePage.h"
#include "files/Files.h"
#include "qxcontrols/keyprog/QXFreeProgKeys.h"
#include "qxcontrols/keyprog/QXLayeredFuncKeys.h"
#include "qxcontrols/pos/QXPos.h"
#include "qxcontrols/readers/QXBarcode.h"

#include <QAction>
#include <QClipboard>
#include <QCommandLinkButton>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPrinter>
#include <QSlider>
#include <QSpinBox>
#include <QTabBar>
#include <QTabWidget>

#include <fstream>

namespace qx::test {
namespace {

TEST(MainWindow, EveryPageEditsReviewsWritesAndReadsBack) {
    Desk desk;
    const std::string start = desk.Document();

    desk.Page("commonKeyboard");
    desk.Find<QSlider>("slidOutputDelay")->setValue(9);
    desk.Page("magnetCard");
    desk.Click("chkUseThisHeader");
    desk.Page("barcode");
    desk.Find<QSpinBox>("Code39.minSize")->setValue(4);
    desk.Edit("freeProgKeys", 75);
    desk.Page("layeredFuncKeys");
    desk.ShowLayer(1);
    EXPECT_EQ(desk.workbench.Simulated()->Layer(), 1) << "the keyboard's layer is the one shown";
    desk.ClickKey("funcKeys", 3);
    QTest::keyClicks(desk.Find<QLineEdit>("txtSymbolDesc"), QStringLiteral("Cash"));
    desk.Page("pos");
    desk.InDialog([](QWidget& dialog) {
        auto* keys = dialog.findChild<views::KeyGrid*>();
        for (const int key : {3, 10})
            QTest::mouseClick(keys, Qt::LeftButton, {}, keys->KeyRect(key).center());
        Desk::ClickIn(dialog, "cmdOK");
    });
    desk.Click("cmdEdit");

    // Undoing everything restores the original document, and redo restores all edits.
    const std::string edited = desk.Document();
    desk.UndoAll();
    EXPECT_EQ(desk.Document(), start);
    EXPECT_FALSE(desk.workbench.IsModified() || desk.window->isWindowModified());
    while (desk.workbench.History().CanRedo())
        desk.workbench.Redo();
    EXPECT_EQ(desk.Document(), edited);

    // Enter in the review goes to the change; it never writes.
    desk.InDialog(
        [](QWidget& dialog) { QTest::keyClick(dialog.findChild<QTreeWidget*>(), Qt::Key_Return); });
    desk.window->Transfers().Write();
    EXPECT_EQ(desk.Memory(MODULE_MAGNET_CONFIG, 0, 1), Bytes("06"));
    EXPECT_TRUE(desk.Find<QSlider>("slidOutputDelay")->isVisible());

    const QStringList changes = desk.Write();
    EXPECT_TRUE(desk.warnings.isEmpty()) << desk.warnings.join(' ').toStdString();
    EXPECT_EQ(changes.size(), 7) << changes.join('\n').toStdString();
    EXPECT_EQ(desk.Memory(MODULE_MAGNET_CONFIG, 0, 1), Bytes("09"));
    EXPECT_EQ(desk.Memory(MODULE_BARCODE_CONFIG, 2, 1), Bytes("04"));
    EXPECT_EQ(desk.Memory(MODULE_FREEPROGRAMMABLE_KEYS, 0, 3), Bytes("1F 9F 00"));
    EXPECT_NE(desk.Memory(MODULE_POS, 0, 3360), std::string(3360, '\0'));
    EXPECT_EQ(desk.workbench.Simulated()->Memory(70000 + (24 + 3) * 128, 4), Bytes("43 00 61 00"));
    EXPECT_TRUE(changes.contains(QStringLiteral("Output delay: 6 -> 9")))
        << changes.join('\n').toStdString();
    const std::string written = desk.Document();
    EXPECT_TRUE(desk.window->Documents().Save());
    EXPECT_FALSE(desk.window->findChild<QWidget*>(QStringLiteral("progress"))->isVisible());

    // Nothing is left to write, and reading yields the same document.
    desk.window->Transfers().Write();
    EXPECT_NE(desk.Notice().indexOf(QLatin1String("nothing was written")), -1);
    desk.unsaved = DocumentMenu::Answer::Discard;
    desk.window->Transfers().Read();
    EXPECT_EQ(desk.Document(), written);
    EXPECT_NE(desk.Document(), start);
    EXPECT_TRUE(desk.workbench.File().empty()) << "saving must not replace the open document";

    // Everything is removed if the user agrees.
    desk.Page("pos");
    for (const bool agrees : {false, true}) {
        desk.answer = agrees;
        desk.Click("cmdCleanAll");
        EXPECT_NE(desk.IsShownProgrammed("posDisplay", 3), agrees);
    }
    desk.Page("freeProgKeys");
    for (const bool agrees : {false, true}) {
        desk.answer = agrees;
        desk.Click("cmdEdit_2");
        EXPECT_NE(desk.IsShownProgrammed("layoutDisplay", 75), agrees);
    }
}

TEST(MainWindow, AKeyboardWithoutAModuleShowsItAsAbsentAndKeepsTheDocumentsSettings) {
    Desk desk("magnet");
    const auto* pages = desk.Find<QListWidget>("pages")->model();
    const auto found = pages->match(pages->index(0, 0), Qt::AccessibleTextRole,
                                    QStringLiteral("Barcode reader (absent)"), 1, Qt::MatchExactly);
    EXPECT_EQ(found.size(), 1);
    for (const auto* action : desk.window->findChildren<QAction*>())
        if (action->text().contains(QStringLiteral("(absent)"))) {
            EXPECT_TRUE(action->shortcut().isEmpty()) << action->text().toStdString();
        }
    std::ofstream(desk.folder / "full.json")
        << R"({"format": "qx-configuration", "version": 1, "pos": {"blocks": []},
               "keyboard": {"name": "OTHER", "bootloader": "", "program": "", "country": "",
                            "config": "", "flags": {"freeProgrammableKeys": false,
                            "connectionV24": false, "chipcardReader": false,
                            "barcodeReader": false,
                            "magneticTracks": [false, false, false, false]}},
               "commonKeyboard": {"outputDelay": 3}})";
    desk.window->Documents().Open(QString::fromStdString((desk.folder / "full.json").string()));
    EXPECT_TRUE(desk.Notice().contains(QStringLiteral("POS")));
    EXPECT_TRUE(desk.Notice().contains(QStringLiteral("made for OTHER")));
    EXPECT_EQ(desk.Write().size(), 1);
    EXPECT_EQ(desk.Memory(MODULE_MAGNET_CONFIG, 0, 1), Bytes("03"));
    EXPECT_NE(desk.Document().find("\"pos\""), std::string::npos);
}

TEST(MainWindow, TheOverviewSummarizesTheModulesAndLeadsToThem) {
    Desk desk("magnet");
    desk.Page("overview");
    const auto summary = [&](const char* card) {
        return desk.Find<QCommandLinkButton>(card)->description().toStdString();
    };
    EXPECT_EQ(summary("card_magnetCard"), "Tracks: 2, 3");
    EXPECT_ANY_THROW(summary("card_pos")) << "the keyboard does not have it";
    desk.Click("card_commonKeyboard");
    desk.Find<QSlider>("slidOutputDelay")->setValue(9);
    desk.Page("overview");
    EXPECT_EQ(summary("card_commonKeyboard"), "Output delay: 9");
    desk.InDialog([](QWidget& dialog) { Desk::ClickIn(dialog, "cmdWrite"); });
    desk.Click("overviewWrite");
    EXPECT_EQ(desk.Memory(MODULE_MAGNET_CONFIG, 0, 1), "\x09");

    desk.unsaved = DocumentMenu::Answer::Discard;
    // The list counts programmed keys, and folds away modules that the keyboard does not have.
    std::ofstream(desk.folder / "keys.json")
        << R"({"format": "qx-configuration", "version": 1, "freeProgKeys": {"keys": [
               {"positionCode": 75, "sequence": [30]}, {"positionCode": 112, "sequence": [31]}]}})";
    desk.window->Documents().Open(QString::fromStdString((desk.folder / "keys.json").string()));
    auto* list = desk.Find<QListWidget>("pages");
    const auto item = [&](const char* title) {
        return list->findItems(QString::fromLatin1(title), Qt::MatchStartsWith).front();
    };
    EXPECT_EQ(item("Free keys")->data(Qt::AccessibleDescriptionRole).toInt(), 2);
    EXPECT_TRUE(item("Free keys")->isHidden());
    EXPECT_TRUE(item("Programmable keys")->isHidden()) << "a heading without pages";
    EXPECT_FALSE(item("Magnetic card reader")->isHidden());
    desk.Click("absentPages");
    EXPECT_FALSE(item("Free keys")->isHidden());
    desk.Click("absentPages");
    desk.Page("freeProgKeys");
    EXPECT_FALSE(item("Free keys")->isHidden()) << "a page that is shown is in the list";
}

// From reading to writing without a mouse.
TEST(MainWindow, WorksByKeyboardOnly) {
    Desk desk;
    const auto press = [](Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    };
    const auto activate = [&] {
        desk.window->activateWindow();
        return QTest::qWaitForWindowActive(desk.window.get());
    };
    ASSERT_TRUE(activate());
    desk.Find<QListWidget>("pages")->setFocus();
    press(Qt::Key_K, Qt::ControlModifier);
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("free keys key 75"));
    press(Qt::Key_Return);
    ASSERT_EQ(QApplication::focusWidget(), desk.Find<views::KeyGrid>("layoutDisplay"));
    press(Qt::Key_Right);
    press(Qt::Key_Space);
    EXPECT_EQ(desk.ControlOf<QXFreeProgKeys>("freeProgKeys").CurrentKey(), 80);
    for (int i = 0;
         i < 5 && QApplication::focusWidget()->objectName() != QLatin1String("cmdEdit_0"); ++i)
        press(Qt::Key_Tab);
    desk.InDialog([&](QWidget& dialog) {
        auto* typed = dialog.findChild<QLineEdit*>(QStringLiteral("txtTyped"));
        typed->setFocus();
        QTest::keyClicks(typed, QStringLiteral("Ctrl+C Enter"));
        Desk::ClickIn(dialog, "cmdOK");
    });
    press(Qt::Key_Space);
    ASSERT_TRUE(activate()); // as a window manager does after the editor closes
    desk.InDialog([&](QWidget& dialog) {
        QTest::keyClick(dialog.findChild<QWidget*>(QStringLiteral("cmdWrite")), Qt::Key_Space);
    });
    press(Qt::Key_W, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_NE(desk.Notice().indexOf(QLatin1String("read back and verified")), -1)
        << desk.Notice().toStdString();
}

TEST(MainWindow, ExportsAndPrintsAKeySheet) {
    Desk desk;
    desk.Edit("freeProgKeys", 75);
    auto& sheets = *desk.window->findChild<app::SheetMenu*>();
    QString file = QString::fromStdString((desk.folder / "till.svg").string());
    sheets.questions.file = [&](const QString&) { return file; };
    sheets.Export();
    EXPECT_NE(files::ReadFile(desk.folder / "till.svg").find(">A ^A<"), std::string::npos);
    desk.Speak(1031);
    sheets.Export();
    EXPECT_NE(files::ReadFile(desk.folder / "till.svg").find(">Freie Tasten<"), std::string::npos);
    desk.Speak(1033);
    file = QString::fromStdString((desk.folder / "vanished" / "till.pdf").string());
    sheets.Export();
    EXPECT_EQ(desk.warnings.size(), 1);
    sheets.questions.printer = [&](QPrinter& printer) {
        printer.setOutputFileName(QString::fromStdString((desk.folder / "paper.pdf").string()));
        return true;
    };
    sheets.Print();
    EXPECT_EQ(files::ReadFile(desk.folder / "paper.pdf").substr(0, 5), "%PDF-");
}

TEST(MainWindow, TestDriveTriesTheDocumentAndTheKeyboardsMemory) {
    Desk desk;
    const std::string held = desk.Held();
    desk.Edit("freeProgKeys", 75); // sends A
    desk.ControlOf<QXLayeredFuncKeys>("layeredFuncKeys").Layer(2).GetKey(23).SetKeyString(" 31");
    desk.ControlOf<QXLayeredFuncKeys>("layeredFuncKeys").Layer(2).SetKeyDesc(23, "Tea");
    desk.ControlOf<QXLayeredFuncKeys>("layeredFuncKeys").SetDataChanged(true);
    desk.ControlOf<QXLayeredFuncKeys>("layeredFuncKeys").AdjustControls();
    desk.Page("testDrive");
    const auto received = [&] { return desk.Find<QPlainTextEdit>("received")->toPlainText(); };
    const QString programmed = QStringLiteral("Free keys › Key 75 (Ins)");
    EXPECT_TRUE(desk.IsShownProgrammed("testDriveKeys", 75));
    desk.ClickKey("testDriveKeys", 75);
    EXPECT_EQ(received().count(programmed), 1) << received().toStdString();
    EXPECT_TRUE(received().contains(programmed + QStringLiteral(": a  (A ^A)")))
        << "the text, and how it is typed";
    desk.Click("tryKeyboard");
    EXPECT_FALSE(desk.IsShownProgrammed("testDriveKeys", 75));
    desk.ClickKey("testDriveKeys", 75);
    EXPECT_TRUE(received().contains(QStringLiteral("  Key 75 (Ins)")));
    EXPECT_EQ(received().count(programmed), 1) << "what was tried before stays in the log";

    desk.Click("tryDocument");
    desk.window->findChild<app::TestDrivePage*>()->findChild<QTabWidget*>()->setCurrentIndex(1);
    desk.Find<QTabBar>("testLayers")->setCurrentIndex(2);
    EXPECT_TRUE(desk.IsShownProgrammed("testFunctionKeys", 23));
    EXPECT_FALSE(desk.IsShownProgrammed("testFunctionKeys", 22));
    EXPECT_EQ(desk.Find<QTabBar>("testLayers")->tabText(2), QStringLiteral("2 (1)"));
    EXPECT_EQ(desk.Find<views::KeyGrid>("testFunctionKeys")->Keys()[23].caption,
              QStringLiteral("Tea"));
    desk.ClickKey("testFunctionKeys", 23);
    EXPECT_TRUE(received().contains(QStringLiteral("Layered function keys › Layer 2, F24: A")));
    desk.Click("copyLog");
    EXPECT_EQ(QApplication::clipboard()->text(), received());
    desk.Click("clearLog");
    EXPECT_TRUE(received().isEmpty());
    EXPECT_EQ(desk.Held(), held) << "trying must not write";
}

TEST(MainWindow, FitsASmallScreenAndScrolls) {
    Desk desk;
    desk.window->resize(1024, 560); // the space of a 1024 x 600 screen below a title bar
    for (const char* id :
         {"overview", "commonKeyboard", "magnetCard", "barcode", "freeProgKeys", "layeredFuncKeys",
          "pos", "files", "backups", "testDrive", "preferences"}) {
        desk.Page(id);
        QTest::qWait(1);
        EXPECT_EQ(desk.window->size(), QSize(1024, 560)) << id << " makes the window grow";
    }
    desk.window->resize(700, 420);
    desk.Page("layeredFuncKeys");
    QTest::qWait(1);
    auto* last = desk.Find<QWidget>("cmdEdit_3");
    last->setFocus(Qt::TabFocusReason);
    EXPECT_FALSE(last->visibleRegion().isEmpty()) << "Tab must scroll to it";
}

TEST(MainWindow, UndoGoesToWhereTheChangeWas) {
    Desk desk;
    desk.Page("layeredFuncKeys");
    desk.ClickKey("funcKeys", 23);
    QTest::keyClicks(desk.Find<QLineEdit>("txtSymbolDesc"), QStringLiteral("Cash"));
    desk.ClickKey("funcKeys", 2);
    desk.Page("barcode");
    QAction* undo = &desk.UndoAction();
    EXPECT_TRUE(undo->text().startsWith(QStringLiteral("&Undo"))) << undo->text().toStdString();
    EXPECT_TRUE(
        undo->text().contains(QStringLiteral("Layered function keys › Layer 0, F24 › Description")))
        << undo->text().toStdString();
    undo->trigger();
    EXPECT_EQ(desk.Find<QLineEdit>("txtSymbolDesc")->text(), QString());
    EXPECT_EQ(desk.ControlOf<QXLayeredFuncKeys>("layeredFuncKeys").CurrentKey(), 23);

    desk.Page("magnetCard");
    auto* tracks = desk.Find<QListWidget>("trackList");
    tracks->setCurrentRow(2);
    desk.Click("chkUseThisHeader");
    tracks->setCurrentRow(0);
    desk.Page("barcode");
    undo->trigger();
    EXPECT_EQ(desk.Find<QListWidget>("trackList")->currentRow(), 2);
}

TEST(MainWindow, ANameIsShownLiterallyInTheReview) {
    Desk desk;
    const QString name = QStringLiteral("<h1>Cash");
    desk.Page("layeredFuncKeys");
    desk.ClickKey("funcKeys", 3);
    desk.Find<QLineEdit>("txtSymbolDesc")->setText(name);
    QTextDocument shown;
    desk.InDialog([&](QWidget& dialog) {
        auto* changes = dialog.findChild<QTreeWidget*>(QStringLiteral("changes"));
        for (QTreeWidgetItemIterator item(changes); *item; ++item)
            if ((*item)->text(2).contains(name))
                shown.setHtml((*item)->toolTip(2));
        dialog.close();
    });
    desk.window->Transfers().Write();
    EXPECT_TRUE(shown.toPlainText().contains(name)) << shown.toPlainText().toStdString();
}

TEST(MainWindow, UndoGoesToTheChangeAndMarksIt) {
    Desk desk;
    desk.Page("commonKeyboard");
    desk.Find<QSlider>("slidOutputDelay")->setValue(9);
    desk.Page("pos");
    desk.UndoAction().trigger();
    auto* slider = desk.Find<QSlider>("slidOutputDelay");
    EXPECT_EQ(slider->value(), 6);
    EXPECT_EQ(desk.window->focusWidget(), slider);
    auto* mark = desk.Find<QWidget>("changeMark");
    const QWidget* around = mark->parentWidget();
    const QRect place(slider->mapTo(around, QPoint()), slider->size());
    EXPECT_TRUE(mark->geometry().contains(place));
    EXPECT_TRUE(around->rect().contains(mark->geometry())) << "nothing of it is cut off";
    QTest::keyClick(slider, Qt::Key_Shift);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(desk.window->findChild<QWidget*>("changeMark"), nullptr) << "the user goes on";
}

} // namespace
} // namespace qx::test
