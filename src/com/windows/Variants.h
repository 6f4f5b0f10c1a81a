// Between the hosts' variants and the library's values.
#pragma once

#include "com/Value.h"
#include "com/windows/Com.h"

namespace qx::com {

// The variant that is meant, after all references; owned by the host still. Throws Error with
// TypeMismatch for a reference to nothing.
[[nodiscard]] VARIANT Followed(const VARIANT& given);

// The value, near enough to the wanted type that Coerced does the rest: dates, currency and numbers
// in texts are read as the host's locale has them, and a foreign object stands for its default
// value. Throws Error with TypeMismatch for what no member takes, foreign objects in place of the
// library's among them.
[[nodiscard]] Value ValueFrom(const VARIANT& given, const Type& wanted, LCID locale);

// The same for an argument that is only answered: a variant that takes any answer may hold anything
// before, which is an empty value if it is no text.
[[nodiscard]] Value OutputFrom(const VARIANT& given, const Type& wanted, LCID locale);

// A variant that the host is to clear.
[[nodiscard]] VARIANT VariantFrom(const Value& value);

// Writes an answer where the host's reference points, in the host's own type; nothing happens when
// the host passed no reference. Throws Error with Overflow or TypeMismatch when it does not fit.
void Answer(const VARIANT& given, const Value& value, LCID locale);

} // namespace qx::com
