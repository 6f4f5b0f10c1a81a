// The output of show and diff.
#include "CommandLine.h"

#include "host/Json.h"

namespace qx::test {

using host::Json;

TEST(ShowAndDiff, DiffListsSettings) {
    CommandLine keyboard;
    const std::string text = keyboard.Done({"upload"});
    Json changed = Json::parse(text);
    changed["barcode"]["pages"]["Code39"]["minSize"] = 4;
    changed["pos"]["blocks"].push_back({{"slot", 12}, {"keys", {12}}, {"sequence", "Esc ^Esc"}});
    changed["layeredFuncKeys"]["keys"].push_back(
        {{"layer", 9}, {"key", 23}, {"sequence", {30, 158}}, {"description", "Größe"}});
    const std::string file = keyboard.Write("changed.json", changed.dump());
    const Outcome outcome = keyboard.Run({"diff", file});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.out.find("Barcode reader › Code 39 › Shortest code: 1 → 4\n"),
              std::string::npos)
        << outcome.out;
    EXPECT_NE(outcome.out.find("POS keys › Key 12 (F11): (none) → Esc ^Esc\n"), std::string::npos)
        << outcome.out;
    EXPECT_NE(outcome.out.find(
                  "Layered function keys › Layer 9, F24 › Description: (none) → \"Größe\"\n"),
              std::string::npos)
        << outcome.out;
    keyboard.Done({"download", file});
    EXPECT_EQ(keyboard.Run({"diff", file}).status, 0);

    // By the keys' numbers, though the keyboard has only one of them.
    Json& keys = changed["layeredFuncKeys"]["keys"];
    keys.back()["description"] = "Klein";
    keys.push_back({{"layer", 9}, {"key", 8}, {"description", "Copy"}});
    const std::string both =
        keyboard.Run({"diff", keyboard.Write("both.json", changed.dump())}).out;
    EXPECT_LT(both.find("Layer 9, F9 "), both.find("Layer 9, F24 ")) << both;
}

TEST(ShowAndDiff, ShowNamesKeysByTheirCaptions) {
    CommandLine keyboard;
    const std::string empty = keyboard.Done({"show", "freeProgKeys"});
    EXPECT_EQ(empty, "freeProgKeys\n  (nothing is programmed)\n");
    Json document = Json::parse(keyboard.Done({"upload"}));
    document["freeProgKeys"]["keys"] = {{{"positionCode", 112}, {"sequence", "Esc ^Esc"}}};
    document["layeredFuncKeys"]["keys"] = {
        {{"layer", 0}, {"key", 3}, {"sequence", "Ctrl+C"}, {"description", "Größe"}},
        {{"layer", 9}, {"key", 23}, {"description", "Copy"}}};
    keyboard.Done({"download", keyboard.Write("keys.json", document.dump())});
    EXPECT_EQ(keyboard.Done({"show", "freeProgKeys"}), "freeProgKeys\n"
                                                       "                Sequence\n"
                                                       "  Key 112 (F1)  Esc ^Esc\n");
    const std::string layers = keyboard.Done({"show", "layeredFuncKeys"});
    EXPECT_NE(layers.find("                Sequence         Description\n"
                          "  Layer 0, F4   Ctrl C ^C ^Ctrl  \"Größe\"\n"
                          "  Layer 9, F24                   \"Copy\"\n"),
              std::string::npos)
        << layers;
    EXPECT_NE(keyboard.Done({"show", "magnetCard"})
                  .find("\n  Magnetic card reader › Verify checksum (LRC) "),
              std::string::npos);
}

// Captions files name the options of the keyboard at hand, and of a document's keyboard.
TEST(ShowAndDiff, OptionsHaveTheNamesOfCaptionsFiles) {
    CommandLine keyboard;
    const std::string document = keyboard.Done({"upload"});
    std::filesystem::create_directories(keyboard.folder / "data" / "captions");
    keyboard.Write("data/captions/names.json", R"({"format": "qx-captions", "version": 1,
        "keyboards": [{"name": "QX-POS-FULL"}],
        "barcode": {"Code39": {"1": {"en": "Check digit", "de": "Prüfziffer"}}}})");
    keyboard.Write("data/captions/bad.json", "{}");
    const Outcome shown = keyboard.Run({"show", "barcode"});
    EXPECT_EQ(shown.status, 0);
    EXPECT_NE(shown.out.find("Code 39 › Check digit "), std::string::npos) << shown.out;
    EXPECT_NE(shown.out.find("Code 39 › Option 2 "), std::string::npos) << shown.out;
    EXPECT_NE(shown.err.find("bad.json are not used: /format: "), std::string::npos) << shown.err;
    EXPECT_EQ(keyboard.Run({"upload"}).err, "") << "it shows no names, so it reads none";

    Json changed = Json::parse(document);
    changed["barcode"]["pages"]["Code39"]["flags"][1] = true;
    const std::string one = keyboard.Write("one.json", document);
    const std::string other = keyboard.Write("other.json", changed.dump());
    const std::string line = "Barcode reader › Code 39 › Check digit: off → on\n";
    EXPECT_EQ(keyboard.Run({"diff", other}).out, line);
    EXPECT_EQ(keyboard.Run({"diff", one, other}).out, line);
}

TEST(ShowAndDiff, DiffListsAMissingSectionOnce) {
    CommandLine keyboard;
    const Json full = Json::parse(keyboard.Done({"upload"}));
    Json less = full;
    less.erase("barcode");
    less["layeredFuncKeys"].erase("guid");
    const std::string file = keyboard.Write("full.json", full.dump());
    const std::string without = keyboard.Write("less.json", less.dump());
    const Outcome outcome = keyboard.Run({"diff", file, without});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, "section barcode only in " + file + "\n");
    EXPECT_EQ(keyboard.Run({"diff", without, file}).out, "section barcode only in " + file + "\n");
    EXPECT_EQ(keyboard.Done({"diff", without, without}), "");
    EXPECT_EQ(keyboard.Done({"diff", without}), "");
    less["commonKeyboard"]["outputDelay"] = 77;
    const std::string slower = keyboard.Write("slower.json", less.dump());
    const Outcome changed = keyboard.Run({"diff", without, slower});
    EXPECT_EQ(changed.status, 1);
    EXPECT_EQ(changed.out, "Keyboard › Output delay: 6 → 77\n");
    EXPECT_EQ(changed.err, without + " → " + slower + ": 1 difference\n");
}

} // namespace qx::test
