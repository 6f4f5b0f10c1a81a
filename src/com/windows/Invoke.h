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
    VARIANT* result; // may be null, as all below
    EXCEPINFO* exception;
    UINT* wrongArgument;
};

// By-reference arguments are answered in the host's own variables. What the library reports comes
// as DISP_E_EXCEPTION with the numbers that classic hosts know (0x800A0009: subscript out of range)
// and its message; a call that does not fit the member as the customary DISP_E_ status.
[[nodiscard]] HRESULT InvokeMember(Object& object, const Invocation& invocation);

// The identifier of a member, named first, and the positions of its arguments, named after it;
// DISP_E_UNKNOWNNAME when one is not known, which gets DISPID_UNKNOWN.
[[nodiscard]] HRESULT FindNames(const Class& type, std::span<LPOLESTR> names, DISPID* ids);

} // namespace qx::com
