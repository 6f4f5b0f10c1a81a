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
constexpr Long kPrimaryLanguage = 0x3FF; // the bits of a language id without the country
constexpr std::size_t kMostMiB = 1;      // a layout has about 5000 bytes
constexpr std::size_t kMostBytes = kMostMiB << 20U;

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
    std::optional<TextFault> fault; // why it could not be read
};

Content ContentOf(const std::string& sFilename) {
    if (IsSpecialFile(sFilename)) // a pipe might never end
        return {{}, TextFault{TextFaultKind::NotOrdinary}};
    auto text = ReadFile(sFilename, kMostBytes + 1);
    if (!text)
        return {{}, TextFault{TextFaultKind::NotReadable}};
    if (text->size() > kMostBytes)
        return {{}, TextFault{TextFaultKind::LargerThan, {std::to_string(kMostMiB)}}};
    return {*std::move(text), std::nullopt};
}

std::string PlaceIn(const std::string& file, std::size_t line) {
    return line == 0 ? file : file + ", line " + std::to_string(line);
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

std::string WordsOf(const LayoutFault& fault) {
    return PlaceIn(fault.file, fault.line) + ": " + WordsOf(fault.fault);
}

void QxlTextSource::Reset() {
    m_file = {};
    m_fault = {};
}

std::string QxlTextSource::Error() const {
    return m_fault.file.empty() ? std::string() : WordsOf(m_fault);
}

bool QxlTextSource::Refuse(const std::string& sFilename, std::size_t line, TextFault fault) {
    m_fault = {sFilename, line, std::move(fault)};
    return false;
}

bool QxlTextSource::Open(const std::string& sFilename) {
    const std::string name = OwnFileName(sFilename);
    const Content content = ContentOf(name);
    return content.fault ? Refuse(name, 0, *content.fault) : Use(name, content.text);
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
    if (!failure.empty())
        return Refuse(folder, 0, {TextFaultKind::FolderNotRead, {failure}});
    std::optional<Candidate> chosen;
    for (const std::string& name : names) {
        Content content = ContentOf(name);
        const Long language = content.fault ? 0 : LanguageIn(content.text);
        const bool isSame = language == lLangID;
        if (language == 0 || (language & kPrimaryLanguage) != (lLangID & kPrimaryLanguage) ||
            (chosen && !isSame))
            continue;
        chosen = {name, std::move(content.text), language};
        if (isSame)
            break;
    }
    if (!chosen)
        return Refuse(
            folder, 0,
            {TextFaultKind::NoLanguage, {std::to_string(lLangID), std::to_string(names.size())}});
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
    return PlaceIn(m_file.name, LineOf(lNumber));
}

std::size_t QxlTextSource::LineOf(Long lNumber) const {
    const auto line = m_file.lines.find(lNumber);
    return line == m_file.lines.end() ? 0 : line->second.number;
}

bool QxlTextSource::Use(const std::string& sFilename, std::string_view text) {
    File file;
    file.name = sFilename;
    bool isRead = true;
    ForEachLine(text, [&](std::size_t number, std::string_view line) {
        if (auto fault = file.ReadLine(number, line))
            isRead = Refuse(file.name, number, *std::move(fault));
        return isRead;
    });
    if (!isRead)
        return false;
    m_fault = {};
    m_file = std::move(file);
    return true;
}

QxlTextSource::MaybeFault QxlTextSource::File::ReadLine(std::size_t number, std::string_view line) {
    using Kind = TextFaultKind;
    const std::size_t equals = line.find('=');
    const auto id = NumberFrom(line.substr(0, equals));
    if (equals == std::string_view::npos || !id)
        return TextFault{Kind::NotNumberText};
    if (!IsWellFormedUtf8(line))
        return TextFault{Kind::NotUtf8};
    if (HasControlCharacter(line))
        return TextFault{Kind::HasControl};
    if (*id > kLastKey)
        return TextFault{Kind::NoSuchString, {std::to_string(*id), std::to_string(kLastKey)}};
    const auto [place, isNew] =
        lines.try_emplace(*id, Line{number, std::string(line.substr(equals + 1))});
    if (isNew)
        return std::nullopt;
    return TextFault{Kind::StringTwice,
                     {std::to_string(*id), std::to_string(place->second.number)}};
}

} // namespace qx
