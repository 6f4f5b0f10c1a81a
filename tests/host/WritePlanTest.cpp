#include "host/WritePlan.h"

#include "host/Session.h"
#include "qxcontrols/common/Text.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "simulator/SimulatedDriver.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <set>

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

    // The plan of a document whose sections differ from the keyboard's by `change`.
    WritePlan Plan(const std::function<void(ConfigurationDocument&)>& change) {
        ConfigurationDocument document = configuration.Write(present);
        change(document);
        Planner planner(session.ReadContent(scratch), scratch);
        WritePlan plan = planner.ForSettings(configuration.Read(document));
        planner.NameSettings(plan);
        return plan;
    }

    // Fills every area of the keyboard with the function's bytes.
    void Fill(const std::function<std::string(const ContentPiece&)>& bytesFor) {
        for (const ContentPiece& piece : session.ReadContent(scratch).pieces)
            driver.Poke(piece.address, bytesFor(piece));
    }
    Planner NewPlanner() { return {session.ReadContent(scratch), scratch}; }

    test::TempFolder folder;
    sim::SimulatedDriver driver{folder / "keyboard.qxk", "full"};
    OpenedLayout layout;
    Configuration configuration{Platform(), &layout, nullptr};
    Configuration scratch{Platform(), &layout, nullptr};
    Session session{driver};
    std::vector<Section*> present;
};

} // namespace

TEST_F(WritePlanTest, AnUnchangedKeyboardNeedsNoWrite) {
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
    EXPECT_EQ(ToText(plan.ranges[0].settings[0]),
              "Layered function keys › Layer 3, F6: (none) → Esc ^Esc");
}

// Each range lists exactly its own settings, even if several change at once.
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
        for (const Difference& difference : range.settings)
            if (const std::string setting = ToText(difference);
                std::find(told.begin(), told.end(), setting) == told.end())
                told.push_back(setting);
    std::vector<std::string> changed;
    for (const Difference& difference : plan.settings)
        changed.push_back(ToText(difference));
    std::sort(told.begin(), told.end());
    std::sort(changed.begin(), changed.end());
    EXPECT_EQ(told, changed);
    ASSERT_EQ(plan.ranges[0].settings.size(), 1U);
    EXPECT_EQ(ToText(plan.ranges[0].settings[0]), "Keyboard › Output delay: 6 → 9");
    EXPECT_EQ(plan.ranges[0].module, MODULE_KEYBOARD);
}

// A block's keys and its sequence are in the records of all its keys; inserting a block before it
// changes its number there, but not its settings.
TEST_F(WritePlanTest, ABlockOfKeysIsNamedInAllItsRanges) {
    const auto keep = [&](const Json& blocks) {
        ConfigurationDocument document = configuration.Write(present);
        document.Place("pos")["blocks"] = blocks;
        session.Download(configuration.Read(document));
    };
    const auto block = [](int slot, const Json& keys, const Json& sequence) {
        return Json{{"slot", slot}, {"keys", keys}, {"sequence", sequence}};
    };
    keep({block(3, {3, 40}, {30}), block(60, {60, 61}, {31}), block(90, {90}, {32})});
    const WritePlan plan = Plan([&](ConfigurationDocument& document) {
        document.Place("pos")["blocks"] = {block(1, {1, 20}, {33}), block(3, {3, 70}, {30}),
                                           block(60, {60, 61}, {31}), block(90, {90}, {34})};
    });
    const Long pos = *driver.Model().AddressOf(MODULE_POS);
    std::map<int, std::string> told; // by key: the names of its places
    for (const PlannedRange& range : plan.ranges)
        for (const Difference& setting : range.settings) {
            const std::string text = ToText(setting);
            told[1 + (range.address - pos) / 32] += text.substr(0, text.find(':')) + "; ";
            if (range.address == pos) { // both settings of the block's first key
                EXPECT_TRUE(text.ends_with("Keys: (none) → 1 (Esc), 20 (Home)") !=
                            text.starts_with("POS keys › Key 1 (Esc):"))
                    << text;
            }
        }
    EXPECT_EQ(told, (std::map<int, std::string>{
                        {1, "POS keys › Key 1 (Esc) › Keys; POS keys › Key 1 (Esc); "},
                        {3, "POS keys › Key 3 (F2) › Keys; "},
                        {20, "POS keys › Key 1 (Esc) › Keys; "},
                        {40, "POS keys › Key 3 (F2) › Keys; "},
                        {70, "POS keys › Key 3 (F2) › Keys; "},
                        {90, "POS keys › Key 90 (NumEnter); "},
                    }));
}

// All keys of a section at once, each with its own range.
TEST_F(WritePlanTest, ManyRangesEachHaveTheirOwnSetting) {
    const WritePlan plan = Plan([](ConfigurationDocument& document) {
        Json keys = Json::array();
        for (int key = 0; key < 240; ++key)
            keys.push_back(
                {{"layer", key / 24}, {"key", key % 24}, {"sequence", {1 + key % 120, 200}}});
        document.Place("layeredFuncKeys")["keys"] = keys;
    });
    ASSERT_EQ(plan.ranges.size(), 240U);
    for (int key = 0; key < 240; ++key) {
        const auto& settings = plan.ranges[static_cast<std::size_t>(key)].settings;
        ASSERT_EQ(settings.size(), 1U);
        EXPECT_EQ(ToText(settings[0].name), "Layered function keys › Layer " +
                                                std::to_string(key / 24) + ", F" +
                                                std::to_string(key % 24 + 1));
    }
}

