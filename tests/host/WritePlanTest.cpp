#include "host/WritePlan.h"

#include "host/Session.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "simulator/SimulatedDriver.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

namespace qx::host {

namespace {

struct OpenedLayout : QXKeyboardLayoutData {
    OpenedLayout() {
        SetLayoutPath(QX_LAYOUTS);
        EXPECT_TRUE(OpenLayoutByName("us.qxl"));
    }
};

class WritePlanTest : public testing::Test {
protected:
    WritePlanTest() {
        session.Open();
        present = session.SectionsIn(configuration);
        session.Upload(present);
    }

    // The plan of a document that has these sections otherwise than the keyboard.
    WritePlan Plan(const std::function<void(ConfigurationDocument&)>& change) {
        ConfigurationDocument document = configuration.Write(present);
        change(document);
        const auto sections = configuration.Read(document);
        return Planner(session.ReadContent(scratch), scratch).ForSettings(sections);
    }

    test::TempFolder folder;
    sim::SimulatedDriver driver{folder / "keyboard.qxk", "full"};
    OpenedLayout layout;
    Configuration configuration{Platform(), &layout, nullptr};
    Configuration scratch{Platform(), &layout, nullptr};
    Session session{driver};
    std::vector<Section*> present;
};

} // namespace

TEST_F(WritePlanTest, WhatTheKeyboardHoldsNeedsNoWrite) {
    const WritePlan plan = Plan([](ConfigurationDocument&) {});
    EXPECT_TRUE(plan.IsEmpty());
    EXPECT_TRUE(plan.settings.empty());
    EXPECT_GT(plan.BytesInAll(), 60000);
}

TEST_F(WritePlanTest, OneChangedKeyIsFewBytesWithItsSetting) {
    const WritePlan plan = Plan([](ConfigurationDocument& document) {
        document.Place("layeredFuncKeys")["keys"] = {
            {{"layer", 3}, {"key", 5}, {"sequence", "Esc ^Esc"}, {"description", ""}}};
    });
    EXPECT_LT(plan.BytesToSend(), 64);
    ASSERT_EQ(plan.ranges.size(), 1U);
    EXPECT_EQ(plan.ranges[0].module, MODULE_LAYERED_FUNCKEYS);
    EXPECT_EQ(plan.ranges[0].section, "layeredFuncKeys");
    EXPECT_EQ(plan.ranges[0].address, 36864 + 128 * (3 * 24 + 5));
    ASSERT_EQ(plan.ranges[0].settings.size(), 1U);
    EXPECT_EQ(plan.ranges[0].settings[0], "layered function key layer 3 key 5: (none) → Esc ^Esc");
}

// Each range names its own settings and no other's, also where several change at once.
TEST_F(WritePlanTest, EveryChangedSettingHasItsRange) {
    const WritePlan plan = Plan([](ConfigurationDocument& document) {
        document.Place("commonKeyboard")["outputDelay"] = 9;
        document.Place("barcode")["pages"]["Code39"]["minSize"] = 4;
        document.Place("magnetCard")["tracks"][1]["header"] = {30, 158};
        document.Place("pos")["blocks"] = {
            {{"slot", 12}, {"blockId", 1}, {"colorId", 0}, {"keys", {12}}, {"sequence", {30}}},
            {{"slot", 90}, {"blockId", 2}, {"colorId", 0}, {"keys", {90}}, {"sequence", {31}}}};
    });
    std::vector<std::string> told;
    for (const PlannedRange& range : plan.ranges)
        for (const std::string& setting : range.settings)
            if (std::find(told.begin(), told.end(), setting) == told.end())
                told.push_back(setting);
    std::vector<std::string> changed;
    for (const Difference& difference : plan.settings)
        changed.push_back(ToText(difference));
    std::sort(told.begin(), told.end());
    std::sort(changed.begin(), changed.end());
    EXPECT_EQ(told, changed);
    EXPECT_EQ(plan.ranges[0].settings, std::vector<std::string>{"keyboard output delay 6 → 9"});
    EXPECT_EQ(plan.ranges[0].module, MODULE_KEYBOARD);
}

TEST(DifferencesTest, ChangesNearEachOtherAreOneRange) {
    KeyboardContent from;
    from.pieces = {{MODULE_POS, "pos", 100, std::string(40, 'a')},
                   {MODULE_GUID, "guid", 140, std::string(16, 'b')}};
    struct Case {
        std::vector<Long> changed;
        std::vector<std::pair<Long, Long>> ranges; // address and size
    };
    const Case cases[] = {
        {{}, {}},
        {{100}, {{100, 1}}},
        {{100, 116}, {{100, 17}}},          // a gap of 15 is sent along
        {{100, 117}, {{100, 1}, {117, 1}}}, // one of 16 is not
        {{139, 140}, {{139, 1}, {140, 1}}}, // modules stay apart
        {{155}, {{155, 1}}},
    };
    for (const Case& each : cases) {
        KeyboardContent to = from;
        for (const Long address : each.changed)
            to.Overwrite(address, "x");
        std::vector<std::pair<Long, Long>> ranges;
        KeyboardContent written = from;
        for (const ByteRange& range : Differences(from, to, kRequestCost)) {
            ranges.emplace_back(range.address, range.Size());
            EXPECT_EQ(range.from, from.Bytes(range.address, range.Size()));
            written.Overwrite(range.address, range.to);
        }
        EXPECT_EQ(ranges, each.ranges);
        EXPECT_TRUE(written.HoldsSame(to));
    }
    EXPECT_THROW((void)from.Bytes(99, 2), std::out_of_range);
    EXPECT_THROW(from.Overwrite(155, "xy"), std::out_of_range);
}

} // namespace qx::host
