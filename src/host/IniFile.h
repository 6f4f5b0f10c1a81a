// IniFile: the text of an INI file as values that can be changed without touching the rest.
//
// A line is a group "[Colours]", a value "Programmed=1" of the preceding group, a comment that
// begins with ";", or empty. A value's key is its group and its name, with "/" between their parts.
// Escapes, quotation marks and lists are those of Qt's settings, whose files have been used for
// such values.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qx::host {

// Compares texts ignoring the case of ASCII letters.
[[nodiscard]] bool IsLessCaseBlind(std::string_view one, std::string_view other);

class IniFile {
public:
    explicit IniFile(std::string_view text = {});

    // Whether any line is not valid in an INI file; the other lines are still values.
    [[nodiscard]] bool IsDamaged() const { return m_isDamaged; }
    [[nodiscard]] bool HasGroup(std::string_view group) const;
    [[nodiscard]] bool IsBlank() const;

    // The value of the key, ignoring the case of letters. The parts of a list are separated by ",
    // ".
    [[nodiscard]] std::optional<std::string> Find(std::string_view key) const;
    // Sets the key's value, in place if the key exists.
    void Set(std::string_view key, std::string_view value);

    [[nodiscard]] std::string Text() const;

private:
    struct Line {
        std::string text;  // including its end
        std::string group; // the group it is in, or begins
        std::string key;   // empty if the line is not a value
        std::size_t valueAt = 0;
    };

    void Add(std::string_view text);
    [[nodiscard]] const Line* LineOf(std::string_view key) const;

    std::vector<Line> m_lines;
    bool m_isDamaged = false;
};

} // namespace qx::host
