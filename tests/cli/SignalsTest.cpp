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
    EXPECT_NE(written.out.find("read back and verified"), std::string::npos);
    keyboard.beforeWrite = {};
    EXPECT_EQ(keyboard.Done({"recover"}), "no write to this keyboard was interrupted\n");
    EXPECT_EQ(keyboard.Done({"diff", file}), "");
}

// The real program with real signals.
class RunningProgram {
public:
    RunningProgram(const TempFolder& folder, const std::string& behaviour,
                   const std::vector<std::string>& command)
        : m_file((folder / "till.qxk").string()) {
        files::WriteFileAtomically(m_file + ".wild", behaviour);
        std::vector<std::string> words = {QX_QXCONF,
                                          "--driver",
                                          QX_WILD_DRIVER,
                                          "--keyboard",
                                          m_file,
                                          "--model",
                                          "full",
                                          "--layouts",
                                          QX_LAYOUTS,
                                          "--settings",
                                          (folder / "settings.ini").string()};
        words.insert(words.end(), command.begin(), command.end());
        std::vector<char*> arguments;
        for (std::string& word : words)
            arguments.push_back(word.data());
        arguments.push_back(nullptr);
        std::string data = "XDG_DATA_HOME=" + (folder / "data").string();
        char* const environment[] = {data.data(), nullptr};
        int error[2];
        EXPECT_EQ(pipe2(error, O_CLOEXEC), 0);
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, error[1], STDERR_FILENO);
        EXPECT_EQ(
            posix_spawn(&m_program, QX_QXCONF, &actions, nullptr, arguments.data(), environment),
            0);
        posix_spawn_file_actions_destroy(&actions);
        close(error[1]);
        m_error = error[0];
    }
    ~RunningProgram() { close(m_error); }
    RunningProgram(const RunningProgram&) = delete;
    RunningProgram& operator=(const RunningProgram&) = delete;

    // Standard error up to this text, or all of it.
    std::string ReadUntil(const std::string& text) const {
        std::string said;
        for (char letter = 0; !said.ends_with(text) && read(m_error, &letter, 1) == 1;)
            said += letter;
        return said;
    }
    // Its exit status and the rest of standard error.
    Outcome EndBy(int signal) const {
        Outcome outcome;
        kill(m_program, signal);
        outcome.err = ReadUntil("\n\n\n");
        int status = 0;
        waitpid(m_program, &status, 0);
        EXPECT_TRUE(WIFEXITED(status));
        outcome.status = WEXITSTATUS(status);
        return outcome;
    }
    [[nodiscard]] std::string Log() const { return files::ReadFile(m_file + ".log"); }

private:
    std::string m_file;
    pid_t m_program = 0;
    int m_error = -1;
};

TEST(Signals, PositionModeIsTakenBack) {
    const TempFolder folder;
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        const RunningProgram program(folder, "* log", {"position", "watch"});
        const std::string said = program.ReadUntil("Ctrl+C ends");
        EXPECT_NE(said.find("press keys"), std::string::npos) << said;
        const Outcome outcome = program.EndBy(signal);
        // Ctrl+C is the usual way to end the watch.
        EXPECT_EQ(outcome.status, signal == SIGINT ? 0 : 128 + signal);
        EXPECT_EQ(outcome.err.find("ended by signal") == std::string::npos, signal == SIGINT)
            << outcome.err;
        const std::string log = program.Log();
        const std::size_t on = log.rfind("QXCFG_EnablePositionMode");
        ASSERT_NE(on, std::string::npos);
        EXPECT_NE(log.find("QXCFG_DisablePositionMode", on), std::string::npos);
    }
}

// It is not waited for until the driver's own time is up, which is ten minutes.
TEST(Signals, ADriverThatHangsIsGivenUpBeforeAnythingIsWritten) {
    const TempFolder folder;
    for (const char* const command : {"upload", "identify"}) {
        const bool isUpload = std::string_view(command) == "upload";
        const RunningProgram program(folder, isUpload ? "QXCFG_ImageLoad hang" : "QXCFG_Init hang",
                                     {"--trace", command});
        (void)program.ReadUntil(isUpload ? "QXKeyboardAccess.Upload\n" : "QXKeyboardAccess.Init\n");
        const Outcome outcome = program.EndBy(SIGTERM);
        EXPECT_EQ(outcome.status, 128 + SIGTERM) << outcome.err;
        EXPECT_NE(outcome.err.find("qxconf: ended by signal 15; nothing was written"),
                  std::string::npos)
            << outcome.err;
    }
}

} // namespace qx::test
