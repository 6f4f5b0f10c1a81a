// The commands that read, show and write, on a working keyboard.
#include "CommandLine.h"

#include "host/Json.h"

#include <algorithm>

namespace qx::test {

using host::Json;

TEST(Commands, IdentifyShowsKeyboardAndDirectory) {
    const char* const model = R"({
        "keyboard": {
            "name": "SHOP", "bootloader": "B001", "program": "P002", "country": "C003",
            "config": "D004",
            "flags": {"freeProgrammableKeys": false, "connectionV24": true,
                      "chipcardReader": false, "barcodeReader": true,
                      "magneticTracks": [true, false, false, false]}},
        "layout": "us.qxl",
        "directory": [{"module": "MODULE_MAGNET_CONFIG", "address": 4096},
                      {"module": "MODULE_POS", "address": 16384}]})";
    const TempFolder folder;
    files::WriteFileAtomically(folder / "shop.json", model);
    CommandLine keyboard(Driver::InProcess, (folder / "shop.json").string());
    const Json result = Json::parse(keyboard.Done({"--json", "identify"}));
    EXPECT_EQ(result["schema"], 1);
    EXPECT_EQ(result["keyboard"], Json::parse(model)["keyboard"]);
    ASSERT_EQ(result["directory"].size(), 2U);
    EXPECT_EQ(result["directory"][1],
              Json({{"module", 6}, {"name", "MODULE_POS"}, {"address", 16384}}));
    const std::string text = keyboard.Done({"identify"});
    EXPECT_NE(text.find("\n  6       MODULE_POS            16384 (4000 hexadecimal)\n"),
              std::string::npos)
        << text;
}

// Standard input and output are named "-"; output may go to a device.
TEST(Commands, DocumentsGoThroughPipes) {
    CommandLine keyboard;
    const std::string uploaded = keyboard.Done({"upload"});
    for (const char* const out : {"-", "/dev/stdout"})
        EXPECT_EQ(keyboard.Done({"upload", "-o", out}), uploaded);
    EXPECT_EQ(keyboard.Done({"upload", "-o", "/dev/null"}), "keyboard to file: wrote /dev/null\n");
    keyboard.input =
        R"({"format": "qx-configuration", "version": 1, "commonKeyboard": {"outputDelay": 77}})";
    EXPECT_EQ(keyboard.Done({"validate", "-"}), "- is valid: 1 section\n");
    keyboard.Done({"download", "-"});
    EXPECT_EQ(keyboard.Memory().substr(0x1000, 1), "\x4D");
    keyboard.input = "no document";
    const Outcome wrong = keyboard.Run({"download", "-"});
    EXPECT_EQ(wrong.status, 6);
    EXPECT_NE(wrong.err.find("standard input: not valid JSON"), std::string::npos) << wrong.err;
    EXPECT_FALSE(std::filesystem::exists("-"));
}

namespace {

// The texts of a drawing, in order.
std::string TextsOf(const std::string& svg) {
    std::string texts;
    for (std::size_t at = svg.find("<text"); at != std::string::npos; at = svg.find("<text", at)) {
        at = svg.find('>', at) + 1;
        texts += svg.substr(at, svg.find('<', at) - at) + "|";
    }
    return texts;
}

} // namespace

