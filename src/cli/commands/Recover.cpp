#include "cli/commands/Commands.h"

#include "cli/Output.h"
#include "host/ErrorText.h"

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

const char* NameOf(Trace trace) {
    switch (trace) {
    case Trace::Partial:
        return "partial";
    case Trace::Before:
        return "before";
    case Trace::After:
        return "after";
    case Trace::None:
        return "none";
    }
    return "";
}

const char* TextOf(Trace trace) {
    switch (trace) {
    case Trace::Partial:
        return "this keyboard holds a part of it";
    case Trace::Before:
        return "this keyboard holds exactly what was there before it, and may be another one";
    case Trace::After:
        return "this keyboard holds all of it, and may be another one";
    case Trace::None:
        return "this keyboard's contents do not match it";
    }
    return "";
}

host::Json TracedToJson(const std::vector<host::TracedWrite>& writes) {
    host::Json json = host::Json::array();
    for (const host::TracedWrite& write : writes) {
        json.push_back(ToJson(static_cast<const host::JournalEntry&>(write)));
        json.back()["trace"] = NameOf(write.trace);
    }
    return json;
}

Lines OnRecord(const std::vector<host::TracedWrite>& writes) {
    Lines lines;
    for (const host::TracedWrite& write : writes)
        lines.push_back("  " + write.Id() + "  " + host::InWords(write) + ": " +
                        TextOf(write.trace));
    return lines;
}

// All writes on record, of any keyboard.
void ListWrites(Context& context) {
    std::vector<host::DamagedRecord> damaged;
    host::Json json = host::Json::array();
    Lines lines;
    for (const host::JournalEntry& entry : context.Records().journal.Entries(&damaged)) {
        json.push_back(ToJson(entry));
        lines.push_back(entry.Id() + "  " + host::InWords(entry) + " to a " +
                        entry.keyboard.Name());
    }
    for (const host::DamagedRecord& record : damaged)
        context.Warn(MessageOf(record.error));
    context.Result({{"onRecord", json}},
                   lines.empty() ? Lines{"no interrupted writes are on record"} : lines);
}

void Forget(Context& context, const host::JournalEntry& entry) {
    context.Records().Forget(entry);
    context.Result(
        {{"recovered", "forgotten"}, {"interrupted", ToJson(entry)}},
        {"the " + host::InWords(entry) + ": record discarded; the keyboard was not changed"});
}

