#include "qxcontrols/keys/SequenceText.h"

#include "qxcontrols/common/Text.h"
#include "qxcontrols/common/Utf.h"
#include "qxcontrols/keys/KeyNames.h"
#include "qxcontrols/keys/KeySequence.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>

namespace qx {

namespace {

constexpr std::string_view kBlanks = " \t\r\n";
constexpr char kQuote = '"'; // doubled inside quotes
constexpr char kChord = '+';
constexpr Long kMaxCode = 255;

std::string Quoted(std::string_view text) {
    std::string quoted(1, kQuote);
    for (const char character : text)
        quoted.append(character == kQuote ? 2 : 1, character);
    return quoted + kQuote;
}

std::string Braced(Long code) {
    return "{" + std::to_string(code) + "}";
}

class Reader {
    using Kind = TextFaultKind;

public:
    Reader(std::string_view text, const QXKeyboardLayoutData& layout, const KeyNames& names)
        : m_text(text), m_layout(layout), m_names(names), m_prefix(layout.UpCodePrefix()) {}

    std::vector<Byte> ReadAll() {
        for (SkipBlanks(); m_place < m_text.size(); SkipBlanks())
            ReadToken();
        return std::move(m_codes);
    }

private:
    // A key's name in the text, and the place after it.
    struct Operand {
        std::string name;
        std::vector<Long> keys; // that it could refer to
        std::size_t end;
    };

    void SkipBlanks() {
        m_place = std::min(m_text.find_first_not_of(kBlanks, m_place), m_text.size());
    }
    [[nodiscard]] std::size_t WordEnd(std::size_t place) const {
        return std::min(m_text.find_first_of(kBlanks, place), m_text.size());
    }
    [[nodiscard]] bool IsTokenEnd(std::size_t place) const { return WordEnd(place) == place; }

    void ReadToken() {
        if (ReadCode() || ReadWords(m_place, 0))
            return;
        const Operand first = OperandAt(m_place, true);
        if (!first.keys.empty() && IsTokenEnd(first.end))
            return Add(Press(first, m_place), first.end);
        const bool mayBeRelease = !m_prefix.empty() && m_text.substr(m_place).starts_with(m_prefix);
        const std::size_t released = m_place + m_prefix.size();
        if (mayBeRelease && !IsTokenEnd(released)) {
            if (ReadWords(released, kRelease))
                return;
            const Operand operand = OperandAt(released, false);
            const bool isChord = !first.keys.empty() && m_text[first.end] == kChord;
            if ((!operand.keys.empty() && IsTokenEnd(operand.end)) || !isChord)
                return Add(Press(operand, released) + kRelease, End(operand));
        }
        ReadChord(first);
    }

    // {30}: a code by number.
    bool ReadCode() {
        const auto [code, end] = NumberAt(m_place);
        if (!code || !IsTokenEnd(end))
            return false;
        Add(*code, end);
        return true;
    }

    // Several unquoted words that form one key's name.
    bool ReadWords(std::size_t place, Long added) {
        if (place >= m_text.size() || m_text[place] == kQuote || m_text[place] == '{')
            return false;
        const std::string_view name = m_names.FindWords(m_text.substr(place));
        if (name.empty())
            return false;
        const std::size_t end = place + name.size();
        Add(Press({std::string(name), m_names.Find(name), end}, place) + added, end);
        return true;
    }

    // Ctrl+Alt+Del: presses the keys in order and releases them in reverse order.
    void ReadChord(const Operand& first) {
        std::vector<Long> keys = {Press(first, m_place)};
        std::size_t end = first.end;
        while (!IsTokenEnd(end)) {
            const std::size_t place = end + 1;
            if (m_text[end] != kChord)
                Fail(end, Kind::SpaceOrPlusMissing, {first.name});
            if (IsTokenEnd(place))
                Fail(end, Kind::KeyAfterPlus);
            const Operand next = OperandAt(place, true);
            keys.push_back(Press(next, place));
            end = next.end;
        }
        for (const Long key : keys)
            Add(key, end);
        std::reverse(keys.begin(), keys.end());
        for (const Long key : keys)
            Add(key + kRelease, end);
    }

