// WorkBar: a line above the page while something is being done with the keyboard: what, and which
// step of a write. Meanwhile the pointer is busy.
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
