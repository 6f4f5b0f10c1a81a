// DriverSource: which keyboard a program works with.
#pragma once

#include "driverhost/RemoteDriver.h"
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

// The options that choose a keyboard; empty where not given.
struct KeyboardChoice {
    std::filesystem::path driver;   // a driver library
    std::filesystem::path keyboard; // the file of a simulated keyboard
    std::string model;              // its model, which one that does not exist is made from
    // Runs a driver library in a process of its own, as such a library may do anything. One of the
    // other word size runs in one in any case.
    std::optional<driverhost::Isolation> isolation = {};
};

struct OpenedDriver {
    std::unique_ptr<ConfigDriver> driver;
    std::function<std::string(std::int32_t)> statusText; // the meaning of its statuses, if known
    std::function<std::string()> failure; // why an isolated driver is gone; empty while it works
    std::function<std::string()> layout;  // the keyboard's layout, once it is open
    sim::SimulatedDriver* simulated = nullptr; // the driver, where it is the simulated keyboard
    std::string note;   // what the user should know about the choice; may be empty
    std::string origin; // the library and the file, whole: the same for the same choice anywhere
};

// The driver for the choice: the library; else the simulated keyboard in its file; else the one in
// the user's data folder. Throws host::Error, also for a file that does not exist unless a model is
// chosen, and for a model that the keyboard in the file is not of.
[[nodiscard]] OpenedDriver OpenDriver(const KeyboardChoice& choice);

// Where the records of writes are kept: the chosen folder, or the user's own when that is empty.
// Throws host::Error(FileFailed) where the user has none.
[[nodiscard]] std::filesystem::path RecordFolder(const std::filesystem::path& chosen);

} // namespace qx::setup
