// ButtonCaption: the texts of one push button.
#pragma once

#include "qxcontrols/common/ChildControls.h"

#include <string>
#include <utility>

namespace qx {

class ButtonCaption {
public:
    ButtonCaption() = default;
    ButtonCaption(std::string sCaption, std::string sToolTip)
        : m_caption(std::move(sCaption)), m_toolTip(std::move(sToolTip)) {}

    [[nodiscard]] const std::string& Caption() const { return m_caption; }
    void SetCaption(std::string sCaption) { m_caption = std::move(sCaption); }
    [[nodiscard]] const std::string& ToolTip() const { return m_toolTip; }
    void SetToolTip(std::string sToolTip) { m_toolTip = std::move(sToolTip); }

    // Sets the texts on the button.
    void ShowOn(Button& button) const {
        button.Caption = m_caption;
        button.ToolTip = m_toolTip;
    }

private:
    std::string m_caption;
    std::string m_toolTip;
};

} // namespace qx
