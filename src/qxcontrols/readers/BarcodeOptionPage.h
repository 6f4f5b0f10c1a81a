// BarcodeOptionPage: the options of one barcode symbology, and the code lengths that it accepts.
#pragma once

#include "qxcontrols/readers/OptionBool.h"

#include <array>

namespace qx {

// Everything is off, empty and 0 at first.
class BarcodeOptionPage {
public:
    static constexpr Integer kFlags = 10;

    // How many of the flags are in use, from flag 0 on; for the host to set, with their captions.
    [[nodiscard]] Integer OptionNum() const { return m_optionNum; }
    void SetOptionNum(Integer nNumber) { m_optionNum = nNumber; }

    // Whether the symbology has a range of code lengths at all, which it permits, and which is set.
    [[nodiscard]] bool SupportsSizing() const { return m_supportsSizing; }
    void SetSupportsSizing(bool fSupported) { m_supportsSizing = fSupported; }
    [[nodiscard]] Integer LimitMinSize() const { return m_limitMinSize; }
    void SetLimitMinSize(Integer nSize) { m_limitMinSize = nSize; }
    [[nodiscard]] Integer LimitMaxSize() const { return m_limitMaxSize; }
    void SetLimitMaxSize(Integer nSize) { m_limitMaxSize = nSize; }
    [[nodiscard]] Integer MinSize() const { return m_minSize; }
    void SetMinSize(Integer nSize) { m_minSize = nSize; }
    [[nodiscard]] Integer MaxSize() const { return m_maxSize; }
    void SetMaxSize(Integer nSize) { m_maxSize = nSize; }

    // Option nID, 0 to 9, in use or not. Throws std::out_of_range for another.
    [[nodiscard]] OptionBool& Flag(Integer nID);
    [[nodiscard]] const OptionBool& Flag(Integer nID) const;

private:
    Integer m_optionNum = 0;
    bool m_supportsSizing = false;
    Integer m_limitMinSize = 0;
    Integer m_limitMaxSize = 0;
    Integer m_minSize = 0;
    Integer m_maxSize = 0;
    std::array<OptionBool, kFlags> m_flags;
};

} // namespace qx
