// Transfers: what moves whole configurations between the keyboard and the document: reading,
// writing after a review, recovering what was interrupted, bringing a backup back.
//
// Each asks before anything is lost, and says at its end what the keyboard holds.
#pragma once

#include "app/DocumentMenu.h"
#include "app/Workbench.h"

#include <QObject>

#include <functional>
#include <string>

namespace qx::app {

class Transfers : public QObject {
    Q_OBJECT
public:
    // What is to be done about an interrupted write.
    enum class Ending { Finish, RollBack, Later };

    // How it asks; its own boxes unless something else is put in.
    struct Questions {
        std::function<Ending(const QString& text)> recover;
        std::function<bool(const QString& question)> otherKeyboard;
    };

    Transfers(Workbench& workbench, DocumentMenu& documents, QWidget* window);

    Questions questions;

    // Keyboard to document; asks first where unsaved changes would be lost.
    void Read();
    // Document to keyboard, after the review.
    void Write();
    // Backup to keyboard and document, after a review of the same kind.
    void Restore(const host::BackupEntry& backup);
    // Lets the user end an interrupted write to this keyboard. Whether none is left.
    bool Recover();

signals:
    void Done(const QString& text);
    void Told(const QString& text);
    void Failed(const QString& text);
    void Written(); // something was, and proved
    void PlaceChosen(const std::string& place);

private:
    // Runs it, and tells of its failure.
    void Attempt(const std::function<void()>& transfer);
    void EndInterrupted(const host::JournalEntry& write, Ending ending);
    // Whether the user wants the plan to be carried out.
    [[nodiscard]] bool Review(const host::WritePlan& plan, const QString& title);

    Workbench& m_workbench;
    DocumentMenu& m_documents;
    QWidget* m_window;
};

} // namespace qx::app
