// LayoutTextSource: a table of numbered texts from which a keyboard layout is read.
//
// String 3 is the layout's own name, string 1000 + k the line of position code k.
// QXKeyboardLayoutData owns its source.
#pragma once

#include "qxcontrols/common/Types.h"

#include <string>

namespace qx {

class LayoutTextSource {
public:
    static constexpr Long kLanguageID = 1;
    static constexpr Long kNativeName = 3;
    static constexpr Long kFirstKey = 1000;
    static constexpr Long kLastKey = 1140;

    virtual ~LayoutTextSource() = default;

    // Discards all texts.
    virtual void Reset() = 0;
    // Reads the texts from the layout file with this full path. Returns false or throws on failure.
    virtual bool Open(const std::string& sFilename) = 0;
    // Reads the texts from the layout for a language in a folder, and sets lLangID to the id of the
    // chosen layout. Returns false or throws on failure.
    virtual bool OpenLanguage(Long& lLangID, const std::string& sFolder) = 0;
    // The text with this number; empty if there is none.
    [[nodiscard]] virtual std::string String(Long lNumber) const = 0;

    // For messages: why the last open failed, and the place of the text with this number.
    [[nodiscard]] virtual std::string Error() const { return {}; }
    [[nodiscard]] virtual std::string Place(Long lNumber) const {
        return "string " + std::to_string(lNumber);
    }
};

} // namespace qx
