// TextFault: an error in a text that describes keys, as data: a keyboard layout or a sequence.
//
// Each program words it for its own users; the words here are English.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace qx {

// The comments list the arguments.
enum class TextFaultKind {
    // A sequence; the first argument is the number of the character, from 1
    SpaceOrPlusMissing, // character, the key before
    SpaceMissing,       // character, the key before
    KeyAfterPlus,       // character
    NotACode,           // character, the number in braces
    QuoteNotClosed,     // character
    NoKeyCalled,        // character, name
    NoKeyCalledBut,     // character, name, the keys with the nearest names
    SeveralKeys,        // character, name, the keys
    NoKeyOfNumber,      // character, number
    KeyNotPressable,    // character, name, number

    // The file of a layout, or the folder
    NotOrdinary,    //
    NotReadable,    //
    LargerThan,     // MiB
    FolderNotRead,  // the system's reason
    NoLanguage,     // language id, number of layout files
    NotNumberText,  //
    NotUtf8,        //
    HasControl,     //
    NoSuchString,   // number, the last number
    StringTwice,    // number, line
    NotALanguageID, // text
    NoKeys,         //

    // A key of a layout; the first argument is its position code
    NoSeparator,        // code, character
    NotANumber,         // code, text
    NumberOver16Bits,   // code, text
    SupportMissing,     // code
    SupportInvalid,     // code, character
    ColourMissing,      // code
    ColourInvalid,      // code, character
    RectangleMissing,   // code
    RectangleInvisible, // code, width, height
    CaptionMissing,     // code
};

inline constexpr TextFaultKind kLastTextFaultKind = TextFaultKind::CaptionMissing;

// Its name for programs, "no-key-called".
[[nodiscard]] std::string_view CodeOf(TextFaultKind kind);

// How many arguments its words need.
[[nodiscard]] std::size_t ArgumentsOf(TextFaultKind kind);

struct TextFault {
    TextFaultKind kind{};
    std::vector<std::string> arguments{};

    bool operator==(const TextFault&) const = default;
};

// "character 3: no key is called "Foo"", "position code 30: the key has no caption".
[[nodiscard]] std::string WordsOf(const TextFault& fault);

class TextFaultError : public std::invalid_argument {
public:
    explicit TextFaultError(TextFault fault)
        : std::invalid_argument(WordsOf(fault)), m_fault(std::move(fault)) {}
    [[nodiscard]] const TextFault& Fault() const { return m_fault; }

private:
    TextFault m_fault;
};

} // namespace qx
