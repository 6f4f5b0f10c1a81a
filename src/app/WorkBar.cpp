#include "app/WorkBar.h"

#include <QAccessible>
#include <QApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace qx::app {

namespace {

using host::Step;

constexpr int kWhole = 100; // of the progress of one step

// A word for the row of steps, and a sentence while it goes on.
struct StepTexts {
    QString name;
    QString sentence;
};

StepTexts TextsOf(Step step) {
    switch (step) {
    case Step::SavingBackup:
        return {WorkBar::tr("Back up"), WorkBar::tr("Saving a backup of the keyboard's contents…")};
    case Step::Checking:
        return {WorkBar::tr("Check"), WorkBar::tr("Checking that it is still the same keyboard…")};
    case Step::Writing:
        return {WorkBar::tr("Write"), WorkBar::tr("Sending the settings…")};
    case Step::ReadingBack:
        return {WorkBar::tr("Read back"), WorkBar::tr("Reading the keyboard back to compare…")};
    }
    return {};
}

std::vector<Step> StepsOf(Work work) {
    switch (work) {
    case Work::Read:
        break;
    case Work::Write:
        return {Step::SavingBackup, Step::Checking, Step::Writing, Step::ReadingBack};
    case Work::Load:
        return {Step::SavingBackup, Step::Checking, Step::Writing};
    }
    return {};
}

bool IsInput(QEvent::Type type) {
    switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
    case QEvent::Shortcut:
    case QEvent::InputMethod:
    case QEvent::ContextMenu:
    case QEvent::TouchBegin:
    case QEvent::DragEnter:
    case QEvent::Drop:
    case QEvent::Close:
        return true;
    default:
        return false;
    }
}

} // namespace

