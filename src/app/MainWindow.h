// MainWindow: the application's window: the modules on the left, the chosen module's page on the
// right, and the two directions, from the keyboard and to it, in the tool bar.
#pragma once

#include "app/DocumentMenu.h"
#include "app/EditRequests.h"
#include "app/Language.h"
#include "app/QuickFind.h"
#include "app/SheetMenu.h"
#include "app/Transfers.h"
#include "app/Workbench.h"

#include <QMainWindow>

#include <functional>
#include <vector>

class QAction;
class QLabel;
class QListWidget;
class QProgressBar;
class QStackedWidget;

namespace qx::app {

class NoticeBar;

class MainWindow : public QMainWindow {
    Q_OBJECT
public:
    // How the window asks and warns; its own boxes unless something else is put in.
    struct Screen {
        std::function<bool(const QString& question)> ask;
        std::function<void(const QString& text)> warn;
    };

    MainWindow(Workbench& workbench, const Platform& platform, Language& language);
    ~MainWindow() override;

    Screen screen;
    [[nodiscard]] DocumentMenu& Documents() { return *m_documents; }
    [[nodiscard]] SheetMenu& Sheets() { return *m_sheets; }
    [[nodiscard]] EditRequests& Edits() { return m_edits; }
    [[nodiscard]] app::Transfers& Transfers() { return *m_transfers; }

    // Connects the keyboard; a failure is shown on the overview page.
    bool Connect(const setup::KeyboardChoice& choice);
    // Shows a setting where it can be edited.
    void GoTo(const std::string& place);
    void ShowPage(const QString& id);
    // Stores the preferences and shows everything by them.
    void ApplyPreferences();
    // What the notice above the page says.
    [[nodiscard]] QString Notice() const;

signals:
    void Appeared(); // on the screen, for the first time
    void ConnectionFailed(const QString& why);

protected:
    void paintEvent(QPaintEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Page {
        std::function<QWidget*()> make;
        QWidget* widget; // null before the page is first shown
    };

    void MakeActions();
    void MakeStatusBar();
    void MakePages();
    void AddPage(const QString& id, const QString& title, std::function<QWidget*()> make);
    [[nodiscard]] QWidget* PageAt(int row);
    [[nodiscard]] int RowOf(const QString& id) const; // -1 for none
    [[nodiscard]] QWidget* MakeOverview();
    void ShowKeyboard();
    void ShowDocument();
    void ShowProgress(int percent);
    void SwitchLanguage();
    [[nodiscard]] QString FirmwareFault() const; // empty: none
    void ConnectSimulated();
    void ChooseDriver();
    void Tell(const QString& text);
    void TellDone(const QString& text);
    void Warn(const QString& text);
    [[nodiscard]] std::vector<Findable> Findables();

    Workbench& m_workbench;
    Language& m_language;
    setup::KeyboardChoice m_startChoice;
    EditRequests m_edits;
    DocumentMenu* m_documents;
    app::Transfers* m_transfers;
    SheetMenu* m_sheets;
    QAction* m_undo = nullptr;
    QAction* m_redo = nullptr;
    QAction* m_read = nullptr;
    QAction* m_write = nullptr;
    QuickFind* m_find = nullptr;
    QListWidget* m_list = nullptr;
    QStackedWidget* m_pages = nullptr;
    NoticeBar* m_notice = nullptr;
    std::vector<Page> m_pageList; // by the rows of the list
    QString m_failure;            // to connect
    QLabel* m_keyboard = nullptr;
    QProgressBar* m_progress = nullptr;
    Integer m_shownLanguage = -1;
    bool m_isPainted = false;
};

} // namespace qx::app
