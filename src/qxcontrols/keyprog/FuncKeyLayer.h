// FuncKeyLayer: one layer of the layered function keys, with a sequence and a description for each
// key.
//
// Only CleanLayer is traced: the other members are called for every key.
#pragma once

#include "qxcontrols/device/MemoryMap.h"
#include "qxcontrols/keys/KeySequence.h"

#include <array>
#include <string>
#include <utility>

namespace qx {

// The legend of a function key: "F1" for key 0.
[[nodiscard]] std::string FuncKeyLegend(Integer nKeyID);

// Keys are numbered 0 to 23; all members throw std::out_of_range for other numbers.
class FuncKeyLayer {
public:
    static constexpr Integer kKeys = kFuncKeysOfLayer;
    static constexpr std::size_t kNameLength = 32; // UTF-16 units: enough for a tab

    // The description, UTF-8 of any length; the keyboard stores its first 64 UTF-16 units.
    [[nodiscard]] const std::string& GetKeyDesc(Integer nKeyID) const;
    void SetKeyDesc(Integer nKeyID, std::string sDesc);
    // The key's sequence, which the layer owns.
    [[nodiscard]] KeySequence& GetKey(Integer nKeyID);
    [[nodiscard]] const KeySequence& GetKey(Integer nKeyID) const;
    // How many keys have a sequence.
    [[nodiscard]] Integer CountProgrammed() const;
    // A name for people, UTF-8; no keyboard stores it. Documents hold kNameLength units of it.
    [[nodiscard]] const std::string& Name() const { return m_name; }
    void SetName(std::string sName) { m_name = std::move(sName); }
    // Empties all sequences; the descriptions and the name are unchanged.
    void CleanLayer();

private:
    struct FuncKey {
        KeySequence sequence;
        std::string description;
    };
    [[nodiscard]] const FuncKey& At(Integer nKeyID) const;
    [[nodiscard]] FuncKey& At(Integer nKeyID);

    std::array<FuncKey, kKeys> m_keys;
    std::string m_name;
};

} // namespace qx
