// Claims: the right to write to a keyboard. Of all programs one at a time has it.
#pragma once

#include "files/Files.h"
#include "host/KeyboardContent.h"

#include <filesystem>
#include <memory>
#include <string>

namespace qx::host {

// Kept as long as it lives.
using Claim = std::unique_ptr<files::FileLock>;

class Claims {
public:
    // The folder of what is locked.
    explicit Claims(std::filesystem::path folder) : m_folder(std::move(folder)) {}

    // Which claim a keyboard takes: its own by its identifier, else by its kind and how it is
    // reached.
    [[nodiscard]] static std::string NameOf(const KeyboardIdentity& keyboard,
                                            const std::string& sOrigin);
    // Null while another program has it. Throws Error(FileFailed).
    [[nodiscard]] Claim Take(const std::string& name) const;
    // The same; throws Error(KeyboardBusy) then.
    [[nodiscard]] Claim Require(const std::string& name) const;
    [[nodiscard]] bool IsTaken(const std::string& name) const;

private:
    std::filesystem::path m_folder;
};

} // namespace qx::host
