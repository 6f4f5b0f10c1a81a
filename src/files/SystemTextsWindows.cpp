#include "files/SystemTexts.h"

#include <windows.h>

// Of the C runtime, which cuts the command line as CommandLineToArgvW does. That one is part of
// shell32, and a console program that loads it is not told when the user logs off.
extern "C" int __cdecl __wgetmainargs(int* count, wchar_t*** arguments, wchar_t*** environment,
                                      int expandWildcards, int* mode);

namespace qx::files {

namespace {

std::string Utf8(std::wstring_view text) {
    const auto length = static_cast<int>(text.size());
    const auto convert = [&](char* to, int size) {
        return WideCharToMultiByte(CP_UTF8, 0, text.data(), length, to, size, nullptr, nullptr);
    };
    std::string utf8(static_cast<std::size_t>(convert(nullptr, 0)), '\0');
    convert(utf8.data(), static_cast<int>(utf8.size()));
    return utf8;
}

std::wstring Utf16(std::string_view text) {
    const auto length = static_cast<int>(text.size());
    const auto convert = [&](wchar_t* to, int size) {
        return MultiByteToWideChar(CP_UTF8, 0, text.data(), length, to, size);
    };
    std::wstring utf16(static_cast<std::size_t>(convert(nullptr, 0)), L'\0');
    convert(utf16.data(), static_cast<int>(utf16.size()));
    return utf16;
}

} // namespace

std::string TextOf(const std::filesystem::path& path) {
    return Utf8(path.native());
}

std::filesystem::path PathOf(std::string_view text) {
    return Utf16(text);
}

std::string ReasonOf(const std::error_code& reason) {
    wchar_t* text = nullptr;
    DWORD size = 0;
    if (reason.category() == std::system_category())
        size = FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM |
                                  FORMAT_MESSAGE_IGNORE_INSERTS,
                              nullptr, static_cast<DWORD>(reason.value()), 0,
                              reinterpret_cast<wchar_t*>(&text), 0, nullptr);
    if (size == 0)
        return reason.message();
    std::wstring_view line(text, size);
    line = line.substr(0, line.find_last_not_of(L" .\r\n") + 1);
    std::string words = Utf8(line);
    LocalFree(text);
    return words;
}

std::string Variable(const char* name) {
    const std::wstring wide = Utf16(name);
    std::wstring value(GetEnvironmentVariableW(wide.c_str(), nullptr, 0), L'\0');
    value.resize(
        GetEnvironmentVariableW(wide.c_str(), value.data(), static_cast<DWORD>(value.size())));
    return Utf8(value);
}

std::vector<std::string> Arguments(int /*count*/, char** /*arguments*/) {
    int count = 0;
    wchar_t** arguments = nullptr;
    wchar_t** environment = nullptr;
    int mode = 0; // of `new` in that runtime: as it is
    __wgetmainargs(&count, &arguments, &environment, FALSE, &mode);
    std::vector<std::string> texts;
    for (int i = 1; i < count; ++i)
        texts.push_back(Utf8(arguments[i]));
    return texts;
}

} // namespace qx::files
