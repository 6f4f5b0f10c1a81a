// Worker: programs units for a batch in a separate process, so that several can be programmed in
// parallel: the control library runs on one thread.
//
// Both ends exchange lines of JSON. The batch sends the settings, then one unit at a time; the
// worker answers each with its attempt, and ends when the batch closes the channel.
#pragma once

#include "batch/Attempt.h"
#include "batch/Layouts.h"
#include "driverhost/RemoteDriver.h"
#include "process/ChildProcess.h"

#include <filesystem>
#include <string>

namespace qx::batch {

struct WorkerSettings {
    LayoutChoice layouts;
    std::filesystem::path records; // of writes
    bool skipAbsent = false;
    bool repair = false;
    driverhost::Isolation isolation; // of driver libraries
    bool trace = false;              // to standard error
};

// The lines that the batch sends, and the parsing of answers; each line ends with a line feed.
// Reading throws json::FaultError for an invalid line.
[[nodiscard]] std::string LineOf(const WorkerSettings& settings);
[[nodiscard]] std::string LineOf(const Unit& unit);
[[nodiscard]] Attempt AttemptOf(const std::string& line);

// The worker's side. Throws std::exception for invalid lines.
void Work(process::Channel& channel);

} // namespace qx::batch
