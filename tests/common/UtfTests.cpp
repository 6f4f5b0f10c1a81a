// The conversions between UTF-8 and UTF-16.
#include "qxcontrols/common/Utf.h"

#include <gtest/gtest.h>

namespace qx::test {
namespace {

TEST(Utf, EveryCharacterHasItsForms) {
    for (char32_t character = 0; character <= 0x10FFFF; ++character) {
        if (character >= 0xD800 && character <= 0xDFFF)
            continue;
        std::u16string units;
        if (character > 0xFFFF) {
            units += static_cast<char16_t>(0xD7C0 + (character >> 10U));
            units += static_cast<char16_t>(0xDC00 + (character & 0x3FFU));
        } else {
            units += static_cast<char16_t>(character);
        }
        const std::string text = Utf8FromUtf16(units);
        ASSERT_TRUE(IsWellFormedUtf8(text)) << std::hex << std::uint32_t{character};
        ASSERT_EQ(Utf16FromUtf8(text), units) << std::hex << std::uint32_t{character};
    }
    EXPECT_EQ(Utf8FromUtf16(u"K\u00E4\u20AC\U0001F600"), "K\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80");
}

TEST(Utf, IllFormedTextIsReplaced) {
    using namespace std::string_literals;
    for (const std::string& text : {
             "\x80"s,             // a continuation byte alone
             "\xC3"s,             // incomplete
             "\xC3"s + "A",       // no continuation byte
             "\xC0\x80"s,         // overlong form of 0
             "\xE0\x9F\xBF"s,     // overlong form of 7FF
             "\xF0\x8F\xBF\xBF"s, // overlong form of FFFF
             "\xED\xA0\x80"s,     // a surrogate
             "\xF4\x90\x80\x80"s, // above 10FFFF
             "\xFF"s,
         }) {
        EXPECT_FALSE(IsWellFormedUtf8("a" + text));
        const std::u16string units = Utf16FromUtf8(text + "z");
        EXPECT_EQ(units.front(), u'\uFFFD');
        EXPECT_EQ(units.back(), u'z');
    }
    const std::u16string unpaired = {0xD800, u'a', 0xDC00, 0xD800, 0xD801, 0xDC01, 0xDBFF};
    EXPECT_EQ(Utf8FromUtf16(unpaired), Utf8FromUtf16(u"\uFFFDa\uFFFD\uFFFD\U00010401\uFFFD"));
}

} // namespace
} // namespace qx::test
