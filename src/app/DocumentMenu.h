// DocumentMenu: the commands on documents: new, open, recent, save, save as.
//
// It asks before unsaved changes are lost, and saves by itself where the preferences say so.
#pragma once

#include "app/Workbench.h"

#include <QObject>
#include <QTimer>

#include <functional>

class QAction;
class QMenu;
class QWidget;

namespace qx::app {

class DocumentMenu : public QObject {
    Q_OBJECT
public:
    enum class Answer { Save, Discard, Cancel };

    // How it asks; a window's own dialogs unless something else is put in.
    struct Questions {
        std::function<Answer(const QString& document)> unsaved;
        std::function<QString()> fileToOpen;
        std::function<QString(const QString& suggestion)> fileToSave;
    };

    DocumentMenu(Workbench& workbench, QWidget* window);

    Questions questions;

    // Adds the commands to the menu.
    void Fill(QMenu& menu);
    [[nodiscard]] QAction* OpenAction() const { return m_open; }
    [[nodiscard]] QAction* SaveAction() const { return m_save; }

    // True when nothing is lost by going on: saved, given up, or nothing to save.
    [[nodiscard]] bool MayLeaveDocument();
    void New();
    void Open(const QString& file); // asks first where something would be lost
    // The settings of this document, as an untitled one.
    void OpenCopy(const QString& file);
    // The last document, when there is one that can be opened.
    bool OpenLast();
    bool Save();
    bool SaveAs();
    // The name of the present document, for titles.
    [[nodiscard]] QString DocumentName() const;

signals:
    void Told(const QString& text);
    void SavedByItself(const QString& text);
    void Failed(const QString& text);

private:
    bool SaveInto(const QString& file);
    void SaveByItself();
    void FillRecent();
    void NoteRecent(const QString& file);
    void DocumentChanged();

    Workbench& m_workbench;
    QWidget* m_window;
    QAction* m_open = nullptr;
    QAction* m_save = nullptr;
    QMenu* m_recent = nullptr;
    QTimer m_autoSave;
};

} // namespace qx::app
