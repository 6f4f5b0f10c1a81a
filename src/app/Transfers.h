// Transfers: transfers of whole configurations between the keyboard and the document: reading,
// writing after a review, recovering interrupted writes, restoring backups.
//
// Each asks before anything is lost, and reports the keyboard's contents afterwards.
#pragma once

#include "app/DocumentMenu.h"
#include "app/ReviewSheet.h"
#include "app/Workbench.h"

#include <QObject>

#include <functional>
#include <optional>
#include <string>

namespace qx::app {

class Transfers : public QObject {
    Q_OBJECT
public:
    // The ways to recover an interrupted write.
    enum class Ending { Finish, RollBack, Later };

    // The questions to the user; its own message boxes by default.
    struct Questions {
        std::function<Ending(const QString& text, const QString& details)> recover;
        // Which of several interrupted writes belongs to the keyboard; -1 if the user does not
        // know.
        std::function<int(const QString& question, const QStringList& writes)> whichWrite;
        std::function<bool(const QString& title, const QString& question)> mayWrite;
        // Before damaged parts of the keyboard are replaced.
        std::function<bool(const QString& text, const QString& details)> mayRepair;
    };

    Transfers(Workbench& workbench, DocumentMenu& documents, QWidget* window);

    Questions questions;

    // Keyboard to document; asks first if unsaved changes would be lost.
    void Read();
    // Document to keyboard, after the review. An interrupted write is recovered first; the document
    // is then written when the user asks again.
    void Write();
    // Backup to keyboard and document, after the same kind of review.
    void Restore(const host::BackupEntry& backup);
    // Lets the user recover an interrupted write to this keyboard; false if there was none.
    bool Recover();

signals:
    void Done(const QString& text);
    // Another document than before was read, with these differences.
    void ReadOther(const QString& text, const std::vector<host::Difference>& differences);
    void Stopped(const QString& text); // by the user
    void Warned(const QString& text);
    void Unresolved(const QString& text); // about an interrupted write
    void Failed(const Failure& failure);
    void Written(); // something was written and verified
    void PlaceChosen(const std::string& place);

private:
    // Runs the transfer and reports its failure, with the text `what`.
    void Attempt(const QString& what, const std::function<void()>& transfer);
    // Whether the keyboard now holds all of a write, as read back.
    enum class Sent { Completely, WithFailure, Not };
    // Writes the plan and reports a failure; an interrupted write can be recovered at once.
    [[nodiscard]] Sent Send(const std::function<void()>& write);
    // Lets the user recover the write that this error has interrupted; false if it cannot be
    // recovered now.
    bool OfferToResolve(const host::Error& error);
    // Keyboard to document after a backup was restored; reports a failure.
    bool ReadRestored();
    // The plan for writing the document. None if that requires a repair that the user does not
    // want.
    [[nodiscard]] std::optional<host::WritePlan> Plan();
    // The keyboard's interrupted writes.
    [[nodiscard]] std::vector<host::JournalEntry> Interrupted();
    void ResolveFound(const std::vector<host::JournalEntry>& writes);
    // Asks about the writes, after a text with the reason, and follows the user's answer.
    void Resolve(const std::vector<host::JournalEntry>& writes, const QString& why,
                 const QString& details);
    void EndInterrupted(const host::JournalEntry& write, bool isNamed, Ending ending);
    // Whether the user confirms the plan and these warnings.
    [[nodiscard]] bool Review(const host::WritePlan& plan, const QString& title,
                              std::vector<ReviewSheet::Remarks::Warning> warnings);
    // About the sequences that the plan changes, or that other ones override that it changes.
    [[nodiscard]] std::vector<ReviewSheet::Remarks::Warning>
    WarningsOf(const host::WritePlan& plan) const;

    Workbench& m_workbench;
    DocumentMenu& m_documents;
    QWidget* m_window;
    bool m_hasRead = false;
};

} // namespace qx::app
