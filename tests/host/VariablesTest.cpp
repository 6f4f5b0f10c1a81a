// Placeholders in documents, and the values that replace them.
#include "host/Variables.h"

#include "host/Configuration.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"

#include <gtest/gtest.h>

namespace qx::host {

namespace {

class VariablesTest : public testing::Test {
protected:
    VariablesTest() {
        layout.SetLayoutPath(QX_LAYOUTS);
        EXPECT_TRUE(layout.OpenLayoutByName("us.qxl"));
    }

    // Reads the default magnetCard section with one value replaced, and returns the configuration's
    // output, or the faults' texts if the document is refused.
    [[nodiscard]] Json ReadWith(const std::string& place, const Json& value, Variables variables) {
        Section* section = configuration.Find("magnetCard");
        section->Control().DefaultValues();
        ConfigurationDocument document = configuration.Write(
            {section, configuration.Find("layeredFuncKeys"), configuration.Find("commonKeyboard")});
        document.Place("layeredFuncKeys")["keys"] = {
            {{"layer", 0}, {"key", 1}, {"sequence", {30}}, {"description", ""}}};
        Json json = document.AsJson();
        json[Json::json_pointer(place)] = value;
        try {
            const auto sections = configuration.Read(
                ConfigurationDocument::Parse(json.dump(), "test.json"), variables);
            return configuration.Write(sections).AsJson()[Json::json_pointer(place)];
        } catch (const Error& error) {
            EXPECT_EQ(error.faults.size(), 1U);
            EXPECT_EQ(error.faults.front().place, place);
            return WordsOf(error.faults.front());
        }
    }

    QXKeyboardLayoutData layout;
    Configuration configuration{Platform(), &layout, nullptr};
};

} // namespace

TEST_F(VariablesTest, ReplaceTextsSequencesNumbersAndSwitches) {
    const char* kText = "/layeredFuncKeys/keys/0/description";
    const char* kHeader = "/magnetCard/tracks/0/header";
    const char* kSwitch = "/magnetCard/sendImmediate";
    const char* kDelay = "/commonKeyboard/outputDelay";
    struct Row {
        const char* place;
        Json value;
        Json expected;
    };
    const Row rows[] = {
        {kText, "Till ${till}, ${store}", "Till 042, 7"},
        {kText, "${till}${till}", "042042"},
        {kText, "a $till {till} $ $$ $", "a $till {till} $ $$ $"},
        {kText, "$${till} ${till}", "$${till} 042"},
        {kText, "$$${", "$$${"},
        {kText, "100 ${",
         R"("${" does not begin a placeholder like ${name}; write $${ for ${ itself)"},
        {kText, "${}",
         R"("${" does not begin a placeholder like ${name}; write $${ for ${ itself)"},
        {kText, "${ti ll} $}",
         R"("${ti ll" does not begin a placeholder like ${name}; write $${ for ${ itself)"},
        {kText, "${Till}", "a value is missing for Till"},
        {kText, "${b} ${till} ${a} ${b}", "a value is missing for a, b"},
        {kHeader, "T ${till} {7}", {21, 11, 139, 5, 133, 3, 131, 7}},
        {kHeader, "${store}${store} ${none}", {8, 136, 8, 136}},
        {kHeader, "${till} Ctrl+C\tNope",
         R"(character 16: no key is called "Nope"; the nearest: )"},
        {kHeader, "Ctrl+${store}", "${store} must be an item by itself, with blanks around it"},
        {kHeader, "${store}^A", "${store} must be an item by itself, with blanks around it"},
        {kHeader, "\"Left ${store} key\"", "character 1: the closing \" is missing"},
        {kHeader, "${euro}", "no key of the layout types \"€\""},
        {kHeader, "${long}", "the sequence has 40 codes, more than the 32 that fit"},
        {kSwitch, "${on}", true},
        {kSwitch, "${store}", "7 is neither true nor false"},
        {kSwitch, "${till}", "\"042\" is neither true nor false"},
        {kSwitch, "${off}", "a value is missing for off"},
        {kDelay, "${store}", 7},
        {kDelay, "${till}", "\"042\" is not a whole number from 0 to 255"},
        {kDelay, "${off}", "a value is missing for off"},
        {kSwitch, "x${on}", "\"x${on}\" is neither true nor false"},
    };
    const Variables variables({{"till", "042"},
                               {"store", "7"},
                               {"none", ""},
                               {"on", "true"},
                               {"euro", "€"},
                               {"long", "12345678901234567890"}});
    for (const Row& row : rows) {
        const Json read = ReadWith(row.place, row.value, variables);
        if (row.expected.is_string()) // the beginning of a message
            EXPECT_EQ(read.get<std::string>().substr(0, row.expected.get<std::string>().size()),
                      row.expected)
                << row.value;
        else
            EXPECT_EQ(read, row.expected) << row.value;
    }
}

TEST_F(VariablesTest, ReportUsedAndMissingNames) {
    Variables variables({{"till", "042"}, {"tlil", "042"}});
    EXPECT_EQ(variables.Fill("${till}"), "042");
    EXPECT_THROW((void)variables.Fill("${store} ${till}"), json::FaultError);
    EXPECT_EQ(variables.Unused(), std::vector<std::string>{"tlil"});
    EXPECT_EQ(variables.Missing(), std::set<std::string>{"store"});
}

// A text in a keyboard that looks like a placeholder is escaped in a document.
TEST_F(VariablesTest, ATextOfAKeyboardIsWrittenSoThatItReadsBack) {
    for (const char* text : {"${till}", "$${", "$$${x", "${${", "$", "{", "a$$"}) {
        const std::string escaped = Variables::Escaped(text);
        EXPECT_EQ(Variables().Fill(escaped), text);
        EXPECT_EQ(ReadWith("/layeredFuncKeys/keys/0/description", escaped, Variables()), escaped);
    }
}

} // namespace qx::host
