// The options that select the keyboard, through the whole program, with real files.

#include "CommandLine.h"

#include "files/SystemTexts.h"

#include <cerrno>

namespace qx::test {

TEST(DriverSource, TheLibraryAndTheProgramKeepTheSameKeyboard) {
    const TempFolder folder;
    const std::string file = (folder / "till.qxk").string();
    const Outcome made =
        RunOn(folder, {"--keyboard", file, "--model", "magnet", "--json", "identify"});
    ASSERT_EQ(made.status, 0) << made.err;
    EXPECT_EQ(made.err, "");
    const Outcome loaded =
        RunOn(folder, {"--driver", QX_SIMULATOR_LIBRARY, "--keyboard", file, "--json", "identify"});
    ASSERT_EQ(loaded.status, 0) << loaded.err;
    EXPECT_EQ(loaded.out, made.out);
    EXPECT_EQ(RunOn(folder, {"--keyboard", file, "--model", "magnet", "identify"}).status, 0);
}

// A mistyped file name or model does not create a keyboard and is not ignored.
TEST(DriverSource, AKeyboardIsMadeOnlyWhenItsModelIsNamed) {
    const TempFolder folder;
    const std::string file = (folder / "till.qxk").string();
    const std::string typo = (folder / "tlil.qxk").string();
    ASSERT_EQ(RunOn(folder, {"--keyboard", file, "--model", "magnet", "identify"}).status, 0);
    const std::string before = files::ReadFile(file);
    for (const bool isLoaded : {false, true}) {
        const auto run = [&](std::vector<std::string> arguments) {
            if (isLoaded)
                arguments.insert(arguments.begin(), {"--driver", QX_SIMULATOR_LIBRARY});
            return RunOn(folder, arguments);
        };
        const Outcome absent = run({"--keyboard", typo, "identify"});
        EXPECT_EQ(absent.status, 3);
        EXPECT_EQ(absent.err,
                  "qxconf: there is no keyboard in " + typo + "; --model NAME creates one there\n");
        EXPECT_FALSE(std::filesystem::exists(typo));
        const Outcome other = run({"--keyboard", file, "--model", "full", "identify"});
        EXPECT_EQ(other.status, 2);
        EXPECT_NE(other.err.find(file + " holds a keyboard of the model QX-MAGNET"),
                  std::string::npos)
            << other.err;
        EXPECT_TRUE(files::ReadFile(file) == before);
    }
}

// The layout is the chosen one, or else the keyboard's own, or else the preferred one.
TEST(DriverSource, KeysHaveTheNamesOfTheNearestLayout) {
    const TempFolder folder;
    const std::string document = (folder / "till.json").string();
    files::WriteFileAtomically(document, R"({"format": "qx-configuration", "version": 1,
        "layeredFuncKeys": {"keys": [{"layer": 0, "key": 3, "sequence": "Ä ^Ä"}]}})");
    const auto run = [&](std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(),
                         {"--keyboard", (folder / "till.qxk").string(), "--model", "full"});
        return RunOn(folder, arguments);
    };
    EXPECT_EQ(run({"validate", document}).status, 6);
    EXPECT_EQ(run({"--layout", "german.qxl", "validate", document}).status, 0);
    const Outcome absent = run({"--layout", "german", "validate", document});
    EXPECT_EQ(absent.status, 6);
    EXPECT_EQ(absent.err.find("qxconf: there is no keyboard layout german; the layouts in "), 0U);
    EXPECT_NE(absent.err.find("german.qxl, "), std::string::npos) << absent.err;
    EXPECT_EQ(run({"prefs", "set", "PreferedKeyLang", "1031"}).status, 0);
    EXPECT_EQ(run({"validate", document}).status, 0);
    EXPECT_EQ(run({"--layout", "us.qxl", "validate", document}).status, 6);
    EXPECT_EQ(run({"download", document}).status, 6);
    EXPECT_EQ(run({"--layout", "german.qxl", "download", document}).status, 0);
    EXPECT_EQ(run({"show", "layeredFuncKeys"}).out.find("Ä ^Ä"), std::string::npos);
    EXPECT_NE(run({"--layout", "german.qxl", "show", "layeredFuncKeys"}).out.find("Ä ^Ä"),
              std::string::npos);
    const std::string faulty = (folder / "faulty.qxl").string();
    files::WriteFileAtomically(faulty, "1=1033\n1001=(1500,0,600,600)50  A\\\\Key A\n");
    const Outcome refused = run({"--layout", faulty, "validate", document});
    EXPECT_EQ(refused.status, 6);
    EXPECT_NE(refused.err.find("position code 1: the support is \"5\", not 0, 1 or 2"),
              std::string::npos)
        << refused.err;
}

