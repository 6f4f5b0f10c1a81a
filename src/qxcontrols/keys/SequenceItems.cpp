#include "qxcontrols/keys/SequenceItems.h"

#include "qxcontrols/common/Utf.h"
#include "qxcontrols/keys/KeyCharacters.h"
#include "qxcontrols/keys/KeyNames.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"

#include <algorithm>

namespace qx {

namespace {

using Kind = SequenceItem::Kind;

// The customary key numbers, which are the same in every layout.
constexpr Byte kShifts[] = {44, 57};
constexpr Byte kModifiers[] = {44, 57, 58, 60, 62, 64}; // Shift, Ctrl and Alt, left and right
constexpr Byte kSpaceBar = 61;

constexpr const char* kOpenBox = "\u2423"; // a blank that can be seen

bool IsOneOf(std::span<const Byte> keys, Byte code) {
    return std::ranges::find(keys, code) != keys.end();
}

} // namespace

SequenceItems::SequenceItems(const QXKeyboardLayoutData& layout) {
    const KeyNames names(layout);
    for (Byte id = 0; id < m_keys.size(); ++id) {
        Key& key = m_keys[id];
        key.name = names.Name(id);
        if (key.name.empty())
            key.name = "{" + std::to_string(id) + "}";
        const KeyCharacters characters =
            CharactersOf(layout.KeyCaption(id), layout.KeyLongCaption(id));
        if (!characters.isPlainDead)
            key.plain = Utf8FromUtf16(characters.plain);
        if (!characters.isShiftedDead)
            key.shifted = Utf8FromUtf16(characters.shifted);
    }
    m_keys[kSpaceBar].plain = kOpenBox;
}

// A key that is pressed and at once released.
std::optional<SequenceItem> SequenceItems::Stroke(std::span<const Byte> codes,
                                                  std::size_t at) const {
    if (codes[at] >= kRelease || at + 1 == codes.size() || codes[at + 1] != codes[at] + kRelease)
        return {};
    const Key& key = m_keys[codes[at]];
    return SequenceItem{key.plain.empty() ? Kind::Key : Kind::Text, at, 2,
                        key.plain.empty() ? key.name : key.plain};
}

// Strokes, or other keys held, while one of Shift, Ctrl and Alt is down.
std::optional<SequenceItem> SequenceItems::Held(std::span<const Byte> codes, std::size_t at,
                                                std::vector<Byte> down) const {
    const Byte holder = codes[at];
    if (!IsOneOf(kModifiers, holder) || IsOneOf(down, holder))
        return {};
    down.push_back(holder);
    std::string keys;
    std::string typed; // with Shift
    std::size_t strokes = 0;
    bool isTyped = IsOneOf(kShifts, holder);
    std::size_t next = at + 1;
    while (next < codes.size() && codes[next] != holder + kRelease) {
        auto inner = Stroke(codes, next);
        if (inner) {
            inner->text = m_keys[codes[next]].name;
            typed += m_keys[codes[next]].shifted;
            isTyped = isTyped && !m_keys[codes[next]].shifted.empty();
        } else {
            inner = Held(codes, next, down);
            isTyped = false;
        }
        if (!inner)
            return {};
        keys += (keys.empty() ? "" : " ") + inner->text;
        ++strokes;
        next += inner->count;
    }
    if (next == codes.size() || strokes == 0)
        return {};
    if (!isTyped)
        typed = m_keys[holder].name + "+" + (strokes == 1 ? keys : "(" + keys + ")");
    return SequenceItem{isTyped ? Kind::Text : Kind::Chord, at, next + 1 - at, typed};
}

std::vector<SequenceItem> SequenceItems::SinglesOf(std::span<const Byte> codes) const {
    std::vector<SequenceItem> items;
    for (std::size_t at = 0; at < codes.size(); at += items.back().count) {
        auto item = Stroke(codes, at);
        if (!item)
            item = Held(codes, at);
        if (!item) {
            const bool isRelease = codes[at] >= kRelease;
            const auto key = static_cast<std::size_t>(isRelease ? codes[at] - kRelease : codes[at]);
            item = {isRelease ? Kind::Release : Kind::Press, at, 1,
                    m_keys[key].name + (isRelease ? "\u2191" : "\u2193")};
        }
        items.push_back(std::move(*item));
    }
    return items;
}

std::vector<SequenceItem> SequenceItems::Of(std::span<const Byte> codes) const {
    std::vector<SequenceItem> items;
    for (SequenceItem& item : SinglesOf(codes)) {
        if (item.kind == Kind::Text && !items.empty() && items.back().kind == Kind::Text) {
            items.back().count += item.count;
            items.back().text += item.text;
        } else {
            items.push_back(std::move(item));
        }
    }
    for (SequenceItem& item : items)
        if (item.kind == Kind::Text && item.text == kOpenBox) { // the space bar alone
            item.kind = Kind::Key;
            item.text = m_keys[kSpaceBar].name;
        }
    return items;
}

std::vector<SequenceCharacter> SequenceItems::CharactersIn(std::span<const Byte> codes,
                                                           const SequenceItem& item) const {
    std::vector<SequenceCharacter> characters;
    if (item.kind != Kind::Text)
        return characters;
    Byte holder = 0;
    for (std::size_t at = item.first; at < item.first + item.count;) {
        if (holder != 0 && codes[at] == holder + kRelease) {
            characters.back().end = ++at;
            holder = 0;
        } else if (IsOneOf(kShifts, codes[at])) {
            holder = codes[at++];
        } else {
            const Key& key = m_keys[codes[at]];
            characters.push_back({at, at + 2, holder, holder != 0 ? key.shifted : key.plain});
            at += 2;
        }
    }
    return characters;
}

std::string SequenceItems::Text(std::span<const Byte> codes) const {
    std::string text;
    for (const SequenceItem& item : Of(codes))
        text += (text.empty() ? "" : " ") + item.text;
    return text;
}

} // namespace qx
