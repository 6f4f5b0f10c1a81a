// The type library's source text, generated from the tables for the interface compiler.
#pragma once

#include <string>

namespace qx::com {

// The whole library: the enumerations, an interface and an event interface for each class, and the
// classes. The output depends on the tables only.
[[nodiscard]] std::string IdlText();

} // namespace qx::com
