// SharedLibrary: a library that is loaded at run time.
#pragma once

#include <memory>
#include <string>

namespace qx {

class SharedLibrary {
public:
    // Loads the library, which stays loaded during the object's lifetime. `what` describes it in
    // errors: "driver library". Throws std::runtime_error with the file and the system's reason.
    SharedLibrary(std::string sFilename, std::string what);

    // A function of the library by name, or null. The type must be the function's own.
    template <typename Function>
    [[nodiscard]] Function Find(const char* name) const {
        return reinterpret_cast<Function>(FindAddress(name));
    }
    // The same, but throws std::runtime_error with the file and the missing function.
    template <typename Function>
    [[nodiscard]] Function Required(const char* name) const {
        return reinterpret_cast<Function>(RequiredAddress(name));
    }

private:
    using Address = void (*)();
    [[nodiscard]] Address FindAddress(const char* name) const;
    [[nodiscard]] Address RequiredAddress(const char* name) const;

    struct Closer {
        void operator()(void* library) const;
    };

    std::string m_filename;
    std::string m_what;
    std::unique_ptr<void, Closer> m_library;
};

} // namespace qx
