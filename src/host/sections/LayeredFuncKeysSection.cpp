#include "host/sections/Sections.h"

#include "qxcontrols/keyprog/QXLayeredFuncKeys.h"

namespace qx::host {

namespace {

constexpr Area kAreas[] = {
    {MODULE_LAYERED_FUNCKEYS, kFuncKeySequencesSize},
    {MODULE_GUID, kFuncKeyGuidSize, false},
    {MODULE_LAYER_FUNCKEY_DESC, kFuncKeyDescSize, false, kFuncKeyDescAddress},
};
constexpr SectionInfo kInfo = {"layeredFuncKeys", "layered function key", kAreas};

constexpr Integer kLastLayer = kFuncKeyLayers - 1;
constexpr Integer kLastKey = FuncKeyLayer::kKeys - 1;

class LayeredFuncKeysSection : public SectionOf<QXLayeredFuncKeys> {
public:
    using SectionOf::SectionOf;

    void LacksArea(KeyboardModuleIDs eModule, bool fSkip) override {
        m_lacksGuid = m_lacksGuid || eModule == MODULE_GUID;
        m_skipsGuid = fSkip;
    }

    [[nodiscard]] bool Keeps(KeyboardModuleIDs eModule) const override {
        return eModule == MODULE_GUID && m_keepsGuid;
    }

    void Uploaded() override { m_keepsGuid = false; }

    void Visit(FieldVisitor& fields) override {
        VisitGuid(fields);
        FieldList list;
        list.field = {"keys", ""};
        list.keyMembers = {{"layer", 0, kLastLayer}, {"key", 0, kLastKey}};
        list.present = KeysWithContent();
        list.clear = [this] { Control().DefaultValues(); };
        list.visit = [&](const FieldList::Id& id) { VisitKey(fields, id[0], id[1]); };
        list.elementLabel = [](const FieldList::Id& id) {
            return "layer " + std::to_string(id[0]) + " key " + std::to_string(id[1]);
        };
        fields.List(list);
    }

private:
    void VisitGuid(FieldVisitor& fields) {
        constexpr Field kField = {"guid", "identifier", false, true, true};
        constexpr std::size_t kTextUnits = 38;
        const bool hasNone = fields.IsReading() || m_lacksGuid || m_keepsGuid;
        const std::string present = hasNone ? std::string() : ToText(Control().Identifier());
        const std::string text = fields.Text(kField, present, kTextUnits);
        if (!fields.IsReading())
            return;
        m_keepsGuid = text.empty();
        if (m_keepsGuid)
            return;
        if (m_lacksGuid) {
            if (!m_skipsGuid)
                fields.Refuse(kField, "this keyboard stores no identifier");
        } else if (const auto guid = GuidFromText(text)) {
            Control().SetIdentifier(*guid);
        } else {
            fields.Refuse(kField, "\"" + text + "\" is not an identifier like " +
                                      ToText(Control().Identifier()));
        }
    }

    void VisitKey(FieldVisitor& fields, Integer nLayer, Integer nKey) {
        FuncKeyLayer& layer = Control().Layer(nLayer);
        fields.Sequence({"sequence", "", false}, layer.GetKey(nKey),
                        static_cast<Integer>(kFuncKeySlotSize));
        layer.SetKeyDesc(nKey, fields.Text({"description", "description", false},
                                           layer.GetKeyDesc(nKey), kFuncKeyDescLength));
    }

    [[nodiscard]] std::vector<FieldList::Id> KeysWithContent() {
        std::vector<FieldList::Id> keys;
        for (Integer layer = 0; layer <= kLastLayer; ++layer)
            for (Integer key = 0; key <= kLastKey; ++key)
                if (Control().Layer(layer).GetKey(key).Length() > 0 ||
                    !Control().Layer(layer).GetKeyDesc(key).empty())
                    keys.push_back({layer, key});
        return keys;
    }

    bool m_keepsGuid = false; // what was read has no identifier: the keyboard's own stays
    bool m_lacksGuid = false;
    bool m_skipsGuid = false;
};

} // namespace

std::unique_ptr<Section> MakeLayeredFuncKeysSection(const Platform& platform) {
    return std::make_unique<LayeredFuncKeysSection>(kInfo, platform);
}

} // namespace qx::host
