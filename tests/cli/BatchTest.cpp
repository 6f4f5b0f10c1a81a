// Batches as the user of the command line sees them.
#include "CommandLine.h"

#include "host/Json.h"

#include <csignal>
#include <map>

namespace qx::test {

using host::Json;

namespace {

constexpr const char* kDocument = R"({"format": "qx-configuration", "version": 1,
    "commonKeyboard": {"outputDelay": 9},
    "magnetCard": {"sendImmediate": true, "verifyLRC": true, "verifyLastChar": true, "tracks": [
        {"enabled": true, "headerEnabled": true, "header": "T ^T ${till}",
         "terminatorEnabled": true, "terminator": []},
        {"enabled": true, "headerEnabled": true, "header": [],
         "terminatorEnabled": true, "terminator": []},
        {"enabled": true, "headerEnabled": true, "header": [],
         "terminatorEnabled": true, "terminator": []},
        {"enabled": true, "headerEnabled": true, "header": [],
         "terminatorEnabled": true, "terminator": []}]}})";

// Simulated keyboards in the files of one folder, and a job for three of them.
class Batch : public testing::Test {
protected:
    Batch() {
        Write("till.json", kDocument);
        for (const char* name : {"1", "2", "3"})
            job["units"].push_back({{"name", std::string("till ") + name},
                                    {"keyboard", std::string(name) + ".qxk"},
                                    {"variables", {{"till", std::string("00") + name}}}});
    }

    Outcome Run(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(),
                         {"--layouts", QX_LAYOUTS, "--settings", File("settings.ini")});
        std::ostringstream out;
        std::ostringstream err;
        cli::Surroundings surroundings;
        surroundings.dataFolder = folder / "data";
        surroundings.openDriver = [this](const setup::KeyboardChoice& choice) {
            opened += choice.keyboard.stem().string();
            setup::OpenedDriver driver = setup::OpenDriver(choice);
            if (const auto fault = faults.find(choice.keyboard.stem().string());
                fault != faults.end())
                driver.simulated->FailCall(fault->second, 77, true);
            if (cut == choice.keyboard.stem()) {
                sim::SimulatedDriver* simulated = driver.simulated;
                driver.driver =
                    std::make_unique<LyingDriver>(std::move(driver.driver), false,
                                                  [simulated] { simulated->StopTransferAfter(4); });
            }
            return driver;
        };
        surroundings.pause = [this] {
            if (pauses.empty())
                std::raise(SIGINT);
            else
                std::exchange(pauses, {pauses.begin() + 1, pauses.end()}).front()();
        };
        opened.clear();
        const int status = cli::Run(arguments, {out, err}, surroundings);
        return {status, out.str(), err.str()};
    }
    Outcome RunJob(const std::vector<std::string>& options = {}) {
        Write("job.json", job.dump());
        std::vector<std::string> arguments = {"--json", "batch", File("job.json")};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return Run(arguments);
    }
    [[nodiscard]] Json Report() const {
        return Json::parse(files::ReadFile(folder / "job.report.json"));
    }
    // "done failed done"
    [[nodiscard]] std::string Results() const {
        std::string results;
        const Json report = Report();
        for (const Json& unit : report["units"])
            results += (results.empty() ? "" : " ") + unit["result"].get<std::string>();
        return results;
    }
    // The till's number that the keyboard in this file holds all of the document with; "?" for
    // another configuration.
    std::string TillIn(const std::string& keyboard) {
        for (const char* till : {"001", "002", "003"})
            if (Run({"--keyboard", File(keyboard), "diff", "--set", std::string("till=") + till,
                     File("till.json")})
                    .status == 0)
                return till;
        return "?";
    }

    [[nodiscard]] std::string File(const std::string& name) const {
        return (folder / name).string();
    }
    void Write(const std::string& name, const std::string& text) {
        files::WriteFileAtomically(folder / name, text);
    }
    // Makes a keyboard; moves one to another file.
    void Make(const std::string& name, const std::string& model = "full") {
        EXPECT_EQ(Run({"--keyboard", File(name), "--model", model, "identify"}).status, 0);
    }
    void Move(const std::string& from, const std::string& to) {
        std::filesystem::rename(folder / from, folder / to);
    }

    TempFolder folder{TempFolder::InMemory()};
    Json job = {{"format", "qx-batch"}, {"version", 1}, {"document", "till.json"}};
    std::map<std::string, int> faults; // of a keyboard, from its driver call of this number on
    std::string cut;                   // the keyboard whose writes are cut after 4 bytes
    std::string opened;                // the keyboards that the last run opened
    std::vector<std::function<void()>> pauses; // what happens while a bench waits; then Ctrl+C
};

} // namespace

