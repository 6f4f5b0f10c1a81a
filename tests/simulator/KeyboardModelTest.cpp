// Models are read strictly: each row breaks one property of a valid model.

#include "simulator/KeyboardModel.h"
#include "support/Problems.h"

#include <gtest/gtest.h>

namespace qx::test {

namespace {

using json::Fault;
using json::FaultKind;
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
std::vector<Fault> FaultsOf(const std::string& json) {
    try {
        (void)KeyboardModel::FromJson(json);
        return {};
    } catch (const json::FaultError& error) {
        return error.Faults();
    }
}

// That the identifier's area, up to an address, overlaps that of another.
Fault Meets(int end, const char* other, int first, int last) {
    return {"/directory/1/address", FaultKind::AreasMeet, end, other, first, last};
}

// The good model with its first `from` replaced.
std::string Changed(const std::string& from, const std::string& to) {
    std::string json = kGood;
    return json.replace(json.find(from), from.size(), to);
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
        Fault fault;
    };
    const Row rows[] = {
        {"{\n", "", Fault("", FaultKind::NotJson, 1, "\"  \\\"keyboard\\\":\"")},
        {"{\n", "[{\n", Fault("", FaultKind::EndsEarly)},
        {"\"layout\": \"us.qxl\",", "", Fault("", FaultKind::MissingMember, "layout")},
        {"\"layout\"", "\"x\": 1, \"layout\"", Fault("/x", FaultKind::UnknownMember, "\"x\"")},
        {"\"layout\"", "\"layout\": \"a.qxl\", \"layout\"",
         Fault("/layout", FaultKind::GivenTwice, "\"layout\"")},
        {"us.qxl", "../us.qxl", Fault("/layout", FaultKind::NotAFileName, "\"../us.qxl\"")},
        {"\"us.qxl\"", "\"\"", Fault("/layout", FaultKind::NotAFileName, "\"\"")},
        {"\"us.qxl\"", "7", Fault("/layout", FaultKind::NotAText, 7)},
        {"TEST-KEYBOARD-16", "TEST-KEYBOARD-017",
         Fault("/keyboard/name", FaultKind::NotPlainText, "\"TEST-KEYBOARD-017\"", 16)},
        {"TEST-KEYBOARD-16", "T\\u00E4ST",
         Fault("/keyboard/name", FaultKind::NotPlainText, "\"T\u00E4ST\"", 16)},
        {"US01", "US011", Fault("/keyboard/country", FaultKind::NotPlainText, "\"US011\"", 4)},
        {"\"B1\"", "1", Fault("/keyboard/bootloader", FaultKind::NotAText, 1)},
        {"\"connectionV24\": false", "\"connectionV24\": 0",
         Fault("/keyboard/flags/connectionV24", FaultKind::NotAFlag, 0)},
        {"\"barcodeReader\": false,", "",
         Fault("/keyboard/flags", FaultKind::MissingMember, "barcodeReader")},
        {"[true, false, false, false]", "[true, false, false]",
         Fault("/keyboard/flags/magneticTracks", FaultKind::NotAListOf, "[true,false,false]", 4)},
        {"[true, false, false, false]", "[true, false, 1, false]",
         Fault("/keyboard/flags/magneticTracks/2", FaultKind::NotAFlag, 1)},
        {"MODULE_POS", "MODULE_NOTHING",
         Fault("/directory/0/module", FaultKind::NotAModule, "\"MODULE_NOTHING\"")},
        {"MODULE_POS", "MODULE_12",
         Fault("/directory/0/module", FaultKind::NotAModule, "\"MODULE_12\"")},
        {"\"MODULE_POS\"", "6", Fault("/directory/0/module", FaultKind::NotAText, 6)},
        {"\"MODULE_POS\",", "\"MODULE_POS\", \"size\": 1,",
         Fault("/directory/0/size", FaultKind::UnknownMember, "\"size\"")},
        {"131056", "131057", // one byte too many
         Fault("/directory/1/address", FaultKind::NotANumber, 131057, 0, 131056)},
        {"131056", "-1", Fault("/directory/1/address", FaultKind::NotANumber, -1, 0, 131056)},
        {"131056", "4294967296",
         Fault("/directory/1/address", FaultKind::NotANumber, "4294967296", 0, 131056)},
        {"131056", "100.5",
         Fault("/directory/1/address", FaultKind::NotANumber, "100.5", 0, 131056)},
        {"131056", "1e999", Fault("/directory/1/address", FaultKind::NumberTooLarge, "1e999")},
        {"[ { \"module\": \"MODULE_POS\"", "[ 5, { \"module\": \"MODULE_POS\"",
         Fault("/directory/0", FaultKind::NotAnObject, 5)},
        {"32736", "32735", // the identification
         Fault("/directory/0/address", FaultKind::AreasMeet, 36094, "the identification", 32704,
               32735)},
        {"131056", "36095", Meets(36110, "MODULE_POS", 32736, 36095)},
        {"131056", "2047", Meets(2062, "the capability byte", 2047, 2047)},
        {"131056", "28031", Meets(28046, "the code page", 27776, 28031)},
        {"131056", "27761", Meets(27776, "the code page", 27776, 28031)},
        {"131056", "69985", Meets(70000, "the function keys' descriptions", 70000, 100719)},
        {"131056", "100719", Meets(100734, "the function keys' descriptions", 70000, 100719)},
    };
    for (const Row& row : rows) {
        const auto faults = FaultsOf(Changed(row.good, row.bad));
        ASSERT_FALSE(faults.empty()) << row.bad;
        EXPECT_EQ(faults, std::vector{row.fault}) << row.bad << ": " << ToText(faults);
    }
    EXPECT_EQ(FaultsOf(std::string(300000, '[')), std::vector{Fault("", FaultKind::TooDeep, 64)});
    const std::string much(100000, '9'); // messages stay short, in the program's own wording
    for (const std::string& json :
         {Changed("MODULE_POS", much), '[' + much + ']', "{\"" + much + "\": 1}",
          "{\"" + much + "\": 1, \"" + much + "\": 2}"}) {
        const auto faults = FaultsOf(json);
        ASSERT_FALSE(faults.empty());
        EXPECT_LT(ToText(faults).size(), 300U);
        EXPECT_EQ(ToText(faults).find("exception"), std::string::npos) << ToText(faults);
    }
    for (const char* free : {"36096", "2048", "28032", "27760", "69984", "100720"}) // adjacent
        EXPECT_EQ(FaultsOf(Changed("131056", free)), std::vector<Fault>()) << free;
}

// Every module that a directory can list, including some without an area.
TEST(KeyboardModel, MayListModulesWithoutAnArea) {
    const KeyboardModel model =
        KeyboardModel::FromJson(Changed("{ \"module\": \"MODULE_POS\"",
                                        R"({ "module": "MODULE_KEYBOARD", "address": 0 },
                   { "module": "MODULE_CONFIG_SECTION", "address": 2047 },
                   { "module": "MODULE_LAYER_FUNCKEY_DESC", "address": 70000 },
                   { "module": "MODULE_POS")"));
    EXPECT_EQ(model.AddressOf(MODULE_LAYER_FUNCKEY_DESC), 70000);
    EXPECT_EQ(model.AddressOf(MODULE_KEYBOARD), 0);
    EXPECT_EQ(FaultsOf(std::string((1U << 20U) + 1, ' ')),
              std::vector{Fault("", FaultKind::TooManyBytes, 1048576)});
}

TEST(KeyboardModel, ComesByItsName) {
    for (const std::string& name : KeyboardModel::Names())
        EXPECT_NO_THROW((void)KeyboardModel::ByName(name)) << name;
    EXPECT_TRUE(KeyboardModel::ByName("x1-4620").Has(MODULE_FUNCKEYS_X1_4620));
    EXPECT_FALSE(KeyboardModel::ByName("magnet").Has(MODULE_POS));
    EXPECT_EQ(RefusalOf([] { (void)KeyboardModel::ByName("none-such"); }),
              Cannot(files::Deed::Read, "none-such", files::Obstacle::NoSuchModel,
                     {"full", "magnet", "x1-4620"}));
}

} // namespace qx::test
