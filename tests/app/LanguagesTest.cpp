// The texts of the window in each language.
#include "Desk.h"
#include "app/ErrorDetails.h"
#include "app/ErrorWords.h"
#include "app/Failure.h"
#include "app/FaultWords.h"
#include "app/LocalTime.h"
#include "app/PreferencesPage.h"
#include "app/ProblemWords.h"
#include "app/SettingWords.h"
#include "host/Session.h"
#include "host/WritePlan.h"
#include "qxcontrols/keyprog/QXFreeProgKeys.h"
#include "qxcontrols/keyprog/QXLayeredFuncKeys.h"
#include "qxcontrols/pos/QXPos.h"
#include "qxcontrols/readers/QXBarcode.h"
#include "views/Bindings.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QAction>
#include <QComboBox>
#include <QDate>
#include <QLineEdit>
#include <QMap>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QSpinBox>
#include <QTabWidget>
#include <QTextBrowser>

#include <fstream>
#include <set>

namespace qx::test {
namespace {

using views::ToQt;

// The mnemonic letters shared by several visible widgets.
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

// The focusable widgets without an accessible name.
QStringList Nameless(const QMainWindow& window) {
    QStringList nameless;
    const auto check = [&](QAccessibleInterface* accessible, const QWidget& widget) {
        if (accessible == nullptr || accessible->text(QAccessible::Name).trimmed().isEmpty())
            nameless.append(QString::fromLatin1(widget.metaObject()->className()) + u' ' +
                            widget.objectName());
    };
    for (QWidget* widget : window.findChildren<QWidget*>()) {
        if (!widget->isVisible() || (widget->focusPolicy() & Qt::TabFocus) == 0 ||
            widget->focusProxy() != nullptr ||
            widget->objectName().startsWith(QLatin1String("qt_")))
            continue;
        QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(widget);
        check(accessible, *widget);
        for (int row = 0; qobject_cast<views::KeyGrid*>(widget) && row < accessible->childCount();
             ++row)
            check(accessible->child(row), *widget);
    }
    return nameless;
}

// On every page, mnemonic letters are unique (including the menus'), and every focusable widget has
// an accessible name.
TEST(Languages, WidgetsHaveNamesAndUniqueMnemonics) {
    Desk desk;
    for (const Integer language : {Integer{1033}, Integer{1031}}) {
        desk.Speak(language);
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
                EXPECT_EQ(Nameless(*desk.window).join(QStringLiteral(", ")).toStdString(), "");
            }
        }
    }
    desk.Speak(1033);
}

TEST(Languages, SwitchesToGermanAtOnce) {
    Desk desk;
    desk.Page("freeProgKeys");
    desk.ControlOf<QXFreeProgKeys>("freeProgKeys").cmdEdit_Click(0);
    desk.Page("preferences");
    desk.window->findChild<app::PreferencesPage*>()->Reveal(Preference::PreferedAppLang);
    auto* languages = desk.Find<QComboBox>("PreferedAppLang");
    languages->setCurrentIndex(languages->findData(1031));
    desk.AwaitTitle(QStringLiteral("Überblick"));
    EXPECT_NO_THROW(desk.Find<QComboBox>("PreferedAppLang")) << "the same tab is still in front";
    EXPECT_EQ(desk.Notice(), QStringLiteral("Select a key first.")) << "a notice is not lost";
    EXPECT_EQ(desk.Find<QListWidget>("pages")
                  ->findItems(QStringLiteral("Magnetkartenleser"), Qt::MatchExactly)
                  .size(),
              1);
    desk.Page("barcode");
    EXPECT_EQ(desk.Find<QSpinBox>("Code39.minSize")->accessibleName(),
              QStringLiteral("Code 39: Mindestlänge"));
    EXPECT_FALSE(desk.workbench.IsModified()) << "changing the language is not an edit";
}

