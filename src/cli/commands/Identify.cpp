#include "cli/commands/Commands.h"

#include "host/JsonFieldWriter.h"
#include "qxcontrols/common/Text.h"

namespace qx::cli {

namespace {

void Identify(Context& context) {
    const QXKeyboardAccess& access = context.Keyboard().Access();
    host::KeyboardInfo info = context.Keyboard().Keyboard();

    host::Json json;
    host::JsonFieldWriter writer(json["keyboard"]);
    info.Visit(writer);
    host::Json& directory = json["directory"] = host::Json::array();

    std::vector<host::Setting> settings;
    host::FieldLister lister("keyboard", "", nullptr, settings);
    info.Visit(lister);
    std::string text;
    for (const host::Setting& setting : settings)
        text += setting.name + ": " + setting.value + "\n";

    for (Integer i = 1; i <= access.DirectorySize(); ++i) {
        const ConfigDirEntry& entry = *access.DirectoryItem(i);
        const std::string name(NameOf(entry.ModuleType()));
        directory.push_back({{"module", static_cast<Long>(entry.ModuleType())},
                             {"name", name},
                             {"address", entry.StartAddress()}});
        text += "module " + std::to_string(entry.ModuleType()) + " " + name + " at address " +
                std::to_string(entry.StartAddress()) + " (" + Hex(entry.StartAddress()) +
                " hexadecimal)\n";
    }
    context.CloseKeyboard();
    context.Result(json, text);
}

} // namespace

void AddIdentify(CLI::App& app, Context& context) {
    CLI::App* command =
        app.add_subcommand("identify", "Tell which keyboard this is and what it has");
    command->footer("Examples:\n"
                    "  qxconf identify\n"
                    "  qxconf --keyboard till.qxk --json identify");
    command->callback([&context] { Identify(context); });
}

} // namespace qx::cli
