// The texts of the window, in each of its languages.
#include "Desk.h"
#include "app/Failure.h"
#include "app/PreferencesPage.h"
#include "app/SettingWords.h"
#include "qxcontrols/readers/QXBarcode.h"

#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QMap>
#include <QMenuBar>
#include <QTabWidget>

#include <set>

namespace qx::test {
namespace {

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

// Every page's letters under Alt belong to one thing each, beside those of the menus.
TEST(Languages, HasNoLetterUnderAltTwice) {
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
            }
        }
    }
    desk.Speak(1033);
}

TEST(Languages, SpeaksGermanAtOnce) {
    Desk desk;
    desk.Page("preferences");
    desk.window->findChild<app::PreferencesPage*>()->Reveal(Preference::PreferedAppLang);
    auto* languages = desk.Find<QComboBox>("PreferedAppLang");
    languages->setCurrentIndex(languages->findData(1031));
    desk.AwaitTitle(QStringLiteral("Überblick"));
    EXPECT_NO_THROW(desk.Find<QComboBox>("PreferedAppLang")) << "the tab stays in front";
    QStringList kinds;
    for (int kind = 0; kind <= static_cast<int>(host::ErrorKind::ModelInvalid); ++kind)
        kinds.append(app::KindText(static_cast<host::ErrorKind>(kind)));
    EXPECT_EQ(kinds.removeDuplicates(), 0);
    EXPECT_FALSE(kinds.contains(QString()));
    const host::Error busy(host::ErrorKind::KeyboardBusy, "another program is writing to it");
    EXPECT_TRUE(app::FailureOf({}, busy).text.startsWith(QStringLiteral("Ein anderes Programm")));
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
}

} // namespace
} // namespace qx::test
