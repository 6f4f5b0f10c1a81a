// KeyClipboard: sequences on the clipboard: as text, a line for each, with keys as
// docs/sequences.md names them, and exactly, in a form that only this program reads.
#pragma once

#include "qxcontrols/common/Types.h"

#include <vector>

class QMimeData;

namespace qx {
class QXKeyboardLayoutData;
}

namespace qx::app {

using Sequences = std::vector<std::vector<Byte>>;

[[nodiscard]] QMimeData* ToMime(const Sequences& sequences, const QXKeyboardLayoutData& layout);
// The sequences in either form; none where there are none, or what is there cannot be read.
[[nodiscard]] Sequences FromMime(const QMimeData& data, const QXKeyboardLayoutData& layout);

} // namespace qx::app
