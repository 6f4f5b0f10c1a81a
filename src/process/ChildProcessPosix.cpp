#include "process/ChildProcess.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <stdexcept>
#include <system_error>
#include <thread>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace qx::process {

namespace {

using namespace std::chrono_literals;

constexpr int kChannelOfChild = 3; // its file number there
constexpr auto kGrace = 2s;        // in which a killed process is expected to be gone

[[noreturn]] void Fail(const std::filesystem::path& program, int reason) {
    throw files::ProblemError({.deed = files::Deed::Start,
                               .subject = program.string(),
                               .system = std::generic_category().message(reason)});
}

// For poll: milliseconds, not less than what is left; -1: without end.
int Left(Deadline until) {
    if (until == kNever)
        return -1;
    const auto left =
        std::chrono::ceil<std::chrono::milliseconds>(until - std::chrono::steady_clock::now());
    return static_cast<int>(std::clamp<std::int64_t>(left.count(), 0, 1'000'000'000));
}

// Waits for one of the events; false by the deadline, or after a signal.
bool WaitFor(std::vector<pollfd>& files, Deadline until) {
    return poll(files.data(), files.size(), Left(until)) > 0;
}

// The resources for starting a child; the destructor frees them.
class Start {
public:
    explicit Start(int channel) {
        posix_spawn_file_actions_init(&m_actions);
        posix_spawn_file_actions_addopen(&m_actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_adddup2(&m_actions, STDERR_FILENO, STDOUT_FILENO);
        posix_spawn_file_actions_adddup2(&m_actions, channel, kChannelOfChild);
        posix_spawnattr_init(&m_attributes);
        sigset_t none;
        sigemptyset(&none);
        posix_spawnattr_setsigmask(&m_attributes, &none);
        sigset_t asUsual;
        sigemptyset(&asUsual);
        for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGPIPE})
            sigaddset(&asUsual, signal);
        posix_spawnattr_setsigdefault(&m_attributes, &asUsual);
        posix_spawnattr_setpgroup(&m_attributes, 0);
        posix_spawnattr_setflags(&m_attributes, POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK |
                                                    POSIX_SPAWN_SETSIGDEF);
    }
    ~Start() {
        posix_spawnattr_destroy(&m_attributes);
        posix_spawn_file_actions_destroy(&m_actions);
    }
    Start(const Start&) = delete;
    Start& operator=(const Start&) = delete;

    // The new process. Throws files::ProblemError.
    [[nodiscard]] pid_t Run(const std::filesystem::path& program,
                            const std::vector<std::string>& arguments) const {
        std::string name = program.string();
        std::vector<std::string> copies = arguments;
        std::vector<char*> words = {name.data()};
        for (std::string& argument : copies)
            words.push_back(argument.data());
        words.push_back(nullptr);
        pid_t process = -1;
        const int reason = posix_spawn(&process, program.c_str(), &m_actions, &m_attributes,
                                       words.data(), environ);
        if (reason != 0)
            Fail(program, reason);
        return process;
    }

private:
    posix_spawn_file_actions_t m_actions{};
    posix_spawnattr_t m_attributes{};
};

// The two ends, closed in programs that are started.
std::pair<int, int> NewChannel(const std::filesystem::path& program) {
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0)
        Fail(program, errno);
    return {ends[0], ends[1]};
}

} // namespace

class Channel::End {
public:
    explicit End(int file) : m_file(file) {}
    ~End() { close(m_file); }
    End(const End&) = delete;
    End& operator=(const End&) = delete;
    [[nodiscard]] int File() const { return m_file; }

private:
    int m_file;
};

struct ChildProcess::Process {
    pid_t number;
};

