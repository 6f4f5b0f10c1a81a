#include "app/Transfers.h"

#include "app/ErrorDetails.h"
#include "app/ErrorWords.h"
#include "app/LintWords.h"
#include "app/LocalTime.h"
#include "app/Places.h"
#include "app/SettingWords.h"
#include "app/Working.h"
#include "views/Bindings.h"
#include "views/PlainText.h"

#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>

#include <algorithm>
#include <map>
#include <set>
#include <utility>

namespace qx::app {

using host::Writer;
using views::ToQt;

Transfers::Transfers(Workbench& workbench, DocumentMenu& documents, QWidget* window)
    : QObject(window), m_workbench(workbench), m_documents(documents), m_window(window) {
    questions.recover = [this](const QString& text, const QString& details) {
        QMessageBox box(QMessageBox::Warning, tr("Interrupted write"), text, QMessageBox::NoButton,
                        m_window);
        box.setTextFormat(Qt::PlainText);
        box.setDetailedText(details);
        std::map<QAbstractButton*, Ending> endings;
        endings[box.addButton(tr("&Finish writing"), QMessageBox::AcceptRole)] = Ending::Finish;
        endings[box.addButton(tr("&Roll back"), QMessageBox::AcceptRole)] = Ending::RollBack;
        auto* later = box.addButton(tr("&Later"), QMessageBox::RejectRole);
        box.setDefaultButton(later);
        box.setEscapeButton(later);
        box.exec();
        return endings.contains(box.clickedButton()) ? endings[box.clickedButton()] : Ending::Later;
    };
    questions.whichWrite = [this](const QString& question, const QStringList& writes) {
        bool isChosen = false;
        const QString chosen = QInputDialog::getItem(m_window, tr("Interrupted write"), question,
                                                     writes, 0, false, &isChosen);
        return isChosen ? static_cast<int>(writes.indexOf(chosen)) : -1;
    };
    questions.mayRepair = [this](const QString& text, const QString& details) {
        QMessageBox box(QMessageBox::Warning, tr("Write to keyboard"), text, QMessageBox::Cancel,
                        m_window);
        box.setTextFormat(Qt::PlainText);
        box.setDetailedText(details);
        const auto* repair = box.addButton(tr("&Repair"), QMessageBox::DestructiveRole);
        box.setDefaultButton(QMessageBox::Cancel);
        box.exec();
        return box.clickedButton() == repair;
    };
    questions.mayWrite = [this](const QString& title, const QString& question) {
        return QMessageBox::question(m_window, title, views::Plain(question),
                                     QMessageBox::Yes | QMessageBox::No,
                                     QMessageBox::No) == QMessageBox::Yes;
    };
}

void Transfers::Attempt(const QString& what, const std::function<void()>& transfer) {
    if (m_workbench.IsBusy()) // assistive programs can act even then
        return;
    try {
        transfer();
    } catch (const host::Error& error) {
        if (error.Kind() == host::ErrorKind::Stopped)
            emit Stopped(CauseText(error));
        else
            emit Failed(FailureOf(what, error));
    } catch (const std::exception& error) {
        emit Failed(FailureOf(what, error));
    }
}

void Transfers::Read() {
    if (!m_documents.MayLeaveDocument())
        return;
    Attempt(tr("Nothing was read; the document is unchanged."), [this] {
        // A document may have had fewer than the keyboard.
        const auto listed = [this, sections = m_workbench.History().Sections()] {
            return m_workbench.Configuration().List(sections);
        };
        const bool isFirst = m_workbench.File().empty() && !m_hasRead;
        const auto before = listed();
        {
            const Working working(m_workbench, tr("Reading the keyboard…"));
            m_workbench.ReadKeyboard();
        }
        if (m_workbench.IsMixture())
            emit Unresolved(
                tr("All settings were read, but a write to this keyboard was interrupted, so "
                   "they may be a mixture of old and new ones. Resolve the write, then read "
                   "again."));
        m_hasRead = true;
        const auto differences = host::Compare(before, listed());
        const QString text = tr("All settings were read; the keyboard itself was not changed.");
        if (isFirst || differences.empty())
            emit Done(text);
        else
            emit ReadOther(text + u' ' +
                               tr("%n setting(s) differ from the previous document.", nullptr,
                                  static_cast<int>(differences.size())),
                           differences);
    });
}

std::vector<ReviewSheet::Remarks::Warning>
Transfers::WarningsOf(const host::WritePlan& plan) const {
    std::set<std::string> changed;
    for (const host::Difference& difference : plan.settings)
        changed.insert(difference.place);
    const auto isChangedIn = [&](const std::string& element) {
        const auto next = changed.lower_bound(element + "/");
        return !element.empty() && next != changed.end() && next->starts_with(element + "/");
    };
    const QXKeyboardLayoutData& layout = m_workbench.Layout();
    std::vector<ReviewSheet::Remarks::Warning> warnings;
    for (const host::SettingWarning& each :
         host::Lint(m_workbench.Configuration(), m_workbench.WantedSections(), &layout))
        if (changed.contains(each.place) || isChangedIn(each.warning.byPlace))
            warnings.push_back({each.place, NameText(each.name) + QStringLiteral(": ") +
                                                WarningText(each.warning, layout)});
    return warnings;
}

bool Transfers::Review(const host::WritePlan& plan, const QString& title,
                       std::vector<ReviewSheet::Remarks::Warning> warnings) {
    QStringList absent;
    for (const host::Section* section : m_workbench.AbsentSections())
        absent.append(SectionTitle(section->Info().key));
    ReviewSheet sheet(plan, title, ToQt(m_workbench.Session().Access().Keyboard()),
                      {absent.join(QStringLiteral(", ")), std::move(warnings)}, m_window);
    if (sheet.exec() == QDialog::Accepted)
        return true;
    if (!sheet.ChosenPlace().empty())
        emit PlaceChosen(sheet.ChosenPlace());
    return false;
}

std::optional<host::WritePlan> Transfers::Plan() {
    const auto plan = [this](bool repairs) {
        const Working working(m_workbench, tr("Comparing the document with the keyboard…"));
        return m_workbench.PlanWrite(repairs);
    };
    try {
        return plan(false);
    } catch (const host::Error& error) {
        if (error.Kind() != host::ErrorKind::KeyboardDamaged)
            throw;
        QStringList damaged;
        for (const host::Fault& fault : error.faults)
            damaged.append(SectionTitle(SectionOfPlace(fault.place)));
        const QString text =
            tr("The keyboard's memory is damaged in: %1.\n\nRepairing replaces all settings there "
               "with the document's. Otherwise nothing is written.")
                .arg(damaged.join(QStringLiteral(", ")));
        if (!questions.mayRepair(text, FailureOf({}, error).details))
            return std::nullopt;
    }
    return plan(true);
}

void Transfers::Write() {
    DocumentMenu::FinishTyping();
    Attempt(tr("Nothing was written."), [this] {
        if (const auto interrupted = Interrupted(); !interrupted.empty())
            return ResolveFound(interrupted);
        if (m_workbench.IsMixture() &&
            !questions.mayWrite(
                tr("Write to keyboard"),
                tr("This document was read while a write to the keyboard was interrupted. It may "
                   "be a mixture of old and new settings. Write it anyway?")))
            return;
        const auto plan = Plan();
        if (!plan)
            return;
        if (plan->IsEmpty())
            return emit Done(tr("The keyboard already has these settings; nothing was written."));
        if (!Review(*plan, tr("Write to keyboard"), WarningsOf(*plan)))
            return;
        Writer::Outcome outcome;
        const Sent sent = Send([&] { outcome = m_workbench.WriteKeyboard(*plan); });
        if (sent == Sent::Not)
            return;
        if (sent == Sent::Completely)
            emit Done(tr("%n change(s) (%1) written to the keyboard, read back and verified.", "",
                         static_cast<int>(plan->settings.size()))
                          .arg(tr("%n byte(s)", "", static_cast<int>(outcome.bytesSent))));
        emit Written();
    });
}

void Transfers::Restore(const host::BackupEntry& backup) {
    if (!m_documents.MayLeaveDocument())
        return;
    Attempt(tr("The backup was not restored."), [&] {
        const auto plan = [&] {
            const Working working(m_workbench, tr("Comparing the backup with the keyboard…"));
            return m_workbench.PlanRestore(m_workbench.Records().backups.Load(backup));
        }();
        if (plan.otherKeyboard &&
            !questions.mayWrite(tr("Restore backup"), CauseText(*plan.otherKeyboard) +
                                                          QStringLiteral("\n\n") +
                                                          tr("Write it into this keyboard?")))
            return;
        if (plan.IsEmpty())
            return emit Done(tr("The keyboard already matches this backup; nothing was written."));
        if (!Review(plan, tr("Restore backup"), {}))
            return;
        const Sent sent = Send([&] { m_workbench.Restore(plan, backup.id); });
        if (sent == Sent::Not)
            return;
        if (ReadRestored() && sent == Sent::Completely)
            emit Done(tr(
                "The backup was restored, read back and verified. The document has its settings."));
        for (const host::NotRestored& part : plan.notRestored)
            emit Warned(NotRestoredText(part));
        emit Written();
    });
}

bool Transfers::ReadRestored() {
    try {
        const Working working(m_workbench, tr("Reading the keyboard…"));
        m_workbench.ReadKeyboard();
        return true;
    } catch (const std::exception& error) {
        emit Failed(FailureOf(tr("The keyboard holds the backup, but could not be read again. The "
                                 "document is unchanged."),
                              error));
        return false;
    }
}

Transfers::Sent Transfers::Send(const std::function<void()>& write) {
    try {
        const Working working(m_workbench, tr("Writing to the keyboard. Do not unplug it."),
                              Work::Write);
        write();
        return Sent::Completely;
    } catch (const host::Error& error) {
        if (error.Kind() == host::ErrorKind::Stopped)
            throw;
        if (error.suggestion != host::Suggestion::Recover || !OfferToResolve(error))
            emit Failed(FailureOf({}, error));
        return error.holds == host::Holds::New ? Sent::WithFailure : Sent::Not;
    } catch (const std::exception& error) {
        emit Failed(
            FailureOf({}, host::Error(host::Cause::Unforeseen, {.problem = files::ProblemOf(error),
                                                                .holds = host::Holds::Unknown})));
        return Sent::Not;
    }
}

// A keyboard that does not answer can be resolved only later.
bool Transfers::OfferToResolve(const host::Error& error) {
    std::vector<host::JournalEntry> writes;
    try {
        writes = m_workbench.Interrupted();
    } catch (const std::exception&) {
        return false;
    }
    if (writes.empty())
        return false;
    Attempt(tr("The interrupted write could not be resolved."),
            [&] { Resolve(writes, WriteFailureText(error), DetailsText(error)); });
    return true;
}

std::vector<host::JournalEntry> Transfers::Interrupted() {
    const Working working(m_workbench, tr("Looking for an interrupted write…"));
    return m_workbench.Interrupted();
}

bool Transfers::Recover() {
    bool isFound = false;
    Attempt(tr("The interrupted write could not be resolved."), [&] {
        const auto writes = Interrupted();
        isFound = !writes.empty();
        if (isFound)
            ResolveFound(writes);
    });
    return isFound;
}

void Transfers::ResolveFound(const std::vector<host::JournalEntry>& writes) {
    Attempt(tr("The interrupted write could not be resolved."), [&] {
        Resolve(writes,
                tr("Writing %1 to this keyboard was interrupted (%2). The keyboard may hold only "
                   "part of it.")
                    .arg(DocumentText(writes.front().document), LocalTime(writes.front().time)),
                {});
    });
}

void Transfers::Resolve(const std::vector<host::JournalEntry>& writes, const QString& why,
                        const QString& details) {
    const QString ways = tr("“Finish writing” completes it; “Roll back” restores the keyboard's "
                            "previous contents.");
    const Ending ending = questions.recover(why + QStringLiteral("\n\n") + ways, details);
    if (ending == Ending::Later || writes.size() == 1)
        return EndInterrupted(writes.front(), false, ending);
    QStringList names;
    for (const host::JournalEntry& write : writes)
        names.append(tr("%1 for %2, %3 (%4)")
                         .arg(DocumentText(write.document),
                              write.till.unit.empty() ? tr("no unit") : ToQt(write.till.unit),
                              LocalTime(write.time), ToQt(write.Id())));
    const int chosen = questions.whichWrite(
        tr("The keyboard holds parts of several interrupted writes, and their records do not show "
           "which keyboard each was for. Which of them was interrupted on this keyboard?"),
        names);
    if (chosen < 0)
        return EndInterrupted(writes.front(), false, Ending::Later);
    EndInterrupted(writes[static_cast<std::size_t>(chosen)], true, ending);
}

void Transfers::EndInterrupted(const host::JournalEntry& write, bool isNamed, Ending ending) {
    const QString what = DocumentText(write.document);
    const auto recover = [&](Writer::Way way) {
        const Working working(m_workbench, tr("Writing to the keyboard. Do not unplug it."),
                              Work::Write);
        m_workbench.Recover(write, way, isNamed);
    };
    switch (ending) {
    case Ending::Finish:
        recover(Writer::Way::Finish);
        emit Done(
            tr("The interrupted write of %1 has been finished, read back and verified.").arg(what));
        return emit Written();
    case Ending::RollBack:
        recover(Writer::Way::RollBack);
        emit Done(tr("The interrupted write of %1 has been rolled back: the keyboard's previous "
                     "contents are restored, read back and verified.")
                      .arg(what));
        return emit Written();
    case Ending::Later:
        emit Unresolved(tr("The interrupted write of %1 must be finished or rolled back before "
                           "anything else is written.")
                            .arg(what));
    }
}

} // namespace qx::app
