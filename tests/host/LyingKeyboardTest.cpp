// A keyboard that lies about its transfers: a download is called done only when the keyboard holds
// it, whatever was dropped, cut short or changed on the way.

#include "host/Session.h"
#include "simulator/SimulatedDriver.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <iostream>
#include <random>

namespace qx::host {

namespace {

ConfigurationDocument RandomDocument(std::mt19937& random) {
    const auto codes = [&] {
        Json list = Json::array();
        for (auto length = random() % 33; length > 0; --length)
            list.push_back(1 + random() % 255);
        return list;
    };
    const auto flag = [&] { return random() % 2 == 0; };
    ConfigurationDocument document;
    Json& card = document.Place("magnetCard");
    for (const char* option : {"sendImmediate", "verifyLRC", "verifyLastChar"})
        card[option] = flag();
    for (int track = 0; track < 4; ++track)
        card["tracks"].push_back({{"enabled", flag()},
                                  {"headerEnabled", flag()},
                                  {"header", codes()},
                                  {"terminatorEnabled", flag()},
                                  {"terminator", codes()}});
    return document;
}

} // namespace

// Every seed's lie is told by one of the first two writes, or by one of the first two readings.
TEST(LyingKeyboard, IsFoundOutWhateverTheSeed) {
    constexpr int kSeeds = 1200;
    const test::TempFolder folder;
    sim::SimulatedDriver driver(folder / "keyboard.qxk", "magnet");
    Session session(driver);
    session.Open();
    Configuration configuration{Platform(), nullptr, nullptr};
    const auto sections = session.SectionsIn(configuration);
    session.Upload(sections);
    // The keyboard's two areas: what is to be in them, and what is.
    const auto& directory = driver.Model().directory;
    const auto intended = [&] {
        std::string areas(8 + 256, '\0');
        driver.QXCFG_ImageRead(directory[0].address, areas.data(), 8);
        driver.QXCFG_ImageRead(directory[1].address, areas.data() + 8, 256);
        return areas;
    };
    const auto held = [&] {
        return driver.Memory(directory[0].address, 8) + driver.Memory(directory[1].address, 256);
    };
    int wrongWrites = 0;
    int wrongReadings = 0;
    for (std::uint32_t seed = 0; seed < kSeeds; ++seed) {
        std::mt19937 random(seed);
        driver.LieFrom(seed);
        bool isFound = false;
        for (int write = 0; write < 2 && !isFound; ++write) {
            (void)configuration.Read(RandomDocument(random));
            session.Download(sections);
            const bool isHeld = held() == intended();
            try {
                session.VerifyLastDownload();
            } catch (const Error& error) {
                isFound = true;
                EXPECT_EQ(error.Kind(), ErrorKind::ReadBackDiffers) << error.what();
            }
            ASSERT_TRUE(isHeld || isFound) << "called done with seed " << seed;
            wrongWrites += isHeld ? 0 : 1;
            wrongReadings += isHeld && isFound ? 1 : 0;
        }
        if (isFound) { // for the next seed, the whole areas as they are
            driver.EndLies();
            session.Upload(sections);
        }
    }
    std::cout << kSeeds << " seeds: " << wrongWrites << " wrong writes and " << wrongReadings
              << " wrong readings, all found; " << kSeeds - wrongWrites - wrongReadings
              << " lies about bytes that were the same anyway\n";
    EXPECT_GT(wrongWrites + wrongReadings, kSeeds * 9 / 10);
}

} // namespace qx::host
