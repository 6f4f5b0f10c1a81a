#include "qxcontrols/settings/QXProgSettings.h"

#include "support/TestKeyboard.h"

#include <limits>
#include <set>

namespace qx::test {
namespace {

const std::string kRoot = "Software\\Tandor\\ConfigurationApp\\";

struct Stored {
    const char* property;
    const char* subKey;
    const char* valueName;
    Long value;     // a value that is not the default; Booleans -1 and 0
    Long whenEmpty; // the value Load yields with an empty registry
};

constexpr Long kFace = std::numeric_limits<Long>::min() + 15;

// As in the registry of the device program.
const Stored kStored[] = {
    {"AdvancedEditor", "Common", "InvokeSequencer", 1, 0},
    {"PreferedAppLang", "Common", "Language", 1031, 0},
    {"PreferedKeyLang", "Common", "KeyboardLayout", 1033, 0},
    {"AutoSave", "Common", "AutoSave", 0, -1},
    {"AutoTestdrive", "Common", "TestDrive", 0, -1},
    {"ShowUpcodes", "Common", "ShowUpCode", 0, -1},
    {"NewDocumentOnStartup", "Common", "NewDocOnStart", 0, -1},
    {"VerifyFirmware", "StartMode", "Firmware", 0, -1},
    {"VersionFirmware", "StartMode", "FirmwareVersion", -32768, 256},
    {"ChipcardPort", "Common", "Chipcard COM", 4, 2},
    {"ChipcardBaudrate", "Common", "Chipcard RATE", 5, 0},
    {"CommandDelta", "LowLevel", "Command Delta", 70000, 10},
    {"KeyFontSize", "Common", "Key Font Size", 9, 6},
    {"ColorUnused", "Color", "ForeColor Default", 1, kFace},
    {"ColorCurr", "Color", "ForeColor Current Key", 2, 0xFFFF},
    {"ColorEmpty", "Color", "ForeColor Programable", 3, 0xFF0000},
    {"ColorProg", "Color", "ForeColor Programed Key", 4, 0xFF},
    {"POSColorUnused", "Color", "Color Unused", 5, kFace},
    {"POSColorCurrent", "Color", "Color Current", 6, 0xFFFF},
    {"POSColorBlock0", "Color", "Block Color0", 7, 0xFF0000},
    {"POSColorBlock9", "Color", "Block Color9", kFace + 1, 0xFF0000},
    {"WinState", "Common", "WinState", 1, 2},
    {"WinWidth", "Common", "Width", 100000, 10410},
    {"WinHeight", "Common", "Height", 200000, 8205},
    {"WinTop", "Common", "Top", -30, 120},
    {"WinLeft", "Common", "Left", -40, 120},
    {"ShowStartupWizard", "StartWizard", "Wizard", 0, -1},
    {"ShowStartupAction", "StartWizard", "Selection", 3, 0},
};

Long AsNumber(const QXProgSettings::Value& value) {
    const bool* isOn = std::get_if<bool>(&value);
    return isOn != nullptr ? (*isOn ? -1 : 0) : std::get<Long>(value);
}

struct QXProgSettingsTest : testing::Test {
    Platform Services() {
        Platform platform;
        platform.messageBoxes = &boxes;
        return platform;
    }
    void PutAll() {
        for (const Stored& stored : kStored) {
            registry.SetPath(kRoot + stored.subKey + "\\");
            registry.WriteNumber(stored.valueName, stored.value);
        }
    }

