// InterruptWatch: while one exists, Ctrl+C, a request to end and the end of the terminal do not end
// the program; code that works with a keyboard checks for them, and ends once the keyboard is in
// order.
//
// A second signal two seconds later ends the program at once; nothing else does, however long the
// keyboard takes. A signal that was ignored when the program was started stays ignored. Writing to
// a pipe without a reader fails, but does not end the program. On Windows the system itself ends
// programs some seconds after their console is closed (five) or the user logs off.
#pragma once

#include <string>
#include <vector>

namespace qx::cli {

class InterruptWatch {
public:
    InterruptWatch();
    ~InterruptWatch();
    InterruptWatch(const InterruptWatch&) = delete;
    InterruptWatch& operator=(const InterruptWatch&) = delete;

    // The signal received since the first current watch was created; 0 if none.
    [[nodiscard]] static int Signal();
    [[nodiscard]] bool IsInterrupted() const { return Signal() != 0; }
    // "signal 2"; on Windows, which has no signals, "Ctrl+C".
    [[nodiscard]] static std::string NameOf(int signal);

private:
    struct Kept;
    std::vector<Kept> m_kept; // the previous signal handlers
};

// Thrown when work ends because of a signal.
struct Interrupted {
    int signal;
};

} // namespace qx::cli
