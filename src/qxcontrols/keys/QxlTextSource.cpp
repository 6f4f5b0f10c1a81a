#include "qxcontrols/keys/QxlTextSource.h"

#include "qxcontrols/common/Utf.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <optional>
#include <string_view>
#include <vector>

namespace qx {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr Long kPrimaryLanguage = 0x3FF; // the bits of a language id that leave out the country

std::filesystem::path PathFrom(std::string sPath) {
    if constexpr (std::filesystem::path::preferred_separator == '/')
        std::replace(sPath.begin(), sPath.end(), '\\', '/');
    return {std::u8string(sPath.begin(), sPath.end())};
}

std::string NameOf(const std::filesystem::path& path) {
    const std::u8string name = path.u8string();
    return {name.begin(), name.end()};
}

std::optional<Long> NumberFrom(std::string_view digits) {
    Long number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (error != std::errc() || end != digits.data() + digits.size() || number < 0)
        return std::nullopt;
    return number;
}

std::vector<std::filesystem::path> LayoutFilesIn(const std::filesystem::path& folder) {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        if (entry.path().extension() == ".qxl")
            files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

} // namespace

void QxlTextSource::Reset() {
    m_file = {};
    m_error.clear();
}

bool QxlTextSource::Open(const std::string& sFilename) {
    File file;
    file.Read(PathFrom(sFilename));
    return Use(std::move(file));
}

bool QxlTextSource::OpenLanguage(Long& lLangID, const std::string& sFolder) {
    const std::filesystem::path folder = PathFrom(sFolder);
    File sameLanguage;
    std::vector<std::filesystem::path> paths;
    try {
        paths = LayoutFilesIn(folder);
    } catch (const std::filesystem::filesystem_error& error) {
        m_error = NameOf(folder) + ": " + error.code().message();
        return false;
    }
    for (const auto& path : paths) {
        File file;
        if (!file.Read(path) || file.LanguageID() == 0)
            continue;
        const Long language = file.LanguageID();
        if (language == lLangID)
            return Use(std::move(file));
        if (sameLanguage.lines.empty() &&
            (language & kPrimaryLanguage) == (lLangID & kPrimaryLanguage))
            sameLanguage = std::move(file);
    }
    if (sameLanguage.lines.empty()) {
        m_error = NameOf(folder) + ": no layout for language " + std::to_string(lLangID) +
                  " among " + std::to_string(paths.size()) + " layout files";
        return false;
    }
    if (!Use(std::move(sameLanguage)))
        return false;
    lLangID = m_file.LanguageID();
    return true;
}

std::string QxlTextSource::String(Long lNumber) const {
    const auto line = m_file.lines.find(lNumber);
    return line == m_file.lines.end() ? std::string() : line->second.text;
}

std::string QxlTextSource::Place(Long lNumber) const {
    const auto line = m_file.lines.find(lNumber);
    return line == m_file.lines.end()
               ? m_file.name
               : m_file.name + ", line " + std::to_string(line->second.number);
}

bool QxlTextSource::Use(File file) {
    m_error = file.error;
    if (!m_error.empty())
        return false;
    m_file = std::move(file);
    return true;
}

Long QxlTextSource::File::LanguageID() const {
    const auto line = lines.find(kLanguageID);
    return line == lines.end() ? 0 : NumberFrom(line->second.text).value_or(0);
}

// False when the file cannot be read; a line that is wrong is noted only.
bool QxlTextSource::File::Read(const std::filesystem::path& path) {
    name = NameOf(path);
    std::ifstream stream(path, std::ios::binary);
    std::string text;
    for (std::size_t number = 1; std::getline(stream, text); ++number) {
        std::string_view line = text;
        if (number == 1 && line.starts_with(kByteOrderMark))
            line.remove_prefix(kByteOrderMark.size());
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        if (!line.empty() && !line.starts_with('#'))
            ReadLine(number, line);
    }
    const bool isRead = stream.is_open() && !stream.bad();
    if (!isRead)
        error = name + ": the file cannot be read";
    return isRead;
}

void QxlTextSource::File::ReadLine(std::size_t number, std::string_view line) {
    const auto fault = [&](const std::string& what) {
        if (error.empty())
            error = name + ", line " + std::to_string(number) + ": " + what;
    };
    const std::size_t equals = line.find('=');
    const auto id = NumberFrom(line.substr(0, equals));
    if (equals == std::string_view::npos || !id)
        return fault("not NUMBER=TEXT");
    if (!IsWellFormedUtf8(line))
        return fault("not UTF-8");
    const auto [place, isNew] =
        lines.try_emplace(*id, Line{number, std::string(line.substr(equals + 1))});
    if (!isNew)
        fault("string " + std::to_string(*id) + " stands in line " +
              std::to_string(place->second.number) + " already");
}

} // namespace qx
