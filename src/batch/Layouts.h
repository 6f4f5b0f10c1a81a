// Layouts: the keyboard layouts of a batch, each opened once.
#pragma once

#include "qxcontrols/keys/QXKeyboardLayoutData.h"

#include <filesystem>
#include <map>
#include <memory>
#include <string>

namespace qx::batch {

// The names of the layouts that a batch uses.
struct LayoutChoice {
    std::filesystem::path folder;  // empty: the default folder
    std::string chosen;            // for all keyboards; empty: each keyboard's own
    Integer preferredLanguage = 0; // for a keyboard without one, as in the preferences
};

class Layouts {
public:
    explicit Layouts(LayoutChoice choice) : m_choice(std::move(choice)) {}

    [[nodiscard]] const LayoutChoice& Choice() const { return m_choice; }
    // The layout for a keyboard with this layout name, or without one (empty). It lives as long as
    // this object. Throws host::Error.
    [[nodiscard]] QXKeyboardLayoutData& For(const std::string& ofKeyboard);

private:
    LayoutChoice m_choice;
    std::map<std::string, std::unique_ptr<QXKeyboardLayoutData>> m_layouts;
};

} // namespace qx::batch
