#include "qxcontrols/keys/SequenceDraft.h"

#include <algorithm>
#include <utility>

namespace qx {

SequenceDraft::SequenceDraft(const QXKeyboardLayoutData& layout, std::size_t capacity)
    : m_reader(layout), m_capacity(capacity) {}

void SequenceDraft::Start(std::vector<Byte> codes) {
    m_held.clear();
    const std::size_t end = codes.size();
    Change(std::move(codes), end);
}

std::size_t SequenceDraft::CodesLeft() const {
    return m_capacity - std::min(m_capacity, m_codes.size());
}

SequenceDraft::Place SequenceDraft::Caret() const {
    Place place{0, {}};
    while (place.item < m_items.size() &&
           m_items[place.item].first + m_items[place.item].count <= m_caret)
        ++place.item;
    for (const SequenceCharacter& character : CharactersOf(place.item))
        if (character.end <= m_caret)
            place.before += character.text;
    return place;
}

void SequenceDraft::SetCaret(std::size_t item, std::size_t characters) {
    const auto all = CharactersOf(item);
    m_caret = characters == 0 || all.empty() ? CodeAt(item)
                                             : all[std::min(characters, all.size()) - 1].end;
}

void SequenceDraft::StepCaret(int by) {
    const std::vector<std::size_t> places = Places();
    const auto at = std::ranges::find(places, m_caret);
    if (by > 0 && at + 1 != places.end())
        m_caret = at[1];
    else if (by < 0 && at != places.begin())
        m_caret = at[-1];
}

Byte SequenceDraft::HeldAtCaret() const {
    for (const SequenceCharacter& character : CharactersOf(Caret().item))
        if (character.stroke == m_caret)
            return character.holder;
    return 0;
}

void SequenceDraft::Hold(Byte key, bool isHeld) {
    std::erase(m_held, key);
    if (isHeld)
        m_held.push_back(key);
}

bool SequenceDraft::IsHeld(Byte key) const {
    return std::ranges::find(m_held, key) != m_held.end();
}

bool SequenceDraft::Press(Byte key) {
    std::vector<Byte> keys = m_held;
    if (!IsHeld(key))
        keys.push_back(key);
    std::vector<Byte> codes = keys;
    for (auto released = keys.rbegin(); released != keys.rend(); ++released)
        codes.push_back(static_cast<Byte>(*released + kRelease));
    return Insert(codes);
}

// Whether the codes are characters that one press of this Shift types.
bool SequenceDraft::IsTypedWith(Byte shift, const std::vector<Byte>& codes) const {
    const std::vector<SequenceItem> items = m_reader.Of(codes);
    if (items.size() != 1)
        return false;
    const auto characters = m_reader.CharactersIn(codes, items.front());
    return codes.size() == 2 * characters.size() + 2 &&
           std::ranges::all_of(characters, [&](const auto& each) { return each.holder == shift; });
}

bool SequenceDraft::Insert(const std::vector<Byte>& codes) {
    std::vector<Byte> inserted = codes;
    std::size_t caretCode = m_caret + codes.size();
    const Byte held = HeldAtCaret();
    if (held != 0 && IsTypedWith(held, codes)) {
        inserted.assign(codes.begin() + 1, codes.end() - 1);
        caretCode -= 2;
    } else if (held != 0) {
        inserted.insert(inserted.begin(), static_cast<Byte>(held + kRelease));
        inserted.push_back(held);
        ++caretCode;
    }
    if (inserted.size() > CodesLeft())
        return false;
    std::vector<Byte> changed = m_codes;
    changed.insert(changed.begin() + static_cast<std::ptrdiff_t>(m_caret), inserted.begin(),
                   inserted.end());
    Change(std::move(changed), caretCode);
    return true;
}

void SequenceDraft::Remove(std::size_t item) {
    if (item >= m_items.size())
        return;
    const auto first = m_codes.begin() + static_cast<std::ptrdiff_t>(m_items[item].first);
    std::vector<Byte> changed(m_codes.begin(), first);
    changed.insert(changed.end(), first + static_cast<std::ptrdiff_t>(m_items[item].count),
                   m_codes.end());
    Change(std::move(changed), m_items[item].first);
}

void SequenceDraft::RemoveBefore() {
    if (m_caret == 0)
        return;
    const Place caret = Caret();
    const std::size_t item = caret.before.empty() ? caret.item - 1 : caret.item;
    std::size_t before = CodeAt(item);
    for (const SequenceCharacter& character : CharactersOf(item)) {
        if (character.end == m_caret)
            return RemoveCharacter(character, before);
        before = character.end;
    }
    Remove(item);
}

void SequenceDraft::RemoveAfter() {
    const std::size_t item = Caret().item;
    for (const SequenceCharacter& character : CharactersOf(item))
        if (character.end > m_caret)
            return RemoveCharacter(character, m_caret);
    Remove(item);
}

// With its Shift if that types nothing else.
void SequenceDraft::RemoveCharacter(const SequenceCharacter& character, std::size_t caretCode) {
    const std::size_t last = character.stroke + 1;
    const bool isAlone = character.holder != 0 &&
                         m_codes[character.stroke - 1] == character.holder &&
                         m_codes[last + 1] == character.holder + kRelease;
    const auto first = m_codes.begin() + static_cast<std::ptrdiff_t>(character.stroke);
    std::vector<Byte> changed(m_codes.begin(), isAlone ? first - 1 : first);
    changed.insert(changed.end(), first + (isAlone ? 3 : 2), m_codes.end());
    Change(std::move(changed), caretCode);
}

void SequenceDraft::Move(std::size_t item, std::size_t before) {
    if (item >= m_items.size() || before > m_items.size() || before == item || before == item + 1)
        return;
    const auto iterator = [this](std::size_t code) {
        return m_codes.begin() + static_cast<std::ptrdiff_t>(code);
    };
    const SequenceItem moved = m_items[item];
    const std::size_t target = CodeAt(before);
    if (target <= moved.first) {
        std::rotate(iterator(target), iterator(moved.first), iterator(moved.first + moved.count));
        Change(m_codes, target + moved.count);
    } else {
        std::rotate(iterator(moved.first), iterator(moved.first + moved.count), iterator(target));
        Change(m_codes, target);
    }
}

void SequenceDraft::Clear() {
    Change({}, 0);
}

// The code at which the item begins.
std::size_t SequenceDraft::CodeAt(std::size_t item) const {
    return item < m_items.size() ? m_items[item].first : m_codes.size();
}

std::vector<SequenceCharacter> SequenceDraft::CharactersOf(std::size_t item) const {
    if (item >= m_items.size())
        return {};
    return m_reader.CharactersIn(m_codes, m_items[item]);
}

std::vector<std::size_t> SequenceDraft::Places() const {
    std::vector<std::size_t> places = {0};
    for (std::size_t item = 0; item < m_items.size(); ++item) {
        for (const SequenceCharacter& character : CharactersOf(item))
            places.push_back(character.end);
        if (places.back() != CodeAt(item + 1))
            places.push_back(CodeAt(item + 1));
    }
    return places;
}

void SequenceDraft::SetCaretCode(std::size_t code) {
    const std::vector<std::size_t> places = Places();
    const auto at = std::ranges::lower_bound(places, code);
    m_caret = at == places.end() ? m_codes.size() : *at;
}

void SequenceDraft::Change(std::vector<Byte> codes, std::size_t caretCode) {
    m_codes = std::move(codes);
    m_items = m_reader.Of(m_codes);
    SetCaretCode(caretCode);
}

} // namespace qx
