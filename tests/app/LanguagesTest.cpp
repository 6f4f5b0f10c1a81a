// The texts of the window, in each of its languages.
#include "Desk.h"
#include "app/Failure.h"
#include "app/PreferencesPage.h"
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
#include <QMap>
#include <QMenuBar>
#include <QTabWidget>

#include <fstream>

namespace qx::test {
namespace {

using views::ToQt;

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

// What the user can reach on the screen and does not say what it is.
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

// Every page's letters under Alt belong to one thing each, beside those of the menus, and all that
// takes the focus has a name.
TEST(Languages, ThingsHaveNamesAndLettersOfTheirOwn) {
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

TEST(Languages, SpeaksGermanAtOnce) {
    Desk desk;
    desk.Page("freeProgKeys");
    desk.Click("cmdEdit_0");
    desk.Page("preferences");
    desk.window->findChild<app::PreferencesPage*>()->Reveal(Preference::PreferedAppLang);
    auto* languages = desk.Find<QComboBox>("PreferedAppLang");
    languages->setCurrentIndex(languages->findData(1031));
    desk.AwaitTitle(QStringLiteral("Überblick"));
    EXPECT_NO_THROW(desk.Find<QComboBox>("PreferedAppLang")) << "the tab stays in front";
    EXPECT_EQ(desk.Notice(), QStringLiteral("Pick a key first.")) << "a notice is not lost";
    QStringList kinds;
    for (int kind = 0; kind <= static_cast<int>(host::ErrorKind::ModelInvalid); ++kind)
        kinds.append(app::KindText(static_cast<host::ErrorKind>(kind)));
    EXPECT_EQ(kinds.removeDuplicates(), 0);
    EXPECT_FALSE(kinds.contains(QString()));
    const host::Error busy(host::Cause::KeyboardBusy);
    EXPECT_TRUE(app::FailureOf({}, busy).text.startsWith(QStringLiteral("Ein anderes Programm")));
    EXPECT_EQ(desk.Find<QListWidget>("pages")->item(2)->text(),
              QStringLiteral("Magnetkartenleser"));
    desk.Page("barcode");
    desk.Find<QListWidget>("lstPrefGroup")->setCurrentRow(BP_Code39);
    EXPECT_EQ(desk.Find<QLabel>("lblRange_0")->text(), QStringLiteral("Kürzester Code"));
    EXPECT_FALSE(desk.workbench.IsModified()) << "a language is no edit";
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
        for (const host::Setting& setting : settings) {
            names.append(app::NameText(setting.name));
            const QStringList steps = names.back().split(QStringLiteral(" › "));
            EXPECT_FALSE(steps.contains(QString())) << setting.place;
            for (const host::NamePart& part : setting.name.parts) {
                const QString label = ToQt(std::string(part.label));
                const bool isWord = !label.isEmpty() && label.at(0).isLower();
                EXPECT_FALSE(language == 1031 && isWord && names.back().contains(label))
                    << names.back().toStdString();
            }
        }
        for (const char* name : {language == 1031 ? "Funktionstasten in Ebenen › Ebene 3 F6"
                                                  : "Layered function keys › Layer 3 F6",
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
        QStringLiteral("Die Namen der Tastatur waren nicht lesbar (Status des Treibers: 12)")))
        << desk.Notice().toStdString();

    QStringList texts;
    using host::Cause;
    for (const Cause cause : {Cause::EntriesUnreadable, Cause::AddressImpossible,
                              Cause::NamesUnreadable, Cause::AbilitiesUnreadable})
        texts.append(app::WarningText(
            host::Error(cause, {.name = "7", .call = host::FailedCall{"QXCFG_Init", 7}})));
    for (const Cause cause :
         {Cause::BackupReachedOtherwise, Cause::BackupOfUnit, Cause::BackupOfOtherUnit})
        texts.append(app::OtherKeyboardText(
            host::Error(cause, {.names = {"Kasse 1", "Kasse 2"}, .others = {"Kasse 3"}})));
    EXPECT_TRUE(texts.back().contains(QStringLiteral("Kasse 1 oder Kasse 2")));
    EXPECT_TRUE(texts.back().endsWith(QStringLiteral("Kasse 3.")));
    for (const char* section : {"pos", "MODULE_GUID", ""})
        texts.append(app::NotRestoredText({section, 5}));
    EXPECT_TRUE(texts[7].startsWith(QStringLiteral("POS-Tasten"))) << texts[7].toStdString();
    EXPECT_TRUE(texts[8].startsWith(QStringLiteral("MODULE_GUID")));
    EXPECT_EQ(texts.removeDuplicates(), 0);
    for (const QString& text : texts)
        EXPECT_FALSE(text.contains(u'%') || text.contains(QStringLiteral(" is ")))
            << text.toStdString();
    desk.Speak(1033);
}

} // namespace
} // namespace qx::test
