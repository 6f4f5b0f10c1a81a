#include "cli/commands/Commands.h"

#include "cli/Output.h"

#include "host/JsonFieldWriter.h"
#include "qxcontrols/common/Text.h"

namespace qx::cli {

Described DescriptionOf(host::Session& keyboard) {
    const QXKeyboardAccess& access = keyboard.Access();
    host::KeyboardInfo info = keyboard.Keyboard();

    host::Json json;
    std::vector<host::Loss> losses; // always empty: a keyboard's identification fits
    host::JsonFieldWriter writer(json["keyboard"], "/keyboard", losses);
    info.Visit(writer);
    host::Json& directory = json["directory"] = host::Json::array();

    std::vector<host::Setting> settings;
    host::FieldLister lister({"keyboard", "", {}}, nullptr, settings);
    info.Visit(lister);
    std::vector<std::vector<std::string>> rows;
    rows.reserve(settings.size());
    for (const host::Setting& setting : settings)
        rows.push_back({ToText(setting.name), ToText(setting.value)});
    std::vector<std::vector<std::string>> modules = {{"module", "", "address"}};

    for (int i = 1; i <= access.DirectorySize(); ++i) {
        const ConfigDirEntry& entry = *access.DirectoryItem(static_cast<Integer>(i));
        const std::string name(NameOf(entry.ModuleType()));
        directory.push_back({{"module", static_cast<Long>(entry.ModuleType())},
                             {"name", name},
                             {"address", entry.StartAddress()}});
        modules.push_back({std::to_string(entry.ModuleType()), name,
                           std::to_string(entry.StartAddress()) + " (" + Hex(entry.StartAddress()) +
                               " hexadecimal)"});
    }
    Lines lines = {"keyboard"};
    Append(lines, AlignedLines(rows));
    Append(lines, {"", "directory"});
    Append(lines, AlignedLines(modules));
    return {json, lines};
}

namespace {

void Identify(Context& context) {
    const Described described = DescriptionOf(context.Keyboard());
    context.CloseKeyboard();
    context.Result(described.json, described.lines);
}

} // namespace

Command IdentifyCommand() {
    return {
        .name = "identify",
        .summary = "Show which keyboard this is and which modules it has",
        .footer = "Examples:\n"
                  "  qxconf identify\n"
                  "  qxconf --keyboard till.qxk --json identify",
        .run = Identify,
    };
}

} // namespace qx::cli
