#include "qxcontrols/keys/TextFault.h"

#include "qxcontrols/common/Text.h"

#include <algorithm>

namespace qx {

namespace {

struct KindText {
    std::string_view code;
    std::string_view words; // with %1 for the first argument
};

KindText TextOf(TextFaultKind kind) {
    using Kind = TextFaultKind;
    switch (kind) {
    case Kind::SpaceOrPlusMissing:
        return {"space-or-plus-missing", "character %1: a space or + is missing after %2"};
    case Kind::SpaceMissing:
        return {"space-missing", "character %1: a space is missing after %2"};
    case Kind::KeyAfterPlus:
        return {"key-after-plus", "character %1: a key is missing after +"};
    case Kind::NotACode:
        return {"not-a-code", "character %1: %2 is not a code from 0 to 255"};
    case Kind::QuoteNotClosed:
        return {"quote-not-closed", "character %1: the closing \" is missing"};
    case Kind::NoKeyCalled:
        return {"no-key-called", "character %1: no key is called %2"};
    case Kind::NoKeyCalledBut:
        return {"no-key-called-but", "character %1: no key is called %2; the nearest: %3"};
    case Kind::SeveralKeys:
        return {"several-keys", "character %1: %2 could be %3"};
    case Kind::NoKeyOfNumber:
        return {"no-key-of-number", "character %1: no key has the number %2"};
    case Kind::KeyNotPressable:
        return {"key-not-pressable",
                "character %1: %2, key %3, cannot be pressed through a sequence"};
    case Kind::NotOrdinary:
        return {"not-ordinary", "the file cannot be read: it is not an ordinary file"};
    case Kind::NotReadable:
        return {"not-readable", "the file cannot be read"};
    case Kind::LargerThan:
        return {"larger-than", "the file is larger than %1 MiB"};
    case Kind::FolderNotRead:
        return {"folder-not-read", "the folder cannot be read: %1"};
    case Kind::NoLanguage:
        return {"no-language", "no layout for language %1 among %2 layout files"};
    case Kind::NotNumberText:
        return {"not-number-text", "not NUMBER=TEXT"};
    case Kind::NotUtf8:
        return {"not-utf-8", "not UTF-8"};
    case Kind::HasControl:
        return {"has-control", "a control character"};
    case Kind::NoSuchString:
        return {"no-such-string", "a layout has no string %1; the last is %2"};
    case Kind::StringTwice:
        return {"string-twice", "string %1 is already in line %2"};
    case Kind::NotALanguageID:
        return {"not-a-language-id", "\"%1\" is not a language id from 1 to 32767"};
    case Kind::NoKeys:
        return {"no-keys", "the layout has no keys"};
    case Kind::NoSeparator:
        return {"no-separator", "position code %1: no \"%2\" in (top,left,width,height)"};
    case Kind::NotANumber:
        return {"not-a-number", "position code %1: \"%2\" is not a number"};
    case Kind::NumberOver16Bits:
        return {"number-over-16-bits", "position code %1: %2 exceeds 16 bits"};
    case Kind::SupportMissing:
        return {"support-missing", "position code %1: the support is missing"};
    case Kind::SupportInvalid:
        return {"support-invalid", "position code %1: the support is \"%2\", not 0, 1 or 2"};
    case Kind::ColourMissing:
        return {"colour-missing", "position code %1: the colour set is missing"};
    case Kind::ColourInvalid:
        return {"colour-invalid", "position code %1: the colour set is \"%2\", not 0, 1 or 2"};
    case Kind::RectangleMissing:
        return {"rectangle-missing",
                "position code %1: the rectangle (top,left,width,height) is missing"};
    case Kind::RectangleInvisible:
        return {"rectangle-invisible",
                "position code %1: a key of %2 by %3 cannot be seen: more than 25 each way, or "
                "0 by 0 for a key without a place"};
    case Kind::CaptionMissing:
        return {"caption-missing", "position code %1: the key has no caption"};
    }
    return {};
}

} // namespace

std::string_view CodeOf(TextFaultKind kind) {
    return TextOf(kind).code;
}

std::size_t ArgumentsOf(TextFaultKind kind) {
    return ArgumentsIn(TextOf(kind).words);
}

std::string WordsOf(const TextFault& fault) {
    return Filled(TextOf(fault.kind).words, fault.arguments);
}

} // namespace qx
