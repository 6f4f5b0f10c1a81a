// WindowPages: the pages of the main window, and the ways to them: the list beside them, the Go
// menu and the search.
//
// Pages are made for one language; Make replaces them all.
#pragma once

#include "app/Failure.h"
#include "app/PageBook.h"
#include "app/QuickFind.h"

#include <QLatin1String>
#include <QObject>
#include <QString>

#include <string>
#include <vector>

class QMenu;

namespace qx::app {

class DocumentMenu;
class EditRequests;
class KeyboardMenu;
class KeyboardState;
class Transfers;
class Workbench;

// The ids of pages; a section's page has the section's key.
inline constexpr QLatin1String kOverview("overview");
inline constexpr QLatin1String kFiles("files");
inline constexpr QLatin1String kBackups("backups");
inline constexpr QLatin1String kTestDrive("testDrive");
inline constexpr QLatin1String kPreferences("preferences");

class WindowPages : public QObject {
    Q_OBJECT
public:
    // All of them outlive the pages.
    struct Partners {
        Workbench& workbench;
        EditRequests& edits;
        DocumentMenu& documents;
        Transfers& transfers;
        KeyboardMenu& keyboards;
        const KeyboardState& state;
    };
    WindowPages(const Partners& partners, QObject* parent);

    // A new widget with all pages and their list, in the present language; `notices` is placed
    // below the pages.
    [[nodiscard]] QWidget* Make(QWidget* notices);

    void Show(const QString& id); // nothing happens for an unknown one
    void FocusPage();             // gives the focus to its first widget
    // The page, and the tab of the preferences, that are shown, and what was typed on all pages.
    struct Spot {
        QString page = kOverview;
        int tab = 0;
        PageBook::Texts texts = {};
    };
    [[nodiscard]] Spot Current() const;
    void ShowAgain(const Spot& spot);

    // Shows in the list and in the menu which modules the keyboard has.
    void ShowKeyboard(QMenu& go);
    // Shows in the list how many keys of each module are programmed in the document.
    void ShowCounts();
    // Behind this action of the menu: what can be done with the keys of the page that is shown, and
    // nothing else.
    void ShowKeyActions(QMenu& menu, QAction* before);
    // Gives the focus to the search.
    void StartSearch();

signals:
    void Shown(); // another page than before
    void Reported(const QString& text);
    void Stopped(const QString& text);
    void Failed(const Failure& failure);
    void PreferencesChanged();                  // by the user
    void AppearanceChanged();                   // likewise; what is shown has the old colours
    void PlaceChosen(const std::string& place); // a setting that was searched

private:
    [[nodiscard]] QWidget* MakeOverview();
    [[nodiscard]] QWidget* MakeFiles();
    [[nodiscard]] QWidget* MakeBackups();
    [[nodiscard]] QWidget* MakePreferences();
    void FillMenu(QMenu& go);
    [[nodiscard]] std::vector<Findable> Findables();
    [[nodiscard]] std::vector<Findable> Actions();

    Partners m_partners;
    PageBook* m_book = nullptr;
    QuickFind* m_find = nullptr;
};

} // namespace qx::app
