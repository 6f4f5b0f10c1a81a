// What a console sends qxconf.exe ends its work in order, and the driver's helper with it.
#include "files/Files.h"
#include "files/SystemTexts.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <windows.h>

namespace qx::test {

namespace {

constexpr DWORD kPatience = 60'000; // ms

// qxconf.exe in a group of processes of its own, to which an event can be sent.
class Program {
public:
    Program(const std::string& arguments, const std::filesystem::path& errors) {
        SECURITY_ATTRIBUTES inheritable{sizeof inheritable, nullptr, TRUE};
        HANDLE error = CreateFileW(errors.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inheritable,
                                   CREATE_ALWAYS, 0, nullptr);
        STARTUPINFOW start{};
        start.cb = sizeof start;
        start.dwFlags = STARTF_USESTDHANDLES;
        start.hStdOutput = error;
        start.hStdError = error;
        std::wstring line =
            L"\"" + files::PathOf(QX_QXCONF).native() + L"\" " + files::PathOf(arguments).native();
        EXPECT_TRUE(CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE,
                                   CREATE_NEW_PROCESS_GROUP, nullptr, nullptr, &start, &m_process));
        CloseHandle(error);
    }
    ~Program() {
        TerminateProcess(m_process.hProcess, 99);
        CloseHandle(m_process.hThread);
        CloseHandle(m_process.hProcess);
    }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    void Send(DWORD event) const {
        EXPECT_TRUE(GenerateConsoleCtrlEvent(event, m_process.dwProcessId)) << GetLastError();
    }
    [[nodiscard]] bool IsRunning() const {
        return WaitForSingleObject(m_process.hProcess, 20) == WAIT_TIMEOUT;
    }
    [[nodiscard]] DWORD Status() const {
        DWORD status = 0;
        WaitForSingleObject(m_process.hProcess, kPatience);
        GetExitCodeProcess(m_process.hProcess, &status);
        return status;
    }

private:
    PROCESS_INFORMATION m_process{};
};

} // namespace

TEST(ConsoleEvents, PositionModeIsTakenBackThroughTheHelper) {
    AllocConsole(); // where there is none
    const TempFolder folder;
    const std::string file = (folder / "till.qxk").string();
    const auto errors = folder / "errors";
    files::WriteFileAtomically(file + ".wild", "* log");
    const Program program("--driver \"" QX_WILD_DRIVER "\" --keyboard \"" + file +
                              "\" --model full --layouts \"" QX_LAYOUTS "\" position watch",
                          errors);
    const auto has = [](const std::filesystem::path& log, const char* text) {
        std::error_code ignored;
        return std::filesystem::exists(log, ignored) &&
               files::ReadFile(log).find(text) != std::string::npos;
    };
    while (program.IsRunning() && !has(file + ".log", "QXCFG_GetPositionKey"))
        ;
    ASSERT_TRUE(program.IsRunning()) << files::ReadFile(errors);
    program.Send(CTRL_BREAK_EVENT);
    EXPECT_EQ(program.Status(), 128U + 21U);
    EXPECT_TRUE(has(errors, "ended by Ctrl+Break")) << files::ReadFile(errors);
    EXPECT_TRUE(has(file + ".log", "QXCFG_DisablePositionMode")) << files::ReadFile(file + ".log");
}

} // namespace qx::test
