// The application, used as a technician uses it: clicks on its real widgets, and what then stands
// in the keyboard's memory.
#include "app/MainWindow.h"
#include "app/FilesPage.h"
#include "app/Language.h"
#include "app/PreferencesPage.h"
#include "app/SettingWords.h"
#include "files/Files.h"
#include "qxcontrols/keyprog/FreeProgKeysBlock.h"
#include "qxcontrols/keyprog/QXFreeProgKeys.h"
#include "qxcontrols/pos/QXPos.h"
#include "qxcontrols/readers/QXBarcode.h"
#include "simulator/SimulatedDriver.h"
#include "support/TempFolder.h"
#include "support/TestKeyboard.h"
#include "support/Widgets.h"
#include "views/KeyGrid.h"
#include "views/QtPlatform.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMap>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPrinter>
#include <QSettings>
#include <QSlider>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>

#include <fstream>
#include <set>

namespace qx::test {
namespace {

using app::DocumentMenu;
using app::MainWindow;

class Desk {
public:
    using Ending = app::Transfers::Ending;
    // In a folder of its own, or in this one.
    explicit Desk(const char* model = "full", const std::filesystem::path& where = {})
        : folder(where.empty() ? m_own / "" : where),
          workbench(platform.Services(), {{{}, folder / "keyboard.qxk", model},
                                          QX_LAYOUTS,
                                          {},
                                          folder / "settings.ini",
                                          folder / "records"}) {
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope,
                           QString::fromStdString((folder / "qt").string()));
        workbench.Preferences().SetPreferedAppLang(1033);
        window = std::make_unique<MainWindow>(workbench, platform.Services(), language);
        window->screen.ask = [this](const QString&) { return answer; };
        window->screen.warn = [this](const QString& text) { warnings.append(text); };
        window->Documents().questions.unsaved = [this](const QString&) { return unsaved; };
        window->Documents().questions.fileToSave = [this](const QString&) {
            return QString::fromStdString((folder / "till.json").string());
        };
        window->Transfers().questions.recover = [this](const QString&) {
            ++timesAsked;
            return recover;
        };
        window->resize(1100, 760);
        window->show();
        EXPECT_TRUE(window->Connect(workbench.Choice()));
        window->Transfers().Read();
    }

