// Services: what the running program provides to a batch.
#pragma once

#include "host/RecordFiles.h"
#include "qxcontrols/platform/Platform.h"
#include "setup/DriverSource.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

namespace qx {
class QXKeyboardLayoutData;
}

namespace qx::batch {

struct Services {
    std::function<setup::OpenedDriver(const setup::KeyboardChoice&)> openDriver;
    // The layout for a keyboard with this layout name, or without one (empty). It lives as long as
    // the batch. Throws host::Error.
    std::function<QXKeyboardLayoutData&(const std::string& name)> layout;
    Platform platform;
    std::filesystem::path records; // of writes
    bool skipAbsent = false;       // ignore settings without a module in the keyboard
    bool repair = false;           // replace damaged parts of a keyboard
    host::Clock now = [] { return std::chrono::system_clock::now(); };
    // Waits before the bench is checked again.
    std::function<void()> pause;
    std::function<bool()> isInterrupted = [] { return false; };
    std::function<void(const std::string&)> note = [](const std::string&) {}; // to the user
    std::function<void(const std::string&)> warn = [](const std::string&) {}; // also when quiet
    std::function<void(int)> progress;                                        // in percent
};

} // namespace qx::batch
