#include "cli/commands/Commands.h"

#include "cli/Output.h"

#include <memory>

namespace qx::cli {

namespace {

struct Side {
    std::string name;
    std::vector<host::Setting> settings;
};

Side SideOf(Context& context, const host::ConfigurationDocument& document) {
    const auto configuration = context.NewConfiguration();
    return {document.Name(), configuration->List(configuration->Read(document))};
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
    return {"keyboard", configuration->List(sections)};
}

void Diff(Context& context, const std::string& file, const std::string& file2) {
    const auto document = host::ConfigurationDocument::Load(file);
    const Side from = file2.empty() ? SideOfKeyboard(context, document) : SideOf(context, document);
    const Side to =
        SideOf(context, file2.empty() ? document : host::ConfigurationDocument::Load(file2));

    host::Json json = {{"from", from.name}, {"to", to.name}, {"differences", host::Json::array()}};
    std::string text;
    for (const auto& difference : Compare(from.settings, to.settings)) {
        json["differences"].push_back({{"setting", difference.name},
                                       {"place", difference.place},
                                       {"from", difference.from},
                                       {"to", difference.to}});
        text += ToText(difference) + "\n";
    }
    const std::size_t count = json["differences"].size();
    context.exitStatus = count == 0 ? 0 : 1;
    context.Note(from.name + " → " + to.name + ": " + Counted(count, "difference"));
    context.Result(json, text);
}

} // namespace

void AddDiff(CLI::App& app, Context& context) {
    CLI::App* command = app.add_subcommand(
        "diff", "Compare a document with the keyboard, or with another document");
    const auto file = std::make_shared<std::string>();
    const auto file2 = std::make_shared<std::string>();
    command->add_option("FILE", *file, "The document")->required();
    command->add_option("FILE2", *file2, "The document to compare with; without it, the keyboard");
    command->footer("With one file, each line tells what a download of it would change in the "
                    "keyboard.\nExits with 1 when there are differences.\n\nExamples:\n"
                    "  qxconf diff till.json\n"
                    "  qxconf diff old.json new.json");
    command->callback([&context, file, file2] { Diff(context, *file, *file2); });
}

} // namespace qx::cli
