// Places: from a setting's place in the document to where the application shows it.
//
// A place is a setting's, as host::Setting has it: "/barcode/pages/Code39/minSize",
// "/freeProgKeys/keys[12]/sequence", "/layeredFuncKeys/keys[0][3]/description".
#pragma once

#include <QString>

#include <string>
#include <string_view>
#include <vector>

namespace qx::app {

class Workbench;

// The key of the place's section: "barcode".
[[nodiscard]] std::string SectionOfPlace(std::string_view place);

// Has the section's control show the part of it where the setting is: the page, track, layer or
// key.
void ShowPlace(Workbench& workbench, std::string_view place);

// Every key that can be programmed, whether or not it is.
struct FindableKey {
    QString name; // "Free keys: key 30, A"
    std::string place;
};
[[nodiscard]] std::vector<FindableKey> AllKeys(Workbench& workbench);

} // namespace qx::app
