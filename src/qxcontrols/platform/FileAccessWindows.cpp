#include "qxcontrols/platform/FileAccess.h"

#include "qxcontrols/common/Utf.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <memory>

namespace qx {

namespace {

struct Closer {
    using pointer = HANDLE;
    void operator()(HANDLE file) const {
        if (file != INVALID_HANDLE_VALUE)
            CloseHandle(file);
    }
};

struct SearchCloser {
    using pointer = HANDLE;
    void operator()(HANDLE search) const {
        if (search != INVALID_HANDLE_VALUE)
            FindClose(search);
    }
};

} // namespace

std::wstring WideText(std::string_view sText) {
    const std::u16string units = Utf16FromUtf8(sText);
    return {units.begin(), units.end()};
}

std::string TextOfWide(std::wstring_view text) {
    return Utf8FromUtf16(std::u16string(text.begin(), text.end()));
}

std::string SystemWords(unsigned long lNumber) {
    std::array<wchar_t, 1024> text{};
    const DWORD size =
        FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, lNumber,
                       0, text.data(), static_cast<DWORD>(text.size()), nullptr);
    const std::wstring_view words(text.data(), size);
    return TextOfWide(words.substr(0, words.find_last_not_of(L" .\r\n") + 1));
}

std::string SystemError(unsigned long lNumber) {
    const std::string words = SystemWords(lNumber);
    return "system error " + std::to_string(lNumber) + (words.empty() ? "" : ": " + words);
}

std::string OwnFileName(std::string sName) {
    return sName;
}

bool IsSpecialFile(const std::string& sName) {
    const DWORD attributes = GetFileAttributesW(WideText(sName).c_str());
    return attributes != INVALID_FILE_ATTRIBUTES &&
           (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_DEVICE)) != 0;
}

std::optional<std::string> ReadFile(const std::string& sName, std::size_t most) {
    const std::unique_ptr<HANDLE, Closer> file(CreateFileW(WideText(sName).c_str(), GENERIC_READ,
                                                           FILE_SHARE_READ | FILE_SHARE_WRITE,
                                                           nullptr, OPEN_EXISTING, 0, nullptr));
    LARGE_INTEGER size{};
    if (file.get() == INVALID_HANDLE_VALUE || GetFileSizeEx(file.get(), &size) == FALSE)
        return std::nullopt;
    std::string bytes(std::min(most, static_cast<std::size_t>(size.QuadPart)), '\0');
    DWORD read = 0;
    if (::ReadFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr) ==
        FALSE)
        return std::nullopt;
    bytes.resize(read);
    return bytes;
}

std::vector<std::string> FilesIn(const std::string& sFolder, std::string_view sExtension,
                                 std::string& error) {
    const bool isOpen = !sFolder.empty() && (sFolder.back() == '\\' || sFolder.back() == '/');
    const std::string prefix = isOpen ? sFolder : sFolder + "\\";
    WIN32_FIND_DATAW found{};
    const std::unique_ptr<HANDLE, SearchCloser> search(
        FindFirstFileW(WideText(prefix + "*").c_str(), &found));
    if (search.get() == INVALID_HANDLE_VALUE) {
        error = SystemError(GetLastError());
        return {};
    }
    std::vector<std::string> files;
    do {
        const std::string name = TextOfWide(found.cFileName);
        if (name.size() > sExtension.size() && name.ends_with(sExtension))
            files.push_back(prefix + name);
    } while (FindNextFileW(search.get(), &found) != FALSE);
    if (GetLastError() != ERROR_NO_MORE_FILES) {
        error = SystemError(GetLastError());
        return {};
    }
    std::sort(files.begin(), files.end());
    return files;
}

} // namespace qx
