// KeyboardMemory: the non-volatile contents of a simulated keyboard, in one file.
//
// The file includes the keyboard's model, so that the model need not be named again. While the
// object lives, no other can use the file. Store returns once its content is on the disk; it
// replaces the file as a whole, so a half-written file is never seen.
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
        std::string program;         // the last one loaded
        std::string chipcardProgram; // the last one loaded
    };

    // Opens the file, or creates it with the model's factory settings if it does not exist. Throws
    // Failure if the file is in use, damaged or not a keyboard's file, and leaves it unchanged;
    // std::runtime_error for errors of the system.
    KeyboardMemory(const std::filesystem::path& file, const KeyboardModel& model);

    // Whether the file begins like a keyboard's file.
    [[nodiscard]] static bool IsIn(const std::filesystem::path& file);
    // The model of the keyboard in the file, even if it is in use; of a damaged file perhaps
    // another. Throws std::exception if it has none.
    [[nodiscard]] static KeyboardModel ModelIn(const std::filesystem::path& file);

    [[nodiscard]] const KeyboardModel& Model() const { return m_model; } // the file's model
    [[nodiscard]] const Content& Stored() const { return m_content; }

    // Replaces the content. Throws std::runtime_error if it cannot be stored; the old content then
    // remains.
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
