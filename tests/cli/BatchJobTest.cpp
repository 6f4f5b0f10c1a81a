// Jobs and reports of batches: what is refused, what is kept.
#include "BatchJob.h"

namespace qx::test {

namespace {

class JobFile : public BatchJob {
protected:
    struct Row {
        const char* patch; // members that are put into the job, or into its second unit
        const char* place;
        const char* code;                     // of the first fault
        std::vector<const char*> arguments{}; // each is, or is in, one of the fault
    };
    // No row's job is accepted, and no keyboard is touched.
    void ExpectRefused(const std::vector<Row>& rows,
                       const std::function<Json&(Json& whole)>& patched) {
        const Json whole = job;
        for (const Row& row : rows) {
            job = whole;
            const Json patch = Json::parse(row.patch);
            for (const auto& [key, value] : patch.items())
                patched(job)[key] = value;
            const Outcome outcome = RunJob();
            EXPECT_EQ(outcome.status, 6) << row.patch << outcome.err;
            const Json error = Json::parse(outcome.out)["error"];
            EXPECT_EQ(error["place"], row.place) << outcome.err;
            const Json fault = error["faults"][0];
            EXPECT_EQ(fault["place"], row.place) << fault;
            EXPECT_EQ(fault["code"], row.code) << fault;
            const auto arguments = fault["arguments"].get<std::vector<std::string>>();
            ASSERT_EQ(arguments.size(), row.arguments.size()) << fault;
            for (std::size_t i = 0; i < arguments.size(); ++i)
                EXPECT_NE(arguments[i].find(row.arguments[i]), std::string::npos) << fault;
            EXPECT_EQ(opened, "");
        }
        job = whole;
    }
    void PutIntoDocument(const char* key, const Json& value) {
        Json document = Json::parse(kDocument);
        document[key] = value;
        Write("till.json", document.dump());
    }
};

} // namespace

TEST_F(JobFile, FaultsAreNamedBeforeAKeyboardIsTouched) {
    ExpectRefused(
        {
            {R"({"format": "x"})", "/format", "other-format", {"qx-batch"}},
            {R"({"version": 2})", "/version", "unknown-version", {"2", "1"}},
            {R"({"unit": []})", "/unit", "unknown-member", {"\"unit\""}},
            {R"({"units": []})", "/units", "empty-list"},
            {R"({"units": [7]})", "/units/0", "not-an-object", {"7"}},
            {R"({"document": "none.json"})",
             "/units/0/document",
             "document-unusable",
             {"none.json"}},
            {R"({"document": null})", "/document", "not-a-text", {"null"}},
            {R"({"variables": {"store": "7"}})", "/variables/store", "variable-unused", {"store"}},
            {R"({"variables": {"till": 7}})", "/variables/till", "not-a-text", {"7"}},
            {R"({"variables": {"1": "7"}})", "/variables/1", "not-a-variable", {"1"}},
            {R"({"bench": {"model": "full"}})", "/bench/model", "model-without-keyboard"},
            {R"({"bench": {"keyboard": "port.qxk"}})", "/units/0", "keyboard-at-bench"},
        },
        [](Json& whole) -> Json& { return whole; });
    // All of them are named.
    for (const unsigned unit : {0U, 2U})
        job["units"][unit]["variables"]["a"] = "1";
    job["variables"]["b"] = "2";
    const Json error = Json::parse(RunJob().out)["error"];
    ASSERT_EQ(error["faults"].size(), 3U) << error;
    EXPECT_EQ(error["faults"][1]["place"], "/units/2/variables/a");
    EXPECT_EQ(error["faults"][2]["place"], "/variables/b");
    EXPECT_FALSE(std::filesystem::exists(folder / "job.json.report.json"));
}

TEST_F(JobFile, FaultsOfUnitsAreNamed) {
    ExpectRefused(
        {
            {R"({"name": "till 1"})", "/units/1/name", "name-taken"},
            {R"({"keyboard": "./x/../1.qxk"})", "/units/1/keyboard", "keyboard-taken", {"till 1"}},
            {R"({"keyboard": ""})", "/units/1/keyboard", "empty-text"},
            {R"({"driver": 4})", "/units/1/driver", "not-a-text", {"4"}},
            {R"({"till": "001"})", "/units/1/till", "unknown-member", {"\"till\""}},
            {R"({"identifier": "7"})", "/units/1/identifier", "not-an-identifier", {"7"}},
            {R"({"variables": {}})",
             "/units/1",
             "fault-in-document",
             {"till 2", "till.json", "/magnetCard/tracks/0/header", "a value is missing for till"}},
            {R"({"variables": {"till": "€"}})",
             "/units/1",
             "fault-in-document",
             {"till 2", "till.json", "/magnetCard/tracks/0/header", "no key of the layout types"}},
            {R"({"variables": {"till": "1", "tlil": "1"}})",
             "/units/1/variables/tlil",
             "variable-unused-by-unit",
             {"till 2", "till.json", "tlil"}},
        },
        [](Json& whole) -> Json& { return whole["units"][1]; });
}

TEST_F(JobFile, OptionsThatCannotBeCombinedAreRefused) {
    EXPECT_EQ(RunJob({"--bench"}).status, 2);
    EXPECT_EQ(RunJob({"--jobs", "0"}).status, 2);
    EXPECT_EQ(RunJob({"--timeout", "0"}).status, 2);
    EXPECT_EQ(RunJob({"--bench", "--jobs", "2"}).status, 2);
    for (const char* option : {"--driver", "--keyboard", "--model"}) {
        const Outcome outcome = RunJob({option, File("1.qxk")});
        EXPECT_EQ(outcome.status, 2) << option;
        EXPECT_NE(outcome.err.find("--driver, --keyboard and --model cannot be used with batch"),
                  std::string::npos)
            << outcome.err;
    }
    EXPECT_EQ(Run({"batch", File("none.json")}).status, 4);
    EXPECT_EQ(opened, "");
}

// The first batch of many: the document was read from one till, and is for all of them.
TEST_F(JobFile, AnUploadedDocumentLeavesEachKeyboardItsIdentifier) {
    std::map<std::string, std::string> own;
    for (const char* name : {"1", "2", "3"})
        own[name] = IdentifierIn(std::string(name) + ".qxk");
    Json document = Json::parse(kDocument);
    document["layeredFuncKeys"] = Json::parse(
        Run({"--json", "--keyboard", File("1.qxk"), "upload"}).out)["document"]["layeredFuncKeys"];
    document["layeredFuncKeys"]["keys"] =
        Json::parse(R"([{"layer": 0, "key": 3, "sequence": [30, 158], "description": "Cash"}])");
    Write("till.json", document.dump());
    Write("other.json", document.dump(3)); // the same identifier, in another document
    job["units"][2]["document"] = "other.json";
    const Outcome outcome = RunJob();
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    for (const char* name : {"till.json", "other.json"})
        EXPECT_NE(outcome.err.find(std::string(name) + " has the identifier " + own["1"]),
                  std::string::npos)
            << outcome.err;
    for (const auto& [name, identifier] : own)
        EXPECT_EQ(IdentifierIn(name + ".qxk"), identifier) << name;
    const Json report = Report();
    for (const Json& unit : report["units"])
        EXPECT_EQ(unit["identifier"], own[unit["name"].get<std::string>().substr(5)]);

    // A document for one keyboard gives it its identifier.
    job["units"].erase(2);
    job["units"].erase(0);
    const std::string warning = "the keyboard gets another keyboard's identifier from " +
                                File("till.json") + "; keyboards keep their own";
    EXPECT_NE(RunJob({"--dry-run"}).err.find("till 2: unless it has it already, " + warning),
              std::string::npos);
    const Outcome taken = RunJob({"--quiet"});
    EXPECT_EQ(taken.status, 0);
    EXPECT_NE(taken.err.find("till 2: " + warning), std::string::npos) << taken.err;
    EXPECT_EQ(IdentifierIn("2.qxk"), own["1"]);
    EXPECT_EQ(RunJob({"--dry-run"}).err, "") << "it is done";
    std::filesystem::remove(folder / "job.json.report.json");
    EXPECT_EQ(RunJob({"--quiet"}).err, "") << "it has that identifier";
    std::filesystem::remove(folder / "job.json.report.json");
    job["units"][0]["identifier"] = own["1"];
    EXPECT_EQ(RunJob({"--dry-run"}).err, "") << "the unit is the keyboard of that identifier";
}

TEST_F(JobFile, OneIdentifierIsNotGivenTwice) {
    PutIntoDocument("layeredFuncKeys", {{"guid", "{01234567-89AB-CDEF-0123-456789ABCD${till}}"},
                                        {"keys", Json::array()}});
    for (const unsigned unit : {0U, 1U, 2U})
        job["units"][unit]["variables"]["till"] = unit == 0 ? "11" : "22";
    const Outcome refused = RunJob();
    EXPECT_EQ(refused.status, 6);
    EXPECT_NE(refused.err.find("till 3: the document gives the keyboard the identifier that till 2 "
                               "gets"),
              std::string::npos)
        << refused.err;
    EXPECT_EQ(opened, "");
    job["units"][2]["variables"]["till"] = "33";
    job["units"][0]["identifier"] = "{01234567-89AB-CDEF-0123-456789ABCD12}";
    EXPECT_EQ(RunJob().status, 6) << "it gives the keyboard another one than the unit has";
    job["units"][0].erase("identifier");
    EXPECT_EQ(RunJob().status, 0);
    EXPECT_EQ(IdentifierIn("3.qxk"), "{01234567-89AB-CDEF-0123-456789ABCD33}");
}

TEST_F(JobFile, WhatWasSkippedIsDoneWhenItNoLongerIs) {
    PutIntoDocument("layeredFuncKeys", {{"keys", Json::array()}});
    Make("1.qxk", "magnet");
    job["units"].erase(2);
    job["units"].erase(1);
    job["units"][0]["model"] = "magnet";
    EXPECT_EQ(RunJob({"--skip-absent"}).status, 0);
    EXPECT_EQ(Results(), "done");
    const Outcome refused = RunJob();
    EXPECT_EQ(refused.status, 6) << refused.err;
    EXPECT_EQ(Results(), "failed");
    EXPECT_EQ(Report()["units"][0]["error"]["code"], "document-invalid");
}

TEST_F(JobFile, AReportKeepsUnitsThatLeaveTheJob) {
    ASSERT_EQ(RunJob().status, 0);
    const Json second = Report()["units"][1];
    const Json unit = job["units"][1];
    job["units"].erase(1);
    EXPECT_EQ(RunJob().status, 0);
    EXPECT_EQ(opened, "");
    EXPECT_EQ(Report()["done"], 2);
    EXPECT_EQ(Report()["formerUnits"], Json::array({second}));
    EXPECT_EQ(RunJob().status, 0); // also in the next run
    job["units"].insert(job["units"].begin(), unit);
    EXPECT_EQ(RunJob().status, 0);
    EXPECT_EQ(opened, "");
    EXPECT_EQ(Report()["units"][0], second);
    EXPECT_EQ(Report()["formerUnits"], Json::array());
}

TEST_F(JobFile, AReportIsOfOneJob) {
    ASSERT_EQ(RunJob().status, 0);
    Write("job.v2", job.dump());
    EXPECT_EQ(Run({"batch", File("job.v2")}).status, 0);
    EXPECT_EQ(opened, "123");
    EXPECT_TRUE(std::filesystem::exists(folder / "job.v2.report.json"));
}

TEST_F(JobFile, ADamagedReportIsKeptAndNothingIsTouched) {
    ASSERT_EQ(RunJob().status, 0);
    const std::string text = files::ReadFile(folder / "job.json.report.json");
    const auto changed = [&](const std::string& from, const std::string& to) {
        std::string report = text;
        return report.replace(report.find(from), from.size(), to);
    };
    struct Row {
        std::string report;
        const char* message;
    };
    std::vector<Row> rows = {
        {text + "x", ""},
        {R"({"format": "qx-batch-report"})", ""},
        {changed(R"("version": 1)", R"("version": 9)"), "version 9"},
        {changed(R"("result": "done")", R"("result": "dune")"),
         "/units/0/result: \"dune\" is not one of: not done, done, failed"},
        {changed(R"("error": null)", R"("error": {"cause": "stopped"})"),
         "/units/0/error: {\"cause\":\"stopped\"} is not one of: null"},
        {changed(R"("wanted": ")", R"("wonted": ")"), "/units/0: \"wanted\" is missing"},
        {changed(R"("bytesSent": )", R"("bytesSent": "7", "was": )"),
         "/units/0/bytesSent: \"7\" is not a whole number"},
        {changed(R"("rolledBack": false)", R"("rolledBack": 0)"),
         "/units/0/rolledBack: 0 is neither true nor false"},
        {changed(R"("units": [)", R"("units": 7, "was": [)"), "/units: 7 is not a list"},
        {changed(R"("units": [)", R"("units": [7, )"), "/units/0: 7 is not an object"},
    };
    for (std::size_t length = 0; length + 2 < text.size(); length += 161)
        rows.push_back({text.substr(0, length), ""});
    for (const Row& row : rows) {
        Write("job.json.report.json", row.report);
        const Outcome outcome = RunJob();
        ASSERT_EQ(outcome.status, 4) << row.report;
        EXPECT_NE(outcome.err.find("job.json.report.json"), std::string::npos) << outcome.err;
        EXPECT_NE(outcome.err.find("if you move it away"), std::string::npos) << outcome.err;
        EXPECT_NE(outcome.err.find(row.message), std::string::npos) << outcome.err;
        EXPECT_EQ(outcome.err.find("json.exception"), std::string::npos) << outcome.err;
        EXPECT_EQ(opened, "");
        EXPECT_EQ(files::ReadFile(folder / "job.json.report.json"), row.report);
    }
}

} // namespace qx::test
