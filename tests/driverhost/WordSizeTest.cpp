#include "driverhost/WordSize.h"
#include "files/Files.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

namespace qx::test {

using namespace std::string_literals;

namespace {

// The parts of a Windows program that determine its word size.
std::string ForWindows(const std::string& machine, const std::string& signature = "PE\0\0"s) {
    std::string bytes = "MZ" + std::string(0x3A, '\xEE') + "\x50\x01\0\0"s;
    bytes.resize(0x150, '\xEE');
    return bytes + signature + machine + std::string(16, '\xEE');
}

} // namespace

TEST(WordSize, IsReadFromTheHeaderOfALibrary) {
    const TempFolder folder;
    const auto of = [&](const std::string& bytes) {
        files::WriteFileAtomically(folder / "driver", bytes);
        return driverhost::WordSizeOf(folder / "driver");
    };
    EXPECT_EQ(of(ForWindows("\x64\x86")), 64);
    EXPECT_EQ(of(ForWindows("\x4C\x01")), 32);
    EXPECT_EQ(of("\x7F"
                 "ELF\2\1\1"),
              64);
    EXPECT_EQ(of("\x7F"
                 "ELF\1\1\1"),
              32);
    EXPECT_EQ(driverhost::WordSizeOf(QX_WILD_DRIVER), 8 * sizeof(void*));
    for (const std::string& other :
         {""s, "MZ"s, ForWindows("\x64\x86").substr(0, 0x152), ForWindows("\x64\xAA"),
          ForWindows("\x64\x86", "NE\0\0"s), "a text that is no library"s})
        EXPECT_EQ(of(other), std::nullopt) << other.size();
    EXPECT_EQ(driverhost::WordSizeOf(folder / ""), std::nullopt);
    EXPECT_EQ(driverhost::WordSizeOf(folder / "absent"), std::nullopt);
}

} // namespace qx::test