    [[nodiscard]] Operand OperandAt(std::size_t place, bool inChord) const {
        if (const auto [code, end] = NumberAt(place); code)
            return {Braced(*code), {*code}, end};
        const std::string_view word = m_text.substr(place, WordEnd(place) - place);
        if (auto keys = KeysCalled(word); !keys.empty())
            return {std::string(word), std::move(keys), place + word.size()};
        if (auto quoted = QuotedAt(place))
            return *quoted;
        std::size_t nameEnd = word.size();
        for (std::size_t i = word.find(kChord, 1); inChord && i != std::string_view::npos;
             i = word.find(kChord, i + 1)) {
            if (auto keys = KeysCalled(word.substr(0, i)); !keys.empty())
                return {std::string(word.substr(0, i)), std::move(keys), place + i};
            nameEnd = std::min(nameEnd, i);
        }
        return {std::string(word.substr(0, nameEnd)), {}, place + nameEnd};
    }

    // Finds keys by name, or by the character they type with Shift; but not for characters of the
    // grammar, which are more likely there by mistake.
    [[nodiscard]] std::vector<Long> KeysCalled(std::string_view word) const {
        auto keys = m_names.Find(word);
        const bool isSign = word == m_prefix || word == "\"" || word == "{" || word == "}";
        return keys.empty() && !isSign ? m_names.FindShifted(word) : keys;
    }

    [[nodiscard]] std::optional<Operand> QuotedAt(std::size_t place) const {
        if (m_text[place] != kQuote)
            return std::nullopt;
        std::string name;
        for (std::size_t i = place + 1; i < m_text.size(); ++i) {
            if (m_text[i] == kQuote && (++i == m_text.size() || m_text[i] != kQuote))
                return Operand{name, m_names.Find(name), i};
            name += m_text[i];
        }
        return std::nullopt;
    }

    struct Number {
        std::optional<Long> code;
        std::size_t end;
    };
    // The number in braces at a place, if there is one, and the place after it.
    [[nodiscard]] Number NumberAt(std::size_t place) const {
        if (m_text[place] != '{')
            return {std::nullopt, place};
        const std::size_t close = m_text.find_first_not_of("0123456789", place + 1);
        if (close == place + 1 || close == std::string_view::npos || m_text[close] != '}')
            return {std::nullopt, place};
        Long code = 0;
        const auto result = std::from_chars(m_text.data() + place + 1, m_text.data() + close, code);
        if (result.ec != std::errc() || code > kMaxCode)
            Fail(place, Kind::NotACode, {std::string(m_text.substr(place, close + 1 - place))});
        return {code, close + 1};
    }

    // The only key that an operand can mean, if it can be pressed.
    [[nodiscard]] Long Press(const Operand& operand, std::size_t place) const {
        constexpr std::size_t kShown = 60; // bytes of a name in an error message
        if (operand.keys.empty() && m_text[place] == kQuote && !QuotedAt(place))
            Fail(place, Kind::QuoteNotClosed);
        if (operand.keys.empty()) {
            const auto nearest = m_names.Nearest(operand.name);
            const std::string name = Quoted(operand.name.substr(0, kShown));
            if (nearest.empty())
                Fail(place, Kind::NoKeyCalled, {name});
            Fail(place, Kind::NoKeyCalledBut, {name, Listed(nearest)});
        }
        if (operand.keys.size() > 1)
            Fail(place, Kind::SeveralKeys, {Quoted(operand.name), Listed(operand.keys)});
        const Long key = operand.keys.front();
        if (key > m_layout.GetMaxKeyID())
            Fail(place, Kind::NoKeyOfNumber, {std::to_string(key)});
        if (key >= KeyNames::kFirstUnpressable)
            Fail(place, Kind::KeyNotPressable, {operand.name, std::to_string(key)});
        return key;
    }

