#include "views/SentTexts.h"

#include "qxcontrols/keys/SequenceCaption.h"
#include "views/Bindings.h"

namespace qx::views {

QString SentTexts::Brief(const KeySequence& sequence) {
    std::vector<Byte> codes;
    for (const Integer code : sequence.Codes()) {
        if (code < 0 || code > 255)
            return Whole(sequence);
        codes.push_back(static_cast<Byte>(code));
    }
    if (m_layout == nullptr)
        return Whole(sequence);
    if (!m_items)
        m_items.emplace(*m_layout);
    return ToQt(m_items->Text(codes));
}

QString SentTexts::Whole(const KeySequence& sequence) const {
    return ToQt(SequenceCaption(sequence, m_layout, false)).trimmed();
}

} // namespace qx::views
