// The JSON Schema of configuration documents, made from the sections' own descriptions.
#pragma once

#include "host/Json.h"

namespace qx::host {

// Draft 2020-12. A document of the right shape fulfils it, with or without placeholders. Rules that
// tie several members together (a key in two blocks, a text that a layout cannot type) are not part
// of it.
[[nodiscard]] Json DocumentSchema();

} // namespace qx::host
