// The faces of the controls that show keyboards.
#include "com/faces/Faces.h"
#include "qxcontrols/keyprog/QXFreeProgKeys.h"
#include "qxcontrols/keyprog/QXLayeredFuncKeys.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "qxcontrols/keys/QXLayoutDisplay.h"
#include "qxcontrols/pos/QXPos.h"
#include "qxcontrols/pos/QXPosDisplay.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace qx::com {
namespace {

// A grid of equal keys, in the unit of the layouts.
struct KeyGridPlaces {
    int keysInRow;
    Single stepX, stepY;

    void Put(KeyCap& cap, int place) const {
        constexpr Single kGap = 25;
        cap.left = static_cast<Single>(place % keysInRow) * stepX;
        cap.top = static_cast<Single>(place / keysInRow) * stepY;
        cap.width = stepX - kGap;
        cap.height = stepY - kGap;
    }
};
constexpr KeyGridPlaces kPosPlaces{15, 700, 600}; // along the rows of the keyboard's matrix
constexpr KeyGridPlaces kFuncKeyPlaces{12, 720, 600};

KeyCap CapOf(const Button& key, Integer index, Long color) {
    KeyCap cap;
    cap.index = index;
    cap.caption = key.Caption;
    cap.toolTip = key.ToolTip;
    cap.color = color;
    cap.isEnabled = key.Enabled;
    return cap;
}

bool IsSetting(const QXLayoutDisplay& display) {
    return display.DisplayKeyType() == DISPLAY_SETTING;
}

PartState LayoutKeys(const QXLayoutDisplay& display) {
    PartState state;
    state.name = "Keyboard";
    state.value = IsSetting(display) ? display.CurrProgKey() : display.SelectedKey();
    for (std::size_t i = 0; i < display.cmdKey.size(); ++i) {
        const KeyButton& key = display.cmdKey[i];
        if (!key.Visible || key.Width <= 0 || key.Height <= 0)
            continue;
        const auto index = static_cast<Integer>(i);
        KeyCap cap = CapOf(key, index, key.BackColor);
        std::tie(cap.left, cap.top, cap.width, cap.height) =
            std::tie(key.Left, key.Top, key.Width, key.Height);
        cap.isProgrammed = key.Programmed;
        cap.isCurrent = index == display.CurrProgKey();
        cap.name = "Key " + std::to_string(i) + ", " + key.Caption +
                   (key.Programmed ? ", programmed" : "") + (cap.isCurrent ? ", current key" : "");
        state.keys.push_back(std::move(cap));
    }
    std::ranges::stable_sort(state.keys, {},
                             [](const KeyCap& cap) { return std::pair(cap.top, cap.left); });
    return state;
}

Part LayoutPart(QXLayoutDisplay& display) {
    return KeysPart(
        "layoutDisplay", [&display] { return LayoutKeys(display); },
        [&display](Integer nKey) { display.cmdKey_Click(nKey); },
        [&display](Integer nKey) {
            if (!IsSetting(display))
                display.SelectKey(nKey);
            else if (nKey != display.CurrProgKey())
                display.cmdKey_Click(nKey);
        });
}

PartState PosKeys(const QXPosDisplay& display) {
    PartState state;
    state.name = "POS keys";
    state.value = display.Focus();
    for (Integer nKey = QXPosDisplay::kMinKey; nKey <= QXPosDisplay::kMaxKey; ++nKey) {
        const PosButton& key = display.cmdPOS[static_cast<std::size_t>(nKey)];
        if (!key.Visible)
            continue;
        KeyCap cap = CapOf(key, nKey, key.BackColor);
        kPosPlaces.Put(cap, nKey - QXPosDisplay::kMinKey);
        cap.isProgrammed = display.IsUsedKey(nKey);
        cap.isCurrent = key.FontBold;
        cap.name = "POS key " + std::to_string(nKey) +
                   (cap.isProgrammed ? ", block " + key.Caption : ", in no block") +
                   (cap.isCurrent ? ", current key" : "");
        state.keys.push_back(std::move(cap));
    }
    return state;
}

Part PosPart(QXPosDisplay& display) {
    return KeysPart(
        "posDisplay", [&display] { return PosKeys(display); },
        [&display](Integer nKey) { display.cmdPOS_Click(nKey); },
        [&display](Integer nKey) { display.SetCursor(nKey); });
}

PartState FuncKeys(const QXLayeredFuncKeys& control) {
    PartState state;
    state.name = "Function keys of layer " + std::to_string(control.CurrentLayer());
    state.value = control.CurrentKey();
    for (Integer nKey = 0; nKey < FuncKeyLayer::kKeys; ++nKey) {
        const FuncKeyButton& key = control.cmdFuncKey[static_cast<std::size_t>(nKey)];
        KeyCap cap = CapOf(key, nKey, key.BackColor);
        kFuncKeyPlaces.Put(cap, nKey);
        cap.isProgrammed = key.Programmed;
        cap.isCurrent = key.Current;
        cap.name = "Function key " + key.Caption + (key.ToolTip.empty() ? "" : ", " + key.ToolTip) +
                   (key.Programmed ? ", programmed" : ", not programmed") +
                   (key.Current ? ", current key" : "");
        if (!key.ToolTip.empty()) // the description says more than the number
            cap.caption += "\n" + key.ToolTip;
        state.keys.push_back(std::move(cap));
    }
    return state;
}

template <std::size_t Count, typename C>
std::vector<Part> ButtonsOf(std::string_view name, const std::array<Button, Count>& buttons,
                            C& control, void (C::*click)(Integer)) {
    std::vector<Part> parts;
    for (Integer nIndex = 0; nIndex < static_cast<Integer>(Count); ++nIndex)
        parts.push_back(PartOf(ElementOf(name, nIndex), buttons[static_cast<std::size_t>(nIndex)],
                               [&control, nIndex, click] { (control.*click)(nIndex); }));
    return parts;
}

std::vector<Subscription> Subscribed(QXLayoutDisplay& display, const FaceEvents& events) {
    std::vector<Subscription> subscriptions;
    subscriptions.push_back(display.Refreshed.Subscribe(events.refreshed));
    subscriptions.push_back(display.KeySelected.Subscribe([events] {
        events.refreshed();
        events.takeFocus("layoutDisplay");
    }));
    return subscriptions;
}

std::vector<Subscription> Subscribed(QXPosDisplay& display, const FaceEvents& events) {
    std::vector<Subscription> subscriptions;
    subscriptions.push_back(display.Refreshed.Subscribe(events.refreshed));
    subscriptions.push_back(display.FocusMoved.Subscribe([events] {
        events.refreshed();
        events.takeFocus("posDisplay");
    }));
    return subscriptions;
}

// Of a control that has a display among its children.
template <typename C, typename Display>
std::function<std::vector<Subscription>(const FaceEvents&)> WithDisplay(C& control,
                                                                        Display& display) {
    return [&control, &display](const FaceEvents& events) {
        std::vector<Subscription> subscriptions = Subscribed(display, events);
        subscriptions.push_back(control.Refreshed.Subscribe(events.refreshed));
        return subscriptions;
    };
}

} // namespace

