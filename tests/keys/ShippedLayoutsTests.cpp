#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "qxcontrols/pos/POSCodeMapping.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <tuple>

namespace qx::test {
namespace {

// What a key is apart from its captions.
auto Physical(const QXKeyboardLayoutData& layout, Long key) {
    return std::tuple(layout.KeySupport(key), layout.KeyColor(key), layout.KeyX(key),
                      layout.KeyY(key), layout.KeyWidth(key), layout.KeyHeight(key));
}

bool Overlap(const QXKeyboardLayoutData& layout, Long one, Long other) {
    return layout.KeyX(one) < layout.KeyX(other) + layout.KeyWidth(other) &&
           layout.KeyX(other) < layout.KeyX(one) + layout.KeyWidth(one) &&
           layout.KeyY(one) < layout.KeyY(other) + layout.KeyHeight(other) &&
           layout.KeyY(other) < layout.KeyY(one) + layout.KeyHeight(one);
}

class ShippedLayout : public testing::TestWithParam<std::pair<const char*, Long>> {
protected:
    void SetUp() override {
        layout.SetLayoutPath(QX_LAYOUTS);
        ASSERT_TRUE(layout.OpenLayoutByName(GetParam().first)) << layout.Error();
    }
    QXKeyboardLayoutData layout;
};

TEST_P(ShippedLayout, CanBeUsed) {
    std::set<std::string> captions;
    for (Long key = 0; key <= 140; ++key) {
        SCOPED_TRACE(key);
        const bool isShown = layout.KeySupport(key) != KEYMODE_NONE;
        EXPECT_EQ(isShown, layout.KeyWidth(key) >= 600 && layout.KeyHeight(key) >= 600);
        if (!isShown)
            continue;
        EXPECT_TRUE(captions.insert(layout.KeyCaption(key)).second) << layout.KeyCaption(key);
        EXPECT_FALSE(layout.KeyCaption(key).empty());
        EXPECT_GE(layout.KeyLongCaption(key).size(), layout.KeyCaption(key).size());
        for (Long other = 0; other < key; ++other)
            EXPECT_FALSE(layout.KeySupport(other) != KEYMODE_NONE && Overlap(layout, key, other))
                << "key " << other;
    }
    for (Integer index = 1; index <= 105; ++index)
        EXPECT_NE(layout.KeySupport(POSCodeMapping().GetPositionCodeForKey(index)), KEYMODE_NONE)
            << "no key for POS key " << index;
}

TEST_P(ShippedLayout, IsTheSameKeyboardInAnotherLanguage) {
    QXKeyboardLayoutData us;
    us.SetLayoutPath(QX_LAYOUTS);
    ASSERT_TRUE(us.OpenLayoutByName("us.qxl"));
    for (Long key = 0; key <= 140; ++key)
        EXPECT_EQ(Physical(layout, key), Physical(us, key)) << "key " << key;

    QXKeyboardLayoutData byLanguage;
    byLanguage.SetLayoutPath(QX_LAYOUTS);
    ASSERT_TRUE(byLanguage.OpenLayoutByID(GetParam().second)) << byLanguage.Error();
    EXPECT_EQ(byLanguage.NativeName(), layout.NativeName());
    EXPECT_FALSE(layout.NativeName().empty());
}

INSTANTIATE_TEST_SUITE_P(All, ShippedLayout,
                         testing::Values(std::pair("us.qxl", 1033), std::pair("uk.qxl", 2057),
                                         std::pair("german.qxl", 1031),
                                         std::pair("french.qxl", 1036),
                                         std::pair("spanish.qxl", 1034)),
                         [](const auto& test) {
                             return std::filesystem::path(test.param.first).stem().string();
                         });

} // namespace
} // namespace qx::test
