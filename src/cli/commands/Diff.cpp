#include "cli/commands/Commands.h"

#include "cli/Output.h"
#include "host/WritePlan.h"

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
    // The settings of the sections that the other side also has.
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
    const auto sections = configuration->Read(document, variables);
    context.NameOptions(*configuration, document);
    return SideOf(document.Name(), *configuration, sections);
}

// Differences as they are reported, for programs and for people.
class Report {
public:
    void AddAll(const std::vector<host::Difference>& differences) {
        for (const host::Difference& difference : differences) {
            m_json.push_back(ToJson(difference));
            m_lines.push_back(ToText(difference));
        }
    }
    void AddSection(const std::string& key, const std::string& from, const std::string& to,
                    const std::string& what) {
        const std::string name = "section " + key;
        m_json.push_back({{"setting", name}, {"place", "/" + key}, {"from", from}, {"to", to}});
        m_lines.push_back(name + " " + what);
    }

    void Show(Context& context, const std::string& from, const std::string& to) const {
        context.exitStatus = m_json.empty() ? 0 : 1;
        context.Note(from + " → " + to + ": " + Counted(m_json.size(), "difference"));
        context.Result({{"from", from}, {"to", to}, {"differences", m_json}}, m_lines);
    }

private:
    host::Json m_json = host::Json::array();
    Lines m_lines;
};

// The changes that a download of the document would make in the keyboard.
void DiffWithKeyboard(Context& context, const host::ConfigurationDocument& document,
                      host::Variables& variables, Report& report) {
    host::Session& session = context.Keyboard();
    const auto configuration = context.NewConfiguration();
    auto [sections, absent] = session.Read(*configuration, document, variables, true);
    for (const host::Fault& fault : absent)
        report.AddSection(fault.place.substr(1), "(none)", "(present)",
                          "only in " + document.Name());
    const auto scratch = context.NamedConfiguration();
    host::Planner planner(session.ReadContent(*scratch), *scratch);
    context.CloseKeyboard();
    for (const host::Fault& fault : planner.Damaged(sections)) {
        const std::string key = fault.place.substr(1);
        report.AddSection(key, "(damaged)", "(present)", "cannot be compared: " + WordsOf(fault));
        std::erase_if(sections, [&](const auto* section) { return section->Info().key == key; });
    }
    report.AddAll(planner.ForSettings(sections).settings);
}

void DiffDocuments(Context& context, const host::ConfigurationDocument& one,
                   const host::ConfigurationDocument& other, host::Variables& variables,
                   Report& report) {
    const Side from = SideOf(context, one, variables);
    const Side to = SideOf(context, other, variables);
    for (const auto& [key, settings] : from.sections)
        if (!to.Has(key))
            report.AddSection(key, "(present)", "(none)", "only in " + from.name);
    for (const auto& [key, settings] : to.sections)
        if (!from.Has(key))
            report.AddSection(key, "(none)", "(present)", "only in " + to.name);
    report.AddAll(Compare(from.SettingsIn(to), to.SettingsIn(from)));
}

void Diff(Context& context, const std::string& file, const std::string& file2,
          const std::vector<std::string>& set) {
    const auto document = LoadDocument(context, file);
    host::Variables variables = VariablesOf(set);
    Report report;
    if (file2.empty()) {
        DiffWithKeyboard(context, document, variables, report);
        RefuseUnused(variables);
        return report.Show(context, "keyboard", document.Name());
    }
    const auto other = LoadDocument(context, file2);
    DiffDocuments(context, document, other, variables, report);
    RefuseUnused(variables);
    report.Show(context, document.Name(), other.Name());
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
        .footer = "With one file, each line shows a change that a download of it would make in the "
                  "keyboard.\nExits with 1 if there are differences.\n\nExamples:\n"
                  "  qxconf diff till.json\n"
                  "  qxconf diff old.json new.json",
        .run =
            [options](Context& context) {
                Diff(context, options->file, options->file2, options->set);
            },
    };
}

} // namespace qx::cli
