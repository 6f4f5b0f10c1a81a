// The 8-bit text that closed libraries use instead of UTF-8.
#pragma once

#include <string>
#include <string_view>

namespace qx {

// The text in the system's 8-bit character set: on Windows its ANSI code page, where a character
// without a place becomes a similar one; elsewhere UTF-8, unchanged. A text that Windows cannot
// convert is unchanged too.
[[nodiscard]] std::string AnsiText(std::string_view sText);
// The inverse.
[[nodiscard]] std::string TextFromAnsi(std::string_view sAnsi);

// A text argument for such a library, which may write to it: the destructor sets the text to the
// library's result, up to the first 0. An unmodified text stays exactly the same.
class AnsiArgument {
public:
    explicit AnsiArgument(std::string& sText);
    ~AnsiArgument();
    AnsiArgument(const AnsiArgument&) = delete;
    AnsiArgument& operator=(const AnsiArgument&) = delete;

    // As many bytes as in the text, followed by a 0.
    [[nodiscard]] char* Buffer() { return m_buffer.data(); }

private:
    std::string& m_text;
    const std::string m_given;
    std::string m_buffer;
};

} // namespace qx
