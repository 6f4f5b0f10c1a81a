#include "cli/commands/Commands.h"

#include "cli/Output.h"

#include <memory>

namespace qx::cli {

namespace {

struct RecoverOptions {
    bool finish = false;
    bool rollBack = false;
    bool forget = false;
};

host::Json ToJson(const host::JournalEntry& entry) {
    Long bytes = 0;
    for (const host::ByteRange& range : entry.ranges)
        bytes += range.Size();
    return {{"time", entry.time},     {"action", entry.action}, {"document", entry.document},
            {"backup", entry.backup}, {"bytes", bytes},         {"ranges", entry.ranges.size()}};
}

Lines Ways(const host::PendingWrite& entry) {
    const std::string forget = "  qxconf recover --forget    keeps what the keyboard holds now";
    if (entry.isRecoverable)
        return {"  qxconf recover --finish    writes the rest of it",
                "  qxconf recover --rollback  brings back what the keyboard held before", forget};
    return {"The keyboard's contents do not match the interrupted write.",
            "  qxconf backup restore " + entry.backup + "  brings back what it held before",
            forget};
}

void Recover(Context& context, const RecoverOptions& options) {
    const auto entry = context.Writer().Interrupted();
    host::Json json = {{"interrupted", entry ? ToJson(*entry) : host::Json()},
                       {"recovered", nullptr}};
    if (entry)
        json["interrupted"]["recoverable"] = entry->isRecoverable;
    if (!entry) {
        context.CloseKeyboard();
        return context.Result(json, {"no write to this keyboard was interrupted"});
    }
    const std::string what =
        "the " + entry->action + " of " + entry->document + " of " + entry->time;
    if (options.forget) {
        context.Writer().Forget(*entry);
        context.CloseKeyboard();
        json["recovered"] = "forgotten";
        return context.Result(json, {what + " is forgotten; the keyboard is as it was"});
    }
    if (!options.finish && !options.rollBack) {
        context.CloseKeyboard();
        Lines lines = {what + " was interrupted"};
        Append(lines, Ways(*entry));
        return context.Result(json, lines);
    }
    const auto way = options.finish ? host::Writer::Way::Finish : host::Writer::Way::RollBack;
    const host::Writer::Outcome outcome = context.Writer().Recover(*entry, way);
    context.CloseKeyboard();
    json["recovered"] = options.finish ? "finished" : "rolled back";
    json["bytesSent"] = outcome.bytesSent;
    json["verified"] = true;
    context.Result(json,
                   {what + (options.finish ? " has been finished (" : " is rolled back (") +
                    Counted(outcome.bytesSent, "byte") + " written), read back and found equal"});
}

} // namespace

Command RecoverCommand() {
    const auto options = std::make_shared<RecoverOptions>();
    return {
        .name = "recover",
        .summary = "Finish or roll back a write that was interrupted",
        .options = {{.name = "--finish",
                     .target = &options->finish,
                     .summary = "Write the rest of it"},
                    {.name = "--rollback",
                     .target = &options->rollBack,
                     .summary = "Restore the keyboard's contents from before it",
                     .excludes = {"--finish"}},
                    {.name = "--forget",
                     .target = &options->forget,
                     .summary = "Keep the keyboard as it is and discard the recovery record",
                     .excludes = {"--finish", "--rollback"}}},
        .footer = "Without an option it only reports the interrupted write. It can be repeated "
                  "until it succeeds,\neither way. The keyboard's contents are saved before. A "
                  "keyboard whose contents do not match the\ninterrupted write is not touched: a "
                  "backup can be restored to it.\n\nExamples:\n"
                  "  qxconf recover\n"
                  "  qxconf recover --rollback",
        .run = [options](Context& context) { Recover(context, *options); },
    };
}

} // namespace qx::cli
