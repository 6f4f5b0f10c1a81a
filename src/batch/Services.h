// Services: what the running program provides to a batch.
#pragma once

#include "host/Error.h"
#include "host/RecordFiles.h"
#include "qxcontrols/platform/Platform.h"
#include "setup/DriverSource.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace qx {
class QXKeyboardLayoutData;
}

namespace qx::batch {

struct Unit;
struct UnitReport;

// An event at a bench.
struct BenchNews {
    enum class Kind {
        Waits,       // for the keyboard of the unit, if that is known. why: as none answers
        Fails,       // the keyboard cannot be used. why
        IsDone,      // the keyboard is that of the unit, which is done
        IsUnknown,   // the keyboard is not that of one of the remaining units
        ExpectsNext, // this keyboard is to be replaced by that of the unit, if that is known
    };
    Kind kind;
    const Unit* unit = nullptr;
    std::optional<host::Error> why{};

    bool operator==(const BenchNews&) const = default;
};

// All functions but `openDriver`, `layout` and `pause` are optional.
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
    // For the user, who reads them in words of the program.
    // A unit, its number in the job (from 1) and the number of all.
    std::function<void(const UnitReport&, std::size_t, std::size_t)> finished =
        [](const UnitReport&, std::size_t, std::size_t) {};
    std::function<void(const BenchNews&)> atBench = [](const BenchNews&) {};
    // Of the unit with this name.
    std::function<void(const std::string&, const host::Error&)> warn = [](const std::string&,
                                                                          const host::Error&) {};
    std::function<void(int)> progress; // in percent
};

} // namespace qx::batch
