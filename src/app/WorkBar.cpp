#include "app/WorkBar.h"

#include <QApplication>

namespace qx::app {

namespace {

QString StepText(host::Step step) {
    switch (step) {
    case host::Step::SavingBackup:
        return WorkBar::tr("Saving a backup of what the keyboard holds…");
    case host::Step::Checking:
        return WorkBar::tr("Checking that it is still the same keyboard…");
    case host::Step::Writing:
        return WorkBar::tr("Sending the settings…");
    case host::Step::ReadingBack:
        return WorkBar::tr("Reading the keyboard back to compare…");
    }
    return {};
}

} // namespace

WorkBar::WorkBar(Workbench& workbench, QWidget* parent)
    : NoticeBar(QStringLiteral("lblWork"), parent) {
    HideButton();
    connect(&workbench, &Workbench::Began, this, &WorkBar::Begin);
    connect(&workbench, &Workbench::Stepped, this, &WorkBar::ShowStep);
    connect(&workbench, &Workbench::Ended, this, &WorkBar::End);
}

void WorkBar::Begin(const QString& text) {
    QApplication::setOverrideCursor(Qt::WaitCursor);
    m_work = text;
    ShowAtOnce(text);
}

void WorkBar::ShowStep(host::Step step) {
    ShowAtOnce(m_work + QLatin1Char('\n') + StepText(step));
}

// The program is busy with the keyboard; user input is held back.
void WorkBar::ShowAtOnce(const QString& text) {
    Age(); // replaces the previous step
    Tell(Kind::Warning, text);
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void WorkBar::End() {
    hide();
    QApplication::restoreOverrideCursor();
}

} // namespace qx::app
