#include "host/KeySenders.h"

#include "host/PlacedVisitor.h"

#include <algorithm>

namespace qx::host {

KeyModules ModulesOf(const std::vector<Section*>& sections, Integer nPositionCode) {
    KeyModules modules;
    for (Section* section : sections)
        section->AddTo(modules, nPositionCode);
    return modules;
}

std::optional<SentSequence> SentBy(const std::vector<Section*>& sections, Integer nPositionCode,
                                   Integer nPosKey) {
    const KeySender sender = SenderOf(ModulesOf(sections, nPositionCode), nPositionCode, nPosKey);
    const auto found = std::ranges::find_if(sections, [&](const Section* section) {
        return section->Info().areas[0].module == sender.module;
    });
    if (sender.sequence == nullptr || found == sections.end())
        return std::nullopt;
    const std::string list = sender.module == MODULE_POS ? "/blocks" : "/keys";
    return SentSequence{*found, sender.key,
                        ElementPlace("/" + std::string((*found)->Info().key) + list, {sender.slot}),
                        sender.sequence};
}

} // namespace qx::host
