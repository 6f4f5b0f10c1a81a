// MainWindow: the application's window: the list of pages, the selected page, and a tool bar for
// reading from and writing to the keyboard.
#pragma once

#include "app/DocumentMenu.h"
#include "app/EditRequests.h"
#include "app/KeyboardMenu.h"
#include "app/Language.h"
#include "app/NoticeBar.h"
#include "app/SheetMenu.h"
#include "app/Transfers.h"
#include "app/Workbench.h"

#include <QMainWindow>

#include <functional>

class QAction;
class QMenu;

namespace qx::app {

class HelpWindow;
class KeyboardState;
class StatusLine;
class WindowPages;

// It is on the screen before it has anything in it, and filled at once; only then can it be used.
class MainWindow : public QMainWindow {
    Q_OBJECT
public:
    // The window's questions, by default message boxes, and warnings, by default notices.
    struct Screen {
        std::function<bool(const QString& question)> ask; // before something is destroyed
        std::function<void(const Failure& failure)> warn;
    };

    MainWindow(Workbench& workbench, const Platform& platform, Language& language);
    ~MainWindow() override;

    Screen screen;
    [[nodiscard]] DocumentMenu& Documents() { return *m_documents; }
    [[nodiscard]] app::Transfers& Transfers() { return *m_transfers; }
    [[nodiscard]] KeyboardMenu& Keyboards() { return *m_keyboards; }

    // Shows a setting where it can be edited.
    void GoTo(const std::string& place);
    void ShowPage(const QString& id);
    // Stores the preferences and updates everything from them.
    void ApplyPreferences();

signals:
    void Appeared(); // on the screen and filled

protected:
    void paintEvent(QPaintEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Fill();
    void ConnectSignals();
    void MakeActions();
    void MakeToolBar();
    void MakePages();
    void ShowDocument();
    void ShowHelp(); // of the page
    void MakeAgain();
    void OpenDropped(const QStringList& files);
    // Undo or redo a step and show its change.
    void Undo();
    void Redo();
    // `place` is a copy: the step goes with its description.
    void Go(std::string place, void (Workbench::*step)());
    void ShowChange(const std::string& place);
    void Report(const QString& text);
    void ReportDone(const QString& text);
    [[nodiscard]] Notice UndoableNotice(const QString& text); // about the last edit
    void ReportWarning(const QString& text);
    void Warn(const Failure& failure);
    void ShowDifferences(const std::vector<host::Difference>& differences);
    [[nodiscard]] std::vector<Notice::Offer> OffersFor(Failure::Remedy remedy);

    Workbench& m_workbench;
    Language& m_language;
    EditRequests m_edits;
    DocumentMenu* m_documents;
    app::Transfers* m_transfers;
    KeyboardMenu* m_keyboards;
    SheetMenu* m_sheets;
    KeyboardState* m_state;
    WindowPages* m_pages;
    QAction* m_undo = nullptr;
    QAction* m_redo = nullptr;
    QMenu* m_go = nullptr;
    NoticeBar* m_notice = nullptr;
    HelpWindow* m_help = nullptr; // when it is first wanted
    StatusLine* m_status = nullptr;
    Integer m_shownLanguage = -1;
    bool m_isPainted = false;
};

} // namespace qx::app
