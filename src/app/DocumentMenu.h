// DocumentMenu: the commands on documents: new, open, recent, save, save as.
//
// It asks before unsaved changes are lost, saves automatically if the preferences ask for it, and
// keeps a copy of unsaved work that survives a crash.
#pragma once

#include "app/Failure.h"
#include "app/UnsavedWork.h"
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
    enum class Answer { Save, SaveAs, Discard, Cancel };
    enum class LeftAnswer { Open, Discard, Later };

    // The questions to the user; the window's own dialogs by default.
    struct Questions {
        std::function<Answer(const QString& document)> unsaved;
        // After a failed save: save under another name, discard (if the document is being closed),
        // or cancel.
        std::function<Answer(const Failure& failure, bool isClosing)> notSaved;
        std::function<QString()> fileToOpen;
        std::function<QString(const QString& suggestion)> fileToSave;
        std::function<LeftAnswer(const QString& text)> leftCopy;
    };

    DocumentMenu(Workbench& workbench, QWidget* window);

    Questions questions;

    // Adds the commands to the menu.
    void Fill(QMenu& menu);
    [[nodiscard]] QAction* OpenAction() const { return m_open; }
    [[nodiscard]] QAction* SaveAction() const { return m_save; }

    // A text or number that is being typed becomes part of the document.
    static void FinishTyping();
    // True if nothing is lost by continuing: saved, discarded, or nothing to save.
    [[nodiscard]] bool MayLeaveDocument();
    void New();
    void Open(const QString& file); // asks first if changes would be lost
    // Opens this document's settings as an untitled document.
    void OpenCopy(const QString& file);
    // Opens the last document, if it still exists.
    bool OpenLast();
    // Offers the unsaved work of programs that crashed, newest first, until one is opened; true if
    // one was.
    bool OpenLeft();
    bool Save();
    bool SaveAs();
    // Updates the copy of unsaved work, or deletes it if nothing is unsaved.
    // Warns where that cannot be done, and never throws.
    void KeepUnsaved();
    void DropUnsaved() { m_unsaved.Drop(); }
    // The name of the current document, for titles.
    [[nodiscard]] QString DocumentName() const;

signals:
    void Reported(const QString& text);
    void Warned(const QString& text); // about an automatic action
    void SavedByItself(const QString& text);
    void Failed(const Failure& failure);

private:
    [[nodiscard]] bool SaveInto(QString file, bool isClosing);
    LeftAnswer AskAboutLeft(UnsavedWork::LeftCopy& copy);
    [[nodiscard]] QString AskForFile() const;
    void SaveByItself();
    void FillRecent();
    void NoteRecent(const QString& file);
    void DocumentChanged();
    [[nodiscard]] QString OpenedText(const QString& file) const;

    Workbench& m_workbench;
    QWidget* m_window;
    UnsavedWork m_unsaved;
    QAction* m_open = nullptr;
    QAction* m_save = nullptr;
    QMenu* m_recent = nullptr;
    QTimer m_autoSave;
    QTimer m_keepUnsaved;
};

} // namespace qx::app
