#include "qxcontrols/keys/QxlTextSource.h"

#include "qxcontrols/common/Utf.h"
#include "qxcontrols/platform/FileAccess.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

namespace qx {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr Long kPrimaryLanguage = 0x3FF;      // the bits of a language id without the country
constexpr std::size_t kMostBytes = 1U << 20U; // a layout has about 5000

std::optional<Long> NumberFrom(std::string_view digits) {
    Long number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (error != std::errc() || end != digits.data() + digits.size() || number < 0)
        return std::nullopt;
    return number;
}

// A tab counts as a space; other control characters would reach screens and terminals unchanged.
bool HasControlCharacter(std::string_view text) {
    const std::u16string units = Utf16FromUtf8(text);
    return std::any_of(units.begin(), units.end(), [](char16_t unit) {
        return (unit < 0x20 && unit != u'\t') || (unit >= 0x7F && unit < 0xA0);
    });
}

struct Content {
    std::string text;
    std::string error; // why it could not be read
};

Content ContentOf(const std::string& sFilename) {
    if (IsSpecialFile(sFilename)) // a pipe might never end
        return {{}, "the file cannot be read: it is not a regular file"};
    auto text = ReadFile(sFilename, kMostBytes + 1);
    if (!text)
        return {{}, "the file cannot be read"};
    if (text->size() > kMostBytes)
        return {{}, "the file is larger than 1 MiB"};
    return {*std::move(text), ""};
}

// Calls visit(line number, line) for each line that is neither empty nor a comment, until visit
// returns false.
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

// String 1 as a number; 0 if there is none.
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
    const std::string name = OwnFileName(sFilename);
    const Content content = ContentOf(name);
    if (!content.error.empty()) {
        m_error = name + ": " + content.error;
        return false;
    }
    return Use(name, content.text);
}

bool QxlTextSource::OpenLanguage(Long& lLangID, const std::string& sFolder) {
    struct Candidate {
        std::string name;
        std::string text;
        Long language;
    };
    const std::string folder = OwnFileName(sFolder);
    std::string failure;
    const std::vector<std::string> names = FilesIn(folder, ".qxl", failure);
    if (!failure.empty()) {
        m_error = folder + ": " + failure;
        return false;
    }
    std::optional<Candidate> chosen;
    for (const std::string& name : names) {
        Content content = ContentOf(name);
        const Long language = content.error.empty() ? LanguageIn(content.text) : 0;
        const bool isSame = language == lLangID;
        if (language == 0 || (language & kPrimaryLanguage) != (lLangID & kPrimaryLanguage) ||
            (chosen && !isSame))
            continue;
        chosen = {name, std::move(content.text), language};
        if (isSame)
            break;
    }
    if (!chosen) {
        m_error = folder + ": no layout for language " + std::to_string(lLangID) + " among " +
                  std::to_string(names.size()) + " layout files";
        return false;
    }
    if (!Use(chosen->name, chosen->text))
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

bool QxlTextSource::Use(const std::string& sFilename, std::string_view text) {
    File file;
    file.name = sFilename;
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
