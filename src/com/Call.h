// Calls members through their tables.
#pragma once

#include "com/Object.h"

#include <span>
#include <string>

namespace qx::com {

// "QXPos.Key", for messages.
[[nodiscard]] std::string FullName(const Object& object, const Member& member);

// Throws Error if the member has fewer parameters than arguments are given.
void RefuseSurplus(const Object& object, const Member& member, std::size_t given);

// `arguments` are in the member's order, Missing where one was left out; by-reference ones are
// written back in place. The object stays alive until the call ends, even if a host releases it.
// Throws Error for an invalid call and for exceptions of the library: range errors become
// SubscriptOutOfRange, invalid arguments InvalidProcedureCall, overflows Overflow. By-reference
// arguments are then unchanged.
Value Call(Object& object, const Member& member, std::span<Value> given);

} // namespace qx::com
