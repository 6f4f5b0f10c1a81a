#include "host/Receipts.h"

namespace qx::host {

namespace {

constexpr RecordFormat kFormat = {"qx-receipt", 1, true};
constexpr std::string_view kEnding = ".receipt.json";

} // namespace

Json ToJson(const Receipt& receipt) {
    return {{"time", receipt.time},
            {"action", receipt.action},
            {"result", receipt.result},
            {"message", receipt.message},
            {"document", receipt.document},
            {"documentSha256", receipt.documentSha256},
            {"full", receipt.full},
            {"bytesSent", receipt.bytesSent ? Json(*receipt.bytesSent) : Json()},
            {"beforeSha256", receipt.beforeSha256},
            {"afterSha256", receipt.afterSha256},
            {"backup", receipt.backup},
            {"unit", receipt.till.unit},
            {"place", receipt.till.place},
            {"keyboard", ToJson(receipt.keyboard)}};
}

void Receipts::Add(Receipt receipt, Time time) const {
    receipt.time = TimeText(time);
    WriteNewRecord(m_folder, time, std::string(kEnding), kFormat, ToJson(receipt));
}

std::vector<Receipt> Receipts::List(std::vector<DamagedRecord>* damaged) const {
    std::vector<Receipt> receipts;
    const auto read = [&](const std::filesystem::path&, const Json& record) {
        Receipt receipt;
        const auto text = [&](const char* key) { return record.at(key).get<std::string>(); };
        receipt.time = text("time");
        receipt.action = text("action");
        receipt.result = text("result");
        receipt.message = text("message");
        receipt.document = text("document");
        receipt.documentSha256 = text("documentSha256");
        receipt.full = record.at("full").get<bool>();
        if (!record.at("bytesSent").is_null())
            receipt.bytesSent = NumberFromJson<Long>(record.at("bytesSent"));
        receipt.beforeSha256 = text("beforeSha256");
        receipt.afterSha256 = text("afterSha256");
        receipt.backup = text("backup");
        receipt.till = {text("unit"), text("place")};
        receipt.keyboard = IdentityFromJson(record.at("keyboard"));
        receipts.push_back(std::move(receipt));
    };
    const auto unusable = ReadRecords(m_folder, kEnding, kFormat, read);
    if (damaged != nullptr)
        damaged->insert(damaged->end(), unusable.begin(), unusable.end());
    return receipts;
}

std::set<std::string> Receipts::UnitsOf(const KeyboardContent& content) const {
    std::set<std::string> hashes = {content.Hash()};
    std::set<std::string> units;
    const std::vector<Receipt> receipts = List();
    for (auto receipt = receipts.rbegin(); receipt != receipts.rend(); ++receipt) {
        if (!receipt->keyboard.IsLike(content.identity) || !hashes.contains(receipt->afterSha256))
            continue;
        if (receipt->till.unit.empty())
            hashes.insert(receipt->beforeSha256);
        else
            units.insert(receipt->till.unit);
    }
    return units;
}

} // namespace qx::host
