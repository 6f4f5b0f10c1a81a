// Calls that come through IDispatch.
#pragma once

#include "com/Object.h"
#include "com/windows/Com.h"

#include <span>

namespace qx::com {

struct Invocation {
    DISPID id;
    LCID locale;
    WORD flags;
    DISPPARAMS* arguments;
    VARIANT* result; // this and the members below may be null
    EXCEPINFO* exception;
    UINT* wrongArgument;
};

// By-reference arguments are written back to the host's own variables. Errors of the library are
// returned as DISP_E_EXCEPTION with the numbers that classic hosts know (0x800A0009: subscript out
// of range) and a message; a call that does not fit the member as the usual DISP_E_ status.
[[nodiscard]] HRESULT InvokeMember(Object& object, const Invocation& invocation);

// names[0] is a member, the rest are its arguments: returns the member's identifier and the
// arguments' positions. An unknown name gets DISPID_UNKNOWN, and the result is DISP_E_UNKNOWNNAME.
[[nodiscard]] HRESULT FindNames(const Class& type, std::span<LPOLESTR> names, DISPID* ids);

} // namespace qx::com
