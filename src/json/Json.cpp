#include "json/Json.h"

#include <algorithm>
#include <set>
#include <vector>

namespace qx::json {

namespace {

constexpr std::size_t kMostDepth = 64;
constexpr std::size_t kMostMembers = 10000;

[[noreturn]] void Refuse(const Fault& fault) {
    throw FaultError({fault});
}

std::string TextOf(const Json& value) {
    return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

// Builds the parsed value and keeps track of the place. The parser's own callback would visit all
// elements of a list whenever one of them ends.
class StrictReader : public Json::json_sax_t {
public:
    explicit StrictReader(std::string_view text) : m_text(text) {}

    Json value;

    bool null() override { return Put(nullptr); }
    bool boolean(bool flag) override { return Put(flag); }
    bool number_integer(Json::number_integer_t number) override { return Put(number); }
    bool number_unsigned(Json::number_unsigned_t number) override { return Put(number); }
    bool number_float(Json::number_float_t number, const std::string& /*text*/) override {
        return Put(number);
    }
    bool string(std::string& text) override { return Put(std::move(text)); }
    bool binary(Json::binary_t& bytes) override { return Put(std::move(bytes)); }
    bool start_object(std::size_t /*elements*/) override { return Open(Json::object()); }
    bool start_array(std::size_t /*elements*/) override { return Open(Json::array()); }
    bool end_object() override { return Close(); }
    bool end_array() override { return Close(); }

    bool key(std::string& name) override {
        Level& level = m_open.back();
        level.key = name;
        if (!level.keys.insert(name).second)
            Refuse({Place(), FaultKind::GivenTwice, ShortText(name)});
        if (level.keys.size() > kMostMembers)
            Refuse({Place(), FaultKind::TooManyMembers, kMostMembers});
        return true;
    }

    bool parse_error(std::size_t position, const std::string& token,
                     const Json::exception& error) override {
        constexpr std::size_t kMostShown = 40;
        if (dynamic_cast<const Json::out_of_range*>(&error) != nullptr)
            Refuse({Place(), FaultKind::NumberTooLarge, Shortened(token, kMostShown)});
        if (position > m_text.size())
            Refuse({"", FaultKind::EndsEarly});
        const std::string_view read = m_text.substr(0, position);
        const std::string_view line = read.substr(read.substr(0, position - 1).rfind('\n') + 1);
        const std::string end(line.substr(line.size() - std::min(line.size(), kMostShown / 2)));
        Refuse({"", FaultKind::NotJson, std::count(read.begin(), read.end(), '\n') + 1,
                ShortText(end)});
    }

private:
    struct Level {
        Json* container;
        std::set<std::string> keys;
        std::string key; // of the member that is being read
    };

    // The value's address, valid until its container ends.
    Json& Placed(Json&& read) {
        if (m_open.empty())
            return value = std::move(read);
        Level& level = m_open.back();
        if (level.container->is_array())
            return level.container->emplace_back(std::move(read));
        // Checks that the name is new; the container's own lookup is linear.
        auto& members = level.container->get_ref<Json::object_t&>();
        return static_cast<Json::object_t::Container&>(members)
            .emplace_back(level.key, std::move(read))
            .second;
    }
    bool Put(Json&& read) {
        Placed(std::move(read));
        return true;
    }
    bool Open(Json&& container) {
        if (m_open.size() == kMostDepth)
            Refuse({"", FaultKind::TooDeep, kMostDepth});
        m_open.push_back({&Placed(std::move(container)), {}, {}});
        return true;
    }
    bool Close() {
        m_open.pop_back();
        return true;
    }
    [[nodiscard]] std::string Place() const {
        std::string place;
        for (const Level& level : m_open) // an open container is the last element
            place = JsonPointer(place, level.container->is_object()
                                           ? level.key
                                           : std::to_string(level.container->size() - 1));
        return place;
    }

    std::string_view m_text;
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

// In JSON, at least one of the first two characters is ASCII, and none is 0.
bool IsUtf16(std::string_view text) {
    return text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF") ||
           (text.size() > 1 && (text[0] == '\0') != (text[1] == '\0'));
}

} // namespace

Json ParseStrictly(std::string_view text, std::size_t most) {
    if (text.size() > most)
        Refuse({"", FaultKind::TooManyBytes, most});
    if (IsUtf16(text))
        Refuse({"", FaultKind::IsUtf16});
    StrictReader reader(text);
    (void)Json::sax_parse(text, &reader); // throws the error
    return std::move(reader.value);
}

std::string JsonPointer(const std::string& place, std::string_view key) {
    std::string escaped;
    for (const char c : key)
        escaped += c == '~' ? "~0" : c == '/' ? "~1" : std::string(1, c);
    return place + "/" + escaped;
}

std::string ShortText(const Json& value) {
    constexpr std::size_t kMost = 40;
    return Shortened(TextOf(value), kMost);
}

Json ToJson(const Fault& fault) {
    return {{"place", fault.place},
            {"code", CodeOf(fault.kind)},
            {"arguments", fault.arguments},
            {"message", WordsOf(fault)}};
}

std::string PrettyText(const Json& value) {
    std::string text;
    Append(text, value, 0);
    text += '\n';
    return text;
}

} // namespace qx::json
