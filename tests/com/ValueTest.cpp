// Conversion of the hosts' values to the types that members declare.

#include "Host.h"

#include <limits>

namespace qx::test {
namespace {

using namespace com;

constexpr int kOverflow = static_cast<int>(ErrorNumber::Overflow);
constexpr int kMismatch = static_cast<int>(ErrorNumber::TypeMismatch);

struct Conversion {
    Kind to;
    Value from;
    Value result;  // unless there is
    int error = 0; // an error
};

TEST(ComValue, IsBroughtToTheDeclaredTypeOrRefused) {
    const Value none;
    const Conversion conversions[] = {
        // 16, 32 and 8 bits: exact up to both limits, an overflow beyond them
        {Kind::Integer, Long{32767}, Integer{32767}},
        {Kind::Integer, Long{-32768}, Integer{-32768}},
        {Kind::Integer, Long{32768}, none, kOverflow},
        {Kind::Integer, Long{-32769}, none, kOverflow},
        {Kind::Integer, 32767.4, Integer{32767}},
        {Kind::Integer, 32767.5, none, kOverflow},
        {Kind::Long, 2147483647.0, Long{2147483647}},
        {Kind::Long, -2147483648.0, std::numeric_limits<Long>::min()},
        {Kind::Long, 2147483648.0, none, kOverflow},
        {Kind::Enumeration, 4294967296.0, none, kOverflow},
        {Kind::Long, std::numeric_limits<double>::quiet_NaN(), none, kOverflow},
        {Kind::Byte, Integer{255}, Byte{255}},
        {Kind::Byte, Integer{256}, none, kOverflow},
        {Kind::Byte, Integer{-1}, none, kOverflow},
        {Kind::Byte, true, Byte{255}},
        {Kind::Single, 0.5, Single{0.5}},
        {Kind::Single, 1e39, none, kOverflow},
        // halves round to the even neighbour
        {Kind::Integer, 0.5, Integer{0}},
        {Kind::Integer, 1.5, Integer{2}},
        {Kind::Integer, 2.5, Integer{2}},
        {Kind::Integer, -1.5, Integer{-2}},
        {Kind::Long, u"2.5", Long{2}},
        // Booleans are -1 and 0, and any number except 0 is true
        {Kind::Integer, true, Integer{-1}},
        {Kind::Long, false, Long{0}},
        {Kind::Boolean, Integer{-1}, true},
        {Kind::Boolean, Long{256}, true},
        {Kind::Boolean, 0.25, true},
        {Kind::Boolean, Byte{0}, false},
        {Kind::Boolean, u"true", true},
        {Kind::Boolean, u"False", false},
        {Kind::Boolean, u"yes", none, kMismatch},
        // texts
        {Kind::Integer, u" 12 ", Integer{12}},
        {Kind::Integer, u"-12", Integer{-12}},
        {Kind::Integer, u"70000", none, kOverflow},
        {Kind::Integer, u"", none, kMismatch},
        {Kind::Integer, u"12 13", none, kMismatch},
        {Kind::Integer, u"inf", none, kMismatch},
        {Kind::Text, Integer{-12}, u"-12"},
        {Kind::Text, Byte{7}, u"7"},
        {Kind::Text, 0.25, u"0.25"},
        {Kind::Text, Single{0.1F}, u"0.1"},
        {Kind::Text, true, u"True"},
        {Kind::Text, u"\u00e4\u4e2d", u"\u00e4\u4e2d"},
        // variables that the host has not set
        {Kind::Long, none, Long{0}},
        {Kind::Boolean, none, false},
        {Kind::Text, none, u""},
        {Kind::Block, none, u""},
        // objects are not values, and values are not objects
        {Kind::Text, ObjectRef(), none, kMismatch},
        {Kind::Long, ObjectRef(), none, kMismatch},
        {Kind::Variant, Single{2.5F}, Single{2.5F}},
    };
    for (std::size_t i = 0; i < std::size(conversions); ++i) {
        const auto& row = conversions[i];
        Value value;
        EXPECT_EQ(ErrorOf([&] { value = Coerced(row.from, {row.to}, "value"); }), row.error)
            << "row " << i;
        EXPECT_TRUE(row.error != 0 || value == row.result) << "row " << i;
    }
}

TEST(ComValue, ErrorNamesTheValueAndTheRange) {
    try {
        (void)Coerced(Long{70000}, {Kind::Integer}, "KeySequence.AddByte, nValue");
        FAIL();
    } catch (const Error& error) {
        EXPECT_STREQ(error.what(), "KeySequence.AddByte, nValue: outside -32768 to 32767");
    }
}

TEST(ComValue, MemoryHasOneUnitForEachByte) {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte)
        bytes.push_back(static_cast<char>(byte));
    const std::u16string text = TextOfBytes(bytes);
    ASSERT_EQ(text.size(), 256U);
    EXPECT_EQ(text[0], u'\0');
    EXPECT_EQ(text[255], u'\u00ff');
    EXPECT_EQ(BytesOf(text, "sData"), bytes);
    EXPECT_EQ(ErrorOf([] { (void)BytesOf(u"A\u0100", "sData"); }),
              Of(ErrorNumber::InvalidProcedureCall));
}

} // namespace
} // namespace qx::test
