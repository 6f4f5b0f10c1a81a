#include "setup/CaptionSource.h"

#include "files/Installation.h"
#include "setup/DriverSource.h"

namespace qx::setup {

namespace {

constexpr const char* kFolder = "captions";

} // namespace

host::OptionCaptions CaptionsFor(const host::KeyboardInfo& keyboard,
                                 const std::filesystem::path& data,
                                 std::vector<host::Error>& warnings) {
    std::vector<std::filesystem::path> folders;
    try {
        folders.push_back(RecordFolder(data) / kFolder);
    } catch (const host::Error&) { // a user without a data folder has no captions there
    }
    folders.push_back(files::DataFolder(kFolder));
    return {keyboard, folders, warnings};
}

} // namespace qx::setup