// Errors are reported identically for the built-in and the loaded simulated keyboard.
TEST(DriverSource, ErrorsAreReportedIdentically) {
#ifdef _WIN32
    const int noFile = 2;
    const int noFolder = 3;
#else
    const int noFile = ENOENT;
    const int noFolder = ENOENT;
#endif
    const std::string fileIsMissing = files::ReasonOf({noFile, std::system_category()});
    const std::string folderIsMissing = files::ReasonOf({noFolder, std::system_category()});
    const TempFolder folder;
    const std::string file = (folder / "till.qxk").string();
    const std::string damaged = (folder / "damaged.qxk").string();
    files::WriteFileAtomically(damaged, "no keyboard");
    const std::string model = (folder / "model.json").string();
    files::WriteFileAtomically(model, "{}");
    struct Case {
        std::vector<std::string> arguments;
        int status;
        std::string message;
    };
    const Case cases[] = {
        {{"--keyboard", file, "--model", "nosuch", "identify"}, 6, "full, magnet, x1-4620"},
        {{"--keyboard", file, "--model", model, "identify"}, 6, "\"keyboard\" is missing"},
        {{"--keyboard", damaged, "identify"},
         3,
         "offset 0: a file of another kind, which does not begin with QXKEYB"},
        {{"--keyboard", (folder / "absent/till.qxk").string(), "--model", "full", "identify"},
         3,
         folderIsMissing},
        {{"--keyboard", file, "--model", "full", "convert", (folder / "nosuch.bin").string(),
          (folder / "new.rom").string(), "0", "0", "0"},
         4,
         "nosuch.bin cannot be read: " + fileIsMissing},
        {{"--keyboard", file, "--model", "full", "rom", "load", damaged},
         4,
         "offset 0: a file of another kind, which does not begin with QXPROG"},
    };
    for (const bool isLoaded : {false, true})
        for (Case each : cases) {
            if (isLoaded)
                each.arguments.insert(each.arguments.begin(), {"--driver", QX_SIMULATOR_LIBRARY});
            const Outcome run = RunOn(folder, each.arguments);
            EXPECT_EQ(run.status, each.status) << run.err;
            EXPECT_NE(run.err.find(each.message), std::string::npos) << run.err;
        }
    EXPECT_FALSE(std::filesystem::exists(folder / "new.rom"));
}

TEST(DriverSource, NoCommandReplacesAFileThatIsNotItsOwn) {
    const TempFolder folder;
    const std::string file = (folder / "till.qxk").string();
    const std::string other = (folder / "other.qxk").string();
    for (const std::string& each : {file, other})
        ASSERT_EQ(RunOn(folder, {"--keyboard", each, "--model", "full", "identify"}).status, 0);
    const std::string link = (folder / "link").string();
    std::filesystem::create_hard_link(file, link);
    const std::string binary = (folder / "firmware.bin").string();
    files::WriteFileAtomically(binary, "firmware");
    const std::string lock = file + ".lock";
    const std::string lockLink = (folder / "lock-link").string();
    std::filesystem::create_symlink(lock, lockLink);
    const std::string record = (folder / "data/locks/record").string();
    files::MakeFolder(folder / "data/locks");
    files::WriteFileAtomically(record, "record");
    const auto content = [&] {
        std::string all;
        for (const std::string& each : {file, other, binary, lock, record})
            all += files::ReadFile(each);
        return all;
    };
    const std::string before = content();
    const std::string through = (folder / "nosub/../till.qxk").string();
    for (const std::string& target : {file, other, link, lock, lockLink, record, through}) {
        const std::vector<std::string> writers[] = {
            {"upload", "-o", target},     {"defaults", "-o", target},
            {"param", "save", target},    {"rom", "save", target},
            {"chipcard", "save", target}, {"convert", binary, target, "0", "0", "0"},
        };
        for (const auto& writer : writers) {
            std::vector<std::string> arguments = {"--keyboard", file};
            arguments.insert(arguments.end(), writer.begin(), writer.end());
            const Outcome outcome = RunOn(folder, arguments);
            EXPECT_EQ(outcome.status, target == through ? 4 : 2) << writer[0] << outcome.err;
            EXPECT_NE(outcome.err.find(target), std::string::npos) << outcome.err;
            EXPECT_EQ(outcome.out, "");
            EXPECT_TRUE(content() == before) << writer[0] << " " << target;
        }
    }
    const Outcome converted =
        RunOn(folder, {"--keyboard", file, "convert", binary, binary, "0", "0", "0"});
    EXPECT_EQ(converted.status, 2);
    EXPECT_EQ(converted.err,
              "qxconf: " + binary + " is the file to read from, and is not overwritten\n");
    const std::string settings = (folder / "settings.ini").string();
    std::filesystem::copy_file(file, settings);
    for (const std::vector<std::string>& command :
         {std::vector<std::string>{"prefs", "list"}, {"prefs", "set", "AutoSave", "False"}}) {
        const Outcome outcome = RunOn(folder, command);
        EXPECT_EQ(outcome.status, 2);
        EXPECT_NE(outcome.err.find(settings), std::string::npos) << outcome.err;
        EXPECT_TRUE(files::ReadFile(settings) == files::ReadFile(file));
    }
    EXPECT_TRUE(content() == before);
}

