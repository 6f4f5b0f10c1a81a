// The 8-bit text that closed libraries take in place of UTF-8.
#pragma once

#include <string>
#include <string_view>

namespace qx {

// The text in the 8-bit character set of the machine: on Windows its ANSI code page, in which a
// character may have no place and becomes another one like it; elsewhere UTF-8 as it is. A text
// that Windows does not convert stays as it is too.
[[nodiscard]] std::string AnsiText(std::string_view sText);
// The way back.
[[nodiscard]] std::string TextFromAnsi(std::string_view sAnsi);

// A text argument of such a library, which may write into it: when the argument ends, the text
// becomes what the library left, up to the first 0. An untouched text stays exactly as it was.
class AnsiArgument {
public:
    explicit AnsiArgument(std::string& sText);
    ~AnsiArgument();
    AnsiArgument(const AnsiArgument&) = delete;
    AnsiArgument& operator=(const AnsiArgument&) = delete;

    // As many bytes as the text has, and a 0 after them.
    [[nodiscard]] char* Buffer() { return m_buffer.data(); }

private:
    std::string& m_text;
    const std::string m_given;
    std::string m_buffer;
};

} // namespace qx
