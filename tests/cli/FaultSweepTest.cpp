// What the host layer promises when the driver fails: no failure is called success, an upload
// changes nothing, and a download that fails before its transfer has written nothing.

#include "CommandLine.h"

#include <cctype>

namespace qx::test {

namespace {

// A part of the runs of one sweep, so that several programs can share it.
struct Part {
    Driver driver;
    const char* command;
    bool forEver; // all calls from one on fail
    int part = 0;
    int parts = 1;

    // In process a single fault is tried at every call. Through the library, and for faults that
    // stay, it is a sample.
    [[nodiscard]] bool IsWhole() const { return driver == Driver::InProcess && !forEver; }
};

class FaultSweep : public testing::TestWithParam<Part> {
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

    // The calls to fail: all of them, or the first and the last 300, and every 97th of the
    // thousands between them, nearly all of which read or write one number of a key description.
    [[nodiscard]] static std::vector<int> CallsToFail(int count) {
        constexpr int kCallsAtTheEnds = 300;
        std::vector<int> calls;
        for (int call = 1; call <= count;) {
            calls.push_back(call);
            const bool isAtAnEnd = call < kCallsAtTheEnds || call + kCallsAtTheEnds > count;
            call += GetParam().IsWhole() || isAtAnEnd ? 1 : 97;
        }
        return calls;
    }

    // Runs the command with each of its driver calls failing in turn, and hands each outcome and
    // the memory after it to `check`. A call whose status matters never fails without a word.
    void Sweep(const std::vector<std::string>& arguments,
               const std::function<void(const Outcome&, const std::string& memory)>& check) {
        CommandLine counter(Driver::InProcess);
        counter.Write("keyboard.qxk", keyboardFile);
        EXPECT_EQ(counter.Run(arguments).status, 0);
        EXPECT_GT(counter.calls, 10);
        const std::vector<host::DriverResult> kinds = counter.kinds;
        ASSERT_EQ(kinds.size(), static_cast<std::size_t>(counter.calls));
        const std::vector<int> calls = CallsToFail(counter.calls);
        const auto step = static_cast<std::size_t>(GetParam().parts);
        for (auto i = static_cast<std::size_t>(GetParam().part);
             i < calls.size() && !testing::Test::HasFailure(); i += step) {
            const int call = calls[i];
            SCOPED_TRACE("driver call " + std::to_string(call));
            const Outcome outcome = keyboard.Run(arguments, {call, 77, GetParam().forEver});
            if (kinds[static_cast<std::size_t>(call - 1)] == host::DriverResult::Status) {
                EXPECT_NE(outcome.err.find(" gave status 77"), std::string::npos) << outcome.err;
            }
            if (outcome.status != 0) {
                EXPECT_NE(outcome.err, "");
            }
            check(outcome, MemoryAfterRun());
        }
    }

    CommandLine keyboard{GetParam().driver};
    std::string changedFile;
    std::string keyboardFile;
    std::string before;
};

std::vector<Part> Split(const std::vector<Part>& sweeps, int parts) {
    std::vector<Part> split;
    for (Part each : sweeps) {
        each.parts = each.IsWhole() ? parts : 1;
        for (each.part = 0; each.part < each.parts; ++each.part)
            split.push_back(each);
    }
    return split;
}

std::string NameOf(const testing::TestParamInfo<Part>& info) {
    std::string name = info.param.command;
    name[0] = static_cast<char>(std::toupper(name[0]));
    name += info.param.driver == Driver::InProcess ? "InProcess" : "Library";
    name += info.param.forEver ? "ForEver" : "";
    return name + (info.param.parts > 1 ? std::to_string(info.param.part + 1) : "");
}

} // namespace

class FaultSweepOfReading : public FaultSweep {};

TEST_P(FaultSweepOfReading, NeverLiesAndNeverWrites) {
    const std::string expected = keyboard.Done({GetParam().command});
    Sweep({GetParam().command}, [&](const Outcome& outcome, const std::string& memory) {
        EXPECT_TRUE(memory == before);
        if (outcome.status == 0 && outcome.err.empty()) {
            EXPECT_EQ(outcome.out, expected);
        }
    });
}

INSTANTIATE_TEST_SUITE_P(Drivers, FaultSweepOfReading,
                         testing::ValuesIn(Split({{Driver::InProcess, "identify", false},
                                                  {Driver::InProcess, "identify", true},
                                                  {Driver::Library, "identify", false},
                                                  {Driver::Library, "identify", true},
                                                  {Driver::InProcess, "upload", false},
                                                  {Driver::InProcess, "upload", true},
                                                  {Driver::Library, "upload", false},
                                                  {Driver::Library, "upload", true}},
                                                 8)),
                         NameOf);

class FaultSweepOfWriting : public FaultSweep {};

TEST_P(FaultSweepOfWriting, NeverLies) {
    keyboard.Done({"download", changedFile});
    const std::string after = keyboard.Memory();
    ASSERT_NE(after, before);
    Restore();
    Sweep({"download", changedFile}, [&](const Outcome& outcome, const std::string& memory) {
        EXPECT_TRUE(memory == before || memory == after);
        if (outcome.status == 0) {
            EXPECT_TRUE(memory == after);
        }
        if (outcome.err.find("nothing was written") != std::string::npos) {
            EXPECT_TRUE(memory == before);
        }
    });
}

INSTANTIATE_TEST_SUITE_P(Drivers, FaultSweepOfWriting,
                         testing::ValuesIn(Split({{Driver::InProcess, "download", false},
                                                  {Driver::Library, "download", false}},
                                                 8)),
                         NameOf);

class FaultSweepOfBreaks : public FaultSweep {};

TEST_P(FaultSweepOfBreaks, ATransferThatBreaksOffIsReported) {
    for (const std::int32_t bytes : {0, 1, 100, 3000}) {
        Restore();
        const Outcome upload = keyboard.Run({"upload"}, {0, 0, false, bytes});
        EXPECT_EQ(upload.status, 4);
        EXPECT_TRUE(upload.out.empty());
        EXPECT_TRUE(keyboard.Memory() == before);
        const Outcome download =
            keyboard.Run({"download", "--full", changedFile}, {0, 0, false, -1, bytes});
        EXPECT_EQ(download.status, 4);
        const bool isChanged = keyboard.Memory() != before;
        EXPECT_NE(download.err.find(isChanged ? "holds all" : "nothing changed"), std::string::npos)
            << download.err;
    }
}

INSTANTIATE_TEST_SUITE_P(Drivers, FaultSweepOfBreaks,
                         testing::Values(Part{Driver::InProcess, "download", false},
                                         Part{Driver::Library, "download", false}),
                         NameOf);

} // namespace qx::test
