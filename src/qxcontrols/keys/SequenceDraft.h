// SequenceDraft: a sequence while it is edited, item by item.
//
// A caret is before, between or after the items, or between the characters of a text; keys are
// inserted there. Every operation is either done completely or changes nothing.
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
    // The item after the caret, or around it; the number of items if the caret is after the last
    // one. Of a text around the caret, `before` is the part before it.
    struct Place {
        std::size_t item;
        std::string before;
    };
    [[nodiscard]] Place Caret() const;
    // Before an item, at most the number of items; or behind so many characters of its text.
    void SetCaret(std::size_t item, std::size_t characters = 0);
    // To the next place behind (1) or before (-1), if there is one.
    void StepCaret(int by);
    // The number of codes before the caret. It goes to the first place from there on.
    [[nodiscard]] std::size_t CaretCode() const { return m_caret; }
    void SetCaretCode(std::size_t code);
    // The Shift that is held at the caret, between characters that it types; 0 for none.
    [[nodiscard]] Byte HeldAtCaret() const;

    // The keys that are held while others are put in, such as 58 for Ctrl; in the order in which
    // they were pressed.
    void Hold(Byte key, bool isHeld);
    [[nodiscard]] bool IsHeld(Byte key) const;

    // Puts in a key, 1 to 127, pressed and released while the held keys are down. False when the
    // codes do not fit.
    [[nodiscard]] bool Press(Byte key);
    // Puts in codes, 1 to 255 each: as they are, except between characters that Shift types. There
    // Shift is released before and pressed again behind them, or they do without their own Shift.
    // False when they do not fit.
    [[nodiscard]] bool Insert(const std::vector<Byte>& codes);

    void Remove(std::size_t item);
    // The key before or after the caret; of a text, one character.
    void RemoveBefore();
    void RemoveAfter();
    // Moves an item to before another; `before` may be the number of items.
    void Move(std::size_t item, std::size_t before);
    void Clear();

private:
    [[nodiscard]] std::size_t CodeAt(std::size_t item) const;
    [[nodiscard]] std::vector<SequenceCharacter> CharactersOf(std::size_t item) const;
    [[nodiscard]] bool IsTypedWith(Byte shift, const std::vector<Byte>& codes) const;
    [[nodiscard]] std::vector<std::size_t> Places() const; // of the caret, as codes
    void RemoveCharacter(const SequenceCharacter& character, std::size_t caretCode);
    void Change(std::vector<Byte> codes, std::size_t caretCode);

    SequenceItems m_reader;
    std::size_t m_capacity;
    std::vector<Byte> m_codes;
    std::vector<SequenceItem> m_items; // of m_codes
    std::size_t m_caret = 0;           // the codes before it
    std::vector<Byte> m_held;
};

} // namespace qx
