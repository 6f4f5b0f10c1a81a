// Variables: what stands in the place of the placeholders of a document.
//
// A placeholder is ${name}; $${ is the text ${ itself. In a text the value stands as it is. In a
// sequence given as text the placeholder is an item of its own, for the keys that type the value. A
// number or a switch may be given as a text that is one placeholder and nothing else.
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
    // The text with no placeholder in it that is read as this one.
    [[nodiscard]] static std::string Escaped(std::string_view text);

    // A part of a text: one of its own, or a value.
    struct Piece {
        std::string text;
        bool isValue;
        std::size_t begin, end; // where it, or its placeholder, stands
    };
    // Takes a text apart. Throws json::FaultError, without a place, for a malformed placeholder and
    // for variables without a value.
    [[nodiscard]] std::vector<Piece> Split(std::string_view text);
    // The text with the values.
    [[nodiscard]] std::string Fill(std::string_view text);

    // The variables that a text had a placeholder for, with a value and without.
    [[nodiscard]] const std::set<std::string>& Used() const { return m_used; }
    [[nodiscard]] const std::set<std::string>& Missing() const { return m_missing; }
    // Those that no text had a placeholder for.
    [[nodiscard]] std::vector<std::string> Unused() const;

private:
    Values m_values;
    std::set<std::string> m_used;
    std::set<std::string> m_missing;
};

} // namespace qx::host
