#include "com/faces/Part.h"

#include <algorithm>
#include <utility>

namespace qx::com {
namespace {

Part Box(PartKind kind, std::vector<Part> parts) {
    Part box;
    box.kind = kind;
    box.parts = std::move(parts);
    return box;
}

Part Child(PartKind kind, std::string id, std::function<PartState()> now) {
    Part part;
    part.kind = kind;
    part.id = std::move(id);
    part.now = std::move(now);
    return part;
}

PartState StateOf(const Label& child) {
    PartState state;
    state.text = child.Caption;
    state.isVisible = child.Visible;
    state.isEnabled = child.Enabled;
    return state;
}

// Puts the user's new value into the child, and raises its event.
std::function<void(const PartInput&)> Assigning(Integer& value, PartAction event) {
    return [&value, event = std::move(event)](const PartInput& input) {
        value = input.value;
        event();
    };
}

} // namespace

bool Part::IsVisible() const {
    const bool isBox = kind <= PartKind::Frame;
    return state.isVisible &&
           (!isBox || std::ranges::any_of(parts, [](const Part& p) { return p.IsVisible(); }));
}

void Refresh(Part& part) {
    if (part.now)
        part.state = part.now();
    for (Part& inner : part.parts)
        Refresh(inner);
}

Part Row(std::vector<Part> parts) {
    return Box(PartKind::Row, std::move(parts));
}

Part Flow(std::vector<Part> parts) {
    return Box(PartKind::Flow, std::move(parts));
}

Part Column(std::vector<Part> parts) {
    return Box(PartKind::Column, std::move(parts));
}

Part Grid(std::vector<Part> rows) {
    return Box(PartKind::Grid, std::move(rows));
}

Part Frame(std::string id, const Label& title, std::vector<Part> parts) {
    Part frame = Child(PartKind::Frame, std::move(id), [&title] { return StateOf(title); });
    frame.parts = std::move(parts);
    return frame;
}

Part PartOf(std::string id, const Label& child) {
    return Child(PartKind::Label, std::move(id), [&child] { return StateOf(child); });
}

Part TextPart(std::string id, const std::string& text) {
    return Child(PartKind::Label, std::move(id), [text] {
        PartState state;
        state.text = text;
        return state;
    });
}

Part PartOf(std::string id, CheckBox& child, PartAction clicked) {
    Part part = Child(PartKind::CheckBox, std::move(id), [&child] {
        PartState state;
        state.text = child.Caption;
        state.isVisible = child.Visible;
        state.isEnabled = child.Enabled;
        state.value = child.Value;
        return state;
    });
    part.act = Assigning(child.Value, std::move(clicked));
    return part;
}

Part PartOf(std::string id, const Button& child, PartAction clicked) {
    Part part = Child(PartKind::Button, std::move(id), [&child] {
        PartState state;
        state.text = child.Caption;
        state.toolTip = child.ToolTip;
        state.isVisible = child.Visible;
        state.isEnabled = child.Enabled;
        return state;
    });
    part.act = [clicked = std::move(clicked)](const PartInput&) { clicked(); };
    return part;
}

Part PartOf(std::string id, Slider& child, const Label& name, PartAction changed) {
    Part part = Child(PartKind::Slider, std::move(id), [&child, &name] {
        PartState state;
        state.name = PlainCaption(name.Caption);
        state.isVisible = child.Visible;
        state.value = child.Value;
        state.min = child.Min;
        state.max = child.Max;
        return state;
    });
    part.act = Assigning(child.Value, std::move(changed));
    return part;
}

Part PartOf(std::string id, ListBox& child, const Label& name, PartAction clicked) {
    Part part = Child(PartKind::List, std::move(id), [&child, &name] {
        PartState state;
        state.name = PlainCaption(name.Caption);
        state.items = child.Items;
        state.value = child.ListIndex;
        return state;
    });
    part.act = Assigning(child.ListIndex, std::move(clicked));
    return part;
}

Part PartOf(std::string id, TextBox& child, const Label& name, PartAction changed) {
    Part part = Child(PartKind::Edit, std::move(id), [&child, &name] {
        PartState state;
        state.text = child.Text;
        state.name = PlainCaption(name.Caption);
        state.isEnabled = child.Enabled;
        return state;
    });
    part.act = [&child, changed = std::move(changed)](const PartInput& input) {
        child.Text = input.text;
        changed();
    };
    return part;
}

Part SequencePart(std::string id, const Label& child, const std::string& name,
                  std::function<void(Integer)> keyDown, PartAction keyPress) {
    Part part = Child(PartKind::Sequence, std::move(id), [&child, &name] {
        PartState state = StateOf(child);
        state.name = PlainCaption(name);
        return state;
    });
    if (keyDown)
        part.act = [keyDown = std::move(keyDown)](const PartInput& input) { keyDown(input.value); };
    part.type = std::move(keyPress);
    return part;
}

Part KeysPart(std::string id, std::function<PartState()> now, std::function<void(Integer)> picked,
              std::function<void(Integer)> reached) {
    Part part = Child(PartKind::Keys, std::move(id), std::move(now));
    part.act = [picked = std::move(picked)](const PartInput& input) { picked(input.value); };
    part.reach = std::move(reached);
    return part;
}

Part Stretching(Part part) {
    part.stretches = true;
    return part;
}

Part About(const std::string& caption, Part button) {
    button.now = [&caption, now = std::move(button.now)] {
        PartState state = now();
        state.name = PlainCaption(state.text) + ", " + PlainCaption(caption);
        return state;
    };
    return button;
}

std::string ElementOf(std::string_view name, Integer index) {
    return std::string(name) + "_" + std::to_string(index);
}

std::string PlainCaption(std::string_view caption) {
    std::string plain;
    for (std::size_t i = 0; i < caption.size(); ++i) {
        if (caption[i] == '&' && ++i == caption.size())
            break;
        plain += caption[i];
    }
    return plain;
}

} // namespace qx::com