    // The widget of this name that is on the screen.
    template <typename Widget>
    Widget* Find(const char* name) {
        const QString wanted = QString::fromLatin1(name);
        for (Widget* widget : window->findChildren<Widget*>(wanted))
            if (widget->isVisible())
                return widget;
        throw std::runtime_error(std::string("no widget ") + name);
    }
    void Page(const char* id) { window->ShowPage(QString::fromLatin1(id)); }
    void Click(const char* name) {
        auto* widget = Find<QWidget>(name);
        EXPECT_TRUE(widget->isEnabled()) << name;
        QTest::mouseClick(widget, Qt::LeftButton, {}, {8, widget->height() / 2});
    }
    void ClickKey(const char* grid, int key) {
        auto* keys = Find<views::KeyGrid>(grid);
        QTest::mouseClick(keys, Qt::LeftButton, {}, keys->KeyRect(key).center());
    }
    // Does this in the dialog that comes up next.
    void InDialog(const std::function<void(QWidget& dialog)>& act) {
        auto* watch = new QTimer(window.get());
        QObject::connect(watch, &QTimer::timeout, window.get(), [watch, act] {
            QWidget* dialog = QApplication::activeModalWidget();
            if (dialog == nullptr || !dialog->isVisible())
                return;
            watch->deleteLater();
            watch->stop();
            const QPointer<QWidget> guard(dialog);
            act(*dialog);
            if (guard != nullptr && guard->isVisible()) {
                ADD_FAILURE() << "the dialog stays open";
                guard->close();
            }
        });
        watch->start(5);
    }
    static void ClickIn(QWidget& dialog, const char* name) {
        auto* widget = dialog.findChild<QWidget*>(QString::fromLatin1(name));
        ASSERT_NE(widget, nullptr) << name;
        QTest::mouseClick(widget, Qt::LeftButton);
    }
    // Lets a key of the page send A, by clicks in the sequence editor.
    void Edit(const char* page, int key) {
        Page(page);
        ClickKey("layoutDisplay", key);
        InDialog([](QWidget& dialog) {
            auto* keys = dialog.findChild<views::KeyGrid*>();
            QTest::mouseClick(keys, Qt::LeftButton, {}, keys->KeyRect(31).center());
            ClickIn(dialog, "cmdOK");
        });
        Click("cmdEdit_0");
    }
    bool IsShownProgrammed(const char* grid, int key) {
        const auto& caps = Find<views::KeyGrid>(grid)->Keys();
        return std::any_of(caps.begin(), caps.end(), [&](const views::KeyCap& cap) {
            return cap.index == key && cap.state == views::KeyState::Programmed;
        });
    }
    // Reviews and writes; returns the texts of the review's changes.
    QStringList Write() {
        QStringList changes;
        InDialog([&](QWidget& dialog) {
            auto* tree = dialog.findChild<QTreeWidget*>();
            for (int i = 0; i < tree->topLevelItemCount(); ++i)
                for (int j = 0; j < tree->topLevelItem(i)->childCount(); ++j) {
                    const auto* item = tree->topLevelItem(i)->child(j);
                    changes.append(item->text(0) + ": " + item->text(1) + " -> " + item->text(2));
                }
            ClickIn(dialog, "cmdWrite");
        });
        window->Transfers().Write();
        return changes;
    }
    [[nodiscard]] std::string Memory(KeyboardModuleIDs eModule, Long offset, Long size) {
        const Long base = workbench.Session().Access().GetBaseAddressForModule(eModule);
        return workbench.Simulated()->Memory(base + offset, size);
    }
    void UndoAll() {
        while (workbench.History().CanUndo())
            workbench.Undo();
    }
    [[nodiscard]] std::string Document() { return workbench.History().Document().ToText(); }

private:
    TempFolder m_own;

public:
    std::filesystem::path folder;
    bool answer = true;
    Ending recover = Ending::RollBack;
    int timesAsked = 0; // to recover
    DocumentMenu::Answer unsaved = DocumentMenu::Answer::Cancel;
    QStringList warnings;
    views::QtPlatform platform;
    app::Language language;
    app::Workbench workbench;
    std::unique_ptr<MainWindow> window;
};

// The letters that more than one visible thing of the window answers to.
QStringList DoubleLetters(QMainWindow& window) {
    QStringList texts;
    for (const QAction* menu : window.menuBar()->actions())
        texts.append(menu->text());
    for (const auto* button : window.findChildren<QAbstractButton*>())
        if (button->isVisible())
            texts.append(button->text());
    for (const auto* label : window.findChildren<QLabel*>())
        if (label->isVisible() && label->buddy() != nullptr)
            texts.append(label->text());
    for (const auto* tabs : window.findChildren<QTabBar*>())
        for (int i = 0; tabs->isVisible() && i < tabs->count(); ++i)
            texts.append(tabs->tabText(i));
    QMap<QString, QStringList> byLetter;
    for (const QString& text : texts)
        if (const QKeySequence letter = QKeySequence::mnemonic(text); !letter.isEmpty())
            byLetter[letter.toString()].append(text);
    QStringList doubles;
    for (const QStringList& same : byLetter)
        if (same.size() > 1)
            doubles.append(same.join(QStringLiteral(" | ")));
    return doubles;
}

QTabWidget* VisibleTabs(QMainWindow& window) {
    for (auto* tabs : window.findChildren<QTabWidget*>())
        if (tabs->isVisible())
            return tabs;
    return nullptr;
}

TEST(MainWindow, EveryPageEditsReviewsWritesAndReadsBack) {
    Desk desk;
    const std::string start = desk.Document();

    desk.Page("commonKeyboard");
    desk.Find<QSlider>("slidOutputDelay")->setValue(9);
    desk.Page("magnetCard");
    desk.Click("chkUseThisHeader");
    desk.Page("barcode");
    desk.Find<QListWidget>("lstPrefGroup")->setCurrentRow(BP_Code39);
    desk.Find<QSlider>("slidRange_0")->setValue(4);
    desk.Edit("freeProgKeys", 75);
    desk.Page("layeredFuncKeys");
    desk.Click("cmdLayer_0");
    EXPECT_EQ(desk.workbench.Simulated()->Layer(), 1) << "the keyboard follows the layer shown";
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

    // Enter in the review leads to the change; it never writes.
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
    const std::string written = desk.Document();

    // Nothing is left to write, and reading gives the same document.
    desk.window->Transfers().Write();
    EXPECT_NE(desk.window->Notice().indexOf(QLatin1String("nothing was written")), -1);
    desk.unsaved = DocumentMenu::Answer::Discard;
    desk.window->Transfers().Read();
    EXPECT_EQ(desk.Document(), written);
    EXPECT_NE(desk.Document(), start);
}

TEST(MainWindow, FunctionKeysOfOtherModelsAreWrittenToo) {
    Desk desk("x1-4620");
    auto& control = desk.workbench.ControlOf<QXFreeProgKeys>("funcKeys4620");
    const auto stored = StoredFreeProgKeys(control.Sequences(), MODULE_FUNCKEYS_X1_4620);
    ASSERT_FALSE(stored.empty());
    desk.Edit("funcKeys4620", stored.front());
    EXPECT_EQ(desk.Write().size(), 1);
    EXPECT_TRUE(desk.warnings.isEmpty()) << desk.warnings.join(' ').toStdString();
    EXPECT_EQ(desk.Memory(MODULE_FUNCKEYS_X1_4620, 0, 3), Bytes("1F 9F 00"));

    // A key without a place in the module is not edited for nothing.
    desk.Page("funcKeys4620");
    const auto& caps = desk.Find<views::KeyGrid>("layoutDisplay")->Keys();
    const auto other = std::find_if(caps.begin(), caps.end(), [&](const views::KeyCap& cap) {
        return cap.state == views::KeyState::Empty &&
               std::find(stored.begin(), stored.end(), cap.index) == stored.end();
    });
    ASSERT_NE(other, caps.end());
    desk.ClickKey("layoutDisplay", other->index);
    desk.Click("cmdEdit_0");
    EXPECT_TRUE(desk.window->Notice().contains(QStringLiteral("no place")));
}

TEST(MainWindow, UndoToTheStartLeavesTheDocumentAsItWas) {
    Desk desk;
    const std::string start = desk.Document();
    desk.Page("barcode");
    desk.Find<QListWidget>("lstPrefGroup")->setCurrentRow(BP_EAN);
    desk.Click("chkBarOption_1");
    desk.Click("chkBarOption_2");
    desk.Edit("freeProgKeys", 76);
    EXPECT_TRUE(desk.workbench.IsModified());
    const std::string edited = desk.Document();
    desk.UndoAll();
    EXPECT_EQ(desk.Document(), start);
    EXPECT_FALSE(desk.workbench.IsModified());
    EXPECT_FALSE(desk.window->isWindowModified());
    while (desk.workbench.History().CanRedo())
        desk.workbench.Redo();
    EXPECT_EQ(desk.Document(), edited);
}

TEST(MainWindow, DocumentsAreSavedOpenedAndNeverLost) {
    Desk desk;
    const std::string file = (desk.folder / "till.json").string();
    desk.Page("commonKeyboard");
    desk.Find<QSlider>("slidOutputDelay")->setValue(12);
    desk.unsaved = DocumentMenu::Answer::Cancel;
    desk.window->Documents().New();
    EXPECT_TRUE(desk.workbench.IsModified()) << "the user did not want to lose the edit";
    desk.Edit("freeProgKeys", 80);
    EXPECT_TRUE(desk.IsShownProgrammed("layoutDisplay", 80));
    EXPECT_TRUE(desk.window->Documents().Save());
    const std::string saved = desk.Document();
    desk.window->Documents().New();
    EXPECT_NE(desk.Document(), saved);
    EXPECT_FALSE(desk.IsShownProgrammed("layoutDisplay", 80));
    desk.window->Documents().Open(QString::fromStdString(file));
    EXPECT_EQ(desk.Document(), saved);
    EXPECT_TRUE(desk.IsShownProgrammed("layoutDisplay", 80));

    // A file that is no document changes nothing and says where it is wrong.
    std::ofstream(file) << R"({"format": "qx-configuration", "version": 1, "pos": {}})";
    desk.window->Documents().Open(QString::fromStdString(file));
    EXPECT_EQ(desk.Document(), saved);
    ASSERT_FALSE(desk.warnings.isEmpty());
    EXPECT_TRUE(desk.warnings.back().contains(QStringLiteral("/pos")));
}

TEST(MainWindow, AKeyboardWithoutAModuleShowsItAsAbsentAndKeepsTheDocumentsSettings) {
    Desk desk("magnet");
    auto* pages = desk.Find<QListWidget>("pages");
    const auto found =
        pages->findItems(QStringLiteral("Barcode reader (absent)"), Qt::MatchExactly);
    EXPECT_EQ(found.size(), 1);
    std::ofstream(desk.folder / "full.json")
        << R"({"format": "qx-configuration", "version": 1, "pos": {"blocks": []},
               "keyboard": {"name": "OTHER", "bootloader": "", "program": "", "country": "",
                            "config": "", "flags": {"freeProgrammableKeys": false,
                            "connectionV24": false, "chipcardReader": false,
                            "barcodeReader": false,
                            "magneticTracks": [false, false, false, false]}},
               "commonKeyboard": {"outputDelay": 3}})";
    desk.window->Documents().Open(QString::fromStdString((desk.folder / "full.json").string()));
    EXPECT_TRUE(desk.window->Notice().contains(QStringLiteral("POS")));
    EXPECT_TRUE(desk.window->Notice().contains(QStringLiteral("a keyboard OTHER")));
    EXPECT_EQ(desk.Write().size(), 1);
    EXPECT_EQ(desk.Memory(MODULE_MAGNET_CONFIG, 0, 1), Bytes("03"));
    EXPECT_NE(desk.Document().find("\"pos\""), std::string::npos);
}

