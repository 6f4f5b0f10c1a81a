// Refused commands: their exit status and message, and that nothing is changed or lost.
#include "CommandLine.h"

#include "host/Json.h"
#include "support/HostileDisk.h"

#include <algorithm>
#include <map>
#include <streambuf>

namespace qx::test {

using host::Json;

// Each refusal has its kind, place and message, identical in JSON and on standard error, and leaves
// the keyboard and the preferences unchanged.
TEST(Refusals, NameTheErrorAndChangeNothing) {
    CommandLine keyboard;
    const std::string invalid = keyboard.Write(
        "invalid.json",
        R"({"format": "qx-configuration", "version": 1, "commonKeyboard": {"outputDelay": 999}})");
    keyboard.Done({"prefs", "set", "AutoSave", "True"});
    const std::string preferences = files::ReadFile(keyboard.File("settings.ini"));
    const std::string before = keyboard.Memory();
    struct Case {
        std::vector<std::string> arguments;
        int status;
        const char* code;
        const char* place; // null: none
        std::string words;
    };
    const char* const delay = "/commonKeyboard/outputDelay";
    const Case cases[] = {
        {{"validate", invalid}, 6, "document-invalid", delay, invalid + ": " + delay + ": 999"},
        {{"download", invalid}, 6, "document-invalid", delay, invalid + ": " + delay + ": 999"},
        {{"diff", invalid}, 6, "document-invalid", delay, "999"},
        {{"sheet", "-o", keyboard.File("x.pdf"), invalid}, 6, "document-invalid", delay, "999"},
        {{"sheet", "-o", keyboard.File("x.pdf"), "--set", "d=1"}, 2, "usage", nullptr, "${d}"},
        {{"sheet", "-o", keyboard.File("x.txt")}, 2, "usage", nullptr, "x.txt"},
        {{"validate", keyboard.File("missing.json")}, 4, "file-failed", nullptr, "missing.json"},
        {{"validate", "/dev/zero"}, 4, "file-failed", nullptr, "/dev/zero"},
        {{"layer", "10"}, 2, "usage", nullptr, "10 is not a whole number from 0 to 9"},
        {{"layer", "3x"}, 2, "usage", nullptr, "3x is not a whole number from 0 to 9"},
        {{"recover", "--finish", "--rollback"},
         2,
         "usage",
         nullptr,
         "--finish excludes --rollback"},
        {{"recover", "--finish", "--forget"}, 2, "usage", nullptr, "--finish excludes --forget"},
        {{"show", "nonsense"}, 2, "usage", nullptr, "the sections are commonKeyboard, magnetCard"},
        {{"show", "funcKeys4620"}, 2, "usage", nullptr, "this keyboard has no section"},
        {{"prefs", "get", "Nonsense"}, 2, "usage", nullptr, "\"Nonsense\" (see qxconf prefs list)"},
        {{"prefs", "set", "KeyFontSize", "70000"}, 2, "usage", nullptr, "expected a 16-bit number"},
        {{"prefs", "set", "AutoSave", "perhaps"},
         2,
         "usage",
         nullptr,
         "\"perhaps\" is not a valid AutoSave: expected True or False"},
        {{"rom", "load", keyboard.File("missing.rom")},
         4,
         "transfer-failed",
         nullptr,
         "loading the firmware from " + keyboard.File("missing.rom") + " failed"},
        {{"codepage", "compare", keyboard.File("missing.cp")},
         4,
         "file-failed",
         nullptr,
         "missing.cp"},
        {{"codepage", "compare", keyboard.Write("short.cp", "abc")},
         4,
         "file-failed",
         nullptr,
         "it has 3 bytes"},
        {{"--layout", "nowhere.qxl", "validate", invalid},
         6,
         "layout-invalid",
         nullptr,
         "french.qxl, german.qxl, spanish.qxl, uk.qxl, us.qxl"},
        {{"backup", "restore", "nowhere"}, 2, "usage", nullptr, "nowhere"},
        {{"upload", "-o", keyboard.File("keyboard.qxk")},
         2,
         "usage",
         nullptr,
         "keyboard.qxk is the file of a simulated keyboard"},
        {{"test-drive", "swipe"}, 2, "usage", nullptr, "give --track1 to --track4"},
        {{"test-drive", "swipe", "--track1", "x", "--wrong-lrc", "2"},
         2,
         "usage",
         nullptr,
         "give --track2"},
        {{"test-drive", "swipe", "--track1", "\xFF"}, 2, "usage", nullptr, "--track1: not UTF-8"},
        {{"test-drive", "pos", "106"}, 2, "usage", nullptr, "from 1 to 105"},
        {{"test-drive", "scan", "x", "--symbology", "CommonSettings"},
         2,
         "usage",
         nullptr,
         "--symbology"},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.arguments[0] + " " + each.arguments.back());
        const Outcome text = keyboard.Run(each.arguments);
        EXPECT_EQ(text.status, each.status);
        EXPECT_EQ(text.out, "");
        EXPECT_NE(text.err.find(each.words), std::string::npos) << text.err;
        std::vector<std::string> arguments = {"--json"};
        arguments.insert(arguments.end(), each.arguments.begin(), each.arguments.end());
        const Outcome outcome = keyboard.Run(arguments);
        EXPECT_EQ(outcome.status, each.status);
        const Json result = Json::parse(outcome.out, nullptr, false);
        ASSERT_TRUE(result.is_object()) << outcome.out;
        EXPECT_EQ(result["schema"], 1);
        const Json& error = result["error"];
        EXPECT_EQ(error["code"], each.code);
        EXPECT_EQ(error["place"], each.place == nullptr ? Json() : Json(each.place));
        // Standard error also has the command or option that helps.
        EXPECT_TRUE(outcome.err.starts_with("qxconf: " + error["message"].get<std::string>()))
            << outcome.err;
        EXPECT_TRUE(error["cause"].is_string());
        EXPECT_NE(outcome.err.find(each.words), std::string::npos) << outcome.err;
    }
    EXPECT_TRUE(keyboard.Memory() == before);
    EXPECT_EQ(files::ReadFile(keyboard.File("settings.ini")), preferences);

