#include "host/Json.h"

#include <algorithm>
#include <set>
#include <vector>

namespace qx::host {

namespace {

constexpr std::size_t kMostDepth = 64;
constexpr std::size_t kMostMembers = 10000;

std::string TextOf(const Json& value) {
    return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

// Follows the parser, and knows where it is.
class StrictWatch {
public:
    void Note(Json::parse_event_t event, const Json& parsed) {
        switch (event) {
        case Json::parse_event_t::object_start:
        case Json::parse_event_t::array_start:
            if (m_open.size() == kMostDepth)
                throw JsonError("", "objects and lists stand in one another more than " +
                                        std::to_string(kMostDepth) + " deep");
            m_open.push_back({event == Json::parse_event_t::object_start, {}, {}, 0});
            break;
        case Json::parse_event_t::object_end:
        case Json::parse_event_t::array_end:
            m_open.pop_back();
            NoteValue();
            break;
        case Json::parse_event_t::key:
            m_open.back().key = parsed.get<std::string>();
            if (!m_open.back().keys.insert(m_open.back().key).second)
                throw JsonError(Place(), "the member " + ShortText(parsed) + " is given twice");
            if (m_open.back().keys.size() > kMostMembers)
                throw JsonError(Place(), "an object has more than " + std::to_string(kMostMembers) +
                                             " members");
            break;
        case Json::parse_event_t::value:
            NoteValue();
            break;
        }
    }

private:
    struct Level {
        bool isObject;
        std::set<std::string> keys;
        std::string key;   // of the member that is being read
        std::size_t index; // of the element that is being read
    };

    void NoteValue() {
        if (!m_open.empty())
            ++m_open.back().index;
    }
    [[nodiscard]] std::string Place() const {
        std::string place;
        for (const Level& level : m_open)
            place = JsonPointer(place, level.isObject ? level.key : std::to_string(level.index));
        return place;
    }

    std::vector<Level> m_open;
};

void Append(std::string& text, const Json& value, std::size_t level) {
    const bool isNested =
        std::any_of(value.begin(), value.end(), [](const Json& v) { return v.is_structured(); });
    if (!value.is_structured() || value.empty()) {
        text += TextOf(value);
        return;
    }
    if (value.is_array() && !isNested) {
        text += '[';
        for (const Json& element : value)
            text.append(&element == &value.front() ? "" : ", ").append(TextOf(element));
        text += ']';
        return;
    }
    const std::string indent(2 * (level + 1), ' ');
    text += value.is_object() ? '{' : '[';
    bool first = true;
    for (const auto& [key, member] : value.items()) {
        text.append(first ? "\n" : ",\n").append(indent);
        if (value.is_object())
            text.append(TextOf(key)).append(": ");
        Append(text, member, level + 1);
        first = false;
    }
    text.append("\n").append(2 * level, ' ').append(value.is_object() ? "}" : "]");
}

} // namespace

Json ParseStrictly(std::string_view text) {
    StrictWatch strict;
    const auto watch = [&](int, Json::parse_event_t event, const Json& parsed) {
        strict.Note(event, parsed);
        return true;
    };
    try {
        return Json::parse(text, watch);
    } catch (const Json::exception& error) { // no JSON, or a number too large for any
        const std::string reason = error.what();
        throw JsonError("", "not valid JSON: " +
                                reason.substr(reason.find("] ") + 2)); // without its own number
    }
}

std::string JsonPointer(const std::string& place, std::string_view key) {
    std::string escaped;
    for (const char c : key)
        escaped += c == '~' ? "~0" : c == '/' ? "~1" : std::string(1, c);
    return place + "/" + escaped;
}

std::string ShortText(const Json& value) {
    constexpr std::size_t kMost = 40;
    std::string text = TextOf(value);
    if (text.size() <= kMost)
        return text;
    std::size_t end = kMost;
    while ((static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U)
        --end; // never within a character
    return text.substr(0, end) + "...";
}

std::string PrettyText(const Json& value) {
    std::string text;
    Append(text, value, 0);
    text += '\n';
    return text;
}

} // namespace qx::host