TEST(MainWindow, AFailedWriteSaysSoAndIsNeverCalledDone) {
    Desk desk;
    desk.Page("commonKeyboard");
    desk.Find<QSlider>("slidOutputDelay")->setValue(9);
    desk.InDialog([&](QWidget& dialog) {
        desk.workbench.Simulated()->StopTransferAfter(0);
        Desk::ClickIn(dialog, "cmdWrite");
    });
    desk.window->Transfers().Write();
    ASSERT_EQ(desk.warnings.size(), 1);
    EXPECT_TRUE(desk.warnings.front().contains(QStringLiteral("nothing was written")));
    EXPECT_EQ(desk.window->Notice(), desk.warnings.front());

    // Transfers that fail and report success are noticed, and what they left can be settled.
    int noticed = 0;
    for (std::uint32_t seed = 0; seed < 12; ++seed) {
        const int delay = 20 + static_cast<int>(seed);
        desk.Page("commonKeyboard");
        desk.Find<QSlider>("slidOutputDelay")->setValue(delay);
        desk.warnings.clear();
        desk.InDialog([&](QWidget& dialog) {
            desk.workbench.Simulated()->LieFrom(seed);
            Desk::ClickIn(dialog, "cmdWrite");
        });
        desk.window->Transfers().Write();
        desk.workbench.Simulated()->EndLies();
        const std::string wanted(1, static_cast<char>(delay));
        const bool isHeld = desk.Memory(MODULE_MAGNET_CONFIG, 0, 1) == wanted;
        EXPECT_TRUE(isHeld || desk.warnings.size() == 1) << seed;
        desk.recover = Desk::Ending::Finish;
        EXPECT_TRUE(desk.window->Transfers().Recover());
        noticed += isHeld ? 0 : 1;
    }
    EXPECT_GT(noticed, 0);
}

