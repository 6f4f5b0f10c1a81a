#include "cli/commands/Commands.h"

#include "cli/Output.h"

#include <memory>

namespace qx::cli {

namespace {

constexpr const char* kExampleId = "QX-MAGNET-0123456789ab/20260131T090507.123Z";

void List(Context& context) {
    host::Json json = host::Json::array();
    std::string text;
    for (const host::BackupEntry& entry : context.Records().backups.List()) {
        json.push_back({{"id", entry.id},
                        {"keyboard", entry.keyboard},
                        {"time", entry.time},
                        {"document", entry.document.string()}});
        text += entry.id + "\n";
    }
    context.Result({{"backups", json}}, text.empty() ? "there are no backups\n" : text);
}

void Show(Context& context, const std::string& id, const std::string& file) {
    const host::BackupEntry entry = context.Records().backups.Find(id);
    WriteDocument(context, host::ConfigurationDocument::Load(entry.document), file,
                  "backup to file");
}

void Restore(Context& context, const std::string& id, bool fOtherKeyboard) {
    const host::BackupStore backups = context.Records().backups;
    const host::KeyboardContent content = backups.Load(backups.Find(id));
    host::Writer& writer = context.Writer();
    const host::WritePlan plan = writer.PlanRestore(content, fOtherKeyboard);
    for (const std::string& area : plan.notRestored)
        context.Note(area);
    host::Writer::Request request;
    request.action = host::Writer::Request::kRestore;
    request.document = id;
    const host::Writer::Outcome outcome = writer.Write(plan, request);
    context.CloseKeyboard();
    host::Json json = {{"direction", "backup to keyboard"}, {"restored", id},
                       {"written", outcome.isWritten},      {"verified", outcome.isVerified},
                       {"bytesSent", outcome.bytesSent},    {"backup", outcome.backup}};
    json["notRestored"] = plan.notRestored;
    json["settings"] = ToJson(plan)["settings"];
    context.Result(json, outcome.isWritten ? "backup to keyboard: restored " + id + " (" +
                                                 Counted(outcome.bytesSent, "byte") +
                                                 " changed), read back and found equal\n"
                                           : "backup to keyboard: the keyboard holds all of " + id +
                                                 " already; nothing was written\n");
}

void AddBackupList(CLI::App& app, Context& context) {
    CLI::App* command = app.add_subcommand("list", "List all backups, by keyboard and time");
    command->footer("Example:\n  qxconf backup list");
    command->callback([&context] { List(context); });
}

void AddBackupShow(CLI::App& app, Context& context) {
    CLI::App* command = app.add_subcommand("show", "Write the document of a backup");
    const auto id = std::make_shared<std::string>();
    const auto file = std::make_shared<std::string>();
    command->add_option("ID", *id, "The backup, as listed")->required()->check(NotEmpty());
    command->add_option("-o,--output", *file, "Where to; without it, standard output")
        ->type_name("FILE")
        ->check(NotEmpty());
    command->footer(std::string("Example:\n  qxconf backup show ") + kExampleId + " -o old.json");
    command->callback([&context, id, file] { Show(context, *id, *file); });
}

void AddBackupRestore(CLI::App& app, Context& context) {
    CLI::App* command =
        app.add_subcommand("restore", "Make the keyboard hold every byte of a backup");
    const auto id = std::make_shared<std::string>();
    const auto other = std::make_shared<bool>(false);
    command->add_option("ID", *id, "The backup, as listed")->required()->check(NotEmpty());
    command->add_flag(
        "--other-keyboard", *other,
        "Also when it is of another keyboard of the same kind, which keeps its own GUID");
    command->footer(std::string("What the keyboard holds now is saved first.\n\nExample:\n"
                                "  qxconf backup restore ") +
                    kExampleId);
    command->callback([&context, id, other] { Restore(context, *id, *other); });
}

} // namespace

void AddBackup(CLI::App& app, Context& context) {
    CLI::App* command =
        app.add_subcommand("backup", "What keyboards held before each write, to bring it back");
    command->require_subcommand(1);
    command->footer(
        "Every write first saves what the keyboard holds; of each keyboard the newest " +
        std::to_string(host::BackupStore::kKept) +
        " are kept.\n\nExamples:\n"
        "  qxconf backup list\n"
        "  qxconf backup restore " +
        kExampleId);
    AddBackupList(*command, context);
    AddBackupShow(*command, context);
    AddBackupRestore(*command, context);
}

} // namespace qx::cli
