// WorkBar: a panel below the page with the current work with the keyboard, the steps of a write,
// and its progress.
//
// While it is shown, the program is busy: the window is painted whenever the driver reports
// progress and at each step, and everything except the button that stops a write is disabled.
#pragma once

#include "app/Workbench.h"

#include <QFrame>

#include <memory>
#include <vector>

class QLabel;
class QProgressBar;
class QPushButton;

namespace qx::app {

class WorkBar : public QFrame {
    Q_OBJECT
public:
    explicit WorkBar(Workbench& workbench, QWidget* parent = nullptr);
    ~WorkBar() override;

private:
    class InputHold;

    void Begin(const QString& text, Work work);
    void ShowStep(host::Step step);
    void ShowProgress(int percent);
    void Stop();
    void End();
    void ShowSteps(host::Step now);
    void PaintAtOnce();

    Workbench& m_workbench;
    QLabel* m_text;
    QLabel* m_steps;
    QProgressBar* m_progress;
    QPushButton* m_stop;
    QString m_doing;
    std::vector<host::Step> m_planned;
    int m_stepsDone = 0;               // of these
    std::unique_ptr<InputHold> m_hold; // while the work goes on
};

} // namespace qx::app
