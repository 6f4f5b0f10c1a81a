#include "com/faces/KeyParts.h"

#include "qxcontrols/keys/KeyName.h"
#include "qxcontrols/settings/Preferences.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace qx::com {
namespace {

bool IsSetting(const QXLayoutDisplay& display) {
    return display.DisplayKeyType() == DISPLAY_SETTING;
}

// The size of the captions, relative to the default size.
Single TextScaleOf(const QXLayoutDisplay& display) {
    return static_cast<Single>(std::max<Integer>(display.UserFontSize(), 1)) /
           static_cast<Single>(InfoOf(Preference::KeyFontSize).loadDefault);
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
        cap.textScale = TextScaleOf(display);
        cap.isProgrammed = key.Programmed;
        cap.isCurrent = index == display.CurrProgKey();
        cap.name = "Key " + KeyName(index, display.LayoutSource()) +
                   (key.Programmed ? ", programmed" : "") + (cap.isCurrent ? ", current key" : "");
        state.keys.push_back(std::move(cap));
    }
    std::ranges::stable_sort(state.keys, {},
                             [](const KeyCap& cap) { return std::pair(cap.top, cap.left); });
    return state;
}

KeyCap PosCap(const QXPosDisplay& display, Integer nKey, const PosUse& use) {
    const PosButton& key = display.cmdPOS[static_cast<std::size_t>(nKey)];
    KeyCap cap = CapOf(key, nKey, key.BackColor);
    Put(cap, kPosKeyRows, nKey - QXPosDisplay::kMinKey);
    cap.isProgrammed = display.IsUsedKey(nKey);
    cap.isCurrent = cap.isBold = key.FontBold;
    cap.textScale = static_cast<Single>(key.FontSize) / static_cast<Single>(PosButton().FontSize);
    const std::string label = use.labelOf ? use.labelOf(nKey) : std::string();
    cap.name = "Key " + KeyName(nKey, label);
    if (use.labelOf) {
        const std::string legend = label.empty() ? std::to_string(nKey) : label;
        cap.caption = key.Caption.empty() ? legend : key.Caption + "\n" + legend;
    }
    cap.name += cap.isProgrammed ? ", block " + key.Caption : ", in no block";
    if (cap.isCurrent)
        cap.name += ", current key";
    if (use.sentBy)
        cap.toolTip = use.sentBy(nKey);
    return cap;
}

PartState PosKeys(const QXPosDisplay& display, const PosUse& use) {
    PartState state;
    state.name = "POS keys";
    state.value = display.Focus();
    for (Integer nKey = QXPosDisplay::kMinKey; nKey <= QXPosDisplay::kMaxKey; ++nKey)
        if (display.cmdPOS[static_cast<std::size_t>(nKey)].Visible)
            state.keys.push_back(PosCap(display, nKey, use));
    return state;
}

std::vector<Subscription> SubscribedTo(Event<>& refreshed, Event<>& moved, std::string_view part,
                                       const FaceEvents& events) {
    std::vector<Subscription> subscriptions;
    subscriptions.push_back(refreshed.Subscribe(events.refreshed));
    subscriptions.push_back(moved.Subscribe([events, part] {
        events.refreshed();
        events.takeFocus(part);
    }));
    return subscriptions;
}

} // namespace

void Put(KeyCap& cap, const KeyRows& rows, int place) {
    const auto [left, top, width, height] = rows.PlaceOf(place);
    cap.left = left;
    cap.top = top;
    cap.width = width;
    cap.height = height;
}

KeyCap CapOf(const Button& key, Integer index, Long color) {
    KeyCap cap;
    cap.index = index;
    cap.caption = key.Caption;
    cap.toolTip = key.ToolTip;
    cap.color = color;
    cap.isEnabled = key.Enabled;
    return cap;
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

Part PosPart(QXPosDisplay& display, const PosUse& use) {
    Part part = KeysPart(
        "posDisplay", [&display, use] { return PosKeys(display, use); },
        [&display](Integer nKey) { display.cmdPOS_Click(nKey); },
        [&display, use](Integer nKey) {
            display.SetCursor(nKey);
            if (use.reach)
                use.reach(nKey);
        });
    part.take = use.take;
    return part;
}

std::vector<Subscription> SubscribedTo(QXLayoutDisplay& display, const FaceEvents& events) {
    return SubscribedTo(display.Refreshed, display.KeySelected, "layoutDisplay", events);
}

std::vector<Subscription> SubscribedTo(QXPosDisplay& display, const FaceEvents& events) {
    return SubscribedTo(display.Refreshed, display.FocusMoved, "posDisplay", events);
}

} // namespace qx::com
