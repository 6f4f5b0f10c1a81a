#include "cli/commands/Commands.h"

#include "cli/Output.h"

#include <algorithm>
#include <memory>

namespace qx::cli {

namespace {

// The heading of the column for an element's setting. Only its sequence has no label.
std::string ColumnOf(const host::SettingName& name) {
    const std::string_view label = name.parts.back().label;
    return label.empty() ? "Sequence" : std::string(label);
}

// The settings of one section: plain ones line by line, the elements of lists as a table.
Lines SectionLines(const std::vector<host::Setting>& settings) {
    std::vector<std::vector<std::string>> plain;
    std::vector<std::vector<std::string>> table = {{""}};
    for (const host::Setting& setting : settings) {
        if (setting.name.elementParts == 0) {
            plain.push_back({ToText(setting.name), ToText(setting.value)});
            continue;
        }
        const std::string row = StepsOf(setting.name).front();
        const std::string name = ColumnOf(setting.name);
        auto column = std::find(table[0].begin(), table[0].end(), name);
        const auto index = static_cast<std::size_t>(column - table[0].begin());
        if (column == table[0].end())
            table[0].push_back(name);
        if (table.back()[0] != row)
            table.push_back({row});
        table.back().resize(std::max(table.back().size(), index + 1));
        table.back()[index] = ToText(setting.value);
    }
    if (settings.empty())
        return {"  (nothing is programmed)"};
    Lines lines = AlignedLines(plain);
    if (table.size() > 1)
        Append(lines, AlignedLines(table));
    return lines;
}

std::vector<std::string> KeysOf(const host::Configuration& configuration) {
    std::vector<std::string> keys;
    for (const auto& section : configuration.Sections())
        keys.emplace_back(section->Info().key);
    return keys;
}

std::vector<host::Section*> Chosen(Context& context, const host::Configuration& configuration,
                                   const std::string& key) {
    if (key.empty())
        return context.Keyboard().SectionsIn(configuration);
    const std::vector<host::Section*> present = context.Keyboard().Present(configuration);
    host::Section* section = configuration.Find(key);
    if (section == nullptr) {
        std::string known;
        for (const std::string& each : KeysOf(configuration))
            known += (known.empty() ? "" : ", ") + each;
        throw UsageError("unknown section \"" + key + "\"; the sections are " + known);
    }
    if (std::find(present.begin(), present.end(), section) == present.end())
        throw UsageError("this keyboard has no section \"" + key + "\"");
    return {section};
}

void Show(Context& context, const std::string& key) {
    host::Session& session = context.Keyboard();
    const auto configuration = context.NamedConfiguration();
    auto sections = Chosen(context, *configuration, key);
    context.WarnOfDamage(session.Upload(sections));
    context.CloseKeyboard();

    host::Json json = {{"settings", host::Json::array()}};
    Lines lines;
    for (host::Section* section : sections) {
        const auto settings = configuration->List({section});
        for (const host::Setting& setting : settings)
            json["settings"].push_back({{"place", setting.place},
                                        {"setting", ToText(setting.name)},
                                        {"value", ToText(setting.value)}});
        if (!lines.empty())
            lines.emplace_back();
        lines.emplace_back(section->Info().key);
        Append(lines, SectionLines(settings));
    }
    context.Result(json, lines);
}

} // namespace

Command ShowCommand() {
    const auto key = std::make_shared<std::string>();
    return {
        .name = "show",
        .summary = "Show the keyboard's settings in words",
        .options = {{.name = "SECTION",
                     .target = key.get(),
                     .summary = "Only this section, by its name in a document",
                     .offers =
                         [](Context& context) { return KeysOf(*context.NewConfiguration()); }}},
        .footer = "Examples:\n"
                  "  qxconf show\n"
                  "  qxconf show magnetCard",
        .run = [key](Context& context) { Show(context, *key); },
    };
}

} // namespace qx::cli
