// InterruptWatch: while one lives, Ctrl+C, a request to end and the end of the terminal do not end
// the program; whoever works with a keyboard asks for them, and ends when the keyboard is in order.
//
// A second signal two seconds later ends the program at once; nothing else does, however long the
// keyboard takes. A signal that the program was started without stays ignored. Nor does writing to
// a pipe that nobody reads end the program: it fails. On Windows the system itself ends programs
// some seconds after their console is closed (five), or the user logs off.
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

    // The signal that has come since the first watch that lives began; 0: none.
    [[nodiscard]] static int Signal();
    [[nodiscard]] bool IsInterrupted() const { return Signal() != 0; }
    // "signal 2"; on Windows, where there are none, "Ctrl+C".
    [[nodiscard]] static std::string NameOf(int signal);

private:
    struct Kept;
    std::vector<Kept> m_kept; // how the signals were handled before
};

// Thrown where work ends for a signal.
struct Interrupted {
    int signal;
};

} // namespace qx::cli
