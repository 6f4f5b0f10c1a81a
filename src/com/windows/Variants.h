// Converts between the hosts' variants and the library's values.
#pragma once

#include "com/Value.h"
#include "com/windows/Com.h"

namespace qx::com {

// The variant at the end of all references; still owned by the host. Throws Error with TypeMismatch
// for a reference to nothing.
[[nodiscard]] VARIANT Followed(const VARIANT& given);

// The value, converted far enough that Coerced can do the rest: dates, currency and numbers in
// texts are read in the host's locale, and a foreign object is replaced by its default value.
// Throws Error with TypeMismatch for types that no member accepts, including a foreign object where
// one of the library's is expected.
[[nodiscard]] Value ValueFrom(const VARIANT& given, const Type& wanted, LCID locale);

// The same for an output-only argument: a variant may hold anything before the call, and is treated
// as empty if it is not a text.
[[nodiscard]] Value OutputFrom(const VARIANT& given, const Type& wanted, LCID locale);

// A variant that the host must clear.
[[nodiscard]] VARIANT VariantFrom(const Value& value);

// Writes an answer to the place that the host's reference points to, in the host's own type; does
// nothing if the host did not pass a reference. Throws Error with Overflow or TypeMismatch if it
// does not fit.
void Answer(const VARIANT& given, const Value& value, LCID locale);

} // namespace qx::com