// The pages are made again for it.
TEST(Languages, ASwitchKeepsTheHelpTheLogAndTheTextThatIsBeingTyped) {
    Desk desk;
    desk.Page("freeProgKeys");
    desk.ClickKey("layoutDisplay", 75);
    QTest::keyClicks(desk.Find<QLineEdit>("typedText"), QStringLiteral("half a wo"));
    desk.Page("testDrive");
    desk.ClickKey("testDriveKeys", 31);
    const QString log = desk.Find<QPlainTextEdit>("received")->toPlainText();
    EXPECT_FALSE(log.isEmpty());
    QTest::keyClick(desk.window.get(), Qt::Key_F1);
    auto* help = desk.window->findChild<QTextBrowser*>(QStringLiteral("helpText"));
    ASSERT_NE(help, nullptr);
    desk.Speak(1031);
    EXPECT_EQ(desk.Find<QPlainTextEdit>("received")->toPlainText(), log);
    EXPECT_TRUE(help->isVisible());
    EXPECT_EQ(help->source(), QUrl(QStringLiteral("qrc:/help/de/testDrive.md")));
    EXPECT_EQ(help->window()->windowTitle(), QStringLiteral("Hilfe"));
    desk.Speak(1033); // two languages later, too
    desk.Page("freeProgKeys");
    EXPECT_EQ(desk.Find<QLineEdit>("typedText")->text(), QStringLiteral("half a wo"));
    EXPECT_FALSE(desk.workbench.IsModified());
}

// In a German window no setting has an English word, apart from the names of codes.
TEST(Languages, EverySettingHasANameOfItsOwnInEachLanguage) {
    Desk desk;
    desk.ControlOf<QXLayeredFuncKeys>("layeredFuncKeys").Layer(3).SetKeyDesc(5, "Cash");
    desk.ControlOf<QXPos>("pos").PosData().Block(12).AddKey(12);
    desk.ControlOf<QXFreeProgKeys>("freeProgKeys").Sequences().Key(112).AddByte(30);
    const auto sections = desk.workbench.History().AllSections();
    const auto settings = desk.workbench.Configuration().List(sections, host::Listed::All);
    ASSERT_GT(settings.size(), 200U);
    for (const Integer language : {Integer{1033}, Integer{1031}}) {
        desk.Speak(language);
        QStringList names;
        std::set<std::string> english;
        for (const host::Setting& setting : settings) {
            names.append(app::NameText(setting.name));
            const QStringList steps = names.back().split(QStringLiteral(" › "));
            EXPECT_FALSE(steps.contains(QString())) << setting.place;
            if (language == 1033) { // as the command line names it
                EXPECT_EQ(names.back().toStdString(), ToText(setting.name));
            }
            for (const host::NamePart& part : setting.name.parts) {
                const QString label = ToQt(std::string(part.label));
                if (!label.isEmpty() && names.back().contains(label))
                    english.insert(label.toStdString());
            }
        }
        if (language == 1031) { // names, and words of both languages
            EXPECT_EQ(english, (std::set<std::string>{"Codabar", "Code 11", "Code 128", "Code 16K",
                                                      "Code 39", "Code 93", "EAN", "MSI", "Option",
                                                      "Plessey", "Suffix", "UPC"}));
        }
        for (const char* name : {language == 1031 ? "Funktionstasten in Ebenen › Ebene 3, F6"
                                                  : "Layered function keys › Layer 3, F6",
                                 language == 1031 ? "Freie Tasten › Taste 112 (F1)"
                                                  : "POS keys › Key 12 (F11) › Keys"})
            EXPECT_TRUE(names.contains(QString::fromUtf8(name))) << name;
        EXPECT_EQ(names.removeDuplicates(), 0);
        QStringList values;
        using Kind = host::SettingValue::Kind;
        for (const Kind kind :
             {Kind::Off, Kind::On, Kind::Empty, Kind::None, Kind::Damaged, Kind::Sound})
            values.append(app::ValueText({kind}));
        EXPECT_EQ(values.removeDuplicates(), 0);
        EXPECT_EQ(values[3], QString::fromLatin1(language == 1031 ? "(keine)" : "(none)"));
        EXPECT_EQ(app::ValueText({Kind::Quoted, "Cash"}),
                  QString::fromUtf8(language == 1031 ? "„Cash“" : "\"Cash\""));
        const QString date = app::LocalDate({2026, 1, 31}); // the English form is the country's
        EXPECT_TRUE(date == QLatin1String("31.01.2026") ||
                    (language == 1033 && date.contains(QLatin1String("2026"))))
            << date.toStdString();
    }
    desk.Speak(1033);
}