TEST(MainWindow, AnInterruptedWriteIsOfferedAtTheNextStartAndBackupsAreRestored) {
    const TempFolder shop;
    std::string before;
    {
        Desk desk("full", shop / "");
        before = desk.Memory(MODULE_MAGNET_CONFIG, 0, 8);
        desk.Page("commonKeyboard");
        desk.Find<QSlider>("slidOutputDelay")->setValue(9);
        desk.Page("magnetCard");
        desk.Click("chkMagneticOptions_1");
        // The keyboard is unplugged at one call after the other, until that leaves it in doubt.
        const auto isInDoubt = [&] {
            return !desk.warnings.isEmpty() && desk.warnings.back().contains("could not be read");
        };
        for (int call = 1; !isInDoubt(); ++call) {
            ASSERT_LT(call, 500);
            desk.InDialog([&](QWidget& dialog) {
                desk.workbench.Simulated()->FailCall(call, 77, true);
                Desk::ClickIn(dialog, "cmdWrite");
            });
            desk.window->Transfers().Write();
            desk.workbench.Simulated()->FailCall(0, 0, false);
        }
        EXPECT_TRUE(desk.warnings.back().contains("finishes it or rolls it back"));
        const auto access =
            desk.workbench.Session().Access().GetBaseAddressForModule(MODULE_MAGNET_CONFIG);
        desk.workbench.Simulated()->Poke(access, "\x09"); // the one byte has arrived
        EXPECT_EQ(desk.timesAsked, 0);
    }
    Desk desk("full", shop / "");
    EXPECT_EQ(desk.timesAsked, 1);
    EXPECT_EQ(desk.Memory(MODULE_MAGNET_CONFIG, 0, 8), before);
    desk.Page("commonKeyboard");
    desk.Find<QSlider>("slidOutputDelay")->setValue(10);
    desk.Write();
    EXPECT_NE(desk.Memory(MODULE_MAGNET_CONFIG, 0, 8), before);

    desk.Page("backups");
    auto* list = desk.Find<QTreeWidget>("backups");
    ASSERT_GE(list->topLevelItemCount(), 2);
    list->setCurrentItem(list->topLevelItem(0));
    desk.unsaved = DocumentMenu::Answer::Discard;
    desk.InDialog([](QWidget& dialog) { Desk::ClickIn(dialog, "cmdWrite"); });
    desk.Click("restoreBackup");
    EXPECT_EQ(desk.Memory(MODULE_MAGNET_CONFIG, 0, 8), before);
    desk.Page("commonKeyboard");
    EXPECT_EQ(desk.Find<QSlider>("slidOutputDelay")->value(), 6);
}

