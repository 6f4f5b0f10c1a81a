// Batches through the command line.
#include "BatchJob.h"

#include <algorithm>
#include <iterator>
#include <set>

namespace qx::test {

using Batch = BatchJob;

TEST_F(Batch, ContinuesAfterAFailureAndCompletesTheRestNextTime) {
    cut = "2";
    const Outcome first = RunJob();
    EXPECT_EQ(first.status, 4) << first.err;
    EXPECT_EQ(opened, "123");
    EXPECT_EQ(Results(), "done failed done");
    EXPECT_EQ(TillIn("1.qxk") + TillIn("2.qxk") + TillIn("3.qxk"), "001?003");
    const Json error = Report()["units"][1]["error"];
    EXPECT_EQ(error["code"], "transfer-failed");
    EXPECT_EQ(error["cause"], "writing-failed");
    EXPECT_EQ(error["function"], "QXCFG_ImageSave");
    EXPECT_EQ(error["holds"], "partly-written");
    EXPECT_EQ(error["suggestion"], "recover");
    const Json printed = Json::parse(first.out);
    EXPECT_EQ(printed["units"], Report()["units"]);
    EXPECT_EQ(printed["failed"], 1);
    EXPECT_EQ(printed["thisRun"]["done"], Json({"till 1", "till 3"}));
    EXPECT_EQ(printed["thisRun"]["failed"], Json({"till 2"}));
    EXPECT_EQ(printed["thisRun"]["bytesSent"], printed["units"][0]["bytesSent"].get<int>() +
                                                   printed["units"][2]["bytesSent"].get<int>());

    // Each backup names its unit and the unit's port.
    const Json backups = Json::parse(Run({"--json", "backup", "list"}).out)["backups"];
    std::set<std::string> places;
    for (const Json& backup : backups)
        places.insert(backup["unit"].get<std::string>() + backup["place"].get<std::string>());
    EXPECT_EQ(places, (std::set<std::string>{"till 1 1.qxk", "till 2 2.qxk", "till 3 3.qxk"}));

    // The half-written keyboard is rolled back, then written.
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
    EXPECT_NE(third.out.find("3 done, 0 failed, 0 not done\nthis run: 0 done (0 bytes written)"),
              std::string::npos)
        << third.out;
    EXPECT_EQ(Run({"batch", "--dry-run", File("job.json")}).status, 0);
}

// A rollback has been sent, whatever is refused after it.
TEST_F(Batch, ARefusalAfterARollbackClaimsNoUntouchedKeyboard) {
    job["units"] = Json::array({job["units"][1]});
    job["units"][0]["model"] = "magnet";
    cut = "2";
    EXPECT_EQ(RunJob().status, 4);
    cut.clear();
    Json document = Json::parse(kDocument);
    document["pos"]["blocks"] = Json::array(); // which this keyboard lacks
    Write("till.json", document.dump());
    EXPECT_EQ(RunJob().status, 6);
    const Json unit = Report()["units"][0];
    EXPECT_TRUE(unit["rolledBack"]) << unit;
    EXPECT_EQ(unit["error"]["holds"], "old") << unit;
}

// Each unit has its own values, whichever way they are given.
TEST_F(Batch, AUnitsVariablesGoBeforeTheJobs) {
    job["variables"]["till"] = "003";
    job["units"][1].erase("variables");
    ASSERT_EQ(RunJob().status, 0);
    EXPECT_EQ(TillIn("1.qxk") + TillIn("2.qxk") + TillIn("3.qxk"), "001003003");
}

// A block that a document cannot express fails its unit, unless it is to be replaced.
TEST_F(Batch, DamageIsLeftAloneUnlessItIsToBeRepaired) {
    Json document = Json::parse(kDocument);
    document["pos"]["blocks"] = {{{"slot", 7}, {"keys", {7}}, {"sequence", {30}}}};
    Write("till.json", document.dump());
    const std::string damage("\xC8\x1E\x1F");
    for (const char* jobs : {"1", "2"}) {
        Make("2.qxk");
        {
            sim::SimulatedDriver keyboard(folder / "2.qxk", "full");
            ASSERT_EQ(keyboard.QXCFG_Init(), 0);
            keyboard.Poke(*keyboard.Model().AddressOf(MODULE_POS) + 40 * 32, damage);
        }
        EXPECT_EQ(RunJob({"--jobs", jobs}).status, 4);
        EXPECT_EQ(Results(), "done failed done");
        const Json error = Report()["units"][1]["error"];
        EXPECT_EQ(error["cause"], "keyboard-damaged");
        EXPECT_EQ(error["faults"][0]["code"], "unknown-group") << error;
        EXPECT_EQ(error["suggestion"], "repair");
        EXPECT_EQ(RunJob({"--jobs", jobs, "--repair"}).status, 0);
        EXPECT_EQ(Results(), "done done done");
        EXPECT_EQ(TillIn("2.qxk"), "002");
        for (const char* file : {"1.qxk", "2.qxk", "3.qxk", "job.json.report.json"})
            std::filesystem::remove(folder / file);
    }
}

TEST_F(Batch, OnlyChosenUnitsAreProgrammed) {
    EXPECT_EQ(RunJob({"--only", "till 3", "--only", "till 1"}).status, 0);
    EXPECT_EQ(opened, "13");
    EXPECT_EQ(Results(), "done not done done");
    const Outcome unknown = RunJob({"--only", "till"});
    EXPECT_EQ(unknown.status, 2);
    EXPECT_NE(unknown.err.find("job.json has no unit \"till\""), std::string::npos) << unknown.err;
    EXPECT_EQ(RunJob({"--dry-run"}).status, 1);
    EXPECT_EQ(RunJob({"--dry-run", "--only", "till 1"}).status, 0);
}

#ifndef _WIN32
// The current unit is completed, and no other is started.
TEST_F(Batch, EndsOrderlyWhenItIsAskedTo) {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        whileOpening = [&](const std::string& keyboard) {
            if (keyboard == "2")
                std::raise(signal);
        };
        EXPECT_EQ(RunJob().status, 1);
        EXPECT_EQ(opened, "12");
        EXPECT_EQ(Results(), "done done not done");
        std::filesystem::remove(folder / "job.json.report.json");
    }
}
#endif

