#include "host/Receipts.h"

#include "json/Members.h"

namespace qx::host {

namespace {

constexpr RecordFormat kFormat = {"qx-receipt", 1, true};
constexpr std::string_view kEnding = ".receipt.json";

template <typename AnyReceipt, typename Visit>
void VisitMembers(AnyReceipt& receipt, Visit visit) {
    visit("time", receipt.time);
    visit("action", receipt.action);
    visit("result", receipt.result);
    visit("message", receipt.message);
    visit("document", receipt.document);
    visit("documentSha256", receipt.documentSha256);
    visit("full", receipt.full);
    visit("bytesSent", receipt.bytesSent);
    visit("beforeSha256", receipt.beforeSha256);
    visit("afterSha256", receipt.afterSha256);
    visit("backup", receipt.backup);
    visit("unit", receipt.till.unit);
    visit("place", receipt.till.place);
    visit("keyboard", receipt.keyboard);
}

} // namespace

Json ToJson(const Receipt& receipt) {
    return json::MembersToJson([&](auto visit) { VisitMembers(receipt, visit); });
}

void Receipts::Add(Receipt receipt, Time time) const {
    receipt.time = TimeText(time);
    WriteNewRecord(m_folder, time, std::string(kEnding), kFormat, ToJson(receipt));
}

std::vector<Receipt> Receipts::List(std::vector<DamagedRecord>* damaged) const {
    std::vector<Receipt> receipts;
    const auto read = [&](const std::filesystem::path&, json::Object& record) {
        Receipt receipt;
        json::TakeMembers(record, [&](auto visit) { VisitMembers(receipt, visit); });
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