TEST_F(Batch, GoesOnBehindAFailureAndDoesTheRestNextTime) {
    cut = "2";
    const Outcome first = RunJob();
    EXPECT_EQ(first.status, 4) << first.err;
    EXPECT_EQ(opened, "123");
    EXPECT_EQ(Results(), "done failed done");
    EXPECT_EQ(TillIn("1.qxk") + TillIn("2.qxk") + TillIn("3.qxk"), "001?003");
    EXPECT_EQ(Report()["units"][1]["error"]["code"], "transfer-failed");
    const Json printed = Json::parse(first.out);
    EXPECT_EQ(printed["units"], Report()["units"]);
    EXPECT_EQ(printed["failed"], 1);

    // The half-written keyboard is rolled back, and then written.
    cut.clear();
    const Outcome second = RunJob();
    EXPECT_EQ(second.status, 0) << second.err;
    EXPECT_EQ(opened, "2");
    EXPECT_EQ(Results(), "done done done");
    EXPECT_TRUE(Report()["units"][1]["rolledBack"]);
    EXPECT_NE(second.err.find("till 2: rolled back the download"), std::string::npos) << second.err;
    EXPECT_EQ(TillIn("2.qxk"), "002");
    EXPECT_TRUE(std::filesystem::is_empty(folder / "data" / "journal"));

    const Outcome third = Run({"batch", File("job.json")});
    EXPECT_EQ(third.status, 0);
    EXPECT_EQ(opened, "");
    EXPECT_NE(third.out.find("3 done, 0 failed, 0 not done"), std::string::npos) << third.out;
}

// Wherever the driver fails, the batch ends with a report, and the next one makes up for it.
TEST_F(Batch, EveryDriverCallOfAUnitMayFail) {
    job["units"].erase(2);
    for (Json& unit : job["units"])
        unit["model"] = "magnet";
    bool isFailing = true;
    for (int call = 1; isFailing; ++call) {
        faults = {{"1", call}};
        const Outcome broken = RunJob();
        isFailing = broken.status != 0;
        ASSERT_EQ(Results(), isFailing ? "failed done" : "done done") << call << broken.err;
        faults.clear();
        ASSERT_EQ(RunJob().status, 0) << call;
        ASSERT_EQ(TillIn("1.qxk"), "001") << call;
        for (const char* name : {"1.qxk", "2.qxk", "job.report.json"})
            std::filesystem::remove(folder / name);
        ASSERT_LT(call, 1000);
    }
}

TEST_F(Batch, DoesAgainWhatHasChanged) {
    ASSERT_EQ(RunJob().status, 0);
    job["units"][1]["variables"]["till"] = "003";
    EXPECT_EQ(RunJob().status, 0);
    EXPECT_EQ(opened, "2");
    EXPECT_EQ(TillIn("2.qxk"), "003");

    Json document = Json::parse(kDocument);
    Write("till.json", document.dump(7)); // says the same
    EXPECT_EQ(RunJob().status, 0);
    EXPECT_EQ(opened, "");
    document["commonKeyboard"]["outputDelay"] = 10;
    Write("till.json", document.dump());
    const Json planned = Json::parse(RunJob({"--dry-run"}).out);
    EXPECT_EQ(opened, "");
    EXPECT_EQ(planned["notDone"], 3);
    faults = {{"3", 1}};
    EXPECT_EQ(RunJob().status, 3);
    EXPECT_EQ(opened, "123");
    EXPECT_EQ(Results(), "done done failed");

    // A crash may come between a keyboard and the report: the keyboard holds all of it then.
    faults.clear();
    std::filesystem::remove(folder / "job.report.json");
    EXPECT_EQ(RunJob().status, 0);
    EXPECT_EQ(opened, "123");
    EXPECT_EQ(Report()["units"][0]["bytesSent"], 0);
    EXPECT_EQ(Report()["units"][2]["bytesSent"], 1);
}

