#include "cli/InterruptWatch.h"

#include "process/ChildProcess.h"

#include <atomic>
#include <csignal>

#include <windows.h>

namespace qx::cli {

namespace {

constexpr ULONGLONG kPatience = 2000; // ms

std::atomic<int> watches = 0; // number of watches
std::atomic<int> firstSignal = 0;
std::atomic<ULONGLONG> firstTime = 0;

void ShowNotice() {
    constexpr wchar_t kText[] = L"\r\nqxconf: finishing the current operation; repeat after two "
                                L"seconds to end at once\r\n";
    DWORD written = 0;
    WriteConsoleW(GetStdHandle(STD_ERROR_HANDLE), kText, std::size(kText) - 1, &written, nullptr);
}

// The system calls this on a separate thread; if it returns false, the next handler ends the
// program.
BOOL WINAPI OnConsoleEvent(DWORD event) {
    if (watches == 0)
        return FALSE;
    const bool isKey = event == CTRL_C_EVENT || event == CTRL_BREAK_EVENT;
    if (firstSignal == 0) {
        firstTime = GetTickCount64();
        firstSignal = event == CTRL_C_EVENT ? SIGINT : isKey ? SIGBREAK : SIGTERM;
        process::InterruptWait();
        if (isKey)
            ShowNotice();
    } else if (isKey && GetTickCount64() - firstTime >= kPatience) {
        return FALSE;
    }
    if (!isKey)
        Sleep(INFINITE); // the program ends as soon as this returns
    return TRUE;
}

} // namespace

struct InterruptWatch::Kept {};

// The handler is never removed: removing it would wait for it while it delays the program's end.
InterruptWatch::InterruptWatch() {
    static const BOOL isWatching = SetConsoleCtrlHandler(OnConsoleEvent, TRUE);
    static_cast<void>(isWatching);
    if (watches++ == 0)
        firstSignal = 0;
}

InterruptWatch::~InterruptWatch() {
    --watches;
}

int InterruptWatch::Signal() {
    return firstSignal;
}

std::string InterruptWatch::NameOf(int signal) {
    return signal == SIGINT     ? "Ctrl+C"
           : signal == SIGBREAK ? "Ctrl+Break"
                                : "the end of the console or of the session";
}

} // namespace qx::cli
