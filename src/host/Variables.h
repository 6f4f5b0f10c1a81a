// Variables: the values that replace the placeholders of a document.
//
// A placeholder is ${name}; $${ is a literal ${. In a text the value is inserted literally. In a
// sequence given as text the placeholder is an item by itself: the keys that type the value. A
// number or a switch may be given as a text that is exactly one placeholder.
#pragma once

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace qx::host {

class Variables {
public:
    using Values = std::map<std::string, std::string, std::less<>>;

    Variables() = default;
    explicit Variables(Values values) : m_values(std::move(values)) {}

    // A letter, then letters, digits, hyphens and underscores.
    [[nodiscard]] static bool IsName(std::string_view text);
    // Escapes the text, so that reading it replaces nothing.
    [[nodiscard]] static std::string Escaped(std::string_view text);

    // A part of a text: literal, or a variable's value.
    struct Piece {
        std::string text;
        bool isValue;
        std::size_t begin, end; // position of the part, or of its placeholder
    };
    // Splits a text. Throws json::FaultError, without a place, for a malformed placeholder and for
    // variables without a value.
    [[nodiscard]] std::vector<Piece> Split(std::string_view text);
    // The text with placeholders replaced.
    [[nodiscard]] std::string Fill(std::string_view text);

    // The variables that occurred in texts, with a value and without.
    [[nodiscard]] const std::set<std::string>& Used() const { return m_used; }
    [[nodiscard]] const std::set<std::string>& Missing() const { return m_missing; }
    // The variables that occurred in no text.
    [[nodiscard]] std::vector<std::string> Unused() const;

private:
    Values m_values;
    std::set<std::string> m_used;
    std::set<std::string> m_missing;
};

} // namespace qx::host
