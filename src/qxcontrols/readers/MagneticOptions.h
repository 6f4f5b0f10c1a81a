// MagneticOptions: the options of the magnetic-stripe reader as a whole.
#pragma once

#include "qxcontrols/readers/OptionBool.h"

namespace qx {

// Initially all options are on.
class MagneticOptions {
public:
    MagneticOptions() {
        m_verifyLRC.SetValue(true);
        m_verifyLastChar.SetValue(true);
        m_sendImmediate.SetValue(true);
    }

    // The reader checks a track's longitudinal redundancy check character.
    [[nodiscard]] OptionBool& VerifyLRC() { return m_verifyLRC; }
    [[nodiscard]] const OptionBool& VerifyLRC() const { return m_verifyLRC; }
    void SetVerifyLRC(const OptionBool& option) { m_verifyLRC = option; }

    // The reader checks a track's last character.
    [[nodiscard]] OptionBool& VerifyLastChar() { return m_verifyLastChar; }
    [[nodiscard]] const OptionBool& VerifyLastChar() const { return m_verifyLastChar; }
    void SetVerifyLastChar(const OptionBool& option) { m_verifyLastChar = option; }

    // The reader sends a track's data as soon as it has been read.
    [[nodiscard]] OptionBool& SendImmediate() { return m_sendImmediate; }
    [[nodiscard]] const OptionBool& SendImmediate() const { return m_sendImmediate; }
    void SetSendImmediate(const OptionBool& option) { m_sendImmediate = option; }

private:
    OptionBool m_verifyLRC;
    OptionBool m_verifyLastChar;
    OptionBool m_sendImmediate;
};

} // namespace qx
