// Transfers: what moves whole configurations between the keyboard and the document: reading,
// writing after a review, recovering what was interrupted, bringing a backup back.
//
// Each asks before anything is lost, and reports at its end what the keyboard holds.
#pragma once

#include "app/DocumentMenu.h"
#include "app/Workbench.h"

#include <QObject>

#include <functional>
#include <optional>
#include <string>

namespace qx::app {

class Transfers : public QObject {
    Q_OBJECT
public:
    // The ways to settle an interrupted write.
    enum class Ending { Finish, RollBack, Later };

    // How it asks; its own boxes unless something else is put in.
    struct Questions {
        std::function<Ending(const QString& text, const QString& details)> recover;
        // Which of several interrupted writes the keyboard was cut in; -1: the user cannot say.
        std::function<int(const QString& question, const QStringList& writes)> whichWrite;
        std::function<bool(const QString& title, const QString& question)> mayWrite;
        // Before damaged parts of the keyboard are replaced.
        std::function<bool(const QString& text, const QString& details)> mayRepair;
    };

    Transfers(Workbench& workbench, DocumentMenu& documents, QWidget* window);

    Questions questions;

    // Keyboard to document; asks first where unsaved changes would be lost.
    void Read();
    // Document to keyboard, after the review. An interrupted write is settled first, and then the
    // document is written when the user asks again.
    void Write();
    // Backup to keyboard and document, after a review of the same kind.
    void Restore(const host::BackupEntry& backup);
    // Lets the user settle an interrupted write to this keyboard. Whether there was one.
    bool Recover();

signals:
    void Done(const QString& text);
    void Told(const QString& text);
    void Warned(const QString& text);
    void Failed(const Failure& failure);
    void Written(); // something was, and proved
    void PlaceChosen(const std::string& place);

private:
    // Runs it, and reports its failure, which `what` names.
    void Attempt(const QString& what, const std::function<void()>& transfer);
    // Writes the plan; a write that breaks off can be settled at once. Whether it was proved.
    bool Send(const std::function<void()>& write);
    void ReportBrokenOff(const Failure& failure, bool isRecorded);
    // What writing the document would change. Where that takes a repair that the user does not
    // want, nothing.
    [[nodiscard]] std::optional<host::WritePlan> Plan();
    void SettleFound(const std::vector<host::JournalEntry>& writes);
    // Asks about the writes, after a text that says why, and does as the user answers.
    void Settle(const std::vector<host::JournalEntry>& writes, const QString& why,
                const QString& details);
    void EndInterrupted(const host::JournalEntry& write, bool isNamed, Ending ending);
    // Whether the user wants the plan to be carried out.
    [[nodiscard]] bool Review(const host::WritePlan& plan, const QString& title);

    Workbench& m_workbench;
    DocumentMenu& m_documents;
    QWidget* m_window;
};

} // namespace qx::app
