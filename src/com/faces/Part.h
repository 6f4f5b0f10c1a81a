// Part: a toolkit-independent description of a control's face: rows and columns of parts, and parts
// that each show one child control and run the user's action on it.
//
// A part holds the state as of the last Refresh. It refers to the control, which outlives it.
#pragma once

#include "qxcontrols/common/ChildControls.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace qx::com {

enum class PartKind {
    Row,
    Flow, // a row that wraps to the next line when it runs out of width
    Column,
    Grid,     // of rows, whose columns are aligned
    Frame,    // a column with a title and a line around it
    Label,    // only shows text
    Sequence, // a text that can have the focus and accepts keys
    CheckBox,
    Button,
    Slider,
    List,
    Edit,
    Keys, // a keyboard
};

struct KeyCap {
    Integer index = 0;                               // the key's number in its control
    Single left = 0, top = 0, width = 0, height = 0; // in the control's unit
    std::string caption;
    std::string toolTip;
    std::string name;     // for screen readers
    Long color = 0;       // a Windows colour value
    Single textScale = 1; // of the caption, relative to the default size
    bool isBold = false;
    bool isProgrammed = false;
    bool isCurrent = false;
    bool isEnabled = true;
};

struct PartState {
    std::string text;
    std::string toolTip;
    std::string name; // for screen readers, where the text alone does not name the part
    bool isVisible = true;
    bool isEnabled = true;
    Integer value = 0; // checked, position, selected line, or the key with the focus
    Integer min = 0, max = 0;
    std::vector<std::string> items;
    std::vector<KeyCap> keys;
};

// The user's action: the part's new value (of keys: the picked key; of a sequence: the virtual key
// code of the pressed key), or its new text.
struct PartInput {
    Integer value = 0;
    std::string text;
};

struct Part {
    PartKind kind = PartKind::Row;
    std::string id; // "chkReader_1"; empty for rows, columns and grids
    std::vector<Part> parts;
    bool stretches = false; // fills the remaining room
    PartState state;
    std::function<PartState()> now;
    std::function<void(const PartInput&)> act;
    std::function<void(Integer)> reach; // of keys: the user has moved to one without picking it
    std::function<void(Integer)> take;  // of keys: picked with Ctrl; if empty, Ctrl has no effect
    std::function<void()> type;         // of a sequence: a key that types something
    std::function<void()> enter;        // of an edit: the Enter key
    std::function<void(bool)> focus;    // of an edit: it has got (true) or lost the focus

    // Whether the part or a part within it shows anything.
    [[nodiscard]] bool IsVisible() const;
};

// Updates the part, and all parts within it, from the control.
void Refresh(Part& part);

using PartAction = std::function<void()>;

[[nodiscard]] Part Row(std::vector<Part> parts);
[[nodiscard]] Part Flow(std::vector<Part> parts);
[[nodiscard]] Part Column(std::vector<Part> parts);
[[nodiscard]] Part Grid(std::vector<Part> rows);
[[nodiscard]] Part Frame(std::string id, const Label& title, std::vector<Part> parts);

// Parts for the child controls. `name` is the child whose text labels this one.
[[nodiscard]] Part PartOf(std::string id, const Label& child);
[[nodiscard]] Part TextPart(std::string id, const std::string& text); // text that never changes
[[nodiscard]] Part PartOf(std::string id, CheckBox& child, PartAction clicked);
[[nodiscard]] Part PartOf(std::string id, const Button& child, PartAction clicked);
[[nodiscard]] Part PartOf(std::string id, Slider& child, const Label& name, PartAction changed);
[[nodiscard]] Part PartOf(std::string id, ListBox& child, const Label& name, PartAction clicked);
[[nodiscard]] Part PartOf(std::string id, TextBox& child, const Label& name, PartAction changed);
[[nodiscard]] Part SequencePart(std::string id, const Label& child, const std::string& name,
                                std::function<void(Integer)> keyDown, PartAction keyPress);
[[nodiscard]] Part KeysPart(std::string id, std::function<PartState()> now,
                            std::function<void(Integer)> picked,
                            std::function<void(Integer)> reached);

[[nodiscard]] Part Stretching(Part part);

// Distinguishes a button from others with the same text: adds `caption` to its accessible name.
[[nodiscard]] Part About(const std::string& caption, Part button);

// "cmdEdit_1": an element of an array of child controls.
[[nodiscard]] std::string ElementOf(std::string_view name, Integer index);

// A caption without its mnemonic marks.
[[nodiscard]] std::string PlainCaption(std::string_view caption);

} // namespace qx::com
