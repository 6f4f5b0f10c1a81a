// QXKeyboardLayoutData: the captions and positions of the connected keyboard's keys.
//
// The host creates one, opens a layout by file name or by language id, and passes it to all module
// controls as their LayoutSource. It knows every position code from 0 to 140; accessors return an
// empty text or 0 for any other. It also converts key sequences to text for people.
//
// An open that fails leaves the layout unchanged and raises nothing; Error then gives the reason.
#pragma once

#include "qxcontrols/common/Types.h"
#include "qxcontrols/keys/LayoutLine.h"

#include <array>
#include <memory>
#include <string>

namespace qx {

class LayoutTextSource;

class QXKeyboardLayoutData {
public:
    QXKeyboardLayoutData(); // reads .qxl files
    explicit QXKeyboardLayoutData(std::unique_ptr<LayoutTextSource> source);
    ~QXKeyboardLayoutData();
    QXKeyboardLayoutData(const QXKeyboardLayoutData&) = delete;
    QXKeyboardLayoutData& operator=(const QXKeyboardLayoutData&) = delete;

    // The folder of the layouts; "\" is appended unless it is already there.
    [[nodiscard]] const std::string& LayoutPath() const { return m_layoutPath; }
    void SetLayoutPath(std::string sPath);

    // Opens the layout LayoutPath & sFilename.
    bool OpenLayoutByName(const std::string& sFilename);
    // Opens the layout in LayoutPath for a language (1033: US English), or otherwise one for the
    // same language in another country.
    bool OpenLayoutByID(Long lLangID);
    // Whether a layout has been opened.
    [[nodiscard]] bool Loaded() const { return m_loaded; }
    // Why the last open failed, for people; empty if it succeeded.
    [[nodiscard]] const std::string& Error() const { return m_error; }
    // The layout's own name.
    [[nodiscard]] const std::string& NativeName() const { return m_nativeName; }

    [[nodiscard]] Long GetMinKeyID() const;
    [[nodiscard]] Long GetMaxKeyID() const;
    [[nodiscard]] const std::string& KeyCaption(Long lID) const;
    [[nodiscard]] const std::string& KeyLongCaption(Long lID) const;
    [[nodiscard]] KEY_SUPPORT KeySupport(Long lID) const;
    [[nodiscard]] COLOR_SET KeyColor(Long lID) const;
    // The key's rectangle in the layout's own unit. A key without a rectangle in the layout keeps
    // the one of the previous layout.
    [[nodiscard]] Single KeyX(Long lID) const;
    [[nodiscard]] Single KeyY(Long lID) const;
    [[nodiscard]] Single KeyWidth(Long lID) const;
    [[nodiscard]] Single KeyHeight(Long lID) const;

    // The codes of a KeySequence's KeyString as captions (the long one if the short one is blank),
    // each followed by a space. A release is UpCodePrefix and the caption, or omitted if
    // fUseUpcodes is false.
    [[nodiscard]] std::string ConvertKeyStringIntoTextStringUseUpcodes(const std::string& sInSeq,
                                                                       bool fUseUpcodes) const;
    // The same with fUseUpcodes = ShowUpcodes.
    [[nodiscard]] std::string ConvertKeyStringIntoTextString(const std::string& sInSeq) const;
    [[nodiscard]] const std::string& UpCodePrefix() const { return m_upCodePrefix; }
    void SetUpCodePrefix(std::string sPrefix) { m_upCodePrefix = std::move(sPrefix); }
    [[nodiscard]] bool ShowUpcodes() const { return m_showUpcodes; }
    void SetShowUpcodes(bool fShow) { m_showUpcodes = fShow; }

private:
    static constexpr Long kMinKeyID = 0;
    static constexpr Long kMaxKeyID = 140;

    using LayoutKeys = std::array<LayoutKey, kMaxKeyID + 1>;

    // Loads the keys if open() opens the source; never throws.
    template <typename Open>
    bool Opened(Open open);
    void LoadAllKeys();
    bool Failed(std::string sError);
    [[nodiscard]] const LayoutKey& Key(Long lID) const;
    [[nodiscard]] const std::string& CaptionForText(Long lID) const;

    std::unique_ptr<LayoutTextSource> m_source;
    LayoutKeys m_keys;
    std::string m_layoutPath;
    std::string m_nativeName;
    std::string m_upCodePrefix = "^";
    std::string m_error;
    bool m_showUpcodes = true;
    bool m_loaded = false;
};

} // namespace qx
