// KeyboardMemory: what a simulated keyboard keeps while it is unplugged, in one file.
//
// The file carries the keyboard's model, so that it can be used without naming that again. While
// the object lives, no other one can use the file. What Store is given is on the disk when it
// returns; the file is replaced whole, so that it is never seen half-written.
#pragma once

#include "files/Files.h"
#include "simulator/FixedAreas.h"
#include "simulator/KeyboardModel.h"

#include <filesystem>
#include <string>

namespace qx::sim {

class KeyboardMemory {
public:
    static constexpr Long kSize = kMemorySize;

    struct Content {
        std::string memory;          // configuration memory, kSize bytes
        std::string program;         // as loaded last
        std::string chipcardProgram; // the same
    };

    // Opens the file; makes it, a keyboard of the model with factory settings, when it does not
    // exist. Throws Failure when the file is in use, or is not that of a keyboard or damaged, and
    // then leaves it as it is; std::runtime_error for what the system refuses.
    KeyboardMemory(const std::filesystem::path& file, const KeyboardModel& model);

    // Whether the file is that of a keyboard, by its beginning.
    [[nodiscard]] static bool IsIn(const std::filesystem::path& file);
    // The model of the keyboard in the file, which may be in use. Throws as the constructor does.
    [[nodiscard]] static KeyboardModel ModelIn(const std::filesystem::path& file);

    [[nodiscard]] const KeyboardModel& Model() const { return m_model; } // that of the file
    [[nodiscard]] const Content& Stored() const { return m_content; }

    // Replaces the content. Throws std::runtime_error, and the old content stays, when it cannot be
    // stored.
    void Store(Content content);

private:
    struct Parts;
    [[nodiscard]] static Parts PartsOf(const std::filesystem::path& file);

    std::filesystem::path m_file;
    files::FileLock m_lock;
    KeyboardModel m_model;
    Content m_content;
};

} // namespace qx::sim