// A document from any keyboard is accepted, and writing it back changes only bytes with fixed
// values.
TEST_F(WritePlanTest, ADocumentExpressesWhateverTheKeyboardHolds) {
    std::mt19937 random(7); // NOLINT: the same bytes every time
    int sound = 0;
    for (int round = 0; round < 60; ++round) {
        Fill([&](const ContentPiece& piece) {
            std::string bytes = piece.bytes;
            std::set<int> sending; // groups of POS keys
            for (std::size_t i = 0; i < bytes.size(); ++i) {
                const auto value = static_cast<int>(random() % 256);
                const int other = random() % 2 == 0 ? 0 : 255;
                int byte = round % 4 < 2 || random() % 4 == 0 ? value : other;
                if (round % 2 == 0 && piece.module == MODULE_POS && i % 32 == 0)
                    byte = random() % 3 == 0 ? other : 1 + value % 105;
                if (round % 2 == 0 && piece.module == MODULE_POS && i % 32 == 1 && byte != 0) {
                    const int group = static_cast<Byte>(bytes[i - 1]);
                    if (group != 0 && group != 255 && !sending.insert(group).second)
                        byte = 0;
                }
                if (round % 2 == 0 && piece.module == MODULE_LAYER_FUNCKEY_DESC && i % 2 == 1)
                    byte = value % 0xD8;
                bytes[i] = static_cast<char>(byte);
            }
            return bytes;
        });
        auto sections = session.SectionsIn(configuration);
        const auto damaged = session.Upload(sections);
        sound += damaged.empty();
        ASSERT_TRUE(round % 2 == 1 || damaged.empty()) << ToText(damaged[0]);
        const auto document = configuration.Write(sections, session.Keyboard());
        EXPECT_TRUE(document.Losses().empty());
        Configuration fresh(Platform(), &layout, nullptr);
        const auto read = fresh.Read(ConfigurationDocument::Parse(document.ToText(), "the upload"));

        const WritePlan plan = NewPlanner().ForSettings(read);
        for (const Difference& difference : plan.settings)
            EXPECT_EQ(difference.name.parts.back().key, "fixedBytes") << ToText(difference);
        EXPECT_EQ(plan.IsEmpty(), plan.settings.empty());
        for (const ByteRange& range : plan.ranges)
            EXPECT_TRUE(range.section == "barcode" || range.section == "magnetCard");
        EXPECT_EQ(Planner(plan.after, scratch).Document(plan.after).ToText(), document.ToText());
        EXPECT_TRUE(Planner(plan.after, scratch).ForSettings(read).IsEmpty());

        const WritePlan full = NewPlanner().ForSettings(read, {.full = true});
        for (const Section* section : read)
            EXPECT_TRUE(NewPlanner()
                            .Compare(full.before, full.after, std::string(section->Info().key))
                            .empty());
    }
    EXPECT_GE(sound, 30);
}

// Bytes after the end of a sequence, as in memory that was never written.
TEST_F(WritePlanTest, UnusedBytesDoNotDiffer) {
    Fill([](const ContentPiece& piece) {
        std::string bytes = piece.bytes;
        if (piece.section == "commonKeyboard" || piece.module == MODULE_MAGNET_CONFIG ||
            piece.module == MODULE_BARCODE_CONFIG)
            return bytes;
        for (std::size_t i = 0; i < bytes.size(); ++i)
            bytes[i] = static_cast<char>(
                piece.module == MODULE_LAYERED_FUNCKEYS && i % 128 == 0    ? 0
                : piece.module == MODULE_LAYER_FUNCKEY_DESC && i % 128 < 2 ? 0
                : piece.section != "layeredFuncKeys" && i % 32 == 0 && piece.section != "pos"
                    ? 0
                    : 255);
        return bytes;
    });
    present = session.SectionsIn(configuration);
    ASSERT_TRUE(session.Upload(present).empty());
    EXPECT_TRUE(Plan([](ConfigurationDocument&) {}).IsEmpty());

    const WritePlan plan = Plan([](ConfigurationDocument& document) {
        document.Place("layeredFuncKeys")["keys"] = {
            {{"layer", 3}, {"key", 5}, {"sequence", {30, 158}}}};
    });
    const Long slot = 36864 + 128 * (3 * 24 + 5);
    EXPECT_EQ(plan.BytesToSend(), 128) << "the slot is written like the controls do";
    EXPECT_EQ(plan.after.Bytes(slot, 128), "\x1E\x9E" + std::string(126, '\0'));
    EXPECT_EQ(plan.after.Bytes(slot + 128, 2), std::string("\0\xFF", 2)) << "the next slot";
    EXPECT_EQ(plan.settings.size(), 1U);

    // All POS keys share one slot: a new block renumbers the groups after it, and groups numbered
    // differently from the control's numbering are renumbered. No other record changes.
    const Long pos = *driver.Model().AddressOf(MODULE_POS);
    const auto hold = [&](int key, const std::string& bytes) {
        driver.Poke(pos + (key - 1) * 32, bytes);
    };
    hold(10, std::string("\x02\x20\0\xFF", 4));
    hold(11, std::string("\x02\0\xFF", 3));
    hold(60, std::string("\x01\x1E\0\xFF", 4));
    hold(61, std::string("\x01\0\xFF", 3));
    hold(62, std::string("\0\x1F\0\xFF", 4));
    ASSERT_TRUE(session.Upload(present).empty());
    const WritePlan blocks = Plan([](ConfigurationDocument& document) {
        document.Place("pos")["blocks"].push_back(
            {{"slot", 50}, {"keys", {50}}, {"sequence", {33}}});
    });
    const auto record = [&](int key) { return blocks.after.Bytes(pos + (key - 1) * 32, 32); };
    const std::map<int, std::string> written = {{10, "\x01\x20"},
                                                {11, "\x01"},
                                                {50, std::string("\0\x21", 2)},
                                                {60, "\x03\x1E"},
                                                {61, "\x03"}};
    for (int key = 1; key <= 105; ++key) {
        const auto changed = written.find(key);
        const std::string kept = blocks.before.Bytes(pos + (key - 1) * 32, 32);
        EXPECT_EQ(record(key),
                  changed == written.end()
                      ? kept
                      : changed->second + std::string(32 - changed->second.size(), '\0'))
            << key;
    }
    EXPECT_EQ(blocks.settings.size(), 2U) << "the keys and the sequence of the new block";
}

