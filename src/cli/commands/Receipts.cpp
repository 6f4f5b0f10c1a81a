#include "cli/commands/Commands.h"

#include "cli/Output.h"

namespace qx::cli {

namespace {

void ListReceipts(Context& context) {
    host::Json json = host::Json::array();
    std::vector<std::vector<std::string>> rows;
    std::vector<host::DamagedRecord> damaged;
    for (const host::Receipt& receipt : context.Records().receipts.List(&damaged)) {
        json.push_back(ToJson(receipt));
        rows.push_back({receipt.time, std::string(CodeOf(receipt.action)),
                        std::string(CodeOf(receipt.result)), receipt.keyboard.Name(),
                        receipt.bytesSent ? Counted(*receipt.bytesSent, "byte") : "",
                        receipt.document.empty() ? "an untitled document" : receipt.document});
    }
    for (const host::DamagedRecord& record : damaged)
        context.Warn(MessageOf(record.error));
    context.Result({{"receipts", json}},
                   rows.empty() ? Lines{"nothing has been written yet"} : AlignedLines(rows));
}

} // namespace

Command ReceiptsCommand() {
    return {
        .name = "receipts",
        .summary = "List the records of all writes",
        .footer =
            "With --json each record includes the hashes of the document and of the keyboard's "
            "contents before\nand after.\n\nExamples:\n"
            "  qxconf receipts\n"
            "  qxconf --json receipts",
        .run = ListReceipts,
    };
}

} // namespace qx::cli
