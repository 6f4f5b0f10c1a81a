// SharedLibrary: a library that is loaded while the program runs.
#pragma once

#include <memory>
#include <string>

namespace qx {

class SharedLibrary {
public:
    // Loads the library, which stays loaded as long as the object. `what` says in errors what it
    // is: "driver library". Throws std::runtime_error with the file and the system's reason.
    SharedLibrary(std::string sFilename, std::string what);

    // A function of the library by name, or null. The type must be the function's own.
    template <typename Function>
    [[nodiscard]] Function Find(const char* name) const {
        return reinterpret_cast<Function>(FindAddress(name));
    }
    // The same, but throws std::runtime_error that names the file and the function it lacks.
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
