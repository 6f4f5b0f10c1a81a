// The server's module: its classes by identifier, its type library, the environment of its objects,
// and whether it is still in use.
#pragma once

#include "com/Class.h"
#include "com/Environment.h"
#include "com/windows/Com.h"

#include <span>
#include <string>

namespace qx::com {

// A class of the library with its identifiers in COM's form.
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
[[nodiscard]] const ServedClass* FindServed(REFCLSID clsid); // null if there is none

// "QXControls.QXBarcode".
[[nodiscard]] std::wstring ProgIdOf(const Class& type);

// The OLEMISC_ flags that containers read before they create a control of the class.
[[nodiscard]] DWORD MiscStatusOf(const Class& type);

// The module handle; set when the module is loaded.
void SetModule(HINSTANCE module);
[[nodiscard]] HINSTANCE Module();
[[nodiscard]] std::wstring FileOfModule(HINSTANCE module); // null for the host's program

// The type library in the module's resources.
[[nodiscard]] HRESULT OwnTypeLibrary(ITypeLib** library);
[[nodiscard]] HRESULT OwnTypeInfo(REFGUID guid, ITypeInfo** info);

[[nodiscard]] const Environment& ServerEnvironment();

// Each object of the server, and each lock that a host holds on it, keeps it in use.
class InUse {
public:
    InUse();
    ~InUse();
    InUse(const InUse&) = delete;
    InUse& operator=(const InUse&) = delete;
};
void LockServer(bool fLock);
// Also releases the driver if nothing is in use.
[[nodiscard]] bool CanUnload();

} // namespace qx::com
