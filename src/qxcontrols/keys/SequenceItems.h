// Sequences as people read them: "Ctrl+C", "10" and "Enter" in place of single presses and
// releases.
#pragma once

#include "qxcontrols/common/Types.h"
#include "qxcontrols/keys/KeySequence.h"

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace qx {

class QXKeyboardLayoutData;

// Some codes of a sequence that belong together.
struct SequenceItem {
    enum class Kind {
        Text,    // keys that type characters, with Shift where they need it: "10"
        Key,     // a key, pressed and released: "Enter"
        Chord,   // keys pressed and released while Shift, Ctrl or Alt is down: "Ctrl+C"
        Press,   // a press alone: "Shift↓"
        Release, // a release alone: "Shift↑"
    };

    Kind kind;
    std::size_t first; // of the codes, from 0
    std::size_t count;
    std::string text;

    bool operator==(const SequenceItem&) const = default;
};

// A character of an item that is a text.
struct SequenceCharacter {
    std::size_t stroke; // the index of the press of its key; the release follows
    std::size_t end;    // the index behind its codes, and behind the release of Shift after it
    Byte holder;        // the Shift that is held meanwhile; 0 for none
    std::string text;
};

class SequenceItems {
public:
    // Copies the names and characters from the layout, which need not outlive it. A key without a
    // name has its number in braces, "{14}".
    explicit SequenceItems(const QXKeyboardLayoutData& layout);

    // The items of the codes, 1 to 255 each: every code belongs to one of them, in their order.
    [[nodiscard]] std::vector<SequenceItem> Of(std::span<const Byte> codes) const;
    // The characters of one of the items; empty if the item is not a text.
    [[nodiscard]] std::vector<SequenceCharacter> CharactersIn(std::span<const Byte> codes,
                                                              const SequenceItem& item) const;
    // The texts of the items, with blanks between them.
    [[nodiscard]] std::string Text(std::span<const Byte> codes) const;

private:
    struct Key {
        std::string name;
        std::string plain;   // the character that it types, UTF-8; empty for none
        std::string shifted; // the same with Shift
    };
    // The items, texts being in pieces: one for each group of characters that Shift types, and for
    // each other one.
    [[nodiscard]] std::vector<SequenceItem> SinglesOf(std::span<const Byte> codes) const;
    [[nodiscard]] std::optional<SequenceItem> Stroke(std::span<const Byte> codes,
                                                     std::size_t at) const;
    // `down` are the keys that are held already.
    [[nodiscard]] std::optional<SequenceItem> Held(std::span<const Byte> codes, std::size_t at,
                                                   std::vector<Byte> down = {}) const;

    std::array<Key, kRelease> m_keys;
};

} // namespace qx