    const Outcome opening = keyboard.Run({"--json", "identify"}, {2, 77});
    EXPECT_EQ(opening.status, 3);
    const Json error = Json::parse(opening.out)["error"];
    EXPECT_EQ(error["code"], "keyboard-not-opened");
    EXPECT_EQ(error["status"], 77);
    EXPECT_NE(opening.err.find("QXCFG_Init gave status 77"), std::string::npos) << opening.err;
    const Outcome magnet = CommandLine(Driver::InProcess, "magnet").Run({"--json", "layer", "3"});
    EXPECT_EQ(magnet.status, 4);
    EXPECT_NE(magnet.err.find("no layered function keys"), std::string::npos) << magnet.err;
}

TEST(Refusals, UsageErrorsNameTheErrorAndTheHelp) {
    CommandLine keyboard;
    const std::pair<std::vector<std::string>, const char*> cases[] = {
        {{"bogus"}, "unknown command \"qxconf bogus\" (see qxconf --help)"},
        {{"uplaod"}, "unknown command \"qxconf uplaod\"; did you mean upload?"},
        {{"prefs", "bogus"}, "unknown command \"qxconf prefs bogus\" (see qxconf prefs --help)"},
        {{"prefs"}, "qxconf prefs needs a command (see qxconf prefs --help)"},
        {{"help", "prefs", "sett"}, "\"qxconf prefs sett\"; did you mean set? (see qxconf prefs"},
        {{"--bogus"}, "unknown option --bogus (see qxconf --help)"},
        {{"download", "--dryrun", "x"}, "unknown option --dryrun; did you mean --dry-run?"},
        {{"identify", "--jsno"}, "unknown option --jsno; did you mean --json?"},
        {{"validate", "x", "y"}, "qxconf validate: unexpected argument \"y\""},
        {{"layer", "10"}, "(see qxconf layer --help)"},
        {{"position", "watch", "--count", "0"}, "--count: 0 is not a whole number above 0"},
        {{"validate", ""}, "FILE: is empty (see qxconf validate --help)"},
        {{"upload", "-o", ""}, "--output: is empty"},
        {{"rom", "save", ""}, "FILE: is empty"},
        {{"--keyboard", "", "identify"}, "--keyboard: is empty"},
        {{"--driver", "", "identify"}, "--driver: is empty"},
    };
    for (const auto& [arguments, message] : cases) {
        const Outcome outcome = keyboard.Run(arguments);
        EXPECT_EQ(outcome.status, 2);
        EXPECT_NE(outcome.err.find(message), std::string::npos) << outcome.err;
    }
    std::ostringstream out;
    std::ostringstream err;
    EXPECT_EQ(cli::Run({}, {out, err}), 2);
    EXPECT_EQ(out.str(), "");
    EXPECT_NE(err.str().find("qxconf help COMMAND"), std::string::npos);
}

