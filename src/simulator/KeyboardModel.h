// KeyboardModel: the kind of a simulated keyboard: its identification, its modules, and their
// addresses.
//
// Models are JSON files. They are read strictly, so that a mistake in one is not mistaken for a
// property of the keyboard. Some models are built into the program.
#pragma once

#include "qxcontrols/device/KeyboardModuleIDs.h"
#include "json/Fault.h"

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace qx::sim {

// A model that is invalid; the text names it.
class ModelError : public std::runtime_error {
public:
    ModelError(const std::string& model, std::vector<json::Fault> faults)
        : std::runtime_error("the model " + model + " is invalid: " + ToText(faults)),
          m_faults(std::move(faults)) {}
    [[nodiscard]] const std::vector<json::Fault>& Faults() const { return m_faults; }

private:
    std::vector<json::Fault> m_faults; // at least one
};

struct KeyboardModel {
    struct Entry {
        KeyboardModuleIDs module;
        Long address;
    };

    std::string name;                                 // at most 16 characters
    std::string bootloader, program, country, config; // at most 4 characters each
    Byte capabilities = 0;                            // as in the capability byte
    std::string layout;                               // file name of the keyboard's layout
    std::vector<Entry> directory;                     // areas do not overlap
    std::string json;                                 // the source of all of the above

    // Parses a model. Throws json::FaultError.
    [[nodiscard]] static KeyboardModel FromJson(std::string text);
    // The built-in model with this name, or else the model in the file with this path. Throws
    // ModelError, and files::ProblemError if there is none or it cannot be read.
    [[nodiscard]] static KeyboardModel ByName(const std::string& nameOrPath);
    // The names of the built-in models.
    [[nodiscard]] static std::vector<std::string> Names();

    // The base address of a module; none if the keyboard does not have it.
    [[nodiscard]] std::optional<Long> AddressOf(KeyboardModuleIDs eModule) const;
    [[nodiscard]] bool Has(KeyboardModuleIDs eModule) const {
        return AddressOf(eModule).has_value();
    }
    // Bits of the capability byte.
    [[nodiscard]] bool HasBarcodeReader() const;
    [[nodiscard]] bool HasMagneticTrack(Integer nTrack) const; // 1 to 4
    // The keyboard's identification, in the layout of the image.
    [[nodiscard]] std::string IdentificationBlock() const;
};

} // namespace qx::sim
