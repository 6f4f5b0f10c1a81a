#include "files/SystemTexts.h"

#include "qxcontrols/platform/FileAccess.h"

#include <windows.h>

// Of the C runtime. It splits the command line as CommandLineToArgvW does, which is part of
// shell32: a console program that loads shell32 is not notified when the user logs off.
extern "C" int __cdecl __wgetmainargs(int* count, wchar_t*** arguments, wchar_t*** environment,
                                      int expandWildcards, int* mode);

namespace qx::files {

std::string TextOf(const std::filesystem::path& path) {
    return TextOfWide(path.native());
}

std::filesystem::path PathOf(std::string_view text) {
    return WideText(text);
}

std::string ReasonOf(const std::error_code& reason) {
    const std::string words = reason.category() == std::system_category()
                                  ? SystemWords(static_cast<unsigned long>(reason.value()))
                                  : std::string();
    return words.empty() ? reason.message() : words;
}

std::string Variable(const char* name) {
    const std::wstring wide = WideText(name);
    std::wstring value(GetEnvironmentVariableW(wide.c_str(), nullptr, 0), L'\0');
    value.resize(
        GetEnvironmentVariableW(wide.c_str(), value.data(), static_cast<DWORD>(value.size())));
    return TextOfWide(value);
}

std::vector<std::string> Arguments(int /*count*/, char** /*arguments*/) {
    int count = 0;
    wchar_t** arguments = nullptr;
    wchar_t** environment = nullptr;
    int mode = 0; // of `new` in that runtime: as it is
    __wgetmainargs(&count, &arguments, &environment, FALSE, &mode);
    std::vector<std::string> texts;
    for (int i = 1; i < count; ++i)
        texts.push_back(TextOfWide(arguments[i]));
    return texts;
}

} // namespace qx::files
