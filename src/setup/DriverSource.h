// DriverSource: opens the keyboard that a program works with.
#pragma once

#include "driverhost/RemoteDriver.h"
#include "host/Session.h"
#include "host/Writer.h"
#include "qxcontrols/device/ConfigDriver.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace qx::sim {
class SimulatedDriver;
}

namespace qx::setup {

// The options that select a keyboard; empty if not given.
struct KeyboardChoice {
    std::filesystem::path driver;   // a driver library
    std::filesystem::path keyboard; // the file of a simulated keyboard
    std::string model;              // the model for creating it if it does not exist
    // Of a driver library: it runs in a separate process, whatever it may do there.
    driverhost::Isolation isolation = {};
};

struct OpenedDriver {
    std::unique_ptr<ConfigDriver> driver;
    std::function<std::string(std::int32_t)> statusText; // explains its statuses, if it can
    // Adds why its last call failed, from a driver that has it as data.
    std::function<void(host::ErrorFacts&)> explain;
    // Why a driver library is gone; none while it works.
    std::function<std::optional<files::Problem>()> failure;
    std::function<std::string()> layout;       // the keyboard's layout, once it is open
    sim::SimulatedDriver* simulated = nullptr; // the driver, if it is the simulated keyboard
    // The user's own simulated keyboard, if it is used because nothing was chosen.
    std::filesystem::path unchosen;
    std::string origin; // full paths of library and file: equal for the same choice
};

// For a session with the driver, which must outlive it.
[[nodiscard]] host::Session::Options SessionOptions(const OpenedDriver& opened,
                                                    std::function<void(int)> progress = {});

// The driver for the choice: the library, or else the simulated keyboard in its file, or else the
// one in the user's data folder. Throws host::Error, also for a file that does not exist if no
// model is given, and for a model other than that of the keyboard in the file.
[[nodiscard]] OpenedDriver OpenDriver(const KeyboardChoice& choice);

// For a writer to the keyboard that is open with this driver, with its records in the chosen folder
// (see RecordFolder).
[[nodiscard]] host::Writer::Options
WriterOptions(const OpenedDriver& opened, const std::filesystem::path& records,
              std::function<std::unique_ptr<host::Configuration>()> newConfiguration);

// The folder for the records of writes: the chosen one, or the user's own if that is empty. Throws
// host::Error(FileFailed) if the user has none.
[[nodiscard]] std::filesystem::path RecordFolder(const std::filesystem::path& chosen);

} // namespace qx::setup
