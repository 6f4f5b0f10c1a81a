// Drivers on Windows get file names in 8-bit characters.
#include "CommandLine.h"
#include "files/SystemTexts.h"

#include <set>

namespace qx::test {

// Windows would convert the letter to "a", the name of another existing file.
TEST(KeyboardFileNames, ANameForAnotherFileIsRefused) {
    CommandLine keyboard;
    keyboard.Done({"param", "save", keyboard.File("a.par")});
    const std::string saved = files::ReadFile(files::PathOf(keyboard.File("a.par")));
    keyboard.Done({"download", keyboard.Write("nine.json", R"({"format": "qx-configuration",
        "version": 1, "commonKeyboard": {"outputDelay": 99}})")});
    const std::string memory = keyboard.Memory();
    const std::string other = keyboard.File("") + "\u0101.par";
    files::WriteFileAtomically(files::PathOf(other), "not for this keyboard");
    const auto names = [&] {
        std::set<std::string> all;
        for (const auto& entry : std::filesystem::directory_iterator(keyboard.folder / ""))
            all.insert(files::TextOf(entry.path().filename()));
        return all;
    };
    const auto before = names();
    for (const auto& arguments : {std::vector<std::string>{"param", "load", other},
                                  {"rom", "load", other},
                                  {"param", "save", other},
                                  {"convert", other, keyboard.File("b.rom"), "0", "0", "0"},
                                  {"convert", keyboard.File("a.par"), other, "0", "0", "0"}}) {
        const Outcome outcome = keyboard.Run(arguments);
        EXPECT_EQ(outcome.status, 4) << arguments[0] << arguments[1];
        EXPECT_NE(outcome.err.find("\u0101.par has letters"), std::string::npos) << outcome.err;
    }
    EXPECT_EQ(keyboard.Memory(), memory);
    EXPECT_EQ(files::ReadFile(files::PathOf(keyboard.File("a.par"))), saved);
    EXPECT_EQ(names(), before);
    keyboard.Done({"param", "load", keyboard.File("a.par")});
    EXPECT_NE(keyboard.Memory(), memory);
}

} // namespace qx::test
