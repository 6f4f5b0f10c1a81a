// The words offered by shell completion.
#include "CommandLine.h"

#include "host/Json.h"

namespace qx::test {

TEST(Completion, OffersPossibleNextWords) {
    CommandLine keyboard;
    const std::string file = keyboard.Write(
        "delay.json",
        R"({"format": "qx-configuration", "version": 1, "commonKeyboard": {"outputDelay": 77}})");
    EXPECT_EQ(keyboard.Done({"completion", "words", "--", "backup", "restore", ""}), "");
    Fault cut;
    cut.writtenBytes = 0;
    EXPECT_EQ(keyboard.Run({"download", file}, cut).status, 4);
    const std::string interrupted =
        host::Json::parse(keyboard.Done({"--json", "recover", "--list"}))["onRecord"][0]["id"];
    EXPECT_EQ(keyboard.Done({"completion", "words", "--", "recover", "--forget", ""}),
              interrupted + "\n");
    keyboard.Done({"recover", "--forget", interrupted});
    std::filesystem::remove_all(keyboard.folder / "data" / "backups");
    keyboard.Done({"download", file});
    const std::string backup =
        host::Json::parse(keyboard.Done({"--json", "backup", "list"}))["backups"][0]["id"];
    const std::pair<std::vector<std::string>, std::string> rows[] = {
        {{"up"}, "upload\n"},
        {{"--js"}, "--json\n"},
        {{"--model", "full", "up"}, "upload\n"},
        {{"--json", "backup", ""}, "list\nshow\nrestore\n"},
        {{"backup", "restore", ""}, backup + "\n"},
        {{"backup", "restore", "--oth"}, "--other-keyboard\n"},
        {{"download", "--dry"}, "--dry-run\n"},
        {{"download", ""}, ":files\n"},
        {{"download", "--set", ""}, ""},
        {{"--layouts", ""}, ":folders\n"},
        {{"--model", "m"}, "magnet\n"},
        {{"--layout", "ge"}, "german.qxl\n"},
        {{"prefs", "get", "ColorP"}, "ColorProg\n"},
        {{"show", "mag"}, "magnetCard\n"},
        {{"layer", ""}, "0\n1\n2\n3\n4\n5\n6\n7\n8\n9\n"},
        {{"test-drive", "scan", "x", "--symbology", "MS"}, "MSI\n"},
        {{"help", "down"}, "download\n"},
        {{"upload", "-o", ""}, ":files\n"},
    };
    for (const auto& [words, expected] : rows) {
        std::vector<std::string> arguments = {"completion", "words", "--"};
        arguments.insert(arguments.end(), words.begin(), words.end());
        EXPECT_EQ(keyboard.Done(arguments), expected) << words.back();
    }
    for (const char* const shell : {"zsh", "fish"})
        EXPECT_NE(keyboard.Done({"completion", shell}).find("completion words -- "),
                  std::string::npos);
}

} // namespace qx::test
