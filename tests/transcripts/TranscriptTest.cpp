// The complete behaviour of each control, call by call (start, upload, download and end), compared
// with the files in this folder, which were written by hand from the description of the device
// program.
#include "support/Transcript.h"

#include "qxcontrols/device/QXCommonKeyboard.h"
#include "qxcontrols/keyprog/QXFreeProgKeys.h"
#include "qxcontrols/keyprog/QXLayeredFuncKeys.h"
#include "qxcontrols/keys/LayoutTextSource.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "qxcontrols/pos/QXPos.h"
#include "qxcontrols/readers/QXBarcode.h"
#include "qxcontrols/readers/QXMagnetCard.h"

#include <set>

namespace qx::test {
namespace {

struct Content {
    KeyboardModuleIDs module;
    std::size_t offset;
    const char* bytes;
};

struct ControlRow {
    std::string name; // name of the file
    std::function<std::unique_ptr<ModuleControl>(const Platform&)> make;
    std::vector<FakeDriver::Entry> directory;
    std::vector<Content> content; // of the keyboard's memory
    KeyboardModuleIDs configId = MODULE_NONE;
};

template <typename Control>
std::unique_ptr<ModuleControl> Make(const Platform& platform) {
    return std::make_unique<Control>(platform);
}

// A layout in which only the given keys are programmable.
class FewKeys : public LayoutTextSource {
public:
    explicit FewKeys(std::set<Long> keys) : m_keys(std::move(keys)) {}
    void Reset() override {}
    bool Open(const std::string& /*sFilename*/) override { return true; }
    bool OpenLanguage(Long& /*lLangID*/, const std::string& /*sFolder*/) override { return true; }
    [[nodiscard]] std::string String(Long lNumber) const override {
        return m_keys.contains(lNumber - kFirstKey) ? "20  key" : "10  key";
    }

private:
    std::set<Long> m_keys;
};

void Transfer(Transcript& transcript, TestKeyboard& keyboard, ModuleControl& control) {
    transcript.Heading("upload");
    EXPECT_EQ(keyboard.Upload(control), 0);
    transcript.Heading("download");
    EXPECT_EQ(keyboard.Download(control), 0);
    transcript.Heading("end");
}

class ControlTranscript : public testing::TestWithParam<ControlRow> {};

TEST_P(ControlTranscript, IsThatOfTheDeviceProgram) {
    const ControlRow& row = GetParam();
    TestKeyboard keyboard(row.directory);
    for (const Content& content : row.content)
        keyboard.Put(content.module, Bytes(content.bytes), content.offset);
    QXKeyboardLayoutData layout(std::make_unique<FewKeys>(row.configId == MODULE_FUNCKEYS_X1_4620
                                                              ? std::set<Long>{30, 66, 75}
                                                              : std::set<Long>{12, 30, 75}));
    ASSERT_TRUE(layout.OpenLayoutByName("few"));

    Transcript transcript(keyboard.driver);
    transcript.Heading("start");
    auto control = row.make(keyboard.Services());
    transcript.Listen(control->Refreshed, "Refreshed");
    if (row.configId != MODULE_NONE) { // its keys depend on their layout
        control->SetConfigID(row.configId);
        control->SetLayoutSource(&layout);
        control->ReloadKeySettings();
    }
    control->SetKeyboard(&keyboard.access);
    Transfer(transcript, keyboard, *control);
    control->SetKeyboard(nullptr);
    control.reset();
    EXPECT_TRUE(transcript.Is(row.name + ".txt"));
    EXPECT_TRUE(keyboard.boxes.texts.empty());
}

const ControlRow kControls[] = {
    {"QXCommonKeyboard",
     Make<QXCommonKeyboard>,
     {{MODULE_MAGNET_CONFIG, 0x1000}},
     {{MODULE_MAGNET_CONFIG, 0, "C8"}}},
    {"QXMagnetCard",
     Make<QXMagnetCard>,
     {{MODULE_MAGNET_CONFIG, 0x2000}, {MODULE_MAGNET_HEADERS, 0x1000}},
     {{MODULE_MAGNET_HEADERS, 0, "1E 9E 00 55*29  00*192  1C 00*31"},
      {MODULE_MAGNET_CONFIG, 5, "49 F6 D1"}}},
    {"QXBarcode",
     Make<QXBarcode>,
     {{MODULE_BARCODE_CONFIG, 0x2000}, {MODULE_BARCODE_HEADERS, 0x1000}},
     {{MODULE_BARCODE_HEADERS, 0, "1E 9E 00*30  02 00*31  03 04 00*30  1C*32"},
      {MODULE_BARCODE_CONFIG, 0,
       "05 A5 03 A3 11 12 13 14 06 A6 07 A7 0C AC 0A AA 09 A9 04 A4 21 22 23 24 08 A8 0D AD 0B AB "
       "31 32 33 34 35 36 37 38 39 3A 3B 05 5A A5 3C C3 99 5F C6 FF"}}},
    {"QXFreeProgKeys",
     Make<QXFreeProgKeys>,
     {{MODULE_FREEPROGRAMMABLE_KEYS, 0x1000}},
     {{MODULE_FREEPROGRAMMABLE_KEYS, 0, "0C 00*31  1E 9E 00*30  4B 00*31"}},
     MODULE_FREEPROGRAMMABLE_KEYS},
    {"QXFreeProgKeys4620", // key 30 is counted but has no slot
     Make<QXFreeProgKeys>,
     {{MODULE_FUNCKEYS_X1_4620, 0x1000}},
     {{MODULE_FUNCKEYS_X1_4620, 0, "4B 00*31  42 C2 00*30  77*32"}},
     MODULE_FUNCKEYS_X1_4620},
    {"QXLayeredFuncKeys",
     Make<QXLayeredFuncKeys>,
     {{MODULE_GUID, 40000}, {MODULE_LAYERED_FUNCKEYS, 0x1000}},
     {{MODULE_LAYERED_FUNCKEYS, 0, "1E 9E 00*126"},
      {MODULE_LAYERED_FUNCKEYS, 23 * 128, "07*128"},
      {MODULE_LAYERED_FUNCKEYS, 239 * 128, "FF 00*127"},
      {MODULE_GUID, 0, "01 02 03 04 05 06 07 08 09 0A 0B 0C 0D 0E 0F 10"},
      {MODULE_LAYER_FUNCKEY_DESC, 0, "4B 00 E4 00 AC 20"},
      {MODULE_LAYER_FUNCKEY_DESC, 239 * 128, "5A 00 00*2 77*124"}}},
    {"QXPos",
     Make<QXPos>,
     {{MODULE_POS, 0x1000}},
     {{MODULE_POS, 0, "FF*64  09 1E 9E 00*29  FF 00*31  09 00*31  FF 00*31  00 0C 00*30"},
      {MODULE_POS, 7 * 32, "FF*3136"}}},
};

INSTANTIATE_TEST_SUITE_P(Transcripts, ControlTranscript, testing::ValuesIn(kControls),
                         [](const auto& info) { return info.param.name; });

TEST(AccessTranscript, IsThatOfTheDeviceProgram) {
    FakeDriver driver;
    driver.directory = {
        {0x10000 + MODULE_LAYERED_FUNCKEYS, 0x1000}, {MODULE_POS, 0x2000, 9}, {0xFFFF, -2}};
    driver.ignoredStatus = 4711;
    driver.image.replace(0x7FC0, 32,
                         std::string("till-7", 6) + std::string(10, '\0') + "b1.0P2!3us_1C9\x80 ");
    driver.image[0x7FF] = 0x49;
    Transcript transcript(driver);
    {
        transcript.Heading("start");
        QXKeyboardAccess access(driver);
        transcript.Listen(access.InitDriver, "InitDriver");
        transcript.Listen(access.InitDriverWithDelta, "InitDriverWithDelta");
        transcript.Listen(access.InitDriverOK, "InitDriverOK");
        transcript.Listen(access.InitConfigurationTable, "InitConfigurationTable");
        transcript.Listen(access.InitConfigurationTableOK, "InitConfigurationTableOK");
        transcript.Listen(access.InitKeyboardNaming, "InitKeyboardNaming");
        transcript.Listen(access.InitKeyboardNamingOK, "InitKeyboardNamingOK");
        transcript.Listen(access.InitOK, "InitOK");
        EXPECT_TRUE(access.Init());
        transcript.Heading("end");
        access.Done();
        transcript.StopListening();
    }
    EXPECT_TRUE(transcript.Is("QXKeyboardAccess.txt"));
}

} // namespace
} // namespace qx::test
