#include "host/KeySenders.h"

#include "host/Configuration.h"
#include "host/PlacedVisitor.h"

#include <algorithm>

namespace qx::host {

namespace {

bool IsOf(const Section& section, KeyboardModuleIDs eModule) {
    return section.Info().areas[0].module == eModule;
}

} // namespace

KeyModules ModulesOf(const std::vector<Section*>& sections, Integer nPositionCode) {
    KeyModules modules;
    for (Section* section : sections)
        section->AddTo(modules, nPositionCode);
    return modules;
}

std::optional<SentSequence> SentBy(const std::vector<Section*>& sections, Integer nPositionCode,
                                   Integer nPosKey) {
    const KeySender sender = SenderOf(ModulesOf(sections, nPositionCode), nPositionCode, nPosKey);
    const auto found = std::ranges::find_if(
        sections, [&](const Section* section) { return IsOf(*section, sender.module); });
    if (sender.sequence == nullptr || found == sections.end())
        return std::nullopt;
    return SentSequence{*found, sender.key, ElementOf((*found)->Info(), {sender.slot}),
                        sender.sequence};
}

SettingName NameOf(const Configuration& configuration, KeyboardModuleIDs eModule, Integer nKey,
                   std::optional<Integer> layer) {
    const FieldList::Id id = layer ? FieldList::Id{*layer, nKey} : FieldList::Id{nKey};
    for (const auto& section : configuration.Sections())
        if (IsOf(*section, eModule))
            return configuration.NameOf(*section, ElementOf(section->Info(), id));
    return {};
}

} // namespace qx::host
