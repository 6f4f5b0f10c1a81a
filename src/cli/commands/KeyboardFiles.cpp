#include "cli/commands/Commands.h"
#include "files/SystemTexts.h"

#include "cli/Output.h"

#include "cli/PreferenceStore.h"
#include "host/KeyboardFiles.h"

#include <memory>
#include <optional>

namespace qx::cli {

namespace {

// According to the options, or else the preferences.
struct ChosenLine {
    std::optional<Integer> baudRateIndex;
    std::optional<Integer> comPort;
};

host::SerialLine LineOf(Context& context, const ChosenLine& chosen) {
    PreferenceStore preferences(context);
    const QXProgSettings& settings = preferences.Settings();
    return {chosen.baudRateIndex.value_or(settings.ChipcardBaudrate()),
            chosen.comPort.value_or(settings.ChipcardPort())};
}

void Transfer(Context& context, const host::KeyboardFileKind& kind, bool save,
              const std::string& file, const ChosenLine& chosen) {
    const host::SerialLine line = kind.hasSerialLine ? LineOf(context, chosen) : host::SerialLine{};
    host::Session& session = context.Keyboard();
    if (save)
        RefuseTarget(context, file);
    host::Writer::Outcome outcome;
    if (save)
        host::SaveKeyboardFile(session, kind, files::PathOf(file), line);
    else
        outcome =
            host::LoadKeyboardFile(session, context.Writer(), kind, files::PathOf(file), line);
    if (save)
        context.CloseKeyboard();
    const std::string direction = save ? "keyboard to file" : "file to keyboard";
    const std::string content(kind.content);
    host::Json json = {{"direction", direction}, {"content", content}, {"file", file}};
    if (!save) {
        json["verified"] = false;
        json["backup"] = outcome.backup;
        context.CloseKeyboard();
    }
    Lines lines = {direction + ": the " + content + (save ? " saved into " : " loaded from ") +
                   file};
    if (!outcome.backup.empty())
        lines.push_back("the keyboard's contents from before are in the backup " + outcome.backup);
    context.Result(json, lines);
}

struct TransferOptions {
    std::string file;
    ChosenLine line;
};

Command TransferCommand(const host::KeyboardFileKind& kind, bool save) {
    const std::string content = "the " + std::string(kind.content);
    const auto options = std::make_shared<TransferOptions>();
    const std::string name = save ? "save" : "load";
    const bool isBackedUp = !save && !kind.hasSerialLine;
    Command command = {
        .name = name,
        .summary = save ? "Save " + content + " into a file (keyboard to file)"
                        : "Load " + content + " from a file (file to keyboard)",
        .options = {{.name = "FILE",
                     .target = &options->file,
                     .summary = "The file, in the driver's own format",
                     .isRequired = true}},
        .footer = std::string(isBackedUp ? "The keyboard's contents are saved first (see qxconf "
                                           "backup). They are not read back afterwards.\n\n"
                                         : "") +
                  "Example:\n  qxconf " + std::string(CodeOf(kind.file)) + " " + name +
                  " keyboard.bin",
        .run =
            [&kind, save, options](Context& context) {
                Transfer(context, kind, save, options->file, options->line);
            },
    };
    if (kind.hasSerialLine) {
        command.options.push_back(
            {.name = "--baud",
             .target = &options->line.baudRateIndex,
             .summary = "Index of the baud rate, instead of the preferred one",
             .value = "INDEX"});
        command.options.push_back({.name = "--port",
                                   .target = &options->line.comPort,
                                   .summary = "Serial port, instead of the preferred one",
                                   .value = "NUMBER"});
    }
    return command;
}

struct Conversion {
    std::string source;
    std::string destination;
    Long parameters[3] = {};
};

void Convert(Context& context, const Conversion& conversion) {
    std::string source = host::NameForDriver(files::PathOf(conversion.source));
    host::Session& session = context.Driver();
    RefuseTarget(context, conversion.destination);
    RefuseOwnSource(conversion.source, conversion.destination);
    host::WriteBeside(files::PathOf(conversion.destination), [&](const std::string& beside) {
        const host::Error failure(host::Cause::FileNotConverted,
                                  {.place = {.file = conversion.source}});
        session.Run(failure, [&] {
            std::string destination = beside;
            (void)session.Access().ConvertBinFileToRomFile(
                source, destination, conversion.parameters[0], conversion.parameters[1],
                conversion.parameters[2]);
        });
    });
    context.Result({{"source", conversion.source}, {"file", conversion.destination}},
                   {"converted " + conversion.source + " into " + conversion.destination});
}

} // namespace

std::vector<Command> KeyboardFileCommands() {
    std::vector<Command> commands;
    for (const host::KeyboardFileKind& kind : host::kKeyboardFiles) {
        const std::string key(CodeOf(kind.file));
        const bool isOfReader = kind.file == host::KeyboardFile::ChipcardRom;
        commands.push_back({
            .name = key,
            .summary = (isOfReader ? "Save or load the " : "Save or load the keyboard's ") +
                       std::string(kind.content),
            .footer = "Examples:\n  qxconf " + key + " save keyboard.bin\n  qxconf " + key +
                      " load keyboard.bin",
            .commands = {TransferCommand(kind, true), TransferCommand(kind, false)},
        });
    }
    return commands;
}

Command ConvertCommand() {
    const auto conversion = std::make_shared<Conversion>();
    Command command = {
        .name = "convert",
        .summary = "Convert a raw binary file into a firmware file of the driver",
        .options = {{.name = "BIN",
                     .target = &conversion->source,
                     .summary = "The raw binary file",
                     .isRequired = true},
                    {.name = "ROM",
                     .target = &conversion->destination,
                     .summary = "The firmware file to write",
                     .isRequired = true}},
        .footer = "Example:\n  qxconf convert firmware.bin firmware.rom 0 0 0",
        .run = [conversion](Context& context) { Convert(context, *conversion); },
    };
    const char* const names[] = {"P1", "P2", "P3"};
    for (std::size_t i = 0; i < 3; ++i)
        command.options.push_back({.name = names[i],
                                   .target = &conversion->parameters[i],
                                   .summary = "A parameter for the driver",
                                   .isRequired = true});
    return command;
}

} // namespace qx::cli
