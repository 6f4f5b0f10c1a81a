// Services: what a batch takes from the program that runs it.
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
    // The layout for a keyboard that names this one, or none (the empty text). It stays alive as
    // long as the batch. Throws host::Error.
    std::function<QXKeyboardLayoutData&(const std::string& name)> layout;
    Platform platform;
    std::filesystem::path records; // of writes
    bool skipAbsent = false;       // leave out what a keyboard has no module for
    bool repair = false;           // replace what is damaged in a keyboard
    host::Clock now = [] { return std::chrono::system_clock::now(); };
    // Lets some time pass before the bench is looked at again.
    std::function<void()> pause;
    std::function<bool()> isInterrupted = [] { return false; };
    std::function<void(const std::string&)> note = [](const std::string&) {}; // to the user
    std::function<void(const std::string&)> warn = [](const std::string&) {}; // also when quiet
    std::function<void(int)> progress;                                        // in percent
};

} // namespace qx::batch
