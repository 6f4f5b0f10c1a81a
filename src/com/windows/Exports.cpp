// The functions that COM and regsvr32 call.
#include "com/windows/ClassFactory.h"
#include "com/windows/Control.h"
#include "com/windows/Registration.h"
#include "com/windows/Server.h"

#include <string_view>

// Their names and attributes are fixed by the system's headers; QXControls.def exports them.

BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID) {
    if (reason == DLL_PROCESS_ATTACH)
        qx::com::SetModule(module);
    else if (reason == DLL_PROCESS_DETACH)
        qx::com::UnregisterControlWindows();
    return TRUE;
}

STDAPI DllGetClassObject(REFCLSID clsid, REFIID iid, LPVOID* out) {
    if (out == nullptr)
        return E_POINTER;
    *out = nullptr;
    return qx::com::Guarded([&] {
        const auto* const served = qx::com::FindServed(clsid);
        return served == nullptr ? CLASS_E_CLASSNOTAVAILABLE
                                 : qx::com::GetClassFactory(*served, iid, out);
    });
}

STDAPI DllCanUnloadNow() {
    return qx::com::CanUnload() ? S_OK : S_FALSE;
}

STDAPI DllRegisterServer() {
    return qx::com::RegisterServer(qx::com::Scope::MachineOrUser);
}

STDAPI DllUnregisterServer() {
    return qx::com::UnregisterServer(qx::com::Scope::MachineOrUser);
}

// regsvr32 /n /i:user: registers for the current user only.
STDAPI DllInstall(BOOL fInstall, LPCWSTR commandLine) {
    const std::wstring_view asked = commandLine == nullptr ? L"" : commandLine;
    if (!asked.empty() && asked != L"user")
        return E_INVALIDARG;
    const auto scope = asked.empty() ? qx::com::Scope::MachineOrUser : qx::com::Scope::User;
    return fInstall ? qx::com::RegisterServer(scope) : qx::com::UnregisterServer(scope);
}
