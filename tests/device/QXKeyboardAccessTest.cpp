#include "qxcontrols/device/QXKeyboardAccess.h"
#include "support/TestKeyboard.h"

#include <limits>
#include <stdexcept>

namespace qx::test {

namespace {

// Records the start-up events as "InitDriver InitDriverWithDelta(0) ...".
class Startup {
public:
    explicit Startup(QXKeyboardAccess& access) {
        Note(access.InitDriver, "InitDriver");
        Note(access.InitDriverWithDelta, "InitDriverWithDelta");
        Note(access.InitDriverOK, "InitDriverOK");
        Note(access.InitDriverFailed, "InitDriverFailed");
        Note(access.InitConfigurationTable, "InitConfigurationTable");
        Note(access.InitConfigurationTableOK, "InitConfigurationTableOK");
        Note(access.InitConfigurationTableFailed, "InitConfigurationTableFailed");
        Note(access.InitKeyboardNaming, "InitKeyboardNaming");
        Note(access.InitKeyboardNamingOK, "InitKeyboardNamingOK");
        Note(access.InitKeyboardNamingFailed, "InitKeyboardNamingFailed");
        Note(access.InitOK, "InitOK");
        Note(access.InitFailed, "InitFailed");
    }
    std::string events;

private:
    void Note(Event<>& event, std::string name) {
        m_subscriptions.push_back(event.Subscribe([this, name] { events += name + " "; }));
    }
    void Note(Event<Long>& event, std::string name) {
        m_subscriptions.push_back(event.Subscribe(
            [this, name](Long value) { events += name + "(" + std::to_string(value) + ") "; }));
    }
    std::vector<Subscription> m_subscriptions;
};

class AccessTest : public testing::Test {
protected:
    AccessTest() { driver.directory = {{MODULE_POS, 0x4000}}; }

    void PutIdentification(const std::string& block, Byte capabilities) {
        driver.image.replace(0x7FC0, block.size(), block);
        driver.image[0x7FF] = static_cast<char>(capabilities);
    }

