#include "qxcontrols/keys/QXKeyboardLayoutData.h"

#include "qxcontrols/common/Text.h"
#include "qxcontrols/common/Utf.h"
#include "qxcontrols/device/Trace.h"
#include "qxcontrols/keys/KeySequence.h"
#include "qxcontrols/keys/QxlTextSource.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <stdexcept>
#include <string_view>

namespace qx {

namespace {

constexpr char kFolderEnd = '\\';
constexpr std::string_view kLongCaptionFollows = "\\\\";
constexpr Long kRelease = 128; // added to a key's id by the code of its release

// A fraction is rounded to the nearest whole number, a half to the even one.
Single WholeNumber(std::string_view text) {
    std::string_view digits = Trim(text);
    if (digits.starts_with('+'))
        digits.remove_prefix(1);
    double number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (error == std::errc::invalid_argument || end != digits.data() + digits.size() ||
        std::isnan(number))
        throw std::invalid_argument("\"" + std::string(text) + "\" is no number");
    number = std::nearbyint(number);
    if (error != std::errc() || number < std::numeric_limits<Integer>::min() ||
        number > std::numeric_limits<Integer>::max())
        throw std::overflow_error(std::string(text) + " does not fit 16 bits");
    return static_cast<Single>(number);
}

// The digit at the line's front if it is 0, 1 or 2, else 0; the line loses that character.
int TakeModeDigit(std::string_view& line) {
    const char digit = line.empty() ? '0' : line.front();
    SkipCharacters(line, 1);
    return digit >= '0' && digit <= '2' ? digit - '0' : 0;
}

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
    try {
        m_source->Reset();
        if (!m_source->Open(m_layoutPath + sFilename))
            return Failed(m_source->Error());
        LoadAllKeys();
        return true;
    } catch (const std::exception& error) {
        return Failed(error.what());
    }
}

bool QXKeyboardLayoutData::OpenLayoutByID(Long lLangID) {
    Trace("QXKeyboardLayoutData.OpenLayoutByID");
    try {
        if (!m_source->OpenLanguage(lLangID, m_layoutPath))
            return Failed(m_source->Error());
        LoadAllKeys();
        return true;
    } catch (const std::exception& error) {
        return Failed(error.what());
    }
}

bool QXKeyboardLayoutData::Failed(std::string sError) {
    m_error = sError.empty() ? "the layout could not be opened" : std::move(sError);
    Trace("Error in QXKeyboardLayoutData " + m_error);
    return false;
}

// All or nothing: the keys change only after every line has been read.
void QXKeyboardLayoutData::LoadAllKeys() {
    KeyRecords keys = m_keys;
    for (Long id = kMinKeyID; id <= kMaxKeyID; ++id) {
        const Long number = LayoutTextSource::kFirstKey + id;
        try {
            keys[static_cast<std::size_t>(id)].Parse(id, m_source->String(number));
        } catch (const std::exception& error) {
            throw std::runtime_error(m_source->Place(number) + ": position code " +
                                     std::to_string(id) + ": " + error.what());
        }
    }
    m_nativeName = Trim(m_source->String(LayoutTextSource::kNativeName));
    m_keys = std::move(keys);
    m_loaded = true;
    m_error.clear();
}

void QXKeyboardLayoutData::KeyRecord::Parse(Long lID, std::string_view line) {
    constexpr std::size_t kSeparators = 2; // whatever characters these are
    line = TrimLeft(line);
    caption.clear();
    longCaption.clear();
    support = KEYMODE_NONE;
    color = COLOR_SET_1;
    if (line.starts_with('('))
        line = ParseGeometry(line);
    if (line.empty())
        return;
    support = static_cast<KEY_SUPPORT>(TakeModeDigit(line));
    color = static_cast<COLOR_SET>(TakeModeDigit(line));

    SkipCharacters(line, kSeparators);
    const std::size_t captionEnd = line.find(kLongCaptionFollows);
    caption = line.substr(0, captionEnd);
    if (captionEnd != std::string_view::npos)
        longCaption = line.substr(captionEnd + kLongCaptionFollows.size());
    else
        // The number is decimal, whatever the word says.
        longCaption = caption.empty() ? "Hex(" + std::to_string(lID) + ")" : caption;
}

std::string_view QXKeyboardLayoutData::KeyRecord::ParseGeometry(std::string_view line) {
    struct Number {
        Single KeyRecord::*member;
        char end;
    };
    constexpr std::array<Number, 4> kNumbers = {{{&KeyRecord::y, ','},
                                                 {&KeyRecord::x, ','},
                                                 {&KeyRecord::width, ','},
                                                 {&KeyRecord::height, ')'}}};
    line.remove_prefix(1);
    for (const auto& [member, separator] : kNumbers) {
        const std::size_t end = line.find(separator);
        if (end == std::string_view::npos)
            throw std::invalid_argument(std::string("no \"") + separator +
                                        "\" in (top,left,width,height)");
        this->*member = WholeNumber(line.substr(0, end));
        line.remove_prefix(end + 1);
    }
    return line;
}

const QXKeyboardLayoutData::KeyRecord& QXKeyboardLayoutData::Key(Long lID) const {
    static const KeyRecord none;
    return lID < kMinKeyID || lID > kMaxKeyID ? none : m_keys[static_cast<std::size_t>(lID)];
}

const std::string& QXKeyboardLayoutData::KeyCaption(Long lID) const {
    return Key(lID).caption;
}

const std::string& QXKeyboardLayoutData::KeyLongCaption(Long lID) const {
    return Key(lID).longCaption;
}

KEY_SUPPORT QXKeyboardLayoutData::KeySupport(Long lID) const {
    return Key(lID).support;
}

COLOR_SET QXKeyboardLayoutData::KeyColor(Long lID) const {
    return Key(lID).color;
}

Single QXKeyboardLayoutData::KeyX(Long lID) const {
    return Key(lID).x;
}

Single QXKeyboardLayoutData::KeyY(Long lID) const {
    return Key(lID).y;
}

Single QXKeyboardLayoutData::KeyWidth(Long lID) const {
    return Key(lID).width;
}

Single QXKeyboardLayoutData::KeyHeight(Long lID) const {
    return Key(lID).height;
}

const std::string& QXKeyboardLayoutData::CaptionForText(Long lID) const {
    const KeyRecord& key = Key(lID);
    return Trim(key.caption).empty() ? key.longCaption : key.caption;
}

std::string
QXKeyboardLayoutData::ConvertKeyStringIntoTextStringUseUpcodes(const std::string& sInSeq,
                                                               bool fUseUpcodes) const {
    Trace("QXKeyboardLayoutData.ConvertKeyStringIntoTextStringUseUpcodes");
    constexpr auto kField = static_cast<std::size_t>(KeySequence::kFieldWidth);
    std::string text;
    // A single character left over at the end is no code.
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
