#include "setup/LayoutSource.h"

#include "files/Installation.h"
#include "files/SystemTexts.h"
#include "host/Error.h"
#include "qxcontrols/keys/LayoutCheck.h"
#include "qxcontrols/keys/QxlTextSource.h"

#include <algorithm>
#include <charconv>
#include <system_error>

namespace qx::setup {

namespace {

constexpr Integer kDefaultLanguage = 1033;

// The folder's layouts, sorted by name; none if the folder cannot be listed.
std::vector<std::filesystem::path> LayoutFiles(const std::filesystem::path& folder) {
    std::error_code ignored;
    std::vector<std::filesystem::path> paths;
    for (const auto& entry : std::filesystem::directory_iterator(folder, ignored))
        if (entry.path().extension() == ".qxl")
            paths.push_back(entry.path());
    std::sort(paths.begin(), paths.end());
    return paths;
}

} // namespace

std::filesystem::path ShippedLayouts() {
    return files::DataFolder("layouts");
}

std::vector<LayoutEntry> ListLayouts(const std::filesystem::path& folder) {
    std::vector<LayoutEntry> layouts;
    for (const std::filesystem::path& path :
         LayoutFiles(folder.empty() ? ShippedLayouts() : folder)) {
        QxlTextSource source;
        if (!source.Open(files::TextOf(path)))
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

std::vector<std::string> LayoutNames(const std::filesystem::path& folder) {
    std::vector<std::string> names;
    for (const auto& path : LayoutFiles(folder.empty() ? ShippedLayouts() : folder))
        names.push_back(files::TextOf(path.filename()));
    return names;
}

void OpenLayout(QXKeyboardLayoutData& layout, const std::filesystem::path& folder,
                const std::string& name) {
    const auto from = folder.empty() ? ShippedLayouts() : folder;
    const auto refuse = [](const LayoutFault& fault) {
        throw host::Error(
            host::Cause::LayoutUnusable,
            {.index = static_cast<Long>(fault.line),
             .place = {.file = fault.file},
             .faults = {json::FaultOfText(json::FaultKind::LayoutText, fault.fault)}});
    };
    Long language = 0;
    const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), language);
    const bool isLanguage = error == std::errc() && end == name.data() + name.size();
    std::error_code ignored;
    if (!isLanguage && !std::filesystem::exists(from / files::PathOf(name), ignored))
        throw host::Error(
            host::Cause::NoSuchLayout,
            {.name = name, .names = LayoutNames(from), .place = {.file = files::TextOf(from)}});
    QxlTextSource source;
    const bool isRead = isLanguage ? source.OpenLanguage(language, files::TextOf(from / ""))
                                   : source.Open(files::TextOf(from / files::PathOf(name)));
    if (!isRead)
        refuse(source.Fault());
    if (const auto fault = FaultIn(source))
        refuse(*fault);
    const auto file = files::PathOf(source.FileName());
    layout.SetLayoutPath(files::TextOf(file.parent_path() / ""));
    if (!layout.OpenLayoutByName(files::TextOf(file.filename())))
        refuse({source.FileName(), 0, {TextFaultKind::NotReadable}}); // any more
}

std::string LayoutName(const std::string& chosen, const std::string& ofKeyboard,
                       const std::function<Integer()>& preferredLanguage) {
    if (!chosen.empty())
        return chosen;
    if (!ofKeyboard.empty())
        return ofKeyboard;
    const Integer language = preferredLanguage ? preferredLanguage() : Integer{0};
    return std::to_string(language != 0 ? language : kDefaultLanguage);
}

} // namespace qx::setup
