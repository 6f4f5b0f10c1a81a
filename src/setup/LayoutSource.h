// LayoutSource: finds the keyboard layout with which a program shows keys.
#pragma once

#include "qxcontrols/keys/QXKeyboardLayoutData.h"

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace qx::setup {

// The folder of the layouts installed with the program.
[[nodiscard]] std::filesystem::path ShippedLayouts();

struct LayoutEntry {
    Integer language; // language id
    std::string name; // the language's name
};

// The layouts of the folder (if empty: the shipped ones), one for every language, sorted by file
// name. Skips files that cannot be read.
[[nodiscard]] std::vector<LayoutEntry> ListLayouts(const std::filesystem::path& folder = {});

// The file names of the folder's layouts (if empty: of the shipped ones), sorted.
[[nodiscard]] std::vector<std::string> LayoutNames(const std::filesystem::path& folder = {});

// Opens a layout of the folder (if empty: of the shipped ones). `name` is a file name or a language
// id. Refuses a layout with an error (see LayoutCheck.h). Throws host::Error(LayoutInvalid) naming
// the file, the line and the error, and then leaves `layout` unchanged.
void OpenLayout(QXKeyboardLayoutData& layout, const std::filesystem::path& folder,
                const std::string& name);

// The name of the layout to open: the chosen one, or else the keyboard's own (either may be empty),
// or else that of the preferred language, as in the preferences. Without one it is English (United
// States).
[[nodiscard]] std::string LayoutName(const std::string& chosen, const std::string& ofKeyboard,
                                     const std::function<Integer()>& preferredLanguage = {});

} // namespace qx::setup
