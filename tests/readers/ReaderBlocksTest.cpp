// The bytes of the magnetic-stripe reader's and the barcode reader's blocks, written out by hand.
#include "qxcontrols/readers/QXBarcode.h"
#include "qxcontrols/readers/QXMagnetCard.h"
#include "support/BlockRoundTrip.h"

namespace qx::test {
namespace {

std::string Describe(const MagneticTrack& track) {
    return "[" + track.Header().KeyString() + "|" + track.Terminator().KeyString() + "]";
}

bool Coin(std::mt19937& random) {
    return random() % 2 == 0;
}

void RandomiseTrack(MagneticTrack& track, std::mt19937& random) {
    Randomise(track.Header(), random, static_cast<Integer>(random() % 33));
    Randomise(track.Terminator(), random, static_cast<Integer>(random() % 33));
    track.SetEnabled(Coin(random));
    track.SetHeaderEnabled(Coin(random));
    track.SetTerminatorEnabled(Coin(random));
}

// --- the magnetic-stripe reader

// The switches that are on, in the order of their bits.
std::string SwitchesOf(const QXMagnetCard& control) {
    std::string on;
    const auto add = [&](bool isOn, const std::string& name) { on += isOn ? name + " " : ""; };
    for (Integer n = 1; n <= 4; ++n) {
        add(control.Track(n).HeaderEnabled(), "header" + std::to_string(n));
        add(control.Track(n).TerminatorEnabled(), "terminator" + std::to_string(n));
    }
    for (Integer n = 1; n <= 4; ++n)
        add(control.Track(n).Enabled(), "track" + std::to_string(n));
    add(control.ReaderOptions().SendImmediate().Value(), "immediate");
    add(control.ReaderOptions().VerifyLRC().Value(), "LRC");
    add(control.ReaderOptions().VerifyLastChar().Value(), "last");
    return on;
}

const std::vector<FakeDriver::Entry> kMagneticDirectory = {{MODULE_MAGNET_CONFIG, 0x1000},
                                                           {MODULE_MAGNET_HEADERS, 0x2000}};

BlockRow MagneticRow() {
    BlockRow row;
    row.name = "Magnetic";
    row.directory = kMagneticDirectory;
    row.make = [](const Platform& platform) { return std::make_unique<QXMagnetCard>(platform); };
    row.fill = [](ModuleControl& filled) {
        auto& control = dynamic_cast<QXMagnetCard&>(filled);
        SetCodes(control.Track1().Header(), {30, 158});
        for (Integer i = 0; i < 32; ++i)
            control.Track2().Header().AddByte(0x41); // fills its slot
        SetCodes(control.Track3().Terminator(), {1, 129, 255});
        SetCodes(control.Track4().Terminator(), {28});
        for (Integer n = 1; n <= 4; ++n)
            control.Track(n).SetEnabled(n == 2 || n == 3);
        control.Track1().SetHeaderEnabled(true);
        control.Track2().SetTerminatorEnabled(true);
        control.Track4().SetHeaderEnabled(true);
        control.ReaderOptions().SendImmediate().SetValue(false);
        control.ReaderOptions().VerifyLastChar().SetValue(false);
    };
    row.golden = {
        {MODULE_MAGNET_HEADERS, 0,
         Bytes("1E 9E 00*30   00*32 " // track 1: header, terminator
               "41*32         00*32 " // track 2
               "00*32         01 81 FF 00*29 "
               "00*32         1C 00*31")},
        {MODULE_MAGNET_CONFIG, 5,
         Bytes("49 "   // headers 1 and 4, terminator 2
               "06 "   // tracks 2 and 3
               "2E")}, // fixed 0E, LRC
    };
    row.randomise = [](ModuleControl& filled, std::mt19937& random) {
        auto& control = dynamic_cast<QXMagnetCard&>(filled);
        for (Integer n = 1; n <= 4; ++n)
            RandomiseTrack(control.Track(n), random);
        control.ReaderOptions().SendImmediate().SetValue(Coin(random));
        control.ReaderOptions().VerifyLRC().SetValue(Coin(random));
        control.ReaderOptions().VerifyLastChar().SetValue(Coin(random));
    };
    row.describe = [](const ModuleControl& described) {
        const auto& control = dynamic_cast<const QXMagnetCard&>(described);
        std::string text = SwitchesOf(control);
        for (Integer n = 1; n <= 4; ++n)
            text += Describe(control.Track(n));
        return text;
    };
    return row;
}

TEST(MagneticSwitches, EveryBitIsOneSwitchOrIgnored) {
    const std::string names[24] = {
        "header1 ",   "terminator1 ",
        "header2 ",   "terminator2 ",
        "header3 ",   "terminator3 ",
        "header4 ",   "terminator4 ",
        "track1 ",    "track2 ",
        "track3 ",    "track4 ",
        "",           "",
        "",           "",
        "",           "",
        "",           "",
        "immediate ", "LRC ",
        "last ",      "",
    };
    TestKeyboard keyboard(kMagneticDirectory);
    QXMagnetCard control(keyboard.Services());
    control.SetKeyboard(&keyboard.access);
    for (std::size_t bit = 0; bit < 24; ++bit) {
        std::string bytes(3, '\0');
        bytes[bit / 8] = static_cast<char>(1U << bit % 8);
        keyboard.Put(MODULE_MAGNET_CONFIG, bytes, 5);
        keyboard.Upload(control);
        EXPECT_EQ(SwitchesOf(control), names[bit]) << "bit " << bit;

        if (names[bit].empty())
            bytes[bit / 8] = 0;
        bytes[2] = static_cast<char>(bytes[2] | 0x0E);
        keyboard.Download(control);
        EXPECT_TRUE(keyboard.Holds(MODULE_MAGNET_CONFIG, bytes, 5)) << "bit " << bit;
    }
}

// --- the barcode reader

// Flags that follow one another in a byte, from the more significant bit to the less.
struct Run {
    int byte;
    int firstBit;
    BarcodePage page;
    Integer firstFlag;
    Integer count;
};
const Run kRuns[] = {
    {41, 3, BP_CodaBar, 0, 4},
    {42, 7, BP_Code39, 0, 7},
    {42, 0, BP_Code93, 0, 1},
    {43, 7, BP_Code25_Overlapped, 0, 4},
    {43, 3, BP_Code25_Industrial, 0, 3},
    {43, 0, BP_Code25_Matrix, 0, 1},
    {44, 7, BP_UPC, 0, 8},
    {45, 7, BP_EAN, 0, 4},
    {45, 3, BP_UPC, 8, 2},
    {45, 1, BP_EAN, 4, 2},
    {46, 7, BP_Code128, 0, 5},
    {46, 2, BP_Code16K, 0, 3},
    {47, 7, BP_MSI, 0, 1},
    {47, 6, BP_Plessey, 0, 1},
    {47, 5, BP_Code11, 0, 2},
    {48, 6, BP_CommonSettings, 0, 1},
    {48, 5, BP_CommonSettings, 2, 1},
    {48, 4, BP_CommonSettings, 1, 1},
    {49, 0, BP_CommonSettings, 4, 1},
};

template <typename Visit>
void ForEachFlag(Visit visit) {
    for (const Run& run : kRuns)
        for (Integer i = 0; i < run.count; ++i)
            visit(run.byte, run.firstBit - i, run.page, static_cast<Integer>(run.firstFlag + i));
}

void FillReaders(QXBarcode& control) {
    SetCodes(control.Reader(1).Header(), {30, 158});
    for (Integer i = 0; i < 32; ++i)
        control.Reader(1).Terminator().AddByte(0x99); // fills its slot
    SetCodes(control.Reader(2).Terminator(), {28, 156});
    control.Reader(2).SetHeaderEnabled(false);
}

const std::vector<FakeDriver::Entry> kBarcodeDirectory = {{MODULE_BARCODE_CONFIG, 0x1000},
                                                          {MODULE_BARCODE_HEADERS, 0x2000}};

BlockRow BarcodeRow() {
    BlockRow row;
    row.name = "Barcode";
    row.directory = kBarcodeDirectory;
    row.make = [](const Platform& platform) { return std::make_unique<QXBarcode>(platform); };
    row.fill = [](ModuleControl& filled) { // the rest by default
        auto& control = dynamic_cast<QXBarcode&>(filled);
        for (Integer page = BP_Code39; page <= BP_Plessey; ++page) {
            control.BitPage(page).SetMinSize(page);
            control.BitPage(page).SetMaxSize(static_cast<Integer>(0xA0 + page));
        }
        control.BitPage(BP_CodaBar).Flag(3).SetValue(true);
        control.BitPage(BP_CommonSettings).Flag(1).SetValue(true);
        FillReaders(control);
    };
    row.golden = {
        {MODULE_BARCODE_HEADERS, 0,
         Bytes("1E 9E 00*30   99*32 " // reader 1: header, terminator
               "00*32         1C 9C 00*30")},
        {MODULE_BARCODE_CONFIG, 0,
         Bytes(
             "05 A5 03 A3 00*4 "              // CodaBar, Code39
             "06 A6 07 A7 0C AC 0A AA 09 A9 " // Code25 overlapped, industrial, MSI, Code11, Code93
             "04 A4 00*4 "                    // Code128
             "08 A8 0D AD 0B AB "             // Code25 matrix, Plessey, Code16K
             "00*6 82 00*3 30 "               // fixed
             "CB 81 8D EF EF E4 E0 "          // flags; CodaBar's flag 3 is on
             "7B 01")},                       // common flag 1 on, reader 2's header off
    };
    row.randomise = [](ModuleControl& filled, std::mt19937& random) {
        auto& control = dynamic_cast<QXBarcode&>(filled);
        for (Integer page = BP_Code39; page <= BP_Plessey; ++page) {
            control.BitPage(page).SetMinSize(static_cast<Byte>(random()));
            control.BitPage(page).SetMaxSize(static_cast<Byte>(random()));
        }
        ForEachFlag([&](int, int, BarcodePage page, Integer flag) {
            control.BitPage(page).Flag(flag).SetValue(Coin(random));
        });
        RandomiseTrack(control.Reader(1), random);
        RandomiseTrack(control.Reader(2), random);
    };
    row.describe = [](const ModuleControl& described) {
        const auto& control = dynamic_cast<const QXBarcode&>(described);
        std::string text;
        for (Integer page = BP_Code39; page <= BP_Plessey; ++page)
            text += std::to_string(control.BitPage(page).MinSize()) + "-" +
                    std::to_string(control.BitPage(page).MaxSize()) + " ";
        ForEachFlag([&](int, int, BarcodePage page, Integer flag) {
            text += control.BitPage(page).Flag(flag).Value() ? 'T' : 'F';
        });
        for (Integer n : {Integer{1}, Integer{2}})
            text += Describe(control.Reader(n)) + (control.Reader(n).HeaderEnabled() ? "H" : "") +
                    (control.Reader(n).TerminatorEnabled() ? "T" : "");
        return text;
    };
    return row;
}

TEST(BarcodeFlags, EveryFlagIsOneBit) {
    const std::string bare = [] {
        BarcodeSettings off;
        return EncodeBarcodeConfig(off);
    }();
    EXPECT_EQ(bare.substr(36), Bytes("82 00*3 30 C0 00*8"));
    int flags = 0;
    ForEachFlag([&](int byte, int bit, BarcodePage page, Integer flag) {
        BarcodeSettings settings;
        settings.pages[static_cast<std::size_t>(page)].Flag(flag).SetValue(true);
        std::string expected = bare;
        char& changed = expected[static_cast<std::size_t>(byte)];
        changed = static_cast<char>(changed | (1 << bit));
        const std::string block = EncodeBarcodeConfig(settings);
        EXPECT_EQ(block, expected) << "page " << page << " flag " << flag;

        BarcodeSettings read;
        DecodeBarcodeConfig(block, read);
        EXPECT_TRUE(read.pages[static_cast<std::size_t>(page)].Flag(flag).Value());
        EXPECT_EQ(EncodeBarcodeConfig(read), block);
        ++flags;
    });
    EXPECT_EQ(flags, 52);
}

TEST(BarcodeDefaults, AreThoseOfTheDevice) {
    TestKeyboard keyboard(kBarcodeDirectory);
    QXBarcode control(keyboard.Services());
    control.SetKeyboard(&keyboard.access);
    keyboard.Put(MODULE_BARCODE_CONFIG, Bytes("FF*50"));
    keyboard.Upload(control);
    control.DefaultValues();
    keyboard.Download(control);
    EXPECT_TRUE(keyboard.Holds(MODULE_BARCODE_CONFIG, Bytes("01 3C 01 30 00*4 "
                                                            "04 50 03 30 03 3C 03 40 01 40 "
                                                            "00 80 00*4 "
                                                            "03 30 03 3C 00 9A "
                                                            "00*6 82 00*3 30 "
                                                            "CA 81 8D EF EF E4 E0 6F 01")));
}

INSTANTIATE_TEST_SUITE_P(Readers, BlockRoundTrip, testing::Values(MagneticRow(), BarcodeRow()),
                         RowName);

} // namespace
} // namespace qx::test
