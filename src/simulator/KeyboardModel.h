// KeyboardModel: what kind of keyboard a simulated one is: its identification, what it has, and
// where.
//
// Models are JSON files. They are read strictly, so that a mistake in one is not taken for a
// property of the keyboard. Some models are built into the program.
#pragma once

#include "qxcontrols/device/KeyboardModuleIDs.h"

#include <optional>
#include <string>
#include <vector>

namespace qx::sim {

struct KeyboardModel {
    struct Entry {
        KeyboardModuleIDs module;
        Long address;
    };

    std::string name;                                 // at most 16 characters
    std::string bootloader, program, country, config; // at most 4 characters each
    Byte capabilities = 0;                            // as in the keyboard's capability byte
    std::string layout;                               // file name of the keyboard's layout
    std::vector<Entry> directory;                     // areas that do not meet
    std::string json;                                 // all of the above, as it was read

    // The model of that text. Throws json::FaultError.
    [[nodiscard]] static KeyboardModel FromJson(std::string text);
    // The built-in model of that name, else the model in the file of that path. Throws
    // std::runtime_error that names the model, and what is wrong with it.
    [[nodiscard]] static KeyboardModel ByName(const std::string& nameOrPath);
    // The names of the built-in models.
    [[nodiscard]] static std::vector<std::string> Names();

    // The base address of a module; none when the keyboard lacks it.
    [[nodiscard]] std::optional<Long> AddressOf(KeyboardModuleIDs eModule) const;
    [[nodiscard]] bool Has(KeyboardModuleIDs eModule) const {
        return AddressOf(eModule).has_value();
    }
    // What the capability byte says.
    [[nodiscard]] bool HasBarcodeReader() const;
    [[nodiscard]] bool HasMagneticTrack(Integer nTrack) const; // 1 to 4
    // The keyboard's identification, as it lies in the image.
    [[nodiscard]] std::string IdentificationBlock() const;
};

} // namespace qx::sim