// Whichever driver call fails, the batch ends with a report, and the next run completes it.
TEST_F(Batch, EveryDriverCallOfAUnitMayFail) {
    job["units"].erase(2);
    for (Json& unit : job["units"])
        unit["model"] = "magnet";
    bool isFailing = true;
    for (int call = 1; isFailing; call += 1 + call / 6) {
        faults = {{"1", call}};
        const Outcome broken = RunJob();
        isFailing = broken.status != 0;
        ASSERT_EQ(Results(), isFailing ? "failed done" : "done done") << call << broken.err;
        faults.clear();
        ASSERT_EQ(RunJob().status, 0) << call;
        ASSERT_EQ(TillIn("1.qxk"), "001") << call;
        for (const char* name : {"1.qxk", "2.qxk", "job.json.report.json"})
            std::filesystem::remove(folder / name);
        ASSERT_LT(call, 1000);
    }
}

TEST_F(Batch, RepeatsChangedUnits) {
    ASSERT_EQ(RunJob().status, 0);
    job["units"][1]["variables"]["till"] = "003";
    EXPECT_EQ(RunJob().status, 0);
    EXPECT_EQ(opened, "2");
    EXPECT_EQ(TillIn("2.qxk"), "003");

    Json document = Json::parse(kDocument);
    Write("till.json", document.dump(7)); // the same content
    EXPECT_EQ(RunJob().status, 0);
    EXPECT_EQ(opened, "");
    document["commonKeyboard"]["outputDelay"] = 10;
    Write("till.json", document.dump());
    const Outcome planned = RunJob({"--dry-run"});
    EXPECT_EQ(opened, "");
    EXPECT_EQ(planned.status, 1);
    EXPECT_EQ(Json::parse(planned.out)["notDone"], 3);
    faults = {{"3", 1}};
    EXPECT_EQ(RunJob().status, 3);
    EXPECT_EQ(opened, "123");
    EXPECT_EQ(Results(), "done done failed");

    // After a crash between the keyboard and the report, the keyboard already holds the document.
    faults.clear();
    std::filesystem::remove(folder / "job.json.report.json");
    EXPECT_EQ(RunJob().status, 0);
    EXPECT_EQ(opened, "123");
    EXPECT_EQ(Report()["units"][0]["bytesSent"], 0);
    EXPECT_EQ(Report()["units"][2]["bytesSent"], 1);

    // Another keyboard or another layout counts as a change.
    const std::tuple<const char*, const char*, int> changes[] = {
        {"/units/1/keyboard", "4.qxk", 1},
        {"/units/1/identifier", "{01234567-89AB-CDEF-0123-456789ABCDEF}", 1},
        {"/layout", "uk.qxl", 3},
    };
    const Json whole = job;
    for (const auto& [place, value, notDone] : changes) {
        job = whole;
        job[Json::json_pointer(place)] = value;
        EXPECT_EQ(Json::parse(RunJob({"--dry-run"}).out)["notDone"], notDone) << place;
    }
    job = whole;
    EXPECT_EQ(RunJob({"--dry-run"}).status, 0);
    EXPECT_EQ(RunJob({"--dry-run", "--layout", "uk.qxl"}).status, 1);
}

