#include "com/ClassBuilder.h"
#include "qxcontrols/keys/KeyboardSequences.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "qxcontrols/keys/QXLayoutDisplay.h"
#include "qxcontrols/keys/QXSequencer.h"
#include "qxcontrols/settings/QXProgSettings.h"

namespace qx::com {

template <>
const Enumeration& EnumerationOf<KEY_SUPPORT>() {
    static const Enumeration table{"KEY_SUPPORT",
                                   "{9FEF64A0-D8A8-4108-8B78-77A1BE0C1558}",
                                   {{"KEYMODE_NONE", KEYMODE_NONE},
                                    {"KEYMODE_EXIST", KEYMODE_EXIST},
                                    {"KEYMODE_PROG", KEYMODE_PROG}}};
    return table;
}

template <>
const Enumeration& EnumerationOf<COLOR_SET>() {
    static const Enumeration table{
        "COLOR_SET",
        "{C8E43D7E-3170-4274-8A48-F6AA8918DDDF}",
        {{"COLOR_SET_1", COLOR_SET_1}, {"COLOR_SET_2", COLOR_SET_2}, {"COLOR_SET_3", COLOR_SET_3}}};
    return table;
}

template <>
const Enumeration& EnumerationOf<DisplayType>() {
    static const Enumeration table{
        "DisplayType",
        "{9CC6DD3C-F780-4815-8431-7B11C14ABB56}",
        {{"DISPLAY_SETTING", DISPLAY_SETTING}, {"DISPLAY_PROG", DISPLAY_PROG}}};
    return table;
}

template <>
const Class& TableOf<KeySequence>() {
    using C = KeySequence;
    static const Class table =
        ClassBuilder<C>("KeySequence", Look::None, "{A73BB686-1FEE-4EE5-A3CD-E2B3D2E8B934}",
                        "{AA4ABCA2-8075-418E-95B7-024F779F705E}")
            .Method("AddByte", 1, &C::AddByte, {"nValue"})
            .Method("ClearLast", 2, &C::ClearLast)
            .Method("Clear", 3, &C::Clear)
            .Method("Length", 4, &C::Length)
            .Method("GetPositionCode", 5, &C::GetPositionCode, {"nIndex"})
            .Property("KeyString", 6, &C::KeyString, &C::SetKeyString)
            .Property("PositionCode", 7, &C::PositionCode, &C::SetPositionCode)
            .Property("Tag1", 8, &C::Tag1, &C::SetTag1)
            .Property("Tag2", 9, &C::Tag2, &C::SetTag2)
            .Method("CopyContent", 10, &C::CopyContent, {"oSource"})
            .Built();
    return table;
}

template <>
const Class& TableOf<KeyboardSequences>() {
    using C = KeyboardSequences;
    static const Class table =
        ClassBuilder<C>("KeyboardSequences", Look::None, "{31F17CFF-E62B-49B9-AC74-F16FCBD9E03B}",
                        "{2355F1B6-D13C-464D-AF1E-F10F06AF528B}")
            .Method("Key", 1, Changing(&C::Key), {"lID"})
            .Method("CleanKey", 2, &C::CleanKey, {"lID"})
            .Method("CleanAll", 3, &C::CleanAll)
            .Method("SetAllAsUnsused", 4, &C::SetAllAsUnsused)
            .Method("GetNumberOfProgamableKeys", 5, &C::GetNumberOfProgamableKeys)
            .Property("MinKeyID", 6, &C::MinKeyID)
            .Property("MaxKeyID", 7, &C::MaxKeyID)
            .Built();
    return table;
}

template <>
const Class& TableOf<QXKeyboardLayoutData>() {
    using C = QXKeyboardLayoutData;
    static const Class table =
        ClassBuilder<C>(
            "QXKeyboardLayoutData", Look::Invisible, "{D05CBE02-99A0-46F4-BD29-E529F58147D7}",
            "{7F78084A-02EA-41D9-BB29-9655DDFD9177}", "{62914465-D734-4FAC-BB85-95FB010C5F8C}")
            .Method("GetMinKeyID", 1, &C::GetMinKeyID)
            .Method("GetMaxKeyID", 2, &C::GetMaxKeyID)
            .Method("ConvertKeyStringIntoTextString", 3, &C::ConvertKeyStringIntoTextString,
                    {"sInSeq"})
            .Method("ConvertKeyStringIntoTextStringUseUpcodes", 4,
                    &C::ConvertKeyStringIntoTextStringUseUpcodes, {"sInSeq", "fUseUpcodes"})
            .Method("OpenLayoutByName", 5, &C::OpenLayoutByName, {"sFilename"})
            .Method("OpenLayoutByID", 6, &C::OpenLayoutByID, {"lLangID"})
            .Method("KeyCaption", 7, &C::KeyCaption, {"lID"})
            .Method("KeyLongCaption", 8, &C::KeyLongCaption, {"lID"})
            .Method("KeySupport", 9, &C::KeySupport, {"lID"})
            .Method("KeyColor", 10, &C::KeyColor, {"lID"})
            .Method("KeyX", 11, &C::KeyX, {"lID"})
            .Method("KeyY", 12, &C::KeyY, {"lID"})
            .Method("KeyWidth", 13, &C::KeyWidth, {"lID"})
            .Method("KeyHeight", 14, &C::KeyHeight, {"lID"})
            .Property("LayoutPath", 15, &C::LayoutPath, &C::SetLayoutPath)
            .Property("NativeName", 16, &C::NativeName)
            .Property("UpCodePrefix", 17, &C::UpCodePrefix, &C::SetUpCodePrefix)
            .Property("ShowUpcodes", 18, &C::ShowUpcodes, &C::SetShowUpcodes)
            .Built();
    return table;
}

template <>
const Class& TableOf<QXLayoutDisplay>() {
    using C = QXLayoutDisplay;
    static const Class table =
        ClassBuilder<C>("QXLayoutDisplay", Look::Visible, "{7E8A332A-83D7-438B-8FAC-E430E3076FA5}",
                        "{B494D5B5-C7FC-4ECB-B2D3-33EDC4EA8BCF}",
                        "{40D70E1E-8E5A-49D1-AD93-C3E9722445C6}")
            .Method("ReloadKeysSettings", 1, &C::ReloadKeysSettings, {"KeyData"})
            .Method("ReloadSettingsForKey", 2, &C::ReloadSettingsForKey, {"lID", "KeyData"})
            .Method("SelectKey", 3, &C::SelectKey, {"nPositionCode"})
            .Method("SetUserFontSize", 4, &C::SetUserFontSize, {"nNewSize"})
            .Property("DisplayKeyType", 5, &C::DisplayKeyType, &C::SetDisplayKeyType)
            .Property("CurrProgKey", 6, &C::CurrProgKey, &C::SetCurrProgKey)
            .ReadableService("LayoutSource", 7, &C::SetLayoutSource)
            .Service("PrefSource", 8, &C::SetPrefSource)
            .Event("OnKeyClicked", 1, &C::OnKeyClicked, {"lPositionCode"})
            .Built();
    return table;
}

template <>
const Class& TableOf<QXSequencer>() {
    using C = QXSequencer;
    static const Class table =
        ClassBuilder<C>("QXSequencer", Look::Invisible, "{BE1080BB-163F-4C78-8642-3614F33A1AF6}",
                        "{3A924ED6-E63C-4B35-A91A-957621A76758}",
                        "{68ED5E3B-EC43-4A86-9962-324A76EDED5B}")
            .Method("ShowSequenceEditor", 1, &C::ShowSequenceEditor,
                    {"nPosCode", "sCurrSeq", Out("sNewSeq"), "nMaxLength"})
            .Method("Translate", 2, &C::Translate)
            .Method("ReloadKeySettings", 3, &C::ReloadKeySettings)
            .Method("SetKeyFontSize", 4, &C::SetKeyFontSize, {"nNewSize"})
            .Method("RaiseHelp", 5, &C::RaiseHelp)
            .ReadableService("LayoutSource", 6, &C::SetLayoutSource)
            .Service("Keyboard", 7, &C::SetKeyboard)
            .Service("PrefSource", 8, &C::SetPrefSource)
            .Part("ButtonOK", 9, &C::ButtonOK, &C::SetButtonOK)
            .Part("ButtonCancel", 10, &C::ButtonCancel, &C::SetButtonCancel)
            .Part("ButtonCleanLast", 11, &C::ButtonCleanLast, &C::SetButtonCleanLast)
            .Part("ButtonCleanAll", 12, &C::ButtonCleanAll, &C::SetButtonCleanAll)
            .Property("SequenceCaption", 13, &C::SequenceCaption, &C::SetSequenceCaption)
            .Property("EditorCaption", 14, &C::EditorCaption, &C::SetEditorCaption)
            .Property("SequenceSizeMessage", 15, &C::SequenceSizeMessage,
                      &C::SetSequenceSizeMessage)
            .Property("ShowDetails", 16, &C::ShowDetails, &C::SetShowDetails)
            .Property("DoShowDetails", 17, &C::DoShowDetails, &C::SetDoShowDetails)
            .Event("UserNeedsHelp", 1, &C::UserNeedsHelp)
            .Built();
    return table;
}

} // namespace qx::com
