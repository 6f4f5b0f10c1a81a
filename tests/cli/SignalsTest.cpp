// Signals that end the program: transfers end in order, and position mode is switched off.
#include "CommandLine.h"

#include <csignal>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace qx::test {

TEST(Signals, ATransferIsEndedInOrder) {
    CommandLine keyboard;
    const std::string file = keyboard.Write(
        "delay.json",
        R"({"format": "qx-configuration", "version": 1, "commonKeyboard": {"outputDelay": 77}})");
    keyboard.Done({"identify"});
    const std::string before = keyboard.Memory();

    // A signal during a read cancels the command, both in the first read and in the last one before
    // writing, when backup and journal already exist.
    int readings = 0;
    int last = 1;
    keyboard.beforeRead = [&] {
        if (++readings == last)
            std::raise(SIGTERM);
    };
    const auto expectEnded = [&](const Outcome& outcome) {
        EXPECT_EQ(outcome.status, 128 + SIGTERM);
        EXPECT_EQ(outcome.out, "");
        EXPECT_EQ(outcome.err, "qxconf: ended by signal 15; nothing was written to the keyboard\n");
        EXPECT_TRUE(keyboard.Memory() == before);
    };
    expectEnded(keyboard.Run({"upload", "-o", keyboard.File("x.json")}));
    EXPECT_FALSE(std::filesystem::exists(keyboard.File("x.json")));
    for (last = 1; last <= 2; ++last) {
        readings = 0;
        expectEnded(keyboard.Run({"download", file}));
        EXPECT_EQ(readings, last);
    }
    EXPECT_EQ(keyboard.Done({"recover", "--list"}), "no interrupted writes are on record\n");
    // A signal during a write: the write is completed and verified.
    keyboard.beforeRead = {};
    keyboard.beforeWrite = [] {
        std::raise(SIGINT);
        EXPECT_EQ(alarm(0), 0U) << "seconds until the program would be killed";
    };
    const Outcome written = keyboard.Run({"download", file});
    EXPECT_EQ(written.status, 0) << written.err;
    EXPECT_NE(written.out.find("read back and found equal"), std::string::npos);
    keyboard.beforeWrite = {};
    EXPECT_EQ(keyboard.Done({"recover"}), "no write to this keyboard was interrupted\n");
    EXPECT_EQ(keyboard.Done({"diff", file}), "");
}

// The real program with real signals.
TEST(Signals, PositionModeIsTakenBack) {
    const TempFolder folder;
    const std::string file = (folder / "till.qxk").string();
    const std::string settings = (folder / "settings.ini").string();
    const std::string data = "XDG_DATA_HOME=" + (folder / "data").string();
    files::WriteFileAtomically(file + ".wild", "* log");
    const char* const arguments[] = {QX_QXCONF,    "--driver",   QX_WILD_DRIVER,   "--keyboard",
                                     file.c_str(), "--model",    "full",           "--layouts",
                                     QX_LAYOUTS,   "--settings", settings.c_str(), "position",
                                     "watch",      nullptr};
    const char* const environment[] = {data.c_str(), nullptr};
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        int error[2];
        ASSERT_EQ(pipe2(error, O_CLOEXEC), 0);
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, error[1], STDERR_FILENO);
        pid_t program = 0;
        ASSERT_EQ(posix_spawn(&program, QX_QXCONF, &actions, nullptr, const_cast<char**>(arguments),
                              const_cast<char**>(environment)),
                  0);
        posix_spawn_file_actions_destroy(&actions);
        close(error[1]);
        std::string said;
        char letter = 0;
        while (said.find("Ctrl+C ends") == std::string::npos && read(error[0], &letter, 1) == 1)
            said += letter;
        EXPECT_NE(said.find("press keys"), std::string::npos) << said;
        kill(program, signal);
        for (said.clear(); read(error[0], &letter, 1) == 1;)
            said += letter;
        int status = 0;
        waitpid(program, &status, 0);
        close(error[0]);
        EXPECT_TRUE(WIFEXITED(status));
        // Ctrl+C is the usual way to end the watch.
        EXPECT_EQ(WEXITSTATUS(status), signal == SIGINT ? 0 : 128 + signal);
        EXPECT_EQ(said.find("ended by signal") == std::string::npos, signal == SIGINT) << said;
        const std::string log = files::ReadFile(file + ".log");
        const std::size_t on = log.rfind("QXCFG_EnablePositionMode");
        ASSERT_NE(on, std::string::npos);
        EXPECT_NE(log.find("QXCFG_DisablePositionMode", on), std::string::npos);
    }
}

} // namespace qx::test
