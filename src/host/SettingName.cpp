#include "host/SettingName.h"

#include "host/Section.h"

namespace qx::host {

namespace {

void AddWord(std::string& words, std::string_view word) {
    if (!words.empty() && !word.empty())
        words += ' ';
    words += word;
}

} // namespace

SettingName NameOf(const SectionInfo& section) {
    return {section.key, section.title, {}};
}

std::string ToText(std::span<const NamePart> parts) {
    std::string text;
    for (const NamePart& part : parts) {
        AddWord(text, part.label);
        AddWord(text, part.number);
    }
    return text;
}

std::string ToText(const SettingName& name) {
    std::string text(name.title);
    AddWord(text, ToText(std::span(name.parts)));
    return text;
}

std::string ToText(const SettingValue& value) {
    using Kind = SettingValue::Kind;
    switch (value.kind) {
    case Kind::Text:
        return value.text;
    case Kind::Off:
        return "off";
    case Kind::On:
        return "on";
    case Kind::Empty:
        return "(empty)";
    case Kind::None:
        return "(none)";
    case Kind::Damaged:
        return "(damaged)";
    case Kind::Sound:
        return "(sound)";
    }
    return {};
}

} // namespace qx::host
