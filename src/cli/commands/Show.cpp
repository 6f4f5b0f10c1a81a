#include "cli/commands/Commands.h"

#include <algorithm>
#include <memory>

namespace qx::cli {

namespace {

// How wide the text is on a screen, near enough: its UTF-8 characters.
std::size_t Width(const std::string& text) {
    return static_cast<std::size_t>(std::count_if(
        text.begin(), text.end(), [](char c) { return (static_cast<Byte>(c) & 0xC0U) != 0x80U; }));
}

std::string Table(const std::vector<host::Setting>& settings) {
    std::size_t widest = 0;
    for (const host::Setting& setting : settings)
        widest = std::max(widest, Width(setting.name));
    std::string text;
    for (const host::Setting& setting : settings)
        text += setting.name + std::string(widest - Width(setting.name) + 2, ' ') + setting.value +
                "\n";
    return text;
}

std::vector<host::Section*> Chosen(Context& context, const host::Configuration& configuration,
                                   const std::string& key) {
    const auto present = context.Keyboard().SectionsIn(configuration);
    if (key.empty())
        return present;
    host::Section* section = configuration.Find(key);
    if (section == nullptr) {
        std::string known;
        for (const auto& each : configuration.Sections())
            known.append(known.empty() ? "" : ", ").append(each->Info().key);
        throw host::Error(host::ErrorKind::Usage,
                          "there is no section \"" + key + "\"; the sections are " + known);
    }
    if (std::find(present.begin(), present.end(), section) == present.end())
        throw host::Error(host::ErrorKind::Usage, "this keyboard has no section \"" + key + "\"");
    return {section};
}

void Show(Context& context, const std::string& key) {
    const auto configuration = context.NewConfiguration();
    const auto sections = Chosen(context, *configuration, key);
    context.Keyboard().Upload(sections);
    context.CloseKeyboard();
    const auto settings = configuration->List(sections);

    host::Json json = {{"settings", host::Json::array()}};
    for (const host::Setting& setting : settings)
        json["settings"].push_back(
            {{"place", setting.place}, {"setting", setting.name}, {"value", setting.value}});
    context.Result(json, Table(settings));
}

} // namespace

void AddShow(CLI::App& app, Context& context) {
    CLI::App* command = app.add_subcommand("show", "Tell the keyboard's settings in words");
    const auto key = std::make_shared<std::string>();
    command->add_option("SECTION", *key, "Only this section, by its name in a document");
    command->footer("Examples:\n"
                    "  qxconf show\n"
                    "  qxconf show magnetCard");
    command->callback([&context, key] { Show(context, *key); });
}

} // namespace qx::cli