template <>
FaceTable FaceTableOf(QXLayoutDisplay& control) {
    return {Column({Stretching(LayoutPart(control))}),
            [&control](const FaceEvents& events) { return Subscribed(control, events); },
            {}};
}

template <>
FaceTable FaceTableOf(QXPosDisplay& control) {
    return {Column({Stretching(PosPart(control))}),
            [&control](const FaceEvents& events) { return Subscribed(control, events); },
            {}};
}

template <>
FaceTable FaceTableOf(QXFreeProgKeys& control) {
    std::vector<Part> buttons =
        ButtonsOf("cmdEdit", control.cmdEdit, control, &QXFreeProgKeys::cmdEdit_Click);
    buttons.push_back(PartOf("chkShowDetails", control.chkShowDetails,
                             [&control] { control.chkShowDetails_Click(); }));
    return {Column({Stretching(LayoutPart(control.layoutDisplay)),
                    Row({PartOf("lblSequence", control.lblSequence),
                         Stretching(SequencePart("lblCurrSeq", control.lblCurrSeq,
                                                 control.lblSequence.Caption, {},
                                                 [&control] { control.lblCurrSeq_KeyPress(); }))}),
                    Row(std::move(buttons))}),
            WithDisplay(control, control.layoutDisplay),
            {}};
}

template <>
FaceTable FaceTableOf(QXPos& control) {
    return {
        Column({Stretching(PosPart(control.posDisplay)),
                Row({PartOf("cmdEdit", control.cmdEdit, [&control] { control.cmdEdit_Click(); }),
                     PartOf("cmdCleanAll", control.cmdCleanAll,
                            [&control] { control.cmdCleanAll_Click(); }),
                     PartOf("lblNumBlocks", control.lblNumBlocks),
                     PartOf("lblBlockNum", control.lblBlockNum)})}),
        WithDisplay(control, control.posDisplay),
        {}};
}

template <>
FaceTable FaceTableOf(QXLayeredFuncKeys& control) {
    std::vector<Part> layer{PartOf("lblLayerDesc", control.lblLayerDesc),
                            PartOf("lblLayerID", control.lblLayerID),
                            Stretching(PartOf("spinLayer", control.spinLayer, control.lblLayerDesc,
                                              [&control] { control.spinLayer_Change(); }))};
    for (Part& button :
         ButtonsOf("cmdLayer", control.cmdLayer, control, &QXLayeredFuncKeys::cmdLayer_Click))
        layer.push_back(std::move(button));
    std::vector<Part> buttons =
        ButtonsOf("cmdEdit", control.cmdEdit, control, &QXLayeredFuncKeys::cmdEdit_Click);
    buttons.push_back(PartOf("chkShowDetails", control.chkShowDetails,
                             [&control] { control.chkShowDetails_Click(); }));
    Part keys = KeysPart(
        "funcKeys", [&control] { return FuncKeys(control); },
        [&control](Integer nKey) { control.cmdFuncKey_Click(nKey); },
        [&control](Integer nKey) {
            if (nKey != control.CurrentKey())
                control.cmdFuncKey_Click(nKey);
        });
    Part texts = Grid(
        {Row({PartOf("lblSequence", control.lblSequence),
              Stretching(SequencePart("lblCurrSeq", control.lblCurrSeq, control.lblSequence.Caption,
                                      {}, [&control] { control.lblCurrSeq_KeyPress(); }))}),
         Row({PartOf("lblSymbolDesc", control.lblSymbolDesc),
              Stretching(PartOf("txtSymbolDesc", control.txtSymbolDesc, control.lblSymbolDesc,
                                [&control] { control.txtSymbolDesc_Change(); }))})});
    return {Column({Row(std::move(layer)), Stretching(std::move(keys)), std::move(texts),
                    Row(std::move(buttons))}),
            RefreshOf(control),
            {}};
}

} // namespace qx::com
