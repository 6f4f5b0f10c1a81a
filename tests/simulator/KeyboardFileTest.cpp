// A keyboard's file is accepted only as it was written; otherwise it is refused and left alone.

#include "simulator/SealedFile.h"
#include "simulator/SimulatedDriver.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include <sys/stat.h>

namespace qx::test {

namespace {

using namespace sim;

class KeyboardFile : public testing::Test {
protected:
    KeyboardFile() {
        SimulatedDriver driver(file, "magnet");
        EXPECT_EQ(driver.QXCFG_Init(), 0) << driver.LastError();
        good = files::ReadFile(file);
    }

    // A file with these bytes is refused with its name and a reason containing the text, and is not
    // changed.
    void ExpectRefused(const std::string& bytes, const std::string& reason) const {
        files::WriteFileAtomically(file, bytes);
        SimulatedDriver driver(file, "magnet");
        EXPECT_EQ(driver.QXCFG_Init(), static_cast<Long>(Status::KeyboardInvalid));
        EXPECT_NE(driver.LastError().find(file.string()), std::string::npos);
        EXPECT_NE(driver.LastError().find(reason), std::string::npos) << driver.LastError();
        EXPECT_EQ(driver.QXCFG_MemRequestClean(), static_cast<Long>(Status::NotOpen));
        EXPECT_TRUE(files::ReadFile(file) == bytes);
    }

    TempFolder folder;
    std::filesystem::path file = folder / "keyboard.qxk";
    std::string good;
};

} // namespace

TEST(SealedFile, LiesAsItIsDescribed) {
    const std::string bytes("QXPARA01"         // kind and version
                            "\x0D\0\0\0"       // 13 bytes of content
                            "\xA9\x7F\x81\x56" // their CRC-32
                            "\x04\0\0\0NAME"   // a part of four bytes
                            "\x01\0\0\0\xFF",  // a part of one
                            29);
    EXPECT_EQ(Seal(kParameterFile, {"NAME", "\xFF"}), bytes);
    EXPECT_EQ(Unseal(kParameterFile, bytes), (std::vector<std::string>{"NAME", "\xFF"}));

    for (std::size_t size = 0; size < bytes.size(); ++size)
        EXPECT_THROW((void)Unseal(kParameterFile, bytes.substr(0, size)), std::runtime_error)
            << size;
    EXPECT_THROW((void)Unseal(kParameterFile, bytes + '\0'), std::runtime_error);
    for (std::size_t bit = 0; bit < 8 * bytes.size(); ++bit) {
        std::string flipped = bytes;
        flipped[bit / 8] = static_cast<char>(flipped[bit / 8] ^ (1 << (bit % 8)));
        EXPECT_THROW((void)Unseal(kParameterFile, flipped), std::runtime_error) << bit;
    }
}

TEST_F(KeyboardFile, IsRefusedWhenItIsDamaged) {
    ExpectRefused("", "offset 0");
    ExpectRefused("not a keyboard, but a text", "offset 0");
    ExpectRefused(good.substr(0, 12), "offset 12");
    ExpectRefused(good.substr(0, good.size() / 2), "offset 8");
    ExpectRefused(good.substr(0, good.size() - 1), "offset 8");
    ExpectRefused(good + "x", "offset 8");
    for (const std::size_t at : {std::size_t{20}, good.size() / 2, good.size() - 1}) {
        std::string flipped = good;
        flipped[at] = static_cast<char>(flipped[at] ^ 0x40);
        ExpectRefused(flipped, "offset 12");
    }
    std::string newer = good;
    newer[7] = '2';
    ExpectRefused(newer, "offset 6: the version");
}

#ifndef _WIN32
TEST_F(KeyboardFile, IsRefusedWhenItIsAPipe) {
    const std::filesystem::path pipe = folder / "pipe.qxk";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    SimulatedDriver driver(pipe, "magnet");
    EXPECT_EQ(driver.QXCFG_Init(), static_cast<Long>(Status::KeyboardInvalid));
    EXPECT_NE(driver.LastError().find("pipe.qxk"), std::string::npos);
    EXPECT_NE(driver.LastError().find("not an ordinary file"), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(folder / "pipe.qxk.lock"));
}
#endif

TEST_F(KeyboardFile, IsRefusedWhenItsContentMakesNoKeyboard) {
    const std::vector<std::string> parts = Unseal(kKeyboardFile, good);
    ExpectRefused(Seal(kKeyboardFile, {parts[0], parts[1], parts[2]}), "do not add up");
    ExpectRefused(Seal(kKeyboardFile, {parts[0], parts[1], parts[2], parts[3], ""}),
                  "do not add up");
    ExpectRefused(Seal(kKeyboardFile, {parts[0], parts[1] + "x", parts[2], parts[3]}),
                  "131073 bytes");
    ExpectRefused(Seal(kKeyboardFile, {"{}", parts[1], parts[2], parts[3]}),
                  "\"keyboard\" is missing");
    ExpectRefused(Seal(kProgramFile, {parts[2]}), "not a file of a simulated keyboard");
}

} // namespace qx::test
