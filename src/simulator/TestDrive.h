// TestDrive: presses keys, swipes cards and scans codes on a simulated keyboard, and tells what the
// host PC would receive.
//
// It answers from the settings in the keyboard's memory, not from the image, as they were when it
// was made; it changes nothing. The rules, beyond what the settings themselves say, are the
// simulated keyboard's own; docs/test-drive.md has them all:
//
//  - A key sends its POS block's sequence; without one its sequence as a free key, the modules in
//    the order 5, 7, 8, 11; without one its own make code when pressed and its break code when
//    released. A sequence is sent when the key is pressed, and nothing when it is released.
//  - A function key without a sequence sends nothing: it has no code of its own.
//  - The tracks of a card come in the order 1 to 4, each as header, data and terminator. A header
//    or terminator is sent when it is switched on and not empty. A track without data, without a
//    reader head or switched off is silent; so is one that a check refuses.
//  - A symbology is read when its option 0 is on; other options change nothing here. A code shorter
//    or longer than its symbology accepts gives nothing.
#pragma once

#include "qxcontrols/readers/BarcodePage.h"
#include "simulator/KeyboardModel.h"
#include "simulator/Reception.h"

#include <array>
#include <optional>
#include <string>

namespace qx {
class KeySequence;
class QXKeyboardLayoutData;
} // namespace qx

namespace qx::sim {

// One track of a card; without data the card has no such track.
struct CardTrack {
    std::string data;              // UTF-8
    bool hasWrongLRC = false;      // its check character does not fit its data
    bool hasWrongLastChar = false; // its last character is not the one that ends a track
};
using Card = std::array<CardTrack, 4>;

class TestDrive {
public:
    // Over a keyboard's whole memory. The layout is the keyboard's: it tells which keys there are
    // and which of them are programmable. The model and the layout stay alive as long as this
    // object. Throws std::invalid_argument when the memory is not of its size.
    TestDrive(std::string memory, const KeyboardModel& model, const QXKeyboardLayoutData& layout);

    // Presses, or releases, the key with a position code, 0 to 140. These throw std::out_of_range
    // for what they do not know, as do all below.
    [[nodiscard]] Reception PressKey(Integer nPositionCode) const;
    [[nodiscard]] Reception ReleaseKey(Integer nPositionCode) const;
    // Presses, or releases, the key at a POS key index, 1 to 105. They differ from the above in a
    // key that stands at several indexes: each of these has a block of its own.
    [[nodiscard]] Reception PressPosKey(Integer nKeyIndex) const;
    [[nodiscard]] Reception ReleasePosKey(Integer nKeyIndex) const;

    // Presses function key 0 to 23 while layer 0 to 9 is selected.
    [[nodiscard]] Reception PressFunctionKey(Integer nLayer, Integer nKey) const;

    [[nodiscard]] Reception SwipeCard(const Card& card) const;

    // Scans a code of a symbology, BP_EAN to BP_Plessey, at the barcode reader's input 1 or 2.
    [[nodiscard]] Reception ScanCode(Integer nReader, BarcodePage eSymbology,
                                     const std::string& data) const; // UTF-8

private:
    // The bytes at an offset of a module's area; none when the keyboard lacks the module.
    [[nodiscard]] std::optional<std::string> Block(KeyboardModuleIDs eModule, Long lSize,
                                                   Long lOffset = 0) const;
    [[nodiscard]] Reception NewReception() const;
    [[nodiscard]] Reception Stroke(Integer nPositionCode, Integer nKeyIndex, bool isReleased) const;
    [[nodiscard]] Stretch PosSequence(Integer nPositionCode, Integer nKeyIndex,
                                      Reception& reception) const;
    [[nodiscard]] Stretch FreeSequence(Integer nPositionCode) const;

    std::string m_memory;
    const KeyboardModel& m_model;
    const QXKeyboardLayoutData& m_layout;
};

} // namespace qx::sim
