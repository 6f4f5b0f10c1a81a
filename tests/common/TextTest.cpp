#include "qxcontrols/common/Text.h"
#include "qxcontrols/platform/GuidCreator.h"
#include "qxcontrols/platform/RegistryAccess.h"

#include <gtest/gtest.h>

#include <set>

namespace qx {

TEST(Text, HexadecimalHasNoLeadingZerosAndAll32BitsOfANegativeNumber) {
    EXPECT_EQ(Hex(0) + " " + Hex(0x1A2B) + " " + Hex(-1), "0 1A2B FFFFFFFF");
}

TEST(Text, TrimsBlanksOnly) {
    EXPECT_EQ(Trim("  a b \t "), "a b \t");
    EXPECT_EQ(TrimLeft("  a "), "a ");
    EXPECT_EQ(Trim("   "), "");
}

TEST(Guid, TextGoesBothWays) {
    const Guid guid{0x01234567, 0x89AB, 0xCDEF, {0x01, 0x23, 0x45, 0x67, 0x89, 0xAB, 0xCD, 0xEF}};
    EXPECT_EQ(ToText(guid), "{01234567-89AB-CDEF-0123-456789ABCDEF}");
    EXPECT_EQ(GuidFromText("{01234567-89ab-cdef-0123-456789abcdef}"), guid);
    const std::string text = ToText(guid);
    for (std::size_t i = 0; i < text.size(); ++i) {
        EXPECT_FALSE(GuidFromText(text.substr(0, i)));
        EXPECT_FALSE(GuidFromText(std::string(text).replace(i, 1, "g"))) << i;
    }
    std::set<std::string> created;
    for (int i = 0; i < 100; ++i) {
        const auto [made, isNew] = created.insert(ToText(GuidCreator().CreateSafeGuid()));
        EXPECT_EQ((*made)[15], '4') << *made; // the version of random identifiers
        EXPECT_NE(std::string("89AB").find((*made)[20]), std::string::npos) << *made;
    }
    EXPECT_EQ(created.size(), 100U);
}

TEST(MemoryRegistry, NamesAndPathsIgnoreCase) {
    MemoryRegistry registry;
    registry.SetPath("Software\\A\\");
    registry.WriteNumber("One", -2);
    registry.WriteBoolean("Yes", true);
    registry.SetPath("software\\a");
    EXPECT_EQ(registry.ReadNumber("ONE", 0), -2);
    EXPECT_EQ(registry.ReadNumber("yes", 0), -1);
    EXPECT_EQ(registry.ReadString("One", "another type"), "another type");
    registry.SetPath("software\\b");
    EXPECT_EQ(registry.ReadNumber("One", 5), 5);
}

} // namespace qx
