#include "cli/commands/Commands.h"

#include "cli/Output.h"
#include "files/Sha256.h"

#include <memory>

namespace qx::cli {

namespace {

struct DownloadOptions {
    std::string file;
    bool skipAbsent = false;
    bool dryRun = false;
    bool full = false;
    bool repair = false;
    bool noVerify = false;
    std::vector<std::string> set;
};

// With --full everything is sent, changed or not.
Long BytesToSend(const host::WritePlan& plan, bool full) {
    return full ? plan.BytesInAll() : plan.BytesToSend();
}

std::string BytesOf(const host::WritePlan& plan) {
    return std::to_string(plan.BytesToSend()) + " of " + Counted(plan.BytesInAll(), "byte");
}

std::string NothingToDo(const DownloadOptions& options) {
    return "file to keyboard: the keyboard already has the settings of " + NameOf(options.file) +
           "; nothing was written";
}

void ShowPlan(Context& context, const host::WritePlan& plan, const DownloadOptions& options) {
    host::Json json = {{"direction", "file to keyboard"},
                       {"file", options.file},
                       {"dryRun", true},
                       {"full", options.full}};
    json.update(ToJson(plan));
    json["bytesToSend"] = BytesToSend(plan, options.full);
    const std::string sent =
        options.full
            ? "would send " + Counted(plan.BytesInAll(), "byte") + " in " +
                  Counted(plan.requests.size(), "range") +
                  ", changed or not; these change: " + Counted(plan.settings.size(), "setting") +
                  ", " + Counted(plan.BytesToSend(), "byte")
            : "would change " + Counted(plan.settings.size(), "setting") + ", " + BytesOf(plan) +
                  " in " + Counted(plan.ranges.size(), "range");
    Lines lines = {"file to keyboard: " + NameOf(options.file) + " " + sent +
                   "; nothing was written"};
    Append(lines, ToLines(plan));
    const bool isNothing = plan.IsEmpty() && !options.full;
    context.Result(json, isNothing ? Lines{NothingToDo(options)} : lines);
}

void ShowOutcome(Context& context, const host::Writer::Outcome& outcome,
                 const host::WritePlan& plan, const std::vector<host::Section*>& sections,
                 const DownloadOptions& options) {
    host::Json written = host::Json::array();
    for (const host::Section* section : sections)
        written.push_back(section->Info().key);
    host::Json json = {{"direction", "file to keyboard"},
                       {"file", options.file},
                       {"sections", written},
                       {"written", outcome.isWritten},
                       {"verified", outcome.isVerified},
                       {"full", options.full},
                       {"bytesSent", outcome.bytesSent},
                       {"bytesInAll", plan.BytesInAll()},
                       {"backup", outcome.backup}};
    json["settings"] = ToJson(plan)["settings"];
    context.CloseKeyboard();
    const std::string text =
        "file to keyboard: wrote " + Counted(sections.size(), "section") + " of " +
        NameOf(options.file) + " (" +
        (options.full ? Counted(outcome.bytesSent, "byte") : BytesOf(plan) + " changed") + "), " +
        (outcome.isVerified ? "read back and verified" : "NOT read back: not verified");
    context.Result(json, {outcome.isWritten ? text : NothingToDo(options)});
}

void Download(Context& context, const DownloadOptions& options) {
    const std::string text = TextOf(context, options.file);
    const auto document = host::ConfigurationDocument::Parse(text, NameOf(options.file));
    host::Session& session = context.Keyboard();
    const auto configuration = context.NewConfiguration();
    host::Variables variables = VariablesOf(options.set);
    const auto [sections, absent] =
        session.Read(*configuration, document, variables, options.skipAbsent);
    RefuseUnused(variables);
    for (const host::Fault& fault : absent)
        context.Note("left out " + ToText(fault));
    host::WritePlan plan = context.Writer().Plan(sections, {options.full, options.repair});
    if (plan.GivesIdentifier())
        context.Warn(MessageOf(document.IdentifierWarning(plan.ReplacesIdentifier())));
    if (options.dryRun) {
        context.CloseKeyboard();
        host::Planner(plan.before, *context.NamedConfiguration()).NameSettings(plan);
        return ShowPlan(context, plan, options);
    }
    host::Writer::Request request;
    request.document = options.file;
    request.documentSha256 = files::Sha256(text);
    request.full = options.full;
    request.verify = !options.noVerify;
    const host::Writer::Outcome outcome = context.Writer().Write(plan, request);
    ShowOutcome(context, outcome, plan, sections, options);
}

} // namespace

Command DownloadCommand() {
    const auto options = std::make_shared<DownloadOptions>();
    return {
        .name = "download",
        .summary = "Write a document's settings into the keyboard (file to keyboard)",
        .options = {{.name = "FILE",
                     .target = &options->file,
                     .summary = "The document",
                     .isRequired = true},
                    {.name = "--skip-absent",
                     .target = &options->skipAbsent,
                     .summary = "Leave out settings that this keyboard has no module for"},
                    {.name = "--dry-run",
                     .target = &options->dryRun,
                     .summary = "Show the bytes and settings that would change; write nothing"},
                    {.name = "--repair",
                     .target = &options->repair,
                     .summary =
                         "Replace damaged blocks of the keyboard, which otherwise stay as they "
                         "are"},
                    {.name = "--full",
                     .target = &options->full,
                     .summary = "Send every byte, changed or not"},
                    {.name = "--no-verify",
                     .target = &options->noVerify,
                     .summary = "Do not read back and compare: the backup is then the only way "
                                "back"},
                    SetOption(options->set)},
        .footer = "Sections that are not in the document stay as they are in the keyboard. The "
                  "keyboard's contents are\nsaved first (see qxconf backup). Only the bytes that "
                  "change are sent; then everything is read back and\ncompared.\n\nExamples:\n"
                  "  qxconf download till.json\n"
                  "  qxconf download --dry-run till.json\n"
                  "  qxconf download --set till=042 till.json\n"
                  "  qxconf download --skip-absent full.json",
        .run = [options](Context& context) { Download(context, *options); },
    };
}

} // namespace qx::cli
