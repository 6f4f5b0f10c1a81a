#include "simulator/TestDrive.h"

#include "qxcontrols/common/Utf.h"
#include "qxcontrols/keyprog/LayeredFuncKeyBlocks.h"
#include "qxcontrols/keys/KeySequence.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "qxcontrols/pos/POSCodeMapping.h"
#include "qxcontrols/pos/POSModuleBlock.h"
#include "qxcontrols/readers/BarcodeBlocks.h"
#include "qxcontrols/readers/MagneticBlocks.h"
#include "simulator/FixedAreas.h"

#include <iterator>
#include <memory>
#include <stdexcept>
#include <utility>

namespace qx::sim {

namespace {

static_assert(std::tuple_size_v<Card> == kMagneticTracks);

// The option that enables a symbology: every symbology has it, and some have no other.
constexpr Integer kSymbologyOption = 0;

void Check(const char* what, Integer number, Integer first, Integer last) {
    if (number < first || number > last)
        throw std::out_of_range(std::string(what) + " " + std::to_string(number) +
                                " is not one of " + std::to_string(first) + " to " +
                                std::to_string(last));
}

std::vector<KeyStroke> StrokesOf(const KeySequence& sequence) {
    std::vector<KeyStroke> keys;
    for (const Integer code : sequence.Codes()) {
        const bool isReleased = code >= kRelease;
        keys.push_back({static_cast<Integer>(isReleased ? code - kRelease : code), isReleased});
    }
    return keys;
}

// The origins of what a reader's input sends.
struct Framing {
    Origin header, data, terminator;
};
constexpr Framing kTrackFraming = {Origin::TrackHeader, Origin::TrackData, Origin::TrackTerminator};
constexpr Framing kReaderFraming = {Origin::ReaderHeader, Origin::ReaderData,
                                    Origin::ReaderTerminator};

void AddFramed(Reception& reception, const Framing& framing, Integer number,
               const MagneticTrack& input, const std::string& data) {
    if (input.HeaderEnabled())
        reception.Add({framing.header, number, StrokesOf(input.Header())});
    reception.Add({framing.data, number, {}, data});
    if (input.TerminatorEnabled())
        reception.Add({framing.terminator, number, StrokesOf(input.Terminator())});
}

struct TrackFault {
    Remark::Kind refused, ignored;
};
constexpr TrackFault kWrongLRC = {Remark::Kind::WrongLrcRefused, Remark::Kind::WrongLrcIgnored};
constexpr TrackFault kWrongLastChar = {Remark::Kind::WrongLastCharRefused,
                                       Remark::Kind::WrongLastCharIgnored};

// Whether a fault of a track makes the reader refuse it; adds a remark either way.
bool IsRefused(bool hasFault, bool isVerified, const TrackFault& fault, const std::string& track,
               Reception& reception) {
    if (hasFault)
        reception.remarks.push_back({isVerified ? fault.refused : fault.ignored, {track}});
    return hasFault && isVerified;
}

// Whether the symbology accepts the code's length; adds a remark if not.
bool HasAcceptedLength(const BarcodeOptionPage& page, const std::string& name,
                       const std::string& data, Reception& reception) {
    const std::size_t length = Utf16FromUtf8(data).size();
    if (!page.SupportsSizing() || (length >= static_cast<std::size_t>(page.MinSize()) &&
                                   length <= static_cast<std::size_t>(page.MaxSize())))
        return true;
    reception.remarks.push_back({Remark::Kind::CodeLengthRefused,
                                 {name, std::to_string(page.MinSize()),
                                  std::to_string(page.MaxSize()), std::to_string(length)}});
    return false;
}

} // namespace

void AddStroke(Reception& reception, const KeyModules& modules, const QXKeyboardLayoutData& layout,
               const KeyStroke& stroke, Integer nKeyIndex) {
    if (layout.KeySupport(stroke.key) == KEYMODE_NONE) {
        reception.remarks.push_back({Remark::Kind::NoKey, {std::to_string(stroke.key)}});
        return;
    }
    const KeySender sender = SenderOf(modules, stroke.key, nKeyIndex);
    if (sender.sequence == nullptr)
        reception.Add({Origin::OrdinaryKey, stroke.key, {stroke}});
    else if (!stroke.isReleased)
        reception.Add(
            {Origin::ProgrammedKey, sender.slot, StrokesOf(*sender.sequence), {}, sender.module});
}

TestDrive::TestDrive(std::string memory, const KeyboardModel& model,
                     const QXKeyboardLayoutData& layout)
    : m_memory(std::move(memory)), m_model(model), m_layout(layout) {
    if (m_memory.size() != static_cast<std::size_t>(kMemorySize))
        throw std::invalid_argument("a keyboard's memory has " + std::to_string(kMemorySize) +
                                    " bytes, not " + std::to_string(m_memory.size()));
}

std::optional<std::string> TestDrive::Block(KeyboardModuleIDs eModule, Long lSize,
                                            Long lOffset) const {
    const auto base = m_model.AddressOf(eModule);
    if (!base)
        return std::nullopt;
    const Long address = *base + lOffset;
    return m_memory.substr(static_cast<std::size_t>(address), static_cast<std::size_t>(lSize));
}

Reception TestDrive::NewReception() const {
    Reception reception;
    if (const auto delay = Block(MODULE_MAGNET_CONFIG, kOutputDelaySize)) // the area's first byte
        reception.outputDelay = static_cast<Byte>(delay->front());
    return reception;
}

Reception TestDrive::PressKey(Integer nPositionCode) const {
    return Stroke(nPositionCode, 0, false);
}

Reception TestDrive::ReleaseKey(Integer nPositionCode) const {
    return Stroke(nPositionCode, 0, true);
}

Reception TestDrive::PressPosKey(Integer nKeyIndex) const {
    return Stroke(POSCodeMapping().GetPositionCodeForKey(nKeyIndex), nKeyIndex, false);
}

Reception TestDrive::ReleasePosKey(Integer nKeyIndex) const {
    return Stroke(POSCodeMapping().GetPositionCodeForKey(nKeyIndex), nKeyIndex, true);
}

Reception TestDrive::Stroke(Integer nPositionCode, Integer nKeyIndex, bool isReleased) const {
    Check("key", nPositionCode, KeyboardSequences::kMinKeyID, KeyboardSequences::kMaxKeyID);
    Reception reception = NewReception();
    POSKeyboard blocks;
    std::array<KeyboardSequences, kFreeKeyModules.size()> freeKeys;
    KeyModules modules;
    if (HasBlocks(blocks, reception))
        modules.blocks = &blocks;
    for (std::size_t i = 0; i < freeKeys.size(); ++i)
        if (HasFreeKeys(kFreeKeyModules[i], freeKeys[i]))
            modules.freeKeys[i] = &freeKeys[i].Key(nPositionCode);
    AddStroke(reception, modules, m_layout, {nPositionCode, isReleased}, nKeyIndex);
    return reception;
}

// Fills in the module's blocks, if the keyboard has it.
bool TestDrive::HasBlocks(POSKeyboard& blocks, Reception& reception) const {
    const auto block = Block(MODULE_POS, kPOSModuleBlockSize);
    if (!block)
        return false;
    try {
        DecodePOSModuleBlock(*block, blocks);
    } catch (const std::out_of_range& error) { // the keys decoded before the damage are kept
        reception.remarks.push_back({Remark::Kind::PosDamaged, {error.what()}});
    }
    return true;
}

// Fills in the keys of one of the modules, if the keyboard has it.
bool TestDrive::HasFreeKeys(KeyboardModuleIDs eModule, KeyboardSequences& keys) const {
    for (Integer key = KeyboardSequences::kMinKeyID; key <= KeyboardSequences::kMaxKeyID; ++key)
        keys.Key(key).SetPositionCode(m_layout.KeySupport(key) == KEYMODE_PROG ? key : Integer{-1});
    const auto stored = static_cast<Long>(StoredFreeProgKeys(keys, eModule).size());
    const auto block = Block(eModule, stored * kFreeProgKeySlotSize);
    if (block)
        DecodeFreeProgKeys(*block, eModule, keys);
    return block.has_value();
}

Reception TestDrive::PressFunctionKey(Integer nLayer, Integer nKey) const {
    Check("layer", nLayer, 0, kFuncKeyLayers - 1);
    Check("function key", nKey, 0, FuncKeyLayer::kKeys - 1);
    Reception reception = NewReception();
    const auto block = Block(MODULE_LAYERED_FUNCKEYS, kFuncKeySequencesSize);
    if (!block) {
        reception.remarks.push_back({Remark::Kind::NoFunctionKeys});
        return reception;
    }
    const auto layers = std::make_unique<FuncKeyLayers>();
    DecodeFuncKeySequences(*block, *layers);
    const KeySequence& sequence = (*layers)[static_cast<std::size_t>(nLayer)].GetKey(nKey);
    Stretch stretch{Origin::ProgrammedKey,   nKey,  StrokesOf(sequence), {},
                    MODULE_LAYERED_FUNCKEYS, nLayer};
    if (stretch.IsEmpty())
        reception.remarks.push_back(
            {Remark::Kind::FunctionKeyEmpty, {std::to_string(nLayer), FuncKeyLegend(nKey)}});
    reception.Add(std::move(stretch));
    return reception;
}

Reception TestDrive::SwipeCard(const Card& card) const {
    Reception reception = NewReception();
    const auto headers = Block(MODULE_MAGNET_HEADERS, kMagneticHeadersSize);
    const auto switches =
        Block(MODULE_MAGNET_CONFIG, kMagneticSwitchesSize, kMagneticSwitchesOffset);
    if (!headers || !switches) {
        reception.remarks.push_back({Remark::Kind::NoCardReader});
        return reception;
    }
    MagneticSettings settings;
    DecodeTrackSlots(*headers, settings.tracks);
    DecodeMagneticSwitches(*switches, settings);

    for (Integer track = 1; track <= kMagneticTracks; ++track) {
        const auto index = static_cast<std::size_t>(track - 1);
        const CardTrack& onCard = card[index];
        const std::string name = std::to_string(track);
        if (onCard.data.empty())
            continue;
        if (!m_model.HasMagneticTrack(track)) {
            reception.remarks.push_back({Remark::Kind::NoTrack, {name}});
            continue;
        }
        if (!settings.tracks[index].Enabled()) {
            reception.remarks.push_back({Remark::Kind::TrackOff, {name}});
            continue;
        }
        const bool isRefusedForLRC = IsRefused(
            onCard.hasWrongLRC, settings.options.VerifyLRC().Value(), kWrongLRC, name, reception);
        const bool isRefusedForLastChar =
            IsRefused(onCard.hasWrongLastChar, settings.options.VerifyLastChar().Value(),
                      kWrongLastChar, name, reception);
        if (!isRefusedForLRC && !isRefusedForLastChar)
            AddFramed(reception, kTrackFraming, track, settings.tracks[index], onCard.data);
    }
    if (!reception.stretches.empty())
        reception.remarks.push_back({settings.options.SendImmediate().Value()
                                         ? Remark::Kind::TracksSentAtOnce
                                         : Remark::Kind::TracksSentTogether});
    return reception;
}

Reception TestDrive::ScanCode(Integer nReader, BarcodePage eSymbology,
                              const std::string& data) const {
    Check("reader", nReader, 1, kBarcodeReaders);
    Check("symbology", eSymbology, BP_EAN, BP_Plessey);
    Reception reception = NewReception();
    const auto headers = Block(MODULE_BARCODE_HEADERS, kBarcodeHeadersSize);
    const auto config = Block(MODULE_BARCODE_CONFIG, kBarcodeConfigSize);
    if (!headers || !config || !m_model.HasBarcodeReader()) {
        reception.remarks.push_back({Remark::Kind::NoCodeReader});
        return reception;
    }
    BarcodeSettings settings;
    SetBarcodeLimits(settings);
    DecodeTrackSlots(*headers, settings.readers);
    DecodeBarcodeConfig(*config, settings);

    const std::string name(kBarcodePageNames[static_cast<std::size_t>(eSymbology)]);
    const BarcodeOptionPage& page = settings.pages[static_cast<std::size_t>(eSymbology)];
    if (data.empty())
        reception.remarks.push_back({Remark::Kind::CodeEmpty});
    else if (!page.Flag(kSymbologyOption).Value())
        reception.remarks.push_back({Remark::Kind::SymbologyOff, {name}});
    else if (HasAcceptedLength(page, name, data, reception))
        AddFramed(reception, kReaderFraming, nReader,
                  settings.readers[static_cast<std::size_t>(nReader - 1)], data);
    return reception;
}

} // namespace qx::sim
