// The part of frmSequencer that edits at the caret.
#include "qxcontrols/keys/frmSequencer.h"

#include <algorithm>
#include <utility>

namespace qx {

bool frmSequencer::HasRoomFor(std::size_t codes) const {
    return m_sequence.Length() + static_cast<Long>(codes) <= m_maxSeqSize;
}

void frmSequencer::PutIn(Integer nCode) {
    m_sequence.AddByte(nCode);
    if (!m_caret)
        return;
    std::string codes = m_sequence.KeyString();
    std::rotate(codes.begin() + static_cast<std::ptrdiff_t>(*m_caret) * KeySequence::kFieldWidth,
                codes.end() - KeySequence::kFieldWidth, codes.end());
    m_sequence.SetKeyString(std::move(codes));
    ++*m_caret;
}

std::size_t frmSequencer::Caret() const {
    return m_caret.value_or(static_cast<std::size_t>(m_sequence.Length()));
}

void frmSequencer::SetCaret(std::size_t codes) {
    const bool isInside = codes * KeySequence::kFieldWidth < m_sequence.KeyString().size();
    m_caret = isInside ? std::optional(codes) : std::nullopt;
    Refreshed.Raise();
}

void frmSequencer::Hold(Byte key, bool fHeld) {
    std::erase(m_held, key);
    if (fHeld)
        m_held.push_back(key);
}

bool frmSequencer::Insert(const std::vector<Byte>& codes) {
    TraceForm("Insert");
    if (!TakeTyped()) {
        Refreshed.Raise();
        return false;
    }
    if (!HasRoomFor(codes.size())) {
        ShowSizeMsg();
        return false;
    }
    for (const Byte code : codes)
        PutIn(code);
    ShowSequence();
    HideSizeMsg(); // also refreshes the sequence
    return true;
}

void frmSequencer::Rearrange(const std::vector<Byte>& codes, std::size_t caret) {
    TraceForm("Rearrange");
    const bool isPending = HasTyped();
    if (TakeTyped() && !isPending) {
        m_sequence.SetBytes(std::string(codes.begin(), codes.end()));
        ShowSequence();
        lblSizeMsg.Visible = false;
        SetCaret(caret); // also refreshes the sequence
        return;
    }
    Refreshed.Raise();
}

} // namespace qx
