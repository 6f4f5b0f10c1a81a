// The bytes of the magnetic-stripe reader's and the barcode reader's blocks, written out by hand.
#include "qxcontrols/readers/QXBarcode.h"
#include "qxcontrols/readers/QXMagnetCard.h"
#include "support/BlockRoundTrip.h"

namespace qx::test {
namespace {

// 32 codes 0x41 fill their slot completely.
const std::string kFull = [] {
    std::string codes;
    for (int i = 0; i < 32; ++i)
        codes += " 65";
    return codes;
}();

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

// The switches that are on, in bit order.
std::string SwitchesOf(const MagneticSettings& settings) {
    std::string on;
    const auto add = [&](bool isOn, const std::string& name) { on += isOn ? name + " " : ""; };
    int n = 0;
    for (const MagneticTrack& track : settings.tracks) {
        add(track.HeaderEnabled(), "header" + std::to_string(++n));
        add(track.TerminatorEnabled(), "terminator" + std::to_string(n));
    }
    n = 0;
    for (const MagneticTrack& track : settings.tracks)
        add(track.Enabled(), "track" + std::to_string(++n));
    add(settings.options.SendImmediate().Value(), "immediate");
    add(settings.options.VerifyLRC().Value(), "LRC");
    add(settings.options.VerifyLastChar().Value(), "last");
    return on;
}

BlockRow MagneticRow() {
    BlockRow row;
    row.name = "Magnetic";
    row.directory = {{MODULE_MAGNET_CONFIG, 0x1000}, {MODULE_MAGNET_HEADERS, 0x2000}};
    row.make = [](const Platform& platform) { return std::make_unique<QXMagnetCard>(platform); };
    row.fill = [](ModuleControl& filled) {
        auto& control = dynamic_cast<QXMagnetCard&>(filled);
        SetCodes(control.Track1().Header(), {30, 158});
        control.Track2().Header().SetKeyString(kFull);
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
        const MagneticSettings settings{
            control.ReaderOptions(),
            {control.Track1(), control.Track2(), control.Track3(), control.Track4()}};
        return EncodeTrackSlots(settings.tracks) + EncodeMagneticSwitches(settings);
    };
    row.show = [](const ModuleControl& described) {
        const auto& control = dynamic_cast<const QXMagnetCard&>(described);
        std::string text;
        for (const CheckBox& option : control.chkMagneticOptions)
            text += std::to_string(option.Value);
        for (const CheckBox* box : {&control.chkEnableCurrentTrack, &control.chkUseThisHeader,
                                    &control.chkUseThisTerminator})
            text += " " + std::to_string(box->Value);
        return text + " " + control.lblCurrHeader.Caption + "/" + control.lblCurrTerminator.Caption;
    };
    row.shown = "100 0 1 0 30 158/"; // LRC; track 1
    return row;
}

TEST(MagneticSwitches, EveryBitIsOneSwitchOrIgnored) {
    std::istringstream names("header1 terminator1 header2 terminator2 "
                             "header3 terminator3 header4 terminator4 "
                             "track1 track2 track3 track4 - - - - "
                             "- - - - immediate LRC last -");
    for (std::size_t bit = 0; bit < 24; ++bit) {
        std::string name, bytes(3, '\0');
        names >> name;
        bytes[bit / 8] = static_cast<char>(1U << bit % 8);
        MagneticSettings settings;
        DecodeMagneticSwitches(bytes, settings);
        EXPECT_EQ(SwitchesOf(settings), name == "-" ? "" : name + " ") << "bit " << bit;

        bytes[bit / 8] = name == "-" ? '\0' : bytes[bit / 8];
        bytes[2] = static_cast<char>(bytes[2] | 0x0E);
        EXPECT_EQ(EncodeMagneticSwitches(settings), bytes) << "bit " << bit;
    }
}

// --- the barcode reader

// Consecutive flags in a byte, most significant bit first.
struct Run {
    int byte;
    int firstBit;
    BarcodePage page;
    Integer firstFlag;
    Integer count;
};
// clang-format off
const Run kRuns[] = {
    {41, 3, BP_CodaBar, 0, 4},           {42, 7, BP_Code39, 0, 7},   {42, 0, BP_Code93, 0, 1},
    {43, 7, BP_Code25_Overlapped, 0, 4}, {43, 3, BP_Code25_Industrial, 0, 3},
    {43, 0, BP_Code25_Matrix, 0, 1},     {44, 7, BP_UPC, 0, 8},      {45, 7, BP_EAN, 0, 4},
    {45, 3, BP_UPC, 8, 2},               {45, 1, BP_EAN, 4, 2},      {46, 7, BP_Code128, 0, 5},
    {46, 2, BP_Code16K, 0, 3},           {47, 7, BP_MSI, 0, 1},      {47, 6, BP_Plessey, 0, 1},
    {47, 5, BP_Code11, 0, 2},            {48, 6, BP_CommonSettings, 0, 1},
    {48, 5, BP_CommonSettings, 2, 1},    {48, 4, BP_CommonSettings, 1, 1},
    {49, 0, BP_CommonSettings, 4, 1},
};
// clang-format on

template <typename Visit>
void ForEachFlag(Visit visit) {
    for (const Run& run : kRuns)
        for (Integer i = 0; i < run.count; ++i)
            visit(run.byte, run.firstBit - i, run.page, static_cast<Integer>(run.firstFlag + i));
}

BlockRow BarcodeRow() {
    BlockRow row;
    row.name = "Barcode";
    row.directory = {{MODULE_BARCODE_CONFIG, 0x1000}, {MODULE_BARCODE_HEADERS, 0x2000}};
    row.make = [](const Platform& platform) { return std::make_unique<QXBarcode>(platform); };
    row.fill = [](ModuleControl& filled) { // default values for the rest
        auto& control = dynamic_cast<QXBarcode&>(filled);
        for (Integer page = BP_Code39; page <= BP_Plessey; ++page) {
            control.BitPage(page).SetMinSize(page);
            control.BitPage(page).SetMaxSize(static_cast<Integer>(0xA0 + page));
        }
        control.BitPage(BP_CodaBar).Flag(3).SetValue(true);
        control.BitPage(BP_CommonSettings).Flag(1).SetValue(true);
        SetCodes(control.Reader(1).Header(), {30, 158});
        control.Reader(1).Terminator().SetKeyString(kFull);
        SetCodes(control.Reader(2).Terminator(), {28, 156});
        control.Reader(2).SetHeaderEnabled(false);
    };
    row.golden = {
        {MODULE_BARCODE_HEADERS, 0,
         Bytes("1E 9E 00*30   41*32 " // reader 1: header, terminator
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
        BarcodeSettings settings;
        for (Integer page = 0; page < kBarcodeOptionPages; ++page)
            settings.pages[static_cast<std::size_t>(page)] = control.BitPage(page);
        settings.readers = {control.Reader(1), control.Reader(2)};
        return EncodeTrackSlots(settings.readers) + EncodeBarcodeConfig(settings);
    };
    row.show = [](const ModuleControl& described) {
        std::string text;
        for (const CheckBox& box : dynamic_cast<const QXBarcode&>(described).chkBarOption)
            text += std::to_string(box.Value);
        return text;
    };
    row.shown = "1111100000"; // the common settings
    return row;
}

TEST(BarcodeFlags, EveryFlagIsOneBit) {
    const std::string bare = EncodeBarcodeConfig({});
    EXPECT_EQ(bare.substr(36), Bytes("82 00*3 30 C0 00*8"));
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
        EXPECT_EQ(EncodeBarcodeConfig(read), block);
    });
    for (int bit = 0; bit < 4; ++bit) { // header and terminator of reader 1, then of reader 2
        BarcodeSettings settings;
        MagneticTrack& reader = settings.readers[bit < 2 ? 0 : 1];
        bit % 2 == 0 ? reader.SetHeaderEnabled(true) : reader.SetTerminatorEnabled(true);
        EXPECT_EQ(EncodeBarcodeConfig(settings)[48], 1 << bit);
    }
}

TEST(BarcodeDefaults, AreThoseOfTheDevice) {
    BarcodeSettings settings;
    SetBarcodeLimits(settings);
    SetBarcodeDefaults(settings);
    EXPECT_EQ(EncodeBarcodeConfig(settings),
              Bytes("01 3C 01 30 00*4 04 50 03 30 03 3C 03 40 01 40 00 80 00*4 "
                    "03 30 03 3C 00 9A 00*6 82 00*3 30 CA 81 8D EF EF E4 E0 6F 01"));
}

TEST(ReadersWithoutTheirModules, TransferNothing) {
    // Each lacks one module; the magnetic switches' address would then be readable by mistake.
    TestKeyboard keyboard({{MODULE_MAGNET_HEADERS, 0x1000}, {MODULE_BARCODE_HEADERS, 0x2000}});
    const std::string untouched(FakeDriver::kSize, '\xFF');
    keyboard.driver.image = untouched;
    QXMagnetCard magnetic(keyboard.Services());
    QXBarcode barcode(keyboard.Services());
    const auto boxes = [&](ModuleControl& control, QXKeyboardAccess* access) {
        keyboard.boxes.texts.clear();
        control.SetKeyboard(access);
        control.PrepareDataUpload(true);
        control.PrepareDataDownload(true);
        control.DataDownload(true);
        control.DataUpload(true); // without a message box
        return keyboard.boxes.texts;
    };
    for (QXKeyboardAccess* access : {static_cast<QXKeyboardAccess*>(nullptr), &keyboard.access}) {
        EXPECT_EQ(boxes(magnetic, access),
                  (std::vector<std::string>{"PrepareDataUpload Failed", "PrepareDataUpload Failed",
                                            "DataDownload Failed"}));
        EXPECT_EQ(boxes(barcode, access),
                  std::vector<std::string>(3, "INVALID ADDRESSES FOR BARCODE-CONFIG"));
    }
    EXPECT_TRUE(keyboard.driver.requests.empty());
    EXPECT_TRUE(keyboard.driver.image == untouched);
    EXPECT_EQ(barcode.Reader(1).Header().Length(), 0);
}

INSTANTIATE_TEST_SUITE_P(Readers, BlockRoundTrip, testing::Values(MagneticRow(), BarcodeRow()),
                         RowName);

} // namespace
} // namespace qx::test