TEST(Commands, AKeySheetTellsWhatIsProgrammed) {
    CommandLine keyboard;
    const std::string document =
        keyboard.Write("till.json", R"({"format": "qx-configuration", "version": 1,
        "magnetCard": {"sendImmediate": true, "verifyLRC": true, "verifyLastChar": true, "tracks": [
            {"enabled": true, "headerEnabled": true, "header": "A ^A",
             "terminatorEnabled": false, "terminator": "B ^B"},
            {"enabled": false, "headerEnabled": false, "header": [],
             "terminatorEnabled": true, "terminator": []},
            {"enabled": true, "headerEnabled": true, "header": [],
             "terminatorEnabled": true, "terminator": "C ^C"},
            {"enabled": true, "headerEnabled": true, "header": [],
             "terminatorEnabled": true, "terminator": []}]},
        "freeProgKeys": {"keys": [{"positionCode": 112, "sequence": "D ^D"}]},
        "layeredFuncKeys": {"keys": [
            {"layer": 3, "key": 7, "sequence": "Ctrl+C", "description": "Kasse & <b>"},
            {"layer": 9, "key": 23, "sequence": "E ^E", "description": ""}]},
        "pos": {"blocks": [{"slot": 12, "keys": [12, 13], "sequence": "F ^F"}]}})");
    const auto sheet = [&](const char* name, const std::vector<std::string>& more = {}) {
        std::vector<std::string> arguments = {"sheet", "--date", "May", "-o", keyboard.File(name)};
        arguments.insert(arguments.end(), more.begin(), more.end());
        keyboard.Done(arguments);
        return files::ReadFile(keyboard.File(name));
    };
    const std::string drawn = sheet("till.svg", {document});
    const std::string texts = TextsOf(drawn);
    const std::string head = "May|Keyboard|" + document + "   Layout: English (United States)|";
    for (const std::string& part :
         {head + "Free keys|Key|Caption|Sequence|112|F1|D ^D|1/3|",
          head + "Layer 3|Key|Description|Sequence|F8|Kasse &amp; &lt;b&gt;|Ctrl C ^C ^Ctrl|2/3|",
          head + "Layer 9|Key|Description|Sequence|F24|E ^E|"
                 "POS keys|Key|Number|Keys|Sequence|12|0|12 (F11), 13 (F12)|F ^F|"
                 "Readers|Input|Prefix|Suffix|Magnetic card reader › Track 1|A ^A|(off) B ^B|"
                 "Magnetic card reader › Track 2 (not read)|(off)|(empty)|"
                 "Magnetic card reader › Track 3|(empty)|C ^C|"
                 "Magnetic card reader › Track 4|(empty)|(empty)|3/3|"})
        EXPECT_NE(texts.find(part), std::string::npos) << part << "\n" << texts;
    EXPECT_TRUE(drawn == sheet("again.svg", {document}));
    const std::string printed = sheet("till.pdf", {document});
    EXPECT_EQ(printed.substr(0, 5), "%PDF-");
    EXPECT_NE(printed.find("/Count 3\n"), std::string::npos) << "three pages";

    const std::string before = keyboard.Memory();
    EXPECT_EQ(sheet("keyboard.svg").find("Kasse"), std::string::npos);
    EXPECT_TRUE(keyboard.Memory() == before);
    EXPECT_EQ(keyboard.Run({"sheet", "-o", keyboard.File("vanished/till.pdf")}).status, 4);
    EXPECT_TRUE(files::ReadFile(keyboard.File("till.svg")) == drawn);
}

TEST(Commands, KeyboardFilesGoBothWays) {
    CommandLine keyboard;
    const std::string rom = keyboard.File("keyboard.rom");
    const std::string binary = keyboard.Write("firmware.bin", std::string(1000, '\x5A'));
    keyboard.Done({"convert", binary, rom, "0", "0", "0"});
    keyboard.Done({"rom", "load", rom});
    const std::string saved = keyboard.File("saved.rom");
    keyboard.Done({"rom", "save", saved});
    EXPECT_EQ(files::ReadFile(saved), files::ReadFile(rom));

    const std::string param = keyboard.File("param.bin");
    keyboard.Done({"param", "save", param});
    const std::string before = keyboard.Memory();
    keyboard.Poke(0x3000, std::string(64, '\x11'));
    keyboard.Done({"param", "load", param});
    EXPECT_EQ(keyboard.Memory(), before);

    const std::string earlier = files::ReadFile(param);
    for (int call = 1; call < 30; ++call)
        if (keyboard.Run({"param", "save", param}, {call, 9}).status != 0) {
            EXPECT_EQ(files::ReadFile(param), earlier) << "call " << call;
        }
    Fault idle;
    idle.dropsWrites = true;
    const Outcome nothing = keyboard.Run({"param", "save", param}, idle);
    EXPECT_EQ(nothing.status, 4);
    EXPECT_NE(nothing.err.find("reported success and wrote nothing into the file"),
              std::string::npos)
        << nothing.err;
    EXPECT_EQ(files::ReadFile(param), earlier);
}

