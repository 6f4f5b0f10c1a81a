// What the host layer promises when the driver fails: no failure is called success, an upload
// changes nothing, and a download that fails before its transfer has written nothing.

#include "CommandLine.h"

namespace qx::test {

namespace {

class FaultSweep : public testing::TestWithParam<Driver> {
protected:
    // Brings the keyboard to a known state, and makes a document that changes it.
    void SetUp() override {
        const std::string document = keyboard.Done({"upload"});
        const std::string changed = std::string(document).replace(
            document.find("\"outputDelay\": 6"), 16, "\"outputDelay\": 9");
        changedFile = keyboard.Write("changed.json", changed);
        keyboardFile = files::ReadFile(keyboard.folder / "keyboard.qxk");
        before = keyboard.Memory();
    }

    // The keyboard as it was, and no record of a write.
    void Restore() {
        keyboard.Write("keyboard.qxk", keyboardFile);
        std::filesystem::remove_all(keyboard.folder / "data");
    }

    // The keyboard's memory after a run; most runs leave it as it was, which its file tells.
    std::string MemoryAfterRun() {
        std::filesystem::remove_all(keyboard.folder / "data");
        if (files::ReadFile(keyboard.folder / "keyboard.qxk") == keyboardFile)
            return before;
        const std::string memory = keyboard.Memory();
        Restore();
        return memory;
    }

    // Runs the command with each of its driver calls failing in turn, and hands each outcome and
    // the memory after it to `check`; returns how many of these runs reported success. In process
    // that is every call, once. Through the library, and for faults that stay, it is a sample: the
    // first and the last 300 calls, and every 97th of the thousands between them, nearly all of
    // which read or write one number of a key description.
    int Sweep(const std::vector<std::string>& arguments, bool forEver,
              const std::function<void(const Outcome&, const std::string& memory)>& check) {
        CommandLine counter(Driver::InProcess);
        counter.Write("keyboard.qxk", keyboardFile);
        EXPECT_EQ(counter.Run(arguments).status, 0);
        EXPECT_GT(counter.calls, 10);
        constexpr int kCallsAtTheEnds = 300;
        const bool isWhole = GetParam() == Driver::InProcess && !forEver;
        int successes = 0;
        int call = 1;
        while (call <= counter.calls && !testing::Test::HasFailure()) {
            SCOPED_TRACE("driver call " + std::to_string(call));
            const Outcome outcome = keyboard.Run(arguments, {call, 77, forEver});
            successes += outcome.status == 0 ? 1 : 0;
            if (outcome.status != 0) {
                EXPECT_NE(outcome.err.find(" gave status "), std::string::npos) << outcome.err;
            }
            check(outcome, MemoryAfterRun());
            const bool isAtAnEnd = call < kCallsAtTheEnds || call + kCallsAtTheEnds > counter.calls;
            call += isWhole || isAtAnEnd ? 1 : 97;
        }
        return successes;
    }

    CommandLine keyboard{GetParam()};
    std::string changedFile;
    std::string keyboardFile;
    std::string before;
};

// Only the command delta and the request for progress messages may fail unnoticed.
constexpr int kHarmlessCalls = 2;

} // namespace

TEST_P(FaultSweep, ReadingNeverLiesAndNeverWrites) {
    for (const char* command : {"identify", "upload"})
        for (const bool forEver : {false, true}) {
            SCOPED_TRACE(command);
            Restore();
            const std::string expected = keyboard.Done({command});
            const int successes =
                Sweep({command}, forEver, [&](const Outcome& outcome, const std::string& memory) {
                    EXPECT_EQ(memory, before);
                    if (outcome.status == 0) {
                        EXPECT_EQ(outcome.out, expected);
                    }
                });
            EXPECT_LE(successes, kHarmlessCalls);
        }
}

TEST_P(FaultSweep, WritingNeverLies) {
    Restore();
    keyboard.Done({"download", changedFile});
    const std::string after = keyboard.Memory();
    ASSERT_NE(after, before);
    const int successes = Sweep(
        {"download", changedFile}, false, [&](const Outcome& outcome, const std::string& memory) {
            EXPECT_TRUE(memory == before || memory == after);
            if (outcome.status == 0) {
                EXPECT_EQ(memory, after);
            }
            if (outcome.err.find("nothing was written") != std::string::npos) {
                EXPECT_EQ(memory, before);
            }
        });
    // It looks at the keyboard again before it sends, and then asks anew for progress messages.
    EXPECT_LE(successes, kHarmlessCalls + 1);
}

TEST_P(FaultSweep, ATransferThatBreaksOffIsReported) {
    for (const std::int32_t bytes : {0, 1, 100, 3000}) {
        Restore();
        const Outcome upload = keyboard.Run({"upload"}, {0, 0, false, bytes});
        EXPECT_EQ(upload.status, 4);
        EXPECT_TRUE(upload.out.empty());
        EXPECT_EQ(keyboard.Memory(), before);
        const Outcome download =
            keyboard.Run({"download", "--full", changedFile}, {0, 0, false, -1, bytes});
        EXPECT_EQ(download.status, 4);
        const bool isChanged = keyboard.Memory() != before;
        EXPECT_NE(download.err.find(isChanged ? "holds all" : "nothing changed"), std::string::npos)
            << download.err;
    }
}

INSTANTIATE_TEST_SUITE_P(Drivers, FaultSweep, testing::Values(Driver::InProcess, Driver::Library),
                         [](const auto& info) {
                             return info.param == Driver::InProcess ? "InProcess" : "Library";
                         });

} // namespace qx::test
