#include "qxcontrols/keyprog/QXFreeProgKeys.h"

#include "qxcontrols/common/Text.h"
#include "qxcontrols/device/QXKeyboardAccess.h"
#include "qxcontrols/keyprog/FreeProgKeysBlock.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "qxcontrols/keys/SequenceCaption.h"

namespace qx {

QXFreeProgKeys::QXFreeProgKeys(const Platform& platform)
    : ModuleControl("QXFreeProgKeys", MODULE_FREEPROGRAMMABLE_KEYS, platform) {
    layoutDisplay.SetDisplayKeyType(DISPLAY_SETTING);
    layoutDisplay.SetCurrProgKey(m_key);
    m_keyClicked = layoutDisplay.OnKeyClicked.Subscribe(
        [this](Long lPositionCode) { PickKey(lPositionCode); });
}

void QXFreeProgKeys::ReloadKeysSettings() {
    TraceNamed(".ReloadKeysSettings");
    m_programmableKeys = 0;
    for (Integer id = m_sequences.MinKeyID(); id <= m_sequences.MaxKeyID(); ++id) {
        const bool programmable = IsProgrammable(id);
        m_sequences.Key(id).SetPositionCode(programmable ? id : Integer{-1});
        m_programmableKeys += programmable ? 1 : 0;
    }
    ShowKeys();
}

void QXFreeProgKeys::KeyFontSizeChanged(Integer nNewSize) {
    TraceNamed(".KeyFontSizeChanged");
    layoutDisplay.SetUserFontSize(nNewSize);
    Refreshed.Raise();
}

// Transfers.

Long QXFreeProgKeys::TransferSize(bool /*LoadInKeyboard*/) const {
    TraceNamed(".TransferSize");
    return BlockSize();
}

Long QXFreeProgKeys::BlockSize() const {
    return m_programmableKeys * kFreeProgKeySlotSize;
}

void QXFreeProgKeys::DefaultValues() {
    TraceNamed(".DefaultValues");
    m_sequences.CleanAll();
    ShowKeys();
}

void QXFreeProgKeys::PrepareDataUpload(bool /*LoadInKeyboard*/) {
    TraceNamed(".PrepareDataUpload");
    const Long base = BaseAddress(ConfigID());
    if (base == -1) {
        static constexpr std::string_view kMessage =
            "INVALID ADDRESSES FOR FREEPROGRAMMABLE KEYS-CONFIG";
        TraceIn(".PrepareDataUpload", kMessage);
        Services().messageBoxes->Show(kMessage);
        return;
    }
    Keyboard()->MemRequestAdd(ConfigID(), base, BlockSize());
}

void QXFreeProgKeys::PrepareDataDownload(bool LoadInKeyboard) {
    PrepareDataUpload(LoadInKeyboard);
}

void QXFreeProgKeys::DataUpload(bool /*LoadInKeyboard*/) {
    static constexpr std::string_view kProcedure = ".DataUpload";
    TraceNamed(kProcedure);
    const Long base = BaseAddress(ConfigID());
    if (base == -1) {
        TraceIn(kProcedure, "Getbase address failed");
        return;
    }
    std::string data;
    if (!Keyboard()->ReadFromMemory(data, base, BlockSize())) {
        TraceIn(kProcedure, "ReadFromMemory failed at " + Hex(base));
        return;
    }
    TraceIn(kProcedure, "Number of programable keys = " + std::to_string(m_programmableKeys));
    DecodeFreeProgKeys(data, ConfigID(), m_sequences);
    ShowKeys();
}

void QXFreeProgKeys::DataDownload(bool /*LoadInKeyboard*/) {
    static constexpr std::string_view kProcedure = ".DataDownload";
    TraceNamed(kProcedure);
    const Long base = BaseAddress(ConfigID());
    if (base == -1)
        return;
    TraceIn(kProcedure, "IO-Address is " + Hex(base));
    TraceIn(kProcedure, "Config ID is " + std::to_string(ConfigID()));
    TraceIn(kProcedure, "Number of keys : " + std::to_string(m_programmableKeys));
    const bool common = ConfigID() != MODULE_FUNCKEYS_X1_4620;
    TraceIn(kProcedure, common ? "WRITE COMMON WAY" : "WRITE 4620 WAY");
    if (common)
        for (const Integer key : StoredFreeProgKeys(m_sequences, ConfigID()))
            TraceIn(kProcedure, Hex(key));
    Guarded(kProcedure, [&] {
        const std::string data = EncodeFreeProgKeys(m_sequences, ConfigID());
        if (!Keyboard()->WriteIntoMemory(data, base, BlockSize()))
            TraceIn(kProcedure, "Download failed at address " + Hex(base));
    });
}

void QXFreeProgKeys::LayoutSourceAssigned() {
    layoutDisplay.SetLayoutSource(LayoutSource());
    ShowKeys();
}

void QXFreeProgKeys::PrefSourceAssigned() {
    layoutDisplay.SetPrefSource(PrefSource());
    ShowKeys();
}

// User actions.

void QXFreeProgKeys::PickKey(Long lPositionCode) {
    m_key = static_cast<Integer>(lPositionCode);
    layoutDisplay.SetCurrProgKey(m_key);
    ShowKeys(); // shows the key before it loses its mark
}

void QXFreeProgKeys::cmdEdit_Click(Integer Index) {
    switch (Index) {
    case 0:
        return Edit();
    case 1:
        return Clean();
    case 2:
        return CleanAll();
    default:
        return;
    }
}

void QXFreeProgKeys::Edit() {
    if (!IsProgrammable(m_key)) {
        KeyNoEditable.Raise(m_key);
        return;
    }
    const Integer key = m_key; // the host may pick another
    const std::string sOutSeq = m_sequences.Key(key).KeyString();
    bool fCancelEdit = false;
    std::string sInSeq = sOutSeq;
    EditSequence.Raise(key, sOutSeq, fCancelEdit, sInSeq);
    if (fCancelEdit)
        return;
    if (!Guarded(".Edit", [&] { m_sequences.Key(key).SetKeyString(std::move(sInSeq)); }))
        return;
    layoutDisplay.ReloadSettingsForKey(key, m_sequences);
    SetDataChanged(true);
    ShowCurrentSequence();
}

void QXFreeProgKeys::Clean() {
    const Integer key = m_key; // the host may pick another
    bool fRemoveIt = true;
    RemoveSequence.Raise(fRemoveIt);
    if (!fRemoveIt)
        return;
    m_sequences.CleanKey(key);
    layoutDisplay.ReloadSettingsForKey(key, m_sequences);
    SetDataChanged(true);
    ShowCurrentSequence();
}

void QXFreeProgKeys::CleanAll() {
    bool fRemoveIt = true;
    RemoveAllSequences.Raise(fRemoveIt);
    if (!fRemoveIt)
        return;
    m_sequences.CleanAll();
    SetDataChanged(true);
    ShowKeys();
}

void QXFreeProgKeys::chkShowDetails_Click() {
    ShowCurrentSequence();
}

void QXFreeProgKeys::lblCurrSeq_KeyPress() {
    if (!IsProgrammable(m_key))
        return;
    bool fEdit = false;
    AdvanceEdit.Raise(fEdit);
    if (fEdit)
        Edit();
}

// Display.

void QXFreeProgKeys::Translate() {
    TraceNamed(".Translate");
    for (std::size_t i = 0; i < cmdEdit.size(); ++i)
        m_buttons[i].ShowOn(cmdEdit[i]);
    lblSequence.Caption = m_sequenceCaption;
    chkShowDetails.Caption = m_showDetails;
    Refreshed.Raise();
}

void QXFreeProgKeys::ReloadColor() {
    TraceNamed(".ReloadColor");
    ShowKeys();
}

bool QXFreeProgKeys::IsProgrammable(Long lID) const {
    return LayoutSource() != nullptr && LayoutSource()->KeySupport(lID) == KEYMODE_PROG;
}

void QXFreeProgKeys::ShowKeys() {
    layoutDisplay.ReloadKeysSettings(m_sequences);
    ShowCurrentSequence();
}

void QXFreeProgKeys::ShowCurrentSequence() {
    lblCurrSeq.Caption.clear();
    if (m_key != kNoKey)
        lblCurrSeq.Caption =
            SequenceCaption(m_sequences.Key(m_key), LayoutSource(), chkShowDetails.Value == 1);
    Refreshed.Raise();
}

void QXFreeProgKeys::TraceIn(std::string_view sProcedure, std::string_view sText) const {
    TraceNamed(std::string(sProcedure) + " " + std::string(sText));
}

} // namespace qx
