// The side-by-side manifest: installed beside the server, it lets a host that names the assembly
// QXControls in its own manifest use the library without registration.
#pragma once

#include <string>

namespace qx::com {

[[nodiscard]] std::string ManifestText();

} // namespace qx::com
