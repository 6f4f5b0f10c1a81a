#include "qxcontrols/keys/LayoutCheck.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "qxcontrols/keys/QxlTextSource.h"
#include "qxcontrols/pos/POSCodeMapping.h"

#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <map>
#include <set>
#include <vector>

namespace qx::test {
namespace {

struct Shipped {
    const char* file;
    Long language;
    bool isIso; // otherwise a US keyboard
};

class ShippedLayout : public testing::TestWithParam<Shipped> {
protected:
    void SetUp() override {
        for (QXKeyboardLayoutData* opened : {&layout, &us})
            opened->SetLayoutPath(QX_LAYOUTS);
        ASSERT_TRUE(us.OpenLayoutByName("us.qxl"));
        ASSERT_TRUE(layout.OpenLayoutByName(GetParam().file)) << layout.Error();
    }

    using Place = std::array<int, 4>; // left, top, width, height
    [[nodiscard]] static Place PlaceOf(const QXKeyboardLayoutData& of, Long key) {
        return {static_cast<int>(of.KeyX(key)), static_cast<int>(of.KeyY(key)),
                static_cast<int>(of.KeyWidth(key)), static_cast<int>(of.KeyHeight(key))};
    }
    [[nodiscard]] std::vector<Long> DrawnKeys() const {
        std::vector<Long> keys;
        for (Long key = 0; key <= 140; ++key)
            if (layout.KeySupport(key) != KEYMODE_NONE && layout.KeyWidth(key) > 0)
                keys.push_back(key);
        return keys;
    }

    QXKeyboardLayoutData layout;
    QXKeyboardLayoutData us;
};

TEST_P(ShippedLayout, NamesEveryKeyOfTheKeyboardOnce) {
    QxlTextSource source;
    ASSERT_TRUE(source.Open(QX_LAYOUTS + std::string("/") + GetParam().file));
    EXPECT_FALSE(FaultIn(source));
    std::set<std::string> names;
    for (Long key = 0; key <= 140; ++key) {
        SCOPED_TRACE(key);
        const bool isOfOtherKind = key == 42 || key == 45; // only on ISO keyboards
        EXPECT_EQ(layout.KeySupport(key),
                  isOfOtherKind && GetParam().isIso ? KEYMODE_EXIST : us.KeySupport(key));
        EXPECT_TRUE(layout.KeySupport(key) == KEYMODE_NONE ||
                    (names.insert(layout.KeyCaption(key)).second &&
                     names.insert(layout.KeyLongCaption(key)).second));
    }
    EXPECT_EQ(names.size(), GetParam().isIso ? 234U : 230U); // of 117 and of 115 keys
    for (Integer index = 1; index <= 105; ++index)
        EXPECT_FALSE(layout.KeyCaption(POSCodeMapping().GetPositionCodeForKey(index)).empty())
            << "no key for POS key " << index;

    QXKeyboardLayoutData byLanguage;
    byLanguage.SetLayoutPath(QX_LAYOUTS);
    ASSERT_TRUE(byLanguage.OpenLayoutByID(GetParam().language)) << byLanguage.Error();
    EXPECT_EQ(byLanguage.NativeName(), layout.NativeName());
    EXPECT_FALSE(layout.NativeName().empty());
}

TEST_P(ShippedLayout, ItsKeysFillTheirRows) {
    // In squares of a quarter of a key width.
    constexpr int kGrid = 150;
    std::map<std::pair<int, int>, Long> covered;
    for (const Long key : DrawnKeys()) {
        const auto [left, top, width, height] = PlaceOf(layout, key);
        EXPECT_TRUE(width >= 600 && height >= 600) << key;
        for (int x = left; x < left + width; x += kGrid)
            for (int y = top; y < top + height; y += kGrid) {
                const auto [place, isNew] = covered.try_emplace({x, y}, key);
                EXPECT_TRUE(isNew) << key << " overlaps " << place->second;
            }
    }
    for (int x = 0; x < 9000; x += kGrid) // the four rows of the main block
        for (int y = 1500; y < 3900; y += kGrid)
            EXPECT_TRUE(covered.contains({x, y})) << "a gap at " << x << ", " << y;
}

TEST_P(ShippedLayout, HasTheGeometryOfItsKind) {
    const bool isIso = GetParam().isIso;
    const std::map<Long, Place> iso = {
        {28, {7500, 2100, 750, 600}},  {29, {0, 0, 0, 0}},        {42, {7650, 2700, 600, 600}},
        {43, {8250, 2100, 750, 1200}}, {44, {0, 3300, 750, 600}}, {45, {750, 3300, 600, 600}},
    };
    const std::map<Long, Place> american = {
        {28, {7500, 2100, 600, 600}},  {29, {8100, 2100, 900, 600}}, {42, {0, 0, 0, 0}},
        {43, {7650, 2700, 1350, 600}}, {44, {0, 3300, 1350, 600}},   {45, {0, 0, 0, 0}},
    };
    for (const auto& [key, place] : isIso ? iso : american)
        EXPECT_EQ(PlaceOf(layout, key), place) << "key " << key;
    for (Long key = 0; key <= 140; ++key)
        EXPECT_TRUE(iso.contains(key) || PlaceOf(layout, key) == PlaceOf(us, key)) << "key " << key;

    ASSERT_TRUE(us.OpenLayoutByName(GetParam().file)); // nothing of the previous layout remains
    for (const Long key : DrawnKeys())
        EXPECT_EQ(PlaceOf(us, key), PlaceOf(layout, key)) << "key " << key;
    EXPECT_EQ(us.KeyWidth(29), layout.KeyWidth(29));
}

INSTANTIATE_TEST_SUITE_P(
    All, ShippedLayout,
    testing::Values(Shipped{"us.qxl", 1033, false}, Shipped{"uk.qxl", 2057, true},
                    Shipped{"german.qxl", 1031, true}, Shipped{"french.qxl", 1036, true},
                    Shipped{"spanish.qxl", 1034, true}),
    [](const auto& test) { return std::filesystem::path(test.param.file).stem().string(); });

} // namespace
} // namespace qx::test
