#include "host/Variables.h"

#include "qxcontrols/common/Utf.h"
#include "json/Fault.h"

#include <algorithm>

namespace qx::host {

namespace {

using json::FaultKind;

constexpr std::string_view kOpen = "${";
constexpr std::string_view kLiteralOpen = "$${";
constexpr char kClose = '}';

bool IsLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool IsPartOfName(char c) {
    return IsLetter(c) || (c >= '0' && c <= '9') || c == '-' || c == '_';
}

// The beginning of a text, for messages.
std::string Beginning(std::string_view text) {
    constexpr std::size_t kMost = 30;
    std::string_view rest = text;
    SkipCharacters(rest, kMost);
    return std::string(text.substr(0, text.size() - rest.size())) + (rest.empty() ? "" : "...");
}

template <typename Argument>
[[noreturn]] void Refuse(FaultKind kind, const Argument& argument) {
    throw json::FaultError({{"", kind, argument}});
}

std::string ListOf(const std::set<std::string>& names) {
    std::string list;
    for (const std::string& name : names)
        list += (list.empty() ? "" : ", ") + name;
    return list;
}

} // namespace

bool Variables::IsName(std::string_view text) {
    return !text.empty() && IsLetter(text.front()) &&
           std::all_of(text.begin(), text.end(), IsPartOfName);
}

std::string Variables::Escaped(std::string_view text) {
    std::string escaped;
    for (std::size_t i = 0; i < text.size(); ++i)
        escaped.append(text.substr(i).starts_with(kOpen) ? "$" : "").append(1, text[i]);
    return escaped;
}

std::vector<Variables::Piece> Variables::Split(std::string_view text) {
    constexpr std::size_t kMostBytes = 1U << 16U; // far more than fits anywhere
    std::vector<Piece> pieces;
    std::set<std::string> missing;
    std::size_t bytes = 0;
    const auto add = [&](std::string_view own, std::size_t begin, std::size_t end) {
        if (pieces.empty() || pieces.back().isValue)
            pieces.push_back({"", false, begin, begin});
        pieces.back().text += own;
        pieces.back().end = end;
    };
    for (std::size_t i = 0; i < text.size();) {
        const std::string_view rest = text.substr(i);
        if (rest.starts_with(kLiteralOpen)) {
            add(kOpen, i, i + kLiteralOpen.size());
            i += kLiteralOpen.size();
        } else if (!rest.starts_with(kOpen)) {
            add(rest.substr(0, 1), i, i + 1);
            ++i;
        } else {
            const std::size_t end = rest.find(kClose);
            const std::string name(rest.substr(kOpen.size(), end - kOpen.size()));
            if (end == std::string_view::npos || !IsName(name))
                Refuse(FaultKind::NotAPlaceholder, Beginning(rest.substr(0, end)));
            const auto value = m_values.find(name);
            (value == m_values.end() ? missing : m_used).insert(name);
            bytes += value == m_values.end() ? 0 : value->second.size();
            if (bytes > kMostBytes)
                Refuse(FaultKind::ValuesTooLong, kMostBytes);
            pieces.push_back({value == m_values.end() ? "" : value->second, true, i, i + end + 1});
            i += end + 1;
        }
    }
    m_missing.insert(missing.begin(), missing.end());
    if (!missing.empty())
        Refuse(FaultKind::NoValue, ListOf(missing));
    return pieces;
}

std::string Variables::Fill(std::string_view text) {
    std::string filled;
    for (const Piece& piece : Split(text))
        filled += piece.text;
    return filled;
}

std::vector<std::string> Variables::Unused() const {
    std::vector<std::string> unused;
    for (const auto& [name, value] : m_values)
        if (!m_used.contains(name))
            unused.push_back(name);
    return unused;
}

} // namespace qx::host
