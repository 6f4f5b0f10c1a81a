#include "host/ColourSet.h"

#include "qxcontrols/platform/RegistryAccess.h"

#include <gtest/gtest.h>

#include <cmath>

namespace qx::test {

using namespace host;

namespace {

using Triple = std::array<double, 3>;
using Matrix = std::array<Triple, 3>;

Triple Times(const Matrix& matrix, const Triple& vector) {
    Triple result{};
    for (std::size_t row = 0; row < 3; ++row)
        for (std::size_t column = 0; column < 3; ++column)
            result[row] += matrix[row][column] * vector[column];
    return result;
}

// The colours of dichromats in linear RGB (Machado, Oliveira and Fernandes, 2009), and everybody's.
constexpr Matrix kEyes[] = {
    {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}},
    {{{0.152286, 1.052583, -0.204868},
      {0.114503, 0.786281, 0.099216},
      {-0.003882, -0.048116, 1.051998}}},
    {{{0.367322, 0.860646, -0.227968},
      {0.280085, 0.672501, 0.047413},
      {-0.011820, 0.042940, 0.968881}}},
    {{{1.255528, -0.076749, -0.178779},
      {-0.078411, 0.930809, 0.147602},
      {0.004733, 0.691367, 0.303900}}},
};
constexpr Matrix kXyzFromRgb = {
    {{0.4124, 0.3576, 0.1805}, {0.2126, 0.7152, 0.0722}, {0.0193, 0.1192, 0.9505}}};

// The colour as these eyes see it, in CIE L*a*b*.
Triple Lab(Long color, const Matrix& eyes) {
    Triple linear{};
    for (std::size_t i = 0; i < 3; ++i) {
        const double part = (color >> (8 * i) & 0xFF) / 255.0;
        linear[i] = part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    }
    Triple seen = Times(eyes, linear);
    for (double& part : seen)
        part = std::clamp(part, 0.0, 1.0);
    Triple xyz = Times(kXyzFromRgb, seen);
    constexpr Triple kWhite{0.9505, 1, 1.089};
    for (std::size_t i = 0; i < 3; ++i) {
        xyz[i] /= kWhite[i];
        xyz[i] = xyz[i] > 0.008856 ? std::cbrt(xyz[i]) : 7.787 * xyz[i] + 16.0 / 116;
    }
    return {116 * xyz[1] - 16, 500 * (xyz[0] - xyz[1]), 200 * (xyz[1] - xyz[2])};
}

double Distance(Long a, Long b, const Matrix& eyes) {
    const Triple one = Lab(a, eyes);
    const Triple other = Lab(b, eyes);
    return std::hypot(one[0] - other[0], one[1] - other[1], one[2] - other[2]);
}

} // namespace

// Adjacent colours are easy to distinguish from a distance of about 10.
TEST(ColourSet, EverybodyTellsBlocksAndStatesApart) {
    for (const ColourSetId id : {ColourSetId::Light, ColourSetId::Dark}) {
        const ColourSet set = ColourSetOf(id);
        for (const Matrix& eyes : kEyes) {
            for (std::size_t a = 0; a < set.blocks.size(); ++a) {
                EXPECT_GT(Distance(set.blocks[a], set.noBlock, eyes), 15) << "block " << a;
                EXPECT_GT(Distance(set.blocks[a], set.current, eyes), 10) << "block " << a;
                for (std::size_t b = a + 1; b < set.blocks.size(); ++b)
                    EXPECT_GT(Distance(set.blocks[a], set.blocks[b], eyes), 10)
                        << "blocks " << a << " and " << b;
            }
            for (const Long state : {set.empty, set.programmed})
                EXPECT_GT(Distance(set.current, state, eyes), 30);
            EXPECT_GT(Distance(set.empty, set.programmed, eyes), 9);
        }
    }
}

TEST(ColourSet, IsRecognisedUntilAColourIsChanged) {
    MemoryRegistry registry;
    QXProgSettings preferences(registry);
    preferences.SetDefaults();
    EXPECT_EQ(ColoursInUse(preferences), ColourSetId::Classic);
    for (const ColourSetId id : kColourSets) {
        UseColours(preferences, id);
        EXPECT_EQ(ColoursInUse(preferences), id);
    }
    UseColours(preferences, ColourSetId::Light);
    preferences.DefPOSColorBlock(9, 1);
    EXPECT_EQ(ColoursInUse(preferences), std::nullopt);
}

TEST(ColourSet, AColourOfTheUsersGoesBackToThatOfTheSetInUse) {
    MemoryRegistry registry;
    QXProgSettings preferences(registry);
    for (const ColourSetId id : kColourSets) {
        UseColours(preferences, id);
        preferences.SetColorProg(1);
        preferences.DefPOSColorBlock(9, 2);
        EXPECT_EQ(DesignedColour(preferences, Preference::ColorProg), ColourSetOf(id).programmed);
        EXPECT_EQ(DesignedColour(
                      preferences,
                      static_cast<Preference>(static_cast<int>(Preference::POSColorBlock0) + 9)),
                  ColourSetOf(id).blocks[9]);
    }
}

} // namespace qx::test
