// Decodes any bytes as a block: the result can be encoded, and decodes to the same again. The first
// byte of an input selects the decoder.

#include "../tests/support/FakeDriver.h"
#include "Fuzz.h"
#include "qxcontrols/blocks/BlockRoutines.h"
#include "qxcontrols/device/QXKeyboardAccess.h"
#include "qxcontrols/keyprog/FreeProgKeysBlock.h"
#include "qxcontrols/keyprog/LayeredFuncKeyBlocks.h"
#include "qxcontrols/pos/POSModuleBlock.h"
#include "qxcontrols/readers/BarcodeBlocks.h"
#include "qxcontrols/readers/MagneticBlocks.h"

#include <stdexcept>

namespace {

using namespace qx;

// Makes a block of exactly `size` bytes by repeating the input, so that a small input can fill a
// large block.
std::string Fill(std::string_view bytes, Long size) {
    std::string block;
    while (!bytes.empty() && block.size() < static_cast<std::size_t>(size))
        block += bytes;
    block.resize(static_cast<std::size_t>(size));
    return block;
}

// Decodes, describes, encodes, decodes into a new model and describes again.
template <typename Model, typename Decode, typename Encode, typename Describe>
void RoundTrip(const char* name, const Model& empty, const std::string& block, Decode decode,
               Encode encode, Describe describe) {
    Model first = empty;
    decode(block, first);
    const std::string encoded = encode(first);
    fuzz::Require(encoded.size() == block.size(), std::string(name) + " keeps its size");
    Model second = empty;
    decode(encoded, second);
    fuzz::RequireEqual(describe(second), describe(first), std::string(name) + " decodes the same");
    fuzz::RequireEqual(encode(second), encoded, std::string(name) + " encodes the same");
}

template <typename Tracks>
std::string DescribeTracks(const Tracks& tracks) {
    std::string text;
    for (const MagneticTrack& track : tracks)
        text += track.Header().KeyString() + "|" + track.Terminator().KeyString() + "\n";
    return text;
}

void Slots(std::string_view bytes) {
    const Long length = bytes.empty() ? 0 : static_cast<Byte>(bytes.front()) % 130;
    const std::string block(bytes.substr(bytes.empty() ? 0 : 1));
    KeySequence sequence;
    Long position = 0;
    BytesToSequence(sequence, position, length, block);
    fuzz::Require(position == length, "the position moves behind the slot");
    fuzz::Require(sequence.Length() <= length, "a sequence fits its slot");
    const std::string slot = SequenceToBytes(sequence, length);
    KeySequence again;
    position = 0;
    BytesToSequence(again, position, length, slot);
    fuzz::RequireEqual(again.KeyString(), sequence.KeyString(), "a slot decodes the same");
}

void MagneticHeaders(std::string_view bytes) {
    RoundTrip(
        "magnetic headers", std::array<MagneticTrack, kMagneticTracks>{},
        Fill(bytes, kMagneticHeadersSize), [](auto& b, auto& m) { DecodeTrackSlots(b, m); },
        [](auto& m) { return EncodeTrackSlots(m); }, [](auto& m) { return DescribeTracks(m); });
}

void MagneticSwitches(std::string_view bytes) {
    RoundTrip(
        "magnetic switches", MagneticSettings(), Fill(bytes, kMagneticSwitchesSize),
        [](auto& b, auto& m) { DecodeMagneticSwitches(b, m); },
        [](auto& m) { return EncodeMagneticSwitches(m); },
        [](auto& m) {
            std::string text;
            for (const MagneticTrack& track : m.tracks)
                for (const bool isOn :
                     {track.Enabled(), track.HeaderEnabled(), track.TerminatorEnabled()})
                    text += isOn ? '1' : '0';
            for (const OptionBool* option :
                 {&m.options.VerifyLRC(), &m.options.VerifyLastChar(), &m.options.SendImmediate()})
                text += option->Value() ? '1' : '0';
            return text;
        });
}

void BarcodeHeaders(std::string_view bytes) {
    RoundTrip(
        "barcode headers", std::array<MagneticTrack, kBarcodeReaders>{},
        Fill(bytes, kBarcodeHeadersSize), [](auto& b, auto& m) { DecodeTrackSlots(b, m); },
        [](auto& m) { return EncodeTrackSlots(m); }, [](auto& m) { return DescribeTracks(m); });
}

void BarcodeConfig(std::string_view bytes) {
    BarcodeSettings settings;
    SetBarcodeLimits(settings);
    SetBarcodeDefaults(settings);
    RoundTrip(
        "barcode configuration", settings, Fill(bytes, kBarcodeConfigSize),
        [](auto& b, auto& m) { DecodeBarcodeConfig(b, m); },
        [](auto& m) { return EncodeBarcodeConfig(m); },
        [](auto& m) {
            std::string text;
            for (const BarcodeOptionPage& page : m.pages) {
                text += std::to_string(page.MinSize()) + "-" + std::to_string(page.MaxSize()) + " ";
                for (Integer flag = 0; flag < BarcodeOptionPage::kFlags; ++flag)
                    text += page.Flag(flag).Value() ? '1' : '0';
                text += '\n';
            }
            for (const MagneticTrack& reader : m.readers)
                text += reader.HeaderEnabled() ? '1' : '0';
            for (const MagneticTrack& reader : m.readers)
                text += reader.TerminatorEnabled() ? '1' : '0';
            return text;
        });
}

void FreeProgKeys(std::string_view bytes) {
    constexpr KeyboardModuleIDs kModules[] = {MODULE_FREEPROGRAMMABLE_KEYS,
                                              MODULE_FUNCKEYS_X1_4620};
    const Byte choice = bytes.empty() ? Byte{0} : static_cast<Byte>(bytes.front());
    const KeyboardModuleIDs module = kModules[choice % 2];
    KeyboardSequences empty; // all keys are used except some that the input selects
    for (Integer key = 0; key <= KeyboardSequences::kMaxKeyID; ++key)
        if (choice < 2 || key % choice != 0)
            empty.Key(key).SetPositionCode(key);
    const auto size =
        static_cast<Long>(StoredFreeProgKeys(empty, module).size()) * kFreeProgKeySlotSize;
    RoundTrip(
        "free keys", empty, Fill(bytes, size),
        [&](auto& b, auto& m) { DecodeFreeProgKeys(b, module, m); },
        [&](auto& m) { return EncodeFreeProgKeys(m, module); },
        [](auto& m) {
            std::string text;
            for (Long key = 0; key <= KeyboardSequences::kMaxKeyID; ++key)
                text += m.Key(key).KeyString() + "\n";
            return text;
        });
}

void FuncKeySequences(std::string_view bytes) {
    RoundTrip(
        "layered function keys", FuncKeyLayers{}, Fill(bytes, kFuncKeySequencesSize),
        [](auto& b, auto& m) { DecodeFuncKeySequences(b, m); },
        [](auto& m) { return EncodeFuncKeySequences(m); },
        [](auto& m) {
            std::string text;
            for (const FuncKeyLayer& layer : m)
                for (Integer key = 0; key < FuncKeyLayer::kKeys; ++key)
                    text += layer.GetKey(key).KeyString() + "\n";
            return text;
        });
}

// The identifier and the descriptions in a keyboard's image.
void FuncKeyTexts(std::string_view bytes) {
    constexpr Long kGuid = 0x100;
    static test::FakeDriver driver;
    driver.notesCalls = false;
    static QXKeyboardAccess access{driver};
    static const std::string empty = driver.image;
    const auto put = [](const std::string& area, bool isGuid) {
        driver.image.replace(isGuid ? kGuid : kFuncKeyDescAddress, area.size(), area);
    };
    RoundTrip(
        "identifier", Guid(), Fill(bytes, kGuidSize),
        [&](auto& b, auto& m) {
            put(b, true);
            m = ReadFuncKeyGuid(access, kGuid);
        },
        [&](auto& m) {
            WriteFuncKeyGuid(access, kGuid, m);
            return driver.image.substr(kGuid, kGuidSize);
        },
        [](auto& m) {
            std::string text = std::to_string(m.first) + " " + std::to_string(m.second) + " " +
                               std::to_string(m.third);
            for (const Byte byte : m.rest)
                text += " " + std::to_string(byte);
            return text;
        });
    RoundTrip(
        "descriptions", FuncKeyLayers{}, Fill(bytes, kFuncKeyDescSize),
        [&](auto& b, auto& m) {
            put(b, false);
            ReadFuncKeyDescriptions(access, m);
        },
        [&](auto& m) {
            WriteFuncKeyDescriptions(access, m);
            return driver.image.substr(kFuncKeyDescAddress, kFuncKeyDescSize);
        },
        [](auto& m) {
            std::string text;
            for (const FuncKeyLayer& layer : m)
                for (Integer key = 0; key < FuncKeyLayer::kKeys; ++key)
                    text += layer.GetKeyDesc(key) + "\n";
            return text;
        });
}

void Pos(std::string_view bytes) {
    RoundTrip(
        "POS", POSKeyboard(), Fill(bytes, kPOSModuleBlockSize),
        [](auto& b, auto& m) {
            try {
                DecodePOSModuleBlock(b, m);
            } catch (const std::out_of_range&) { // the keys before the fault have been decoded
            }
        },
        [](auto& m) { return EncodePOSModuleBlock(m); },
        [](auto& m) {
            std::string text;
            for (Integer slot = 1; slot <= POSKeyboard::kSlots; ++slot) {
                const POSBlock& block = m.Block(slot);
                for (Integer key = 1; key <= block.BlockSize(); ++key)
                    text += std::to_string(block.GetKey(key)) + " ";
                text += ": " + block.Sequence().KeyString() + "\n"; // groups are renumbered
            }
            return text;
        });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static constexpr void (*kDecoders[])(std::string_view) = {Slots,
                                                              MagneticHeaders,
                                                              MagneticSwitches,
                                                              BarcodeHeaders,
                                                              BarcodeConfig,
                                                              FreeProgKeys,
                                                              FuncKeySequences,
                                                              FuncKeyTexts,
                                                              Pos};
    if (size > 0)
        kDecoders[*data % std::size(kDecoders)](fuzz::AsText(data + 1, size - 1));
    return 0;
}
