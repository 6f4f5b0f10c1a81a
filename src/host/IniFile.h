// IniFile: the text of an INI file as values, which can be changed without touching the rest.
//
// A line is a group "[Colours]", a value "Programmed=1" of the group before it, a remark that
// begins with ";", or empty. A value has a key: its group and its name with "/" between their
// parts. The escapes in names and values, quotation marks and lists are those of Qt's settings, in
// whose files such values have been kept.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qx::host {

// Compares texts without regard to the case of ASCII letters.
[[nodiscard]] bool IsLessCaseBlind(std::string_view one, std::string_view other);

class IniFile {
public:
    explicit IniFile(std::string_view text = {});

    // Whether some line is none of an INI file; the others are values all the same.
    [[nodiscard]] bool IsDamaged() const { return m_isDamaged; }
    [[nodiscard]] bool HasGroup(std::string_view group) const;
    [[nodiscard]] bool IsBlank() const;

    // The value of the key, or of one that differs from it in the case of letters. A list has ", "
    // between its parts.
    [[nodiscard]] std::optional<std::string> Find(std::string_view key) const;
    // Gives the key a value, in its place where there is one of it.
    void Set(std::string_view key, std::string_view value);

    [[nodiscard]] std::string Text() const;

private:
    struct Line {
        std::string text;  // whole, with its end
        std::string group; // that it is in, or begins
        std::string key;   // empty: no value
        std::size_t valueAt = 0;
    };

    void Add(std::string_view text);
    [[nodiscard]] const Line* LineOf(std::string_view key) const;

    std::vector<Line> m_lines;
    bool m_isDamaged = false;
};

} // namespace qx::host
