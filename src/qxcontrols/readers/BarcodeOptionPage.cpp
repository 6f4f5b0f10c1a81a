#include "qxcontrols/readers/BarcodeOptionPage.h"

#include <stdexcept>
#include <string>
#include <utility>

namespace qx {

OptionBool& BarcodeOptionPage::Flag(Integer nID) {
    return const_cast<OptionBool&>(std::as_const(*this).Flag(nID));
}

const OptionBool& BarcodeOptionPage::Flag(Integer nID) const {
    if (nID < 0 || nID >= kFlags)
        throw std::out_of_range("barcode flag " + std::to_string(nID) + " is not one of 0 to 9");
    return m_flags[static_cast<std::size_t>(nID)];
}

} // namespace qx
