#include "qxcontrols/keyprog/FuncKeyLayer.h"

#include "qxcontrols/common/Trace.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace qx {

std::string FuncKeyLegend(Integer nKeyID) {
    return "F" + std::to_string(nKeyID + 1);
}

const FuncKeyLayer::FuncKey& FuncKeyLayer::At(Integer nKeyID) const {
    if (nKeyID < 0 || nKeyID >= kKeys)
        throw std::out_of_range("function key " + std::to_string(nKeyID) +
                                " is not one of 0 to 23");
    return m_keys[static_cast<std::size_t>(nKeyID)];
}

FuncKeyLayer::FuncKey& FuncKeyLayer::At(Integer nKeyID) {
    return const_cast<FuncKey&>(std::as_const(*this).At(nKeyID));
}

const std::string& FuncKeyLayer::GetKeyDesc(Integer nKeyID) const {
    return At(nKeyID).description;
}

void FuncKeyLayer::SetKeyDesc(Integer nKeyID, std::string sDesc) {
    At(nKeyID).description = std::move(sDesc);
}

KeySequence& FuncKeyLayer::GetKey(Integer nKeyID) {
    return At(nKeyID).sequence;
}

const KeySequence& FuncKeyLayer::GetKey(Integer nKeyID) const {
    return At(nKeyID).sequence;
}

Integer FuncKeyLayer::CountProgrammed() const {
    return static_cast<Integer>(std::ranges::count_if(
        m_keys, [](const FuncKey& key) { return key.sequence.Length() > 0; }));
}

void FuncKeyLayer::CleanLayer() {
    Trace("FuncKeyLayer.CleanLayer");
    for (FuncKey& key : m_keys)
        key.sequence.Clear();
}

} // namespace qx