TEST_F(Batch, FaultsOfAJobAreNamedBeforeAKeyboardIsTouched) {
    struct Row {
        const char* patch; // merged into the job
        const char* place;
        const char* message;
    };
    const Json first = {{"name", "till 1"}, {"keyboard", "1.qxk"}, {"variables", {{"till", "1"}}}};
    const Row rows[] = {
        {R"({"format": "x"})", "/format", "not a batch job"},
        {R"({"version": 2})", "/version", "the version is not 1"},
        {R"({"unit": []})", "/unit", "\"unit\" is not known here"},
        {R"({"units": []})", "/units", "no list of units"},
        {R"({"units": [7]})", "/units/0", "7 is not an object"},
        {R"({"document": "none.json"})", "/units/0/document", "none.json"},
        {R"({"document": null})", "/document", "null is not a text"},
        {R"({"variables": {"store": "7"}})", "/variables/store", "no document has a placeholder"},
        {R"({"variables": {"till": 7}})", "/variables/till", "write \"42\""},
        {R"({"variables": {"1": "7"}})", "/variables/1", "a variable's name is"},
        {R"({"bench": {"model": "full"}})", "/bench/model", "is for a \"keyboard\""},
        {R"({"bench": {"keyboard": "port.qxk"}})", "/units/0", "this is a job for the bench"},
    };
    const auto check = [&](const Row& row) {
        const Outcome outcome = RunJob();
        EXPECT_EQ(outcome.status, 6) << row.message << outcome.err;
        const Json error = Json::parse(outcome.out)["error"];
        EXPECT_EQ(error["place"], row.place) << outcome.err;
        EXPECT_NE(error["message"].get<std::string>().find(row.message), std::string::npos)
            << outcome.err;
        EXPECT_EQ(opened, "");
    };
    const Json whole = job;
    for (const Row& row : rows) {
        job = whole;
        const Json patch = Json::parse(row.patch);
        for (const auto& [key, value] : patch.items())
            job[key] = value;
        check(row);
    }
    const Row ofUnits[] = {
        {R"({"name": "till 1"})", "/units/1/name", "is the name of another unit"},
        {R"({"keyboard": "./x/../1.qxk"})", "/units/1/keyboard", "is also that of till 1"},
        {R"({"keyboard": ""})", "/units/1/keyboard", "is empty"},
        {R"({"driver": 4})", "/units/1/driver", "4 is not a text"},
        {R"({"till": "001"})", "/units/1/till", "is not known here"},
        {R"({"identifier": "7"})", "/units/1/identifier", "is not like {01234567-"},
        {R"({"variables": {}})", "/units/1",
         "/magnetCard/tracks/0/header: needs a value for the variable till"},
        {R"({"variables": {"till": "€"}})", "/units/1", "no key of the layout types"},
        {R"({"variables": {"till": "1", "tlil": "1"}})", "/units/1/variables/tlil",
         "has no placeholder ${tlil}"},
    };
    for (const Row& row : ofUnits) {
        job = whole;
        const Json patch = Json::parse(row.patch);
        for (const auto& [key, value] : patch.items())
            job["units"][1][key] = value;
        check(row);
    }
    // All of them are told.
    job["units"][0]["variables"]["a"] = "1";
    job["units"][2]["variables"]["a"] = "1";
    const Json error = Json::parse(RunJob().out)["error"];
    EXPECT_EQ(error["faults"].size(), 3U) << error;
    EXPECT_FALSE(std::filesystem::exists(folder / "job.report.json"));
    job = whole;
    EXPECT_EQ(RunJob({"--bench"}).status, 2);
    EXPECT_EQ(RunJob({"--keyboard", File("1.qxk")}).status, 2);
    EXPECT_EQ(Run({"batch", File("none.json")}).status, 4);
    EXPECT_EQ(opened, "");
}

TEST_F(Batch, ADamagedReportIsKeptAndNothingIsTouched) {
    ASSERT_EQ(RunJob().status, 0);
    const std::string text = files::ReadFile(folder / "job.report.json");
    std::vector<std::string> damaged = {text + "x", R"({"format": "qx-batch-report"})"};
    for (std::size_t length = 0; length + 2 < text.size(); length += 61)
        damaged.push_back(text.substr(0, length));
    for (const char* change : {R"("version": 1)", R"("result": "done")", R"("wanted": ")"}) {
        damaged.push_back(text);
        damaged.back().replace(damaged.back().find(change) + 3, 3, "xxx");
    }
    for (const std::string& each : damaged) {
        Write("job.report.json", each);
        const Outcome outcome = RunJob();
        ASSERT_EQ(outcome.status, 4) << each;
        EXPECT_NE(outcome.err.find("move it away"), std::string::npos) << outcome.err;
        EXPECT_EQ(opened, "");
        EXPECT_EQ(files::ReadFile(folder / "job.report.json"), each);
    }
}

