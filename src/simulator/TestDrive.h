// TestDrive: presses keys, swipes cards and scans codes on a simulated keyboard, and reports what
// the host PC would receive.
//
// It works on a copy of the settings in the keyboard's memory (not in the image) and changes
// nothing. The rules that do not follow from the settings are the simulated keyboard's own;
// docs/test-drive.md lists all of them:
//
//  - A key sends its POS block's sequence; without one, its sequence as a free key (modules 5, 7,
//    8, 11 in this order); without one, its own make code when pressed and its break code when
//    released. A sequence is sent when the key is pressed; its release sends nothing.
//  - A function key without a sequence sends nothing: it has no code of its own.
//  - The tracks of a card are sent in the order 1 to 4, each as header, data and terminator. A
//    header or terminator is sent if it is enabled and not empty. A track sends nothing if it has
//    no data or no reader head, is disabled, or fails a check.
//  - A symbology is read if its option 0 is on; other options have no effect here. A code that is
//    shorter or longer than its symbology accepts is not read.
#pragma once

#include "qxcontrols/pos/KeySender.h"
#include "qxcontrols/readers/BarcodePage.h"
#include "simulator/KeyboardModel.h"
#include "simulator/Reception.h"

#include <array>
#include <optional>
#include <string>

namespace qx {
class QXKeyboardLayoutData;
} // namespace qx

namespace qx::sim {

// One track of a card; an empty one means that the card does not have it.
struct CardTrack {
    std::string data;              // UTF-8
    bool hasWrongLRC = false;      // its check character does not match its data
    bool hasWrongLastChar = false; // its last character is not the end mark of a track
};
using Card = std::array<CardTrack, 4>;

// Adds what the PC receives when a key is pressed or released, of which the modules hold this. The
// POS key index as in SenderOf.
void AddStroke(Reception& reception, const KeyModules& modules, const QXKeyboardLayoutData& layout,
               const KeyStroke& stroke, Integer nKeyIndex = 0);

class TestDrive {
public:
    // Takes a keyboard's whole memory, and the keyboard's layout, which determines the keys and
    // which of them are programmable. The model and the layout must outlive this object. Throws
    // std::invalid_argument if the memory has the wrong size.
    TestDrive(std::string memory, const KeyboardModel& model, const QXKeyboardLayoutData& layout);

    // Presses or releases the key with a position code, 0 to 140. These functions, and all below,
    // throw std::out_of_range for an unknown key, reader or symbology.
    [[nodiscard]] Reception PressKey(Integer nPositionCode) const;
    [[nodiscard]] Reception ReleaseKey(Integer nPositionCode) const;
    // Presses or releases the key at a POS key index, 1 to 105. This differs from the above if a
    // key has several indexes, because each index has its own block.
    [[nodiscard]] Reception PressPosKey(Integer nKeyIndex) const;
    [[nodiscard]] Reception ReleasePosKey(Integer nKeyIndex) const;

    // Presses function key 0 to 23 while layer 0 to 9 is selected.
    [[nodiscard]] Reception PressFunctionKey(Integer nLayer, Integer nKey) const;

    [[nodiscard]] Reception SwipeCard(const Card& card) const;

    // Scans a code of a symbology, BP_EAN to BP_Plessey, at the barcode reader's input 1 or 2.
    [[nodiscard]] Reception ScanCode(Integer nReader, BarcodePage eSymbology,
                                     const std::string& data) const; // UTF-8

private:
    // The bytes at an offset of a module's area; none if the keyboard does not have the module.
    [[nodiscard]] std::optional<std::string> Block(KeyboardModuleIDs eModule, Long lSize,
                                                   Long lOffset = 0) const;
    [[nodiscard]] Reception NewReception() const;
    [[nodiscard]] Reception Stroke(Integer nPositionCode, Integer nKeyIndex, bool isReleased) const;
    [[nodiscard]] bool HasBlocks(POSKeyboard& blocks, Reception& reception) const;
    [[nodiscard]] bool HasFreeKeys(KeyboardModuleIDs eModule, KeyboardSequences& keys) const;

    std::string m_memory;
    const KeyboardModel& m_model;
    const QXKeyboardLayoutData& m_layout;
};

} // namespace qx::sim
