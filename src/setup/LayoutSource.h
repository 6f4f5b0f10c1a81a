// LayoutSource: which keyboard layout a program shows keys with.
#pragma once

#include "qxcontrols/keys/QXKeyboardLayoutData.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace qx::setup {

// The folder of the layouts that come with the program.
[[nodiscard]] std::filesystem::path ShippedLayouts();

struct LayoutEntry {
    Integer language; // its language id
    std::string name; // its own
};

// The layouts of the folder (of the shipped ones when that is empty), one for every language, in
// the order of their file names. Files that cannot be read are passed over.
[[nodiscard]] std::vector<LayoutEntry> ListLayouts(const std::filesystem::path& folder = {});

// The file names of the folder's layouts (of the shipped ones when that is empty), in their order.
[[nodiscard]] std::vector<std::string> LayoutNames(const std::filesystem::path& folder = {});

// Opens a layout of the folder (of the shipped ones when that is empty). `name` is a file name or
// the number of a language. A layout with a fault is refused (see LayoutCheck.h). Throws
// host::Error(LayoutInvalid), which names the file, the line and the fault, and leaves `layout` as
// it was.
void OpenLayout(QXKeyboardLayoutData& layout, const std::filesystem::path& folder,
                const std::string& name);

// The layout's name for a preference: its language where one is preferred, else English of the
// United States.
[[nodiscard]] std::string PreferredLayout(Integer nPreferedKeyLang);

} // namespace qx::setup
