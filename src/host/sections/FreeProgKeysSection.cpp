#include "host/SheetVisitor.h"
#include "host/sections/Sections.h"

#include "qxcontrols/keyprog/QXFreeProgKeys.h"
#include "qxcontrols/keys/KeyName.h"
#include "qxcontrols/pos/KeySender.h"

#include <algorithm>

namespace qx::host {

namespace {

// Each of the modules is a separate section.
template <std::size_t Index>
constexpr Area kAreas[] = {{kFreeKeyModules[Index], 0, kFreeProgKeySlotSize}};
constexpr SectionInfo kInfos[] = {
    {"freeProgKeys", "Free keys", kAreas<0>, "keys"},
    {"funcKeys4610", "Function keys 4610", kAreas<1>, "keys"},
    {"funcKeys4620", "Function keys 4620", kAreas<2>, "keys"},
    {"funcKeys4630", "Function keys 4630", kAreas<3>, "keys"},
};
static_assert(std::size(kInfos) == std::size(kFreeKeyModules));

class FreeProgKeysSection : public SectionOf<QXFreeProgKeys> {
public:
    FreeProgKeysSection(const SectionInfo& info, const Platform& platform)
        : SectionOf(info, platform) {
        Control().SetConfigID(info.areas[0].module);
    }

    void Visit(FieldVisitor& fields) override {
        const std::vector<Integer> stored = StoredKeys();
        FieldList list;
        list.field = {Info().list, ""};
        list.keyMembers = {
            {"positionCode", "Key", KeyboardSequences::kMinKeyID, KeyboardSequences::kMaxKeyID}};
        for (const Integer key : stored)
            if (Control().Sequences().Key(key).Length() > 0)
                list.present.push_back({key});
        list.clear = [this] { Control().Sequences().CleanAll(); };
        list.visit = [&](const FieldList::Id& id) {
            if (std::find(stored.begin(), stored.end(), id[0]) == stored.end())
                fields.Refuse({"positionCode", ""}, {"", json::FaultKind::NotProgrammable,
                                                     KeyName(id[0], Control().LayoutSource())});
            fields.Sequence({"sequence", ""}, Control().Sequences().Key(id[0]),
                            static_cast<Integer>(kFreeProgKeySlotSize));
        };
        list.possible = [&] {
            std::vector<FieldList::Id> ids;
            for (const Integer key : stored)
                ids.push_back({key});
            return ids;
        };
        list.positionCodeOf = [](const FieldList::Id& id) { return Long{id[0]}; };
        fields.List(list);
    }

    void VisitSheet(SheetVisitor& sheet) const override { sheet.Keyboard(Control().Sequences()); }

    void AddTo(KeyModules& modules, Integer nPositionCode) override {
        const std::vector<Integer> stored = StoredKeys();
        const auto module = std::ranges::find(kFreeKeyModules, Info().areas[0].module);
        if (std::ranges::find(stored, nPositionCode) != stored.end())
            modules.freeKeys.at(static_cast<std::size_t>(module - kFreeKeyModules.begin())) =
                &Control().Sequences().Key(nPositionCode);
    }

private:
    // The keys that the keyboard stores; without its layout, all keys in its stored order.
    [[nodiscard]] std::vector<Integer> StoredKeys() {
        if (Control().LayoutSource() != nullptr)
            return StoredFreeProgKeys(Control().Sequences(), Control().ConfigID());
        KeyboardSequences any;
        for (Integer id = any.MinKeyID(); id <= any.MaxKeyID(); ++id)
            any.Key(id).SetPositionCode(id);
        return StoredFreeProgKeys(any, Control().ConfigID());
    }
};

} // namespace

std::vector<std::unique_ptr<Section>> MakeFreeProgKeysSections(const Platform& platform) {
    std::vector<std::unique_ptr<Section>> sections;
    for (const SectionInfo& info : kInfos)
        sections.push_back(std::make_unique<FreeProgKeysSection>(info, platform));
    return sections;
}

} // namespace qx::host
