// A keyboard that misreports its transfers: a download is reported as done only if the keyboard
// really holds it, whatever was dropped, cut short or changed on the way.

#include "host/ErrorText.h"
#include "host/Writer.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
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

class LyingKeyboard : public testing::Test {
protected:
    LyingKeyboard() {
        layout.SetLayoutPath(QX_LAYOUTS);
        EXPECT_TRUE(layout.OpenLayoutByName("us.qxl"));
    }
    std::unique_ptr<Configuration> NewConfiguration() {
        return std::make_unique<Configuration>(Platform(), &layout, nullptr);
    }

    QXKeyboardLayoutData layout;
    test::TempFolder folder{test::TempFolder::InMemory()};
};

} // namespace

// Each seed affects one of the first two writes or one of the first two reads.
TEST_F(LyingKeyboard, IsFoundOutWhateverTheSeed) {
    constexpr int kSeeds = 300;
    sim::SimulatedDriver driver(folder / "keyboard.qxk", "magnet");
    Session session(driver);
    session.Open();
    const auto configuration = NewConfiguration();
    (void)session.SectionsIn(*configuration);
    int wrongWrites = 0;
    int wrongReadings = 0;
    for (std::uint32_t seed = 0; seed < kSeeds; ++seed) {
        Writer writer(session,
                      {folder / std::to_string(seed), [this] { return NewConfiguration(); }});
        std::mt19937 random(seed);
        driver.LieFrom(seed);
        bool isFound = false;
        for (int write = 0; write < 2 && !isFound; ++write) {
            const auto wanted = configuration->Read(RandomDocument(random));
            WritePlan plan;
            bool isWritten = true;
            try {
                plan = writer.Plan(wanted);
                writer.Write(plan, {});
            } catch (const Error& error) {
                isFound = true;
                isWritten = error.Kind() == ErrorKind::ReadBackDiffers;
                EXPECT_TRUE(isWritten || error.Kind() == ErrorKind::KeyboardChanged ||
                            error.Kind() == ErrorKind::TransferFailed)
                    << TextOf(error);
            }
            bool isHeld = true;
            for (const ContentPiece& piece : plan.after.pieces)
                isHeld &= piece.bytes ==
                          driver.Memory(piece.address, static_cast<Long>(piece.bytes.size()));
            ASSERT_TRUE(isHeld || isFound) << "called done with seed " << seed;
            wrongWrites += isFound && isWritten && !isHeld;
            wrongReadings += isFound && (!isWritten || isHeld);
        }
        driver.EndLies();
    }
    std::cout << kSeeds << " seeds: " << wrongWrites << " wrong writes and " << wrongReadings
              << " wrong readings, all found; " << kSeeds - wrongWrites - wrongReadings
              << " lies about bytes that were the same anyway, or that were read once more\n";
    EXPECT_GT(wrongWrites + wrongReadings, kSeeds * 8 / 10);
}

} // namespace qx::host
