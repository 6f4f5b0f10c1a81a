// ChildProcess: a program that this one starts and talks to over a channel of bytes.
//
// The seam to the system: everything about starting, watching and ending processes is behind this
// header. A child is started from its file (never by forking this program's memory), has its own
// process group, so that Ctrl+C at the terminal reaches only the program that started it, and does
// not outlive that program. Its standard input is empty; what it writes to standard output goes to
// standard error. On Windows it shares the console of the program that started it; without one it
// gets none that anybody sees.
#pragma once

#include "files/Problem.h"

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace qx::process {

using Deadline = std::chrono::steady_clock::time_point;
constexpr Deadline kNever = Deadline::max();

// One end of the connection between a program and its child.
class Channel {
public:
    // In a child: its end of the channel to the program that started it. Called once, before
    // anything else; from then on the child ends when that program does, and not by a signal that
    // asks all of them to end: that program ends its work in order. Throws std::runtime_error in a
    // program that was not started as a child.
    [[nodiscard]] static Channel ToParent();

    class End; // the system's
    explicit Channel(std::shared_ptr<End> end) : m_end(std::move(end)) {}
    Channel(Channel&&) noexcept = default;
    Channel& operator=(Channel&&) noexcept = default;

    // False if the other end is closed, or does not accept all bytes before the deadline.
    [[nodiscard]] bool Send(std::string_view bytes, Deadline until = kNever);

    enum class Received { Bytes, Nothing, End };
    // Appends what has arrived; waits for some until the deadline. `Nothing` also when a signal
    // interrupted the wait. `End`: the other end is closed.
    Received Receive(std::string& bytes, Deadline until = kNever);

    // Waits until one of the channels has something to receive. False when none has by the
    // deadline, or when a signal interrupted the wait.
    static bool WaitForAny(const std::vector<const Channel*>& channels, Deadline until = kNever);

    void Close() { m_end.reset(); }

private:
    std::shared_ptr<End> m_end; // of this channel alone; null: closed
};

#ifdef _WIN32
// Ends a wait for a channel of this program early, as a signal does elsewhere. From any thread.
void InterruptWait();
#endif

// How a process ended.
struct Ending {
    int status = 0;        // its exit status
    int signal = 0;        // the signal that ended it; 0: it exited, as all do on Windows
    bool isKilled = false; // it was still running and was killed

    // Exited with a status, or crashed: with the system's name for the crash.
    [[nodiscard]] files::Problem AsProblem() const;
};

class ChildProcess {
public:
    // Throws files::ProblemError if the program cannot be started.
    ChildProcess(const std::filesystem::path& program, const std::vector<std::string>& arguments);
    // Kills the process if it is still running, with everything that it started in its group.
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    [[nodiscard]] Channel& Connection() { return m_channel; }
    [[nodiscard]] const Channel& Connection() const { return m_channel; }

    // Waits for its end; kills it when it still runs at the deadline.
    Ending End(Deadline until);

private:
    struct Process; // the system's

    Channel m_channel;
    std::unique_ptr<Process> m_process; // null: it has ended
    Ending m_ending;
};

} // namespace qx::process
