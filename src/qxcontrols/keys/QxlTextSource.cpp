#include "qxcontrols/keys/QxlTextSource.h"

#include "qxcontrols/common/Utf.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

namespace qx {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr Long kPrimaryLanguage = 0x3FF; // the bits of a language id that leave out the country
constexpr std::uintmax_t kMostBytes = 1U << 20U; // a layout has about 5000

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

// A tab is a blank; any other control character would reach screens and terminals as it is.
bool HasControlCharacter(std::string_view text) {
    const std::u16string units = Utf16FromUtf8(text);
    return std::any_of(units.begin(), units.end(), [](char16_t unit) {
        return (unit < 0x20 && unit != u'\t') || (unit >= 0x7F && unit < 0xA0);
    });
}

std::vector<std::filesystem::path> LayoutFilesIn(const std::filesystem::path& folder) {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        if (entry.path().extension() == ".qxl")
            files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

struct Content {
    std::string text;
    std::string error; // why it could not be read
};

Content ContentOf(const std::filesystem::path& path) {
    std::error_code failure;
    const auto status = std::filesystem::status(path, failure);
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status))
        return {{}, "the file cannot be read: it is not a regular file"}; // a pipe never ends
    const auto size = std::filesystem::file_size(path, failure);
    std::ifstream stream(path, std::ios::binary);
    if (failure || !stream)
        return {{}, "the file cannot be read"};
    if (size > kMostBytes)
        return {{}, "the file is larger than 1 MiB"};
    std::string text(static_cast<std::size_t>(size), '\0');
    stream.read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<std::size_t>(stream.gcount()));
    return {std::move(text), stream.bad() ? "the file cannot be read" : ""};
}

// Calls visit(line number, line) for the lines that are neither empty nor comments, until it
// answers false.
template <typename Visit>
void ForEachLine(std::string_view text, Visit visit) {
    if (text.starts_with(kByteOrderMark))
        text.remove_prefix(kByteOrderMark.size());
    for (std::size_t number = 1; !text.empty(); ++number) {
        const std::size_t end = text.find('\n');
        std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(text.size(), line.size() + 1));
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        if (!line.empty() && !line.starts_with('#') && !visit(number, line))
            return;
    }
}

// String 1 as a number; 0 where there is none.
Long LanguageIn(std::string_view text) {
    Long language = 0;
    ForEachLine(text, [&](std::size_t /*number*/, std::string_view line) {
        const std::size_t equals = line.find('=');
        if (equals == std::string_view::npos ||
            NumberFrom(line.substr(0, equals)) != LayoutTextSource::kLanguageID)
            return true;
        language = NumberFrom(line.substr(equals + 1)).value_or(0);
        return false;
    });
    return language;
}

} // namespace

void QxlTextSource::Reset() {
    m_file = {};
    m_error.clear();
}

bool QxlTextSource::Open(const std::string& sFilename) {
    const std::filesystem::path path = PathFrom(sFilename);
    const Content content = ContentOf(path);
    if (!content.error.empty()) {
        m_error = NameOf(path) + ": " + content.error;
        return false;
    }
    return Use(path, content.text);
}

bool QxlTextSource::OpenLanguage(Long& lLangID, const std::string& sFolder) {
    struct Candidate {
        std::filesystem::path path;
        std::string text;
        Long language;
    };
    const std::filesystem::path folder = PathFrom(sFolder);
    std::vector<std::filesystem::path> paths;
    try {
        paths = LayoutFilesIn(folder);
    } catch (const std::filesystem::filesystem_error& error) {
        m_error = NameOf(folder) + ": " + error.code().message();
        return false;
    }
    std::optional<Candidate> chosen;
    for (const auto& path : paths) {
        Content content = ContentOf(path);
        const Long language = content.error.empty() ? LanguageIn(content.text) : 0;
        const bool isSame = language == lLangID;
        if (language == 0 || (language & kPrimaryLanguage) != (lLangID & kPrimaryLanguage) ||
            (chosen && !isSame))
            continue;
        chosen = {path, std::move(content.text), language};
        if (isSame)
            break;
    }
    if (!chosen) {
        m_error = NameOf(folder) + ": no layout for language " + std::to_string(lLangID) +
                  " among " + std::to_string(paths.size()) + " layout files";
        return false;
    }
    if (!Use(chosen->path, chosen->text))
        return false;
    lLangID = chosen->language;
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

bool QxlTextSource::Use(const std::filesystem::path& path, std::string_view text) {
    File file;
    file.name = NameOf(path);
    m_error.clear();
    ForEachLine(text, [&](std::size_t number, std::string_view line) {
        const std::string fault = file.ReadLine(number, line);
        if (!fault.empty())
            m_error = file.name + ", line " + std::to_string(number) + ": " + fault;
        return fault.empty();
    });
    if (!m_error.empty())
        return false;
    m_file = std::move(file);
    return true;
}

std::string QxlTextSource::File::ReadLine(std::size_t number, std::string_view line) {
    const std::size_t equals = line.find('=');
    const auto id = NumberFrom(line.substr(0, equals));
    if (equals == std::string_view::npos || !id)
        return "not NUMBER=TEXT";
    if (!IsWellFormedUtf8(line))
        return "not UTF-8";
    if (HasControlCharacter(line))
        return "a control character";
    if (*id > kLastKey)
        return "a layout has no string " + std::to_string(*id) + "; the last is " +
               std::to_string(kLastKey);
    const auto [place, isNew] =
        lines.try_emplace(*id, Line{number, std::string(line.substr(equals + 1))});
    return isNew ? std::string()
                 : "string " + std::to_string(*id) + " is already in line " +
                       std::to_string(place->second.number);
}

} // namespace qx
