#include "cli/Qxconf.h"

#include "cli/commands/Commands.h"
#include "qxcontrols/device/Trace.h"

#include <algorithm>
#include <ostream>
#include <sstream>

namespace qx::cli {

namespace {

constexpr const char* kVersion = "qxconf 0.1.0";
constexpr int kDifferencesFound = 1;

constexpr void (*kCommands[])(CLI::App&, Context&) = {
    AddIdentify, AddUpload,    AddDownload,      AddShow,   AddSheet,    AddDiff,
    AddValidate, AddDefaults,  AddKeyboardFiles, AddLayer,  AddPosition, AddCodePage,
    AddPrefs,    AddTestDrive, AddRecover,       AddBackup, AddReceipts, AddBatch,
};

void AddGlobalOptions(CLI::App& app, GlobalOptions& options) {
    app.add_option("--driver", options.keyboard.driver, "Use this driver library")
        ->type_name("PATH")
        ->check(NotEmpty());
    app.add_option("--keyboard", options.keyboard.keyboard,
                   "Use the simulated keyboard kept in this file, made when new")
        ->type_name("FILE")
        ->check(NotEmpty());
    app.add_option("--model", options.keyboard.model,
                   "Model of a new simulated keyboard: full, magnet, x1-4620, or a file")
        ->type_name("NAME")
        ->check(NotEmpty());
    app.add_option("--layouts", options.layouts, "Where the keyboard layouts are")
        ->type_name("DIR")
        ->check(NotEmpty());
    app.add_option("--layout", options.layout, "Keyboard layout: a file name or a language id")
        ->type_name("NAME")
        ->check(NotEmpty());
    app.add_option("--settings", options.settings,
                   "Keep preferences in this file in place of the user's own")
        ->type_name("FILE")
        ->check(NotEmpty());
    app.add_flag("--trace", options.trace, "Write the trace lines to standard error");
    app.add_flag("--json", options.json, "Write each result as one JSON object");
}

// The trace goes to standard error while a command runs.
class TraceToError {
public:
    TraceToError(const GlobalOptions& options, std::ostream& err) {
        SetTraceSink([&options, &err](std::string_view text) {
            if (options.trace)
                err << text << '\n';
        });
    }
    ~TraceToError() { SetTraceSink({}); }
    TraceToError(const TraceToError&) = delete;
    TraceToError& operator=(const TraceToError&) = delete;
};

// "qxconf prefs" of "qxconf prefs bogus": the innermost command that was found.
const CLI::App& Innermost(const CLI::App& app, std::string& name) {
    const auto found = app.get_subcommands();
    name += (name.empty() ? "" : " ") + app.get_name();
    return found.empty() ? app : Innermost(*found.front(), name);
}

// What was wrong with the arguments, and where more is to be learnt.
std::string UsageText(const CLI::App& app, const CLI::ParseError& error) {
    std::string command;
    const CLI::App& innermost = Innermost(app, command);
    std::string text = error.what();
    const bool lacksCommand = innermost.get_require_subcommand_min() > 0 &&
                              dynamic_cast<const CLI::RequiredError*>(&error) != nullptr;
    const auto unknown = app.remaining(true);
    if (lacksCommand && unknown.empty())
        text = command + " needs a command";
    else if (lacksCommand && unknown.front().starts_with('-'))
        text = "there is no option " + unknown.front();
    else if (lacksCommand)
        text = "there is no command \"" + command + " " + unknown.front() + "\"";
    return text + " (see " + command +
           (innermost.get_parent() == nullptr && !lacksCommand ? " COMMAND --help)" : " --help)");
}

int Parse(CLI::App& app, Context& context, const std::vector<std::string>& arguments,
          const Streams& streams) {
    try {
        std::vector<std::string> reversed(arguments.rbegin(), arguments.rend());
        app.parse(reversed);
        return context.exitStatus;
    } catch (const CLI::Success& help) { // --help and --version end the parsing in this way
        return app.exit(help, streams.out, streams.err);
    } catch (const CLI::ParseError& error) {
        context.options.json =
            std::find(arguments.begin(), arguments.end(), "--json") != arguments.end();
        return context.ReportUsage(UsageText(app, error));
    } catch (const host::Error& error) {
        return context.Report(error);
    } catch (const std::exception& error) {
        return context.Report(host::Error(host::ErrorKind::TransferFailed, error.what()));
    }
}

// Help speaks of commands.
void NameCommands(CLI::App& app) {
    app.get_formatter()->label("SUBCOMMAND", "COMMAND");
    for (CLI::App* command : app.get_subcommands({})) {
        command->group("Commands");
        NameCommands(*command);
    }
}

} // namespace

int Run(const std::vector<std::string>& arguments, const Streams& streams,
        const Surroundings& surroundings) {
    CLI::App app("Program modular point-of-sale keyboards.", "qxconf");
    Context context(streams, surroundings);
    AddGlobalOptions(app, context.options);
    app.set_version_flag("--version", kVersion);
    app.require_subcommand(1);
    app.fallthrough();
    app.footer("Upload is keyboard to file, download is file to keyboard.\n\nExamples:\n"
               "  qxconf identify\n"
               "  qxconf upload -o till.json\n"
               "  qxconf download till.json\n\n"
               "Exit status: 0 done, 1 differences found or batch ended early, 2 wrong usage,\n"
               "3 keyboard not opened, 4 transfer or file operation failed, 5 read-back differs,\n"
               "6 invalid document, layout or model.");
    for (const auto add : kCommands)
        add(app, context);
    NameCommands(app);
    const TraceToError trace(context.options, streams.err);
    const int status = Parse(app, context, arguments, streams);
    try {
        context.Flush();
    } catch (const host::Error& error) {
        if (status <= kDifferencesFound) // nobody has seen the result
            return context.Report(error);
    }
    return status;
}

} // namespace qx::cli
