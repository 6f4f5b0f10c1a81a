// Calls of members by their tables.
#pragma once

#include "com/Object.h"

#include <span>

namespace qx::com {

// The arguments in the member's order, Missing where one was left out; by-reference ones are
// answered in place. The object stays until the call ends, whoever releases it. Throws Error for a
// wrong call and for what the library reports by exceptions: range errors as SubscriptOutOfRange,
// invalid arguments as InvalidProcedureCall, overflows as Overflow; by-reference arguments then
// stay.
Value Call(Object& object, const Member& member, std::span<Value> given);

} // namespace qx::com