TEST_F(Batch, OnlyOneWorksOnAJob) {
    files::FileLock other(folder / "job.json.report.json");
    ASSERT_TRUE(other.TryLock());
    const Outcome outcome = RunJob();
    EXPECT_EQ(outcome.status, 4);
    EXPECT_NE(outcome.err.find("another batch is working"), std::string::npos) << outcome.err;
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
    std::string small = identifier; // the same identifier
    std::transform(small.begin(), small.end(), small.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    job["units"][0]["identifier"] = small;
    job["units"][1]["identifier"] = "{01234567-89ab-cdef-0123-456789abcdef}";
    EXPECT_EQ(RunJob().status, 4);
    EXPECT_EQ(Results(), "done failed");
    EXPECT_EQ(Report()["units"][1]["error"]["code"], "keyboard-changed");
    EXPECT_EQ(files::ReadFile(folder / "2.qxk"), before);
    // Several units may share a port if all of them have identifiers.
    job["units"][1]["keyboard"] = "1.qxk";
    EXPECT_EQ(RunJob().status, 4);
    job["units"][1].erase("identifier");
    EXPECT_EQ(RunJob().status, 6);
}

// The jobs and commands in the page about batches, exactly as written there.
TEST_F(Batch, TheExamplesOfThePageAreRun) {
    const std::string page = files::ReadFile(QX_LAYOUTS "../docs/batch.md");
    std::vector<std::string> jobs;
    std::vector<std::vector<std::string>> commands;
    std::istringstream lines(page);
    std::string fence;
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("```")) {
            fence = fence.empty() ? line : "";
            if (fence == "```json")
                jobs.emplace_back();
        } else if (fence == "```json") {
            jobs.back() += line + "\n";
        } else if (!fence.empty() && line.find("qxconf ") < 3) {
            std::istringstream words(line.substr(line.find("qxconf ") + 7));
            commands.emplace_back(std::istream_iterator<std::string>(words),
                                  std::istream_iterator<std::string>());
            for (std::string& word : commands.back())
                word = word.ends_with(".json") ? File(word) : word;
        }
    }
    ASSERT_EQ(jobs.size(), 2U);
    ASSERT_EQ(commands.size(), 3U);
    ports = {{"line1.so", "line1.qxk"}, {"line2.so", "line2.qxk"}};

    Json kiosk = Json::parse(kDocument);
    kiosk.erase("magnetCard");
    kiosk["layeredFuncKeys"] = {{"guid", Json::parse(jobs[0])["units"][2]["identifier"]},
                                {"keys", Json::array()}};
    Write("kiosk.json", kiosk.dump());
    EXPECT_EQ(Run({"--driver", File("line2.so"), "download", File("kiosk.json")}).status, 0);
    std::string till = kDocument;
    till.replace(till.find("${till}"), 7, "${store}${till}");
    Write("till.json", till);
    Write("tills.json", jobs[0]);
    EXPECT_EQ(commands[0], (std::vector<std::string>{"batch", File("tills.json")}));
    const Outcome programmed = Run(commands[0]);
    EXPECT_EQ(programmed.status, 0) << programmed.err;
    for (const char* said : {"[1 of 3] till 1: done: wrote ", " bytes, read back and verified\n",
                             "the report is in ", "tills.json.report.json\n"})
        EXPECT_NE(programmed.err.find(said), std::string::npos) << programmed.err;
    EXPECT_NE(programmed.out.find("3 done, 0 failed, 0 not done\nthis run: 3 done ("),
              std::string::npos)
        << programmed.out;

    Write("till.json", kDocument);
    for (std::size_t i = 1; i < commands.size(); ++i) {
        commands[i].insert(commands[i].begin(), {"--keyboard", File("2.qxk"), "--model", "full"});
        EXPECT_EQ(Run(commands[i]).status, 0) << commands[i][4];
    }
    Write("tills.json", jobs[1]);
    std::filesystem::remove(folder / "tills.json.report.json");
    pauses = {[this] { Move("line1.qxk", "first.qxk"); }};
    const Outcome bench = Run({"batch", "--bench", File("tills.json")});
    EXPECT_EQ(bench.status, 0) << bench.err;
    EXPECT_EQ(TillIn("first.qxk") + TillIn("line1.qxk"), "001002");
}

} // namespace qx::test
