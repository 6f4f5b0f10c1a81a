// KeyClipboard: what keys contain, on the clipboard: the sequences as text, a line for each, with
// keys as docs/sequences.md names them, and everything exactly, in a form that only this program
// reads.
#pragma once

#include "app/KeyEdits.h"

#include <vector>

class QMimeData;

namespace qx {
class QXKeyboardLayoutData;
}

namespace qx::app {

using KeyContents = std::vector<KeyEdits::Content>;

[[nodiscard]] QMimeData* ToMime(const KeyContents& contents, const QXKeyboardLayoutData& layout);
// The contents in either form; none where there are none, or what is there cannot be read.
[[nodiscard]] KeyContents FromMime(const QMimeData& data, const QXKeyboardLayoutData& layout);

} // namespace qx::app
