// OptionCaptions: the names of a keyboard's options, from captions files (docs/captions.md).
//
// The meaning of an option is neither in the keyboard nor in this program. A vendor or an
// integrator writes a captions file for the keyboards that it applies to.
#pragma once

#include "host/Error.h"
#include "host/Json.h"
#include "host/KeyboardInfo.h"
#include "host/SettingName.h"

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace qx::host {

class OptionCaptions {
public:
    static constexpr std::string_view kFormat = "qx-captions";
    static constexpr int kVersion = 1;
    static constexpr std::size_t kMaxUnits = 60; // UTF-16 units of a name

    // No option has a name.
    OptionCaptions() = default;
    // The names for this keyboard in the files *.json of the folders, in the order of folders and
    // file names; where several name an option, the first one counts. A file that cannot be used is
    // skipped, and the reason is added to `warnings`.
    OptionCaptions(const KeyboardInfo& keyboard, const std::vector<std::filesystem::path>& folders,
                   std::vector<Error>& warnings);

    // The name of the option at this place, as in Setting; empty if it has none. The switch of a
    // symbology always has one.
    [[nodiscard]] OptionCaption Find(const std::string& place) const;

private:
    void Add(const KeyboardInfo& keyboard, const std::filesystem::path& file);

    std::map<std::string, OptionCaption> m_captions; // by place
};

} // namespace qx::host
