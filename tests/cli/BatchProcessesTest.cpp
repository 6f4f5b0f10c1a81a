// Batches with drivers and workers in processes: a failure there costs one unit only.
#include "BatchJob.h"

#include "process/ChildProcess.h"

namespace qx::test {

namespace {

// Units with the driver library that misbehaves as the file beside its keyboard demands.
class BatchProcesses : public BatchJob {
protected:
    BatchProcesses() {
        job["units"] = Json::array();
        for (const char* name : {"1", "2", "3", "4", "5"})
            AddUnit(name, std::string(name) + ".qxk");
    }
    void AddUnit(const std::string& name, const std::string& keyboard) {
        job["units"].push_back({{"name", "till " + name},
                                {"driver", QX_WILD_DRIVER},
                                {"keyboard", keyboard},
                                {"model", "full"},
                                {"variables", {{"till", "00" + name}}}});
    }
    void Behave(const std::string& keyboard, const std::string& behaviour) {
        Write(keyboard + ".qxk.wild", behaviour);
    }
    void BehaveWell() {
        for (const char* name : {"1", "2", "3", "4", "5"})
            std::filesystem::remove(folder / (std::string(name) + ".qxk.wild"));
    }
    [[nodiscard]] std::string MessageOf(std::size_t unit) const {
        const Json error = Report()["units"][unit]["error"];
        return error.is_null() ? "" : error["message"].get<std::string>();
    }
    // qxconf in a separate process.
    process::Ending RunProgram(const std::vector<std::string>& options) {
        Write("job.json", job.dump());
        std::vector<std::string> arguments = {"--layouts",          QX_LAYOUTS, "--settings",
                                              File("settings.ini"), "batch",    File("job.json")};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return process::ChildProcess(QX_QXCONF, arguments)
            .End(std::chrono::steady_clock::now() + std::chrono::minutes(5));
    }
};

} // namespace

TEST_F(BatchProcesses, ADriverThatMisbehavesCostsItsUnit) {
    for (const char* jobs : {"1", "3"}) {
        Behave("1", "QXCFG_ImageSave crash");
        Behave("2", "QXCFG_Init exit");
        Behave("3", "QXCFG_ImageLoad hang");
        Behave("4", "QXSIM_SetKeyboard exit");
        const Outcome outcome = RunJob({"--jobs", jobs, "--timeout", "2"});
        EXPECT_EQ(outcome.status, 4) << outcome.err;
        EXPECT_EQ(Results(), "failed failed failed failed done");
        EXPECT_NE(MessageOf(0).find("QXCFG_ImageSave: the driver crashed (signal 6, Aborted); the "
                                    "keyboard may be partly written"),
                  std::string::npos)
            << MessageOf(0);
        EXPECT_EQ(MessageOf(1), "the keyboard could not be opened: QXCFG_Init: the driver ended "
                                "its process with status 0");
        EXPECT_NE(MessageOf(2).find("QXCFG_ImageLoad: the driver did not answer within 2 s"),
                  std::string::npos)
            << MessageOf(2);
        EXPECT_EQ(MessageOf(3), "QXSIM_SetKeyboard: the driver ended its process with status 0");

        BehaveWell();
        const Outcome again = RunJob({"--jobs", jobs});
        EXPECT_EQ(again.status, 0) << again.err;
        EXPECT_EQ(Results(), "done done done done done");
        EXPECT_EQ(TillIn("1.qxk") + TillIn("3.qxk"), "001003");
        for (const char* file : {"1.qxk", "2.qxk", "3.qxk", "4.qxk", "job.json.report.json"})
            std::filesystem::remove(folder / file);
    }
}

// The drivers of keyboards a and b wait for each other: run in sequence they would wait forever,
// and a second unit of the same keyboard run in between would find it in use.
TEST_F(BatchProcesses, UnitsWorkAtOnceButThoseOfOnePortTakeTurns) {
    job["units"] = Json::array();
    for (const auto& [name, keyboard] : {std::pair("1", "a.qxk"), {"2", "a.qxk"}, {"3", "b.qxk"}})
        AddUnit(name, keyboard);
    job["units"][0]["identifier"] = IdentifierIn("a.qxk");
    job["units"][1]["identifier"] = "{01234567-89AB-CDEF-0123-456789ABCDEF}";
    Behave("a", "QXCFG_ImageLoad meet " + File("b.qxk.here"));
    Behave("b", "QXCFG_Init meet " + File("a.qxk.here"));
    const Outcome outcome = RunJob({"--jobs", "2"});
    EXPECT_EQ(Results(), "done failed done") << outcome.err;
    EXPECT_EQ(Report()["units"][1]["error"]["code"], "keyboard-changed") << outcome.err;
    EXPECT_EQ(Json::parse(outcome.out)["thisRun"]["failed"], Json({"till 2"}));
}

// Keyboards that cannot be distinguished: without an identifier, or with the same one.
TEST_F(BatchProcesses, IndistinguishableKeyboardsDoNotInterfere) {
    Make("1.qxk");
    for (const char* copy : {"2.qxk", "3.qxk"})
        std::filesystem::copy_file(folder / "1.qxk", folder / copy);
    for (const unsigned unit : {3U, 4U})
        job["units"][unit]["model"] = "magnet";
    // The workers use the batch's layout and options.
    Json document = Json::parse(kDocument);
    document["magnetCard"]["tracks"][0]["header"] = "Ä ^Ä ${till}";
    document["layeredFuncKeys"] = {{"keys", Json::array()}};
    Write("till.json", document.dump());
    job["layout"] = "german.qxl";
    const Outcome outcome = RunJob({"--jobs", "5", "--skip-absent"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    for (const char* name : {"1", "2", "3"})
        EXPECT_EQ(TillIn(std::string(name) + ".qxk"), std::string("00") + name);
    std::set<std::string> backups;
    const Json report = Report();
    for (const Json& unit : report["units"])
        backups.insert(unit["backup"].get<std::string>());
    EXPECT_EQ(backups.size(), 5U);
    EXPECT_EQ(RunJob({"--jobs", "5"}).status, 6);
    EXPECT_EQ(Results(), "done done done failed failed");
}

TEST_F(BatchProcesses, AWorkerThatDiesCostsItsUnit) {
    Behave("2", "QXCFG_ImageLoad kill-parent");
    const Outcome outcome = RunJob({"--jobs", "2"});
    EXPECT_EQ(outcome.status, 4) << outcome.err;
    EXPECT_EQ(Results(), "done failed done done done");
    EXPECT_NE(MessageOf(1).find("crashed (signal 9, Killed)"), std::string::npos) << MessageOf(1);
    BehaveWell();
    EXPECT_EQ(RunJob({"--jobs", "2"}).status, 0);
}

// The second unit ends after the signal.
TEST_F(BatchProcesses, NoUnitBeginsAfterASignalAndThoseThatHaveBegunEnd) {
    Behave("1", "QXCFG_ImageLoad terminate " + std::to_string(files::ProcessId()));
    Behave("2", "QXCFG_ImageLoad meet " + File("1.qxk.here"));
    EXPECT_EQ(RunJob({"--jobs", "2"}).status, 1);
    EXPECT_EQ(Results(), "done done not done not done not done");
    EXPECT_EQ(TillIn("1.qxk") + TillIn("2.qxk"), "001002");
}

// A batch killed during a write leaves its records, and no running driver.
TEST_F(BatchProcesses, AKilledBatchIsResumed) {
    Make("2.qxk");
    setenv("XDG_DATA_HOME", (folder / "").c_str(), 1); // for both programs
    std::filesystem::create_directories(folder / "data");
    std::filesystem::create_directory_symlink(folder / "data", folder / "qxcontrols");
    Behave("2", "QXCFG_ImageSave half");
    const process::Ending killed = RunProgram({});
    unsetenv("XDG_DATA_HOME");
    EXPECT_EQ(killed.signal, SIGKILL) << killed.status;
    EXPECT_EQ(Results(), "done not done not done not done not done");
    EXPECT_EQ(TillIn("2.qxk"), "?");
    BehaveWell();
    const Outcome resumed = RunJob();
    EXPECT_EQ(resumed.status, 0) << resumed.err;
    EXPECT_TRUE(Report()["units"][1]["rolledBack"]) << resumed.err;
    EXPECT_EQ(TillIn("2.qxk"), "002");
}

} // namespace qx::test
