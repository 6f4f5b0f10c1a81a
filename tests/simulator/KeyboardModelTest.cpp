// Models are read strictly: each row breaks one property of a valid model.

#include "simulator/KeyboardModel.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace qx::test {

namespace {

using sim::KeyboardModel;

constexpr const char* kGood = R"({
  "keyboard": {
    "name": "TEST-KEYBOARD-16", "bootloader": "B1", "program": "", "country": "US01", "config": "C1",
    "flags": { "freeProgrammableKeys": true, "connectionV24": false, "chipcardReader": true,
               "barcodeReader": false, "magneticTracks": [true, false, false, false] } },
  "layout": "us.qxl",
  "directory": [ { "module": "MODULE_POS", "address": 32736 },
                 { "module": "MODULE_GUID", "address": 131056 } ] })";

// Why the text is refused; empty if it is accepted.
std::string Refusal(const std::string& json) {
    try {
        (void)KeyboardModel::FromJson(json);
        return {};
    } catch (const std::runtime_error& error) {
        return error.what();
    }
}

} // namespace

TEST(KeyboardModel, ReadsAValidModelExactly) {
    const KeyboardModel model = KeyboardModel::FromJson(kGood);
    EXPECT_EQ(model.capabilities, 0x85); // track 1, chipcard reader, free keys
    EXPECT_EQ(model.IdentificationBlock(), "TEST-KEYBOARD-16B1      US01C1  ");
    ASSERT_EQ(model.directory.size(), 2U);
    EXPECT_EQ(model.directory[1].module, MODULE_GUID);
    EXPECT_EQ(model.directory[1].address, 131056); // uses the last 16 bytes
    EXPECT_EQ(model.layout, "us.qxl");
}

TEST(KeyboardModel, NamesThePlaceOfEveryFault) {
    struct Row {
        const char* good;
        const char* bad;
        const char* place;
    };
    const Row rows[] = {
        {"{\n", "", "not valid JSON: line 1"},
        {"{\n", "[{\n", "the end is missing"},
        {"\"layout\": \"us.qxl\",", "", "\"layout\" is missing"},
        {"\"layout\"", "\"x\": 1, \"layout\"", "/x: unknown member"},
        {"\"layout\"", "\"layout\": \"a.qxl\", \"layout\"",
         "/layout: the member \"layout\" is given twice"},
        {"us.qxl", "../us.qxl", "/layout"},
        {"\"us.qxl\"", "\"\"", "/layout"},
        {"\"us.qxl\"", "7", "/layout: 7 is not a text"},
        {"TEST-KEYBOARD-16", "TEST-KEYBOARD-017", "/keyboard/name"},
        {"TEST-KEYBOARD-16", "T\\u00E4ST", "/keyboard/name"},
        {"US01", "US011", "/keyboard/country"},
        {"\"B1\"", "1", "/keyboard/bootloader"},
        {"\"connectionV24\": false", "\"connectionV24\": 0", "/keyboard/flags/connectionV24"},
        {"\"barcodeReader\": false,", "", "/keyboard/flags: \"barcodeReader\" is missing"},
        {"[true, false, false, false]", "[true, false, false]", "/keyboard/flags/magneticTracks"},
        {"[true, false, false, false]", "[true, false, 1, false]",
         "/keyboard/flags/magneticTracks/2"},
        {"MODULE_POS", "MODULE_NOTHING", "/directory/0/module"},
        {"MODULE_POS", "MODULE_12", "/directory/0/module"},
        {"\"MODULE_POS\"", "6", "/directory/0/module"},
        {"\"MODULE_POS\",", "\"MODULE_POS\", \"size\": 1,", "/directory/0/size"},
        {"131056", "131057", "/directory/1/address"}, // one byte too many
        {"131056", "-1", "/directory/1/address"},
        {"131056", "4294967296", "/directory/1/address"},
        {"131056", "100.5", "/directory/1/address"},
        {"131056", "1e999", "1e999"},                 // too large for any number
        {"131056", "36095", "/directory/1/address"},  // the last byte of MODULE_POS
        {"131056", "2047", "/directory/1/address"},   // the capability byte
        {"131056", "28031", "/directory/1/address"},  // the code page
        {"131056", "27761", "/directory/1/address"},  // the same
        {"131056", "69985", "/directory/1/address"},  // the descriptions
        {"131056", "100719", "/directory/1/address"}, // the same
        {"32736", "32735", "/directory/0/address"},   // the identification
        {"[ { \"module\": \"MODULE_POS\"", "[ 5, { \"module\": \"MODULE_POS\"", "/directory/0"},
    };
    for (const Row& row : rows) {
        std::string json = kGood;
        const std::size_t at = json.find(row.good);
        ASSERT_NE(at, std::string::npos) << row.good;
        json.replace(at, std::string(row.good).size(), row.bad);
        EXPECT_NE(Refusal(json).find(row.place), std::string::npos)
            << row.bad << " gives \"" << Refusal(json) << '"';
    }
    EXPECT_NE(Refusal(std::string(300000, '[')).find("nested more than 64 deep"),
              std::string::npos);
    const std::string much(100000, '9'); // messages stay short, in the program's own wording
    std::string module = kGood;
    module.replace(module.find("MODULE_POS"), 10, much);
    for (const std::string& json : {module, '[' + much + ']', "{\"" + much + "\": 1}",
                                    "{\"" + much + "\": 1, \"" + much + "\": 2}"}) {
        EXPECT_NE(Refusal(json), "");
        EXPECT_LT(Refusal(json).size(), 300U);
        EXPECT_EQ(Refusal(json).find("exception"), std::string::npos) << Refusal(json);
    }
    for (const char* free : {"36096", "2048", "28032", "27760", "69984", "100720"}) { // adjacent
        std::string json = kGood;
        json.replace(json.find("131056"), 6, free);
        EXPECT_EQ(Refusal(json), "") << free;
    }
}

// Every module that a directory can list, including some without an area.
TEST(KeyboardModel, MayListModulesWithoutAnArea) {
    std::string json = kGood;
    json.replace(json.find("{ \"module\": \"MODULE_POS\""), 0,
                 R"({ "module": "MODULE_KEYBOARD", "address": 0 },
                    { "module": "MODULE_CONFIG_SECTION", "address": 2047 },
                    { "module": "MODULE_LAYER_FUNCKEY_DESC", "address": 70000 }, )");
    const KeyboardModel model = KeyboardModel::FromJson(json);
    EXPECT_EQ(model.AddressOf(MODULE_LAYER_FUNCKEY_DESC), 70000);
    EXPECT_EQ(model.AddressOf(MODULE_KEYBOARD), 0);
    EXPECT_NE(Refusal(std::string((1U << 20U) + 1, ' ')).find("more than 1048576 bytes"),
              std::string::npos);
}

TEST(KeyboardModel, ComesByItsName) {
    for (const std::string& name : KeyboardModel::Names())
        EXPECT_NO_THROW((void)KeyboardModel::ByName(name)) << name;
    EXPECT_TRUE(KeyboardModel::ByName("x1-4620").Has(MODULE_FUNCKEYS_X1_4620));
    EXPECT_FALSE(KeyboardModel::ByName("magnet").Has(MODULE_POS));
    try {
        (void)KeyboardModel::ByName("none-such");
        FAIL() << "an unknown model was accepted";
    } catch (const std::runtime_error& error) {
        EXPECT_NE(std::string(error.what()).find("full, magnet, x1-4620"), std::string::npos);
    }
}

} // namespace qx::test