TEST(Languages, WarningsAreGermanToo) {
    Desk desk;
    desk.Speak(1031);
    std::ofstream(desk.folder / "other.qxk.wild") << "QXCFG_ImageRead refuse";
    EXPECT_TRUE(
        desk.window->Keyboards().Connect({QX_WILD_DRIVER, desk.folder / "other.qxk", "full"}));
    EXPECT_TRUE(desk.Notice().contains(
        QStringLiteral("Die Namen der Tastatur waren nicht lesbar. (Status des Treibers: 12)")))
        << desk.Notice().toStdString();

    EXPECT_EQ(app::CauseText(host::Error(host::Cause::BackupOfOtherUnit,
                                         {.names = {"Kasse 1", "Kasse 2"}, .others = {"Kasse 3"}})),
              QStringLiteral("Diese Sicherung stammt von Kasse 1 oder Kasse 2; nach den "
                             "Aufzeichnungen gehört diese Tastatur zu Kasse 3."));
    EXPECT_TRUE(app::NotRestoredText({"pos", 5}).startsWith(QStringLiteral("POS-Tasten")));
    EXPECT_TRUE(app::NotRestoredText({"MODULE_GUID", 5}).startsWith(QStringLiteral("MODULE_GUID")));
    EXPECT_TRUE(app::NotRestoredText({"", 5}).contains(u'5'));
    desk.Speak(1033);
}

// One of each kind that the application can meet.
std::vector<json::Fault> AllFaults() {
    using json::Fault;
    using json::FaultKind;
    std::vector<Fault> faults;
    for (int kind = 0; kind <= static_cast<int>(FaultKind::DamagedWhenSaved); ++kind)
        if (const auto each = static_cast<FaultKind>(kind);
            each != FaultKind::SequenceText && each != FaultKind::LayoutText)
            faults.emplace_back("", each, 1, 2, 3, 4, 5);
    for (int kind = 0; kind <= static_cast<int>(kLastTextFaultKind); ++kind)
        faults.push_back(json::FaultOfText(
            FaultKind::LayoutText, {static_cast<TextFaultKind>(kind), {"1", "2", "3", "4"}}));
    return faults;
}

// All that an error or a fault is worded with, in the present language.
QStringList WordsOfErrors() {
    using namespace host;
    QStringList texts;
    const WriteName write{"W-1", WriteAction::Download, "till.json", "Kasse 1",
                          "2026-01-31T09:05:07.123Z"};
    for (int cause = 0; cause <= static_cast<int>(LastOf(Cause())); ++cause) {
        const Error error(static_cast<Cause>(cause),
                          {.name = "A-1",
                           .other = "B-2",
                           .names = {"C-3"},
                           .others = {"D-4"},
                           .problem = {.system = "E-5"},
                           .call = FailedCall{"QXCFG_Init", 7, "F-6"},
                           .place = {.file = "G-7", .section = "pos", .address = 16},
                           .writes = {write},
                           .faults = {Fault("/pos", FaultKind::NotAList, "H-8")}});
        texts.append(app::CauseText(error));
        EXPECT_FALSE(texts.back().contains(QStringLiteral("QXCFG_"))) << cause;
        EXPECT_FALSE(texts.back().contains(QStringLiteral("E-5"))) << cause;
        const QString details = app::DetailsText(error);
        for (const char* fact : {"QXCFG_Init", "7", "F-6", "G-7", "E-5", "H-8", "W-1"})
            EXPECT_TRUE(details.contains(QLatin1String(fact))) << cause << " " << fact;
        texts.append(details.section(u'\n', 0, 0));
    }
    for (int file = 0; file <= static_cast<int>(LastOf(KeyboardFile())); ++file)
        texts.append(app::CauseText(
            Error(Cause::FileNotSaved, {.keyboardFile = static_cast<KeyboardFile>(file)})));
    for (int holds = 0; holds <= static_cast<int>(Holds::Unknown); ++holds)
        texts.append(app::WriteFailureText(
            Error(Cause::ReadBackDiffers, {.holds = static_cast<Holds>(holds)})));
    for (int suggestion = static_cast<int>(Suggestion::Recover);
         suggestion <= static_cast<int>(Suggestion::MoveFileAway); ++suggestion) {
        Error error(Cause::WritingFailed);
        error.suggestion = static_cast<Suggestion>(suggestion);
        if (error.suggestion != Suggestion::SkipAbsent &&
            error.suggestion != Suggestion::NameWrite &&
            error.suggestion != Suggestion::LeaveOutIdentifier)
            texts.append(app::SuggestionText(error));
    }
    for (int deed = 1; deed <= static_cast<int>(LastOf(files::Deed())); ++deed)
        texts.append(app::DeedText({.deed = static_cast<files::Deed>(deed), .subject = "I-9"}));
    for (int obstacle = 1; obstacle <= static_cast<int>(LastOf(files::Obstacle())); ++obstacle)
        texts.append(app::ObstacleText({.obstacle = static_cast<files::Obstacle>(obstacle)}));
    for (const json::Fault& fault : AllFaults())
        texts.append(app::FaultText(fault));
    return texts;
}

