// Part: what a control's face is made of, as any toolkit can show it: rows and columns of parts,
// and parts that each show one of the control's child controls and run the user's action on it.
//
// A part keeps what it shows as of the last Refresh. It refers to the control, which outlives it.
#pragma once

#include "qxcontrols/common/ChildControls.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace qx::com {

enum class PartKind {
    Row,
    Flow, // a row that goes on below itself where there is no room beside
    Column,
    Grid,     // of rows, whose columns are aligned
    Frame,    // a column with a title around it
    Label,    // only shows a text
    Sequence, // a text that can have the focus and takes keys
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
    std::string name;     // for those who hear the screen
    Long color = 0;       // a Windows colour value
    Single textScale = 1; // of the caption; 1 is its usual size
    bool isBold = false;
    bool isProgrammed = false;
    bool isCurrent = false;
    bool isEnabled = true;
};

struct PartState {
    std::string text;
    std::string toolTip;
    std::string name; // for those who hear the screen, where the text does not say it
    bool isVisible = true;
    bool isEnabled = true;
    Integer value = 0; // checked, position, selected line, or the key with the focus
    Integer min = 0, max = 0;
    std::vector<std::string> items;
    std::vector<KeyCap> keys;
};

// What the user has done: the part's new value (of keys, the one that was picked; of a sequence,
// the virtual key code of the key that was pressed), or its new text.
struct PartInput {
    Integer value = 0;
    std::string text;
};

struct Part {
    PartKind kind = PartKind::Row;
    std::string id; // "chkReader_1"; rows, columns and grids have none
    std::vector<Part> parts;
    bool stretches = false; // takes the room that others leave
    PartState state;
    std::function<PartState()> now;
    std::function<void(const PartInput&)> act;
    std::function<void(Integer)> reach; // of keys: the user has moved to one without picking it
    std::function<void(Integer)> take;  // of keys: picked with Ctrl; else that is like any other
    std::function<void()> type;         // of a sequence: a key that types something
    std::function<void()> enter;        // of an edit: the Enter key
    std::function<void(bool)> focus;    // of an edit: the user has come (true), or gone elsewhere

    // Whether there is anything to see.
    [[nodiscard]] bool IsVisible() const;
};

// Takes over what the control shows now, in the part and all within it.
void Refresh(Part& part);

using PartAction = std::function<void()>;

[[nodiscard]] Part Row(std::vector<Part> parts);
[[nodiscard]] Part Flow(std::vector<Part> parts);
[[nodiscard]] Part Column(std::vector<Part> parts);
[[nodiscard]] Part Grid(std::vector<Part> rows);
[[nodiscard]] Part Frame(std::string id, const Label& title, std::vector<Part> parts);

// The parts of the child controls. A name of one is the text of the child beside it.
[[nodiscard]] Part PartOf(std::string id, const Label& child);
[[nodiscard]] Part TextPart(std::string id, const std::string& text); // which never changes
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

// Tells a button from others of the same text: its name adds the caption of what it is about.
[[nodiscard]] Part About(const std::string& caption, Part button);

// "cmdEdit_1": an element of an array of child controls.
[[nodiscard]] std::string ElementOf(std::string_view name, Integer index);

// A caption without the marks of its shortcut.
[[nodiscard]] std::string PlainCaption(std::string_view caption);

} // namespace qx::com
