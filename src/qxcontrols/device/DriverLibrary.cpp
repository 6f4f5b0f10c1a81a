#include "qxcontrols/device/DriverLibrary.h"

#include <memory>
#include <stdexcept>
#include <string>

#ifdef _WIN32
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace qx {

namespace {

#ifdef _WIN32
void* Open(const std::filesystem::path& path) {
    return LoadLibraryW(path.c_str());
}
std::string Reason() {
    return "system error " + std::to_string(GetLastError());
}
#else
void* Open(const std::filesystem::path& path) {
    // A name without a folder would be looked for in the system's library folders only.
    return dlopen(std::filesystem::absolute(path).c_str(), RTLD_NOW | RTLD_LOCAL);
}
std::string Reason() {
    const char* reason = dlerror();
    return reason != nullptr ? reason : "unknown reason";
}
#endif

} // namespace

struct DriverLibrary::Functions {
#define QX_DRIVER_FUNCTION(name, parameters, arguments, result)                                    \
    std::int32_t(QX_DRIVER_CALL* name) parameters = nullptr;
#include "qxcontrols/device/DriverFunctions.def"
};

void DriverLibrary::Closer::operator()(void* library) const {
#ifdef _WIN32
    FreeLibrary(static_cast<HMODULE>(library));
#else
    dlclose(library);
#endif
}

DriverLibrary::DriverLibrary(const std::filesystem::path& path) : m_library(Open(path)) {
    if (m_library == nullptr)
        throw std::runtime_error("cannot load the driver library " + path.string() + ": " +
                                 Reason());
    m_functions = std::make_unique<Functions>();
#define QX_DRIVER_FUNCTION(name, parameters, arguments, result)                                    \
    m_functions->name = reinterpret_cast<decltype(Functions::name)>(Required(path, #name));
#include "qxcontrols/device/DriverFunctions.def"
}

DriverLibrary::~DriverLibrary() = default;

DriverLibrary::Address DriverLibrary::FindAddress(const char* name) const {
#ifdef _WIN32
    return reinterpret_cast<Address>(GetProcAddress(static_cast<HMODULE>(m_library.get()), name));
#else
    return reinterpret_cast<Address>(dlsym(m_library.get(), name));
#endif
}

DriverLibrary::Address DriverLibrary::Required(const std::filesystem::path& path,
                                               const char* name) const {
    const Address address = FindAddress(name);
    if (address == nullptr)
        throw std::runtime_error("the driver library " + path.string() + " lacks the function " +
                                 name);
    return address;
}

#define QX_DRIVER_FUNCTION(name, parameters, arguments, result)                                    \
    std::int32_t DriverLibrary::name parameters {                                                  \
        return m_functions->name arguments;                                                        \
    }
#include "qxcontrols/device/DriverFunctions.def"

void DriverLibrary::QXSIM_SetMessagePoster(MessagePoster post) {
    using Setter = void(QX_DRIVER_CALL*)(MessagePoster);
    if (const auto set = Find<Setter>("QXSIM_SetMessagePoster"))
        set(post);
}

} // namespace qx
