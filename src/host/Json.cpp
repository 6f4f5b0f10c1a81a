#include "host/Json.h"

#include <algorithm>

namespace qx::host {

namespace {

void Append(std::string& text, const Json& value, std::size_t level) {
    const bool isNested =
        std::any_of(value.begin(), value.end(), [](const Json& v) { return v.is_structured(); });
    if (!value.is_structured() || value.empty()) {
        text += value.dump();
        return;
    }
    if (value.is_array() && !isNested) {
        text += '[';
        for (const Json& element : value)
            text.append(&element == &value.front() ? "" : ", ").append(element.dump());
        text += ']';
        return;
    }
    const std::string indent(2 * (level + 1), ' ');
    text += value.is_object() ? '{' : '[';
    bool first = true;
    for (const auto& [key, member] : value.items()) {
        text.append(first ? "\n" : ",\n").append(indent);
        if (value.is_object())
            text.append(Json(key).dump()).append(": ");
        Append(text, member, level + 1);
        first = false;
    }
    text.append("\n").append(2 * level, ' ').append(value.is_object() ? "}" : "]");
}

} // namespace

std::string PrettyText(const Json& value) {
    std::string text;
    Append(text, value, 0);
    text += '\n';
    return text;
}

} // namespace qx::host