TEST_F(Batch, OnlyOneWorksOnAJob) {
    files::FileLock other(folder / "job.report.json");
    ASSERT_TRUE(other.TryLock());
    const Outcome outcome = RunJob();
    EXPECT_EQ(outcome.status, 4);
    EXPECT_NE(outcome.err.find("another batch is at work"), std::string::npos) << outcome.err;
    EXPECT_EQ(opened, "");
}

TEST_F(Batch, AUnitMayMeanOneKeyboardOnly) {
    Make("1.qxk");
    Make("2.qxk");
    const std::string before = files::ReadFile(folder / "2.qxk");
    const std::string identifier = [&] {
        RunJob();
        return Report()["units"][0]["identifier"].get<std::string>();
    }();
    files::WriteFileAtomically(folder / "2.qxk", before);
    job["units"].erase(2);
    job["units"][0]["identifier"] = identifier;
    job["units"][1]["identifier"] = "{01234567-89ab-cdef-0123-456789abcdef}";
    EXPECT_EQ(RunJob().status, 4);
    EXPECT_EQ(Results(), "done failed");
    EXPECT_EQ(Report()["units"][1]["error"]["code"], "keyboard-changed");
    EXPECT_EQ(files::ReadFile(folder / "2.qxk"), before);
    // With identifiers, several may be reached in the same way; without all of them, not.
    job["units"][1]["keyboard"] = "1.qxk";
    EXPECT_EQ(RunJob().status, 4);
    job["units"][1].erase("identifier");
    EXPECT_EQ(RunJob().status, 6);
}

// What was left out is done when it no longer is; and no two keyboards get one identifier.
TEST_F(Batch, WhatWasSkippedIsNotDoneAndIdentifiersAreGivenOnce) {
    Json document = Json::parse(kDocument);
    Make("1.qxk", "magnet");
    const Json layered = Json::parse(
        Run({"--json", "--keyboard", File("2.qxk"), "upload"}).out)["document"]["layeredFuncKeys"];
    document["layeredFuncKeys"] = layered;
    Write("till.json", document.dump());
    EXPECT_EQ(RunJob().status, 6) << "three keyboards would get one identifier";

    job["units"].erase(2);
    job["units"].erase(1);
    EXPECT_EQ(RunJob({"--skip-absent"}).status, 0);
    EXPECT_EQ(Results(), "done");
    EXPECT_NE(RunJob().status, 0) << "the keyboard lacks a section of the document";
    EXPECT_EQ(Results(), "failed");
}

// One keyboard after the other stands in the bench's file.
class Bench : public Batch {
protected:
    Bench() {
        job["bench"] = {{"keyboard", "port.qxk"}};
        for (Json& unit : job["units"])
            unit.erase("keyboard");
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
        [] {}, // the same one is still there
        [&] {
            Unplug("a.qxk");
            Plug("b.qxk");
            faults = {{"port", 150}};
        },
        [] {}, // it failed, and is not tried again as long as it stays
        [&] {
            faults.clear();
            Unplug("b.qxk");
            Plug("a.qxk"); // once more, by mistake
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

// Keyboards without an identifier are told from one another by being unplugged.
TEST_F(Bench, EndsByCtrlCAndGoesOnNextTime) {
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

// A keyboard that a unit names is that unit whenever it comes; no other is.
TEST_F(Bench, KnowsAKeyboardByItsIdentifier) {
    Make("a.qxk");
    Make("b.qxk");
    const Json uploaded =
        Json::parse(Run({"--json", "--keyboard", File("b.qxk"), "upload"}).out)["document"];
    job["units"][1]["identifier"] = uploaded["layeredFuncKeys"]["guid"];
    job["units"].erase(2);
    Plug("b.qxk");
    pauses = {[&] {
        Unplug("b.qxk");
        Plug("a.qxk");
    }};
    const Outcome outcome = RunJob({"--bench"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(TillIn("b.qxk") + TillIn("port.qxk"), "002001");
}

} // namespace qx::test
