#include "host/IniFile.h"

#include <algorithm>
#include <cctype>

namespace qx::host {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view kBlanks = " \t\r\n";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kHexDigits = "0123456789ABCDEF";
constexpr std::string_view kNamelessGroup = "General"; // of values that have none

constexpr struct {
    char letter;
    char meaning;
} kEscapes[] = {{'a', '\a'}, {'b', '\b'}, {'f', '\f'}, {'n', '\n'},  {'r', '\r'},
                {'t', '\t'}, {'v', '\v'}, {'"', '"'},  {'\\', '\\'}, {'0', '\0'}};

char Folded(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool IsSameCaseBlind(std::string_view one, std::string_view other) {
    return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                      [](char a, char b) { return Folded(a) == Folded(b); });
}

std::string_view Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(kBlanks);
    return first == text.npos ? ""sv
                              : text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

// The number in the hexadecimal digits that the text begins with, which are taken off it.
char TakeHex(std::string_view& text, std::size_t most) {
    unsigned number = 0;
    for (; most > 0 && !text.empty(); --most) {
        const auto digit = kHexDigits.find(
            static_cast<char>(std::toupper(static_cast<unsigned char>(text.front()))));
        if (digit == kHexDigits.npos)
            break;
        number = 16 * number + static_cast<unsigned>(digit);
        text.remove_prefix(1);
    }
    return static_cast<char>(number);
}

void AppendHex(std::string& text, char c) {
    const auto byte = static_cast<unsigned char>(c);
    text += {kHexDigits[byte / 16U], kHexDigits[byte % 16U]};
}

// Names have "\" between their parts, and bytes by their number.
std::string NameFrom(std::string_view escaped) {
    std::string name;
    while (!escaped.empty()) {
        const char c = escaped.front();
        escaped.remove_prefix(1);
        name += c == '\\' ? '/' : c == '%' ? TakeHex(escaped, 2) : c;
    }
    return name;
}

std::string EscapedName(std::string_view name) {
    std::string escaped;
    for (const char c : name) {
        const bool isPlain =
            std::isalnum(static_cast<unsigned char>(c)) != 0 || "_-."sv.find(c) != ""sv.npos;
        if (isPlain || c == '/') {
            escaped += c == '/' ? '\\' : c;
        } else {
            escaped += '%';
            AppendHex(escaped, c);
        }
    }
    return escaped;
}

// The character behind a backslash, which is taken off the text.
std::string TakeEscape(std::string_view& text) {
    const char c = text.front();
    text.remove_prefix(1);
    if (c == 'x')
        return {TakeHex(text, 2)};
    if (c == '\r' || c == '\n') { // the value goes on in the next line
        if (c == '\r' && text.starts_with('\n'))
            text.remove_prefix(1);
        return {};
    }
    const auto* const found = std::find_if(std::begin(kEscapes), std::end(kEscapes),
                                           [&](const auto& each) { return each.letter == c; });
    return {found == std::end(kEscapes) ? c : found->meaning};
}

std::string ValueFrom(std::string_view written) {
    std::string value;
    std::size_t end = 0; // of the value, before the blanks outside of quotation marks
    bool isQuoted = false;
    for (written = Trimmed(written); !written.empty();) {
        const char c = written.front();
        written.remove_prefix(1);
        if (c == '"') {
            isQuoted = !isQuoted;
        } else if (c == '\\' && !written.empty()) {
            value += TakeEscape(written);
        } else if (c == ',' && !isQuoted) { // a list
            value += ", ";
            written = written.substr(std::min(written.find_first_not_of(kBlanks), written.size()));
        } else {
            value += c;
        }
        if (isQuoted || kBlanks.find(c) == kBlanks.npos)
            end = value.size();
    }
    value.resize(end);
    return value;
}

std::string WrittenValue(std::string_view value) {
    std::string written;
    for (const char c : value) {
        const auto* const escape =
            std::find_if(std::begin(kEscapes), std::end(kEscapes),
                         [&](const auto& each) { return each.meaning == c; });
        if (escape != std::end(kEscapes)) {
            written += {'\\', escape->letter};
        } else if (static_cast<unsigned char>(c) < ' ') {
            written += "\\x";
            AppendHex(written, c);
        } else {
            written += c;
        }
    }
    const bool hasBlankEnd = value.starts_with(' ') || value.ends_with(' ');
    if (hasBlankEnd || value.find_first_of(";,=") != value.npos)
        return '"' + written + '"';
    return written;
}

// Where the line ends that begins the text: behind its line feed, and behind those of the lines in
// which it goes on.
std::size_t EndOfLine(std::string_view text) {
    for (std::size_t at = 0;;) {
        const std::size_t feed = text.find('\n', at);
        if (feed == text.npos)
            return text.size();
        at = feed + 1;
        const std::string_view content = Trimmed(text.substr(0, feed));
        if (!content.ends_with('\\') || content.starts_with(';'))
            return at;
    }
}

} // namespace