TEST(MainWindow, QuickFindLeadsToSettingsKeysAndProgrammedTexts) {
    Desk desk;
    const auto find = [&](const char* words) {
        auto* field = desk.Find<QLineEdit>("quickFind");
        field->setFocus();
        QTest::keyClicks(field, QString::fromLatin1(words));
        QTest::keyClick(field, Qt::Key_Return);
    };
    find("code39 minimum");
    EXPECT_EQ(desk.Find<QListWidget>("lstPrefGroup")->currentRow(), int{BP_Code39});
    find("free keys key 80");
    EXPECT_EQ(desk.workbench.ControlOf<QXFreeProgKeys>("freeProgKeys").CurrentKey(), 80);
    find("pos keys: key 10");
    EXPECT_TRUE(desk.Find<QWidget>("posDisplay")->isVisible());
    find("font size");
    EXPECT_TRUE(desk.Find<QWidget>("KeyFontSize")->isVisible());
}

TEST(MainWindow, ABackupIsOpenedAsACopy) {
    Desk desk;
    desk.Page("commonKeyboard");
    desk.Find<QSlider>("slidOutputDelay")->setValue(9);
    desk.Write();
    desk.unsaved = DocumentMenu::Answer::Discard;
    desk.Page("backups");
    auto* list = desk.Find<QTreeWidget>("backups");
    list->setCurrentItem(list->topLevelItem(0));
    desk.Click("openBackup");
    EXPECT_TRUE(desk.workbench.File().empty()) << "an edit must not change the backup";
    EXPECT_TRUE(desk.workbench.IsModified());
    desk.Page("commonKeyboard");
    EXPECT_EQ(desk.Find<QSlider>("slidOutputDelay")->value(), 6);
}