    [[nodiscard]] std::string Listed(const std::vector<Long>& keys) const {
        std::vector<std::string> list;
        for (const Long key : keys)
            list.push_back(Braced(key) + " " + Quoted(m_names.Name(key)) + " (" +
                           m_layout.KeyLongCaption(key) + ")");
        return Joined(list);
    }

    [[noreturn]] void Fail(std::size_t place, TextFaultKind kind,
                           const std::vector<std::string>& about = {}) const {
        const auto before = m_text.substr(0, place);
        const auto characters = std::count_if(before.begin(), before.end(), [](char byte) {
            return (static_cast<Byte>(byte) & 0xC0U) != 0x80U; // the start of a character
        });
        TextFault fault{kind, {std::to_string(characters + 1)}};
        for (const std::string& each : about)
            fault.arguments.push_back(Utf8FromUtf16(Utf16FromUtf8(each))); // well-formed
        throw SequenceTextError(place, std::move(fault));
    }

    void Add(Long code, std::size_t end) {
        m_codes.push_back(static_cast<Byte>(code));
        m_place = end;
    }

    // The place after an operand, which must be followed by a space.
    [[nodiscard]] std::size_t End(const Operand& operand) const {
        if (!IsTokenEnd(operand.end))
            Fail(operand.end, Kind::SpaceMissing, {operand.name});
        return operand.end;
    }

    std::string_view m_text;
    const QXKeyboardLayoutData& m_layout;
    const KeyNames& m_names;
    std::string_view m_prefix;
    std::size_t m_place = 0;
    std::vector<Byte> m_codes;
};

// Whether the token means exactly this code, whatever follows it.
bool IsClear(const std::string& token, Byte code, const QXKeyboardLayoutData& layout,
             const KeyNames& names) {
    try {
        return !names.BeginsWords(token) &&
               Reader(token, layout, names).ReadAll() == std::vector<Byte>{code};
    } catch (const SequenceTextError&) {
        return false;
    }
}

// The shortest way to write a code: the name, the name in quotes, the number.
std::string TokenFor(Byte code, const QXKeyboardLayoutData& layout, const KeyNames& names) {
    const bool isRelease = code >= kRelease;
    const std::string& name = names.Name(isRelease ? code - kRelease : code);
    const std::string prefix = isRelease ? layout.UpCodePrefix() : std::string();
    const bool needsQuotes = name.find_first_of(kBlanks) != std::string::npos;
    if (!name.empty() && !needsQuotes && !names.BeginsWords(name) &&
        IsClear(prefix + name, code, layout, names))
        return prefix + name;
    if (!name.empty() && IsClear(prefix + Quoted(name), code, layout, names))
        return prefix + Quoted(name);
    return Braced(code);
}

} // namespace

std::vector<Byte> ParseSequenceText(std::string_view sText, const QXKeyboardLayoutData& layout) {
    const KeyNames names(layout);
    return Reader(sText, layout, names).ReadAll();
}

std::string SequenceToText(std::span<const Byte> codes, const QXKeyboardLayoutData& layout) {
    return SequenceWriter(layout).Text(codes);
}

SequenceWriter::SequenceWriter(const QXKeyboardLayoutData& layout)
    : m_layout(layout), m_names(std::make_unique<KeyNames>(layout)) {}

SequenceWriter::~SequenceWriter() = default;

std::string SequenceWriter::Text(std::span<const Byte> codes) {
    std::string text;
    for (const Byte code : codes) {
        std::string& token = m_tokens[code];
        if (token.empty())
            token = TokenFor(code, m_layout, *m_names);
        if (!text.empty())
            text += ' ';
        text += token;
    }
    return text;
}

} // namespace qx
