// The complete output of successful commands: every member of their JSON, their text, an empty
// standard error, and the driver calls without an effect on the keyboard's memory.
#include "CommandLine.h"

#include "host/Json.h"

namespace qx::test {

using host::Json;

namespace {

class Answers : public testing::Test {
protected:
    // Runs the command with and without --json; `json` is without the schema. Returns the JSON.
    Json Expect(const std::vector<std::string>& arguments, Json json, const std::string& text,
                int status = 0) {
        SCOPED_TRACE(arguments[0] + " " + arguments.back());
        std::vector<std::string> withJson = {"--json"};
        withJson.insert(withJson.end(), arguments.begin(), arguments.end());
        const Outcome asJson = keyboard.Run(withJson);
        Json result = Json::parse(asJson.out, nullptr, false);
        json["schema"] = 1;
        for (const char* const unknown : {"backup"}) // differs each time
            if (json.contains(unknown)) {
                EXPECT_NE(result.value(unknown, ""), "") << unknown;
                result[unknown] = json[unknown];
            }
        EXPECT_TRUE(nlohmann::json(result) == nlohmann::json(json)) << asJson.out;
        EXPECT_EQ(asJson.status, status);
        const Outcome asText = keyboard.Run(arguments);
        EXPECT_EQ(asText.out.substr(0, text.size()), text);
        EXPECT_EQ(asText.status, status);
        EXPECT_EQ(asJson.err + asText.err, "");
        return result;
    }
    std::string Last() const { return keyboard.noted.empty() ? "" : keyboard.noted.back(); }

    CommandLine keyboard;
};

constexpr const char* kDelay =
    R"({"format": "qx-configuration", "version": 1, "commonKeyboard": {"outputDelay": 77}})";

} // namespace

TEST_F(Answers, OfDocuments) {
    const std::string till = keyboard.File("till.json");
    Expect({"upload", "-o", till}, {{"direction", "keyboard to file"}, {"file", till}},
           "keyboard to file: wrote " + till + "\n");
    EXPECT_EQ(Json::parse(files::ReadFile(till)), Json::parse(keyboard.Done({"upload"})));
    const std::string fresh = keyboard.File("fresh.json");
    Expect({"defaults", "-o", fresh}, {{"direction", "default values to file"}, {"file", fresh}},
           "default values to file: wrote " + fresh + "\n");
    const std::string delay = keyboard.Write("delay.json", kDelay);
    Expect({"validate", delay}, {{"valid", true}, {"file", delay}},
           delay + " is valid: 1 section\n");
    const std::string shift = keyboard.Write("shift.json", R"({"format": "qx-configuration",
        "version": 1, "freeProgKeys": {"keys": [{"positionCode": 12, "sequence": [2, 130, 44]}]}})");
    Expect({"validate", "--lint", shift},
           {{"valid", true},
            {"file", shift},
            {"warnings", Json::array({{{"place", "/freeProgKeys/keys[12]/sequence"},
                                       {"setting", "Free keys › Key 12 (-)"},
                                       {"code", "never-released"},
                                       {"key", 44},
                                       {"index", 2},
                                       {"message", "key 44 (Shift) is pressed and never "
                                                   "released"}}})}},
           shift + " is valid: 1 section\n"
                   "Free keys › Key 12 (-): key 44 (Shift) is pressed and never released\n"
                   "1 warning\n",
           1);
    const std::string other = keyboard.Write("other.json", R"({"format": "qx-configuration",
        "version": 1, "freeProgKeys": {"keys": [{"positionCode": 112, "sequence": [110, 238]}]},
        "pos": {"blocks": [{"slot": 1, "blockId": 1, "colorId": 0, "keys": [1, 2],
                            "sequence": [31, 159]}]}})");
    Expect({"validate", "--lint", other},
           {{"valid", true},
            {"file", other},
            {"warnings", Json::array({{{"place", "/freeProgKeys/keys[112]/sequence"},
                                       {"setting", "Free keys › Key 112 (F1)"},
                                       {"code", "never-sent"},
                                       {"key", 112},
                                       {"index", 0},
                                       {"message", "never sent: the key sends the sequence of POS "
                                                   "keys › Key 1 (Esc) instead"},
                                       {"by", "/pos/blocks[1]"}}})}},
           other + " is valid: 2 sections\n", 1);
    EXPECT_EQ(keyboard.Done({"validate", "--lint", delay}),
              delay + " is valid: 1 section\nno warnings\n");
    const std::string sheet = keyboard.File("till.svg");
    Expect({"sheet", "-o", sheet, delay}, {{"direction", "document to key sheet"}, {"file", sheet}},
           "document to key sheet: wrote " + sheet + "\n");
    Expect({"sheet", "-o", sheet}, {{"direction", "keyboard to key sheet"}, {"file", sheet}},
           "keyboard to key sheet: wrote " + sheet + "\n");
}

