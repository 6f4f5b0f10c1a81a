#include "qxcontrols/keys/QXKeyboardLayoutData.h"

#include "qxcontrols/common/Text.h"
#include "qxcontrols/common/Trace.h"
#include "qxcontrols/keys/KeySequence.h"
#include "qxcontrols/keys/QxlTextSource.h"

#include <stdexcept>
#include <string_view>
#include <utility>

namespace qx {

namespace {

constexpr char kFolderEnd = '\\';

} // namespace

QXKeyboardLayoutData::QXKeyboardLayoutData()
    : QXKeyboardLayoutData(std::make_unique<QxlTextSource>()) {}

QXKeyboardLayoutData::QXKeyboardLayoutData(std::unique_ptr<LayoutTextSource> source)
    : m_source(std::move(source)) {
    Trace("QXKeyboardLayoutData.UserControl_Initialize");
    SetLayoutPath("");
}

QXKeyboardLayoutData::~QXKeyboardLayoutData() = default;

void QXKeyboardLayoutData::SetLayoutPath(std::string sPath) {
    m_layoutPath = std::move(sPath);
    if (!m_layoutPath.ends_with(kFolderEnd))
        m_layoutPath += kFolderEnd;
}

bool QXKeyboardLayoutData::OpenLayoutByName(const std::string& sFilename) {
    Trace("QXKeyboardLayoutData.OpenLayoutByName");
    return Opened([&] {
        m_source->Reset();
        return m_source->Open(m_layoutPath + sFilename);
    });
}

bool QXKeyboardLayoutData::OpenLayoutByID(Long lLangID) {
    Trace("QXKeyboardLayoutData.OpenLayoutByID");
    return Opened([&] { return m_source->OpenLanguage(lLangID, m_layoutPath); });
}

template <typename Open>
bool QXKeyboardLayoutData::Opened(Open open) {
    try {
        if (!open())
            return Failed(m_source->Error());
        LoadAllKeys();
        return true;
    } catch (const std::exception& error) {
        return Failed(error.what());
    } catch (...) { // sources may throw anything
        return Failed({});
    }
}

bool QXKeyboardLayoutData::Failed(std::string sError) {
    m_error = sError.empty() ? "the layout could not be opened" : std::move(sError);
    Trace("Error in QXKeyboardLayoutData " + m_error);
    return false;
}

// All or nothing: the keys change only after every line has been read.
void QXKeyboardLayoutData::LoadAllKeys() {
    std::string nativeName(Trim(m_source->String(LayoutTextSource::kNativeName)));
    LayoutKeys keys = m_keys;
    for (Long id = kMinKeyID; id <= kMaxKeyID; ++id) {
        const Long number = LayoutTextSource::kFirstKey + id;
        try {
            keys[static_cast<std::size_t>(id)].Parse(id, m_source->String(number));
        } catch (const std::exception& error) {
            throw std::runtime_error(m_source->Place(number) + ": " + error.what());
        }
    }
    m_nativeName = std::move(nativeName);
    m_keys = std::move(keys);
    m_loaded = true;
    m_error.clear();
}

const LayoutKey& QXKeyboardLayoutData::Key(Long lID) const {
    static const LayoutKey none;
    return lID < kMinKeyID || lID > kMaxKeyID ? none : m_keys[static_cast<std::size_t>(lID)];
}

Long QXKeyboardLayoutData::GetMinKeyID() const {
    Trace("QXKeyboardLayoutData.GetMinKeyID");
    return kMinKeyID;
}

Long QXKeyboardLayoutData::GetMaxKeyID() const {
    Trace("QXKeyboardLayoutData.GetMaxKeyID");
    return kMaxKeyID;
}

const std::string& QXKeyboardLayoutData::KeyCaption(Long lID) const {
    Trace("QXKeyboardLayoutData.KeyCaption");
    return Key(lID).caption;
}

const std::string& QXKeyboardLayoutData::KeyLongCaption(Long lID) const {
    Trace("QXKeyboardLayoutData.KeyLongCaption");
    return Key(lID).longCaption;
}

KEY_SUPPORT QXKeyboardLayoutData::KeySupport(Long lID) const {
    Trace("QXKeyboardLayoutData.KeySupport");
    return Key(lID).support;
}

COLOR_SET QXKeyboardLayoutData::KeyColor(Long lID) const {
    Trace("QXKeyboardLayoutData.KeyColor");
    return Key(lID).color;
}

Single QXKeyboardLayoutData::KeyX(Long lID) const {
    Trace("QXKeyboardLayoutData.KeyX");
    return Key(lID).x;
}

Single QXKeyboardLayoutData::KeyY(Long lID) const {
    Trace("QXKeyboardLayoutData.KeyY");
    return Key(lID).y;
}

Single QXKeyboardLayoutData::KeyWidth(Long lID) const {
    Trace("QXKeyboardLayoutData.KeyWidth");
    return Key(lID).width;
}

Single QXKeyboardLayoutData::KeyHeight(Long lID) const {
    Trace("QXKeyboardLayoutData.KeyHeight");
    return Key(lID).height;
}

const std::string& QXKeyboardLayoutData::CaptionForText(Long lID) const {
    const LayoutKey& key = Key(lID);
    return Trim(key.caption).empty() ? key.longCaption : key.caption;
}

std::string
QXKeyboardLayoutData::ConvertKeyStringIntoTextStringUseUpcodes(const std::string& sInSeq,
                                                               bool fUseUpcodes) const {
    Trace("QXKeyboardLayoutData.ConvertKeyStringIntoTextStringUseUpcodes");
    constexpr auto kField = static_cast<std::size_t>(KeySequence::kFieldWidth);
    std::string text;
    // A single character at the end is not a code.
    for (std::size_t place = 0; place + 1 < sInSeq.size(); place += kField) {
        const Long code = CodeAt(sInSeq, place);
        if (code < kRelease)
            text += CaptionForText(code) + " ";
        else if (fUseUpcodes)
            text += m_upCodePrefix + CaptionForText(code - kRelease) + " ";
    }
    return text;
}

std::string QXKeyboardLayoutData::ConvertKeyStringIntoTextString(const std::string& sInSeq) const {
    Trace("QXKeyboardLayoutData.ConvertKeyStringIntoTextString");
    return ConvertKeyStringIntoTextStringUseUpcodes(sInSeq, m_showUpcodes);
}

} // namespace qx
