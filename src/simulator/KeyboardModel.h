// KeyboardModel: what a simulated keyboard is: its identification, what it has, and where.
#pragma once

#include "qxcontrols/device/KeyboardModuleIDs.h"

#include <string>
#include <string_view>
#include <vector>

namespace qx::sim {

struct KeyboardModel {
    struct Entry {
        KeyboardModuleIDs module;
        Long address;
    };

    std::string name;                               // at most 16 characters
    std::string bootloader, program, country, config; // at most 4 characters each
    Byte capabilities = 0;                          // as in the keyboard's capability byte
    std::string layout;                             // file name of the keyboard layout
    std::vector<Entry> directory;

    // Reads a model strictly. Throws std::runtime_error that names the place (a JSON pointer).
    [[nodiscard]] static KeyboardModel FromJson(std::string_view json);

    // The text of the shipped model of that name, or of the file at that path. Throws
    // std::runtime_error when there is neither.
    [[nodiscard]] static std::string TextOf(const std::string& nameOrPath);
    // The names of the shipped models.
    [[nodiscard]] static std::vector<std::string> Names();

    // The 32 bytes at 0x7FC0.
    [[nodiscard]] std::string IdentificationBlock() const;
};

} // namespace qx::sim