// Both have a table of them.
TEST(Languages, FaultsReadInEnglishAsInTheCommandLine) {
    const Desk desk;
    for (const json::Fault& fault : AllFaults())
        EXPECT_EQ(app::FaultText(fault).toStdString(), json::WordsOf(fault));
}

TEST(Languages, ErrorsAreWhollyInTheLanguageOfTheWindow) {
    Desk desk;
    const QStringList english = WordsOfErrors();
    desk.Speak(1031);
    const QStringList german = WordsOfErrors();
    desk.Speak(1033);
    ASSERT_EQ(english.size(), german.size());
    for (qsizetype i = 0; i < english.size(); ++i) {
        EXPECT_NE(english[i], german[i]);
        EXPECT_FALSE(german[i].isEmpty() || german[i].contains(u'%')) << english[i].toStdString();
        for (const char* word : {" the ", " is ", " not ", " of ", " and ", "\"", "2026-01-31"})
            EXPECT_FALSE(german[i].contains(QLatin1String(word))) << german[i].toStdString();
    }
}

// The words of the simulated keyboard, too.
TEST(Languages, AKeyboardThatCannotBeOpenedIsExplainedInTheLanguageOfTheWindow) {
    Desk desk;
    desk.Speak(1031);
    const std::filesystem::path taken = desk.folder / "taken.qxk";
    sim::SimulatedDriver other(taken, "full");
    ASSERT_EQ(other.QXCFG_Init(), 0);
    const std::filesystem::path damaged = desk.folder / "damaged.qxk";
    std::string bytes = files::ReadFile(taken);
    bytes.back() = static_cast<char>(bytes.back() ^ 1);
    files::WriteFileAtomically(damaged, bytes);
    const std::filesystem::path text = desk.folder / "text.qxk";
    std::ofstream(text) << "no keyboard";
    const std::filesystem::path unsuited = desk.folder / "unsuited.qxk";
    files::WriteFileAtomically(
        unsuited,
        sim::Seal(sim::kKeyboardFile,
                  {"{}", std::string(static_cast<std::size_t>(sim::KeyboardMemory::kSize), '\0'),
                   "program", "program"}));
    for (const auto& [file, why] :
         {std::pair(taken, "Ein anderes Programm verwendet die Datei."),
          std::pair(damaged, "Die Datei ist beschädigt: Ihre Prüfsumme an Position 12 ist falsch."),
          std::pair(text, "Die Datei ist von anderer Art: Sie beginnt nicht mit QXKEYB."),
          std::pair(unsuited, "Das Tastaturmodell in der Datei ist ungültig."),
          std::pair(unsuited, "„keyboard“ fehlt")}) {
        EXPECT_FALSE(desk.window->Keyboards().Connect({{}, file, {}}));
        const QString details = desk.window->Keyboards().FailureToConnect().details;
        EXPECT_TRUE(details.contains(QString::fromUtf8(why))) << details.toStdString();
        EXPECT_TRUE(details.contains(ToQt(file.string()))) << details.toStdString();
        for (const char* english : {"another", "keyboard:", "offset", "cannot"})
            EXPECT_FALSE(details.contains(QLatin1String(english))) << details.toStdString();
    }
    desk.Speak(1033);
}

} // namespace
} // namespace qx::test
