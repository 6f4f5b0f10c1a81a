// BarcodeOptionPage: the options of one barcode symbology, and its accepted code lengths.
#pragma once

#include "qxcontrols/readers/OptionBool.h"

#include <array>

namespace qx {

// Initially everything is off, empty and 0.
class BarcodeOptionPage {
public:
    static constexpr Integer kFlags = 10;

    // The number of flags in use, starting with flag 0; set by the host, with their captions.
    [[nodiscard]] Integer OptionNum() const { return m_optionNum; }
    void SetOptionNum(Integer nNumber) { m_optionNum = nNumber; }

    // Whether the symbology has a range of code lengths, the permitted range, and the range that is
    // set.
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

    // Option nID, 0 to 9, in use or not. Throws std::out_of_range for other numbers.
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