// Each refusal is a single error, and every file is unchanged.
TEST(Refusals, WhatTheDiskRefusesLosesNothing) {
    CommandLine keyboard;
    // The other user may not be able to read the project's folder.
    keyboard.layouts = keyboard.File("layouts/");
    std::filesystem::copy(QX_LAYOUTS, keyboard.layouts);
    std::filesystem::permissions(keyboard.layouts, std::filesystem::perms::all);
    for (const auto& layout : std::filesystem::directory_iterator(keyboard.layouts))
        std::filesystem::permissions(layout.path(), std::filesystem::perms::all);
    keyboard.Done({"upload", "-o", keyboard.File("till.json")});
    keyboard.Done({"param", "save", keyboard.File("till.par")});
    keyboard.Done({"prefs", "set", "AutoSave", "False"});
    const std::string delay = keyboard.Write(
        "delay.json",
        R"({"format": "qx-configuration", "version": 1, "commonKeyboard": {"outputDelay": 77}})");
    std::filesystem::create_directory(keyboard.folder / "closed");
    const auto content = [&] {
        std::map<std::string, std::string> files;
        for (const auto& entry :
             std::filesystem::recursive_directory_iterator(keyboard.folder / "."))
            if (entry.is_regular_file() && entry.path().extension() != ".lock" &&
                entry.path().extension() != ".writing")
                files[entry.path().string()] = files::ReadFile(entry.path());
        return files;
    };
    const auto before = content();
    const auto refuses = [&](const std::vector<std::string>& arguments) {
        const Outcome outcome = keyboard.Run(arguments);
        EXPECT_EQ(outcome.status, 4) << arguments[0] << " " << arguments[1] << ": " << outcome.err;
        EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1) << outcome.err;
        EXPECT_EQ(outcome.out, "");
    };
    {
        const FullDisk full(0);
        refuses({"upload", "-o", keyboard.File("till.json")});
        refuses({"download", delay});
        refuses({"param", "save", keyboard.File("till.par")});
    }
    {
        const ReadOnlyFolder closed(keyboard.folder / "closed");
        refuses({"upload", "-o", keyboard.File("closed/till.json")});
        refuses({"param", "save", keyboard.File("closed/till.par")});
    }
    refuses({"upload", "-o", keyboard.File("vanished/till.json")});
    refuses({"param", "save", keyboard.File("vanished/till.par")});
    EXPECT_TRUE(content() == before);
    {
        const FullDisk full(0); // a program that continued would store the preference soon
        refuses({"prefs", "set", "AutoSave", "True"});
        EXPECT_TRUE(content() == before);
    }
}

TEST(Refusals, AnUndeliveredResultIsAFailure) {
    class Full : public std::streambuf {
    } nowhere;
    CommandLine keyboard;
    for (const char* argument : {"identify", "--help"}) {
        std::ostream out(&nowhere);
        std::ostringstream err;
        EXPECT_EQ(
            cli::Run({"--keyboard", keyboard.File("keyboard.qxk"), "--layouts", QX_LAYOUTS,
                      "--settings", keyboard.File("settings.ini"), "--model", "full", argument},
                     {out, err}),
            4);
        EXPECT_NE(err.str().find("standard output could not be written"), std::string::npos);
    }
}

} // namespace qx::test
