#include "setup/LayoutSource.h"

#include "files/Files.h"
#include "host/Error.h"

#include <charconv>

namespace qx::setup {

namespace {

constexpr Integer kDefaultLanguage = 1033;

} // namespace

std::filesystem::path ShippedLayouts() {
    return files::ExecutableFolder().parent_path() / "share" / "qxcontrols" / "layouts";
}

void OpenLayout(QXKeyboardLayoutData& layout, const std::filesystem::path& folder,
                const std::string& name) {
    const auto from = folder.empty() ? ShippedLayouts() : folder;
    layout.SetLayoutPath((from / "").string());
    Long language = 0;
    const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), language);
    const bool isLanguage = error == std::errc() && end == name.data() + name.size();
    const bool opened =
        isLanguage ? layout.OpenLayoutByID(language) : layout.OpenLayoutByName(name);
    if (!opened)
        throw host::Error(host::ErrorKind::LayoutInvalid, "the keyboard layout " + name +
                                                              " could not be opened in " +
                                                              from.string());
}

std::string PreferredLayout(Integer nPreferedKeyLang) {
    return std::to_string(nPreferedKeyLang != 0 ? nPreferedKeyLang : kDefaultLanguage);
}

} // namespace qx::setup
