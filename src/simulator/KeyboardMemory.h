// KeyboardMemory: what a simulated keyboard keeps while it is unplugged, in one file.
//
// The file carries the keyboard's model, so that it can be used without naming that again. While the
// object lives, no other program can use the file. Every change is on the disk when Save returns;
// the file is replaced whole, so that it is never seen half-written.
#pragma once

#include "files/Files.h"
#include "simulator/KeyboardModel.h"

#include <filesystem>
#include <stdexcept>
#include <string>

namespace qx::sim {

// The file is being used by another program.
class KeyboardInUse : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// The file is there, but is not the file of a keyboard, or is damaged.
class KeyboardFileInvalid : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

class KeyboardMemory {
public:
    // Bytes of configuration memory; a power of two that holds the description block at 70000.
    static constexpr Long kSize = 128 * 1024;

    // Opens the file; makes it, a keyboard with factory settings, when it does not exist. Throws
    // KeyboardInUse, KeyboardFileInvalid, or std::runtime_error for what the system refuses.
    KeyboardMemory(const std::filesystem::path& file, const std::string& modelText);

    [[nodiscard]] const KeyboardModel& Model() const { return m_model; }

    std::string memory;          // kSize bytes
    std::string program;         // as loaded last; empty at first
    std::string chipcardProgram; // the same

    // Stores everything. Throws std::runtime_error.
    void Save() const;

private:
    void Load();
    void MakeNew();

    std::filesystem::path m_file;
    files::FileLock m_lock;
    std::string m_modelText;
    KeyboardModel m_model;
};

// The memory of a keyboard of this model as it leaves the factory.
[[nodiscard]] std::string FactoryMemory(const KeyboardModel& model);

} // namespace qx::sim