Channel Channel::ToParent() {
    int type = 0;
    socklen_t size = sizeof type;
    if (getsockopt(kChannelOfChild, SOL_SOCKET, SO_TYPE, &type, &size) != 0)
        throw std::runtime_error("this program is started by other programs, not by people");
    (void)fcntl(kChannelOfChild, F_SETFD, FD_CLOEXEC);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        (void)std::signal(signal, SIG_IGN);
    (void)prctl(PR_SET_PDEATHSIG, SIGKILL);
    pollfd file = {kChannelOfChild, 0, 0};
    if (poll(&file, 1, 0) > 0 && (file.revents & POLLHUP) != 0)
        _exit(1); // it ended before this one asked to end with it
    return Channel(std::make_shared<End>(kChannelOfChild));
}

bool Channel::Send(std::string_view bytes, Deadline until) {
    while (!bytes.empty()) {
        const ssize_t sent =
            send(m_end->File(), bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
        if (sent > 0) {
            bytes.remove_prefix(static_cast<std::size_t>(sent));
            continue;
        }
        if (errno == EINTR)
            continue;
        if (errno != EAGAIN && errno != EWOULDBLOCK)
            return false;
        std::vector<pollfd> file = {{m_end->File(), POLLOUT, 0}};
        if (!WaitFor(file, until) && std::chrono::steady_clock::now() >= until)
            return false;
    }
    return true;
}

Channel::Received Channel::Receive(std::string& bytes, Deadline until) {
    std::vector<pollfd> file = {{m_end->File(), POLLIN, 0}};
    if (!WaitFor(file, until))
        return Received::Nothing;
    char buffer[65536];
    const ssize_t count = recv(m_end->File(), buffer, sizeof buffer, MSG_DONTWAIT);
    if (count > 0) {
        bytes.append(buffer, static_cast<std::size_t>(count));
        return Received::Bytes;
    }
    const bool isOver = count == 0 || (errno != EINTR && errno != EAGAIN && errno != EWOULDBLOCK);
    return isOver ? Received::End : Received::Nothing;
}

bool Channel::WaitForAny(const std::vector<const Channel*>& channels, Deadline until) {
    std::vector<pollfd> files;
    for (const Channel* channel : channels)
        files.push_back({channel->m_end->File(), POLLIN, 0});
    return WaitFor(files, until);
}

files::Problem Ending::AsProblem() const {
    if (signal == 0)
        return {.obstacle = files::Obstacle::Exited, .number = status};
    const char* const name = sigdescr_np(signal);
    return {.obstacle = files::Obstacle::Crashed,
            .number = signal,
            .system = name != nullptr ? name : ""};
}

ChildProcess::ChildProcess(const std::filesystem::path& program,
                           const std::vector<std::string>& arguments)
    : m_channel(nullptr) {
    const auto [own, ofChild] = NewChannel(program);
    m_channel = Channel(std::make_shared<Channel::End>(own));
    const Channel::End closedHere(ofChild);
    m_process = std::make_unique<Process>(Process{Start(ofChild).Run(program, arguments)});
}

ChildProcess::~ChildProcess() {
    (void)End(std::chrono::steady_clock::now());
}

Ending ChildProcess::End(Deadline until) {
    auto pause = 1ms;
    while (m_process) {
        int status = 0;
        const pid_t process = m_process->number;
        const pid_t ended = waitpid(process, &status, WNOHANG);
        const bool isGone = ended == process || (ended < 0 && errno == ECHILD);
        const bool isLate = std::chrono::steady_clock::now() >= until;
        if (isGone && WIFSIGNALED(status))
            m_ending.signal = WTERMSIG(status);
        if (isGone && WIFEXITED(status))
            m_ending.status = WEXITSTATUS(status);
        if (isGone || (isLate && m_ending.isKilled)) { // the system may keep one that it waits for
            m_process.reset();
        } else if (isLate) {
            kill(-process, SIGKILL);
            m_ending.isKilled = true;
            until = std::chrono::steady_clock::now() + kGrace;
        }
        if (m_process) {
            std::this_thread::sleep_for(pause);
            pause = std::min(2 * pause, 20ms);
        }
    }
    return m_ending;
}

} // namespace qx::process
