#include "cli/Qxconf.h"

#include "cli/Parser.h"
#include "cli/commands/Commands.h"
#include "qxcontrols/common/Trace.h"
#include "setup/LayoutSource.h"
#include "simulator/KeyboardModel.h"

#include <algorithm>
#include <memory>

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
         .summary = "Use the simulated keyboard kept in this file",
         .value = "FILE"},
        {.name = "--model",
         .target = &options.keyboard.model,
         .summary = "Create the simulated keyboard, if there is none, with this model: full, "
                    "magnet, x1-4620, or a file",
         .value = "NAME",
         .offers = [](Context&) { return sim::KeyboardModel::Names(); }},
        {.name = "--layouts",
         .target = &options.layouts,
         .summary = "The folder of the keyboard layouts",
         .value = "DIR"},
        {.name = "--layout",
         .target = &options.layout,
         .summary = "Keyboard layout: a file name or a language id",
         .value = "NAME",
         .offers = [&options](Context&) { return setup::LayoutNames(options.layouts); }},
        {.name = "--settings",
         .target = &options.settings,
         .summary = "Keep preferences in this file instead of the user's own",
         .value = "FILE"},
        {.name = "--trace",
         .target = &options.trace,
         .summary = "Write the trace lines to standard error"},
        {.name = "--json",
         .target = &options.json,
         .summary = "Write each result as one JSON object"},
        {.name = "-q,--quiet",
         .target = &options.quiet,
         .summary = "Show only results, errors and warnings of loss; no notes and no progress"},
    };
}

Command HelpCommand(const Command& program) {
    const auto words = std::make_shared<std::vector<std::string>>();
    return {
        .name = "help",
        .summary = "Show the help of a command",
        .options = {{.name = "COMMAND",
                     .target = words.get(),
                     .summary = "The command; without it, all commands",
                     .offers =
                         [&program](Context&) {
                             std::vector<std::string> names;
                             for (const Command& command : program.commands)
                                 names.push_back(command.name);
                             return names;
                         }}},
        .footer = "Examples:\n  qxconf help download\n  qxconf help backup restore",
        .run = [&program, words](Context& context) { context.Text(HelpFor(program, *words)); },
    };
}

// The whole command line; the values of the global options are stored in `options`. It is built in
// place, because some of its commands refer to all of it.
void MakeProgram(Command& program, GlobalOptions& options) {
    program = {
        .name = "qxconf",
        .summary = "Program modular point-of-sale keyboards.",
        .options = GlobalOptionsInto(options),
        .footer =
            "Upload is keyboard to file, download is file to keyboard.\n\nExamples:\n"
            "  qxconf identify\n"
            "  qxconf upload -o till.json\n"
            "  qxconf download till.json\n\n"
            "Exit status: 0 done, 1 differences or warnings found, or units of a batch left,\n"
            "2 wrong usage, 3 keyboard not opened, 4 transfer or file operation failed,\n"
            "5 read-back differs, 6 invalid document, job, layout or model,\n"
            "128 + n ended by signal n before anything was written.",
        .commands = {IdentifyCommand(), UploadCommand(), DownloadCommand(), ShowCommand(),
                     SheetCommand(), DiffCommand(), ValidateCommand(), DefaultsCommand(),
                     SchemaCommand()},
    };
    for (Command& command : KeyboardFileCommands())
        program.commands.push_back(std::move(command));
    for (const auto make : {ConvertCommand, LayerCommand, PositionCommand, CodePageCommand,
                            PrefsCommand, TestDriveCommand, RecoverCommand, BackupCommand,
                            ReceiptsCommand, BatchCommand, DoctorCommand})
        program.commands.push_back(make());
    program.commands.push_back(HelpCommand(program));
    program.commands.push_back(CompletionCommand(program));
}

// Writes the trace to standard error while a command runs.
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

int ShowFirstSteps(Context& context) {
    constexpr const char* kSteps[] = {
        "Programs modular point-of-sale keyboards. First steps:",
        "  qxconf identify                which keyboard is this?",
        "  qxconf upload -o till.json     keyboard to file",
        "  qxconf diff till.json          which settings would a download change?",
        "  qxconf download till.json      file to keyboard, read back and compared",
        "  qxconf help                    all commands and options",
        "  qxconf help COMMAND            one command, with examples",
    };
    for (const char* step : kSteps)
        context.Note(step);
    return ExitStatusOf(host::ErrorKind::Usage);
}

int RunCommand(Context& context, const Command& program,
               const std::vector<std::string>& arguments) {
    try {
        if (arguments.empty())
            return ShowFirstSteps(context);
        const Parsed parsed = Parse(program, kVersion, arguments);
        context.Begin();
        if (parsed.command == nullptr)
            context.Text(parsed.text);
        else
            parsed.command->run(context);
        return context.exitStatus;
    } catch (const host::Error& error) {
        // If the error is before the option, the option has not been parsed yet.
        if (error.Kind() == host::ErrorKind::Usage &&
            std::find(arguments.begin(), arguments.end(), "--json") != arguments.end())
            context.options.json = true;
        return context.Report(error);
    } catch (const Interrupted& interrupted) {
        return context.Report(interrupted);
    } catch (const std::exception& error) {
        return context.Report(
            host::Error(host::Cause::Unforeseen, {.problem = files::ProblemOf(error)}));
    }
}

} // namespace

int Run(const std::vector<std::string>& arguments, const Streams& streams,
        const Surroundings& surroundings) {
    Context context(streams, surroundings);
    Command program;
    MakeProgram(program, context.options);
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
