#include "host/SettingName.h"

#include "host/Section.h"

#include <utility>

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

std::vector<std::string> StepsOf(const SettingName& name, const PartWord& wordOf,
                                 std::string_view language) {
    std::vector<std::string> steps;
    for (std::size_t i = 0; i < name.parts.size(); ++i) {
        const NamePart& part = name.parts[i];
        std::string step = part.caption.In(language);
        if (step.empty()) {
            step = part.label.empty() ? std::string() : wordOf(part);
            AddWord(step, part.number);
        }
        if (step.empty())
            continue;
        if (i > 0 && i < name.elementParts)
            steps.back() += ", " + step;
        else
            steps.push_back(std::move(step));
    }
    return steps;
}

std::vector<std::string> StepsOf(const SettingName& name) {
    return StepsOf(
        name, [](const NamePart& part) { return std::string(part.label); }, "en");
}

std::string JoinedSteps(const std::vector<std::string>& steps) {
    std::string text;
    for (const std::string& step : steps)
        text += (text.empty() ? "" : " › ") + step;
    return text;
}

std::string ToText(const SettingName& name) {
    std::vector<std::string> steps = StepsOf(name);
    steps.insert(steps.begin(), std::string(name.title));
    return JoinedSteps(steps);
}

std::string ToText(const SettingValue& value) {
    using Kind = SettingValue::Kind;
    switch (value.kind) {
    case Kind::Text:
        return value.text;
    case Kind::Quoted:
        return '"' + value.text + '"';
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
