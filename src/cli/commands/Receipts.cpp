#include "cli/commands/Commands.h"

#include "cli/Output.h"

namespace qx::cli {

namespace {

void List(Context& context) {
    host::Json json = host::Json::array();
    std::vector<std::vector<std::string>> rows;
    std::vector<host::DamagedRecord> damaged;
    for (const host::Receipt& receipt : context.Records().receipts.List(&damaged)) {
        json.push_back(ToJson(receipt));
        rows.push_back({receipt.time, receipt.action, receipt.result, receipt.keyboard.Name(),
                        receipt.bytesSent ? Counted(*receipt.bytesSent, "byte") : "",
                        receipt.document});
    }
    for (const host::DamagedRecord& record : damaged)
        context.Note(record.message);
    context.Result({{"receipts", json}},
                   rows.empty() ? "nothing has been written yet\n" : AlignedText(rows));
}

} // namespace

void AddReceipts(CLI::App& app, Context& context) {
    CLI::App* command = app.add_subcommand("receipts", "List the records of all writes");
    command->footer("With --json each one has the hashes of the document and of what the keyboard "
                    "held before and\nafter.\n\nExamples:\n"
                    "  qxconf receipts\n"
                    "  qxconf --json receipts");
    command->callback([&context] { List(context); });
}

} // namespace qx::cli
