#include "app/Transfers.h"

#include "app/ControlTexts.h"
#include "app/ReviewSheet.h"
#include "app/SettingWords.h"
#include "views/Bindings.h"

#include <QMessageBox>
#include <QPushButton>

#include <map>

namespace qx::app {

using host::Writer;
using views::ToQt;

Transfers::Transfers(Workbench& workbench, DocumentMenu& documents, QWidget* window)
    : QObject(window), m_workbench(workbench), m_documents(documents), m_window(window) {
    questions.recover = [this](const QString& text) {
        QMessageBox box(QMessageBox::Warning, tr("Interrupted write"), text, QMessageBox::NoButton,
                        m_window);
        std::map<QAbstractButton*, Ending> endings;
        endings[box.addButton(tr("&Finish writing"), QMessageBox::AcceptRole)] = Ending::Finish;
        endings[box.addButton(tr("&Roll back"), QMessageBox::AcceptRole)] = Ending::RollBack;
        endings[box.addButton(tr("&Later"), QMessageBox::RejectRole)] = Ending::Later;
        box.exec();
        return endings.contains(box.clickedButton()) ? endings[box.clickedButton()] : Ending::Later;
    };
    questions.otherKeyboard = [this](const QString& question) {
        return QMessageBox::question(m_window, tr("Restore backup"), question) == QMessageBox::Yes;
    };
}

void Transfers::Attempt(const std::function<void()>& transfer) {
    try {
        transfer();
    } catch (const std::exception& error) {
        emit Failed(ErrorText(error));
    }
    emit m_workbench.Progressed(100);
}

void Transfers::Read() {
    if (!m_documents.MayLeaveDocument())
        return;
    Attempt([this] {
        m_workbench.ReadKeyboard();
        emit Done(tr("Keyboard to document: read all settings. The keyboard is unchanged."));
    });
}

bool Transfers::Review(const host::WritePlan& plan, const QString& title) {
    emit m_workbench.Progressed(100);
    QStringList absent;
    for (const host::Section* section : m_workbench.AbsentSections())
        absent.append(SectionTitle(section->Info().key));
    ReviewSheet sheet(plan, title, ToQt(m_workbench.Session().Access().Keyboard()),
                      absent.join(QStringLiteral(", ")), m_window);
    if (sheet.exec() == QDialog::Accepted)
        return true;
    if (!sheet.ChosenPlace().empty())
        emit PlaceChosen(sheet.ChosenPlace());
    return false;
}

void Transfers::Write() {
    if (!Recover())
        return;
    Attempt([this] {
        const host::WritePlan plan = m_workbench.PlanWrite();
        if (plan.IsEmpty())
            return emit Done(tr("The keyboard already has these settings; nothing was written."));
        if (!Review(plan, tr("Write to keyboard")))
            return;
        const Writer::Outcome outcome = m_workbench.WriteKeyboard(plan);
        emit Done(tr("Document to keyboard: wrote %n change(s)", "",
                     static_cast<int>(plan.settings.size())) +
                  tr(" (%n byte(s)), read back and found equal.", "",
                     static_cast<int>(outcome.bytesSent)));
        emit Written();
    });
}

void Transfers::Restore(const host::BackupEntry& backup) {
    if (!m_documents.MayLeaveDocument())
        return;
    Attempt([&] {
        const host::WritePlan plan = m_workbench.PlanRestore(m_workbench.LoadBackup(backup));
        if (plan.isOfOtherKeyboard &&
            !questions.otherKeyboard(
                tr("This backup is of another keyboard. Write it into this one?")))
            return;
        if (plan.IsEmpty())
            return emit Done(tr("The keyboard holds all of this backup; nothing was written."));
        if (!Review(plan, tr("Restore backup")))
            return;
        m_workbench.Restore(plan, backup.id);
        emit Done(tr("Backup to keyboard and document: restored, read back and found equal."));
        emit Written();
    });
}

bool Transfers::Recover() {
    bool isSettled = false;
    Attempt([&] {
        const auto write = m_workbench.Interrupted();
        if (write) {
            const QString about = tr("Writing %1 to this keyboard was interrupted (%2).")
                                      .arg(ToQt(write->document), ToQt(write->time));
            const QString ways =
                tr("The keyboard may hold a part of it.\n\nFinish writing makes the keyboard "
                   "hold all of it; roll back brings back what the keyboard held before.");
            EndInterrupted(*write, questions.recover(about + u' ' + ways));
        }
        isSettled = !write || !m_workbench.Interrupted();
    });
    return isSettled;
}

void Transfers::EndInterrupted(const host::JournalEntry& write, Ending ending) {
    const QString what = ToQt(write.document);
    switch (ending) {
    case Ending::Finish:
        m_workbench.Recover(write, Writer::Way::Finish);
        emit Done(
            tr("The interrupted write of %1 is finished, read back and found equal.").arg(what));
        return emit Written();
    case Ending::RollBack:
        m_workbench.Recover(write, Writer::Way::RollBack);
        emit Done(tr("The interrupted write of %1 is rolled back: the keyboard holds what it held "
                     "before, read back and found equal.")
                      .arg(what));
        return emit Written();
    case Ending::Later:
        emit Told(tr("An interrupted write of %1 is to be finished or rolled back before anything "
                     "else is written.")
                      .arg(what));
    }
}

} // namespace qx::app
