#include "CommandLine.h"

#include "host/Json.h"

#include <random>
#include <sstream>

namespace qx::test {

namespace {

std::string RandomBytes(std::size_t size, unsigned seed) {
    std::mt19937 random(seed);
    std::string bytes(size, '\0');
    for (char& byte : bytes)
        byte = static_cast<char>(random());
    return bytes;
}

class AnyModel : public testing::TestWithParam<std::tuple<Driver, const char*>> {
protected:
    CommandLine keyboard{std::get<0>(GetParam()), std::get<1>(GetParam())};
};

} // namespace

// Whatever the keyboard contains, the uploaded document is valid, can be downloaded, and is the
// same when uploaded again.
TEST_P(AnyModel, UploadsOfAnyBytesAreValidAndComeBack) {
    constexpr Long kAfterCapabilities = 0x800; // the bytes before are fixed by the model
    for (unsigned seed = 1; seed <= 6; ++seed) {
        keyboard.Done({"identify"});
        keyboard.Poke(kAfterCapabilities,
                      RandomBytes(sim::KeyboardMemory::kSize - kAfterCapabilities, seed));
        const std::string file = keyboard.File("random.json");
        keyboard.Done({"upload", "-o", file});
        keyboard.Done({"validate", file});
        std::istringstream differences(keyboard.Run({"diff", file}).out);
        for (std::string line; std::getline(differences, line);)
            EXPECT_NE(line.find(" Fixed bytes: "), std::string::npos) << line;
        keyboard.Done({"download", file});
        EXPECT_EQ(keyboard.Done({"diff", file}), "");
        const std::string second = keyboard.File("second.json");
        keyboard.Done({"upload", "-o", second});
        EXPECT_EQ(keyboard.Done({"diff", file, second}), "");
    }
}

// Bytes outside the controls' own requests are sent too: everything that a document clears is
// cleared.
TEST_P(AnyModel, DefaultsReplaceWhateverTheKeyboardHeld) {
    const std::string defaults = keyboard.File("defaults.json");
    keyboard.Done({"defaults", "-o", defaults});
    keyboard.Poke(0x800, RandomBytes(sim::KeyboardMemory::kSize - 0x800, 7));
    keyboard.Done({"download", "--repair", defaults});
    EXPECT_EQ(keyboard.Done({"diff", defaults}), "");
}

INSTANTIATE_TEST_SUITE_P(Models, AnyModel,
                         testing::Combine(testing::Values(Driver::InProcess, Driver::Library),
                                          testing::Values("full", "magnet", "x1-4620")),
                         [](const auto& info) {
                             std::string name = std::get<1>(info.param);
                             std::erase(name, '-');
                             return name + (std::get<0>(info.param) == Driver::InProcess
                                                ? "InProcess"
                                                : "Library");
                         });

TEST(Sections, MissingModulesAreRefusedOrSkipped) {
    CommandLine full;
    const std::string file = full.File("full.json");
    full.Done({"upload", "-o", file});

    CommandLine magnet(Driver::InProcess, "magnet");
    magnet.Done({"identify"});
    const std::string before = magnet.Memory();
    const Outcome refused = magnet.Run({"download", file});
    EXPECT_EQ(refused.status, 6);
    EXPECT_NE(refused.err.find("/barcode"), std::string::npos) << refused.err;
    EXPECT_EQ(magnet.Memory(), before);
    EXPECT_EQ(magnet.Run({"download", "--skip-absent", file}).status, 0);
}

TEST(Sections, MissingSectionsStayUnchanged) {
    CommandLine keyboard;
    keyboard.Done({"identify"});
    keyboard.Poke(0x800, RandomBytes(0x2000, 3));
    const std::string before = keyboard.Done({"upload"});
    const std::string file = keyboard.Write(
        "delay.json",
        R"({"format": "qx-configuration", "version": 1, "commonKeyboard": {"outputDelay": 77}})");
    keyboard.Done({"download", file});
    auto expected = host::Json::parse(before);
    expected["commonKeyboard"]["outputDelay"] = 77;
    EXPECT_EQ(host::Json::parse(keyboard.Done({"upload"})), expected);
}

} // namespace qx::test
