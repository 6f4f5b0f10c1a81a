// InterruptWatch: while one lives, Ctrl+C does not end the program, but is told to who asks.
#pragma once

namespace qx::cli {

class InterruptWatch {
public:
    InterruptWatch();
    ~InterruptWatch();
    InterruptWatch(const InterruptWatch&) = delete;
    InterruptWatch& operator=(const InterruptWatch&) = delete;

    // Whether it was pressed since the watch began.
    [[nodiscard]] bool IsInterrupted() const;

private:
    void (*m_previous)(int);
};

} // namespace qx::cli