bool IsLessCaseBlind(std::string_view one, std::string_view other) {
    return std::lexicographical_compare(one.begin(), one.end(), other.begin(), other.end(),
                                        [](char a, char b) { return Folded(a) < Folded(b); });
}

IniFile::IniFile(std::string_view text) {
    m_isDamaged = std::any_of(text.begin(), text.end(), [](char c) {
        return static_cast<unsigned char>(c) < ' ' && kBlanks.find(c) == kBlanks.npos;
    });
    while (!text.empty()) {
        const std::size_t size = EndOfLine(text);
        Add(text.substr(0, size));
        text.remove_prefix(size);
    }
}

void IniFile::Add(std::string_view text) {
    Line line{std::string(text), m_lines.empty() ? "" : m_lines.back().group, "", 0};
    std::string_view content = text;
    if (m_lines.empty() && content.starts_with(kByteOrderMark))
        content.remove_prefix(kByteOrderMark.size());
    content = Trimmed(content);
    if (content.starts_with('[') && content.find(']') != content.npos) {
        line.group = NameFrom(Trimmed(content.substr(1, content.find(']') - 1)));
    } else if (const std::size_t equals = content.find('=');
               equals != content.npos && !content.starts_with(';') && !content.starts_with('[')) {
        const bool hasGroup = !line.group.empty() && !IsSameCaseBlind(line.group, kNamelessGroup);
        line.key =
            (hasGroup ? line.group + "/" : "") + NameFrom(Trimmed(content.substr(0, equals)));
        line.valueAt = text.find('=') + 1;
    } else if (!content.empty() && !content.starts_with(';')) {
        m_isDamaged = true;
    }
    m_lines.push_back(std::move(line));
}

bool IniFile::HasGroup(std::string_view group) const {
    return std::any_of(m_lines.begin(), m_lines.end(),
                       [&](const Line& line) { return IsSameCaseBlind(line.group, group); });
}

bool IniFile::IsBlank() const {
    return std::all_of(m_lines.begin(), m_lines.end(),
                       [](const Line& line) { return Trimmed(line.text).empty(); });
}

const IniFile::Line* IniFile::LineOf(std::string_view key) const {
    const Line* found = nullptr;
    for (const Line& line : m_lines)
        if (IsSameCaseBlind(line.key, key) &&
            !(found != nullptr && found->key == key && line.key != key))
            found = &line; // the last one holds
    return found;
}

std::optional<std::string> IniFile::Find(std::string_view key) const {
    const Line* const line = LineOf(key);
    if (line == nullptr)
        return std::nullopt;
    return ValueFrom(std::string_view(line->text).substr(line->valueAt));
}

void IniFile::Set(std::string_view key, std::string_view value) {
    const bool hasReturns = !m_lines.empty() && m_lines.front().text.ends_with("\r\n");
    const std::string end = hasReturns ? "\r\n" : "\n";
    const std::string written = WrittenValue(value) + end;
    if (const Line* const found = LineOf(key)) {
        Line& line = m_lines[static_cast<std::size_t>(found - m_lines.data())];
        line.text = line.text.substr(0, line.valueAt) + written;
        return;
    }
    const std::size_t slash = key.find('/');
    const std::string_view group = slash == key.npos ? kNamelessGroup : key.substr(0, slash);
    if (!m_lines.empty() && !m_lines.back().text.ends_with('\n'))
        m_lines.back().text += end;
    if (!HasGroup(group)) {
        if (!m_lines.empty())
            Add(end);
        Add("[" + EscapedName(group) + "]" + end);
    }
    // Behind the group's last line that is not empty.
    auto place = std::find_if(m_lines.rbegin(), m_lines.rend(), [&](const Line& line) {
        return IsSameCaseBlind(line.group, group) && !Trimmed(line.text).empty();
    });
    const std::string name = EscapedName(slash == key.npos ? key : key.substr(slash + 1)) + "=";
    m_lines.insert(place.base(), {name + written, place->group, std::string(key), name.size()});
}

std::string IniFile::Text() const {
    std::string text;
    for (const Line& line : m_lines)
        text += line.text;
    return text;
}

} // namespace qx::host