TEST(MainWindow, SavesByItselfOnlyWhereItMay) {
    Desk desk;
    const auto held = [&] {
        return host::Json::parse(
            files::ReadFile(desk.folder / "till.json"))["commonKeyboard"]["outputDelay"];
    };
    const auto edit = [&](int delay) {
        desk.Find<QSlider>("slidOutputDelay")->setValue(delay);
        QTest::qWait(1700);
    };
    desk.Page("commonKeyboard");
    desk.workbench.Preferences().SetAutoSave(true);
    edit(11);
    EXPECT_FALSE(std::filesystem::exists(desk.folder / "till.json")) << "it has no name yet";
    EXPECT_TRUE(desk.window->Documents().Save());
    edit(12);
    EXPECT_EQ(held(), 12);
    desk.workbench.Preferences().SetAutoSave(false);
    edit(13);
    EXPECT_EQ(held(), 12);
}

TEST(MainWindow, FilesOfTheKeyboardGoBothWays) {
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
}

TEST(MainWindow, AKeyboardThatDoesNotAnswerIsToldWithWhatToCheck) {
    Desk desk;
    EXPECT_FALSE(desk.window->Connect({desk.folder / "no.so", {}, {}}));
    EXPECT_TRUE(desk.Find<QLabel>("lblFailure")->text().contains(QStringLiteral("no.so")));
    EXPECT_TRUE(desk.Find<QLabel>("lblFailure")->text().contains(QStringLiteral("plugged in")));
    desk.Page("commonKeyboard"); // the document can still be edited
    desk.Find<QSlider>("slidOutputDelay")->setValue(9);
    EXPECT_TRUE(desk.workbench.IsModified());
    EXPECT_TRUE(desk.window->Connect({{}, desk.folder / "keyboard.qxk", {}}));
    desk.workbench.Preferences().SetVersionFirmware(0x200);
    EXPECT_TRUE(desk.window->Connect(desk.workbench.Choice()));
    EXPECT_TRUE(desk.Find<QLabel>("lblKeyboard")->toolTip().contains(QStringLiteral("P100")));
}

// Every page's letters under Alt belong to one thing each, beside those of the menus.
TEST(MainWindow, HasNoLetterUnderAltTwice) {
    Desk desk;
    for (const Integer language : {Integer{1033}, Integer{1031}}) {
        desk.workbench.Preferences().SetPreferedAppLang(language);
        desk.window->ApplyPreferences();
        QTest::qWait(20);
        const auto* pages = desk.Find<QListWidget>("pages");
        for (int row = 0; row < pages->count(); ++row) {
            desk.window->ShowPage(pages->item(row)->data(Qt::UserRole).toString());
            auto* tabs = VisibleTabs(*desk.window);
            for (int tab = 0; tab < (tabs == nullptr ? 1 : tabs->count()); ++tab) {
                if (tabs != nullptr)
                    tabs->setCurrentIndex(tab);
                QStringList doubles = DoubleLetters(*desk.window);
                EXPECT_TRUE(doubles.isEmpty())
                    << language << " " << pages->item(row)->text().toStdString() << " " << tab
                    << ": " << doubles.join(QStringLiteral(", ")).toStdString();
            }
        }
    }
    desk.workbench.Preferences().SetPreferedAppLang(1033);
    desk.window->ApplyPreferences();
    QTest::qWait(20);
}

