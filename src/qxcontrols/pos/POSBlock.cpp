#include "qxcontrols/pos/POSBlock.h"

#include "qxcontrols/common/Trace.h"

#include <algorithm>

namespace qx {

void POSBlock::AddKey(Integer nKey) {
    if (BlockSize() < kMaxKeys)
        m_keys.push_back(nKey);
}

bool POSBlock::HasKey(Integer nKey) const {
    return std::find(m_keys.begin(), m_keys.end(), nKey) != m_keys.end();
}

Integer POSBlock::GetKey(Integer nIndex) const {
    if (nIndex < 1 || nIndex > BlockSize())
        return 0;
    return m_keys[static_cast<std::size_t>(nIndex - 1)];
}

void POSBlock::CleanLast() {
    if (!m_keys.empty())
        m_keys.pop_back();
}

void POSBlock::Clean() {
    m_keys.clear();
}

void POSBlock::CopyContent(const POSBlock* oSource) {
    Trace("POSBlock.CopyContent");
    if (oSource != nullptr)
        *this = *oSource;
}

} // namespace qx
