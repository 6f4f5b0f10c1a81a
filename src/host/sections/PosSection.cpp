#include "host/PlacedVisitor.h"
#include "host/SheetVisitor.h"
#include "host/sections/Sections.h"

#include "qxcontrols/keys/KeyName.h"
#include "qxcontrols/pos/KeySender.h"
#include "qxcontrols/pos/POSBlockPlaces.h"
#include "qxcontrols/pos/POSModuleBlock.h"
#include "qxcontrols/pos/QXPos.h"

#include <algorithm>
#include <array>
#include <limits>

namespace qx::host {

namespace {

using json::Fault;
using json::FaultKind;

constexpr Area kAreas[] = {{MODULE_POS, kPOSModuleBlockSize, kPOSModuleBlockSize}};
constexpr SectionInfo kInfo = {"pos", "POS keys", kAreas, "blocks"};

constexpr Integer kFirstKey = 1;
constexpr Integer kLastKey = POSKeyboard::kSlots;

// Here a block is in the slot of its lowest key, whichever of its keys a document names first (see
// POSBlockPlaces.h).
class PosSection : public SectionOf<QXPos> {
public:
    using SectionOf::SectionOf;

    void Visit(FieldVisitor& fields) override {
        FieldList list;
        list.field = {kInfo.list, ""};
        list.keyMembers = {{"slot", "Key", kFirstKey, kLastKey}};
        // As the keyboard would store them, unless the walk is exact.
        m_placed = fields.IsExact() ? Control().PosData() : InTheirSlots(Control().PosData());
        list.present = Slots();
        list.possible = [] {
            std::vector<FieldList::Id> keys;
            for (Integer key = kFirstKey; key <= kLastKey; ++key)
                keys.push_back({key});
            return keys;
        };
        list.positionCodeOf = [this](const FieldList::Id& id) { return PositionCodeOf(id[0]); };
        list.clear = [this] {
            Control().DefaultValues();
            m_placed = {};
        };
        list.visit = [&](const FieldList::Id& id) { VisitBlock(fields, id[0]); };
        fields.List(list);
        Control().PosData().CalcDefinedBlockNum();
    }

    void VisitSheet(SheetVisitor& sheet) const override {
        sheet.Blocks(Control().PosData(), Control().CodeMap());
    }

    void AddTo(KeyModules& modules, Integer /*nPositionCode*/) override {
        modules.blocks = &Control().PosData();
    }

    // A key in no block gets one of its own.
    void Begin(const FieldList::Id& element) override {
        if (Control().PosData().FindBlockForKey(element[0]) == 0)
            StartBlock(Control().PosData(), {element[0]});
    }
    // A block of one key is there for its sequence alone.
    void End(const FieldList::Id& element) override {
        POSKeyboard& blocks = Control().PosData();
        const Integer slot = blocks.FindBlockForKey(element[0]);
        if (slot != 0 && KeysOf(blocks.Block(slot)).size() == 1)
            FreeSlot(blocks, slot);
    }

    // The control cannot read a group above the last key, and stops there. It reads only one of
    // several sequences of a group; the others would be lost.
    [[nodiscard]] std::optional<Damage> DamageIn(KeyboardModuleIDs /*eModule*/,
                                                 std::string_view bytes) const override {
        std::array<Integer, kLastKey + 1> sendersOf = {}; // by group: the key with its sequence
        for (Integer key = kFirstKey; key <= kLastKey; ++key) {
            const Byte group = GroupOf(key, bytes);
            if (group > kLastKey && group != kPOSUnassigned)
                return Damage{RecordOf(key),
                              FaultKind::UnknownGroup,
                              {NameOf(key), std::to_string(group), std::to_string(kLastKey)}};
            if (group == kPOSSingleKey || group == kPOSUnassigned || !HasSequence(key, bytes))
                continue;
            Integer& sender = sendersOf.at(group);
            if (sender != 0)
                return Damage{RecordOf(key) + 1,
                              FaultKind::TwoSequences,
                              {NameOf(sender), NameOf(key), std::to_string(group)}};
            sender = key;
        }
        return std::nullopt;
    }

    void KeepUnused(std::string_view held, std::string_view usual,
                    std::string& wanted) const override {
        for (Integer key = kFirstKey; key <= kLastKey; ++key) {
            const auto record = [key](std::string_view bytes) {
                return bytes.substr(static_cast<std::size_t>(RecordOf(key)), kPOSRecordSize);
            };
            if (record(wanted) == record(usual) && Used(record(held)) == Used(record(usual)))
                wanted.replace(static_cast<std::size_t>(RecordOf(key)), kPOSRecordSize,
                               record(held));
        }
    }

