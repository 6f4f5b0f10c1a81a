#include "qxcontrols/readers/BarcodeBlocks.h"

#include "qxcontrols/blocks/BlockRoutines.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <stdexcept>

namespace qx {

namespace {

// A symbology's range of code lengths: MinSize at the offset, MaxSize in the byte after it.
struct SizePair {
    Integer offset;
    BarcodePage page;
};

// The order is the keyboard's.
constexpr SizePair kSizes[] = {
    {0, BP_CodaBar},        {2, BP_Code39},   {8, BP_Code25_Overlapped}, {10, BP_Code25_Industrial},
    {12, BP_MSI},           {14, BP_Code11},  {16, BP_Code93},           {18, BP_Code128},
    {24, BP_Code25_Matrix}, {26, BP_Plessey}, {28, BP_Code16K},
};

constexpr FixedBits kFixed[] = {
    {4, 0xFF, 0x00, 4},  // reserved
    {20, 0xFF, 0x00, 4}, // reserved
    {30, 0xFF, 0x00, 6}, {36, 0xFF, 0x82}, {37, 0xFF, 0x00, 3}, {40, 0xFF, 0x30},
    {41, 0xF0, 0xC0},    {47, 0x0F, 0x00}, {48, 0x80, 0x00},    {49, 0xFE, 0x00},
};

struct PageFlag {
    BarcodePage page;
    Integer flag;
};

// clang-format off
constexpr BitField<PageFlag> kFlags[] = {
    {41, 3, {BP_CodaBar, 0}},           {41, 2, {BP_CodaBar, 1}},
    {41, 1, {BP_CodaBar, 2}},           {41, 0, {BP_CodaBar, 3}},

    {42, 7, {BP_Code39, 0}},            {42, 6, {BP_Code39, 1}},
    {42, 5, {BP_Code39, 2}},            {42, 4, {BP_Code39, 3}},
    {42, 3, {BP_Code39, 4}},            {42, 2, {BP_Code39, 5}},
    {42, 1, {BP_Code39, 6}},            {42, 0, {BP_Code93, 0}},

    {43, 7, {BP_Code25_Overlapped, 0}}, {43, 6, {BP_Code25_Overlapped, 1}},
    {43, 5, {BP_Code25_Overlapped, 2}}, {43, 4, {BP_Code25_Overlapped, 3}},
    {43, 3, {BP_Code25_Industrial, 0}}, {43, 2, {BP_Code25_Industrial, 1}},
    {43, 1, {BP_Code25_Industrial, 2}}, {43, 0, {BP_Code25_Matrix, 0}},

    {44, 7, {BP_UPC, 0}},               {44, 6, {BP_UPC, 1}},
    {44, 5, {BP_UPC, 2}},               {44, 4, {BP_UPC, 3}},
    {44, 3, {BP_UPC, 4}},               {44, 2, {BP_UPC, 5}},
    {44, 1, {BP_UPC, 6}},               {44, 0, {BP_UPC, 7}},

    {45, 7, {BP_EAN, 0}},               {45, 6, {BP_EAN, 1}},
    {45, 5, {BP_EAN, 2}},               {45, 4, {BP_EAN, 3}},
    {45, 3, {BP_UPC, 8}},               {45, 2, {BP_UPC, 9}}, // byte 44 is full
    {45, 1, {BP_EAN, 4}},               {45, 0, {BP_EAN, 5}},

    {46, 7, {BP_Code128, 0}},           {46, 6, {BP_Code128, 1}},
    {46, 5, {BP_Code128, 2}},           {46, 4, {BP_Code128, 3}},
    {46, 3, {BP_Code128, 4}},           {46, 2, {BP_Code16K, 0}},
    {46, 1, {BP_Code16K, 1}},           {46, 0, {BP_Code16K, 2}},

    {47, 7, {BP_MSI, 0}},               {47, 6, {BP_Plessey, 0}},
    {47, 5, {BP_Code11, 0}},            {47, 4, {BP_Code11, 1}},

    {48, 6, {BP_CommonSettings, 0}},    {48, 5, {BP_CommonSettings, 2}},
    {48, 4, {BP_CommonSettings, 1}},

    {49, 0, {BP_CommonSettings, 4}},
};
// clang-format on

struct ReaderSwitch {
    std::size_t reader;
    bool (MagneticTrack::*isOn)() const;
    void (MagneticTrack::*turn)(bool);
};

template <std::size_t Reader>
constexpr ReaderSwitch kHeader = {Reader - 1, &MagneticTrack::HeaderEnabled,
                                  &MagneticTrack::SetHeaderEnabled};
template <std::size_t Reader>
constexpr ReaderSwitch kTerminator = {Reader - 1, &MagneticTrack::TerminatorEnabled,
                                      &MagneticTrack::SetTerminatorEnabled};

constexpr BitField<ReaderSwitch> kReaderSwitches[] = {
    {48, 3, kTerminator<2>},
    {48, 2, kHeader<2>},
    {48, 1, kTerminator<1>},
    {48, 0, kHeader<1>},
};

static_assert([] {
    BlockCoverage<kBarcodeConfigSize> coverage;
    for (const SizePair& sizes : kSizes) {
        coverage.Claim(sizes.offset);
        coverage.Claim(static_cast<Integer>(sizes.offset + 1));
    }
    coverage.Claim(kFixed);
    coverage.Claim(kFlags);
    coverage.Claim(kReaderSwitches);
    return coverage.IsExact();
}());

// A number as a byte of the block; code lengths may be out of range.
Byte Checked(Integer nNumber) {
    if (nNumber < 0 || nNumber > 255)
        throw std::overflow_error("the code length " + std::to_string(nNumber) +
                                  " is not one of 0 to 255");
    return static_cast<Byte>(nNumber);
}

} // namespace

bool EncodeBarcodeConfig(const BarcodeSettings& settings, const std::function<bool(Byte)>& put) {
    std::string block(static_cast<std::size_t>(kBarcodeConfigSize), '\0');
    EncodeFixedBits(kFixed, block);
    EncodeBits(kFlags, block, [&](const PageFlag& flag) {
        return settings.pages[static_cast<std::size_t>(flag.page)].Flag(flag.flag).Value();
    });
    EncodeBits(kReaderSwitches, block,
               [&](const ReaderSwitch& s) { return (settings.readers[s.reader].*s.isOn)(); });

    std::array<Integer, kBarcodeConfigSize> numbers{};
    std::transform(block.begin(), block.end(), numbers.begin(),
                   [](char byte) { return static_cast<Byte>(byte); });
    for (const SizePair& sizes : kSizes) {
        const BarcodeOptionPage& page = settings.pages[static_cast<std::size_t>(sizes.page)];
        const auto offset = static_cast<std::size_t>(sizes.offset);
        numbers[offset] = page.MinSize();
        numbers[offset + 1] = page.MaxSize();
    }
    return std::all_of(numbers.begin(), numbers.end(),
                       [&](Integer number) { return put(Checked(number)); });
}

std::string EncodeBarcodeConfig(const BarcodeSettings& settings) {
    std::string block;
    EncodeBarcodeConfig(settings, [&](Byte byte) {
        block += static_cast<char>(byte);
        return true;
    });
    return block;
}

bool HasBarcodeConfigBit(BarcodePage ePage, Integer nFlag) {
    return std::any_of(std::begin(kFlags), std::end(kFlags), [&](const auto& field) {
        return field.setting.page == ePage && field.setting.flag == nFlag;
    });
}

void DecodeBarcodeConfig(std::string_view block, BarcodeSettings& settings) {
    for (const SizePair& sizes : kSizes) {
        BarcodeOptionPage& page = settings.pages[static_cast<std::size_t>(sizes.page)];
        const auto offset = static_cast<std::size_t>(sizes.offset);
        page.SetMinSize(static_cast<Byte>(block[offset]));
        page.SetMaxSize(static_cast<Byte>(block[offset + 1]));
    }
    DecodeBits(kFlags, block, [&](const PageFlag& flag, bool isOn) {
        settings.pages[static_cast<std::size_t>(flag.page)].Flag(flag.flag).SetValue(isOn);
    });
    DecodeBits(kReaderSwitches, block, [&](const ReaderSwitch& s, bool isOn) {
        (settings.readers[s.reader].*s.turn)(isOn);
    });
}

} // namespace qx
