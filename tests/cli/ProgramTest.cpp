// The real program, run from a shell.
#include "CommandLine.h"

#include <array>
#include <cstdio>

#include <sys/wait.h>

namespace qx::test {

namespace {

// Runs the script in bash, in a separate folder, with an environment that only contains the
// program's path and a folder for records.
class Shell {
public:
    struct Answer {
        int status;
        std::string out; // includes standard error if the script redirects it
    };
    Answer Run(const std::string& script) const {
        const std::string file = (folder / "script").string();
        files::WriteFileAtomically(file, script);
        const std::string command =
            "cd " + (folder / ".").string() +
            " && exec env -i PATH=/usr/bin:/bin XDG_DATA_HOME=" + (folder / "data").string() +
            " "
            "qxconf=" QX_QXCONF " layouts=" QX_LAYOUTS " bash script";
        FILE* const bash = popen(command.c_str(), "r");
        std::string out;
        std::array<char, 1000> part{};
        while (const std::size_t size = fread(part.data(), 1, part.size(), bash))
            out.append(part.data(), size);
        const int status = pclose(bash);
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, out};
    }

    TempFolder folder{TempFolder::InMemory()};
};

constexpr const char* kQxconf =
    "q() { $qxconf --layouts $layouts --settings p.ini --keyboard k.qxk --model full \"$@\"; }\n";

} // namespace

TEST(Program, CompletesWordsInBash) {
    const auto answer = Shell().Run(". <($qxconf completion bash)\n"
                                    "COMP_WORDS=($qxconf backup re) COMP_CWORD=2\n"
                                    "_qxconf; echo ${COMPREPLY[@]}\n"
                                    "COMP_WORDS=($qxconf upload -o /etc/passw) COMP_CWORD=3\n"
                                    "_qxconf; echo ${COMPREPLY[@]}\n");
    EXPECT_EQ(answer.out.substr(0, 8), "restore\n");
    EXPECT_NE(answer.out.find("/etc/passwd"), std::string::npos) << answer.out;
}

TEST(Program, OnlyItsOwnMessagesReachStandardError) {
    const auto sheet = Shell().Run(std::string(kQxconf) + "q sheet -o k.svg 2>&1");
    EXPECT_EQ(sheet.status, 0);
    EXPECT_EQ(sheet.out, "keyboard to key sheet: wrote k.svg\n");
    // A locale without these letters, and no folder for the user's data.
    const auto named =
        Shell().Run("LC_ALL=C $qxconf --settings 'Größe.ini' prefs set AutoSave False 2>&1 && "
                    "grep -c AutoSave Größe.ini");
    EXPECT_EQ(named.out, "AutoSave = False\n1\n");
    const auto homeless = Shell().Run("$qxconf prefs set AutoSave False 2>&1");
    EXPECT_EQ(homeless.status, 4);
    EXPECT_NE(homeless.out.find("neither HOME nor XDG_CONFIG_HOME is set"), std::string::npos);
}

TEST(Program, AClosedOutputIsAFailureAndNoFileReplacesIt) {
    const Shell shell;
    const auto closed = shell.Run(std::string(kQxconf) + "q upload >&- 2>err; echo $?; cat err");
    EXPECT_EQ(closed.out, "4\nqxconf: standard output could not be written\n");
    const auto kept = shell.Run(std::string(kQxconf) + "head -c 6 k.qxk; q identify >/dev/null");
    EXPECT_EQ(kept.out, "QXKEYB");
    EXPECT_EQ(kept.status, 0);
    // The variable names the driver for commands without an option for it.
    const auto driver = shell.Run("QXCONF_DRIVER=./none.so $qxconf --layouts $layouts --settings p "
                                  "identify 2>&1");
    EXPECT_EQ(driver.status, 3);
    EXPECT_NE(driver.out.find("using the driver ./none.so\n"), std::string::npos) << driver.out;
}

} // namespace qx::test
