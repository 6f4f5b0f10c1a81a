#include "qxcontrols/device/QXCommonKeyboard.h"
#include "support/BlockRoundTrip.h"

namespace qx::test {

namespace {

QXCommonKeyboard& Common(ModuleControl& control) {
    return dynamic_cast<QXCommonKeyboard&>(control);
}

BlockRow CommonKeyboardRow() {
    BlockRow row;
    row.name = "CommonKeyboard";
    row.directory = {{MODULE_MAGNET_CONFIG, 0x1000}};
    row.make = [](const Platform& platform) {
        return std::make_unique<QXCommonKeyboard>(platform);
    };
    row.fill = [](ModuleControl& control) { Common(control).SetOutputDelay(0xC8); };
    row.golden = {{MODULE_MAGNET_CONFIG, 0, Bytes("C8 00*7")}}; // only the delay
    row.randomise = [](ModuleControl& control, std::mt19937& random) {
        Common(control).SetOutputDelay(static_cast<Byte>(random()));
    };
    row.describe = [](const ModuleControl& control) {
        return std::to_string(dynamic_cast<const QXCommonKeyboard&>(control).OutputDelay());
    };
    row.show = [](const ModuleControl& control) {
        const auto& shown = dynamic_cast<const QXCommonKeyboard&>(control);
        return std::to_string(shown.slidOutputDelay.Value) + "=" + shown.lblCurrOutputDelay.Caption;
    };
    row.shown = "200=200";
    return row;
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Device, BlockRoundTrip, testing::Values(CommonKeyboardRow()), RowName);

TEST(QXCommonKeyboard, AsksForItsByteWithModule0) {
    TestKeyboard keyboard({{MODULE_MAGNET_CONFIG, 0x1000}});
    QXCommonKeyboard control;
    control.SetKeyboard(&keyboard.access);
    keyboard.Download(control);
    EXPECT_EQ(keyboard.lastRequests, (std::vector<FakeDriver::Request>{{0, 0x1000, 1}}));
}

TEST(QXCommonKeyboard, WithoutItsModuleNothingMoves) {
    TestKeyboard keyboard({{MODULE_POS, 0x1000}});
    QXCommonKeyboard control;
    control.SetOutputDelay(9);
    control.SetKeyboard(&keyboard.access);
    keyboard.Upload(control);
    keyboard.Download(control);
    EXPECT_EQ(control.OutputDelay(), 9);
    EXPECT_TRUE(keyboard.lastRequests.empty());
}

TEST(QXCommonKeyboard, AFailedTransferIsTraced) {
    TestKeyboard keyboard({{MODULE_MAGNET_CONFIG, 0x1000}});
    QXCommonKeyboard control;
    control.SetOutputDelay(9);
    control.SetKeyboard(&keyboard.access);
    keyboard.driver.end = 0x1000;
    const TraceLog trace;
    keyboard.Upload(control);
    keyboard.Download(control);
    EXPECT_EQ(control.OutputDelay(), 9);
    for (const char* line : {"DataUpload failed at 1000", "DataDownload failed at 1000",
                             "PrepareDataUpload", "PrepareDataDownload"})
        EXPECT_TRUE(trace.Has(std::string("QXCommonKeyboard.") + line)) << line;
}

TEST(QXCommonKeyboard, TheSliderSetsTheDelay) {
    QXCommonKeyboard control;
    int refreshed = 0;
    const auto subscription = control.Refreshed.Subscribe([&] { ++refreshed; });
    control.slidOutputDelay.Value = 300;
    control.slidOutputDelay_Change();
    EXPECT_EQ(control.OutputDelay(), 255);
    EXPECT_EQ(control.lblCurrOutputDelay.Caption, "255");
    EXPECT_TRUE(control.DataChanged());
    EXPECT_EQ(refreshed, 1);
    control.DefaultValues();
    EXPECT_EQ(control.slidOutputDelay.Value, 6);
}

} // namespace qx::test