TEST_F(Answers, OfKeyboardFiles) {
    const std::string binary = keyboard.Write("firmware.bin", "firmware");
    const std::string rom = keyboard.File("keyboard.rom");
    Expect({"convert", binary, rom, "1", "2", "3"}, {{"source", binary}, {"file", rom}},
           "converted " + binary + " into " + rom + "\n");
    EXPECT_EQ(Last(), "Convert 1 2 3");
    struct Kind {
        const char* command;
        const char* content;
        std::vector<std::string> options;
        bool isBackedUp;
    };
    const Kind kinds[] = {
        {"rom", "firmware", {}, true},
        {"chipcard", "chipcard reader's firmware", {"--baud", "3", "--port", "7"}, false},
        {"param", "parameter memory", {}, true},
    };
    for (const Kind& kind : kinds) {
        const std::string file = keyboard.File(kind.command);
        const auto arguments = [&](const char* way) {
            std::vector<std::string> all = {kind.command, way, file};
            all.insert(all.end(), kind.options.begin(), kind.options.end());
            return all;
        };
        Expect(arguments("save"),
               {{"direction", "keyboard to file"}, {"content", kind.content}, {"file", file}},
               "keyboard to file: the " + std::string(kind.content) + " saved into " + file + "\n");
        Json loaded = {{"direction", "file to keyboard"},
                       {"content", kind.content},
                       {"file", file},
                       {"verified", false},
                       {"backup", ""}};
        const std::string text =
            "file to keyboard: the " + std::string(kind.content) + " loaded from " + file + "\n";
        if (kind.isBackedUp) {
            Expect(arguments("load"), loaded, text + "the keyboard's contents from before are in");
        } else {
            EXPECT_EQ(keyboard.Done(arguments("load")), text);
            EXPECT_EQ(Last(), "ChipcardIOParam 3 7");
        }
        const Json receipt = Json::parse(keyboard.Done({"--json", "receipts"}))["receipts"].back();
        EXPECT_EQ(receipt["action"], kind.command + std::string(" load"));
        EXPECT_EQ(receipt["result"], "not verified");
        EXPECT_EQ(receipt["backup"] != "", kind.isBackedUp);
    }
    keyboard.Done({"prefs", "set", "ChipcardPort", "4"});
    keyboard.Done({"prefs", "set", "ChipcardBaudrate", "5"});
    keyboard.Done({"chipcard", "save", keyboard.File("chipcard")});
    EXPECT_EQ(Last(), "ChipcardIOParam 5 4");
}

TEST_F(Answers, OfModesAndPreferences) {
    Expect({"recover"},
           {{"interrupted", nullptr}, {"recovered", nullptr}, {"onRecord", Json::array()}},
           "no write to this keyboard was interrupted\n");
    Expect({"show", "commonKeyboard"},
           {{"settings",
             {{{"place", "/commonKeyboard/outputDelay"},
               {"setting", "Keyboard › Output delay"},
               {"value", "6"}}}}},
           "commonKeyboard\n  Keyboard › Output delay  6\n");
    Expect({"layer", "3"}, {{"layer", 3}}, "layer 3 is selected\n");
    EXPECT_EQ(Last(), "SelectLayer 3");
    keyboard.positionKeys = {30};
    const Outcome watched = keyboard.Run({"--json", "position", "watch", "--count", "1"});
    EXPECT_EQ(Json::parse(watched.out),
              Json({{"schema", 1}, {"key", 30}, {"caption", "Caps lock key"}}))
        << watched.out;
    EXPECT_NE(watched.err.find("this keyboard is simulated"), std::string::npos);
    EXPECT_EQ(Last(), "DisablePositionMode");

    keyboard.Poke(27776, std::string(256, '\x42'));
    std::string page(300, '\x42');
    const std::string same = keyboard.Write("same.cp", page);
    Expect({"codepage", "compare", same}, {{"file", same}, {"equal", true}},
           "the keyboard's code page equals " + same + "\n");
    page[255] = 'x';
    const std::string other = keyboard.Write("other.cp", page);
    Expect({"codepage", "compare", other}, {{"file", other}, {"equal", false}},
           "the keyboard's code page differs from " + other + "\n", 1);

    Expect({"prefs", "set", "ColorProg", "0x8000000F"},
           {{"name", "ColorProg"}, {"type", "colour"}, {"value", -2147483633}},
           "ColorProg = 0x8000000F\n");
    EXPECT_EQ(keyboard.Done({"prefs", "set", "ColorEmpty", "0x12"}), "ColorEmpty = 0x00000012\n");
    Expect({"prefs", "get", "AutoSave"},
           {{"name", "AutoSave"}, {"type", "Boolean"}, {"value", true}}, "True\n");
    keyboard.Done({"prefs", "set", "AutoSave", "False"});
    keyboard.Done({"prefs", "set", "LastDownloadFile", "a, b.json"});
    EXPECT_EQ(keyboard.Done({"prefs", "get", "AutoSave"}), "False\n");
    EXPECT_EQ(keyboard.Done({"prefs", "get", "LastDownloadFile"}), "a, b.json\n");
    EXPECT_NE(keyboard.Done({"prefs", "list"}).find("ColorProg = 0x8000000F  (colour)\n"),
              std::string::npos);
}

} // namespace qx::test
