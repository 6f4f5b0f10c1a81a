#include "json/Fault.h"

#include "qxcontrols/common/Text.h"

namespace qx::json {

namespace {

struct KindText {
    std::string_view code;
    std::string_view words; // with %1 for the first argument
};

KindText TextOf(FaultKind kind) {
    switch (kind) {
    case FaultKind::TooManyBytes:
        return {"too-many-bytes", "more than %1 bytes"};
    case FaultKind::IsUtf16:
        return {"is-utf-16", "the text is UTF-16, not UTF-8"};
    case FaultKind::EndsEarly:
        return {"ends-early", "not valid JSON: the end is missing"};
    case FaultKind::NotJson:
        return {"not-json", "not valid JSON: line %1, at the end of %2"};
    case FaultKind::NumberTooLarge:
        return {"number-too-large", "the number %1 is too large"};
    case FaultKind::TooDeep:
        return {"too-deep", "objects and lists are nested more than %1 deep"};
    case FaultKind::TooManyMembers:
        return {"too-many-members", "an object has more than %1 members"};
    case FaultKind::GivenTwice:
        return {"given-twice", "the member %1 is given twice"};
    case FaultKind::OtherFormat:
        return {"other-format", "not a file of the format \"%1\""};
    case FaultKind::UnknownVersion:
        return {"unknown-version", "version %1 is not known; this program reads version %2"};
    case FaultKind::NotAsWritten:
        return {"not-as-written", "its contents have been changed since it was written"};
    case FaultKind::MoreFaults:
        return {"more-faults", "there are more faults than are reported"};
    case FaultKind::UnknownMember:
        return {"unknown-member", "unknown member %1"};
    case FaultKind::MissingMember:
        return {"missing-member", "\"%1\" is missing"};
    case FaultKind::NotAnObject:
        return {"not-an-object", "%1 is not an object"};
    case FaultKind::NotAList:
        return {"not-a-list", "%1 is not a list"};
    case FaultKind::NotAListOf:
        return {"not-a-list-of", "%1 is not a list of %2 elements"};
    case FaultKind::ListTooLong:
        return {"list-too-long", "the list has more than %1 elements"};
    case FaultKind::EmptyList:
        return {"empty-list", "the list is empty"};
    case FaultKind::NotAText:
        return {"not-a-text", "%1 is not a text"};
    case FaultKind::EmptyText:
        return {"empty-text", "the text is empty"};
    case FaultKind::TextWithNul:
        return {"text-with-nul", "the text holds a character of code 0, which would end it"};
    case FaultKind::TextTooLong:
        return {"text-too-long", "the text has %1 UTF-16 units, more than the %2 that fit"};
    case FaultKind::NotPlainText:
        return {"not-plain-text", "%1 is not a text of at most %2 printable ASCII characters"};
    case FaultKind::NotAFlag:
        return {"not-a-flag", "%1 is neither true nor false"};
    case FaultKind::NotANumber:
        return {"not-a-number", "%1 is not a whole number from %2 to %3"};
    case FaultKind::NotACode:
        return {"not-a-code", "%1 is not a code from %2 to %3"};
    case FaultKind::NotASequence:
        return {"not-a-sequence", "%1 is neither a list of key codes nor a text"};
    case FaultKind::NotAChoice:
        return {"not-a-choice", "%1 is not one of: %2"};
    case FaultKind::NotBytes:
        return {"not-bytes", "%1 is not a text of hexadecimal digits for whole bytes"};
    case FaultKind::NotAnIdentifier:
        return {"not-an-identifier",
                "%1 is not an identifier like {01234567-89AB-CDEF-0123-456789ABCDEF}"};
    case FaultKind::NotAFileName:
        return {"not-a-file-name", "%1 is not the name of a file"};
    case FaultKind::NotAModule:
        return {"not-a-module", "%1 is not a module of a directory"};
    case FaultKind::SequenceTooLong:
        return {"sequence-too-long", "the sequence has %1 codes, more than the %2 that fit"};
    case FaultKind::SequenceWithoutNames:
        return {"sequence-without-names", "a sequence as text needs a keyboard layout"};
    case FaultKind::SequenceText:
        return {"sequence-text", "%1"};
    case FaultKind::LayoutText:
        return {"layout-text", "%1"};
    case FaultKind::NoKeyTypes:
        return {"no-key-types", "no key of the layout types \"%1\""};
    case FaultKind::SequenceWithZero:
        return {"sequence-with-zero", "{0} would end the sequence in the keyboard"};
    case FaultKind::PlaceholderNotApart:
        return {"placeholder-not-apart", "%1 must be an item by itself, with blanks around it"};
    case FaultKind::NotAPlaceholder:
        return {"not-a-placeholder",
                "\"%1\" does not begin a placeholder like ${name}; write $${ for ${ itself"};
    case FaultKind::NoValue:
        return {"no-value", "a value is missing for %1"};
    case FaultKind::ValuesTooLong:
        return {"values-too-long", "its variables give it more than %1 bytes"};
    case FaultKind::NotAVariable:
        return {"not-a-variable", "%1 is not a variable's name: a letter, and then letters, "
                                  "digits, hyphens and underscores"};
    case FaultKind::ElementTwice:
        return {"element-twice", "the list has more than one element with %1"};
    case FaultKind::NotProgrammable:
        return {"not-programmable", "key %1 is not programmable here"};
    case FaultKind::KeyTwice:
        return {"key-twice", "key %1 is used more than once"};
    case FaultKind::FirstKeyNotSlot:
        return {"first-key-not-slot", "the block's first key is not its slot, key %1"};
    case FaultKind::FlagNotStored:
        return {"flag-not-stored", "the keyboard does not store this option; it can only be %1"};
    case FaultKind::NoIdentifierHere:
        return {"no-identifier-here", "this keyboard stores no identifier"};
    case FaultKind::NoSuchModule:
        return {"no-such-module", "this keyboard has no such module"};
    case FaultKind::AreasMeet:
        return {"areas-meet", "the area, up to %1, overlaps that of %2, from %3 to %4"};
    case FaultKind::RangeSizesDiffer:
        return {"range-sizes-differ", "a range does not have as many new bytes as old ones"};
    case FaultKind::HalfCharacter:
        return {"half-character", "the keyboard is damaged at address %1 (hexadecimal): a "
                                  "description holds half a character"};
    case FaultKind::UnknownGroup:
        return {"unknown-group", "the keyboard is damaged at address %1 (hexadecimal): key %2 is "
                                 "in group %3, and groups are 1 to %4"};
    case FaultKind::TwoSequences:
        return {"two-sequences", "the keyboard is damaged at address %1 (hexadecimal): keys %2 "
                                 "and %3 of group %4 both have a sequence, and a group has one"};
    case FaultKind::DamagedWhenSaved:
        return {"damaged-when-saved", "was damaged in the keyboard when the backup was made"};
    case FaultKind::NameTaken:
        return {"name-taken", "is the name of another unit"};
    case FaultKind::IdentifierTaken:
        return {"identifier-taken", "is also the identifier of %1"};
    case FaultKind::KeyboardTaken:
        return {"keyboard-taken",
                "is also that of %1; units of one driver need an \"identifier\" each"};
    case FaultKind::ModelWithoutKeyboard:
        return {"model-without-keyboard", "is for a \"keyboard\", which is missing"};
    case FaultKind::NoKeyboard:
        return {"no-keyboard", "names neither a \"driver\" nor a \"keyboard\""};
    case FaultKind::KeyboardAtBench:
        return {"keyboard-at-bench",
                "this is a job for the bench, so a unit names no driver and no keyboard"};
    case FaultKind::NoDocument:
        return {"no-document", "has no document, and neither has the job"};
    case FaultKind::DocumentUnusable:
        return {"document-unusable", "%1"};
    case FaultKind::FaultInDocument:
        return {"fault-in-document", "%1: %2: %3: %4"};
    case FaultKind::SetsTakenIdentifier:
        return {"sets-taken-identifier",
                "%1: the document gives the keyboard the identifier that %2 gets"};
    case FaultKind::SetsOtherIdentifier:
        return {"sets-other-identifier", "%1: the document gives the keyboard another one"};
    case FaultKind::VariableUnused:
        return {"variable-unused", "no document has a placeholder ${%1}"};
    case FaultKind::VariableUnusedByUnit:
        return {"variable-unused-by-unit", "%1: %2 has no placeholder ${%3}"};
    }
    return {};
}

} // namespace

std::string_view CodeOf(FaultKind kind) {
    return TextOf(kind).code;
}

std::size_t ArgumentsOf(FaultKind kind) {
    return ArgumentsIn(TextOf(kind).words);
}

Fault FaultOfText(FaultKind kind, const TextFault& text) {
    Fault fault("", kind, CodeOf(text.kind));
    for (const std::string& argument : text.arguments)
        fault.arguments.push_back(Shortened(argument));
    return fault;
}

std::optional<TextFault> TextFaultOf(const Fault& fault) {
    const auto& arguments = fault.arguments;
    if ((fault.kind != FaultKind::SequenceText && fault.kind != FaultKind::LayoutText) ||
        arguments.empty())
        return std::nullopt;
    for (int i = 0; i <= static_cast<int>(kLastTextFaultKind); ++i)
        if (const auto kind = static_cast<TextFaultKind>(i);
            CodeOf(kind) == arguments.front() && arguments.size() > ArgumentsOf(kind))
            return TextFault{kind, {arguments.begin() + 1, arguments.end()}};
    return std::nullopt;
}

std::string WordsOf(const Fault& fault) {
    constexpr std::size_t kMost = 400; // that of a job contains two file names
    const auto text = TextFaultOf(fault);
    return Shortened(text ? WordsOf(*text) : Filled(TextOf(fault.kind).words, fault.arguments),
                     kMost);
}

std::string ToText(const Fault& fault) {
    return (fault.place.empty() ? "" : fault.place + ": ") + WordsOf(fault);
}

std::string ToText(const std::vector<Fault>& faults) {
    std::string text = ToText(faults.front());
    if (faults.size() > 1)
        text += " (and " + std::to_string(faults.size() - 1) +
                (faults.size() == 2 ? " more fault)" : " more faults)");
    return text;
}

void Faults::Add(Fault fault) {
    if (m_faults.size() == kMost)
        m_faults.emplace_back("", FaultKind::MoreFaults);
    if (!AreEnough())
        m_faults.push_back(std::move(fault));
}

void Faults::ThrowAny() const {
    if (!m_faults.empty())
        throw FaultError(m_faults);
}

} // namespace qx::json
