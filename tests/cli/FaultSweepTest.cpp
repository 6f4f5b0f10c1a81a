// The host layer's guarantees when the driver fails: a failure is never reported as success, an
// upload changes nothing, and a download that fails before its transfer has written nothing.

#include "CommandLine.h"

#include <cctype>

namespace qx::test {

namespace {

// Part of a sweep's runs, so that several programs can share it.
struct Part {
    Driver driver;
    const char* command;
    bool forEver; // all calls from this one on fail
    int part = 0;
    int parts = 1;
};

class FaultSweep : public testing::TestWithParam<Part> {
protected:
    // Puts the keyboard into a known state, and creates a document that changes it.
    void SetUp() override {
        const std::string document = keyboard.Done({"upload"});
        const std::string changed = std::string(document).replace(
            document.find("\"outputDelay\": 6"), 16, "\"outputDelay\": 9");
        changedFile = keyboard.Write("changed.json", changed);
        keyboardFile = files::ReadFile(keyboard.folder / "keyboard.qxk");
        before = keyboard.Memory();
    }

    // Restores the keyboard and deletes the records of writes.
    void Restore() {
        keyboard.Write("keyboard.qxk", keyboardFile);
        std::filesystem::remove_all(keyboard.folder / "data");
    }

    // The keyboard's memory after a run; an unchanged file shows that it is as before.
    std::string MemoryAfterRun() {
        std::filesystem::remove_all(keyboard.folder / "data");
        if (files::ReadFile(keyboard.folder / "keyboard.qxk") == keyboardFile)
            return before;
        const std::string memory = keyboard.Memory();
        Restore();
        return memory;
    }

    // The numbers of the calls to fail: all calls, but only every 61st of the thousands that access
    // one unit of a key's description (64 per key), so that every key and every unit is covered.
    [[nodiscard]] static std::vector<int> CallsToFail(const std::vector<DriverCall>& made) {
        std::vector<int> calls;
        int units = 0;
        for (std::size_t i = 0; i < made.size(); ++i)
            if (!made[i].function.ends_with("Int") || units++ % 61 == 0)
                calls.push_back(static_cast<int>(i) + 1);
        return calls;
    }

    // Runs the command with each of its driver calls failing in turn, and passes each outcome and
    // the memory after it to `check`. A failed call whose status matters must be reported.
    void Sweep(const std::vector<std::string>& arguments,
               const std::function<void(const Outcome&, const std::string& memory)>& check) {
        CommandLine counter(Driver::InProcess);
        counter.Write("keyboard.qxk", keyboardFile);
        EXPECT_EQ(counter.Run(arguments).status, 0);
        EXPECT_GT(counter.calls, 10);
        ASSERT_EQ(counter.made.size(), static_cast<std::size_t>(counter.calls));
        const std::vector<DriverCall> made = counter.made;
        const std::vector<int> calls = CallsToFail(made);
        const auto step = static_cast<std::size_t>(GetParam().parts);
        for (auto i = static_cast<std::size_t>(GetParam().part);
             i < calls.size() && !testing::Test::HasFailure(); i += step) {
            const int call = calls[i];
            SCOPED_TRACE("driver call " + std::to_string(call));
            const Outcome outcome = keyboard.Run(arguments, {call, 77, GetParam().forEver});
            if (made[static_cast<std::size_t>(call - 1)].result == host::DriverResult::Status) {
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

std::vector<Part> Split(const std::vector<Part>& sweeps) {
    constexpr int kParts = 2;
    std::vector<Part> split;
    for (Part each : sweeps) {
        each.parts = kParts;
        for (each.part = 0; each.part < kParts; ++each.part)
            split.push_back(each);
    }
    return split;
}

void PrintTo(const Part& part, std::ostream* out) {
    std::string name = part.command;
    name[0] = static_cast<char>(std::toupper(name[0]));
    *out << name << (part.driver == Driver::InProcess ? "InProcess" : "Library")
         << (part.forEver ? "ForEver" : "")
         << (part.parts > 1 ? std::to_string(part.part + 1) : "");
}

std::string NameOf(const testing::TestParamInfo<Part>& info) {
    return testing::PrintToString(info.param);
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
                                                  {Driver::Library, "upload", true}})),
                         NameOf);

class FaultSweepOfWriting : public FaultSweep {};

TEST_P(FaultSweepOfWriting, NeverLies) {
    keyboard.Done({"download", changedFile});
    const std::string after = keyboard.Memory();
    ASSERT_NE(after, before);
    Restore();
    const std::vector<std::string> download = {"--json", "download", changedFile};
    Sweep(download, [&](const Outcome& outcome, const std::string& memory) {
        EXPECT_TRUE(memory == before || memory == after);
        if (outcome.status == 0) {
            EXPECT_TRUE(memory == after);
            return;
        }
        const host::Json holds = host::Json::parse(outcome.out)["error"]["holds"];
        if (holds == "not-touched" || holds == "old") {
            EXPECT_TRUE(memory == before) << outcome.err;
        }
        if (holds == "new") {
            EXPECT_TRUE(memory == after) << outcome.err;
        }
    });
}

INSTANTIATE_TEST_SUITE_P(Drivers, FaultSweepOfWriting,
                         testing::ValuesIn(Split({{Driver::InProcess, "download", false},
                                                  {Driver::Library, "download", false}})),
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
            keyboard.Run({"--json", "download", "--full", changedFile}, {0, 0, false, -1, bytes});
        EXPECT_EQ(download.status, 4);
        const bool isChanged = keyboard.Memory() != before;
        EXPECT_EQ(host::Json::parse(download.out)["error"]["holds"], isChanged ? "new" : "old")
            << download.err;
    }
}

INSTANTIATE_TEST_SUITE_P(Drivers, FaultSweepOfBreaks,
                         testing::Values(Part{Driver::InProcess, "download", false},
                                         Part{Driver::Library, "download", false}),
                         NameOf);

} // namespace qx::test
