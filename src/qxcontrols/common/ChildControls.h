// The child controls of the module controls, as plain data.
//
// A control owns these and displays its state by setting them; a view copies them to real widgets.
// When the user changes one, the view stores the new value here and calls the control's action for
// that child, for example `chkReader[0].Value = 1; chkReader_Click(0);`.
#pragma once

#include "qxcontrols/common/Types.h"

#include <string>
#include <vector>

namespace qx {

struct Label {
    std::string Caption;
    bool Visible = true;
    bool Enabled = true; // for labels that accept keys
};

struct CheckBox {
    std::string Caption;
    Integer Value = 0; // 1 checked, 0 not
    bool Visible = true;
    bool Enabled = true;
};

struct Button {
    std::string Caption;
    std::string ToolTip;
    bool Visible = true;
    bool Enabled = true;
};

struct Slider {
    Integer Min = 0;
    Integer Max = 0;
    Integer Value = 0;
    bool Visible = true;
};

struct ListBox {
    std::vector<std::string> Items;
    Integer ListIndex = -1; // 0-based, -1 if nothing is selected
};

struct TextBox {
    std::string Text;
    bool Enabled = true;
};

} // namespace qx
