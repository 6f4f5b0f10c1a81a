// The server's module: its classes by their identifiers, its type library, what its objects are
// made with, and whether it is still in use.
#pragma once

#include "com/Class.h"
#include "com/Environment.h"
#include "com/windows/Com.h"

#include <span>
#include <string>

namespace qx::com {

// A class of the library with its identifiers as COM takes them.
struct ServedClass {
    const Class& type;
    CLSID clsid;
    IID iid;
    IID eventsIid;
};

// "{01234567-89AB-CDEF-0123-456789ABCDEF}".
[[nodiscard]] GUID GuidOf(std::string_view text);

[[nodiscard]] std::span<const ServedClass> ServedClasses();
[[nodiscard]] const ServedClass& ServedOf(const Class& type);
[[nodiscard]] const ServedClass* FindServed(REFCLSID clsid); // null when there is none

// "QXControls.QXBarcode".
[[nodiscard]] std::wstring ProgIdOf(const Class& type);

// What containers are to know of the class's controls beforehand: OLEMISC_ flags.
[[nodiscard]] DWORD MiscStatusOf(const Class& type);

// The module itself; set when it is loaded.
void SetModule(HINSTANCE module);
[[nodiscard]] HINSTANCE Module();
[[nodiscard]] std::wstring FileOfModule(HINSTANCE module); // null is the host's program

// The type library that the module carries.
[[nodiscard]] HRESULT OwnTypeLibrary(ITypeLib** library);
[[nodiscard]] HRESULT OwnTypeInfo(REFGUID guid, ITypeInfo** info);

[[nodiscard]] const Environment& ServerEnvironment();

// Each object of the server, and each lock that a host puts on it, keeps it in use.
class InUse {
public:
    InUse();
    ~InUse();
    InUse(const InUse&) = delete;
    InUse& operator=(const InUse&) = delete;
};
void LockServer(bool fLock);
// Lets the driver go too when nothing is in use.
[[nodiscard]] bool CanUnload();

} // namespace qx::com