// Drops the user's input, except into one button, which Esc presses too. All else in the window is
// disabled.
class WorkBar::InputHold : public QObject {
public:
    InputHold(QWidget& bar, QPushButton& exception)
        : m_exception(exception), m_focus(QApplication::focusWidget()) {
        QApplication::setOverrideCursor(Qt::WaitCursor);
        qApp->installEventFilter(this);
        if (m_focus != nullptr)
            m_focus->clearFocus(); // else it moves through all widgets that are being disabled
        for (QWidget* part = &bar; !part->isWindow(); part = part->parentWidget())
            DisableBeside(*part);
    }
    ~InputHold() override {
        QApplication::restoreOverrideCursor();
        for (QWidget* each : m_disabled)
            if (each != nullptr)
                each->setEnabled(true);
        if (m_focus != nullptr && m_focus->isVisible())
            m_focus->setFocus();
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (!IsInput(event->type()) || watched == &m_exception)
            return false;
        if (event->type() == QEvent::KeyPress && watched->isWidgetType() &&
            static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape)
            m_exception.click();
        // Windows of the system hand their events on to widgets.
        if (!watched->isWidgetType() && event->type() != QEvent::Shortcut)
            return false;
        event->ignore();
        return true;
    }

private:
    void DisableBeside(const QWidget& part) {
        for (QWidget* each :
             part.parentWidget()->findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
            if (each != &part && !each->isWindow() && each->isEnabled()) {
                each->setEnabled(false);
                m_disabled.emplace_back(each);
            }
    }

    QPushButton& m_exception;
    QPointer<QWidget> m_focus; // before
    std::vector<QPointer<QWidget>> m_disabled;
};

WorkBar::WorkBar(Workbench& workbench, QWidget* parent)
    : QFrame(parent), m_workbench(workbench), m_text(new QLabel), m_steps(new QLabel),
      m_progress(new QProgressBar), m_stop(new QPushButton) {
    setFrameShape(QFrame::StyledPanel);
    setBackgroundRole(QPalette::AlternateBase);
    setAutoFillBackground(true);
    m_text->setObjectName(QStringLiteral("lblWork"));
    m_text->setTextFormat(Qt::PlainText);
    m_text->setWordWrap(true);
    m_steps->setObjectName(QStringLiteral("lblSteps"));
    m_steps->setTextFormat(Qt::RichText); // the program's own words alone
    m_progress->setObjectName(QStringLiteral("progress"));
    m_progress->setAccessibleName(tr("Progress"));
    m_progress->setTextVisible(false);
    m_stop->setObjectName(QStringLiteral("cmdStop"));
    connect(m_stop, &QPushButton::clicked, this, &WorkBar::Stop);
    m_progress->setMaximumHeight(fontMetrics().height());
    auto* stepRow = new QHBoxLayout;
    stepRow->addWidget(m_steps);
    stepRow->addSpacing(16);
    stepRow->addWidget(m_progress, 1);
    auto* column = new QVBoxLayout;
    column->addWidget(m_text);
    column->addLayout(stepRow);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(8, 4, 8, 4);
    row->addLayout(column, 1);
    row->addWidget(m_stop);
    hide();
    connect(&workbench, &Workbench::Began, this, &WorkBar::Begin);
    connect(&workbench, &Workbench::Stepped, this, &WorkBar::ShowStep);
    connect(&workbench, &Workbench::Progressed, this, &WorkBar::ShowProgress);
    for (const auto signal : {&Workbench::StopAsked, &Workbench::Waits})
        connect(&workbench, signal, this, [this] {
            if (m_hold != nullptr)
                PaintAtOnce();
        });
    connect(&workbench, &Workbench::Ended, this, &WorkBar::End);
}

WorkBar::~WorkBar() = default;

void WorkBar::Begin(const QString& text, Work work) {
    m_hold = std::make_unique<InputHold>(*this, *m_stop);
    m_doing = text;
    m_planned = StepsOf(work);
    m_stepsDone = 0;
    m_steps->setVisible(!m_planned.empty());
    m_stop->setVisible(!m_planned.empty());
    m_stop->setEnabled(true);
    m_stop->setText(tr("Cancel"));
    m_stop->setToolTip(tr("Nothing is written until the step Write begins"));
    m_progress->setRange(0, kWhole * std::max(1, static_cast<int>(m_planned.size())));
    m_progress->setValue(0);
    m_text->setText(text);
    if (!m_planned.empty())
        ShowSteps(m_planned.front());
    show();
    if (!m_planned.empty())
        m_stop->setFocus();
    QAccessibleEvent alert(m_text, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
    PaintAtOnce();
}

void WorkBar::ShowSteps(Step now) {
    QStringList steps;
    for (const Step step : m_planned) {
        const QString name = TextsOf(step).name;
        steps += step < now    ? QStringLiteral("✓ ") + name
                 : step == now ? QStringLiteral("<b>● %1</b>").arg(name)
                               : QStringLiteral("○ ") + name;
    }
    m_text->setText(m_doing + QLatin1Char('\n') + TextsOf(now).sentence);
    m_stepsDone = static_cast<int>(std::ranges::find(m_planned, now) - m_planned.begin());
    m_steps->setText(steps.join(QStringLiteral("&nbsp;&nbsp; → &nbsp;&nbsp;")));
}

void WorkBar::ShowStep(Step step) {
    if (m_hold == nullptr)
        return;
    ShowSteps(step);
    m_progress->setValue(m_stepsDone * kWhole);
    if (step == Step::Writing) {
        m_stop->setEnabled(false);
        m_stop->setText(tr("Cannot be cancelled now"));
        m_stop->setToolTip(tr("Stopping now would leave the keyboard partly written"));
    }
    PaintAtOnce();
}

void WorkBar::ShowProgress(int percent) {
    if (m_hold == nullptr)
        return;
    m_progress->setValue(m_stepsDone * kWhole + percent);
    PaintAtOnce();
}

void WorkBar::Stop() {
    m_workbench.RequestStop();
    m_stop->setEnabled(false);
    m_stop->setText(tr("Cancelling…"));
}

// The driver does not return to the event loop for a while.
void WorkBar::PaintAtOnce() {
    QApplication::processEvents();
    repaint();
}

void WorkBar::End() {
    hide();
    m_hold.reset();
}

} // namespace qx::app