    // A key's record contains the key's block and that block's sequence.
    [[nodiscard]] std::set<std::string> PlacesIn(Long offset, Long size,
                                                 std::string_view bytes) const override {
        std::set<std::string> places;
        for (Integer key = kFirstKey; key <= kLastKey; ++key) {
            const Long record = RecordOf(key);
            if (record >= offset + size || record + kPOSRecordSize <= offset)
                continue;
            const Integer slot = SlotOf(key, bytes);
            if (slot == 0)
                continue;
            const std::string block = ElementOf(kInfo, {slot});
            if (offset <= record)
                places.insert(block + "/keys");
            if (offset + size > record + 1 || HasSequence(key, bytes))
                places.insert(block + "/sequence");
        }
        return places;
    }

private:
    [[nodiscard]] static constexpr Long RecordOf(Integer nKey) {
        return (nKey - kFirstKey) * kPOSRecordSize;
    }
    [[nodiscard]] static Byte GroupOf(Integer nKey, std::string_view bytes) {
        return static_cast<Byte>(bytes[static_cast<std::size_t>(RecordOf(nKey))]);
    }
    [[nodiscard]] static bool HasSequence(Integer nKey, std::string_view bytes) {
        return bytes[static_cast<std::size_t>(RecordOf(nKey)) + 1] != 0;
    }
    // A record without the bytes after its sequence.
    [[nodiscard]] static std::string_view Used(std::string_view record) {
        return static_cast<Byte>(record[0]) == kPOSUnassigned
                   ? record.substr(0, 1)
                   : record.substr(0, record.find('\0', 1));
    }
    // The first key of the block that contains the key; 0 if none does.
    [[nodiscard]] static Integer SlotOf(Integer nKey, std::string_view bytes) {
        const Byte group = GroupOf(nKey, bytes);
        if (group == kPOSSingleKey)
            return nKey;
        Integer slot = group == kPOSUnassigned ? Integer{0} : kFirstKey;
        while (slot != 0 && GroupOf(slot, bytes) != group)
            ++slot;
        return slot;
    }

    [[nodiscard]] Long PositionCodeOf(Integer nKey) const {
        return Control().CodeMap().GetPositionCodeForKey(nKey);
    }
    [[nodiscard]] std::string NameOf(Integer nKey) const {
        return KeyName(nKey, KeyLabel(PositionCodeOf(nKey), Control().LayoutSource()));
    }

    void VisitBlock(FieldVisitor& fields, Integer nSlot) {
        constexpr Field kKeys = {"keys", "Keys"};
        constexpr Integer kMax = std::numeric_limits<Integer>::max();
        POSBlock block = m_placed.Block(nSlot);
        block.SetBlockID(
            fields.Number({"blockId", "Number", false, false}, block.BlockID(), 0, kMax));
        block.SetColorID(fields.Number({"colorId", "Colour", false, false}, block.ColorID(), 0, 9));
        std::vector<Integer> keys =
            fields.Keys(kKeys, KeysOf(block), kFirstKey, kLastKey,
                        [this](Integer nKey) { return PositionCodeOf(nKey); });
        fields.Sequence({"sequence", ""}, block.Sequence(), kPOSSequenceSize);
        if (!fields.IsReading())
            return;
        if (fields.IsExact())
            return PutBlock(nSlot, std::move(block), keys);
        if (const auto fault = FaultOf(keys, nSlot))
            fields.Refuse(kKeys, *fault);
        else
            PlaceBlock(Control().PosData(), block, std::move(keys));
    }

    void PutBlock(Integer nSlot, POSBlock block, const std::vector<Integer>& keys) {
        block.Clean();
        for (const Integer key : keys)
            block.AddKey(key);
        Control().PosData().Block(nSlot) = std::move(block);
    }

    // Why a block of these keys cannot be placed, if it cannot.
    [[nodiscard]] std::optional<Fault> FaultOf(const std::vector<Integer>& keys, Integer nSlot) {
        if (keys.empty() || keys[0] != nSlot)
            return Fault("", FaultKind::FirstKeyNotSlot, NameOf(nSlot));
        for (std::size_t i = 0; i < keys.size(); ++i)
            if (std::find(keys.begin(), keys.begin() + static_cast<std::ptrdiff_t>(i), keys[i]) !=
                    keys.begin() + static_cast<std::ptrdiff_t>(i) ||
                Control().PosData().FindBlockForKey(keys[i]) != 0)
                return Fault("", FaultKind::KeyTwice, NameOf(keys[i]));
        return std::nullopt;
    }

    [[nodiscard]] std::vector<FieldList::Id> Slots() {
        std::vector<FieldList::Id> slots;
        for (Integer slot = kFirstKey; slot <= kLastKey; ++slot)
            if (m_placed.Block(slot).BlockSize() > 0)
                slots.push_back({slot});
        return slots;
    }

    POSKeyboard m_placed; // the blocks during a walk
};

} // namespace

std::unique_ptr<Section> MakePosSection(const Platform& platform) {
    return std::make_unique<PosSection>(kInfo, platform);
}

} // namespace qx::host
