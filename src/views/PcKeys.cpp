#include "views/PcKeys.h"

#include <QKeyEvent>

#include <array>
#include <iterator>

namespace qx::views {

namespace {

// By the scan codes of the keyboards' first set, which kernels keep for these keys.
constexpr std::array<Byte, 89> kByScanCode = {
    0,  110, 2,   3,  4,  5,   6,   7,   8,   9,   10,  11,  12,  13,  15,  16,  17,  18,
    19, 20,  21,  22, 23, 24,  25,  26,  27,  28,  43,  58,  31,  32,  33,  34,  35,  36,
    37, 38,  39,  40, 41, 1,   44,  29,  46,  47,  48,  49,  50,  51,  52,  53,  54,  55,
    57, 100, 60,  61, 30, 112, 113, 114, 115, 116, 117, 118, 119, 120, 121, 90,  125, 91,
    96, 101, 105, 92, 97, 102, 106, 93,  98,  103, 99,  104, 0,   0,   45,  122, 123,
};

struct ExtendedKey {
    std::uint16_t kernel;  // Linux's number
    std::uint16_t windows; // the scan code with the mark of extended keys
    Byte position;
};

constexpr ExtendedKey kExtended[] = {
    {96, 0x11C, 108}, {97, 0x11D, 64},  {98, 0x135, 95},  {99, 0x137, 124}, {100, 0x138, 62},
    {102, 0x147, 80}, {103, 0x148, 83}, {104, 0x149, 85}, {105, 0x14B, 79}, {106, 0x14D, 89},
    {107, 0x14F, 81}, {108, 0x150, 84}, {109, 0x151, 86}, {110, 0x152, 75}, {111, 0x153, 76},
    {69, 0x145, 90},  {119, 0x45, 126},
};

} // namespace

Byte PositionCodeOf(const QKeyEvent& event) {
#ifdef Q_OS_WIN
    const quint32 code = event.nativeScanCode();
    for (const ExtendedKey& key : kExtended)
        if (key.windows == code)
            return key.position;
#else
    constexpr quint32 kOffset = 8; // of the X server's numbers
    const quint32 code = event.nativeScanCode() - kOffset;
    for (const ExtendedKey& key : kExtended)
        if (key.kernel == code)
            return key.position;
#endif
    return code < kByScanCode.size() ? kByScanCode[code] : Byte{0};
}

} // namespace qx::views
