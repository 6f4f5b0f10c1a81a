#include "qxcontrols/platform/AnsiText.h"

#ifdef _WIN32
#include "qxcontrols/common/Utf.h"

#include <windows.h>
#endif

namespace qx {

#ifdef _WIN32

std::string AnsiText(std::string_view sText) {
    const std::u16string units = Utf16FromUtf8(sText);
    const std::wstring wide(units.begin(), units.end());
    const auto length = static_cast<int>(wide.size());
    const int size =
        WideCharToMultiByte(CP_ACP, 0, wide.data(), length, nullptr, 0, nullptr, nullptr);
    std::string text(static_cast<std::size_t>(size), '\0');
    if (size == 0 || WideCharToMultiByte(CP_ACP, 0, wide.data(), length, text.data(), size, nullptr,
                                         nullptr) != size)
        return std::string(sText);
    return text;
}

std::string TextFromAnsi(std::string_view sAnsi) {
    const auto length = static_cast<int>(sAnsi.size());
    const int size = MultiByteToWideChar(CP_ACP, 0, sAnsi.data(), length, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(size), L'\0');
    if (size == 0 ||
        MultiByteToWideChar(CP_ACP, 0, sAnsi.data(), length, wide.data(), size) != size)
        return std::string(sAnsi);
    return Utf8FromUtf16(std::u16string(wide.begin(), wide.end()));
}

#else

std::string AnsiText(std::string_view sText) {
    return std::string(sText);
}

std::string TextFromAnsi(std::string_view sAnsi) {
    return std::string(sAnsi);
}

#endif

AnsiArgument::AnsiArgument(std::string& sText)
    : m_text(sText), m_given(AnsiText(sText)), m_buffer(m_given) {}

AnsiArgument::~AnsiArgument() {
    if (m_buffer != m_given)
        m_text = TextFromAnsi(m_buffer.c_str());
}

} // namespace qx
