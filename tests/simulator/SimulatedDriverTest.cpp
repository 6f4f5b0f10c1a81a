// The guarantees of a simulated keyboard, identical in process and as a driver library.

#include "Simulated.h"

#include "qxcontrols/device/QXKeyboardAccess.h"
#include "simulator/FixedAreas.h"

#include <limits>

namespace qx::test {

namespace {

using sim::kMemorySize;
using sim::Status;

// Calls a driver function with zeros and null pointers as arguments.
template <typename... Arguments>
Long CallWithNothing(ConfigDriver& driver, Long (ConfigDriver::*function)(Arguments...)) {
    return (driver.*function)(Arguments{}...);
}

INSTANTIATE_TEST_SUITE_P(Drivers, SimulatedKeyboard, kKinds, NameOfKind);

} // namespace

TEST_P(SimulatedKeyboard, ReportsItsIdentity) {
    ConfigDriver& driver = keyboard.Open();
    QXKeyboardAccess access(driver);
    ASSERT_TRUE(access.Init());
    EXPECT_EQ(access.Keyboard(), "QX-POS-FULL");
    EXPECT_EQ(access.Bootloader() + access.Program() + access.Country() + access.Config(),
              "B100P100US01C001");
    EXPECT_EQ(access.DirectorySize(), 8);
    EXPECT_EQ(access.GetBaseAddressForModule(MODULE_BARCODE_CONFIG), 4352);
    EXPECT_EQ(keyboard.Image(0x7FF, 1), "\xFF"); // every capability
    const std::string identification = keyboard.Image(0x7FC0, 32);
    EXPECT_EQ(identification, "QX-POS-FULL     B100P100US01C001");
    EXPECT_EQ(keyboard.Memory(0x7FC0, 32), identification) << "a load must not erase it";
    std::int32_t module = 0;
    std::int32_t address = 0;
    EXPECT_EQ(driver.QXCFG_ConfigDirectoryGetEntry(8, &module, &address),
              Number(Status::NoSuchEntry));
    EXPECT_EQ(driver.QXCFG_ConfigDirectoryGetEntry(-1, &module, &address),
              Number(Status::NoSuchEntry));
}

TEST_P(SimulatedKeyboard, LeavesTheFactoryWithItsSettings) {
    keyboard.Open();
    const std::string zeros(3, '\0');
    EXPECT_EQ(keyboard.Memory(4096, 8), "\x06" + zeros + std::string(1, '\0') + "\xFF\x0F\x7E");
    for (Long record = 0; record < 105; ++record)
        EXPECT_EQ(keyboard.Memory(16384 + 32 * record, 32), "\xFF" + std::string(31, '\0'));
    EXPECT_EQ(keyboard.Memory(8192, 4512), std::string(4512, '\0'));
    const std::string guid = keyboard.Memory(5376, 16);
    EXPECT_NE(guid, std::string(16, '\0'));
    keyboard.Open("full", "another.qxk");
    EXPECT_NE(keyboard.Memory(5376, 16), guid);
}

TEST_P(SimulatedKeyboard, RefusesCallsThatNeedTheOpenKeyboard) {
    ConfigDriver& driver = keyboard.Plug();
    const auto expected = [](const std::string& name) {
        if (name == "QXCFG_SetCommandDelta" || name == "QXCFG_TransferNotification" ||
            name == "QXCFG_ConfigDirectorySize")
            return Long{0};
        if (name == "QXCFG_GetPositionKey")
            return Long{-1};
        return Number(name == "QXCFG_ConvertBinFileIntoRomFile" ? Status::NoArgument
                                                                : Status::NotOpen);
    };
#define QX_DRIVER_FUNCTION(name, parameters, arguments, result)                                    \
    if (std::string(#name) != "QXCFG_Init") {                                                      \
        EXPECT_EQ(CallWithNothing(driver, &ConfigDriver::name), expected(#name)) << #name;         \
    }
#include "qxcontrols/device/DriverFunctions.def"

    // With an open keyboard, a null buffer or name must not cause a crash, either.
    ASSERT_EQ(driver.QXCFG_Init(), 0);
    int missing = 0;
#define QX_DRIVER_FUNCTION(name, parameters, arguments, result)                                    \
    missing += CallWithNothing(driver, &ConfigDriver::name) == Number(Status::NoArgument) ? 1 : 0;
#include "qxcontrols/device/DriverFunctions.def"
    EXPECT_EQ(missing, 13); // 7 functions with names, 6 with buffers
}

TEST_P(SimulatedKeyboard, KeepsItsMemoryButNotItsImage) {
    ConfigDriver& driver = keyboard.Open();
    keyboard.PutImage(kPlace, "one two");
    driver.QXCFG_MemRequestAdd(5, kPlace, 3);
    driver.QXCFG_MemRequestAdd(5, kMemorySize - 1, 1);
    driver.QXCFG_ImageWriteByte(kMemorySize - 1, 200);
    ASSERT_EQ(driver.QXCFG_ImageSave(), 0);
    keyboard.Open("magnet"); // ignored for an existing keyboard
    EXPECT_EQ(keyboard.Image(kPlace, 7), std::string(7, '\0'));
    EXPECT_EQ(keyboard.Memory(kPlace, 7), "one" + std::string(4, '\0'))
        << "only the requested bytes";
    EXPECT_EQ(keyboard.Memory(kMemorySize - 1, 1), "\xC8");
    EXPECT_EQ(keyboard.Image(0x7FC0, 11), "QX-POS-FULL");
}

TEST_P(SimulatedKeyboard, RefusesAccessBeyondItsMemory) {
    ConfigDriver& driver = keyboard.Open();
    constexpr Long kLowest = std::numeric_limits<Long>::min();
    constexpr Long kHighest = std::numeric_limits<Long>::max();
    std::string buffer(static_cast<std::size_t>(kMemorySize), 'x');
    for (const Long address : {kLowest, -1, 0, 1, kMemorySize - 4, kMemorySize - 3, kMemorySize - 2,
                               kMemorySize - 1, kMemorySize, kMemorySize + 1, kHighest}) {
        const auto expected = [&](std::int64_t size) {
            return address >= 0 && size >= 0 && address + size <= kMemorySize
                       ? 0
                       : Number(Status::OutsideMemory);
        };
        for (const Long size : {kLowest, -1, 0, 1, 2, 3, 4, 5, kMemorySize, kHighest}) {
            SCOPED_TRACE(std::to_string(size) + " bytes at " + std::to_string(address));
            EXPECT_EQ(driver.QXCFG_ImageRead(address, buffer.data(), size), expected(size));
            EXPECT_EQ(driver.QXCFG_ImageWrite(address, buffer.data(), size), expected(size));
            driver.QXCFG_MemRequestClean();
            EXPECT_EQ(driver.QXCFG_MemRequestAdd(0, address, size), expected(size));
            EXPECT_EQ(driver.QXCFG_ImageLoad(), expected(size)) << "must not ignore the request";
        }
        std::uint8_t byte = 77;
        std::int16_t integer = 77;
        std::int32_t number = 77;
        EXPECT_EQ(driver.QXCFG_ImageReadByte(address, &byte), expected(1));
        EXPECT_EQ(driver.QXCFG_ImageReadInt(address, &integer), expected(2));
        EXPECT_EQ(driver.QXCFG_ImageReadLong(address, &number), expected(4));
        EXPECT_EQ(driver.QXCFG_ImageWriteByte(address, 1), expected(1));
        EXPECT_EQ(driver.QXCFG_ImageWriteInt(address, 1), expected(2));
        EXPECT_EQ(driver.QXCFG_ImageWriteLong(address, 1), expected(4));
    }
}

TEST_P(SimulatedKeyboard, HasItsNumbersLowestByteFirst) {
    ConfigDriver& driver = keyboard.Open();
    driver.QXCFG_ImageWriteLong(kPlace, std::int32_t{-2121137404}); // 0x81920304
    driver.QXCFG_ImageWriteInt(kPlace + 4, -2);
    EXPECT_EQ(keyboard.Image(kPlace, 6), "\x04\x03\x92\x81\xFE\xFF");
    std::int16_t integer = 0;
    driver.QXCFG_ImageReadInt(kPlace + 2, &integer);
    EXPECT_EQ(integer, -32366); // 0x8192
    EXPECT_EQ(driver.QXCFG_Init(), 0);
    EXPECT_EQ(keyboard.Image(kPlace, 6), std::string(6, '\0')) << "a start clears the image";
}

TEST_P(SimulatedKeyboard, GivesPositionCodesInPositionMode) {
    ConfigDriver& driver = keyboard.Open();
    keyboard.QueuePositionKey(12);
    keyboard.QueuePositionKey(140);
    EXPECT_NE(driver.QXCFG_IsPositionMode(), 0);
    EXPECT_EQ(driver.QXCFG_GetPositionKey(), -1);
    EXPECT_EQ(driver.QXCFG_EnablePositionMode(), 0);
    EXPECT_EQ(driver.QXCFG_IsPositionMode(), 0);
    for (const Long key : {12, 140, 0, 0})
        EXPECT_EQ(driver.QXCFG_GetPositionKey(), key);
    EXPECT_EQ(driver.QXCFG_DisablePositionMode(), 0);
    EXPECT_NE(driver.QXCFG_IsPositionMode(), 0);
}

TEST_P(SimulatedKeyboard, HasLayersOnlyWithTheirModule) {
    ConfigDriver& full = keyboard.Open();
    for (const Integer layer : {Integer{0}, Integer{9}})
        EXPECT_EQ(full.QXCFG_SelectLayer(layer), 0);
    for (const Integer layer : {Integer{-1}, Integer{10}})
        EXPECT_EQ(full.QXCFG_SelectLayer(layer), Number(Status::NoSuchLayer));
    const std::string words = "the keyboard has no such layer";
    for (const std::size_t size : {words.size() + 1, words.size(), std::size_t{1}})
        if (GetParam() == Kind::Library) {
            EXPECT_EQ(keyboard.StatusText(Number(Status::NoSuchLayer), size),
                      words.substr(0, size - 1));
        }
    ConfigDriver& magnet = keyboard.Open("magnet", "magnet.qxk");
    EXPECT_EQ(magnet.QXCFG_SelectLayer(0), Number(Status::NoSuchLayer));
    EXPECT_EQ(magnet.QXCFG_DisableLayerSelection(), Number(Status::NoSuchLayer));
}

TEST_P(SimulatedKeyboard, KeepsProgramsAndParametersInFiles) {
    const auto name = [&](const char* file) { return (keyboard.folder / file).string(); };
    std::string bin = name("new.bin");
    std::string rom = name("new.rom");
    std::string out = name("out.rom");
    std::string param = name("saved.par");
    std::string own = name("keyboard.qxk");
    files::WriteFileAtomically(bin, std::string("\0program\xFF", 9));

    ConfigDriver* driver = &keyboard.Open();
    EXPECT_EQ(driver->QXCFG_ConvertBinFileIntoRomFile(bin.data(), rom.data(), 1, 2, 3), 0);
    EXPECT_EQ(driver->QXCFG_KeyboardParamSave(param.data()), 0);
    const std::string memory = keyboard.Memory(0, kMemorySize);
    keyboard.PutImage(kPlace, "changed");
    driver->QXCFG_MemRequestAdd(5, kPlace, 7);
    EXPECT_EQ(driver->QXCFG_ImageSave(), 0);
    EXPECT_EQ(driver->QXCFG_KeyboardRomLoad(rom.data()), 0);
    EXPECT_EQ(driver->QXCFG_KeyboardParamLoad(param.data()), 0);

    driver = &keyboard.Open();
    EXPECT_EQ(keyboard.Memory(0, kMemorySize), memory);
    EXPECT_EQ(driver->QXCFG_KeyboardRomSave(out.data()), 0);
    EXPECT_EQ(files::ReadFile(out), files::ReadFile(rom));

    // Files of another kind are refused, and nothing changes.
    const std::string before = files::ReadFile(own);
    const Long invalid = Number(Status::FileInvalid);
    EXPECT_EQ(driver->QXCFG_KeyboardRomLoad(bin.data()), invalid);
    EXPECT_EQ(driver->QXCFG_KeyboardRomLoad(param.data()), invalid);
    EXPECT_EQ(driver->QXCFG_KeyboardChipcardRomLoad(rom.data()), invalid);
    EXPECT_EQ(driver->QXCFG_KeyboardParamLoad(rom.data()), invalid);
    EXPECT_EQ(driver->QXCFG_KeyboardParamLoad(own.data()), invalid);
    EXPECT_EQ(driver->QXCFG_KeyboardParamSave(own.data()), invalid) << "would destroy the keyboard";
    EXPECT_EQ(driver->QXCFG_ConvertBinFileIntoRomFile(bin.data(), own.data(), 0, 0, 0), invalid);
    std::string absent = name("absent/file");
    EXPECT_EQ(driver->QXCFG_KeyboardRomLoad(absent.data()), Number(Status::FileFailed));
    EXPECT_EQ(driver->QXCFG_KeyboardRomSave(absent.data()), Number(Status::FileFailed));
    EXPECT_EQ(files::ReadFile(own), before);
    driver = &keyboard.Open("magnet", "magnet.qxk");
    EXPECT_EQ(driver->QXCFG_KeyboardParamLoad(param.data()), invalid) << "another model's file";
}

TEST_P(SimulatedKeyboard, StaysAsItWasWhenItCannotBeStored) {
    ConfigDriver& driver = keyboard.Open();
    keyboard.PutImage(kPlace, "new");
    driver.QXCFG_MemRequestAdd(5, kPlace, 3);
    std::filesystem::remove(keyboard.folder / "keyboard.qxk");
    std::filesystem::create_directory(keyboard.folder / "keyboard.qxk");
    EXPECT_EQ(driver.QXCFG_ImageSave(), Number(Status::FileFailed));
    EXPECT_EQ(keyboard.Memory(kPlace, 3), std::string(3, '\0'));
}

TEST_P(SimulatedKeyboard, BelongsToOneProgramAtATime) {
    keyboard.Open();
    const std::string before = files::ReadFile(keyboard.folder / "keyboard.qxk");
    {
        sim::SimulatedDriver other(keyboard.folder / "keyboard.qxk", "full");
        EXPECT_EQ(other.QXCFG_Init(), Number(Status::KeyboardInUse));
        EXPECT_NE(other.LastError().find("keyboard.qxk"), std::string::npos);
        EXPECT_EQ(other.QXCFG_ImageLoad(), Number(Status::NotOpen));
        EXPECT_EQ(other.Calls(), 2);
        keyboard.Unplug();
        EXPECT_EQ(other.QXCFG_Init(), 0);
        EXPECT_EQ(other.LastError(), "");
    }
    EXPECT_EQ(files::ReadFile(keyboard.folder / "keyboard.qxk"), before);
}

} // namespace qx::test
