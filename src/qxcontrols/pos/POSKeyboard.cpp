#include "qxcontrols/pos/POSKeyboard.h"

#include "qxcontrols/common/Trace.h"
#include "qxcontrols/pos/POSNumber.h"

#include <algorithm>
#include <string>
#include <utility>

namespace qx {

const POSBlock& POSKeyboard::Block(Integer nIndex) const {
    RequirePOSNumber("POS block", nIndex);
    return m_blocks[static_cast<std::size_t>(nIndex - 1)];
}

POSBlock& POSKeyboard::Block(Integer nIndex) {
    return const_cast<POSBlock&>(std::as_const(*this).Block(nIndex));
}

Integer POSKeyboard::FindBlockForKey(Integer nKey) const {
    const auto found = std::find_if(m_blocks.begin(), m_blocks.end(),
                                    [nKey](const POSBlock& block) { return block.HasKey(nKey); });
    return found == m_blocks.end() ? Integer{0}
                                   : static_cast<Integer>(found - m_blocks.begin() + 1);
}

void POSKeyboard::CalcDefinedBlockNum() {
    Trace("POSKeyboard.CalcDefinedBlockNum");
    m_blockNum = static_cast<Integer>(
        std::count_if(m_blocks.begin(), m_blocks.end(),
                      [](const POSBlock& block) { return block.BlockSize() > 0; }));
}

void POSKeyboard::CleanAllBlocks() {
    Trace("POSKeyboard.CleanAllBlocks");
    for (POSBlock& block : m_blocks) {
        block.Clean();
        block.Sequence().Clear();
    }
    m_blockNum = 0;
}

void POSKeyboard::CopyContent(const POSKeyboard* oSource) {
    Trace("POSKeyboard.CopyContent");
    if (oSource == nullptr)
        return;
    m_blocks = oSource->m_blocks;
    CalcDefinedBlockNum();
}

} // namespace qx
