#include "setup/LayoutSource.h"

#include "files/Files.h"
#include "host/Error.h"
#include "qxcontrols/keys/QxlTextSource.h"

#include <algorithm>
#include <charconv>
#include <system_error>

namespace qx::setup {

namespace {

constexpr Integer kDefaultLanguage = 1033;

} // namespace

std::filesystem::path ShippedLayouts() {
    return files::ExecutableFolder().parent_path() / "share" / "qxcontrols" / "layouts";
}

std::vector<LayoutEntry> ListLayouts(const std::filesystem::path& folder) {
    std::error_code error;
    std::vector<std::filesystem::path> paths;
    for (const auto& entry :
         std::filesystem::directory_iterator(folder.empty() ? ShippedLayouts() : folder, error))
        if (entry.path().extension() == ".qxl")
            paths.push_back(entry.path());
    std::sort(paths.begin(), paths.end());

    std::vector<LayoutEntry> layouts;
    for (const std::filesystem::path& path : paths) {
        QxlTextSource source;
        if (!source.Open(path.string()))
            continue;
        const std::string id = source.String(LayoutTextSource::kLanguageID);
        Integer language = 0;
        std::from_chars(id.data(), id.data() + id.size(), language);
        const bool isListed =
            std::any_of(layouts.begin(), layouts.end(),
                        [&](const LayoutEntry& layout) { return layout.language == language; });
        if (language != 0 && !isListed)
            layouts.push_back({language, source.String(LayoutTextSource::kNativeName)});
    }
    return layouts;
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
