// Key sequences as text that people write: "Ctrl+C Enter ^Enter {30}".
//
// Keys are named as in the layout. The grammar is in docs/sequences.md. The text that
// QXKeyboardLayoutData writes with released keys reads back as the same codes, unless the layout
// gives two keys the same name, names a key by the words of others, or leaves one without a name.
#pragma once

#include "qxcontrols/common/Types.h"
#include "qxcontrols/keys/TextFault.h"

#include <array>
#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace qx {

class KeyNames;
class QXKeyboardLayoutData;

class SequenceTextError : public TextFaultError {
public:
    SequenceTextError(std::size_t position, TextFault fault)
        : TextFaultError(std::move(fault)), m_position(position) {}

    // The position of the error in the text, in bytes from 0.
    [[nodiscard]] std::size_t Position() const { return m_position; }

private:
    std::size_t m_position;
};

// The codes of a text. Throws SequenceTextError, which lists the possible keys.
[[nodiscard]] std::vector<Byte> ParseSequenceText(std::string_view sText,
                                                  const QXKeyboardLayoutData& layout);

// A text that reads back as the same codes. A key without a name, or with the name of another key,
// is written as its code, {30}.
[[nodiscard]] std::string SequenceToText(std::span<const Byte> codes,
                                         const QXKeyboardLayoutData& layout);

// Writes many sequences like SequenceToText, looking up names only once.
class SequenceWriter {
public:
    // The layout must outlive the writer and must not change.
    explicit SequenceWriter(const QXKeyboardLayoutData& layout);
    ~SequenceWriter();
    SequenceWriter(const SequenceWriter&) = delete;
    SequenceWriter& operator=(const SequenceWriter&) = delete;

    [[nodiscard]] std::string Text(std::span<const Byte> codes);

private:
    const QXKeyboardLayoutData& m_layout;
    std::unique_ptr<const KeyNames> m_names;
    std::array<std::string, 256> m_tokens; // by code, once it has been written
};

} // namespace qx
