// Claims: the exclusive right to write to a keyboard; only one program at a time has it.
#pragma once

#include "files/Files.h"
#include "host/KeyboardContent.h"

#include <filesystem>
#include <memory>
#include <string>

namespace qx::host {

// Held during its lifetime.
using Claim = std::unique_ptr<files::FileLock>;

class Claims {
public:
    // The folder of the lock files.
    explicit Claims(std::filesystem::path folder) : m_folder(std::move(folder)) {}

    // The claim for a keyboard: by its identifier, or else by its model and connection.
    [[nodiscard]] static std::string NameOf(const KeyboardIdentity& keyboard,
                                            const std::string& sOrigin);
    // Null while another program has it. Throws Error(FileFailed).
    [[nodiscard]] Claim Take(const std::string& name) const;
    // The same, but throws Error(KeyboardBusy) in that case.
    [[nodiscard]] Claim Require(const std::string& name) const;
    [[nodiscard]] bool IsTaken(const std::string& name) const;

private:
    std::filesystem::path m_folder;
};

} // namespace qx::host
