// WorkBar: a line above the page that shows the current work with the keyboard, and the step of a
// write. The pointer is busy meanwhile.
#pragma once

#include "app/NoticeBar.h"
#include "app/Workbench.h"

namespace qx::app {

class WorkBar : public NoticeBar {
    Q_OBJECT
public:
    explicit WorkBar(Workbench& workbench, QWidget* parent = nullptr);

private:
    void Begin(const QString& text);
    void ShowStep(host::Step step);
    void End();
    void ShowAtOnce(const QString& text);

    QString m_work;
};

} // namespace qx::app
