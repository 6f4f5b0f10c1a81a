// KeySequence: the key codes that a programmable key, a header or a terminator sends.
//
// A code below 128 presses the key with that id, a code of 128 or more releases the key with the id
// less 128. The codes are stored as text, three characters per code: the decimal number, padded
// with spaces on the left ("  5200 13" are the codes 5, 200 and 13). The text is ASCII: its
// characters are counted as bytes.
//
// The keyboard stores codes from 0 to 255, one byte each; a 0 ends the sequence. Other codes can be
// in a KeySequence, but not in the keyboard. If one is among the codes that fit the slot:
// - With -1, the block is encoded without this slot, so that everything behind it moves forward.
//   Free keys, layered function keys and readers: this slot and each later one get the sequence of
//   the next, and the last gets blanks (code 32). POS keys, whose records also have a group byte:
//   all later bytes move by 31, so that this key's sequence, and the groups and sequences of all
//   later keys, are wrong.
// - With any other code, the block is not written, and a trace line reports it.
#pragma once

#include "qxcontrols/common/Types.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qx {

// The difference between the code that releases a key and the key's id.
inline constexpr Integer kRelease = 128;

class KeySequence {
public:
    // The number of characters per code in KeyString.
    static constexpr Integer kFieldWidth = 3;

    // Appends a code. Throws std::invalid_argument if it does not fit three characters (1000 or
    // more, -100 or less), std::overflow_error beyond 32767 codes; the sequence is then unchanged.
    void AddByte(Integer nValue);
    // Removes the last code, if there is one.
    void ClearLast();
    // Removes all codes; the position code and the tags are unchanged.
    void Clear();

    [[nodiscard]] Integer Length() const { return m_length; }
    // The code (despite the name) at position nIndex, counted from 1; 0 outside the sequence.
    [[nodiscard]] Integer GetPositionCode(Integer nIndex) const;
    // All codes in order.
    [[nodiscard]] std::vector<Integer> Codes() const;
    // The same as bytes; none if one is not from 0 to 255.
    [[nodiscard]] std::optional<std::vector<Byte>> Bytes() const;
    // Replaces the codes by the bytes, each a code from 0 to 255. Throws std::overflow_error for
    // more than 32767.
    void SetBytes(std::string_view sBytes);

    // The codes as text. Any text is accepted unchanged; its length in codes is a third of its
    // characters, rounded to the nearest whole number. Throws std::overflow_error beyond 32767.
    [[nodiscard]] const std::string& KeyString() const { return m_keyString; }
    void SetKeyString(std::string sKeyString);

    // The key that the sequence belongs to; 0 if none.
    [[nodiscard]] Integer PositionCode() const { return m_positionCode; }
    void SetPositionCode(Integer nPositionCode) { m_positionCode = nPositionCode; }

    // For the owner's use.
    [[nodiscard]] Long Tag1() const { return m_tag1; }
    void SetTag1(Long lTag) { m_tag1 = lTag; }
    [[nodiscard]] Long Tag2() const { return m_tag2; }
    void SetTag2(Long lTag) { m_tag2 = lTag; }

    // Copies everything from oSource; does nothing if it is null.
    void CopyContent(const KeySequence* oSource);

private:
    std::string m_keyString;
    Integer m_length = 0;
    Integer m_positionCode = 0;
    Long m_tag1 = 0;
    Long m_tag2 = 0;
};

// The number in the three-character field of sKeyString at `offset`; leading spaces are ignored,
// and a field that is not a number is read as 0.
[[nodiscard]] Integer CodeAt(const std::string& sKeyString, std::size_t offset);

} // namespace qx
