// Output to a terminal: no control sequences from outside, and a progress bar that leaves no trace.
#include "CommandLine.h"

#include "host/Json.h"
#include "qxcontrols/common/Utf.h"

#include <algorithm>

namespace qx::test {

using host::Json;

namespace {

// The final contents of a terminal, without trailing spaces; and the longest line that it ever
// showed.
struct Screen {
    explicit Screen(const std::string& text) {
        lines.emplace_back();
        std::size_t column = 0;
        for (std::size_t i = 0; i < text.size(); ++i) {
            if (text[i] == '\033') {
                hasColor = true;
                i = text.find('m', i);
            } else if (text[i] == '\r') {
                column = 0;
            } else if (text[i] == '\n') {
                lines.emplace_back();
                column = 0;
            } else {
                std::string& line = lines.back();
                line.resize(std::max(line.size(), column + 1), ' ');
                line[column++] = text[i];
                widest = std::max(widest, column);
            }
        }
        for (std::string& line : lines)
            line.erase(line.find_last_not_of(' ') + 1);
    }
    std::vector<std::string> lines;
    std::size_t widest = 0;
    bool hasColor = false;
};

} // namespace

TEST(Console, TheBarNamesItsStepFitsAndIsGoneInTheEnd) {
    CommandLine keyboard;
    const std::string delay = keyboard.Write(
        "delay.json",
        R"({"format": "qx-configuration", "version": 1, "commonKeyboard": {"outputDelay": 77}})");
    for (const int columns : {20, 30, 80}) {
        keyboard.columns = columns;
        keyboard.hasColor = columns == 80;
        const Outcome outcome = keyboard.Run({"download", "--full", delay});
        EXPECT_EQ(outcome.status, 0);
        const Screen screen(outcome.err);
        EXPECT_EQ(screen.lines, std::vector<std::string>(1)) << outcome.err;
        EXPECT_LT(screen.widest, static_cast<std::size_t>(columns));
        EXPECT_EQ(screen.hasColor, keyboard.hasColor);
        for (const char* const step : {"reading [", "checking [", "writing [", "reading back ["})
            EXPECT_NE(outcome.err.find(step), std::string::npos) << step << columns;
        const Screen failed(keyboard.Run({"upload"}, {0, 0, false, 100}).err);
        EXPECT_EQ(failed.lines.at(0).substr(0, 8), "qxconf: ") << failed.lines.at(0);
        EXPECT_EQ(failed.lines.size(), 2U);
    }
    EXPECT_EQ(keyboard.Run({"--quiet", "download", "--full", delay}).err, "");
    EXPECT_NE(keyboard.Run({"--quiet", "upload"}, {0, 0, false, 100}).err, "");
}

// Texts from outside are reported completely, as JSON and as text, and cannot move the cursor, add
// a line or change the writing direction.
TEST(Console, AnyBytesCanBeReported) {
    CommandLine keyboard;
    const std::string nul = keyboard.Write(
        "nul.json", R"({"format": "qx-configuration", "version": 1, "a\u0000\u001b[2J\n": 1})");
    const Outcome unknown = keyboard.Run({"--json", "validate", nul});
    EXPECT_EQ(unknown.status, 6);
    const Json error = Json::parse(unknown.out)["error"];
    EXPECT_EQ(error["place"], std::string("/a\0\033[2J\n", 8));
    EXPECT_NE(error["message"].get<std::string>().find("/a\\u0000\\u001b[2J\\u000a"),
              std::string::npos)
        << unknown.out;
    EXPECT_NE(unknown.err.find("/a\\u0000\\u001b[2J\\u000a"), std::string::npos) << unknown.err;
    EXPECT_EQ(std::count(unknown.err.begin(), unknown.err.end(), '\n'), 1) << unknown.err;

    // A file name with an invalid byte, a C1 control character, a direction override and a line
    // break.
    const std::string name = "\xFF\xC2\x9B\xE2\x80\xAE\n.json";
    const std::string file = keyboard.Write(
        name,
        R"({"format": "qx-configuration", "version": 1, "commonKeyboard": {"outputDelay": 7}})");
    const std::string shown = keyboard.File("") + "\\xff\\u009b\\u202e\\u000a.json";
    EXPECT_EQ(keyboard.Done({"validate", file}), shown + " is valid: 1 section\n");
    const std::string json = keyboard.Done({"--json", "validate", file});
    EXPECT_TRUE(IsWellFormedUtf8(json));
    EXPECT_EQ(Json::parse(json)["file"],
              keyboard.File("") + "\\xff\xC2\x9B\xE2\x80\xAE\n.json"); // complete: bytes as escapes
    EXPECT_EQ(json.find("\xC2\x9B"), std::string::npos) << "unsafe in JSON, too";

    // The same text from a keyboard: a document on standard output keeps its meaning.
    Json document = Json::parse(keyboard.Done({"upload"}));
    const std::string description = "\xC2\x9B"
                                    "1A\xE2\x80\xAE\x7F";
    document["layeredFuncKeys"]["keys"] = {
        {{"layer", 1}, {"key", 2}, {"sequence", {30}}, {"description", description}}};
    keyboard.Done({"download", keyboard.Write("till.json", document.dump())});
    const std::string uploaded = keyboard.Done({"upload"});
    EXPECT_EQ(uploaded.find_first_of("\x7F\x9B"), std::string::npos);
    EXPECT_EQ(Json::parse(uploaded)["layeredFuncKeys"]["keys"][0]["description"], description);
    EXPECT_NE(keyboard.Done({"show", "layeredFuncKeys"}).find("\"\\u009b1A\\u202e\\u007f\"\n"),
              std::string::npos);
}

TEST(Console, VeryManyFaultsAreCutShort) {
    CommandLine keyboard;
    Json document = {{"format", "qx-configuration"}, {"version", 1}};
    for (int i = 0; i < 2000; ++i)
        document["section" + std::to_string(i)] = 1;
    const std::string file = keyboard.Write("many.json", document.dump());
    const Outcome outcome = keyboard.Run({"--json", "validate", file});
    EXPECT_EQ(outcome.status, 6);
    EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 21);
    EXPECT_TRUE(outcome.err.ends_with("\n        and 981 more\n")) << outcome.err;
    const Json error = Json::parse(outcome.out)["error"];
    ASSERT_EQ(error["faults"].size(), 1001U);
    EXPECT_EQ(error["faults"][999]["place"], "/section999");
    EXPECT_EQ(error["faults"][1000]["code"], "more-faults");
}

} // namespace qx::test
