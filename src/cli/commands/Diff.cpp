#include "cli/commands/Commands.h"

#include "cli/Output.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace qx::cli {

namespace {

struct Side {
    std::string name;
    std::vector<std::pair<std::string, std::vector<host::Setting>>> sections; // by their keys

    [[nodiscard]] bool Has(const std::string& key) const {
        return std::any_of(sections.begin(), sections.end(),
                           [&](const auto& section) { return section.first == key; });
    }
    // The settings of the sections that the other side has too.
    [[nodiscard]] std::vector<host::Setting> SettingsIn(const Side& other) const {
        std::vector<host::Setting> settings;
        for (const auto& [key, ofSection] : sections)
            if (other.Has(key))
                settings.insert(settings.end(), ofSection.begin(), ofSection.end());
        return settings;
    }
};

Side SideOf(const std::string& name, const host::Configuration& configuration,
            const std::vector<host::Section*>& sections) {
    Side side{name, {}};
    for (host::Section* section : sections)
        side.sections.emplace_back(section->Info().key, configuration.List({section}));
    return side;
}

Side SideOf(Context& context, const host::ConfigurationDocument& document,
            host::Variables& variables) {
    const auto configuration = context.NewConfiguration();
    const auto sections = ReadDocument(*configuration, document, variables);
    return SideOf(document.Name(), *configuration, sections);
}

// The keyboard's settings of the sections that the document has.
Side SideOfKeyboard(Context& context, const host::ConfigurationDocument& document) {
    host::Session& session = context.Keyboard();
    const auto configuration = context.NewConfiguration();
    auto sections = session.SectionsIn(*configuration);
    std::erase_if(sections, [&](const host::Section* section) {
        return document.Find(section->Info().key) == nullptr;
    });
    session.Upload(sections);
    context.CloseKeyboard();
    return SideOf("keyboard", *configuration, sections);
}

void Diff(Context& context, const std::string& file, const std::string& file2,
          const std::vector<std::string>& set) {
    const auto document = LoadDocument(context, file);
    host::Variables variables = VariablesOf(set);
    const Side from =
        file2.empty() ? SideOfKeyboard(context, document) : SideOf(context, document, variables);
    const Side to =
        SideOf(context, file2.empty() ? document : LoadDocument(context, file2), variables);
    RefuseUnused(variables);

    host::Json json = {{"from", from.name}, {"to", to.name}, {"differences", host::Json::array()}};
    Lines lines;
    const auto add = [&](const host::Difference& difference, const std::string& line) {
        json["differences"].push_back({{"setting", difference.name},
                                       {"place", difference.place},
                                       {"from", difference.from},
                                       {"to", difference.to}});
        lines.push_back(line);
    };
    for (const auto* side : {&from, &to})
        for (const auto& [key, settings] : side->sections) {
            const bool isOld = side == &from;
            if (!(isOld ? to : from).Has(key))
                add({"/" + key, "section " + key, isOld ? "(present)" : "(none)",
                     isOld ? "(none)" : "(present)", false, false},
                    "section " + key + " only in " + side->name);
        }
    for (const auto& difference : Compare(from.SettingsIn(to), to.SettingsIn(from)))
        add(difference, ToText(difference));
    const std::size_t count = json["differences"].size();
    context.exitStatus = count == 0 ? 0 : 1;
    context.Note(from.name + " → " + to.name + ": " + Counted(count, "difference"));
    context.Result(json, lines);
}

} // namespace

Command DiffCommand() {
    struct Options {
        std::string file;
        std::string file2;
        std::vector<std::string> set;
    };
    const auto options = std::make_shared<Options>();
    return {
        .name = "diff",
        .summary = "Compare a document with the keyboard, or with another document",
        .options = {{.name = "FILE",
                     .target = &options->file,
                     .summary = "The document",
                     .isRequired = true},
                    {.name = "FILE2",
                     .target = &options->file2,
                     .summary = "The document to compare with; without it, the keyboard"},
                    SetOption(options->set)},
        .footer = "With one file, each line shows what a download of it would change in the "
                  "keyboard.\nExits with 1 when there are differences.\n\nExamples:\n"
                  "  qxconf diff till.json\n"
                  "  qxconf diff old.json new.json",
        .run =
            [options](Context& context) {
                Diff(context, options->file, options->file2, options->set);
            },
    };
}

} // namespace qx::cli