// The keyboard contains no part of any of them: there is nothing to do.
void LeaveAlone(Context& context, const std::vector<host::TracedWrite>& writes,
                const RecoverOptions& options) {
    if (options.forget)
        throw UsageError("this keyboard holds no part of an interrupted write: give the ID of the "
                         "record to discard; qxconf recover --list shows it");
    const bool isAsked = options.finish || options.rollBack;
    for (const host::TracedWrite& write : writes)
        if (isAsked && write.trace != (options.finish ? Trace::After : Trace::Before))
            throw host::NotPartlyHeld(write);
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

void RequireOneName(const std::vector<host::JournalEntry>& candidates) {
    if (candidates.size() > 1)
        throw host::Error(host::Cause::WriteToForgetUnclear, {.writes = host::NamesOf(candidates)});
}

void Report(Context& context, const host::Json& json,
            const std::vector<host::JournalEntry>& candidates) {
    Lines lines;
    std::string id;
    if (candidates.size() == 1) {
        lines.push_back("the " + host::InWords(candidates.front()) +
                        " was interrupted: this keyboard holds a part of it");
    } else {
        lines.emplace_back("this keyboard holds parts of several interrupted writes; one of them "
                           "was interrupted on this keyboard:");
        for (const host::JournalEntry& entry : candidates)
            lines.push_back("  " + entry.Id() + "  " + host::InWords(entry));
        lines.emplace_back("choose it:");
        id = " ID";
    }
    const std::size_t width = id.size() + 10;
    const auto add = [&](std::string option, const char* what) {
        option += id;
        option.resize(width, ' ');
        lines.push_back("  qxconf recover " + option + "  " + what);
    };
    add("--finish", "writes the rest of it");
    add("--rollback", "restores the previous contents");
    add("--forget", "keeps the present contents and discards the record");
    context.Result(json, lines);
}

void Settle(Context& context, host::Json json, const host::JournalEntry& entry,
            const RecoverOptions& options) {
    const auto way = options.finish ? host::Writer::Way::Finish : host::Writer::Way::RollBack;
    const host::Writer::Outcome outcome = context.Writer().Recover(entry, way, !options.id.empty());
    json["interrupted"] = ToJson(entry);
    json["recovered"] = options.finish ? "finished" : "rolled back";
    json["bytesSent"] = outcome.bytesSent;
    json["verified"] = true;
    json["recordKept"] = outcome.isRecordKept;
    context.CloseKeyboard();
    Lines lines = {"the " + host::InWords(entry) +
                   (options.finish ? " has been finished (" : " has been rolled back (") +
                   Counted(outcome.bytesSent, "byte") + " written), read back and verified"};
    if (outcome.isRecordKept)
        lines.emplace_back("its record is kept: this keyboard held a part of other interrupted "
                           "writes too, see qxconf recover --list");
    context.Result(json, lines);
}

void Recover(Context& context, const RecoverOptions& options) {
    const bool isAsked = options.finish || options.rollBack;
    if (options.list)
        return ListWrites(context);
    if (!options.id.empty()) {
        if (!isAsked && !options.forget)
            throw UsageError("an ID is given with --finish, --rollback or --forget");
        const host::JournalEntry entry = context.Records().journal.Find(options.id);
        return options.forget ? Forget(context, entry)
                              : Settle(context, host::Json::object(), entry, options);
    }
    const auto writes = context.Writer().OnRecord();
    const auto candidates = context.Writer().Interrupted(writes);
    if (candidates.empty()) {
        context.CloseKeyboard();
        return LeaveAlone(context, writes, options);
    }
    const host::JournalEntry& entry = candidates.front();
    if (options.forget) {
        context.CloseKeyboard();
        RequireOneName(candidates);
        return Forget(context, entry);
    }
    const host::Json json = {
        {"interrupted", ToJson(entry)}, {"recovered", nullptr}, {"onRecord", TracedToJson(writes)}};
    if (isAsked)
        return Settle(context, json, entry, options);
    context.CloseKeyboard();
    Report(context, json, candidates);
}

} // namespace

Command RecoverCommand() {
    const auto options = std::make_shared<RecoverOptions>();
    return {
        .name = "recover",
        .summary = "Finish or roll back a write that was interrupted",
        .options =
            {{.name = "ID",
              .target = &options->id,
              .summary = "The write, as shown by --list; needed if the keyboard holds a part "
                         "of several",
              .offers =
                  [](Context& context) {
                      std::vector<std::string> ids;
                      for (const auto& entry : context.Records().journal.Entries())
                          ids.push_back(entry.Id());
                      return ids;
                  }},
             {.name = "--finish", .target = &options->finish, .summary = "Write the rest of it"},
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
        .footer =
            "Without an option, only the interrupted write is reported. --finish and --rollback "
            "save the keyboard's\ncontents first, and can be repeated, either way, until they "
            "succeed. A keyboard that holds no part of an\ninterrupted write may be another one "
            "of the same model: it is not touched, and the write stays on\nrecord until its "
            "keyboard is plugged in again, or until --forget ID discards the record, which needs "
            "no\nkeyboard.\n\nExamples:\n"
            "  qxconf recover\n"
            "  qxconf recover --rollback\n"
            "  qxconf recover --list\n"
            "  qxconf recover --forget 20260131T090507.123Z-4711-1",
        .run = [options](Context& context) { Recover(context, *options); },
    };
}

} // namespace qx::cli
