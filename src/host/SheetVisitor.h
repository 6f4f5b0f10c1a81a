// SheetVisitor: receives what a section has for a key sheet. A module that has something of one of
// these kinds is on the sheet without a change there.
#pragma once

#include "qxcontrols/common/Types.h"

namespace qx {
class FuncKeyLayer;
class KeyboardSequences;
class MagneticTrack;
class POSCodeMapping;
class POSKeyboard;
} // namespace qx

namespace qx::host {

class SheetVisitor {
public:
    virtual ~SheetVisitor() = default;

    // What the keys of the whole keyboard send.
    virtual void Keyboard(const KeyboardSequences& sequences) = 0;
    // Function keys. The layers count from 0.
    virtual void Layer(Integer nLayer, const FuncKeyLayer& layer) = 0;
    // Keys that act together.
    virtual void Blocks(const POSKeyboard& blocks, const POSCodeMapping& codes) = 0;
    // What is sent before and after the data of one input of a reader. Both count from 1.
    virtual void Track(Integer nTrack, const MagneticTrack& track) = 0;
    virtual void Reader(Integer nReader, const MagneticTrack& reader) = 0;
};

} // namespace qx::host
