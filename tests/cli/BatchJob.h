// BatchJob: a batch of simulated keyboards, run through the command line.
#pragma once

#include "CommandLine.h"

#include "host/Json.h"

#include <csignal>
#include <map>

namespace qx::test {

using host::Json;

// Uses the variable "till".
inline constexpr const char* kDocument = R"({"format": "qx-configuration", "version": 1,
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

// Simulated keyboards as files of one folder, and a job for three of them.
class BatchJob : public testing::Test {
protected:
    BatchJob() {
        Write("till.json", kDocument);
        for (const char* name : {"1", "2", "3"})
            job["units"].push_back({{"name", std::string("till ") + name},
                                    {"keyboard", std::string(name) + ".qxk"},
                                    {"model", "full"},
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
            if (whileOpening)
                whileOpening(choice.keyboard.stem().string());
            if (const auto port = ports.find(choice.driver.filename().string());
                port != ports.end())
                return setup::OpenDriver({{}, folder / port->second, "full"});
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
        return Json::parse(files::ReadFile(folder / "job.json.report.json"));
    }
    // "done failed done"
    [[nodiscard]] std::string Results() const {
        std::string results;
        const Json report = Report();
        for (const Json& unit : report["units"])
            results += (results.empty() ? "" : " ") + unit["result"].get<std::string>();
        return results;
    }
    // The identifier of the keyboard in this file.
    std::string IdentifierIn(const std::string& keyboard) {
        return Json::parse(
            Run({"--json", "--keyboard", File(keyboard), "--model", "full", "upload"})
                .out)["document"]["layeredFuncKeys"]["guid"];
    }
    // The till's number if the keyboard in this file holds the whole document with it; "?" for any
    // other configuration.
    std::string TillIn(const std::string& keyboard) {
        for (const char* till : {"001", "002", "003"})
            if (Run({"--layout", job.value("layout", "us.qxl"), "--keyboard", File(keyboard),
                     "diff", "--set", std::string("till=") + till, File("till.json")})
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
    // Creates a keyboard; moves one to another file.
    void Make(const std::string& name, const std::string& model = "full") {
        EXPECT_EQ(Run({"--keyboard", File(name), "--model", model, "identify"}).status, 0);
    }
    void Move(const std::string& from, const std::string& to) {
        std::filesystem::rename(folder / from, folder / to);
    }

    TempFolder folder{TempFolder::InMemory()};
    Json job = {{"format", "qx-batch"}, {"version", 1}, {"document", "till.json"}};
    std::map<std::string, std::string> ports; // by driver name: the keyboard behind it
    std::map<std::string, int> faults;        // by keyboard: the first driver call that fails
    std::string cut;                          // writes to this keyboard stop after 4 bytes
    std::string opened;                       // keyboards opened in the last run
    std::function<void(const std::string&)> whileOpening; // gets the keyboard; may be empty
    std::vector<std::function<void()>> pauses; // run one by one while a bench waits; then Ctrl+C
};

} // namespace qx::test
