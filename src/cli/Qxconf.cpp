#include "cli/Qxconf.h"

#include "cli/Parser.h"
#include "cli/commands/Commands.h"
#include "qxcontrols/device/Trace.h"

#include <algorithm>

namespace qx::cli {

namespace {

constexpr const char* kVersion = "qxconf " QX_VERSION;
constexpr int kDifferencesFound = 1;

std::vector<Option> GlobalOptionsInto(GlobalOptions& options) {
    return {
        {.name = "--driver",
         .target = &options.keyboard.driver,
         .summary = "Use this driver library",
         .value = "PATH"},
        {.name = "--keyboard",
         .target = &options.keyboard.keyboard,
         .summary = "Use the simulated keyboard kept in this file, made when new",
         .value = "FILE"},
        {.name = "--model",
         .target = &options.keyboard.model,
         .summary = "Model of a new simulated keyboard: full, magnet, x1-4620, or a file",
         .value = "NAME"},
        {.name = "--layouts",
         .target = &options.layouts,
         .summary = "The folder of the keyboard layouts",
         .value = "DIR"},
        {.name = "--layout",
         .target = &options.layout,
         .summary = "Keyboard layout: a file name or a language id",
         .value = "NAME"},
        {.name = "--settings",
         .target = &options.settings,
         .summary = "Keep preferences in this file in place of the user's own",
         .value = "FILE"},
        {.name = "--trace",
         .target = &options.trace,
         .summary = "Write the trace lines to standard error"},
        {.name = "--json",
         .target = &options.json,
         .summary = "Write each result as one JSON object"},
    };
}

// The whole command line; the values of the global options go into `options`.
Command Program(GlobalOptions& options) {
    Command program = {
        .name = "qxconf",
        .summary = "Program modular point-of-sale keyboards.",
        .options = GlobalOptionsInto(options),
        .footer = "Upload is keyboard to file, download is file to keyboard.\n\nExamples:\n"
                  "  qxconf identify\n"
                  "  qxconf upload -o till.json\n"
                  "  qxconf download till.json\n\n"
                  "Exit status: 0 done, 1 differences found or batch ended early, 2 wrong usage,\n"
                  "3 keyboard not opened, 4 transfer or file operation failed, 5 read-back "
                  "differs,\n6 invalid document, layout or model.",
        .commands = {IdentifyCommand(), UploadCommand(), DownloadCommand(), ShowCommand(),
                     SheetCommand(), DiffCommand(), ValidateCommand(), DefaultsCommand()},
    };
    for (Command& command : KeyboardFileCommands())
        program.commands.push_back(std::move(command));
    for (const auto make :
         {ConvertCommand, LayerCommand, PositionCommand, CodePageCommand, PrefsCommand,
          TestDriveCommand, RecoverCommand, BackupCommand, ReceiptsCommand, BatchCommand})
        program.commands.push_back(make());
    return program;
}

// The trace goes to standard error while a command runs.
class TraceToError {
public:
    explicit TraceToError(Context& context) {
        SetTraceSink([&context](std::string_view text) {
            if (context.options.trace)
                context.Trace(text);
        });
    }
    ~TraceToError() { SetTraceSink({}); }
    TraceToError(const TraceToError&) = delete;
    TraceToError& operator=(const TraceToError&) = delete;
};

int RunCommand(Context& context, const Command& program,
               const std::vector<std::string>& arguments) {
    try {
        const Parsed parsed = Parse(program, kVersion, arguments);
        if (parsed.command == nullptr)
            context.Text(parsed.text);
        else
            parsed.command->run(context);
        return context.exitStatus;
    } catch (const host::Error& error) {
        // The fault may stand before the option, which is not read then.
        if (error.Kind() == host::ErrorKind::Usage &&
            std::find(arguments.begin(), arguments.end(), "--json") != arguments.end())
            context.options.json = true;
        return context.Report(error);
    } catch (const std::exception& error) {
        return context.Report(host::Error(host::ErrorKind::TransferFailed, error.what()));
    }
}

} // namespace

int Run(const std::vector<std::string>& arguments, const Streams& streams,
        const Surroundings& surroundings) {
    Context context(streams, surroundings);
    const Command program = Program(context.options);
    const TraceToError trace(context);
    const int status = RunCommand(context, program, arguments);
    try {
        context.Flush();
    } catch (const host::Error& error) {
        if (status <= kDifferencesFound) // nobody has seen the result
            return context.Report(error);
    }
    return status;
}

} // namespace qx::cli
