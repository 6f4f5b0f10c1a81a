// The JSON Schema of configuration documents, made from the sections' own descriptions. See
// Schemas.h for the schemas that scripts get.
#pragma once

#include "host/Json.h"

namespace qx::host {

// A document of the right shape fulfils it, with or without placeholders. Rules that
// tie several members together (a key in two blocks, a text that a layout cannot type) are not part
// of it.
[[nodiscard]] Json DocumentSchema();

} // namespace qx::host
