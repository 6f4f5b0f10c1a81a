#include "host/Claims.h"

#include "files/Sha256.h"
#include "files/SystemTexts.h"
#include "host/Refusal.h"

#include <chrono>
#include <thread>

namespace qx::host {

std::string Claims::NameOf(const KeyboardIdentity& keyboard, const std::string& sOrigin) {
    constexpr std::size_t kHashDigits = 8;
    return keyboard.FileName() +
           (keyboard.guid.empty() ? "-" + files::Sha256(sOrigin).substr(0, kHashDigits) : "");
}

Claim Claims::Take(const std::string& name) const {
    constexpr int kTries = 20; // another program that only checks the claim holds it for a moment
    try {
        files::MakeFolder(m_folder);
        auto lock = std::make_unique<files::FileLock>(m_folder / files::PathOf(name));
        for (int i = 0; i < kTries; ++i) {
            if (lock->TryLock())
                return lock;
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
        return nullptr;
    } catch (const std::exception& error) {
        throw FileError(error);
    }
}

Claim Claims::Require(const std::string& name) const {
    Claim claim = BeforeWriting([&] { return Take(name); });
    if (!claim)
        throw Refusal(Cause::KeyboardBusy);
    return claim;
}

bool Claims::IsTaken(const std::string& name) const {
    try {
        files::MakeFolder(m_folder);
        return !files::FileLock(m_folder / files::PathOf(name)).TryLock();
    } catch (const std::exception& error) {
        throw FileError(error);
    }
}

} // namespace qx::host
