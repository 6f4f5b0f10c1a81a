// The report about everything between the program and the keyboard.
#include "CommandLine.h"

#include "files/SystemTexts.h"
#include "host/Json.h"

#include <algorithm>

namespace qx::test {

using host::Json;

namespace {

const Json* CallOf(const Json& report, const std::string& function) {
    const Json& calls = report.at("calls");
    const auto found = std::find_if(calls.begin(), calls.end(),
                                    [&](const Json& call) { return call["function"] == function; });
    return found == calls.end() ? nullptr : &*found;
}

} // namespace

TEST(Doctor, ReportsEverythingExceptStoredSettings) {
    CommandLine keyboard;
    keyboard.Done({"download", keyboard.Write("secret.json", R"({
        "format": "qx-configuration", "version": 1,
        "layeredFuncKeys": {"guid": "{00112233-4455-6677-8899-AABBCCDDEEFF}", "keys": [
            {"layer": 0, "key": 1, "sequence": [2, 130], "description": "Geheimnis"}]}})")});
    const std::string before = keyboard.Memory();
    const std::string text = keyboard.Done({"--json", "doctor"});
    EXPECT_EQ(keyboard.Memory(), before);
    const Json report = Json::parse(text);
    EXPECT_EQ(report["problems"], Json::array());
    EXPECT_EQ(report["program"]["wordSize"], 8 * sizeof(void*));
    EXPECT_EQ(report["directory"].size(), 8U);
    EXPECT_EQ((*CallOf(report, "QXCFG_ConfigDirectorySize"))["result"], 8);
    EXPECT_EQ((*CallOf(report, "QXCFG_ConfigDirectoryGetEntry"))["times"], 8);
    EXPECT_EQ((*CallOf(report, "QXCFG_ImageLoad"))["result"], 0);
    EXPECT_EQ(CallOf(report, "QXCFG_ImageSave"), nullptr);
    int programmable = 0;
    for (const Json& area : report["areas"])
        programmable += area["section"] == "freeProgKeys" ? area["size"].get<int>() : 0;
    EXPECT_EQ(programmable, 57 * 32);
    EXPECT_EQ(report["records"]["backups"], 1);
    EXPECT_EQ(report["layouts"]["chosen"], "1033");
    for (const char* const stored : {"Geheimnis", "00112233", "0011-2233", "CCDDEEFF"})
        EXPECT_EQ(text.find(stored), std::string::npos) << stored;
    EXPECT_NE(keyboard.Done({"doctor"}).find("\nproblems\n  none\n"), std::string::npos);
}

TEST(Doctor, ContinuesAfterProblemsAndReturnsTheFirst) {
    CommandLine keyboard;
    keyboard.Done({"identify"});
    keyboard.layouts = keyboard.File("layouts");
    std::filesystem::create_directory(keyboard.layouts);
    for (const auto& layout : std::filesystem::directory_iterator(QX_LAYOUTS))
        files::WriteFileAtomically(keyboard.folder / "layouts" / layout.path().filename(),
                                   files::ReadFile(layout.path()));
    files::WriteFileAtomically(keyboard.File("layouts/zulu.qxl"), "no layout");
    files::WriteFileAtomically(keyboard.File("settings.ini"), "\xFF\x01 no settings");
    std::filesystem::create_directories(keyboard.folder / "data" / "journal");
    files::WriteFileAtomically(
        keyboard.folder / "data" / "journal" / "20260101T000000.000Z.journal.json", "torn");
    const Outcome outcome = keyboard.Run({"--json", "doctor"}, {2, 77});
    EXPECT_EQ(outcome.status, 3);
    const Json report = Json::parse(outcome.out);
    EXPECT_EQ((*CallOf(report, "QXCFG_Init"))["result"], 77);
    std::string problems;
    for (const Json& problem : report["problems"])
        problems += problem["code"].get<std::string>() + ": " +
                    problem["message"].get<std::string>() + "\n";
    for (const char* const part :
         {"keyboard-not-opened: ", "QXCFG_Init", "status 77", "layout-invalid: ", "zulu.qxl",
          "settings.ini", "20260101T000000.000Z.journal.json"})
        EXPECT_NE(problems.find(part), std::string::npos) << part << '\n' << problems;
    EXPECT_EQ(report["problems"][0]["code"], "keyboard-not-opened");
}

TEST(Doctor, DescribesTheDriverLibrary) {
    const TempFolder folder;
    const std::string file = (folder / "till.qxk").string();
    ASSERT_EQ(RunOn(folder, {"--keyboard", file, "--model", "full", "identify"}).status, 0);
    files::WriteFileAtomically(file + ".wild", "QXCFG_ImageLoad crash");
    const Outcome crash =
        RunOn(folder, {"--driver", QX_WILD_DRIVER, "--keyboard", file, "--json", "doctor"});
    EXPECT_EQ(crash.status, 4);
    const Json report = Json::parse(crash.out);
    EXPECT_EQ(report["driver"]["library"],
              files::TextOf(std::filesystem::absolute(QX_WILD_DRIVER)));
    EXPECT_EQ(report["driver"]["wordSize"], 8 * sizeof(void*));
    EXPECT_EQ(report["driver"]["size"], std::filesystem::file_size(QX_WILD_DRIVER));
    EXPECT_EQ(report["keyboard"]["name"], "QX-POS-FULL");
    EXPECT_EQ(report["problems"][0]["code"], "transfer-failed");
    EXPECT_NE(report["problems"][0]["message"].get<std::string>().find("crashed"),
              std::string::npos);

    const std::string text = (folder / "text.dll").string();
    files::WriteFileAtomically(text, "abc");
    const Outcome none = RunOn(folder, {"--driver", text, "doctor"});
    EXPECT_EQ(none.status, 3);
    for (const char* const part :
         {"3 bytes", "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad",
          "none: this is not a library", " cannot be loaded"})
        EXPECT_NE(none.out.find(part), std::string::npos) << part << '\n' << none.out;
}

} // namespace qx::test
