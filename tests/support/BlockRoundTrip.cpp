#include "support/BlockRoundTrip.h"

namespace qx::test {

TEST_P(BlockRoundTrip, GoldenBytesAreWrittenAndReadBack) {
    const auto written = Make();
    GetParam().fill(*written);
    ASSERT_EQ(keyboard.Download(*written), 0);
    for (const GoldenBytes& golden : GetParam().golden)
        EXPECT_TRUE(keyboard.Holds(golden.module, golden.bytes, golden.offset))
            << "module " << NameOf(golden.module) << ", bytes from offset " << golden.offset;

    const auto read = Make();
    ASSERT_EQ(keyboard.Upload(*read), 0);
    EXPECT_EQ(Describe(*read), Describe(*written));
    EXPECT_EQ(GetParam().show(*read), GetParam().shown);
    EXPECT_FALSE(read->DataChanged());
}

TEST_P(BlockRoundTrip, RandomSettingsComeBack) {
    for (unsigned seed = 1; seed <= 50; ++seed) {
        std::mt19937 random(seed);
        const auto written = Make();
        GetParam().randomise(*written, random);
        ASSERT_EQ(keyboard.Download(*written), 0);
        const auto read = Make();
        ASSERT_EQ(keyboard.Upload(*read), 0);
        ASSERT_EQ(Describe(*read), Describe(*written)) << "seed " << seed;
    }
}

TEST_P(BlockRoundTrip, AnyBytesAreDecoded) {
    for (unsigned seed = 1; seed <= 20; ++seed) {
        std::mt19937 random(seed);
        for (char& byte : keyboard.driver.memory)
            byte = static_cast<char>(random());
        const auto control = Make();
        EXPECT_EQ(keyboard.Upload(*control), 0);
        const std::string decoded = Describe(*control);
        EXPECT_EQ(keyboard.Download(*control), 0);
        keyboard.Upload(*control);
        ASSERT_EQ(Describe(*control), decoded) << "seed " << seed;
    }
}

// A driver that refuses all reads from some address on must leave the control usable.
TEST_P(BlockRoundTrip, EveryTruncationIsSurvived) {
    for (const GoldenBytes& golden : GetParam().golden) {
        const Long base = keyboard.access.GetBaseAddressForModule(golden.module);
        if (base < 0)
            continue;
        const std::size_t step = 1 + golden.bytes.size() / 64;
        for (std::size_t length = 0; length < golden.bytes.size(); length += step) {
            keyboard.driver.end = static_cast<std::size_t>(base) + golden.offset + length;
            const auto control = Make();
            GetParam().fill(*control);
            keyboard.Upload(*control);
            keyboard.driver.end = FakeDriver::kSize;
            ASSERT_EQ(keyboard.Download(*control), 0);
        }
    }
}

// A trace must show which control did what.
TEST_P(BlockRoundTrip, ProceduresTraceTheirOwnNames) {
    const TraceLog trace;
    const auto control = Make();
    const std::string name = trace.lines.front().substr(0, trace.lines.front().find('.') + 1);
    control->DefaultValues();
    keyboard.Upload(*control);
    (void)control->TransferSize(true);
    control->Translate();
    control->AdjustControls();
    control->ReloadColor();
    for (const char* procedure : {"DefaultValues", "DataUpload", "TransferSize", "Translate",
                                  "AdjustControls", "ReloadColor"})
        EXPECT_TRUE(trace.Has(name + procedure)) << procedure;
}

} // namespace qx::test