    MemoryRegistry registry;
    NotedBoxes boxes;
    QXProgSettings settings{registry, Services()};
};

TEST_F(QXProgSettingsTest, LoadsAndSavesEveryValueAtItsPlace) {
    settings.Load();
    for (const Stored& stored : kStored)
        EXPECT_EQ(AsNumber(settings.Get(stored.property)), stored.whenEmpty) << stored.property;
    PutAll();
    settings.Load();
    for (const Stored& stored : kStored)
        EXPECT_EQ(AsNumber(settings.Get(stored.property)), stored.value) << stored.property;
    EXPECT_EQ(settings.POSColorBlock(9), kFace + 1);
    EXPECT_EQ(settings.POSColorBlock(8), 0xFF0000);

    settings.SetPosCodePage("page.bin");
    registry = MemoryRegistry();
    settings.Save();
    for (const Stored& stored : kStored) {
        const bool isSaved = !std::string_view(stored.property).starts_with("Win") &&
                             std::string_view(stored.subKey) != "StartWizard";
        registry.SetPath(kRoot + stored.subKey);
        EXPECT_EQ(registry.ReadNumber(stored.valueName, 4711), isSaved ? stored.value : 4711)
            << stored.property;
    }
    settings.SetAutoSave(true);
    settings.Save();
    registry.SetPath(kRoot + "Common");
    EXPECT_EQ(registry.ReadNumber("AutoSave", 4711), -1);
    TraceLog trace;
    settings.SetWinParam(0, 640, 480, 10, 20);
    settings.SaveWinPos();
    EXPECT_EQ(trace.lines,
              (std::vector<std::string>{"QXProgSettings.SetWinParam", "QXProgSettings.SaveWinPos",
                                        "SAVE WINDOW POSITION", "STATE =0",
                                        "WIDTH = 640  HEIGHT = 480", "TOP   = 10  LEFT = 20"}));
    QXProgSettings other(registry);
    other.Load();
    EXPECT_EQ(other.WinHeight(), 480);
    EXPECT_EQ(other.PosCodePage(), "page.bin");
}

TEST_F(QXProgSettingsTest, GivesEveryKeyThePathOfTheDeviceProgram) {
    struct NotedPaths : MemoryRegistry {
        void SetPath(std::string_view sPath) override {
            paths.emplace(sPath);
            MemoryRegistry::SetPath(sPath);
        }
        std::set<std::string> paths;
    } noted;
    QXProgSettings all(noted);
    all.Load();
    all.SetLastDownloadFile("cash.json");
    all.SetShowStartupAction(1);
    EXPECT_EQ(noted.paths, (std::set<std::string>{kRoot + "Color\\", kRoot + "Common\\",
                                                  kRoot + "LastDocument", kRoot + "LowLevel\\",
                                                  kRoot + "StartMode\\", kRoot + "StartWizard"}));
}

TEST_F(QXProgSettingsTest, SetDefaultsDiffersFromAnEmptyRegistry) {
    PutAll();
    settings.Load();
    settings.SetPosCodePage("page.bin");
    settings.SetDefaults();
    for (const Stored& stored : kStored) {
        const std::string_view property = stored.property;
        const bool isKept = property == "KeyFontSize" || property.starts_with("Win") ||
                            property.starts_with("ShowStartup");
        const Long expected = isKept ? stored.value : stored.whenEmpty;
        EXPECT_EQ(AsNumber(settings.Get(property)), property == "AutoSave" ? 0 : expected)
            << property;
    }
    EXPECT_EQ(settings.PosCodePage(), "page.bin");
}

TEST_F(QXProgSettingsTest, UsesTheDefaultForInvalidEntries) {
    registry.SetPath(kRoot + "Common");
    registry.WriteNumber("Key Font Size", 32768);
    registry.WriteString("Language", "German");
    registry.WriteNumber("CodePage", 7);
    registry.WriteNumber("AutoSave", 2); // any number except 0 is true
    registry.SetPath(kRoot + "StartWizard");
    registry.WriteNumber("Selection", -40000);
    settings.Load();
    EXPECT_EQ(settings.KeyFontSize(), 6);
    EXPECT_EQ(settings.PreferedAppLang(), 0);
    EXPECT_EQ(settings.PosCodePage(), "");
    EXPECT_TRUE(settings.AutoSave());
    EXPECT_EQ(settings.GetShowStartupAction(), 0);
}

TEST_F(QXProgSettingsTest, ReportsAnUnknownPosBlock) {
    EXPECT_EQ(settings.POSColorBlock(10), 0);
    EXPECT_EQ(settings.POSColorBlock(-1), 0);
    settings.DefPOSColorBlock(10, 1);
    EXPECT_EQ(boxes.texts, (std::vector<std::string>{"INVALID POSColorBlock INDEX 10",
                                                     "INVALID POSColorBlock INDEX -1",
                                                     "INVALID DefPOSColorBlock INDEX 10"}));
    EXPECT_FALSE(settings.DataChanged());
    settings.DefPOSColorBlock(9, 5);
    EXPECT_EQ(settings.POSColorBlock(9), 5);
}

TEST_F(QXProgSettingsTest, DetectsUnsavedChanges) {
    settings.SetShowUpcodes(true);
    settings.SetWinParam(0, 1, 2, 3, 4);
    EXPECT_FALSE(settings.DataChanged()); // the same value, and one that Save does not write
    settings.SetPosCodePage("page.bin");
    EXPECT_TRUE(settings.DataChanged());
    settings.Save();
    EXPECT_FALSE(settings.DataChanged());
    settings.Set("ShowUpcodes", false);
    EXPECT_TRUE(settings.DataChanged());
    settings.Load();
    EXPECT_FALSE(settings.DataChanged());
    EXPECT_TRUE(settings.ShowUpcodes());
}

TEST_F(QXProgSettingsTest, SetsOnlyValidValuesByName) {
    EXPECT_THROW((void)settings.Get("autosave"), std::invalid_argument);
    EXPECT_THROW(settings.Set("AutoSave", Long{1}), std::invalid_argument);
    EXPECT_THROW(settings.Set("KeyFontSize", std::string("9")), std::invalid_argument);
    EXPECT_THROW(settings.Set("PosCodePage", Long{1}), std::invalid_argument);
    EXPECT_THROW(settings.Set("KeyFontSize", Long{32768}), std::out_of_range);
    EXPECT_FALSE(settings.DataChanged());
    settings.Set("CommandDelta", Long{32768});
    EXPECT_EQ(settings.CommandDelta(), 32768);

    settings.Set("LastDownloadFile", std::string("cash.json")); // saved at once
    EXPECT_EQ(QXProgSettings(registry).GetLastDownloadFile(), "cash.json");
    settings.SetShowStartupWizard(false);
    EXPECT_EQ(QXProgSettings(registry).Get("ShowStartupWizard"), QXProgSettings::Value(false));
}

} // namespace
} // namespace qx::test
