#include "FilledConfiguration.h"

#include "qxcontrols/keyprog/FreeProgKeysBlock.h"
#include "qxcontrols/keyprog/QXFreeProgKeys.h"
#include "qxcontrols/keyprog/QXLayeredFuncKeys.h"
#include "qxcontrols/pos/POSModuleBlock.h"
#include "qxcontrols/pos/QXPos.h"
#include "qxcontrols/readers/QXBarcode.h"
#include "qxcontrols/readers/QXMagnetCard.h"

#include <string>

namespace qx::bench {
namespace {

// Decides which of consecutive slots are filled.
class Choice {
public:
    explicit Choice(int nPercent) : m_percent(nPercent) {}
    [[nodiscard]] bool Next() {
        m_sum += m_percent;
        const bool isChosen = m_sum >= 100;
        if (isChosen)
            m_sum -= 100;
        return isChosen;
    }

private:
    int m_percent;
    int m_sum = 0;
};

template <typename Control>
Control& ControlOf(host::Configuration& configuration, std::string_view section) {
    return dynamic_cast<Control&>(configuration.Find(section)->Control());
}

} // namespace

void Fill(host::Configuration& configuration, int nPercent, Byte code) {
    Choice choice(nPercent);
    const auto codes = [&](std::size_t slot) {
        return std::string(choice.Next() ? slot : 0, static_cast<char>(code));
    };
    const auto fillTrack = [&](MagneticTrack& track) {
        track.Header().SetBytes(codes(kTrackSlotSize));
        track.Terminator().SetBytes(codes(kTrackSlotSize));
    };

    auto& barcode = ControlOf<QXBarcode>(configuration, "barcode");
    for (Integer reader = 1; reader <= kBarcodeReaders; ++reader)
        fillTrack(barcode.Reader(reader));
    auto& magnet = ControlOf<QXMagnetCard>(configuration, "magnetCard");
    for (Integer track = 1; track <= 4; ++track)
        fillTrack(magnet.Track(track));

    auto& keys = ControlOf<QXFreeProgKeys>(configuration, "freeProgKeys").Sequences();
    for (Long id = KeyboardSequences::kMinKeyID; id <= KeyboardSequences::kMaxKeyID; ++id)
        if (keys.Key(id).PositionCode() > 0)
            keys.Key(id).SetBytes(codes(kFreeProgKeySlotSize));

    auto& layered = ControlOf<QXLayeredFuncKeys>(configuration, "layeredFuncKeys");
    for (Integer layer = 0; layer < kFuncKeyLayers; ++layer)
        for (Integer key = 0; key < FuncKeyLayer::kKeys; ++key) {
            const std::string sequence = codes(kFuncKeySlotSize);
            layered.Layer(layer).GetKey(key).SetBytes(sequence);
            std::string description;
            for (Long i = 0; i < kFuncKeyDescLength && !sequence.empty(); ++i)
                description += "\u00e4";
            layered.Layer(layer).SetKeyDesc(key, description);
        }

    auto& pos = ControlOf<QXPos>(configuration, "pos");
    pos.PosData().CleanAllBlocks();
    for (Integer key = 1; key <= POSKeyboard::kSlots; ++key) {
        const std::string sequence = codes(kPOSSequenceSize);
        if (sequence.empty())
            continue;
        pos.PosData().Block(key).AddKey(key);
        pos.PosData().Block(key).Sequence().SetBytes(sequence);
    }
    pos.PosData().CalcDefinedBlockNum();
}

} // namespace qx::bench
