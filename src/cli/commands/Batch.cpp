#include "batch/Batch.h"

#include "cli/InterruptWatch.h"
#include "cli/Output.h"
#include "cli/commands/Commands.h"
#include "setup/LayoutSource.h"

#include <map>
#include <memory>

namespace qx::cli {

namespace {

constexpr int kNotAllDone = 1;

struct BatchOptions {
    std::string job;
    bool bench = false;
    bool dryRun = false;
    bool skipAbsent = false;
};

// The layouts that keyboards name, each opened once. One that is chosen is that of all keyboards.
class Layouts {
public:
    Layouts(Context& context, std::string chosen)
        : m_context(context), m_chosen(std::move(chosen)) {}

    QXKeyboardLayoutData& For(const std::string& ofKeyboard) {
        const std::string name = m_chosen.empty() ? m_context.LayoutNameFor(ofKeyboard) : m_chosen;
        auto& layout = m_layouts[name];
        if (!layout) {
            auto opened = std::make_unique<QXKeyboardLayoutData>();
            setup::OpenLayout(*opened, m_context.options.layouts, name);
            layout = std::move(opened);
        }
        return *layout;
    }

private:
    Context& m_context;
    std::string m_chosen;
    std::map<std::string, std::unique_ptr<QXKeyboardLayoutData>> m_layouts;
};

Lines Table(const batch::Report& report) {
    std::vector<std::vector<std::string>> rows;
    for (const batch::UnitReport& unit : report.units) {
        std::string remark = unit.message;
        if (unit.result == batch::Result::Done)
            remark = unit.bytesSent == 0 ? "held it already" : Counted(unit.bytesSent, "byte");
        if (unit.result == batch::Result::NotDone)
            remark = "";
        rows.push_back(
            {unit.name, std::string(NameOf(unit.result)), unit.keyboard, unit.time, remark});
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
        throw host::Error(host::ErrorKind::Usage,
                          "a batch takes its keyboards from the job, and so no --driver, "
                          "--keyboard or --model");
}

void RefuseOtherPlace(const batch::Job& job, const BatchOptions& options) {
    if (options.bench && !job.Bench())
        throw host::Error(host::ErrorKind::Usage,
                          options.job + " names no \"bench\", at which --bench could program");
    if (!options.bench && !options.dryRun && job.Bench())
        throw host::Error(host::ErrorKind::Usage,
                          options.job + " is a job for the bench, which --bench begins");
}

void RunBatch(Context& context, const BatchOptions& options) {
    RefuseGlobals(context.options);
    batch::Job job = batch::Job::Load(options.job);
    RefuseOtherPlace(job, options);
    const std::string chosen =
        context.options.layout.empty() ? job.Layout() : context.options.layout;
    Layouts layouts(context, chosen);
    job.Check(context.Services(), layouts.For(""), chosen, options.skipAbsent);

    const InterruptWatch interrupt;
    batch::Services services;
    services.openDriver = [&](const setup::KeyboardChoice& choice) {
        return context.OpenDriver(choice);
    };
    services.layout = [&](const std::string& name) -> QXKeyboardLayoutData& {
        return layouts.For(name);
    };
    services.platform = context.Services();
    services.records = context.DataFolder();
    services.skipAbsent = options.skipAbsent;
    services.pause = [&] { context.Pause(); };
    services.isInterrupted = [&] { return interrupt.IsInterrupted(); };
    services.note = [&](const std::string& text) { context.Note(text); };
    services.progress = [&](int percent) { context.ShowProgress(percent); };
    batch::Batch batch(std::move(job), std::move(services));
    if (options.dryRun)
        return context.Result(batch.Progress().ToJson(), Table(batch.Progress()));
    if (options.bench)
        batch.RunAtBench();
    else
        batch.Run();
    context.Note("the report is in " + batch.Progress().File().string());
    context.Result(batch.Progress().ToJson(), Table(batch.Progress()));
    context.exitStatus = batch.FirstFailure() && !batch.IsAllDone()
                             ? ExitStatusOf(*batch.FirstFailure())
                         : batch.IsAllDone() ? 0
                                             : kNotAllDone;
}

} // namespace

Command BatchCommand() {
    const auto options = std::make_shared<BatchOptions>();
    return {
        .name = "batch",
        .summary = "Program many keyboards by a job file",
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
                     .summary = "Leave out settings that a keyboard has no module for"}},
        .footer =
            "A job is a JSON file that lists the keyboards, with a document and the variables of "
            "each:\n\n"
            "  { \"format\": \"qx-batch\", \"version\": 1, \"document\": \"till.json\",\n"
            "    \"units\": [\n"
            "      { \"name\": \"till 1\", \"driver\": \"./line1.so\", \"variables\": { \"till\": "
            "\"001\" } },\n"
            "      { \"name\": \"till 2\", \"keyboard\": \"till2.qxk\", \"variables\": { \"till\": "
            "\"002\" } } ] }\n\n"
            "In the document, ${till} stands for the value. All documents are checked before the "
            "first keyboard is\ntouched; a keyboard that fails does not stop the others. "
            "JOB.report.json tells how far it has come:\nrun again, it does only what is not done, "
            "or "
            "has changed. A write that was interrupted is rolled\nback first.\n\n"
            "With --bench the job has \"bench\": { \"driver\": \"./line1.so\" } and units without "
            "a "
            "keyboard of their\nown: each keyboard that is plugged in becomes the next unit. "
            "Ctrl+C "
            "ends it.\n\n"
            "Exits with the status of the first keyboard that failed, and with 1 when it was ended "
            "before all\nwere done.\n\n"
            "Examples:\n"
            "  qxconf batch --dry-run tills.json\n"
            "  qxconf batch tills.json\n"
            "  qxconf --json batch tills.json\n"
            "  qxconf batch --bench tills.json",
        .run = [options](Context& context) { RunBatch(context, *options); },
    };
}

} // namespace qx::cli