// From reading to writing without a pointer.
TEST(MainWindow, IsWalkedByKeysAlone) {
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
    EXPECT_EQ(desk.workbench.ControlOf<QXFreeProgKeys>("freeProgKeys").CurrentKey(), 80);
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
    ASSERT_TRUE(activate()); // as a window manager does when the editor closes
    desk.InDialog([&](QWidget& dialog) {
        QTest::keyClick(dialog.findChild<QWidget*>(QStringLiteral("cmdWrite")), Qt::Key_Space);
    });
    press(Qt::Key_W, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_NE(desk.window->Notice().indexOf(QLatin1String("read back and found equal")), -1)
        << desk.window->Notice().toStdString();
}

TEST(MainWindow, ExportsAndPrintsAKeySheet) {
    Desk desk;
    desk.Edit("freeProgKeys", 75);
    QString file = QString::fromStdString((desk.folder / "till.svg").string());
    desk.window->Sheets().questions.file = [&](const QString&) { return file; };
    desk.window->Sheets().Export();
    EXPECT_NE(files::ReadFile(desk.folder / "till.svg").find(">A ^A<"), std::string::npos);
    file = QString::fromStdString((desk.folder / "vanished" / "till.pdf").string());
    desk.window->Sheets().Export();
    EXPECT_EQ(desk.warnings.size(), 1);
    desk.window->Sheets().questions.printer = [&](QPrinter& printer) {
        printer.setOutputFileName(QString::fromStdString((desk.folder / "paper.pdf").string()));
        return true;
    };
    desk.window->Sheets().Print();
    EXPECT_EQ(files::ReadFile(desk.folder / "paper.pdf").substr(0, 5), "%PDF-");
}

TEST(MainWindow, TestDriveAnswersByTheKeyboardsMemory) {
    Desk desk;
    desk.Page("testDrive");
    desk.ClickKey("testDriveKeys", 31);
    EXPECT_TRUE(
        desk.Find<QPlainTextEdit>("received")->toPlainText().contains(QStringLiteral("A ^A")));
}

TEST(MainWindow, SpeaksGermanAtOnce) {
    Desk desk;
    desk.Page("preferences");
    desk.workbench.Preferences().SetPreferedAppLang(1031);
    emit desk.window->findChild<app::PreferencesPage*>()->Changed();
    QTest::qWait(20);
    EXPECT_EQ(desk.Find<QListWidget>("pages")->item(2)->text(),
              QStringLiteral("Magnetkartenleser"));
    desk.Page("barcode");
    desk.Find<QListWidget>("lstPrefGroup")->setCurrentRow(BP_Code39);
    EXPECT_EQ(desk.Find<QLabel>("lblRange_0")->text(), QStringLiteral("Kürzester Code"));
    EXPECT_FALSE(desk.workbench.IsModified()) << "a language is no edit";
    // Every word of the settings' names has a translation, except the names of codes.
    const std::set<std::string> names = {"EAN",     "UPC",     "Code39", "Code128",
                                         "CodaBar", "Code93",  "Code11", "Code16K",
                                         "MSI",     "Plessey", "POS"};
    auto& configuration = desk.workbench.Configuration();
    configuration.SetWords([&](std::string_view word) {
        EXPECT_TRUE(names.contains(std::string(word)) || app::SettingWord(word) != word) << word;
        return std::string(word);
    });
    EXPECT_GT(configuration.List(desk.workbench.History().AllSections()).size(), 100U);
    desk.workbench.Preferences().SetPreferedAppLang(1033);
}

} // namespace
} // namespace qx::test
