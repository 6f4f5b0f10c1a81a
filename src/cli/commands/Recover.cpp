#include "cli/commands/Commands.h"

#include "cli/Output.h"

#include <algorithm>
#include <memory>

namespace qx::cli {

namespace {

using host::Trace;

struct RecoverOptions {
    bool finish = false;
    bool rollBack = false;
    bool list = false;
    bool forget = false;
    std::string id;
};

struct TraceText {
    Trace trace;
    const char* name;
    const char* text;
};
constexpr TraceText kTraces[] = {
    {Trace::Partial, "partial", "this keyboard holds a part of it"},
    {Trace::Before, "before",
     "this keyboard holds exactly what was there before it, and may be another one"},
    {Trace::After, "after", "this keyboard holds all of it, and may be another one"},
    {Trace::None, "none", "this keyboard's contents do not match it"},
};

const TraceText& TextOf(Trace trace) {
    const auto* const found =
        std::find_if(std::begin(kTraces), std::end(kTraces),
                     [&](const TraceText& text) { return text.trace == trace; });
    return found == std::end(kTraces) ? kTraces[0] : *found;
}

host::Json TracedToJson(const std::vector<host::TracedWrite>& writes) {
    host::Json json = host::Json::array();
    for (const host::TracedWrite& write : writes) {
        json.push_back(ToJson(static_cast<const host::JournalEntry&>(write)));
        json.back()["trace"] = TextOf(write.trace).name;
    }
    return json;
}

Lines OnRecord(const std::vector<host::TracedWrite>& writes) {
    Lines lines;
    for (const host::TracedWrite& write : writes)
        lines.push_back("  " + write.Id() + "  " + write.InWords() + ": " +
                        TextOf(write.trace).text);
    return lines;
}

// All writes on record, of any keyboard.
void List(Context& context) {
    std::vector<host::DamagedRecord> damaged;
    host::Json json = host::Json::array();
    Lines lines;
    for (const host::JournalEntry& entry : context.Records().journal.Entries(&damaged)) {
        json.push_back(ToJson(entry));
        lines.push_back(entry.Id() + "  " + entry.InWords() + " to a " + entry.keyboard.Name());
    }
    for (const host::DamagedRecord& record : damaged)
        context.Warn(record.message);
    context.Result({{"onRecord", json}},
                   lines.empty() ? Lines{"no interrupted writes are on record"} : lines);
}

void Forget(Context& context, const host::JournalEntry& entry) {
    context.Records().journal.Forget(entry);
    context.Result({{"recovered", "forgotten"}, {"interrupted", ToJson(entry)}},
                   {"the " + entry.InWords() + " is forgotten; the keyboard is as it was"});
}

// A keyboard that shows a part of none of them: nothing is to be done.
void LeaveAlone(Context& context, const std::vector<host::TracedWrite>& writes,
                const RecoverOptions& options) {
    if (options.forget)
        throw host::Error(host::ErrorKind::Usage,
                          "this keyboard holds no part of an interrupted write; name the one to be "
                          "forgotten, as qxconf recover --list does");
    const bool isAsked = options.finish || options.rollBack;
    for (const host::TracedWrite& write : writes)
        if (isAsked && write.trace != (options.finish ? Trace::After : Trace::Before))
            throw host::Error(host::ErrorKind::KeyboardChanged,
                              write.InWords() + ": " + TextOf(write.trace).text +
                                  "; nothing was written, and the record of it is kept; what the "
                                  "keyboard of that write held before is in the backup " +
                                  write.backup);
    Lines lines = {"no write to this keyboard was interrupted"};
    if (!writes.empty()) {
        lines = {
            "this keyboard holds no part of an interrupted write; nothing was written",
            "interrupted writes to keyboards of this kind stay on record until such a keyboard "
            "is found, or until",
            "  qxconf recover --forget ID"};
        Append(lines, OnRecord(writes));
    }
    context.Result(
        {{"interrupted", nullptr}, {"recovered", nullptr}, {"onRecord", TracedToJson(writes)}},
        lines);
}

void Recover(Context& context, const RecoverOptions& options) {
    if (options.list)
        return List(context);
    if (!options.id.empty() && !options.forget)
        throw host::Error(host::ErrorKind::Usage, "an ID is given with --forget only");
    if (!options.id.empty())
        return Forget(context, context.Records().journal.Find(options.id));
    const auto writes = context.Writer().OnRecord();
    const auto entry =
        std::find_if(writes.rbegin(), writes.rend(),
                     [](const host::TracedWrite& write) { return write.trace == Trace::Partial; });
    if (entry == writes.rend()) {
        context.CloseKeyboard();
        return LeaveAlone(context, writes, options);
    }
    if (options.forget) {
        context.CloseKeyboard();
        return Forget(context, *entry);
    }
    host::Json json = {{"interrupted", ToJson(static_cast<const host::JournalEntry&>(*entry))},
                       {"recovered", nullptr},
                       {"onRecord", TracedToJson(writes)}};
    const std::string what = "the " + entry->InWords();
    if (!options.finish && !options.rollBack) {
        context.CloseKeyboard();
        return context.Result(
            json, {what + " was interrupted: this keyboard holds a part of it",
                   "  qxconf recover --finish    writes the rest of it",
                   "  qxconf recover --rollback  brings back what the keyboard held before",
                   "  qxconf recover --forget    keeps what the keyboard holds now"});
    }
    const auto way = options.finish ? host::Writer::Way::Finish : host::Writer::Way::RollBack;
    const host::Writer::Outcome outcome = context.Writer().Recover(*entry, way);
    json["recovered"] = options.finish ? "finished" : "rolled back";
    json["bytesSent"] = outcome.bytesSent;
    json["verified"] = true;
    context.CloseKeyboard();
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
        .options = {{.name = "ID",
                     .target = &options->id,
                     .summary = "The one to be forgotten, as listed; the keyboard is not needed",
                     .offers =
                         [](Context& context) {
                             std::vector<std::string> ids;
                             for (const auto& entry : context.Records().journal.Entries())
                                 ids.push_back(entry.Id());
                             return ids;
                         }},
                    {.name = "--finish",
                     .target = &options->finish,
                     .summary = "Write the rest of it"},
                    {.name = "--rollback",
                     .target = &options->rollBack,
                     .summary = "Restore the keyboard's contents from before it",
                     .excludes = {"--finish"}},
                    {.name = "--forget",
                     .target = &options->forget,
                     .summary = "Keep the keyboard as it is and discard the recovery record",
                     .excludes = {"--finish", "--rollback"}},
                    {.name = "--list",
                     .target = &options->list,
                     .summary = "List the interrupted writes to all keyboards",
                     .excludes = {"--finish", "--rollback", "--forget"}}},
        .footer = "Without an option it only reports the interrupted write. It can be repeated "
                  "until it succeeds,\neither way. The keyboard's contents are saved before. A "
                  "keyboard that holds no part of an\ninterrupted write may be another one of its "
                  "kind: it is not touched, and the write stays on record\nuntil its keyboard is "
                  "plugged in again, or until it is forgotten by its ID.\n\nExamples:\n"
                  "  qxconf recover\n"
                  "  qxconf recover --rollback\n"
                  "  qxconf recover --list\n"
                  "  qxconf recover --forget 20260131T090507.123Z-4711-1",
        .run = [options](Context& context) { Recover(context, *options); },
    };
}

} // namespace qx::cli
