// The options that choose the keyboard, through the whole program, on real files.

#include "CommandLine.h"

namespace qx::test {

namespace {

// With the options that choose the keyboard, and nothing put in their place.
Outcome RunOn(const TempFolder& folder, std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(),
                     {"--layouts", QX_LAYOUTS, "--settings", (folder / "settings.ini").string()});
    std::ostringstream out;
    std::ostringstream err;
    const int status = cli::Run(arguments, {out, err});
    return {status, out.str(), err.str()};
}

} // namespace

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
    EXPECT_NE(RunOn(folder, {"--keyboard", file, "--model", "full", "--json", "identify"})
                  .out.find("QX-MAGNET"),
              std::string::npos)
        << "an existing keyboard keeps its model";
}

// What goes wrong is told alike, whether the simulated keyboard is part of the program or loaded.
TEST(DriverSource, FaultsAreExplainedAlike) {
    const TempFolder folder;
    const std::string file = (folder / "till.qxk").string();
    const std::string damaged = (folder / "damaged.qxk").string();
    files::WriteFileAtomically(damaged, "no keyboard");
    const std::string model = (folder / "model.json").string();
    files::WriteFileAtomically(model, "{}");
    struct Case {
        std::vector<std::string> arguments;
        int status;
        const char* message;
    };
    const Case cases[] = {
        {{"--keyboard", file, "--model", "nosuch", "identify"}, 6, "full, magnet, x1-4620"},
        {{"--keyboard", file, "--model", model, "identify"}, 6, "/keyboard: missing"},
        {{"--keyboard", damaged, "identify"}, 3, "not a file of a simulated keyboard"},
        {{"--keyboard", (folder / "absent/till.qxk").string(), "identify"}, 3, "No such file"},
        {{"--keyboard", file, "convert", (folder / "nosuch.bin").string(),
          (folder / "new.rom").string(), "0", "0", "0"},
         4,
         "nosuch.bin cannot be read: No such file"},
        {{"--keyboard", file, "rom", "load", damaged}, 4, "offset 0: not a file of"},
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

TEST(DriverSource, TheKeyboardsOwnFileIsNeverOverwritten) {
    const TempFolder folder;
    const std::string file = (folder / "till.qxk").string();
    ASSERT_EQ(RunOn(folder, {"--keyboard", file, "identify"}).status, 0);
    const std::string before = files::ReadFile(file);
    const std::string binary = (folder / "firmware.bin").string();
    files::WriteFileAtomically(binary, "firmware");
    EXPECT_EQ(RunOn(folder, {"--keyboard", file, "upload", "-o", file}).status, 2);
    EXPECT_EQ(RunOn(folder, {"--keyboard", file, "param", "save", file}).status, 2);
    EXPECT_EQ(RunOn(folder, {"--keyboard", file, "convert", binary, file, "0", "0", "0"}).status,
              2);
    // A path that leads nowhere, and would lead there if it were only tidied up.
    const std::string nowhere = (folder / "nosub/../till.qxk").string();
    for (std::vector<std::string> arguments : {std::vector<std::string>{"upload", "-o", nowhere},
                                               {"param", "save", nowhere},
                                               {"defaults", "-o", nowhere},
                                               {"convert", binary, nowhere, "0", "0", "0"}}) {
        arguments.insert(arguments.begin(), {"--keyboard", file});
        const Outcome run = RunOn(folder, arguments);
        EXPECT_EQ(run.status, 4) << arguments[2];
        EXPECT_NE(run.err.find("there is no folder"), std::string::npos) << run.err;
    }
    EXPECT_TRUE(files::ReadFile(file) == before);
}

TEST(DriverSource, WhatIsNoDriverIsRefused) {
    const TempFolder folder;
    const std::string file = (folder / "no-library.so").string();
    files::WriteFileAtomically(file, "no library");
    for (const std::string& driver : {file, (folder / "absent.so").string()}) {
        const Outcome run = RunOn(folder, {"--driver", driver, "identify"});
        EXPECT_EQ(run.status, 3);
        EXPECT_NE(run.err.find(driver), std::string::npos) << run.err;
    }
    // A real keyboard's driver knows no keyboard files; here it is a library without them.
    const Outcome run = RunOn(folder, {"--driver", "libm.so.6", "--keyboard", file, "identify"});
    EXPECT_NE(run.status, 0);
    EXPECT_EQ(files::ReadFile(file), "no library");
}

// A keyboard without an identifier is known again by where it is, whatever folder one is in.
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
