// SequenceDraft: a sequence while it is edited, item by item.
//
// A caret is before, between or after the items; keys are inserted there. Every operation is either
// done completely or changes nothing.
#pragma once

#include "qxcontrols/keys/SequenceItems.h"

#include <vector>

namespace qx {

class SequenceDraft {
public:
    // For a slot of `capacity` codes, with the names of the layout.
    SequenceDraft(const QXKeyboardLayoutData& layout, std::size_t capacity);

    // Starts with these codes, 1 to 255 each, and the caret behind them.
    void Start(std::vector<Byte> codes);

    [[nodiscard]] const std::vector<Byte>& Codes() const { return m_codes; }
    [[nodiscard]] const std::vector<SequenceItem>& Items() const { return m_items; }
    [[nodiscard]] std::size_t CodesLeft() const;
    // The item after the caret; the number of items if the caret is after the last one.
    [[nodiscard]] std::size_t Caret() const { return m_caret; }
    void SetCaret(std::size_t item); // at most the number of items
    // The same as the number of codes before it; the caret goes to the first item that begins there
    // or later.
    [[nodiscard]] std::size_t CaretCode() const { return CodeAt(m_caret); }
    void SetCaretCode(std::size_t code);

    // The keys that are held while others are put in, such as 58 for Ctrl; in the order in which
    // they were pressed.
    void Hold(Byte key, bool isHeld);
    [[nodiscard]] bool IsHeld(Byte key) const;

    // Puts in a key, 1 to 127, pressed and released while the held keys are down. False when the
    // codes do not fit.
    [[nodiscard]] bool Press(Byte key);
    // Puts in codes as they are, 1 to 255 each. False when they do not fit.
    [[nodiscard]] bool Insert(const std::vector<Byte>& codes);

    void Remove(std::size_t item);
    // The last key before the caret, or of a text its last character.
    void RemoveBefore();
    // Moves an item to before another; `before` may be the number of items.
    void Move(std::size_t item, std::size_t before);
    void Clear();

private:
    [[nodiscard]] std::size_t CodeAt(std::size_t item) const;
    void Change(std::vector<Byte> codes, std::size_t caretCode);

    SequenceItems m_reader;
    std::size_t m_capacity;
    std::vector<Byte> m_codes;
    std::vector<SequenceItem> m_items; // of m_codes
    std::size_t m_caret = 0;
    std::vector<Byte> m_held;
};

} // namespace qx