TEST_F(WritePlanTest, DamageIsLeftAloneUnlessItIsToBeRepaired) {
    ConfigurationDocument document = configuration.Write(present);
    document.Place("commonKeyboard")["outputDelay"] = 9;
    const Long pos = *driver.Model().AddressOf(MODULE_POS);
    // Of two sequences in a group, the control reads only one.
    driver.Poke(pos + 2 * 32, "\x01\x1E\x9E");
    driver.Poke(pos + 9 * 32, std::string("\x01\0\x9F", 3));
    EXPECT_TRUE(NewPlanner().Damaged(present).empty());
    driver.Poke(pos + 9 * 32, "\x01\x1F\x9F");
    const auto damaged = NewPlanner().Damaged(present);
    ASSERT_EQ(damaged.size(), 1U);
    EXPECT_EQ(damaged[0],
              Fault("/pos", FaultKind::TwoSequences, Hex(pos + 9 * 32 + 1), "3 (F2)", "10 (F9)", 1))
        << WordsOf(damaged[0]);
    driver.Poke(pos + 2 * 32, std::string("\x01\0\0", 3)); // a block in a higher key's slot
    EXPECT_TRUE(NewPlanner().Damaged(present).empty());
    driver.Poke(pos + 2 * 32, "\xFF");
    driver.Poke(pos + 9 * 32, std::string("\xFF\0\0", 3));

    const std::string damage("\xC8\x1E\x1F");
    driver.Poke(pos + 6 * 32, damage);
    const auto read = configuration.Read(document);
    try {
        (void)NewPlanner().ForSettings(read);
        ADD_FAILURE() << "a plan that overwrites damage was accepted";
    } catch (const Error& error) {
        EXPECT_EQ(error.Kind(), ErrorKind::KeyboardDamaged);
        ASSERT_EQ(error.faults.size(), 1U);
        EXPECT_EQ(error.faults[0].place, "/pos");
    }
    const WritePlan others = NewPlanner().ForSettings({configuration.Find("commonKeyboard")});
    EXPECT_EQ(others.after.Bytes(pos + 6 * 32, 3), damage);
    EXPECT_EQ(others.BytesToSend(), 1);
    const WritePlan repair = NewPlanner().ForSettings(read, {.repair = true});
    EXPECT_EQ(repair.after.Bytes(pos + 6 * 32, 3), std::string("\xFF\0\0", 3));
    EXPECT_EQ(NewPlanner().Document(repair.before).Find("pos"), nullptr);
    ASSERT_EQ(repair.settings.size(), 2U);
    EXPECT_EQ(ToText(repair.settings[1]), "POS keys: (damaged) → (sound)");
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
        {{100, 116}, {{100, 17}}},          // a gap of 15 bytes is included
        {{100, 117}, {{100, 1}, {117, 1}}}, // a gap of 16 is not
        {{139, 140}, {{139, 1}, {140, 1}}}, // modules stay separate
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
    from.UpdateGuid();
    EXPECT_EQ(from.identity.guid, "") << "16 equal bytes are not an identifier";
    from.Overwrite(155, "x");
    EXPECT_EQ(from.identity.guid, std::string(15, 'b') + "x");
    EXPECT_THROW((void)from.Bytes(99, 2), std::out_of_range);
    EXPECT_THROW(from.Overwrite(155, "xy"), std::out_of_range);
}

} // namespace qx::host
