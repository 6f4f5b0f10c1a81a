// KeyNames: finds the keys of a layout by what people call them.
//
// A key's name is its short caption, or the long one where the short one is blank, without the
// blanks at its ends. The long caption is a second name.
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
    // Keys from here on cannot be pressed through a sequence: their codes are those of releases.
    static constexpr Long kFirstUnpressable = kRelease;

    explicit KeyNames(const QXKeyboardLayoutData& layout);

    // The key's name; empty when it has none.
    [[nodiscard]] const std::string& Name(Long lID) const;

    // The keys that a text means: those whose name it is; else those whose long caption it is;
    // else those whose name or long caption it is but for upper and lower case. One key: the text
    // is clear. Keys that cannot be pressed are found only where no other key is.
    [[nodiscard]] std::vector<Long> Find(std::string_view sText) const;

    // The keys that type this character with Shift.
    [[nodiscard]] std::vector<Long> FindShifted(std::string_view sText) const;

    // The longest name of several words with which the text begins, up to a blank or its end;
    // empty when there is none.
    [[nodiscard]] std::string_view FindWords(std::string_view sText) const;
    // Whether the text is the first words of the name of a key.
    [[nodiscard]] bool BeginsWords(std::string_view sText) const;

    // The keys with the names that differ least from the text, if it resembles any.
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
    std::size_t m_longest = 0; // bytes of a name or long caption, so that a huge text costs no time
};

} // namespace qx
