// Console events end qxconf.exe's work in order, even with a driver's helper process.
#include "files/Files.h"
#include "files/SystemTexts.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <tuple>

#include <windows.h>

namespace qx::test {

namespace {

constexpr DWORD kPatience = 60'000; // ms

// qxconf.exe without a console. Events arrive as from the system: on a new thread, in the system's
// own function.
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
        EXPECT_TRUE(CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr,
                                   nullptr, &start, &m_process));
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
        const auto routine = reinterpret_cast<LPTHREAD_START_ROUTINE>(reinterpret_cast<void (*)()>(
            GetProcAddress(GetModuleHandleW(L"kernelbase.dll"), "CtrlRoutine")));
        ASSERT_NE(routine, nullptr);
        const HANDLE thread = CreateRemoteThread(
            m_process.hProcess, nullptr, 0, routine,
            reinterpret_cast<void*>(static_cast<std::uintptr_t>(event)), 0, nullptr);
        ASSERT_NE(thread, nullptr);
        CloseHandle(thread);
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

// Ctrl+Break, or the end of the console or of the session, when only a few seconds are left.
TEST(ConsoleEvents, PositionModeIsTakenBack) {
    for (const auto& [event, status, words] :
         {std::tuple(CTRL_BREAK_EVENT, 128U + 21U, "ended by Ctrl+Break"),
          {CTRL_CLOSE_EVENT, 128U + 15U, "ended by the end of the console or of the session"}}) {
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
        program.Send(event);
        EXPECT_EQ(program.Status(), status);
        EXPECT_TRUE(has(errors, words)) << files::ReadFile(errors);
        EXPECT_TRUE(has(file + ".log", "QXCFG_DisablePositionMode"));
    }
}

} // namespace qx::test
