#include "cli/commands/Commands.h"

#include "cli/PreferenceStore.h"
#include "host/KeyboardFiles.h"

#include <memory>
#include <optional>

namespace qx::cli {

namespace {

// As the options say, or else the preferences.
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
        context.RefuseKeyboardFile(file);
    host::Writer::Outcome outcome;
    if (save)
        host::SaveKeyboardFile(session, kind, file, line);
    else
        outcome = host::LoadKeyboardFile(session, context.Writer(), kind, file, line);
    context.CloseKeyboard();
    const std::string direction = save ? "keyboard to file" : "file to keyboard";
    const std::string content(kind.content);
    host::Json json = {{"direction", direction}, {"content", content}, {"file", file}};
    if (!save) {
        json["verified"] = false;
        json["backup"] = outcome.backup;
    }
    const std::string saved =
        outcome.backup.empty()
            ? ""
            : "what the keyboard held before is in the backup " + outcome.backup + "\n";
    context.Result(json, direction + ": the " + content +
                             (save ? " saved into " : " loaded from ") + file + "\n" + saved);
}

void AddTransfer(CLI::App& parent, Context& context, const host::KeyboardFileKind& kind,
                 bool save) {
    const std::string name = save ? "save" : "load";
    const std::string what = "the " + std::string(kind.content);
    CLI::App* command =
        parent.add_subcommand(name, save ? "Save " + what + " into a file (keyboard to file)"
                                         : "Load " + what + " from a file (file to keyboard)");
    const auto file = std::make_shared<std::string>();
    const auto line = std::make_shared<ChosenLine>();
    command->add_option("FILE", *file, "The file, in the driver's own format")
        ->required()
        ->check(NotEmpty());
    if (kind.hasSerialLine) {
        command
            ->add_option("--baud", line->baudRateIndex,
                         "Index of the baud rate, in place of the preferred one")
            ->type_name("INDEX");
        command->add_option("--port", line->comPort, "Serial port, in place of the preferred one")
            ->type_name("NUMBER");
    }
    const std::string kept = save || kind.hasSerialLine
                                 ? ""
                                 : "What the keyboard holds is saved before (qxconf backup). What "
                                   "it holds afterwards is "
                                   "not read back.\n\n";
    command->footer(kept + "Example:\n  qxconf " + std::string(kind.key) + " " + name +
                    " keyboard.bin");
    command->callback(
        [&context, &kind, save, file, line] { Transfer(context, kind, save, *file, *line); });
}

struct Conversion {
    std::string source;
    std::string destination;
    Long parameters[3] = {};
};

void Convert(Context& context, const Conversion& conversion) {
    host::Session& session = context.Driver();
    context.RefuseKeyboardFile(conversion.destination);
    host::WriteBeside(conversion.destination, [&](const std::string& beside) {
        session.Run("converting " + conversion.source + " failed", [&] {
            (void)session.Access().ConvertBinFileToRomFile(
                conversion.source, beside, conversion.parameters[0], conversion.parameters[1],
                conversion.parameters[2]);
        });
    });
    context.Result({{"source", conversion.source}, {"file", conversion.destination}},
                   "converted " + conversion.source + " into " + conversion.destination + "\n");
}

} // namespace

void AddKeyboardFiles(CLI::App& app, Context& context) {
    for (const host::KeyboardFileKind& kind : host::kKeyboardFiles) {
        const std::string key(kind.key);
        CLI::App* command =
            app.add_subcommand(key, "Save or load the keyboard's " + std::string(kind.content));
        command->require_subcommand(1);
        command->footer("Examples:\n  qxconf " + key + " save keyboard.bin\n  qxconf " + key +
                        " load keyboard.bin");
        AddTransfer(*command, context, kind, true);
        AddTransfer(*command, context, kind, false);
    }
    CLI::App* convert = app.add_subcommand(
        "convert", "Convert a raw binary file into a program file of the driver");
    const auto conversion = std::make_shared<Conversion>();
    convert->add_option("BIN", conversion->source, "The raw binary file")
        ->required()
        ->check(NotEmpty());
    convert->add_option("ROM", conversion->destination, "The program file to write")
        ->required()
        ->check(NotEmpty());
    const char* const names[] = {"P1", "P2", "P3"};
    for (std::size_t i = 0; i < 3; ++i)
        convert->add_option(names[i], conversion->parameters[i], "Parameter of the driver's own")
            ->required();
    convert->footer("Example:\n  qxconf convert firmware.bin firmware.rom 0 0 0");
    convert->callback([&context, conversion] { Convert(context, *conversion); });
}

} // namespace qx::cli
