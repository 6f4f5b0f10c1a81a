// LayoutSource: finds the keyboard layout with which a program shows keys.
#pragma once

#include "qxcontrols/keys/QXKeyboardLayoutData.h"

#include <filesystem>
#include <memory>
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

// The layout's name for a preference: the preferred language's, or else that of English (United
// States).
[[nodiscard]] std::string PreferredLayout(Integer nPreferedKeyLang);

} // namespace qx::setup
