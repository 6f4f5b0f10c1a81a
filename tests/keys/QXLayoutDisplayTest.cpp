#include "qxcontrols/keys/QXLayoutDisplay.h"

#include "qxcontrols/keys/LayoutTextSource.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "qxcontrols/settings/QXProgSettings.h"

#include <gtest/gtest.h>

namespace qx::test {

namespace {

// The keys 30 (programmable), 31 (not programmable), 32 (unused), 130 (programmable).
class FourKeys : public LayoutTextSource {
public:
    void Reset() override {}
    bool Open(const std::string&) override { return true; }
    bool OpenLanguage(Long&, const std::string&) override { return true; }
    [[nodiscard]] std::string String(Long lNumber) const override {
        switch (lNumber) {
        case 1030:
            return R"((0,0,100,100)21  A\\Key A)";
        case 1031:
            return "(0,200,100,100)10  B";
        case 1032:
            return "(0,300,100,100)00  C";
        case 1130:
            return "(0,400,100,100)20  X";
        default:
            return {};
        }
    }
    [[nodiscard]] std::string Error() const override { return {}; }
    [[nodiscard]] std::string Place(Long) const override { return {}; }
};

class LayoutDisplayTest : public testing::Test {
protected:
    LayoutDisplayTest() {
        EXPECT_TRUE(layout.OpenLayoutByName(""));
        display.SetLayoutSource(&layout);
        display.SetCurrProgKey(-1);
    }

    QXKeyboardLayoutData layout{std::make_unique<FourKeys>()};
    KeyboardSequences keys;
    QXLayoutDisplay display;
};

} // namespace

TEST_F(LayoutDisplayTest, PlacesAndLabelsKeys) {
    int refreshed = 0;
    const auto subscription = display.Refreshed.Subscribe([&] { ++refreshed; });
    display.ReloadKeysSettings(keys);
    EXPECT_EQ(refreshed, 1);
    const KeyButton& key = display.cmdKey[30];
    EXPECT_EQ(key.Left, 10.0F);
    EXPECT_EQ(key.Top, 10.0F);
    EXPECT_EQ(key.Width, 75.0F);
    EXPECT_EQ(key.Height, 75.0F);
    EXPECT_EQ(key.Caption + "/" + key.ToolTip, "A/Key A");
    EXPECT_FALSE(display.cmdKey[32].Visible);
    display.SetLayoutSource(nullptr);
    display.ReloadKeysSettings(keys);
    EXPECT_EQ(refreshed, 1);
}

TEST_F(LayoutDisplayTest, ColoursShowTheStateOfKeys) {
    const auto colours = [&] {
        display.ReloadKeysSettings(keys);
        return std::vector<Long>{display.cmdKey[30].BackColor, display.cmdKey[31].BackColor,
                                 display.cmdKey[130].BackColor};
    };
    EXPECT_EQ(colours(), (std::vector<Long>{65280, 2, 65280}));
    keys.Key(30).AddByte(1);
    EXPECT_EQ(colours(), (std::vector<Long>{255, 2, 65280}));
    display.SetCurrProgKey(130);
    EXPECT_EQ(colours(), (std::vector<Long>{255, 2, 16711680}));
    display.SetDisplayKeyType(DISPLAY_PROG);
    EXPECT_EQ(colours(), (std::vector<Long>{2, 2, 16711680}));
    MemoryRegistry registry;
    QXProgSettings preferences(registry);
    preferences.SetColorUnused(7);
    display.SetPrefSource(&preferences);
    EXPECT_EQ(colours(), (std::vector<Long>{7, 7, 0x0000FFFF}));
}

TEST_F(LayoutDisplayTest, OnlyKeysThatCanBeUsedAreEnabled) {
    const auto enabled = [&] {
        display.ReloadKeysSettings(keys);
        return std::vector<bool>{display.cmdKey[30].Enabled, display.cmdKey[31].Enabled,
                                 display.cmdKey[32].Enabled, display.cmdKey[130].Enabled};
    };
    EXPECT_EQ(enabled(), (std::vector<bool>{true, true, false, true}));
    display.SetDisplayKeyType(DISPLAY_PROG); // key 130 cannot occur in a sequence
    EXPECT_EQ(enabled(), (std::vector<bool>{true, true, false, false}));
    Long clicked = -1;
    const auto subscription = display.OnKeyClicked.Subscribe([&](Long key) { clicked = key; });
    display.cmdKey_Click(31);
    EXPECT_EQ(clicked, 31);
    std::vector<Integer> selected;
    const auto noted =
        display.KeySelected.Subscribe([&] { selected.push_back(display.SelectedKey()); });
    for (const Integer key : std::initializer_list<Integer>{31, 31, 141, -1, 0, 140})
        display.SelectKey(key);
    EXPECT_EQ(selected, (std::vector<Integer>{31, 31, 0, 140}));
}

} // namespace qx::test
