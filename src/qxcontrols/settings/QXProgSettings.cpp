#include "qxcontrols/settings/QXProgSettings.h"

#include "qxcontrols/common/Trace.h"

#include <limits>
#include <stdexcept>
#include <utility>

namespace qx {

namespace {

constexpr std::string_view kRootPath = R"(Software\Tandor\ConfigurationApp\)";
constexpr char kSeparator = '\\';

bool Fits(PreferenceType type, Long lValue) {
    using Limits = std::numeric_limits<Integer>;
    return type != PreferenceType::Integer16 ||
           (lValue >= Limits::min() && lValue <= Limits::max());
}

const PreferenceInfo& InfoOf(std::string_view sProperty) {
    for (const PreferenceInfo& info : Preferences())
        if (info.property == sProperty)
            return info;
    throw std::invalid_argument("unknown preference \"" + std::string(sProperty) + "\"");
}

// Throws if the value is not allowed for the preference.
void Check(const PreferenceInfo& info, const QXProgSettings::Value& value) {
    const std::string name(info.property);
    if (info.type == PreferenceType::Boolean && !std::holds_alternative<bool>(value))
        throw std::invalid_argument(name + " must be true or false");
    if (info.type == PreferenceType::String && !std::holds_alternative<std::string>(value))
        throw std::invalid_argument(name + " must be a text");
    if (info.type == PreferenceType::Boolean || info.type == PreferenceType::String)
        return;
    const Long* number = std::get_if<Long>(&value);
    if (number == nullptr)
        throw std::invalid_argument(name + " must be a number");
    if (!Fits(info.type, *number))
        throw std::out_of_range(name + ": " + std::to_string(*number) +
                                " is not a number from -32768 to 32767");
}

// The keys of preferences end with the separator, those of single values do not.
std::string PathOf(const PreferenceInfo& info) {
    std::string path = std::string(kRootPath).append(info.subKey);
    if (info.storage != PreferenceStorage::AtOnce)
        path += kSeparator;
    return path;
}

Preference PosBlock(Integer nBlockID) {
    return static_cast<Preference>(static_cast<int>(Preference::POSColorBlock0) + nBlockID);
}

} // namespace

QXProgSettings::QXProgSettings(RegistryAccess& registry, const Platform& platform)
    : m_registry(registry), m_platform(platform) {
    for (const PreferenceInfo& info : Preferences())
        m_numbers[static_cast<std::size_t>(info.id)] = info.loadDefault;
}

void QXProgSettings::Load() {
    Trace("QXProgSettings.Load");
    for (const PreferenceInfo& info : Preferences())
        if (info.storage != PreferenceStorage::AtOnce)
            Hold(info, Read(info));
    m_dataChanged = false;
    TraceWindow("LOAD WINDOW POSITION");
}

void QXProgSettings::Save() {
    Trace("QXProgSettings.Save");
    WriteAll(PreferenceStorage::Settings);
    m_dataChanged = false;
}

void QXProgSettings::SetDefaults() {
    Trace("QXProgSettings.SetDefaults");
    for (const PreferenceInfo& info : Preferences())
        if (info.resetTo)
            Change(info.id, *info.resetTo);
}

Long QXProgSettings::POSColorBlock(Integer nBlockID) const {
    Trace("QXProgSettings.POSColorBlock");
    if (nBlockID >= 0 && nBlockID < kPosBlocks)
        return Number(PosBlock(nBlockID));
    m_platform.messageBoxes->Show("INVALID POSColorBlock INDEX " + std::to_string(nBlockID));
    return 0;
}

void QXProgSettings::DefPOSColorBlock(Integer nBlockID, Long lColor) {
    Trace("QXProgSettings.DefPOSColorBlock");
    if (nBlockID >= 0 && nBlockID < kPosBlocks)
        Change(PosBlock(nBlockID), lColor);
    else
        m_platform.messageBoxes->Show("INVALID DefPOSColorBlock INDEX " + std::to_string(nBlockID));
}

void QXProgSettings::SetPosCodePage(std::string sFilename) {
    m_dataChanged = m_dataChanged || sFilename != m_posCodePage;
    m_posCodePage = std::move(sFilename);
}

void QXProgSettings::SetWinParam(Integer nState, Long nWidth, Long nHeight, Long nTop, Long nLeft) {
    Trace("QXProgSettings.SetWinParam");
    Change(Preference::WinState, nState);
    Change(Preference::WinWidth, nWidth);
    Change(Preference::WinHeight, nHeight);
    Change(Preference::WinTop, nTop);
    Change(Preference::WinLeft, nLeft);
}

void QXProgSettings::SaveWinPos() {
    Trace("QXProgSettings.SaveWinPos");
    WriteAll(PreferenceStorage::Window);
    TraceWindow("SAVE WINDOW POSITION");
}

std::string QXProgSettings::GetLastDownloadFile() const {
    Trace("QXProgSettings.GetLastDownloadFile");
    return std::get<std::string>(Read(InfoOf(Preference::LastDownloadFile)));
}

void QXProgSettings::SetLastDownloadFile(std::string_view sFile) {
    Trace("QXProgSettings.SetLastDownloadFile");
    Write(InfoOf(Preference::LastDownloadFile), std::string(sFile));
}

bool QXProgSettings::GetShowStartupWizard() const {
    Trace("QXProgSettings.GetShowStartupWizard");
    return std::get<bool>(Read(InfoOf(Preference::ShowStartupWizard)));
}

void QXProgSettings::SetShowStartupWizard(bool fShow) {
    Trace("QXProgSettings.SetShowStartupWizard");
    Write(InfoOf(Preference::ShowStartupWizard), fShow);
}

Integer QXProgSettings::GetShowStartupAction() const {
    Trace("QXProgSettings.GetShowStartupAction");
    return static_cast<Integer>(std::get<Long>(Read(InfoOf(Preference::ShowStartupAction))));
}

void QXProgSettings::SetShowStartupAction(Integer nAction) {
    Trace("QXProgSettings.SetShowStartupAction");
    Write(InfoOf(Preference::ShowStartupAction), Long{nAction});
}

QXProgSettings::Value QXProgSettings::Get(std::string_view sProperty) const {
    const PreferenceInfo& info = InfoOf(sProperty);
    return info.storage == PreferenceStorage::AtOnce ? Read(info) : Held(info);
}

void QXProgSettings::Set(std::string_view sProperty, const Value& value) {
    const PreferenceInfo& info = InfoOf(sProperty);
    Check(info, value);
    if (info.storage == PreferenceStorage::AtOnce)
        Write(info, value);
    else
        Hold(info, value);
}

Long QXProgSettings::Number(Preference preference) const {
    return m_numbers[static_cast<std::size_t>(preference)];
}

Integer QXProgSettings::Int(Preference preference) const {
    return static_cast<Integer>(Number(preference));
}

void QXProgSettings::Change(Preference preference, Long lValue) {
    Long& held = m_numbers[static_cast<std::size_t>(preference)];
    const bool isWindow = InfoOf(preference).storage == PreferenceStorage::Window;
    m_dataChanged = m_dataChanged || (held != lValue && !isWindow);
    held = lValue;
}

QXProgSettings::Value QXProgSettings::Held(const PreferenceInfo& info) const {
    if (info.type == PreferenceType::String)
        return m_posCodePage;
    if (info.type == PreferenceType::Boolean)
        return Bool(info.id);
    return Number(info.id);
}

void QXProgSettings::Hold(const PreferenceInfo& info, const Value& value) {
    if (info.type == PreferenceType::String)
        SetPosCodePage(std::get<std::string>(value));
    else if (info.type == PreferenceType::Boolean)
        ChangeBool(info.id, std::get<bool>(value));
    else
        Change(info.id, std::get<Long>(value));
}

QXProgSettings::Value QXProgSettings::Read(const PreferenceInfo& info) const {
    m_registry.SetPath(PathOf(info));
    if (info.type == PreferenceType::String)
        return m_registry.ReadString(info.valueName, "");
    if (info.type == PreferenceType::Boolean)
        return m_registry.ReadBoolean(info.valueName, info.loadDefault != 0);
    const Long number = m_registry.ReadNumber(info.valueName, info.loadDefault);
    return Fits(info.type, number) ? number : info.loadDefault;
}

void QXProgSettings::Write(const PreferenceInfo& info, const Value& value) const {
    m_registry.SetPath(PathOf(info));
    if (const auto* text = std::get_if<std::string>(&value))
        m_registry.WriteString(info.valueName, *text);
    else if (const bool* isOn = std::get_if<bool>(&value))
        m_registry.WriteBoolean(info.valueName, *isOn);
    else
        m_registry.WriteNumber(info.valueName, std::get<Long>(value));
}

void QXProgSettings::WriteAll(PreferenceStorage storage) const {
    for (const PreferenceInfo& info : Preferences())
        if (info.storage == storage)
            Write(info, Held(info));
}

void QXProgSettings::TraceWindow(std::string_view sTitle) const {
    Trace(sTitle);
    Trace("STATE =" + std::to_string(WinState()));
    Trace("WIDTH = " + std::to_string(WinWidth()) + "  HEIGHT = " + std::to_string(WinHeight()));
    Trace("TOP   = " + std::to_string(WinTop()) + "  LEFT = " + std::to_string(WinLeft()));
}

} // namespace qx
