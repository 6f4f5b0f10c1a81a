#include "views/SentTexts.h"

#include "qxcontrols/keys/SequenceCaption.h"
#include "views/Bindings.h"

namespace qx::views {

QString SentTexts::Brief(const KeySequence& sequence) {
    const auto bytes = sequence.Bytes();
    if (m_layout == nullptr || !bytes)
        return Whole(sequence);
    if (!m_items)
        m_items.emplace(*m_layout);
    return ToQt(m_items->Text(*bytes));
}

QString SentTexts::Whole(const KeySequence& sequence) const {
    return ToQt(SequenceCaption(sequence, m_layout, false)).trimmed();
}

} // namespace qx::views
