#include "batch/Batch.h"

#include "batch/Layouts.h"
#include "cli/InterruptWatch.h"
#include "cli/Output.h"
#include "cli/PreferenceStore.h"
#include "cli/commands/Commands.h"
#include "files/Installation.h"
#include "files/SystemTexts.h"
#include "host/ErrorText.h"

#include <memory>

namespace qx::cli {

namespace {

constexpr int kNotAllDone = 1;

constexpr Long kMostJobs = 64;
constexpr Long kLongestTimeout = 86'400;
constexpr const char* kWorkerProgram = "qxbatchworker";

struct BatchOptions {
    std::string job;
    bool bench = false;
    bool dryRun = false;
    bool skipAbsent = false;
    bool repair = false;
    Integer jobs = 1;
    Long timeout = 120;
    std::vector<std::string> only;
};

Lines Table(const batch::Report& report) {
    std::vector<std::vector<std::string>> rows;
    for (const batch::UnitReport& unit : report.units) {
        std::string remark = unit.error ? MessageOf(*unit.error) : "";
        if (unit.result == batch::Result::Done)
            remark = unit.bytesSent == 0 ? "nothing to write" : Counted(unit.bytesSent, "byte");
        if (unit.result == batch::Result::NotDone)
            remark = "";
        rows.push_back(
            {unit.name, std::string(CodeOf(unit.result)), unit.keyboard, unit.time, remark});
    }
    Lines lines = AlignedLines(rows);
    lines.push_back(std::to_string(report.Count(batch::Result::Done)) + " done, " +
                    std::to_string(report.Count(batch::Result::Failed)) + " failed, " +
                    std::to_string(report.Count(batch::Result::NotDone)) + " not done");
    return lines;
}

void RefuseGlobals(const GlobalOptions& options) {
    const setup::KeyboardChoice& choice = options.keyboard;
    if (!choice.driver.empty() || !choice.keyboard.empty() || !choice.model.empty())
        throw UsageError("--driver, --keyboard and --model cannot be used with batch");
}

void RefuseOtherPlace(const batch::Job& job, const BatchOptions& options) {
    if (options.bench && !job.Bench())
        throw UsageError(options.job + " has no \"bench\", which --bench needs");
    if (!options.bench && !options.dryRun && job.Bench())
        throw UsageError(options.job + " is a job for the bench: use --bench");
}

// "done: wrote 9 bytes, read back and verified", "failed: ...".
std::string OutcomeOf(const batch::UnitReport& unit) {
    if (unit.error)
        return "failed: " + MessageOf(*unit.error);
    return unit.bytesSent == 0
               ? "done: nothing to write"
               : "done: wrote " + Counted(unit.bytesSent, "byte") + ", read back and verified";
}

std::string TextOf(const batch::BenchNews& news) {
    using Kind = batch::BenchNews::Kind;
    switch (news.kind) {
    case Kind::Waits:
        return "waiting for " + (news.unit != nullptr ? news.unit->name : "a keyboard") + " (" +
               host::TextOf(*news.why) + ")";
    case Kind::Fails:
        return MessageOf(*news.why);
    case Kind::IsDone:
        return "this keyboard is " + news.unit->name + ", which is done";
    case Kind::IsUnknown:
        return "this keyboard is not one of the remaining units";
    case Kind::ExpectsNext:
        return "next: unplug this keyboard, and plug in " + (news.unit != nullptr
                                                                 ? "the one for " + news.unit->name
                                                                 : "one of the remaining units");
    }
    return {};
}

batch::Services ServicesOf(Context& context, const BatchOptions& options,
                           const driverhost::Isolation& isolation, batch::Layouts& layouts,
                           const InterruptWatch& interrupt) {
    batch::Services services;
    services.openDriver = [&context, isolation](setup::KeyboardChoice choice) {
        choice.isolation = isolation;
        return context.OpenDriver(choice);
    };
    services.layout = [&](const std::string& name) -> QXKeyboardLayoutData& {
        return layouts.For(name);
    };
    services.platform = context.Services();
    services.records = context.DataFolder();
    services.skipAbsent = options.skipAbsent;
    services.repair = options.repair;
    services.pause = [&] { context.Pause(); };
    services.isInterrupted = [&] { return interrupt.IsInterrupted(); };
    services.finished = [&](const batch::UnitReport& unit, std::size_t number, std::size_t units) {
        context.Note("[" + std::to_string(number) + " of " + std::to_string(units) + "] " +
                     unit.name + ": " + OutcomeOf(unit));
    };
    services.atBench = [&](const batch::BenchNews& news) { context.Note(TextOf(news)); };
    services.warn = [&](const std::string& unit, const host::Error& warning) {
        context.Warn(unit + ": " + MessageOf(warning));
    };
    services.progress = [&](int percent) { context.ShowProgress(percent); };
    return services;
}

// A dry run does not open keyboards, so it does not know their identifiers.
void ShowPlanned(Context& context, const batch::Batch& batch) {
    for (const batch::Unit* unit : batch.Left())
        if (unit->setsIdentifier && unit->identifier.empty())
            context.Warn(unit->name + ": unless it has it already, " +
                         MessageOf(unit->document->IdentifierWarning()));
    context.Result(batch.Progress().ToJson(), Table(batch.Progress()));
}

// The report, with the changes of this run.
void ShowResult(Context& context, const batch::Batch& batch) {
    const batch::ThisRun run = batch.ThisRunSoFar();
    host::Json json = batch.Progress().ToJson();
    json["thisRun"] = {{"done", run.done}, {"failed", run.failed}, {"bytesSent", run.bytesSent}};
    Lines lines = Table(batch.Progress());
    lines.push_back("this run: " + std::to_string(run.done.size()) + " done (" +
                    Counted(run.bytesSent, "byte") + " written), " +
                    std::to_string(run.failed.size()) + " failed");
    context.Result(json, lines);
}

void RunBatch(Context& context, const BatchOptions& options) {
    RefuseGlobals(context.options);
    batch::Job job = batch::Job::Load(files::PathOf(options.job));
    RefuseOtherPlace(job, options);
    const std::string chosen =
        context.options.layout.empty() ? job.Layout() : context.options.layout;
    batch::Layouts layouts(
        {context.options.layouts, chosen, PreferenceStore(context).Settings().PreferedKeyLang()});
    job.Check(context.Services(), layouts.For(""), chosen, options.skipAbsent);
    for (const host::Error& warning : job.Warnings())
        context.Warn(MessageOf(warning));

    const driverhost::Isolation isolation = {{}, std::chrono::seconds(options.timeout)};
    const InterruptWatch interrupt;
    batch::Batch batch(std::move(job), ServicesOf(context, options, isolation, layouts, interrupt));
    if (!options.only.empty())
        batch.Choose(options.only);
    if (options.dryRun) {
        context.exitStatus = batch.IsAllDone() ? 0 : kNotAllDone;
        return ShowPlanned(context, batch);
    }
    if (options.bench)
        batch.RunAtBench();
    else if (options.jobs == 1)
        batch.Run();
    else
        batch.RunByCrew(static_cast<std::size_t>(options.jobs),
                        files::HelperProgram(kWorkerProgram),
                        {layouts.Choice(), context.DataFolder(), options.skipAbsent, options.repair,
                         isolation, context.options.trace});
    context.Note("the report is in " + files::TextOf(batch.Progress().File()));
    ShowResult(context, batch);
    if (!batch.IsAllDone())
        context.exitStatus =
            batch.FirstFailure() ? ExitStatusOf(*batch.FirstFailure()) : kNotAllDone;
}

constexpr const char* kFooter =
    "A job is a JSON file that lists the keyboards, with a document and the variables of "
    "each:\n\n"
    "  { \"format\": \"qx-batch\", \"version\": 1, \"document\": \"till.json\",\n"
    "    \"units\": [\n"
    "      { \"name\": \"till 1\", \"driver\": \"./line1.so\", \"variables\": { \"till\": "
    "\"001\" } },\n"
    "      { \"name\": \"till 2\", \"keyboard\": \"till2.qxk\", \"variables\": { \"till\": "
    "\"002\" } } ] }\n\n"
    "In the document, ${till} is replaced by the value. All documents are checked before "
    "the first keyboard\nis touched; a keyboard that fails does not stop the others. "
    "JOB.report.json records the progress: when run\nagain, batch programs only the units "
    "that are not done or have changed. An interrupted write is rolled\nback first. An "
    "identifier that several units would get is left out, so that each keeps its own.\n\n"
    "Each driver library runs in a separate process: if it crashes, hangs or exits, "
    "only its unit fails.\nUnits with the same driver and keyboard are never programmed "
    "at the same time.\n\n"
    "With --bench the job has \"bench\": { \"driver\": \"./line1.so\" } and units without "
    "a keyboard of their\nown: each keyboard that is plugged in becomes the next unit. "
    "Ctrl+C ends the batch.\n\n"
    "The exit status is 0 if all units are done, that of the first unit that failed, or 1 "
    "if no unit failed but\nsome are left, as with --dry-run.\n\n"
    "Examples:\n"
    "  qxconf batch --dry-run tills.json\n"
    "  qxconf batch tills.json\n"
    "  qxconf batch --jobs 4 --timeout 60 tills.json\n"
    "  qxconf batch --only \"till 2\" tills.json\n"
    "  qxconf --json batch tills.json\n"
    "  qxconf batch --bench tills.json";

} // namespace

Command BatchCommand() {
    const auto options = std::make_shared<BatchOptions>();
    return {
        .name = "batch",
        .summary = "Program the keyboards that a job file lists",
        .options = {{.name = "JOB",
                     .target = &options->job,
                     .summary = "The job file",
                     .isRequired = true},
                    {.name = "--bench",
                     .target = &options->bench,
                     .summary = "Program one keyboard after the other as they are plugged in"},
                    {.name = "--dry-run",
                     .target = &options->dryRun,
                     .summary = "Check the job and show its progress; touch no keyboard"},
                    {.name = "--skip-absent",
                     .target = &options->skipAbsent,
                     .summary = "Leave out settings that a keyboard has no module for"},
                    {.name = "--repair",
                     .target = &options->repair,
                     .summary =
                         "Replace damaged blocks of a keyboard, which otherwise stay as they are"},
                    {.name = "--only",
                     .target = &options->only,
                     .summary = "Program only the unit with this name; may be repeated",
                     .value = "NAME"},
                    {.name = "--jobs",
                     .target = &options->jobs,
                     .summary = "Program this many units at once (default 1)",
                     .value = "N",
                     .range = std::pair<Long, Long>(1, kMostJobs),
                     .excludes = {"--bench"}},
                    {.name = "--timeout",
                     .target = &options->timeout,
                     .summary = "Give up on a driver after this many seconds without an answer or "
                                "progress (default 120)",
                     .value = "SECONDS",
                     .range = std::pair<Long, Long>(1, kLongestTimeout)}},
        .footer = kFooter,
        .run = [options](Context& context) { RunBatch(context, *options); },
    };
}

} // namespace qx::cli
