// The type library's source text, written from the tables for the interface compiler.
#pragma once

#include <string>

namespace qx::com {

// The whole library: enumerations, an interface and an event interface for each class, and the
// classes. The same tables always give the same text.
[[nodiscard]] std::string IdlText();

} // namespace qx::com
