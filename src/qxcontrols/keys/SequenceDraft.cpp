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

void SequenceDraft::SetCaret(std::size_t item) {
    m_caret = std::min(item, m_items.size());
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

bool SequenceDraft::Insert(const std::vector<Byte>& codes) {
    if (codes.size() > CodesLeft())
        return false;
    std::vector<Byte> changed = m_codes;
    const std::size_t at = CodeAt(m_caret);
    changed.insert(changed.begin() + static_cast<std::ptrdiff_t>(at), codes.begin(), codes.end());
    Change(std::move(changed), at + codes.size());
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
    const std::size_t at = CodeAt(m_caret);
    const std::vector<Byte> before(m_codes.begin(),
                                   m_codes.begin() + static_cast<std::ptrdiff_t>(at));
    const std::vector<SequenceItem> singles = m_reader.SinglesOf(before);
    if (singles.empty())
        return;
    const auto first = static_cast<std::ptrdiff_t>(singles.back().first);
    std::vector<Byte> changed(m_codes.begin(), m_codes.begin() + first);
    changed.insert(changed.end(), m_codes.begin() + static_cast<std::ptrdiff_t>(at), m_codes.end());
    Change(std::move(changed), singles.back().first);
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

void SequenceDraft::SetCaretCode(std::size_t code) {
    const auto at =
        std::ranges::find_if(m_items, [&](const SequenceItem& item) { return item.first >= code; });
    m_caret = static_cast<std::size_t>(at - m_items.begin());
}

void SequenceDraft::Change(std::vector<Byte> codes, std::size_t caretCode) {
    m_codes = std::move(codes);
    m_items = m_reader.Of(m_codes);
    SetCaretCode(caretCode);
}

} // namespace qx
