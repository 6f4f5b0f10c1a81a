// Key sequences as text that people write: "Ctrl+C Enter ^Enter {30}".
//
// Keys have the names that the layout gives them. The grammar stands in docs/sequences.md. What
// QXKeyboardLayoutData writes with released keys shown reads back as the same codes, unless the
// layout names two keys alike or a key by the words of others, or leaves one without a name.
#pragma once

#include "qxcontrols/common/Types.h"

#include <cstddef>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace qx {

class QXKeyboardLayoutData;

class SequenceTextError : public std::invalid_argument {
public:
    SequenceTextError(std::size_t position, const std::string& message)
        : std::invalid_argument(message), m_position(position) {}

    // Where in the text the fault begins, in bytes from 0.
    [[nodiscard]] std::size_t Position() const { return m_position; }

private:
    std::size_t m_position;
};

// The codes of a text. Throws SequenceTextError, which lists the keys that could have been meant.
[[nodiscard]] std::vector<Byte> ParseSequenceText(std::string_view sText,
                                                  const QXKeyboardLayoutData& layout);

// The text of the codes, which reads back as the same codes. A key without a name, or whose name
// belongs to another key too, is written as its code, {30}.
[[nodiscard]] std::string SequenceToText(std::span<const Byte> codes,
                                         const QXKeyboardLayoutData& layout);

} // namespace qx
