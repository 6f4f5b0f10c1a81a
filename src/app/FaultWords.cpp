#include "app/FaultWords.h"

#include "qxcontrols/common/Text.h"

#include <QCoreApplication>

namespace qx::app {

namespace {

struct Faults {
    Q_DECLARE_TR_FUNCTIONS(Faults)
};

// With %1 for the first argument.
QString Pattern(json::FaultKind kind) {
    using Kind = json::FaultKind;
    switch (kind) {
    case Kind::TooManyBytes:
        return Faults::tr("more than %1 bytes");
    case Kind::IsUtf16:
        return Faults::tr("the text is UTF-16, not UTF-8");
    case Kind::EndsEarly:
        return Faults::tr("not valid JSON: the end is missing");
    case Kind::NotJson:
        return Faults::tr("not valid JSON: line %1, at the end of %2");
    case Kind::NumberTooLarge:
        return Faults::tr("the number %1 is too large");
    case Kind::TooDeep:
        return Faults::tr("objects and lists are nested more than %1 deep");
    case Kind::TooManyMembers:
        return Faults::tr("an object has more than %1 members");
    case Kind::GivenTwice:
        return Faults::tr("the member %1 is given twice");
    case Kind::OtherFormat:
        return Faults::tr("not a file of the format \"%1\"");
    case Kind::UnknownVersion:
        return Faults::tr("version %1 is not known; this program reads version %2");
    case Kind::NotAsWritten:
        return Faults::tr("its contents have been changed since it was written");
    case Kind::MoreFaults:
        return Faults::tr("there are more faults than are reported");
    case Kind::UnknownMember:
        return Faults::tr("unknown member %1");
    case Kind::MissingMember:
        return Faults::tr("\"%1\" is missing");
    case Kind::NotAnObject:
        return Faults::tr("%1 is not an object");
    case Kind::NotAList:
        return Faults::tr("%1 is not a list");
    case Kind::NotAListOf:
        return Faults::tr("%1 is not a list of %2 elements");
    case Kind::ListTooLong:
        return Faults::tr("the list has more than %1 elements");
    case Kind::EmptyList:
        return Faults::tr("the list is empty");
    case Kind::NotAText:
        return Faults::tr("%1 is not a text");
    case Kind::EmptyText:
        return Faults::tr("the text is empty");
    case Kind::TextWithNul:
        return Faults::tr("the text holds a character of code 0, which would end it");
    case Kind::TextTooLong:
        return Faults::tr("the text has %1 UTF-16 units, more than the %2 that fit");
    case Kind::NotPlainText:
        return Faults::tr("%1 is not a text of at most %2 printable ASCII characters");
    case Kind::NotAFlag:
        return Faults::tr("%1 is neither true nor false");
    case Kind::NotANumber:
        return Faults::tr("%1 is not a whole number from %2 to %3");
    case Kind::NotACode:
        return Faults::tr("%1 is not a code from %2 to %3");
    case Kind::NotASequence:
        return Faults::tr("%1 is neither a list of key codes nor a text");
    case Kind::NotAChoice:
        return Faults::tr("%1 is not one of: %2");
    case Kind::NotBytes:
        return Faults::tr("%1 is not a text of hexadecimal digits for whole bytes");
    case Kind::NotAnIdentifier:
        return Faults::tr("%1 is not an identifier like {01234567-89AB-CDEF-0123-456789ABCDEF}");
    case Kind::NotAFileName:
        return Faults::tr("%1 is not the name of a file");
    case Kind::NotAModule:
        return Faults::tr("%1 is not a module of a directory");
    case Kind::SequenceTooLong:
        return Faults::tr("the sequence has %1 codes, more than the %2 that fit");
    case Kind::SequenceWithoutNames:
        return Faults::tr("a sequence as text needs a keyboard layout");
    case Kind::NoKeyTypes:
        return Faults::tr("no key of the layout types \"%1\"");
    case Kind::SequenceWithZero:
        return Faults::tr("{0} would end the sequence in the keyboard");
    case Kind::PlaceholderNotApart:
        return Faults::tr("%1 must be an item by itself, with blanks around it");
    case Kind::NotAPlaceholder:
        return Faults::tr(
            "\"%1\" does not begin a placeholder like ${name}; write $${ for ${ itself");
    case Kind::NoValue:
        return Faults::tr("a value is missing for %1");
    case Kind::ValuesTooLong:
        return Faults::tr("its variables give it more than %1 bytes");
    case Kind::NotAVariable:
        return Faults::tr("%1 is not a variable's name: a letter, and then letters, digits, "
                          "hyphens and underscores");
    case Kind::ElementTwice:
        return Faults::tr("the list has more than one element with %1");
    case Kind::NotProgrammable:
        return Faults::tr("key %1 is not programmable here");
    case Kind::KeyTwice:
        return Faults::tr("key %1 is used more than once");
    case Kind::FirstKeyNotSlot:
        return Faults::tr("the block's first key is not its slot, key %1");
    case Kind::FlagNotStored:
        return Faults::tr("the keyboard does not store this option; it can only be %1");
    case Kind::NoIdentifierHere:
        return Faults::tr("this keyboard stores no identifier");
    case Kind::NoSuchModule:
        return Faults::tr("this keyboard has no such module");
    case Kind::AreasMeet:
        return Faults::tr("the area, up to %1, overlaps that of %2, from %3 to %4");
    case Kind::RangeSizesDiffer:
        return Faults::tr("a range does not have as many new bytes as old ones");
    case Kind::HalfCharacter:
        return Faults::tr(
            "the keyboard is damaged at address %1 (hexadecimal): a description holds "
            "half a character");
    case Kind::UnknownGroup:
        return Faults::tr("the keyboard is damaged at address %1 (hexadecimal): key %2 is in "
                          "group %3, and groups are 1 to %4");
    case Kind::TwoSequences:
        return Faults::tr("the keyboard is damaged at address %1 (hexadecimal): keys %2 and %3 "
                          "of group %4 both have a sequence, and a group has one");
    case Kind::DamagedWhenSaved:
        return Faults::tr("was damaged in the keyboard when the backup was made");
    case Kind::SequenceText:
    case Kind::LayoutText:
        return QStringLiteral("%1"); // see TextFault
    // Of batches, which the application has no part in.
    case Kind::NameTaken:
    case Kind::IdentifierTaken:
    case Kind::KeyboardTaken:
    case Kind::ModelWithoutKeyboard:
    case Kind::NoKeyboard:
    case Kind::KeyboardAtBench:
    case Kind::NoDocument:
    case Kind::DocumentUnusable:
    case Kind::FaultInDocument:
    case Kind::SetsTakenIdentifier:
    case Kind::SetsOtherIdentifier:
    case Kind::VariableUnused:
    case Kind::VariableUnusedByUnit:
        return {};
    }
    return {};
}

QString Pattern(TextFaultKind kind) {
    using Kind = TextFaultKind;
    switch (kind) {
    case Kind::SpaceOrPlusMissing:
        return Faults::tr("character %1: a space or + is missing after %2");
    case Kind::SpaceMissing:
        return Faults::tr("character %1: a space is missing after %2");
    case Kind::KeyAfterPlus:
        return Faults::tr("character %1: a key is missing after +");
    case Kind::NotACode:
        return Faults::tr("character %1: %2 is not a code from 0 to 255");
    case Kind::QuoteNotClosed:
        return Faults::tr("character %1: the closing \" is missing");
    case Kind::NoKeyCalled:
        return Faults::tr("character %1: no key is called %2");
    case Kind::NoKeyCalledBut:
        return Faults::tr("character %1: no key is called %2; the nearest: %3");
    case Kind::SeveralKeys:
        return Faults::tr("character %1: %2 could be %3");
    case Kind::NoKeyOfNumber:
        return Faults::tr("character %1: no key has the number %2");
    case Kind::KeyNotPressable:
        return Faults::tr("character %1: %2, key %3, cannot be pressed through a sequence");
    case Kind::NotOrdinary:
        return Faults::tr("the file cannot be read: it is not an ordinary file");
    case Kind::NotReadable:
        return Faults::tr("the file cannot be read");
    case Kind::LargerThan:
        return Faults::tr("the file is larger than %1 MiB");
    case Kind::FolderNotRead:
        return Faults::tr("the folder cannot be read: %1");
    case Kind::NoLanguage:
        return Faults::tr("no layout for language %1 among %2 layout files");
    case Kind::NotNumberText:
        return Faults::tr("not NUMBER=TEXT");
    case Kind::NotUtf8:
        return Faults::tr("not UTF-8");
    case Kind::HasControl:
        return Faults::tr("a control character");
    case Kind::NoSuchString:
        return Faults::tr("a layout has no string %1; the last is %2");
    case Kind::StringTwice:
        return Faults::tr("string %1 is already in line %2");
    case Kind::NotALanguageID:
        return Faults::tr("\"%1\" is not a language id from 1 to 32767");
    case Kind::NoKeys:
        return Faults::tr("the layout has no keys");
    case Kind::NoSeparator:
        return Faults::tr("position code %1: no \"%2\" in (top,left,width,height)");
    case Kind::NotANumber:
        return Faults::tr("position code %1: \"%2\" is not a number");
    case Kind::NumberOver16Bits:
        return Faults::tr("position code %1: %2 exceeds 16 bits");
    case Kind::SupportMissing:
        return Faults::tr("position code %1: the support is missing");
    case Kind::SupportInvalid:
        return Faults::tr("position code %1: the support is \"%2\", not 0, 1 or 2");
    case Kind::ColourMissing:
        return Faults::tr("position code %1: the colour set is missing");
    case Kind::ColourInvalid:
        return Faults::tr("position code %1: the colour set is \"%2\", not 0, 1 or 2");
    case Kind::RectangleMissing:
        return Faults::tr("position code %1: the rectangle (top,left,width,height) is missing");
    case Kind::RectangleInvisible:
        return Faults::tr(
            "position code %1: a key of %2 by %3 cannot be seen: more than 25 each way, or "
            "0 by 0 for a key without a place");
    case Kind::CaptionMissing:
        return Faults::tr("position code %1: the key has no caption");
    }
    return {};
}

QString FilledIn(const QString& pattern, const std::vector<std::string>& arguments) {
    return QString::fromStdString(Filled(pattern.toStdString(), arguments));
}

} // namespace

QString FaultText(const json::Fault& fault) {
    const auto inText = json::TextFaultOf(fault);
    const QString text = inText ? FilledIn(Pattern(inText->kind), inText->arguments)
                                : FilledIn(Pattern(fault.kind), fault.arguments);
    return fault.place.empty() ? text
                               : QString::fromStdString(fault.place) + QStringLiteral(": ") + text;
}

} // namespace qx::app