TEST(Commands, PositionWatchPrintsKeysAsTheyArePressed) {
    CommandLine keyboard;
    keyboard.positionKeys = {30, 110};
    const Outcome outcome = keyboard.Run({"position", "watch", "--count", "2"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_NE(outcome.out.find("key 30 "), std::string::npos);
    EXPECT_LT(outcome.out.find("key 30 "), outcome.out.find("key 110 "));
    keyboard.positionKeys = {};
    EXPECT_EQ(keyboard.Done({"position", "watch", "--seconds", "1"}), "");
}

TEST(Commands, TestDriveShowsTheInputOfThePc) {
    CommandLine keyboard;
    Json document = Json::parse(keyboard.Done({"upload"}));
    document["magnetCard"]["tracks"][1]["header"] = "Shift+A";
    document["layeredFuncKeys"]["keys"] = {
        {{"layer", 3}, {"key", 5}, {"sequence", "Esc ^Esc"}, {"description", ""}}};
    keyboard.Done({"download", keyboard.Write("till.json", document.dump())});

    EXPECT_EQ(keyboard.Done({"test-drive", "swipe", "--track2", "4711", "--track1", "SMITH",
                             "--wrong-lrc", "1"}),
              "the PC receives\n"
              "  prefix of track 2  Shift A ^A ^Shift\n"
              "  data of track 2    \"4711\"\n"
              "output delay: 6\n"
              "the checksum (LRC) of track 1 is wrong; the reader rejects the track\n"
              "each track is sent as soon as it has been read\n");
    EXPECT_EQ(keyboard.Done({"test-drive", "scan", "ABC", "--symbology", "code25_matrix"}),
              "the PC receives\n  data of reader 1  \"ABC\"\noutput delay: 6\n");
    EXPECT_NE(keyboard.Done({"test-drive", "scan", "4711", "--symbology", "EAN", "--reader", "2"})
                  .find("  data of reader 2  \"4711\"\n"),
              std::string::npos);
    EXPECT_NE(keyboard.Done({"test-drive", "key", "128"}).find("Key 128 (X2)  X2 ^X2\n"),
              std::string::npos);
    EXPECT_NE(keyboard.Done({"test-drive", "pos", "1"}).find("Key 110 (Esc)  Esc ^Esc\n"),
              std::string::npos);

    const Json pressed =
        Json::parse(keyboard.Done({"--json", "test-drive", "function", "6", "--layer", "3"}));
    EXPECT_EQ(pressed["schema"], 1);
    EXPECT_EQ(pressed["received"][0]["origin"], "Layered function keys › Layer 3, F6");
    const Json release = {{"key", 110}, {"caption", "Escape key"}, {"released", true}};
    EXPECT_EQ(pressed["received"][0]["keys"][1], release);
    EXPECT_TRUE(
        Json::parse(keyboard.Done({"--json", "test-drive", "function", "6"}))["received"].empty());

    const Outcome library = CommandLine(Driver::Library).Run({"test-drive", "key", "31"});
    EXPECT_EQ(library.status, 2);
    EXPECT_NE(library.err.find("simulated keyboard"), std::string::npos);
}

TEST(Commands, DamageIsNamedLeftOutAndLeftAlone) {
    CommandLine keyboard;
    const std::string whole = keyboard.Write("whole.json", keyboard.Done({"upload"}));
    keyboard.Poke(0x4000 + 4 * 32, "\xC8"); // the group of POS key 5
    const std::string before = keyboard.Memory();
    const char* const reason =
        "the keyboard is damaged at address 4080 (hexadecimal): key 5 (F4) is in group 200";
    const Outcome uploaded = keyboard.Run({"--json", "upload"});
    EXPECT_TRUE(uploaded.err.starts_with(std::string("left out /pos: ") + reason)) << uploaded.err;
    const Json result = Json::parse(uploaded.out);
    EXPECT_FALSE(result["document"].contains("pos"));
    ASSERT_EQ(result["damaged"].size(), 1U);
    EXPECT_EQ(result["damaged"][0]["place"], "/pos");
    const Json failed = Json::parse(
        keyboard.Run({"--json", "sheet", "-o", keyboard.File("vanished/till.svg")}).out);
    EXPECT_EQ(failed["error"]["code"], "file-failed");
    EXPECT_EQ(failed["error"]["cause"], "file-unusable");
    EXPECT_EQ(failed["error"]["file"], keyboard.File("vanished/till.svg"));
    EXPECT_EQ(failed["damaged"], result["damaged"]);
    const Outcome compared = keyboard.Run({"diff", whole});
    EXPECT_EQ(compared.status, 1);
    EXPECT_TRUE(compared.out.starts_with(std::string("section pos cannot be compared: ") + reason))
        << compared.out;
    const Json refused = Json::parse(keyboard.Run({"--json", "download", whole}).out);
    EXPECT_EQ(refused["error"]["code"], "keyboard-damaged");
    EXPECT_EQ(refused["error"]["place"], "/pos");
    EXPECT_TRUE(keyboard.Memory() == before);

    // Key 50's sound is cleared by the repair, so it is not reported as unused.
    keyboard.Poke(0x4000 + 49 * 32, std::string("\0\x1E\x9E\0", 4));
    const std::string planned = keyboard.Done({"download", "--repair", "--dry-run", whole});
    EXPECT_NE(planned.find("MODULE_POS  4620  3 bytes  (of the damaged section)"),
              std::string::npos)
        << planned;
    EXPECT_EQ(planned.find("no setting uses"), std::string::npos) << planned;
    const Json done = Json::parse(keyboard.Done({"--json", "download", "--repair", whole}));
    EXPECT_EQ(keyboard.Done({"diff", whole}), "");
    const std::string saved = done["backup"];
    const Outcome shown = keyboard.Run({"--json", "backup", "show", saved});
    EXPECT_EQ(shown.status, 0);
    EXPECT_EQ(shown.err.find("left out /pos: was damaged in the keyboard"), 0U) << shown.err;
    EXPECT_EQ(Json::parse(shown.out)["damaged"][0]["place"], "/pos");
    EXPECT_FALSE(Json::parse(shown.out)["document"].contains("pos"));
}

// A keyboard with 16 equal bytes has no identifier: it does not pass it on, and a document with
// such bytes does not change the keyboard's own.
TEST(Commands, AnIdentifierIsSetWithAWarningAndNeverRemoved) {
    constexpr Long kGuid = 5376;
    const char* const place = "/layeredFuncKeys/guid";
    CommandLine keyboard;
    const std::string own = keyboard.Write("own.json", keyboard.Done({"upload"}));
    keyboard.Poke(kGuid, std::string(16, '\xFF'));
    Json without = Json::parse(keyboard.Done({"upload"}));
    EXPECT_EQ(without["layeredFuncKeys"].count("guid"), 0U);

    const std::string planned = keyboard.Done({"download", "--dry-run", own});
    EXPECT_NE(planned.find("Identifier: (none) → \"{"), std::string::npos) << planned;
    const Outcome first = keyboard.Run({"download", own});
    EXPECT_EQ(first.status, 0);
    EXPECT_EQ(first.err.find("the keyboard has no identifier and is given the one in " + own), 0U)
        << first.err;
    EXPECT_NE(first.err.find("--no-identifier"), std::string::npos);
    EXPECT_EQ(keyboard.Run({"download", own}).err, "") << "now the keyboard's own identifier";

    const std::string before = keyboard.Memory();
    for (const char* none :
         {"{FFFFFFFF-FFFF-FFFF-FFFF-FFFFFFFFFFFF}", "{00000000-0000-0000-0000-000000000000}"}) {
        without[Json::json_pointer(place)] = none;
        const std::string file = keyboard.Write("without.json", without.dump());
        for (const char* how : {"--dry-run", "--full"})
            EXPECT_EQ(keyboard.Run({"download", how, file}).err, "");
        EXPECT_TRUE(keyboard.Memory() == before);
        EXPECT_EQ(keyboard.Run({"diff", file}).status, 0);
    }
}

TEST(Commands, QuietLeavesOutNotesAndNoWarning) {
    CommandLine keyboard;
    const auto quiet = [&](std::vector<std::string> arguments, const Fault& fault = {}) {
        arguments.insert(arguments.begin(), "--quiet");
        return keyboard.Run(arguments, fault);
    };
    const std::string file = keyboard.File("till.json");
    EXPECT_EQ(quiet({"upload", "-o", file}).err, "");
    EXPECT_EQ(quiet({"diff", file, file}).err, "");

    // A different identifier.
    Json document = Json::parse(files::ReadFile(file));
    document["layeredFuncKeys"]["guid"] = "{01234567-89AB-CDEF-0123-456789ABCDEF}";
    document["commonKeyboard"]["outputDelay"] = 77;
    keyboard.Write("till.json", document.dump());
    EXPECT_NE(quiet({"download", "--dry-run", file}).err.find("another keyboard's identifier"),
              std::string::npos);

    // After an interrupted write, an upload contains part of it.
    Fault cut;
    cut.writtenBytes = 2;
    EXPECT_EQ(quiet({"download", file}, cut).status, 4);
    const Outcome half = quiet({"--json", "upload"});
    EXPECT_EQ(half.err.find("this keyboard holds a part of an interrupted download of " + file), 0U)
        << half.err;
    EXPECT_EQ(Json::parse(half.out)["interrupted"]["document"], file);
    const Json refused = Json::parse(quiet({"--json", "download", file}).out);
    EXPECT_EQ(refused["error"]["code"], "write-interrupted");
    EXPECT_EQ(refused["interrupted"]["document"], file);
    EXPECT_EQ(quiet({"recover", "--rollback"}).status, 0);
    EXPECT_FALSE(Json::parse(quiet({"--json", "upload"}).out).contains("interrupted"));

    // Damage in the keyboard, the records and the preferences.
    keyboard.Poke(0x4000 + 4 * 32, "\xC8"); // the group of POS key 5
    for (const auto& arguments : {std::vector<std::string>{"upload", "-o", file}, {"show"}})
        EXPECT_EQ(quiet(arguments).err.find("left out /pos: "), 0U);
    for (const auto& entry :
         std::filesystem::recursive_directory_iterator(keyboard.folder / "data/receipts"))
        if (entry.is_regular_file())
            files::WriteFileAtomically(entry.path(), "{");
    EXPECT_NE(quiet({"receipts"}).err, "");
    keyboard.Write("settings.ini", "[Software]\nno setting\n");
    EXPECT_NE(quiet({"prefs", "list"}).err.find("settings.ini are damaged"), std::string::npos);
    const std::string once = quiet({"sheet", "-o", keyboard.File("till.svg"), file}).err;
    EXPECT_NE(once.find("settings.ini are damaged"), std::string::npos);
    EXPECT_EQ(std::count(once.begin(), once.end(), '\n'), 1) << once;
    EXPECT_NE(quiet({"prefs", "set", "AutoSave", "False"}).err.find("settings.ini.damaged"),
              std::string::npos);
    EXPECT_EQ(quiet({"prefs", "list"}).err, "");
}

namespace {

// The commands listed in a help text.
std::vector<std::string> CommandsIn(const std::string& help) {
    std::vector<std::string> commands;
    std::istringstream lines(help.substr(std::min(help.find("\nCommands:\n"), help.size())));
    std::string line;
    std::getline(lines, line);
    std::getline(lines, line);
    while (std::getline(lines, line) && !line.empty())
        if (line.starts_with("  ") && line[2] != ' ')
            commands.push_back(line.substr(2, line.find(' ', 2) - 2));
    return commands;
}

} // namespace

TEST(Commands, HelpTeachesByExample) {
    CommandLine keyboard;
    EXPECT_EQ(keyboard.Done({"help", "backup", "restore"}),
              keyboard.Done({"backup", "restore", "--help"}));
    EXPECT_EQ(keyboard.Done({"help"}), keyboard.Done({"--help"}));
    EXPECT_EQ(keyboard.Done({"-V"}), keyboard.Done({"--version"}));
    std::vector<std::vector<std::string>> commands;
    for (const std::string& name : CommandsIn(keyboard.Done({"--help"}))) {
        commands.push_back({name});
        for (const std::string& inner : CommandsIn(keyboard.Done({name, "--help"})))
            commands.push_back({name, inner});
    }
    EXPECT_GT(commands.size(), 20U);
    for (auto arguments : commands) {
        std::string command;
        for (const std::string& word : arguments)
            command += " " + word;
        arguments.push_back("--help");
        const std::string help = keyboard.Done(arguments);
        const std::string examples = help.substr(std::min(help.find("\nExample"), help.size()));
        EXPECT_NE(examples.find(command), std::string::npos) << command << ": " << examples;
        for (const char* const jargon : {" TEXT REQUIRED", "REQUIRED", "INT", "Excludes", "[0 - "})
            EXPECT_EQ(help.find(jargon), std::string::npos) << help;
        EXPECT_NE(help.find("--driver --keyboard --model --layouts --layout --settings --trace "
                            "--json --quiet\n"),
                  std::string::npos);
    }
}

} // namespace qx::test
