#include "process/ChildProcess.h"

#include "files/SystemTexts.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <stdexcept>
#include <system_error>
#include <utility>

#include <windows.h>

namespace qx::process {

namespace {

using namespace std::chrono_literals;

constexpr auto kGrace = 2s;              // in which a killed process is expected to be gone
constexpr DWORD kPipeBuffer = 1U << 16U; // bytes that wait in a channel
constexpr std::string_view kChannelOption = "--channel="; // a child's last argument: its handle

[[noreturn]] void Fail(const std::filesystem::path& program, DWORD reason) {
    throw files::ProblemError(
        {.deed = files::Deed::Start,
         .subject = files::TextOf(program),
         .system = files::ReasonOf({static_cast<int>(reason), std::system_category()})});
}

// Closed with this object.
class Handle {
public:
    explicit Handle(HANDLE handle = nullptr)
        : m_handle(handle == INVALID_HANDLE_VALUE ? nullptr : handle) {}
    Handle(Handle&& other) noexcept : m_handle(std::exchange(other.m_handle, nullptr)) {}
    Handle& operator=(Handle&& other) noexcept {
        std::swap(m_handle, other.m_handle);
        return *this;
    }
    ~Handle() {
        if (m_handle != nullptr)
            CloseHandle(m_handle);
    }
    [[nodiscard]] HANDLE Get() const { return m_handle; }
    explicit operator bool() const { return m_handle != nullptr; }

private:
    HANDLE m_handle;
};

// For the system's waits: milliseconds, not less than what is left.
DWORD Left(Deadline until) {
    if (until == kNever)
        return INFINITE;
    const auto left =
        std::chrono::ceil<std::chrono::milliseconds>(until - std::chrono::steady_clock::now());
    return static_cast<DWORD>(std::clamp<std::int64_t>(left.count(), 0, 1'000'000'000));
}

// Set when waits are to end early; the wait that ends for it resets it.
HANDLE Interruption() {
    static const HANDLE interruption = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    return interruption;
}

SECURITY_ATTRIBUTES Inheritable() {
    return {sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
}

// The two ends; the second is the child's.
std::pair<Handle, Handle> NewChannel(const std::filesystem::path& program) {
    static int count = 0;
    for (;;) {
        const std::wstring name = L"\\\\.\\pipe\\qxcontrols-" +
                                  std::to_wstring(GetCurrentProcessId()) + L"-" +
                                  std::to_wstring(++count);
        Handle own(CreateNamedPipeW(
            name.c_str(), PIPE_ACCESS_DUPLEX | FILE_FLAG_OVERLAPPED | FILE_FLAG_FIRST_PIPE_INSTANCE,
            PIPE_TYPE_BYTE | PIPE_READMODE_BYTE | PIPE_WAIT | PIPE_REJECT_REMOTE_CLIENTS, 1,
            kPipeBuffer, kPipeBuffer, 0, nullptr));
        if (!own && GetLastError() == ERROR_ACCESS_DENIED)
            continue; // another program has taken the name
        auto inheritable = Inheritable();
        Handle ofChild;
        if (own)
            ofChild =
                Handle(CreateFileW(name.c_str(), GENERIC_READ | GENERIC_WRITE, 0, &inheritable,
                                   OPEN_EXISTING, FILE_FLAG_OVERLAPPED, nullptr));
        if (!ofChild)
            Fail(program, GetLastError());
        return {std::move(own), std::move(ofChild)};
    }
}

// The argument as a program reads it: in quotation marks, which are escaped within, as are the
// backslashes before them.
std::wstring Quoted(const std::wstring& argument) {
    std::wstring quoted = L"\"";
    std::size_t backslashes = 0;
    for (const wchar_t c : argument) {
        if (c == L'"')
            quoted.append(backslashes + 1, L'\\');
        backslashes = c == L'\\' ? backslashes + 1 : 0;
        quoted += c;
    }
    quoted.append(backslashes, L'\\');
    return quoted + L"\"";
}

// The handles that a child inherits, and no others.
class Inheritance {
public:
    explicit Inheritance(std::vector<HANDLE> handles) : m_handles(std::move(handles)) {
        SIZE_T size = 0;
        InitializeProcThreadAttributeList(nullptr, 1, 0, &size);
        m_memory.resize(size);
        if (!InitializeProcThreadAttributeList(List(), 1, 0, &size))
            Fail({}, GetLastError());
        if (!UpdateProcThreadAttribute(List(), 0, PROC_THREAD_ATTRIBUTE_HANDLE_LIST,
                                       m_handles.data(), m_handles.size() * sizeof(HANDLE), nullptr,
                                       nullptr))
            Fail({}, GetLastError());
    }
    ~Inheritance() { DeleteProcThreadAttributeList(List()); }
    Inheritance(const Inheritance&) = delete;
    Inheritance& operator=(const Inheritance&) = delete;

    [[nodiscard]] LPPROC_THREAD_ATTRIBUTE_LIST List() {
        return reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(m_memory.data());
    }

private:
    std::vector<HANDLE> m_handles;
    std::vector<char> m_memory;
};

// The processes in it end when the last handle to it is closed: with this program at the latest.
Handle NewJob() {
    Handle job(CreateJobObjectW(nullptr, nullptr));
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
    if (!job || !SetInformationJobObject(job.Get(), JobObjectExtendedLimitInformation, &limits,
                                         sizeof limits))
        Fail({}, GetLastError());
    return job;
}

// A handle to standard error, or to nothing, that a child can inherit.
Handle ErrorForChild() {
    HANDLE copy = nullptr;
    const HANDLE self = GetCurrentProcess();
    const HANDLE error = GetStdHandle(STD_ERROR_HANDLE);
    // INVALID_HANDLE_VALUE equals the pseudo-handle of this process.
    if (error != nullptr && error != INVALID_HANDLE_VALUE &&
        DuplicateHandle(self, error, self, &copy, 0, TRUE, DUPLICATE_SAME_ACCESS))
        return Handle(copy);
    auto inheritable = Inheritable();
    return Handle(CreateFileW(L"NUL", GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                              &inheritable, OPEN_EXISTING, 0, nullptr));
}

// The program that started this one ends its work in order, and this one with it.
BOOL WINAPI OnConsoleEvent(DWORD event) {
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT)
        Sleep(INFINITE); // returning would end this process
    return TRUE;
}

} // namespace

// One end of a pipe, which is being read at all times.
class Channel::End {
public:
    explicit End(Handle pipe)
        : m_pipe(std::move(pipe)), m_received(CreateEventW(nullptr, TRUE, FALSE, nullptr)),
          m_sent(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {
        if (!m_received || !m_sent)
            Fail({}, GetLastError());
        Read();
    }
    ~End() {
        DWORD ignored = 0;
        if (!m_isOver && CancelIoEx(m_pipe.Get(), &m_reading))
            GetOverlappedResult(m_pipe.Get(), &m_reading, &ignored, TRUE);
    }
    End(const End&) = delete;
    End& operator=(const End&) = delete;

    [[nodiscard]] HANDLE Event() const { return m_received.Get(); }

    // Once the event is set.
    Received Take(std::string& bytes) {
        DWORD count = 0;
        if (m_isOver || !GetOverlappedResult(m_pipe.Get(), &m_reading, &count, FALSE)) {
            m_isOver = true;
            return Received::End;
        }
        bytes.append(m_buffer.data(), count);
        Read();
        return Received::Bytes;
    }

    // How many of the bytes were sent; 0 when none could be until the deadline.
    std::size_t Send(std::string_view bytes, Deadline until) {
        OVERLAPPED sending{};
        sending.hEvent = m_sent.Get();
        DWORD count = static_cast<DWORD>(std::min<std::size_t>(bytes.size(), kPipeBuffer));
        if (!WriteFile(m_pipe.Get(), bytes.data(), count, nullptr, &sending) &&
            GetLastError() != ERROR_IO_PENDING)
            return 0;
        if (WaitForSingleObject(sending.hEvent, Left(until)) != WAIT_OBJECT_0)
            CancelIoEx(m_pipe.Get(), &sending);
        return GetOverlappedResult(m_pipe.Get(), &sending, &count, TRUE) ? count : 0;
    }

private:
    void Read() {
        m_reading = {};
        m_reading.hEvent = m_received.Get();
        if (!ReadFile(m_pipe.Get(), m_buffer.data(), static_cast<DWORD>(m_buffer.size()), nullptr,
                      &m_reading) &&
            GetLastError() != ERROR_IO_PENDING) {
            m_isOver = true;
            SetEvent(m_received.Get());
        }
    }

    Handle m_pipe;
    Handle m_received;
    Handle m_sent;
    OVERLAPPED m_reading{};
    std::array<char, kPipeBuffer> m_buffer{};
    bool m_isOver = false;
};

struct ChildProcess::Process {
    Handle job;
    Handle process;
};

void InterruptWait() {
    SetEvent(Interruption());
}

Channel Channel::ToParent() {
    const std::vector<std::string> arguments = files::Arguments(__argc, __argv);
    HANDLE handle = nullptr;
    if (!arguments.empty() && arguments.back().starts_with(kChannelOption))
        handle = reinterpret_cast<HANDLE>(static_cast<std::uintptr_t>(
            std::strtoull(arguments.back().c_str() + kChannelOption.size(), nullptr, 10)));
    if (handle == nullptr || GetFileType(handle) != FILE_TYPE_PIPE)
        throw std::runtime_error("this program is started by other programs, not by people");
    SetHandleInformation(handle, HANDLE_FLAG_INHERIT, 0);
    SetConsoleCtrlHandler(OnConsoleEvent, TRUE);
    // A crash ends the process, without a window that asks somebody about it.
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
    return Channel(std::make_shared<End>(Handle(handle)));
}

bool Channel::Send(std::string_view bytes, Deadline until) {
    while (!bytes.empty()) {
        const std::size_t sent = m_end->Send(bytes, until);
        if (sent == 0)
            return false;
        bytes.remove_prefix(sent);
    }
    return true;
}

Channel::Received Channel::Receive(std::string& bytes, Deadline until) {
    return WaitForAny({this}, until) ? m_end->Take(bytes) : Received::Nothing;
}

bool Channel::WaitForAny(const std::vector<const Channel*>& channels, Deadline until) {
    constexpr std::size_t kMost = MAXIMUM_WAIT_OBJECTS - 1; // that can be waited for at once
    constexpr DWORD kTurn = 20;                             // ms for each group of more of them
    for (std::size_t first = 0;; first = first + kMost < channels.size() ? first + kMost : 0) {
        std::vector<HANDLE> events = {Interruption()};
        for (std::size_t i = first; i < std::min(first + kMost, channels.size()); ++i)
            events.push_back(channels[i]->m_end->Event());
        const DWORD left = Left(until);
        const bool isAll = channels.size() <= kMost;
        const DWORD ended = WaitForMultipleObjects(static_cast<DWORD>(events.size()), events.data(),
                                                   FALSE, isAll ? left : std::min(left, kTurn));
        if (ended != WAIT_TIMEOUT)
            return ended > WAIT_OBJECT_0 && ended < WAIT_OBJECT_0 + events.size();
        if (isAll || left == 0)
            return false;
    }
}

files::Problem Ending::AsProblem() const {
    // https://learn.microsoft.com/openspecs/windows_protocols/ms-erref
    constexpr std::pair<DWORD, const char*> kCrashes[] = {
        {0x80000003, "breakpoint"},
        {0xC0000005, "access violation"},
        {0xC000001D, "illegal instruction"},
        {0xC0000094, "division of an integer by zero"},
        {0xC0000096, "privileged instruction"},
        {0xC00000FD, "stack overflow"},
        {0xC0000135, "a library that it needs is missing"},
        {0xC0000139, "a function that it needs is missing"},
        {0xC0000142, "a library that it needs could not be started"},
        {0xC0000374, "damaged heap"},
        {0xC0000409, "damaged stack"},
        {0xE06D7363, "C++ exception"},
    };
    const auto code = static_cast<DWORD>(status);
    for (const auto& [crash, name] : kCrashes)
        if (code == crash)
            return {.obstacle = files::Obstacle::Crashed, .system = name};
    constexpr DWORD kError = 0xC0000000; // the severity of a status of the system
    if ((code & kError) != kError)
        return {.obstacle = files::Obstacle::Exited, .number = code};
    char digits[sizeof "0xC0000000"];
    std::snprintf(digits, sizeof digits, "0x%08lX", code);
    return {.obstacle = files::Obstacle::Crashed, .system = digits};
}

ChildProcess::ChildProcess(const std::filesystem::path& program,
                           const std::vector<std::string>& arguments)
    : m_channel(nullptr) {
    auto [own, ofChild] = NewChannel(program);
    m_channel = Channel(std::make_shared<Channel::End>(std::move(own)));
    auto inheritable = Inheritable();
    const Handle nothing(CreateFileW(L"NUL", GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                     &inheritable, OPEN_EXISTING, 0, nullptr));
    const Handle error = ErrorForChild();
    Inheritance inheritance({ofChild.Get(), nothing.Get(), error.Get()});
    STARTUPINFOEXW start{};
    start.StartupInfo.cb = sizeof start;
    start.StartupInfo.dwFlags = STARTF_USESTDHANDLES;
    start.StartupInfo.hStdInput = nothing.Get();
    start.StartupInfo.hStdOutput = error.Get();
    start.StartupInfo.hStdError = error.Get();
    start.lpAttributeList = inheritance.List();
    std::wstring line = Quoted(program.native());
    for (const std::string& argument : arguments)
        line += L" " + Quoted(files::PathOf(argument).native());
    const auto number = reinterpret_cast<std::uintptr_t>(ofChild.Get());
    line += L" " + files::PathOf(kChannelOption).native() + std::to_wstring(number);
    DWORD flags = EXTENDED_STARTUPINFO_PRESENT | CREATE_NEW_PROCESS_GROUP | CREATE_SUSPENDED;
    if (GetConsoleCP() == 0)
        flags |= CREATE_NO_WINDOW;
    Handle job = NewJob();
    PROCESS_INFORMATION made{};
    if (!CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, TRUE, flags, nullptr,
                        nullptr, &start.StartupInfo, &made))
        Fail(program, GetLastError());
    const Handle thread(made.hThread);
    m_process = std::make_unique<Process>(Process{std::move(job), Handle(made.hProcess)});
    if (!AssignProcessToJobObject(m_process->job.Get(), made.hProcess)) {
        const DWORD reason = GetLastError();
        TerminateProcess(made.hProcess, 1);
        Fail(program, reason);
    }
    ResumeThread(thread.Get());
}

ChildProcess::~ChildProcess() {
    (void)End(std::chrono::steady_clock::now());
}

Ending ChildProcess::End(Deadline until) {
    if (!m_process)
        return m_ending;
    const HANDLE process = m_process->process.Get();
    if (WaitForSingleObject(process, Left(until)) != WAIT_OBJECT_0) {
        m_ending.isKilled = true;
        TerminateJobObject(m_process->job.Get(), 1);
        WaitForSingleObject(process, Left(std::chrono::steady_clock::now() + kGrace));
    }
    DWORD status = 0;
    if (GetExitCodeProcess(process, &status))
        m_ending.status = static_cast<int>(status);
    m_process.reset(); // ends what it has started too
    return m_ending;
}

} // namespace qx::process
