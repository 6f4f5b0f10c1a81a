// Worker: programs units for a batch in a process of its own, so that several can be at work at
// once: the control library runs on one thread.
//
// Both ends speak lines of JSON. The batch sends the settings, and then one unit at a time; the
// worker answers each unit with its attempt, and ends when the batch closes the channel.
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

// What the batch sends, and what it makes of the answer; each line ends with a line feed. Reading
// throws std::exception for a line that no worker writes.
[[nodiscard]] std::string LineOf(const WorkerSettings& settings);
[[nodiscard]] std::string LineOf(const Unit& unit);
[[nodiscard]] Attempt AttemptOf(const std::string& line);

// The worker's part. Throws std::exception for lines that no batch sends.
void Work(process::Channel& channel);

} // namespace qx::batch
