// Receipts: a record of each write to a keyboard, whatever its result.
#pragma once

#include "host/KeyboardContent.h"
#include "host/RecordFiles.h"
#include "host/Till.h"
#include "host/WriteCodes.h"

#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace qx::host {

struct Receipt {
    std::string time;
    WriteAction action = WriteAction::Download;
    std::string document;       // the name of the written document
    std::string documentSha256; // empty if there was no document
    Till till;
    KeyboardIdentity keyboard;     // before the write
    std::string backup;            // the id of the backup made before
    bool full = false;             // false: only changed bytes
    std::optional<Long> bytesSent; // none if the transfer failed
    std::string beforeSha256;      // of all areas
    std::string afterSha256;       // of all areas as read back; empty if they were not
    WriteResult result = WriteResult::Unknown;
    std::string message; // of the failure
};

[[nodiscard]] Json ToJson(const Receipt& receipt);

class Receipts {
public:
    explicit Receipts(std::filesystem::path folder) : m_folder(std::move(folder)) {}

    // Writes the receipt with this time. Throws Error(FileFailed).
    void Add(Receipt receipt, Time time) const;
    // All receipts, oldest first. Unusable ones are added to `damaged`.
    [[nodiscard]] std::vector<Receipt> List(std::vector<DamagedRecord>* damaged = nullptr) const;
    // The units whose writes have left a keyboard of this model with exactly these contents. A
    // write without a unit counts for the unit that the keyboard was before.
    [[nodiscard]] std::set<std::string> UnitsOf(const KeyboardContent& content) const;

private:
    std::filesystem::path m_folder;
};

} // namespace qx::host
