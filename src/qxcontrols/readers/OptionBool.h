// OptionBool: one on/off option with the caption of its check box.
#pragma once

#include "qxcontrols/common/Types.h"

#include <string>
#include <utility>

namespace qx {

class OptionBool {
public:
    [[nodiscard]] bool Value() const { return m_value; }
    void SetValue(bool fValue) { m_value = fValue; }

    // The value in check-box form: 1 or 0. Only 1 sets it.
    [[nodiscard]] Integer CtlValue() const { return m_value ? Integer{1} : Integer{0}; }
    void SetCtlValue(Integer nValue) { m_value = nValue == 1; }

    [[nodiscard]] const std::string& Caption() const { return m_caption; }
    void SetCaption(std::string sCaption) { m_caption = std::move(sCaption); }

private:
    bool m_value = false;
    std::string m_caption;
};

} // namespace qx
