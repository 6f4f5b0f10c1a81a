// Fault: what is wrong with a file, or with a part of a keyboard, and where.
//
// A fault is data: its kind and short arguments. Each program words it for its own users; the words
// here are those of the command line and of JSON.
#pragma once

#include "qxcontrols/common/Utf.h"

#include <concepts>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace qx::json {

// The comments name the arguments. A value is the beginning of its JSON text.
enum class FaultKind {
    // A file that cannot be read to its end
    TooManyBytes,   // the most that there can be
    IsUtf16,        //
    EndsEarly,      //
    NotJson,        // line, the last text read
    NumberTooLarge, // number
    TooDeep,        // the most levels
    TooManyMembers, // the most in an object
    GivenTwice,     // member
    OtherFormat,    // the format expected
    UnknownVersion, // version, the version expected
    NotAsWritten,   //
    MoreFaults,     //

    // A value of a wrong form
    UnknownMember,   // member
    MissingMember,   // member
    NotAnObject,     // value
    NotAList,        // value
    NotAListOf,      // value, how many elements
    ListTooLong,     // the most elements
    EmptyList,       //
    NotAText,        // value
    EmptyText,       //
    TextWithNul,     //
    TextTooLong,     // UTF-16 units, the most
    NotPlainText,    // value, the most characters
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
    SequenceTooLong,      // codes, the most
    SequenceWithoutNames, //
    SequenceText,         // the reason, in English
    SequenceWithZero,     //
    PlaceholderNotApart,  // placeholder
    NotAPlaceholder,      // the beginning of the text
    NoValue,              // variables
    ValuesTooLong,        // the most bytes
    NotAVariable,         // value

    // Settings that a keyboard cannot have
    ElementTwice,     // the members that identify it, as JSON
    NotProgrammable,  // key
    KeyTwice,         // key
    FirstKeyNotSlot,  // slot
    FlagNotStored,    // the only value
    NoIdentifierHere, //
    NoSuchModule,     //
    AreasMeet,        // last address, name of the other area, its first and last address
    RangeSizesDiffer, //

    // What a keyboard holds; addresses and bytes are hexadecimal
    HalfCharacter,    // address
    UnknownGroup,     // address, key, group, highest group
    TwoSequences,     // address, key, other key, group
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

// Its name for programs, "not-a-text".
[[nodiscard]] std::string_view CodeOf(FaultKind kind);

struct Fault {
    // Numbers and texts; a text that is too long is shortened.
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

// "300 is not a code from 1 to 255".
[[nodiscard]] std::string WordsOf(const Fault& fault);
// The same with the place in front, if there is one: "/magnetCard/tracks/0/header/3: 300 is ...".
[[nodiscard]] std::string ToText(const Fault& fault);
// The text of the first of them, and how many more there are.
[[nodiscard]] std::string ToText(const std::vector<Fault>& faults);

// Something cannot be used because of its faults, of which there is at least one.
class FaultError : public std::runtime_error {
public:
    explicit FaultError(std::vector<Fault> faults)
        : std::runtime_error(ToText(faults)), m_faults(std::move(faults)) {}
    [[nodiscard]] const std::vector<Fault>& Faults() const { return m_faults; }

private:
    std::vector<Fault> m_faults;
};

// Collects faults. Of very many only the first are kept.
class Faults {
public:
    static constexpr std::size_t kMost = 1000;

    void Add(Fault fault);
    // Further ones are not kept; what is behind need not be read.
    [[nodiscard]] bool AreEnough() const { return m_faults.size() > kMost; }
    [[nodiscard]] std::size_t Count() const { return m_faults.size(); }
    [[nodiscard]] const std::vector<Fault>& All() const { return m_faults; }
    // Throws FaultError if there are any.
    void ThrowAny() const;

private:
    std::vector<Fault> m_faults;
};

} // namespace qx::json
