#include "cli/commands/Commands.h"

#include "cli/Output.h"
#include "files/SystemTexts.h"
#include "host/ErrorText.h"

#include <memory>
#include <set>

namespace qx::cli {

namespace {

constexpr const char* kExampleId = "QX-MAGNET-0123456789ab/20260131T090507.123Z-4711-1";

Option IdArgument(std::string& id) {
    return {.name = "ID",
            .target = &id,
            .summary = "The backup, as listed",
            .isRequired = true,
            .offers = [](Context& context) {
                std::vector<std::string> ids;
                for (const host::BackupEntry& entry : context.Records().backups.List())
                    ids.push_back(entry.id);
                return ids;
            }};
}

// A damaged backup is listed without its contents.
void List(Context& context) {
    const host::BackupStore backups = context.Records().backups;
    host::Json json = host::Json::array();
    std::vector<std::vector<std::string>> rows;
    for (const host::BackupEntry& entry : backups.List()) {
        host::Backup backup;
        try {
            backup = backups.Load(entry);
        } catch (const host::Error& error) {
            context.Warn(MessageOf(error));
        }
        json.push_back({{"id", entry.id},
                        {"keyboard", entry.keyboard},
                        {"time", entry.time},
                        {"unit", backup.till.unit},
                        {"place", backup.till.place},
                        {"writtenAfter", backup.document},
                        {"document", files::TextOf(entry.document)}});
        rows.push_back({entry.id, backup.till.unit, backup.till.place, backup.document});
    }
    context.Result({{"backups", json}},
                   rows.empty() ? Lines{"there are no backups"} : AlignedLines(rows));
}

// The sections that the keyboard had but no document can express.
std::vector<host::Fault> LeftOut(const host::KeyboardContent& content,
                                 const host::ConfigurationDocument& document) {
    std::set<std::string> sections;
    for (const host::ContentPiece& piece : content.pieces)
        if (!piece.section.empty() && document.Find(piece.section) == nullptr)
            sections.insert(piece.section);
    std::vector<host::Fault> leftOut;
    for (const std::string& section : sections)
        leftOut.emplace_back("/" + section, host::FaultKind::DamagedWhenSaved);
    return leftOut;
}

void Show(Context& context, const std::string& id, const std::string& file) {
    const host::BackupStore backups = context.Records().backups;
    const host::BackupEntry entry = backups.Find(id);
    const auto document = host::ConfigurationDocument::Load(entry.document);
    try {
        context.WarnOfDamage(LeftOut(backups.Load(entry).content, document));
    } catch (const host::Error& error) {
        context.Warn(MessageOf(error));
    }
    WriteDocument(context, document, file, "backup to file");
}

void Restore(Context& context, const std::string& id, bool fOtherKeyboard) {
    const host::BackupStore backups = context.Records().backups;
    const host::Backup backup = backups.Load(backups.Find(id));
    host::Writer& writer = context.Writer();
    const host::WritePlan plan = writer.PlanRestore(backup, fOtherKeyboard);
    host::Json notRestored = host::Json::array();
    for (const host::NotRestored& part : plan.notRestored) {
        notRestored.push_back(
            {{"section", part.section.empty() ? host::Json() : host::Json(part.section)},
             {"bytes", part.bytes}});
        context.Warn(host::TextOf(part));
    }
    host::Writer::Request request;
    request.action = host::WriteAction::Restore;
    request.document = id;
    const host::Writer::Outcome outcome = writer.Write(plan, request);
    host::Json json = {{"direction", "backup to keyboard"}, {"restored", id},
                       {"written", outcome.isWritten},      {"verified", outcome.isVerified},
                       {"bytesSent", outcome.bytesSent},    {"backup", outcome.backup}};
    json["notRestored"] = std::move(notRestored);
    json["settings"] = ToJson(plan)["settings"];
    context.CloseKeyboard();
    context.Result(json, {outcome.isWritten ? "backup to keyboard: restored " + id + " (" +
                                                  Counted(outcome.bytesSent, "byte") +
                                                  " changed), read back and verified"
                                            : "backup to keyboard: the keyboard already matches " +
                                                  id + "; nothing was written"});
}

Command ListCommand() {
    return {
        .name = "list",
        .summary = "List all backups, by keyboard and time",
        .footer = "Example:\n  qxconf backup list",
        .run = List,
    };
}

Command ShowBackupCommand() {
    struct Options {
        std::string id;
        std::string file;
    };
    const auto options = std::make_shared<Options>();
    return {
        .name = "show",
        .summary = "Write the document of a backup",
        .options = {IdArgument(options->id), OutputOption(options->file)},
        .footer = std::string("Example:\n  qxconf backup show ") + kExampleId + " -o old.json",
        .run = [options](Context& context) { Show(context, options->id, options->file); },
    };
}

Command RestoreCommand() {
    struct Options {
        std::string id;
        bool otherKeyboard = false;
    };
    const auto options = std::make_shared<Options>();
    return {
        .name = "restore",
        .summary = "Restore the keyboard's contents from a backup",
        .options = {IdArgument(options->id),
                    {.name = "--other-keyboard",
                     .target = &options->otherKeyboard,
                     .summary =
                         "Restore it even if it seems to belong to another keyboard of the same "
                         "model; this one keeps its own identifier"}},
        .footer = std::string("The keyboard's present contents are saved first.\n\nExample:\n"
                              "  qxconf backup restore ") +
                  kExampleId,
        .run =
            [options](Context& context) { Restore(context, options->id, options->otherKeyboard); },
    };
}

} // namespace

Command BackupCommand() {
    return {
        .name = "backup",
        .summary = "List, show and restore the backups made before each write",
        .footer =
            "Every write first saves the keyboard's contents. A backup is kept for at least " +
            std::to_string(host::BackupStore::kDays) +
            " days,\nand until its keyboard has backups from " +
            std::to_string(host::BackupStore::kLaterDays) +
            " later days. One that an interrupted write needs is never deleted.\n\nExamples:\n"
            "  qxconf backup list\n"
            "  qxconf backup restore " +
            kExampleId,
        .commands = {ListCommand(), ShowBackupCommand(), RestoreCommand()},
    };
}

} // namespace qx::cli
