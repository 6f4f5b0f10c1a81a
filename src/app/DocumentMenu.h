// DocumentMenu: the commands on documents: new, open, recent, save, save as.
//
// It asks before unsaved changes are lost, saves automatically where the preferences say so, and
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

    // How it asks; a window's own dialogs unless something else is put in.
    struct Questions {
        std::function<Answer(const QString& document)> unsaved;
        // After a failure to save: under another name, not at all (when the document is about to be
        // closed), or cancel.
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

    // True when nothing is lost by going on: saved, given up, or nothing to save.
    [[nodiscard]] bool MayLeaveDocument();
    void New();
    void Open(const QString& file); // asks first where something would be lost
    // The settings of this document, as an untitled one.
    void OpenCopy(const QString& file);
    // The last document, when there is one that can be opened.
    bool OpenLast();
    // Offers what programs left unsaved when they crashed, the newest first, until one is opened.
    // Whether one was.
    bool OpenLeft();
    bool Save();
    bool SaveAs();
    // Keeps the copy of unsaved work as the document is now, or removes it when nothing is unsaved.
    // Warns where that cannot be done, and never throws.
    void KeepUnsaved();
    void DropUnsaved() { m_unsaved.Drop(); }
    // The name of the present document, for titles.
    [[nodiscard]] QString DocumentName() const;

signals:
    void Told(const QString& text);
    void Warned(const QString& text); // about something that the program does by itself
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
