#include "cli/Terminal.h"

#include <cstdlib>
#include <string_view>

#ifdef _WIN32
#include <windows.h>
#else
#include <sys/ioctl.h>
#include <unistd.h>
#endif

namespace qx::cli {

namespace {

constexpr int kUsualColumns = 80; // where the terminal does not tell

std::string_view Variable(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? "" : value;
}

} // namespace

#ifdef _WIN32

int TerminalColumns() {
    const HANDLE error = GetStdHandle(STD_ERROR_HANDLE);
    DWORD mode = 0;
    if (GetConsoleMode(error, &mode) == 0)
        return 0;
    CONSOLE_SCREEN_BUFFER_INFO info{};
    return GetConsoleScreenBufferInfo(error, &info) != 0
               ? info.srWindow.Right - info.srWindow.Left + 1
               : kUsualColumns;
}

#else

int TerminalColumns() {
    if (isatty(STDERR_FILENO) == 0)
        return 0;
    winsize size{};
    return ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col
                                                                           : kUsualColumns;
}

#endif

bool TerminalHasColor() {
    return Variable("NO_COLOR").empty() && Variable("TERM") != "dumb";
}

} // namespace qx::cli
