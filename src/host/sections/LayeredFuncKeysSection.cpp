#include "host/KeyboardContent.h"
#include "host/SheetVisitor.h"
#include "host/sections/Sections.h"

#include "qxcontrols/common/Utf.h"
#include "qxcontrols/keyprog/QXLayeredFuncKeys.h"

namespace qx::host {

namespace {

constexpr Area kAreas[] = {
    {MODULE_LAYERED_FUNCKEYS, kFuncKeySequencesSize, kFuncKeySlotSize},
    {MODULE_GUID, kGuidSize, 0, false},
    {MODULE_LAYER_FUNCKEY_DESC, kFuncKeyDescSize, kFuncKeyDescSlotSize, false, kFuncKeyDescAddress},
};
constexpr SectionInfo kInfo = {"layeredFuncKeys", "Layered function keys", kAreas, "keys"};

constexpr Integer kLastLayer = kFuncKeyLayers - 1;
constexpr Integer kLastKey = FuncKeyLayer::kKeys - 1;

class LayeredFuncKeysSection : public SectionOf<QXLayeredFuncKeys> {
public:
    using SectionOf::SectionOf;

    void NoteArea(KeyboardModuleIDs eModule, bool fPresent, bool fSkip) override {
        if (eModule == MODULE_GUID)
            m_lacksGuid = !fPresent;
        m_skipsGuid = fSkip;
    }

    // A description with half a surrogate pair is not text.
    [[nodiscard]] std::optional<Damage> DamageIn(KeyboardModuleIDs eModule,
                                                 std::string_view bytes) const override {
        if (eModule != MODULE_LAYER_FUNCKEY_DESC)
            return std::nullopt;
        for (std::size_t slot = 0; slot < bytes.size(); slot += kFuncKeyDescSlotSize) {
            const auto unit = [&](std::size_t index) { // 0 beyond the slot
                return index < kFuncKeyDescLength
                           ? static_cast<char16_t>(static_cast<Byte>(bytes[slot + 2 * index]) |
                                                   static_cast<Byte>(bytes[slot + 2 * index + 1])
                                                       << 8U)
                           : u'\0';
            };
            for (std::size_t i = 0; unit(i) != u'\0'; ++i)
                if (IsHighSurrogate(unit(i)) && IsLowSurrogate(unit(i + 1)))
                    ++i;
                else if (IsHighSurrogate(unit(i)) || IsLowSurrogate(unit(i)))
                    return Damage{static_cast<Long>(slot + 2 * i), FaultKind::HalfCharacter, {}};
        }
        return std::nullopt;
    }

    [[nodiscard]] bool Keeps(KeyboardModuleIDs eModule) const override {
        return eModule == MODULE_GUID && KeepsGuid();
    }

    void Uploaded() override {
        m_keepsGuid = false;
        ClearNames();
        Show();
    }

    void Visit(FieldVisitor& fields) override {
        VisitGuid(fields);
        FieldList list;
        list.field = {kInfo.list, ""};
        list.keyMembers = {{"layer", "Layer", 0, kLastLayer},
                           {"key", "", 0, kLastKey, FuncKeyLegend}};
        list.present = Keys(&LayeredFuncKeysSection::HasContent);
        list.possible = [this] { return Keys(nullptr); };
        list.clear = [this] { Control().DefaultValues(); };
        list.visit = [&](const FieldList::Id& id) { VisitKey(fields, id[0], id[1]); };
        fields.List(list);
        VisitNames(fields);
    }

    void VisitSheet(SheetVisitor& sheet) const override {
        for (Integer layer = 0; layer <= kLastLayer; ++layer)
            sheet.Layer(layer, Control().Layer(layer));
    }

private:
    // After the keys: reading those empties the layers.
    void VisitNames(FieldVisitor& fields) {
        FieldList list;
        list.field = {"layers", "", false, false};
        list.keyMembers = {{"layer", "Layer", 0, kLastLayer}};
        for (Integer layer = 0; layer <= kLastLayer; ++layer)
            if (!Control().Layer(layer).Name().empty())
                list.present.push_back({layer});
        list.possible = [] {
            std::vector<FieldList::Id> layers;
            for (Integer layer = 0; layer <= kLastLayer; ++layer)
                layers.push_back({layer});
            return layers;
        };
        list.clear = [this] { ClearNames(); };
        list.visit = [&](const FieldList::Id& id) {
            FuncKeyLayer& layer = Control().Layer(id[0]);
            layer.SetName(fields.Text({"name", "Name", false, false}, layer.Name(),
                                      FuncKeyLayer::kNameLength));
        };
        fields.List(list);
    }

    void ClearNames() {
        for (Integer layer = 0; layer <= kLastLayer; ++layer)
            Control().Layer(layer).SetName({});
    }

    // Without an identifier here, the keyboard keeps its own.
    [[nodiscard]] bool KeepsGuid() const {
        return m_keepsGuid || !IsIdentifier(Control().Identifier());
    }

    void VisitGuid(FieldVisitor& fields) {
        constexpr Field kField = {"guid", "Identifier", false, true, true};
        constexpr std::size_t kTextUnits = 38;
        const bool hasNone =
            fields.IsExact() ? m_keepsGuid : KeepsGuid() || fields.IsReading() || m_lacksGuid;
        const std::string present = hasNone ? std::string() : ToText(Control().Identifier());
        const std::string text = fields.Text(kField, present, kTextUnits);
        if (!fields.IsReading())
            return;
        const auto guid = GuidFromText(text);
        const bool isNone = guid && !fields.IsExact() && !IsIdentifier(*guid);
        m_keepsGuid = text.empty() || isNone;
        if (m_keepsGuid)
            return;
        if (m_lacksGuid && !fields.IsExact()) {
            if (!m_skipsGuid)
                fields.Refuse(kField, {"", FaultKind::NoIdentifierHere});
        } else if (guid) {
            Control().SetIdentifier(*guid);
        } else {
            fields.Refuse(kField, {"", FaultKind::NotAnIdentifier, ShortText(text)});
        }
    }

    void VisitKey(FieldVisitor& fields, Integer nLayer, Integer nKey) {
        FuncKeyLayer& layer = Control().Layer(nLayer);
        fields.Sequence({"sequence", "", false}, layer.GetKey(nKey),
                        static_cast<Integer>(kFuncKeySlotSize));
        layer.SetKeyDesc(nKey, fields.Text({"description", "Description", false},
                                           layer.GetKeyDesc(nKey), kFuncKeyDescLength));
    }

    [[nodiscard]] static bool HasContent(const FuncKeyLayer& layer, Integer nKey) {
        return layer.GetKey(nKey).Length() > 0 || !layer.GetKeyDesc(nKey).empty();
    }

    // Those that meet the condition, or all.
    [[nodiscard]] std::vector<FieldList::Id> Keys(bool (*condition)(const FuncKeyLayer&, Integer)) {
        std::vector<FieldList::Id> keys;
        for (Integer layer = 0; layer <= kLastLayer; ++layer)
            for (Integer key = 0; key <= kLastKey; ++key)
                if (condition == nullptr || condition(Control().Layer(layer), key))
                    keys.push_back({layer, key});
        return keys;
    }

    bool m_keepsGuid = false; // the last document read has no identifier
    bool m_lacksGuid = false;
    bool m_skipsGuid = false;
};

} // namespace

std::unique_ptr<Section> MakeLayeredFuncKeysSection(const Platform& platform) {
    return std::make_unique<LayeredFuncKeysSection>(kInfo, platform);
}

} // namespace qx::host
