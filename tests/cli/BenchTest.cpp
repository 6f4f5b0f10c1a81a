// Batches at a bench, where keyboards are plugged in one after the other.
#include "BatchJob.h"

namespace qx::test {

// The keyboards appear one after the other in the bench's file.
class Bench : public BatchJob {
protected:
    Bench() {
        job["bench"] = {{"keyboard", "port.qxk"}};
        for (Json& unit : job["units"])
            unit.erase("keyboard"), unit.erase("model");
    }
    void Plug(const std::string& name) { Move(name, "port.qxk"); }
    void Unplug(const std::string& name) { Move("port.qxk", name); }
};

TEST_F(Bench, ProgramsOneAfterTheOther) {
    for (const char* name : {"a.qxk", "b.qxk", "c.qxk"})
        Make(name);
    pauses = {
        [] {}, // nothing is plugged in yet
        [&] { Plug("a.qxk"); },
        [] {}, // still the same one
        [&] {
            Unplug("a.qxk");
            Plug("b.qxk");
            faults = {{"port", 150}};
        },
        [] {}, // it failed, and is not retried while it stays plugged in
        [&] {
            faults.clear();
            Unplug("b.qxk");
            Plug("a.qxk"); // again, by mistake
        },
        [&] { Unplug("a.qxk"); },
        [&] { Plug("b.qxk"); },
        [&] { Unplug("b.qxk"); },
        [&] { Plug("c.qxk"); },
    };
    const Outcome outcome = RunJob({"--bench"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_TRUE(pauses.empty());
    EXPECT_EQ(Results(), "done done done");
    EXPECT_EQ(TillIn("a.qxk") + TillIn("b.qxk") + TillIn("port.qxk"), "001002003");
    EXPECT_NE(outcome.err.find("till 2: failed"), std::string::npos) << outcome.err;
    EXPECT_NE(outcome.err.find("this keyboard is till 1, which is done"), std::string::npos);
    EXPECT_NE(outcome.err.find("next: unplug this keyboard, and plug in the one for till 3"),
              std::string::npos);
    const auto waited = outcome.err.find("waiting for till 1");
    EXPECT_NE(waited, std::string::npos);
    EXPECT_EQ(outcome.err.find("waiting for till 1", waited + 1), std::string::npos);
}

// Keyboards without an identifier are distinguished only by being unplugged in between.
TEST_F(Bench, EndsByCtrlCAndContinuesNextTime) {
    Make("a.qxk", "magnet");
    Make("b.qxk", "magnet");
    Plug("a.qxk");
    pauses = {[] {}, [] {}};
    const Outcome first = RunJob({"--bench"});
    EXPECT_EQ(first.status, 1) << first.err;
    EXPECT_EQ(Results(), "done not done not done");

    Unplug("a.qxk");
    pauses = {[&] { Plug("b.qxk"); }, [&] { Unplug("b.qxk"); }};
    const Outcome second = RunJob({"--bench"});
    EXPECT_EQ(second.status, 1) << second.err;
    EXPECT_EQ(Results(), "done done not done");
    EXPECT_EQ(TillIn("a.qxk") + TillIn("b.qxk"), "001002");
    EXPECT_FALSE(std::filesystem::exists(folder / "port.qxk"));
}

// Uses the records: nothing else distinguishes such keyboards behind one port.
TEST_F(Bench, ABackupOfOneUnitIsNotRestoredIntoAnother) {
    Make("a.qxk", "magnet");
    Make("b.qxk", "magnet");
    pauses = {[&] { Plug("a.qxk"); }, [&] { Unplug("a.qxk"); }, [&] { Plug("b.qxk"); },
              [&] { Unplug("b.qxk"); }};
    EXPECT_EQ(RunJob({"--bench"}).status, 1);
    ASSERT_EQ(Results(), "done done not done");
    const std::string id = Report()["units"][0]["backup"];
    const auto restore = [&](const std::vector<std::string>& options) {
        std::vector<std::string> arguments = {"--keyboard", File("port.qxk"), "backup", "restore",
                                              id};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return Run(arguments);
    };
    Plug("b.qxk");
    const Outcome refused = restore({});
    EXPECT_EQ(refused.status, 4) << refused.out;
    EXPECT_NE(
        refused.err.find("the backup is of till 1, and according to the records this keyboard is "
                         "till 2; nothing was written"),
        std::string::npos)
        << refused.err;
    EXPECT_EQ(TillIn("port.qxk"), "002");
    EXPECT_EQ(restore({"--other-keyboard"}).status, 0);
    EXPECT_EQ(TillIn("port.qxk"), "?");
    Unplug("b.qxk");
    Plug("a.qxk");
    const Outcome restored = restore({});
    EXPECT_EQ(restored.status, 0) << restored.err;
    EXPECT_EQ(TillIn("port.qxk"), "?");
}

// A keyboard with a unit's identifier is that unit whenever it appears; no other keyboard is.
TEST_F(Bench, RecognisesAKeyboardByItsIdentifier) {
    Make("a.qxk");
    Make("b.qxk");
    const Json uploaded =
        Json::parse(Run({"--json", "--keyboard", File("b.qxk"), "upload"}).out)["document"];
    job["units"][1]["identifier"] = uploaded["layeredFuncKeys"]["guid"];
    Make("c.qxk");
    Plug("a.qxk");
    const auto next = [&](const char* before, const char* name) {
        return [this, before, name] {
            Unplug(before);
            Plug(name);
        };
    };
    pauses = {next("a.qxk", "c.qxk"), next("c.qxk", "b.qxk")};
    const Outcome outcome = RunJob({"--bench"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(TillIn("a.qxk") + TillIn("c.qxk") + TillIn("port.qxk"), "001003002");
}

} // namespace qx::test
