// Working: during its lifetime, the windows show that the program works with the keyboard.
#pragma once

#include "app/Workbench.h"

namespace qx::app {

class Working {
public:
    // The text is a sentence: "Reading the keyboard…".
    Working(Workbench& workbench, const QString& text, Work work = Work::Read)
        : m_workbench(workbench) {
        emit m_workbench.Began(text, work);
    }
    ~Working() {
        emit m_workbench.Progressed(100);
        emit m_workbench.Ended();
    }
    Working(const Working&) = delete;
    Working& operator=(const Working&) = delete;

private:
    Workbench& m_workbench;
};

} // namespace qx::app
