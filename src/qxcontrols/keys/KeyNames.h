// KeyNames: finds the keys of a layout by name.
//
// Here a key's name is its KeyLabel; the long caption is a second name.
#pragma once

#include "qxcontrols/common/Types.h"
#include "qxcontrols/keys/KeySequence.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace qx {

class QXKeyboardLayoutData;

class KeyNames {
public:
    // Keys from here on cannot be pressed by a sequence: their codes are used for releases.
    static constexpr Long kFirstUnpressable = kRelease;

    explicit KeyNames(const QXKeyboardLayoutData& layout);

    // The key's name; empty if it has none.
    [[nodiscard]] const std::string& Name(Long lID) const;

    // The keys that a text can refer to: those with this name; else those with this long caption;
    // else those with this name or long caption, ignoring case. One key means that the text is
    // unambiguous. Keys that cannot be pressed are found only if no other key is.
    [[nodiscard]] std::vector<Long> Find(std::string_view sText) const;

    // The keys that type this character with Shift.
    [[nodiscard]] std::vector<Long> FindShifted(std::string_view sText) const;

    // The longest name of several words at the start of the text, up to a space or its end; empty
    // if there is none.
    [[nodiscard]] std::string_view FindWords(std::string_view sText) const;
    // Whether the text is the beginning (in whole words) of a key's name.
    [[nodiscard]] bool BeginsWords(std::string_view sText) const;

    // The keys whose names are most similar to the text, if any is similar.
    [[nodiscard]] std::vector<Long> Nearest(std::string_view sText) const;

private:
    struct Key {
        Long id;
        std::string name;
        std::string longCaption;
        std::u16string foldedName;
        std::u16string foldedLongCaption;
        std::u16string shifted; // what the key types with Shift
    };

    template <typename Matches>
    [[nodiscard]] std::vector<Long> KeysWhere(bool pressable, Matches matches) const;

    std::vector<Key> m_keys;   // those with a name
    std::size_t m_longest = 0; // bytes of a name or long caption; limits the time for a huge text
};

} // namespace qx
