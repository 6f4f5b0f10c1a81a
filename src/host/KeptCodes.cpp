#include "host/KeptCodes.h"

#include "qxcontrols/keys/KeySequence.h"

namespace qx::host {

KeptCodes KeepCodes(const std::string& sKeyString) {
    KeySequence recorded;
    recorded.SetKeyString(sKeyString);
    KeySequence kept;
    std::vector<Integer> leftOut;
    for (const Integer code : recorded.Codes())
        if (code >= 1 && code <= 255)
            kept.AddByte(code);
        else
            leftOut.push_back(code);
    return {kept.KeyString(), leftOut};
}

} // namespace qx::host
