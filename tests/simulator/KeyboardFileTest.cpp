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
using files::Obstacle;

class KeyboardFile : public testing::Test {
protected:
    KeyboardFile() {
        SimulatedDriver driver(file, "magnet");
        EXPECT_EQ(driver.QXCFG_Init(), 0) << driver.LastError();
        good = files::ReadFile(file);
    }

    // A file with these bytes is refused with this problem, which the driver's text names as well
    // as the file, and is not changed.
    void ExpectRefused(const std::string& bytes, Obstacle obstacle, std::int64_t number,
                       const std::vector<std::string>& names, const std::string& reason) const {
        files::WriteFileAtomically(file, bytes);
        SimulatedDriver driver(file, "magnet");
        EXPECT_EQ(driver.QXCFG_Init(), static_cast<Long>(Status::KeyboardInvalid));
        EXPECT_EQ(driver.LastProblem(), (files::Problem{.deed = files::Deed::Read,
                                                        .subject = file.string(),
                                                        .obstacle = obstacle,
                                                        .names = names,
                                                        .number = number}))
            << driver.LastError();
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
    for (const char* other : {"", "not a keyboard, but a text"})
        ExpectRefused(other, Obstacle::OtherKind, 0, {"QXKEYB"}, "offset 0");
    ExpectRefused(good.substr(0, 12), Obstacle::EndsTooEarly, 12, {}, "offset 12");
    const std::size_t content = good.size() - 16;
    for (const std::size_t size : {content / 2, content - 1, content + 1}) {
        std::string resized = good;
        resized.resize(16 + size);
        ExpectRefused(resized, Obstacle::WrongSize, 8,
                      {std::to_string(content), std::to_string(size)}, "offset 8");
    }
    for (const std::size_t at : {std::size_t{20}, good.size() / 2, good.size() - 1}) {
        std::string flipped = good;
        flipped[at] = static_cast<char>(flipped[at] ^ 0x40);
        ExpectRefused(flipped, Obstacle::WrongChecksum, 12, {}, "offset 12");
    }
    std::string newer = good;
    newer[7] = '2';
    ExpectRefused(newer, Obstacle::OtherVersion, 6, {"01"}, "offset 6: the version");
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
    const auto end = static_cast<std::int64_t>(good.size());
    const auto start = end - static_cast<std::int64_t>(sizeof(std::uint32_t) + parts[3].size());
    ExpectRefused(Seal(kKeyboardFile, {parts[0], parts[1], parts[2]}), Obstacle::WrongParts, start,
                  {}, "do not add up");
    ExpectRefused(Seal(kKeyboardFile, {parts[0], parts[1], parts[2], parts[3], ""}),
                  Obstacle::WrongParts, end, {}, "do not add up");
    ExpectRefused(Seal(kKeyboardFile, {parts[0], parts[1] + "x", parts[2], parts[3]}),
                  Obstacle::WrongMemory, 131073, {}, "131073 bytes");
    ExpectRefused(Seal(kKeyboardFile, {"{}", parts[1], parts[2], parts[3]}), Obstacle::InvalidModel,
                  0, {}, "\"keyboard\" is missing");
    ExpectRefused(Seal(kProgramFile, {parts[2]}), Obstacle::OtherKind, 0, {"QXKEYB"},
                  "a file of another kind");
}

} // namespace qx::test