// A driver that ends its process or crashes causes one error that names the call: no command ends
// silently or successfully because of it.
TEST(DriverSource, ADriverThatEndsItsProcessEndsNoCommand) {
    const TempFolder folder;
    const std::string file = (folder / "till.qxk").string();
    ASSERT_EQ(RunOn(folder, {"--keyboard", file, "--model", "full", "identify"}).status, 0);
    const std::string document = (folder / "till.json").string();
    files::WriteFileAtomically(document, R"({"format": "qx-configuration", "version": 1,
        "commonKeyboard": {"outputDelay": 77}})");
    struct Case {
        const char* behaviour;
        int status;
        const char* message;
    };
    const Case cases[] = {
        {"QXCFG_Init exit", 3, "QXCFG_Init: the driver ended its process with status 0"},
        {"QXCFG_ImageLoad exit", 4, "QXCFG_ImageLoad: the driver ended its process with status 0"},
        {"QXCFG_ImageSave exit", 4, "QXCFG_ImageSave: the driver ended its process with status 0"},
        {"QXCFG_ImageSave crash", 4, "QXCFG_ImageSave: the driver crashed ("},
        {"QXCFG_ImageSave log", 0, ""},
    };
    for (const Case& each : cases) {
        files::WriteFileAtomically(file + ".wild", each.behaviour);
        const Outcome run =
            RunOn(folder, {"--driver", QX_WILD_DRIVER, "--keyboard", file, "download", document});
        EXPECT_EQ(run.status, each.status) << each.behaviour;
        EXPECT_NE(run.err.find(each.message), std::string::npos) << run.err;
        EXPECT_EQ(run.out.empty(), each.status != 0) << run.out;
    }
}

TEST(DriverSource, AFileThatIsNotADriverIsRefused) {
    const TempFolder folder;
    const std::string file = (folder / "no-library.so").string();
    files::WriteFileAtomically(file, "no library");
    for (const std::string& driver : {file, (folder / "absent.so").string()}) {
        const Outcome run = RunOn(folder, {"--driver", driver, "identify"});
        EXPECT_EQ(run.status, 3);
        EXPECT_NE(run.err.find(driver), std::string::npos) << run.err;
    }
    // A real keyboard's driver does not support keyboard files; here it is a library without them.
    const Outcome run = RunOn(folder, {"--driver", "libm.so.6", "--keyboard", file, "identify"});
    EXPECT_NE(run.status, 0);
    EXPECT_EQ(files::ReadFile(file), "no library");
}

// A keyboard without an identifier is recognised by its location, whatever the current folder.
TEST(DriverSource, TheOriginIsTheSameForTheSameKeyboard) {
    TempFolder folder;
    const auto origin = [&](const std::filesystem::path& file) {
        return setup::OpenDriver({{}, file, "magnet"}).origin;
    };
    const std::string whole = origin(folder / "a.qxk");
    EXPECT_EQ(origin(std::filesystem::relative(folder / "a.qxk")), whole);
    EXPECT_EQ(origin(folder / "." / "a.qxk"), whole);
    EXPECT_NE(origin(folder / "b.qxk"), whole);
    EXPECT_NE(setup::OpenDriver({QX_SIMULATOR_LIBRARY, folder / "a.qxk", "magnet"}).origin, whole);
}

} // namespace qx::test
