// SharedLibrary: a library that is loaded at run time.
#pragma once

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace qx {

// Why a library cannot be used; the text names it.
class LibraryError : public std::runtime_error {
public:
    enum class Kind {
        Refused,        // by the system, which gives a reason
        Missing,        // the file, or a library that it needs
        NotALibrary,    // that this program can load
        LacksFunctions, //
    };
    LibraryError(const std::string& sText, Kind kind, std::string reason,
                 std::vector<std::string> functions = {})
        : std::runtime_error(sText), m_kind(kind), m_reason(std::move(reason)),
          m_functions(std::move(functions)) {}

    [[nodiscard]] Kind Why() const { return m_kind; }
    [[nodiscard]] const std::string& Reason() const { return m_reason; } // the system's text
    [[nodiscard]] const std::vector<std::string>& Functions() const { return m_functions; }

private:
    Kind m_kind;
    std::string m_reason;
    std::vector<std::string> m_functions; // that it lacks
};

class SharedLibrary {
public:
    // Loads the library, which stays loaded during the object's lifetime. `what` describes it in
    // errors: "driver library". Throws LibraryError.
    SharedLibrary(std::string sFilename, std::string what);

    // A function of the library by name, or null. The type must be the function's own.
    template <typename Function>
    [[nodiscard]] Function Find(const char* name) const {
        return reinterpret_cast<Function>(FindAddress(name));
    }
    // The same, but throws LibraryError for a missing function.
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
