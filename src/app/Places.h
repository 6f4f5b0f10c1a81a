// Place: where a setting is in the document, taken apart.
//
// A place is as in host::Setting: "/barcode/pages/Code39/minSize",
// "/freeProgKeys/keys[12]/sequence", "/layeredFuncKeys/keys[0][3]/description".
#pragma once

#include "qxcontrols/common/Types.h"

#include <string_view>
#include <vector>

namespace qx::app {

struct Place {
    // The place stays alive as long as the result.
    [[nodiscard]] static Place Of(std::string_view place);

    std::vector<std::string_view> words; // the first is the section's key: "barcode"
    std::vector<Integer> numbers;

    [[nodiscard]] std::string_view Section() const {
        return words.empty() ? std::string_view() : words.front();
    }
};

// The key of the place's section; it lives in the place.
[[nodiscard]] std::string_view SectionOfPlace(std::string_view place);

} // namespace qx::app
