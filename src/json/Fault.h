// Fault: an error in a file, or in a part of a keyboard, and its place.
//
// A fault is data: its kind and short arguments. Each program words it for its own users; the
// wording here is for the command line and for JSON.
#pragma once

#include "qxcontrols/common/Utf.h"
#include "qxcontrols/keys/TextFault.h"

#include <concepts>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace qx::json {

// The comments list the arguments. A value is the beginning of its JSON text.
enum class FaultKind {
    // A file that cannot be read to its end
    TooManyBytes,   // the limit
    IsUtf16,        //
    EndsEarly,      //
    NotJson,        // line, the last text read
    NumberTooLarge, // number
    TooDeep,        // the maximum depth
    TooManyMembers, // the maximum number in an object
    GivenTwice,     // member
    OtherFormat,    // the expected format
    UnknownVersion, // version, expected version
    NotAsWritten,   //
    MoreFaults,     //

    // A value of the wrong kind
    UnknownMember,   // member
    MissingMember,   // member
    NotAnObject,     // value
    NotAList,        // value
    NotAListOf,      // value, required number of elements
    ListTooLong,     // the maximum number of elements
    EmptyList,       //
    NotAText,        // value
    EmptyText,       //
    TextWithNul,     //
    TextTooLong,     // UTF-16 units, maximum
    NotPlainText,    // value, maximum number of characters
    NotAFlag,        // value
    NotANumber,      // value, lowest, highest
    NotACode,        // value, lowest, highest
    NotASequence,    // value
    NotAChoice,      // value, choices
    NotBytes,        // value
    NotAnIdentifier, // value
    NotAFileName,    // value
    NotAModule,      // value

    // Sequences as text, and placeholders
    SequenceTooLong,      // codes, maximum
    SequenceWithoutNames, //
    SequenceText,         // the code and the arguments of the TextFault
    LayoutText,           // the same; of a keyboard layout
    NoKeyTypes,           // character
    SequenceWithZero,     //
    PlaceholderNotApart,  // placeholder
    NotAPlaceholder,      // the beginning of the text
    NoValue,              // variables
    ValuesTooLong,        // the maximum number of bytes
    NotAVariable,         // value

    // Settings that a keyboard cannot have
    ElementTwice,     // the members that identify it, as JSON
    NotProgrammable,  // the key's name, "112 (F1)"
    KeyTwice,         // the same
    FirstKeyNotSlot,  // the same, of the slot
    FlagNotStored,    // the only allowed value
    NoIdentifierHere, //
    NoSuchModule,     //
    AreasMeet,        // last address, name of the other area, its first and last address
    RangeSizesDiffer, //

    // A keyboard's contents; addresses and bytes are hexadecimal
    HalfCharacter,    // address
    UnknownGroup,     // address, name of the key, group, highest group
    TwoSequences,     // address, names of two keys, group
    DamagedWhenSaved, //

    // Jobs of many keyboards
    NameTaken,            //
    IdentifierTaken,      // unit
    KeyboardTaken,        // unit
    ModelWithoutKeyboard, //
    NoKeyboard,           //
    KeyboardAtBench,      //
    NoDocument,           //
    DocumentUnusable,     // the reason, in English
    FaultInDocument,      // unit, document, place, the fault in English
    SetsTakenIdentifier,  // unit, the other unit
    SetsOtherIdentifier,  // unit
    VariableUnused,       // variable
    VariableUnusedByUnit, // unit, document, variable
};

[[nodiscard]] constexpr FaultKind LastOf(FaultKind) {
    return FaultKind::VariableUnusedByUnit;
}

// Its name for programs, "not-a-text".
[[nodiscard]] std::string_view CodeOf(FaultKind kind);

// How many arguments its words need.
[[nodiscard]] std::size_t ArgumentsOf(FaultKind kind);

struct Fault {
    // Numbers and texts; long texts are shortened.
    template <typename... Arguments>
    Fault(std::string_view at, FaultKind what, const Arguments&... about)
        : place(Shortened(at)), kind(what), arguments{TextOf(about)...} {}

    bool operator==(const Fault&) const = default;

    std::string place; // a JSON pointer; empty for the whole
    FaultKind kind;
    std::vector<std::string> arguments;

private:
    static std::string TextOf(std::string_view text) { return Shortened(text); }
    static std::string TextOf(std::integral auto number) { return std::to_string(number); }
};

// A fault of the kind SequenceText or LayoutText.
[[nodiscard]] Fault FaultOfText(FaultKind kind, const TextFault& text);
// The text's fault that it was made from; none for other kinds, or if the arguments do not fit.
[[nodiscard]] std::optional<TextFault> TextFaultOf(const Fault& fault);

// "300 is not a code from 1 to 255".
[[nodiscard]] std::string WordsOf(const Fault& fault);
// The same after the place, if there is one: "/magnetCard/tracks/0/header/3: 300 is ...".
[[nodiscard]] std::string ToText(const Fault& fault);
// The text of the first fault, and the number of others.
[[nodiscard]] std::string ToText(const std::vector<Fault>& faults);

// Something cannot be used because of its faults; there is at least one.
class FaultError : public std::runtime_error {
public:
    explicit FaultError(std::vector<Fault> faults)
        : std::runtime_error(ToText(faults)), m_faults(std::move(faults)) {}
    [[nodiscard]] const std::vector<Fault>& Faults() const { return m_faults; }

private:
    std::vector<Fault> m_faults;
};

// Collects faults; only the first ones of very many.
class Faults {
public:
    static constexpr std::size_t kMost = 1000;

    void Add(Fault fault);
    // No more are kept, so the rest need not be read.
    [[nodiscard]] bool AreEnough() const { return m_faults.size() > kMost; }
    [[nodiscard]] std::size_t Count() const { return m_faults.size(); }
    [[nodiscard]] const std::vector<Fault>& All() const { return m_faults; }
    // Throws FaultError if there are any.
    void ThrowAny() const;

private:
    std::vector<Fault> m_faults;
};

} // namespace qx::json
