// CaptionSource: finds the captions files with the names of a keyboard's options.
#pragma once

#include "host/OptionCaptions.h"

#include <filesystem>
#include <vector>

namespace qx::setup {

// The names for this keyboard: those in the folder `captions` of the user's data, then those
// installed with the program. `data` replaces the user's data folder unless it is empty.
[[nodiscard]] host::OptionCaptions CaptionsFor(const host::KeyboardInfo& keyboard,
                                               const std::filesystem::path& data,
                                               std::vector<host::Error>& warnings);

} // namespace qx::setup
