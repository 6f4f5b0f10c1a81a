#include "files/Files.h"
#include "files/SystemTexts.h"

#include <algorithm>
#include <array>
#include <iostream>
#include <streambuf>
#include <string>

#include <fcntl.h>
#include <io.h>
#include <windows.h>

namespace qx::files {

namespace {

#ifndef ENABLE_VIRTUAL_TERMINAL_PROCESSING
constexpr DWORD ENABLE_VIRTUAL_TERMINAL_PROCESSING = 4;
#endif

bool IsConsole(HANDLE stream) {
    DWORD mode = 0;
    return GetConsoleMode(stream, &mode) != 0;
}

// The number of bytes, from the start, that are complete UTF-8 characters.
std::size_t WholeCharacters(std::string_view text) {
    constexpr std::size_t kLongest = 4;
    for (std::size_t size = 1; size <= std::min(kLongest, text.size()); ++size) {
        const auto byte = static_cast<unsigned char>(text[text.size() - size]);
        const std::size_t needed = byte < 0xC0U ? 1 : byte < 0xE0U ? 2 : byte < 0xF0U ? 3 : 4;
        if (byte < 0x80U || byte >= 0xC0U)
            return needed <= size ? text.size() : text.size() - size;
    }
    return text.size();
}

// Converts UTF-8 text for a console; writes it unchanged to a file or pipe.
class StreamBuffer : public std::streambuf {
public:
    explicit StreamBuffer(DWORD stream)
        : m_stream(GetStdHandle(stream)), m_isConsole(IsConsole(m_stream)) {
        Clear();
    }

protected:
    int overflow(int c) override {
        if (!Empty(false))
            return traits_type::eof();
        if (c != traits_type::eof())
            sputc(traits_type::to_char_type(c));
        return traits_type::not_eof(c);
    }
    int sync() override { return Empty(true) ? 0 : -1; }

private:
    void Clear() { setp(m_buffer.data(), m_buffer.data() + m_buffer.size()); }

    bool Empty(bool isAll) {
        const std::string_view text(pbase(), static_cast<std::size_t>(pptr() - pbase()));
        const std::size_t size = isAll || !m_isConsole ? text.size() : WholeCharacters(text);
        const bool isWritten = m_isConsole ? ToConsole(text.substr(0, size)) : ToFile(text);
        const std::string rest(text.substr(size));
        Clear();
        sputn(rest.data(), static_cast<std::streamsize>(rest.size()));
        return isWritten;
    }
    bool ToFile(std::string_view bytes) const {
        while (!bytes.empty()) {
            DWORD written = 0;
            if (!WriteFile(m_stream, bytes.data(), static_cast<DWORD>(bytes.size()), &written,
                           nullptr) ||
                written == 0)
                return false;
            bytes.remove_prefix(written);
        }
        return true;
    }
    bool ToConsole(std::string_view text) const {
        const std::wstring units = PathOf(text).native();
        std::wstring_view rest = units;
        while (!rest.empty()) {
            DWORD written = 0;
            if (!WriteConsoleW(m_stream, rest.data(), static_cast<DWORD>(rest.size()), &written,
                               nullptr) ||
                written == 0)
                return false;
            rest.remove_prefix(written);
        }
        return true;
    }

    HANDLE m_stream;
    bool m_isConsole;
    std::array<char, 1U << 13U> m_buffer{};
};

// A stream that is never destroyed: it may be written to until the program ends.
void Take(std::ostream& stream, DWORD which) {
    stream.rdbuf(new StreamBuffer(which));
}

} // namespace

void PrepareStandardStreams() {
    Take(std::cout, STD_OUTPUT_HANDLE);
    Take(std::cerr, STD_ERROR_HANDLE);
    (void)_setmode(_fileno(stdin), _O_BINARY);
}

int ErrorColumns() {
    const HANDLE error = GetStdHandle(STD_ERROR_HANDLE);
    CONSOLE_SCREEN_BUFFER_INFO info{};
    if (!IsConsole(error))
        return 0;
    const bool isKnown = GetConsoleScreenBufferInfo(error, &info) != 0;
    return isKnown ? info.srWindow.Right - info.srWindow.Left + 1 : kUsualColumns;
}

bool ErrorShowsColors() {
    const HANDLE error = GetStdHandle(STD_ERROR_HANDLE);
    DWORD mode = 0;
    return GetConsoleMode(error, &mode) != 0 &&
           SetConsoleMode(error, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

} // namespace qx::files