    FakeDriver driver;
    QXKeyboardAccess access{driver};
};

} // namespace

TEST_F(AccessTest, StartUpRaisesItsEventsInOrder) {
    const std::string opening = "InitDriver InitDriverWithDelta(0) ";
    const std::string table = opening + "InitDriverOK InitConfigurationTable ";
    const std::string naming = table + "InitConfigurationTableOK InitKeyboardNaming ";
    const struct {
        std::map<std::string, std::int32_t> statuses;
        std::vector<FakeDriver::Entry> directory;
        std::string events;
        bool result;
    } cases[] = {
        {{{"QXCFG_Init", 42}}, {{6, 1}}, opening + "InitDriverFailed(42) InitFailed(0) ", false},
        {{{"QXCFG_Init", -1}}, {{6, 1}}, opening + "InitDriverFailed(-1) InitFailed(0) ", false},
        {{}, {}, table + "InitConfigurationTableFailed(0) InitFailed(0) ", false},
        {{{"QXCFG_ImageRead", 1}}, {{6, 1}}, naming + "InitKeyboardNamingFailed(0) ", true},
        {{}, {{6, 1}}, naming + "InitKeyboardNamingOK ", true},
        {{}, {{6, 1, 9}}, naming + "InitKeyboardNamingOK ", true}, // an unreadable entry
    };
    for (const auto& each : cases) {
        FakeDriver keyboard;
        keyboard.statuses = each.statuses;
        keyboard.directory = each.directory;
        QXKeyboardAccess fresh(keyboard);
        fresh.SetCommandDelta(5);
        const Startup startup(fresh);
        EXPECT_EQ(fresh.Init(), each.result);
        EXPECT_EQ(startup.events, each.events);
    }
}

// Whichever handler or driver call throws during the start-up, no exception reaches the host. The
// first two stages then fail; the naming stage does not.
TEST_F(AccessTest, AnExceptionAtStartUpEndsItsStage) {
    PutIdentification("OLD", 0xFF);
    ASSERT_TRUE(access.Init());
    PutIdentification("NEW", 0xFF);
    Startup startup(access);
    const struct {
        Event<>& event;
        bool result;
        std::string lastEvents, error, keyboard;
    } cases[] = {
        {access.InitDriver, false, " InitFailed(0) ", "InitDriver 9 - oops", "OLD"},
        {access.InitDriverOK, false, "OK InitFailed(0) ", "InitDriver 9 - oops", "OLD"},
        {access.InitConfigurationTable, false, "Table InitFailed(0) ",
         "InitConfigurationTable 9 - oops", "OLD"},
        {access.InitConfigurationTableOK, false, "OK InitFailed(0) ",
         "InitConfigurationTable 9 - oops", "OLD"},
        {access.InitKeyboardNaming, true, "Naming ", "InitKeyboardNaming 9 - oops", "OLD"},
        {access.InitKeyboardNamingOK, true, "NamingOK ", "InitKeyboardNaming 9 - oops", "NEW"},
    };
    for (const auto& each : cases) {
        const TraceLog log;
        const auto thrower = each.event.Subscribe([] { throw std::out_of_range("oops"); });
        startup.events.clear();
        EXPECT_EQ(access.Init(), each.result);
        EXPECT_TRUE(startup.events.ends_with(each.lastEvents)) << startup.events;
        EXPECT_TRUE(log.Has("Error in " + each.error)) << each.error;
        EXPECT_EQ(access.Keyboard(), each.keyboard);
        EXPECT_EQ(access.FlagBarcodeReader(), !each.result); // not an earlier keyboard's
    }
    const auto last = access.InitFailed.Subscribe([](Long) { throw 4711; }); // not an exception
    const auto first = access.InitDriver.Subscribe([] { throw 4711; });
    EXPECT_FALSE(access.Init());
}

TEST(ThrowingDriver, IsADriverThatFails) {
    struct Driver : FakeDriver {
        std::string throwing;
        bool throwsAll = false;
#define QX_DRIVER_FUNCTION(name, parameters, arguments, result)                                    \
    std::int32_t name parameters override {                                                        \
        if (throwsAll || throwing == #name)                                                        \
            throw std::runtime_error("not a status");                                              \
        return FakeDriver::name arguments;                                                         \
    }
#include "qxcontrols/device/DriverFunctions.def"
    } driver;
    driver.directory = {{MODULE_LAYERED_FUNCKEYS, 0x4000}};
    QXKeyboardAccess access(driver);
    for (const auto& [function, ready] :
         std::map<std::string, bool>{{"QXCFG_SetCommandDelta", false},
                                     {"QXCFG_Init", false},
                                     {"QXCFG_ConfigDirectorySize", false},
                                     {"QXCFG_ConfigDirectoryGetEntry", false},
                                     {"QXCFG_ImageRead", true},
                                     {"QXCFG_DisableLayerSelection", true}}) {
        driver.throwing = function;
        EXPECT_EQ(access.Init(), ready) << function;
    }
    driver.throwsAll = true;
    const TraceLog log;
    std::string data = "kept", file = "name";
    EXPECT_FALSE(access.ReadFromMemory(data, 0, 4) || access.WriteIntoMemory(data, 0, 4));
    EXPECT_FALSE(access.WriteByteMemory(1, 0) || access.EnablePositionProgMode() ||
                 access.DisablePositionProgMode() || access.IsPositionProgMode());
    EXPECT_EQ(access.ReadByteFromMem(0) + access.ReadByteFromImage(0) + access.ReadIntFromImage(0) +
                  access.ReadLongFromImage(0),
              0);
    access.WriteByteIntoImage(0, 1);
    access.WriteIntIntoImage(0, 1);
    access.WriteLongIntoImage(0, 1);
    access.DataTransferPrepare();
    access.MemRequestAdd(MODULE_POS, 0, 1);
    access.SetNotificationValues(1, 2, 3);
    access.SetChipcardRomParameters(1, 2);
    access.SelectFunctionKeyLayer(1);
    access.Done();
    EXPECT_EQ(access.Upload(), -1);
    EXPECT_EQ(access.Download(), -1);
    EXPECT_EQ(access.GetPositionCodeKey(), -1); // no key pressed
    EXPECT_EQ(access.SaveRomIntoFile(file), -1);
    EXPECT_EQ(access.ConvertBinFileToRomFile(file, data, 1, 2, 3), -1);
    EXPECT_EQ(data + file, "keptname");
    EXPECT_TRUE(log.Has("Error in QXKeyboardAccess.Upload 5 - not a status"));
}

TEST_F(AccessTest, IdentificationIsCleaned) {
    PutIdentification("Abc-_9" + std::string(10, '\0') + "1.0 b2  US01c\x80.9", 0);
    const TraceLog log;
    ASSERT_TRUE(access.Init());
    EXPECT_EQ(access.Keyboard(), "ABC-_9");
    EXPECT_EQ(access.Bootloader(), "1x0x");
    EXPECT_EQ(access.Program(), "B2xx");
    EXPECT_EQ(access.Country(), "US01");
    EXPECT_EQ(access.Config(), "Cxx9");
    EXPECT_TRUE(log.Has("Bootloader = 1x0x"));
    access.SetReplacmentChar("");
    ASSERT_TRUE(access.Init());
    EXPECT_EQ(access.Keyboard() + "/" + access.Bootloader(), "ABC-_9/10");
    access.SetReplacmentChar("ab"); // not a single character: strips nothing
    ASSERT_TRUE(access.Init());
    EXPECT_EQ(access.Keyboard().size(), 6U + 20U);
    PutIdentification("", 0xFF);
    ASSERT_TRUE(access.Init());
    EXPECT_TRUE(access.FlagBarcodeReader());
    driver.end = 0x7FC0 + 31; // unreadable: the names stay, the flags do not
    ASSERT_TRUE(access.Init());
    EXPECT_EQ(access.Country(), "US01");
    EXPECT_FALSE(access.FlagBarcodeReader());
}

TEST_F(AccessTest, EveryCapabilityHasItsBit) {
    const auto flags = [&] {
        return std::vector<bool>{access.FlagFreeProgrammableKeys(), access.FlagConnectionV24(),
                                 access.FlagChicpcardReader(),      access.FlagBarcodeReader(),
                                 access.FlagMagneticTrack4(),       access.FlagMagneticTrack3(),
                                 access.FlagMagneticTrack2(),       access.FlagMagneticTrack1()};
    };
    for (std::size_t bit = 0; bit < 8; ++bit) {
        PutIdentification("", static_cast<Byte>(1U << bit));
        ASSERT_TRUE(access.Init());
        std::vector<bool> expected(8);
        expected[bit] = true;
        EXPECT_EQ(flags(), expected) << "bit " << bit;
    }
}

TEST_F(AccessTest, TheDirectoryFindsTheFirstMatch) {
    driver.directory = {{MODULE_POS, 0x4000},
                        {MODULE_KEYBOARD, 5, 1},
                        {0x10000 + MODULE_POS, 9},
                        {0xFFFF, 7},
                        {MODULE_LAYER_FUNCKEY_DESC, 8}};
    EXPECT_EQ(access.GetBaseAddressForModule(MODULE_POS), -1);
    const TraceLog log;
    ASSERT_TRUE(access.Init());
    EXPECT_EQ(access.DirectorySize(), 4);
    EXPECT_TRUE(log.Has("0 ID = 6 : Addr.= 4000"));
    EXPECT_FALSE(access.HasItem(MODULE_NONE));
    EXPECT_EQ(access.DirectoryItem(3)->ModuleType(), -1);
    EXPECT_EQ(access.GetBaseAddressForModule(MODULE_LAYER_FUNCKEY_DESC), 8);
    access.DirectoryItemByModule(MODULE_POS)->SetStartAddress(0x5000);
    EXPECT_EQ(access.GetBaseAddressForModule(MODULE_POS), 0x5000);
    ASSERT_TRUE(access.Init()); // appends
    EXPECT_EQ(access.DirectorySize(), 8);
    EXPECT_EQ(access.DirectoryItemByModule(MODULE_POS), access.DirectoryItem(1));
    for (const Integer outside : {Integer{0}, Integer{9}, Integer{-1}})
        EXPECT_EQ(access.DirectoryItem(outside), nullptr);
    EXPECT_TRUE(log.Has("Error in DirectoryItem(9)"));
}

TEST_F(AccessTest, TheLargestDirectoryIsReadToItsEnd) {
    driver.directory.assign(32767, {MODULE_POS, 1});
    driver.directory.back() = {MODULE_GUID, 2};
    for (int start = 0; start < 2; ++start) { // the second adds more entries than can be counted
        ASSERT_TRUE(access.Init());
        EXPECT_EQ(access.DirectorySize(), 32767);
        EXPECT_EQ(access.DirectoryItem(32767)->StartAddress(), 2);
    }
}

TEST_F(AccessTest, BlocksAreFilledUpAndFailuresChangeNothing) {
    const TraceLog log;
    EXPECT_TRUE(access.WriteIntoMemory("ab", 0x100, 4));
    EXPECT_EQ(driver.image.substr(0x100, 5), std::string("ab  \0", 5));
    EXPECT_TRUE(log.Has("WriteIntoMemory : Address = 100  Size = 2 Err = 0"));
    std::string data = "kept";
    for (const Long size : {-1, 64001})
        EXPECT_FALSE(access.ReadFromMemory(data, 0, size));
    EXPECT_FALSE(access.ReadFromMemory(data, FakeDriver::kSize - 1, 2));
    EXPECT_EQ(data, "kept");
    EXPECT_TRUE(log.Has("QXKeyboardAccess.ReadFromMemory failed at 1FFFF"));
    EXPECT_TRUE(access.ReadFromMemory(data, 0x100, 3));
    EXPECT_EQ(data, "ab ");
    driver.fillsAtMost = 2; // no bytes of a failed or earlier read may appear
    EXPECT_TRUE(access.ReadFromMemory(data, 0x100, 4));
    EXPECT_EQ(data, std::string("ab\0\0", 4));
    driver.fillsAtMost = FakeDriver::kSize;
    EXPECT_FALSE(access.WriteIntoMemory(std::string(64001, 'x'), 0x1F, 64001));
    EXPECT_TRUE(log.Has("QXKeyboardAccess.WriteIntoMemory failed at 1F"));
    EXPECT_TRUE(access.WriteByteMemory(0xAB, 0x200));
    EXPECT_TRUE(log.Has("WriteByteMemory (200) = AB"));
    EXPECT_EQ(access.ReadByteFromMem(0x200), 0xAB);
    driver.statuses = {{"QXCFG_ImageRead", 1}, {"QXCFG_ImageReadByte", 1}};
    EXPECT_EQ(access.ReadByteFromMem(0x200) + access.ReadByteFromImage(0x200), 0);
}

TEST_F(AccessTest, CallsAreHandedOn) {
    access.SetNotificationValues(7, 8);
    EXPECT_EQ(driver.lastArguments, "7 8 -1");
    driver.statuses["QXCFG_ConvertBinFileIntoRomFile"] = 17;
    std::string source = "a", destination = "b";
    EXPECT_EQ(access.ConvertBinFileToRomFile(source, destination, 1, 2, 3), 17);
    EXPECT_EQ(driver.lastArguments, "a b 1 2 3");
    const TraceLog log;
    access.MemRequestAdd(static_cast<KeyboardModuleIDs>(40000), 0, 1);
    EXPECT_TRUE(driver.requests.empty());
    EXPECT_TRUE(
        log.Has("Error in QXKeyboardAccess.MemRequestAdd 6 - module id 40000 exceeds 16 bits"));
    for (const std::int32_t status : {0, 1, -1}) {
        driver.statuses["QXCFG_EnablePositionMode"] = status;
        driver.statuses["QXCFG_IsPositionMode"] = status;
        EXPECT_EQ(access.EnablePositionProgMode(), status == 0);
        EXPECT_EQ(access.IsPositionProgMode(), status == 0);
    }
    EXPECT_TRUE(log.Has("QXKeyboardAccess.EnablePositionProgMode"));
    EXPECT_TRUE(log.Has("EnablePositionProgMode FAILED"));
}

TEST(KeyboardFiles, NamesGoToTheDriverAndComeBack) {
    struct Driver : FakeDriver {
        std::int32_t QXCFG_KeyboardParamSave(char* name) override {
            EXPECT_STREQ(name, "p\xC3\xA4.bin");
            std::strcpy(name, "P.B");
            return FakeDriver::QXCFG_KeyboardParamSave(name);
        }
    } driver;
    QXKeyboardAccess access(driver);
    const struct {
        const char* function;
        Long (QXKeyboardAccess::*operation)(std::string&);
        const char* procedure;
        const char* comesBack;
    } operations[] = {
        {"KeyboardRomSave", &QXKeyboardAccess::SaveRomIntoFile, "SaveRomIntoFile", nullptr},
        {"KeyboardRomLoad", &QXKeyboardAccess::LoadRomFromFile, "LoadRomFromFile", nullptr},
        {"KeyboardChipcardRomSave", &QXKeyboardAccess::SaveChipcardRomIntoFile,
         "SaveChipcardRomIntoFile", nullptr},
        {"KeyboardChipcardRomLoad", &QXKeyboardAccess::LoadChipcardRomFromFile,
         "LoadChipcardRomFromFile", nullptr},
        {"KeyboardParamSave", &QXKeyboardAccess::SaveParameterIntoFile, "SaveParameterIntoFile",
         "P.B"},
        {"KeyboardParamLoad", &QXKeyboardAccess::LoadParameterFromFile, "LoadParameterFromFile",
         nullptr},
    };
    std::int32_t status = 20;
    for (const auto& each : operations) {
        const TraceLog log;
        const std::string given = "p\xC3\xA4.bin";
        std::string name = given;
        driver.statuses[std::string("QXCFG_") + each.function] = ++status;
        EXPECT_EQ((access.*each.operation)(name), status);
        EXPECT_EQ(driver.calls.back(), std::string("QXCFG_") + each.function);
        EXPECT_EQ(name, each.comesBack != nullptr ? each.comesBack : given);
        EXPECT_EQ(driver.lastArguments, name);
        EXPECT_EQ(log.lines, std::vector<std::string>{std::string("QXKeyboardAccess.") +
                                                      each.procedure + "(" + given + ")"});
    }
}

TEST_F(AccessTest, LayersNeedTheirModule) {
    ASSERT_TRUE(access.Init());
    access.SelectFunctionKeyLayer(3);
    access.Done();
    EXPECT_EQ(driver.layer, -1);
    driver.directory.push_back({MODULE_LAYERED_FUNCKEYS, 0x5000});
    ASSERT_TRUE(access.Init());
    EXPECT_FALSE(driver.layerKeysWork);
    access.SelectFunctionKeyLayer(3);
    EXPECT_EQ(driver.layer, 3);
    access.Done();
    EXPECT_TRUE(driver.layerKeysWork);
}

TEST(WaitSeconds, CountsAcrossTheWrapAndLetsMessagesThrough) {
    struct Clock : TickCounter, PendingMessages {
        std::uint32_t now = 0xFFFFFF00U;
        int processed = 0;
        std::uint32_t GetTickCount() override { return now; }
        void Process() override {
            now += 100;
            ++processed;
        }
    } clock;
    Platform platform;
    platform.tickCounter = &clock;
    platform.pendingMessages = &clock;
    struct Waiting : QXKeyboardAccess {
        using QXKeyboardAccess::QXKeyboardAccess;
        using QXKeyboardAccess::WaitSeconds;
    };
    FakeDriver driver;
    Waiting access(driver, platform);
    access.WaitSeconds(0);
    access.WaitSeconds(-5);
    EXPECT_EQ(clock.processed, 0);
    access.WaitSeconds(2);
    EXPECT_EQ(clock.processed, 21); // the first tick after 2000 milliseconds
    EXPECT_THROW(access.WaitSeconds(std::numeric_limits<Long>::max()), std::overflow_error);
}

TEST(Trace, ASinkThatThrowsDoesNoHarm) {
    SetTraceSink([](std::string_view) { throw std::runtime_error("full disk"); });
    EXPECT_NO_THROW(Trace("text"));
    SetTraceSink({});
}

} // namespace qx::test
