#include "qxcontrols/platform/SharedLibrary.h"

#include <utility>

#ifdef _WIN32
#include "qxcontrols/platform/FileAccess.h"

#include <windows.h>
#else
#include <dlfcn.h>

#include <filesystem>
#endif

namespace qx {

namespace {

#ifdef _WIN32
void* Open(const std::string& sFilename) {
    const std::wstring name = WideText(sFilename);
    std::wstring whole(GetFullPathNameW(name.c_str(), 0, nullptr, nullptr), L'\0');
    whole.resize(
        GetFullPathNameW(name.c_str(), static_cast<DWORD>(whole.size()), whole.data(), nullptr));
    // The library's own dependencies are searched beside it, beside the program and in the system's
    // folder; never in the current folder or along PATH, where anyone may have put a file.
    return LoadLibraryExW(whole.c_str(), nullptr,
                          LOAD_LIBRARY_SEARCH_DLL_LOAD_DIR | LOAD_LIBRARY_SEARCH_DEFAULT_DIRS);
}
// Two of the system's messages are misleading: "module not found", and one with an unfilled "%1".
LibraryError Failure(const std::string& text) {
    const DWORD number = GetLastError();
    const std::string error = text + "system error " + std::to_string(number) + ": ";
    switch (number) {
    case ERROR_MOD_NOT_FOUND:
        return {error + "the file, or a library that it needs, is missing",
                LibraryError::Kind::Missing,
                {}};
    case ERROR_BAD_EXE_FORMAT:
        return {error + "the file is not a library that this program can load",
                LibraryError::Kind::NotALibrary,
                {}};
    default:
        return {text + SystemError(number), LibraryError::Kind::Refused, SystemError(number)};
    }
}
#else
void* Open(const std::string& sFilename) {
    // Without a folder, only the system's library folders would be searched.
    return dlopen(std::filesystem::absolute(sFilename).c_str(), RTLD_NOW | RTLD_LOCAL);
}
LibraryError Failure(const std::string& text) {
    const char* const error = dlerror();
    const std::string reason = error != nullptr ? error : "unknown reason";
    return {text + reason, LibraryError::Kind::Refused, reason};
}
#endif

} // namespace

void SharedLibrary::Closer::operator()(void* library) const {
#ifdef _WIN32
    FreeLibrary(static_cast<HMODULE>(library));
#else
    dlclose(library);
#endif
}

SharedLibrary::SharedLibrary(std::string sFilename, std::string what)
    : m_filename(std::move(sFilename)), m_what(std::move(what)), m_library(Open(m_filename)) {
    if (m_library == nullptr)
        throw Failure("cannot load the " + m_what + " " + m_filename + ": ");
}

SharedLibrary::Address SharedLibrary::FindAddress(const char* name) const {
#ifdef _WIN32
    return reinterpret_cast<Address>(GetProcAddress(static_cast<HMODULE>(m_library.get()), name));
#else
    return reinterpret_cast<Address>(dlsym(m_library.get(), name));
#endif
}

SharedLibrary::Address SharedLibrary::RequiredAddress(const char* name) const {
    const Address address = FindAddress(name);
    if (address == nullptr)
        throw LibraryError("the " + m_what + " " + m_filename + " lacks the function " + name,
                           LibraryError::Kind::LacksFunctions, {}, {name});
    return address;
}

} // namespace qx
