#include "cli/commands/Commands.h"

#include "cli/PreferenceStore.h"
#include "files/Files.h"

#include <filesystem>
#include <memory>
#include <optional>

namespace qx::cli {

namespace {

using FileOperation = Long (QXKeyboardAccess::*)(const std::string&);

struct FileKind {
    const char* command;
    const char* content;
    FileOperation save;
    FileOperation load;
    bool hasSerialLine;
};

constexpr FileKind kKinds[] = {
    {"rom", "program", &QXKeyboardAccess::SaveRomIntoFile, &QXKeyboardAccess::LoadRomFromFile,
     false},
    {"chipcard", "chipcard reader's program", &QXKeyboardAccess::SaveChipcardRomIntoFile,
     &QXKeyboardAccess::LoadChipcardRomFromFile, true},
    {"param", "parameter memory", &QXKeyboardAccess::SaveParameterIntoFile,
     &QXKeyboardAccess::LoadParameterFromFile, false},
};

// Lets the driver write a file beside the wanted one, which is replaced when all went well: a
// driver that fails half-way leaves an earlier file as it was.
void WriteBeside(Context& context, const std::string& file,
                 const std::function<void(const std::string&)>& write) {
    context.RefuseKeyboardFile(file);
    try {
        files::WriteFileAtomically(
            file, [&](const std::filesystem::path& beside) { write(beside.string()); });
    } catch (const host::Error&) {
        throw; // the driver's
    } catch (const std::exception& error) {
        throw host::Error(host::ErrorKind::FileFailed, error.what());
    }
}

// As the options say, or else the preferences.
struct SerialLine {
    std::optional<Integer> baudRateIndex;
    std::optional<Integer> comPort;
};

void SetSerialLine(Context& context, const SerialLine& line) {
    PreferenceStore preferences(context);
    const QXProgSettings& settings = preferences.Settings();
    context.Keyboard().Access().SetChipcardRomParameters(
        line.baudRateIndex.value_or(settings.ChipcardBaudrate()),
        line.comPort.value_or(settings.ChipcardPort()));
}

void Transfer(Context& context, const FileKind& kind, bool save, const std::string& file,
              const SerialLine& line) {
    host::Session& session = context.Keyboard();
    const std::string content = std::string("the ") + kind.content;
    const auto transfer = [&](const std::string& name) {
        session.Run((save ? "saving " : "loading ") + content + (save ? " into " : " from ") +
                        file + " failed",
                    [&] {
                        if (kind.hasSerialLine)
                            SetSerialLine(context, line);
                        (void)(session.Access().*(save ? kind.save : kind.load))(name);
                    });
    };
    if (save)
        WriteBeside(context, file, transfer);
    else
        transfer(file);
    context.CloseKeyboard();
    const std::string direction = save ? "keyboard to file" : "file to keyboard";
    context.Result({{"direction", direction}, {"content", kind.content}, {"file", file}},
                   direction + ": " + content + (save ? " saved into " : " loaded from ") + file +
                       "\n");
}

void AddTransfer(CLI::App& parent, Context& context, const FileKind& kind, bool save) {
    const std::string name = save ? "save" : "load";
    const std::string what = std::string("the ") + kind.content;
    CLI::App* command =
        parent.add_subcommand(name, save ? "Save " + what + " into a file (keyboard to file)"
                                         : "Load " + what + " from a file (file to keyboard)");
    const auto file = std::make_shared<std::string>();
    const auto line = std::make_shared<SerialLine>();
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
    command->footer("Example:\n  qxconf " + std::string(kind.command) + " " + name +
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
    WriteBeside(context, conversion.destination, [&](const std::string& beside) {
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
    for (const FileKind& kind : kKinds) {
        CLI::App* command = app.add_subcommand(
            kind.command, std::string("Save or load the keyboard's ") + kind.content);
        command->require_subcommand(1);
        command->footer(std::string("Examples:\n  qxconf ") + kind.command +
                        " save keyboard.bin\n  qxconf " + kind.command + " load keyboard.bin");
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
