#include "qxcontrols/platform/WindowsRegistry.h"

#include "qxcontrols/common/Trace.h"
#include "qxcontrols/platform/FileAccess.h"

#include <bit>
#include <vector>

#include <windows.h>

namespace qx {
namespace {

std::wstring& PathOfThread() {
    static thread_local std::wstring path;
    return path;
}

void Write(std::string_view sName, DWORD type, const void* data, std::size_t size) {
    const LSTATUS status =
        RegSetKeyValueW(HKEY_CURRENT_USER, PathOfThread().c_str(), WideText(sName).c_str(), type,
                        data, static_cast<DWORD>(size));
    if (status != ERROR_SUCCESS)
        Trace("registry value \"" + std::string(sName) +
              "\" cannot be written: " + SystemError(static_cast<unsigned long>(status)));
}

} // namespace

void WindowsRegistry::SetPath(std::string_view sPath) {
    while (sPath.ends_with('\\'))
        sPath.remove_suffix(1);
    PathOfThread() = WideText(sPath);
}

Long WindowsRegistry::ReadNumber(std::string_view sName, Long lDefault) {
    DWORD number = 0;
    DWORD size = sizeof(number);
    const LSTATUS status =
        RegGetValueW(HKEY_CURRENT_USER, PathOfThread().c_str(), WideText(sName).c_str(),
                     RRF_RT_REG_DWORD, nullptr, &number, &size);
    return status == ERROR_SUCCESS ? std::bit_cast<Long>(static_cast<std::uint32_t>(number))
                                   : lDefault;
}

std::string WindowsRegistry::ReadString(std::string_view sName, std::string_view sDefault) {
    const std::wstring name = WideText(sName);
    std::vector<wchar_t> text(256);
    for (;;) {
        auto size = static_cast<DWORD>(text.size() * sizeof(wchar_t));
        const LSTATUS status = RegGetValueW(HKEY_CURRENT_USER, PathOfThread().c_str(), name.c_str(),
                                            RRF_RT_REG_SZ, nullptr, text.data(), &size);
        if (status == ERROR_MORE_DATA) {
            text.resize(2 * text.size()); // the value may grow meanwhile
            continue;
        }
        if (status != ERROR_SUCCESS)
            return std::string(sDefault);
        return TextOfWide({text.data(), size / sizeof(wchar_t) - 1}); // without the end
    }
}

void WindowsRegistry::WriteNumber(std::string_view sName, Long lValue) {
    const auto number = static_cast<DWORD>(lValue);
    Write(sName, REG_DWORD, &number, sizeof(number));
}

void WindowsRegistry::WriteString(std::string_view sName, std::string_view sValue) {
    const std::wstring text = WideText(sValue);
    Write(sName, REG_SZ, text.c_str(), (text.size() + 1) * sizeof(wchar_t));
}

} // namespace qx
