// Which programs of keyboards the preferences accept.
#include "host/Firmware.h"

#include "qxcontrols/settings/QXProgSettings.h"

#include <gtest/gtest.h>

namespace qx::test {

using namespace host;

TEST(Firmware, VersionsAreReadAsTheyAreShown) {
    for (const auto& [text, version] :
         {std::pair("1.00", 0x100), {"1.0a", 0x10A}, {"10.7f", 0x107F}, {"0.05", 5}}) {
        EXPECT_EQ(FirmwareVersionOf(text), version);
        EXPECT_EQ(FirmwareVersionText(version), text);
    }
    EXPECT_EQ(FirmwareVersionOf("2.5"), 0x205);
    EXPECT_EQ(FirmwareVersionOf("1FF"), 0x1FF);
    EXPECT_EQ(FirmwareVersionText(-1), "-1");
    for (const char* text :
         {"", ".", "1.", ".5", "1.100", "x", "1.0 ", "-1", "1.-1", "99999999999"})
        EXPECT_EQ(FirmwareVersionOf(text), -1) << text;
}

TEST(Firmware, OnlyAnOlderProgramIsTooOldAndOnlyWhereThatIsChecked) {
    MemoryRegistry registry;
    QXProgSettings preferences(registry);
    preferences.SetVersionFirmware(0x110);
    preferences.SetVerifyFirmware(true);
    EXPECT_TRUE(IsFirmwareTooOld("P10F", preferences));
    EXPECT_FALSE(IsFirmwareTooOld("P110", preferences));
    EXPECT_FALSE(IsFirmwareTooOld("P200", preferences));
    for (const char* unknown : {"", "P", "P1x0", "   "})
        EXPECT_FALSE(IsFirmwareTooOld(unknown, preferences)) << unknown;
    preferences.SetVerifyFirmware(false);
    EXPECT_FALSE(IsFirmwareTooOld("P10F", preferences));
}

} // namespace qx::test
