#include "qxcontrols/keyprog/LayeredFuncKeyBlocks.h"

#include "qxcontrols/blocks/BlockRoutines.h"
#include "qxcontrols/common/LittleEndian.h"
#include "qxcontrols/common/Trace.h"
#include "qxcontrols/common/Utf.h"
#include "qxcontrols/device/QXKeyboardAccess.h"

#include <algorithm>
#include <type_traits>

namespace qx {

namespace {

static_assert(FuncKeySlotOffset(kFuncKeyLayers, 0) == kFuncKeySequencesSize);
static_assert(kFuncKeySequencesSize == 30720 && kFuncKeyDescSize == 30720);

// Position and width of one of the identifier's fields.
struct GuidField {
    Long offset;
    Long width;
};
constexpr GuidField kFirst{0, 4};
constexpr GuidField kSecond{4, 2};
constexpr GuidField kThird{6, 2};
constexpr GuidField kRest{8, 8};
static_assert(kFirst.width == sizeof(Guid::first) && kSecond.width == sizeof(Guid::second) &&
              kThird.width == sizeof(Guid::third) && kRest.width == sizeof(Guid::rest));
static_assert(kFirst.offset + kFirst.width == kSecond.offset &&
              kSecond.offset + kSecond.width == kThird.offset &&
              kThird.offset + kThird.width == kRest.offset &&
              kRest.offset + kRest.width == kGuidSize);

// Calls visit(offset, number) for every number of the identifier, in the order of the area.
template <typename AnyGuid, typename Visit>
void VisitGuid(AnyGuid& guid, Visit visit) {
    visit(kFirst.offset, guid.first);
    visit(kSecond.offset, guid.second);
    visit(kThird.offset, guid.third);
    Long offset = kRest.offset;
    for (auto& byte : guid.rest)
        visit(offset++, byte);
}

// Calls visit(layer, key index) for every layer's keys, in the order of the areas.
template <typename Layers, typename Visit>
void VisitKeys(Layers& layers, Visit visit) {
    for (auto& layer : layers)
        for (Integer key = 0; key < FuncKeyLayer::kKeys; ++key)
            visit(layer, key);
}

} // namespace

Long UsedSlotSize(const KeySequence& sequence) {
    return sequence.Length() == 0 ? 0 : std::min<Long>(sequence.Length() + 1, kFuncKeySlotSize);
}

std::string EncodeFuncKeySequences(const FuncKeyLayers& layers) {
    std::string block;
    block.reserve(kFuncKeySequencesSize);
    VisitKeys(layers, [&](const FuncKeyLayer& layer, Integer key) {
        const std::string slot = SequenceToBytes(layer.GetKey(key), kFuncKeySlotSize);
        block += slot;
        TraceBytes("Key " + std::to_string(key) + " : ", slot);
    });
    return block;
}

void DecodeFuncKeySequences(std::string_view sBlock, FuncKeyLayers& layers) {
    Long position = 0;
    VisitKeys(layers, [&](FuncKeyLayer& layer, Integer key) {
        if (key == 0)
            layer.CleanLayer();
        BytesToSequence(layer.GetKey(key), position, kFuncKeySlotSize, sBlock);
    });
}

Guid ReadFuncKeyGuid(QXKeyboardAccess& keyboard, Long lAddress) {
    Guid guid;
    VisitGuid(guid, [&](Long offset, auto& number) {
        using Number = std::remove_reference_t<decltype(number)>;
        if constexpr (sizeof(Number) == sizeof(Long))
            number = static_cast<Number>(keyboard.ReadLongFromImage(lAddress + offset));
        else if constexpr (sizeof(Number) == sizeof(Integer))
            number = static_cast<Number>(keyboard.ReadIntFromImage(lAddress + offset));
        else
            number = keyboard.ReadByteFromImage(lAddress + offset);
    });
    return guid;
}

void WriteFuncKeyGuid(QXKeyboardAccess& keyboard, Long lAddress, const Guid& guid) {
    VisitGuid(guid, [&](Long offset, const auto& number) {
        if constexpr (sizeof(number) == sizeof(Long))
            keyboard.WriteLongIntoImage(lAddress + offset, static_cast<Long>(number));
        else if constexpr (sizeof(number) == sizeof(Integer))
            keyboard.WriteIntIntoImage(lAddress + offset, static_cast<Integer>(number));
        else
            keyboard.WriteByteIntoImage(lAddress + offset, number);
    });
}

Guid GuidFromBytes(std::string_view sBytes) {
    Guid guid;
    VisitGuid(guid, [&](Long offset, auto& number) {
        using Number = std::remove_reference_t<decltype(number)>;
        number = FromLittleEndian<Number>(sBytes.data() + offset);
    });
    return guid;
}

std::string GuidToBytes(const Guid& guid) {
    std::string bytes;
    VisitGuid(guid, [&](Long /*offset*/, auto number) { bytes += LittleEndian(number); });
    return bytes;
}

void ReadFuncKeyDescriptions(QXKeyboardAccess& keyboard, FuncKeyLayers& layers) {
    Long address = kFuncKeyDescAddress;
    VisitKeys(layers, [&](FuncKeyLayer& layer, Integer key) {
        std::u16string units(kFuncKeyDescLength, u'\0');
        for (char16_t& unit : units) {
            unit = static_cast<char16_t>(keyboard.ReadIntFromImage(address));
            address += 2;
        }
        units.erase(std::find(units.begin(), units.end(), u'\0'), units.end());
        layer.SetKeyDesc(key, Utf8FromUtf16(units));
    });
}

void WriteFuncKeyDescriptions(QXKeyboardAccess& keyboard, const FuncKeyLayers& layers) {
    Long address = kFuncKeyDescAddress;
    VisitKeys(layers, [&](const FuncKeyLayer& layer, Integer key) {
        std::u16string units = Utf16FromUtf8(layer.GetKeyDesc(key));
        units.resize(kFuncKeyDescLength, u'\0');
        for (const char16_t unit : units) {
            keyboard.WriteIntIntoImage(address, static_cast<Integer>(unit));
            address += 2;
        }
    });
}

} // namespace qx
