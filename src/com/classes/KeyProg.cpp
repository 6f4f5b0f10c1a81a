#include "com/classes/ModuleContract.h"
#include "qxcontrols/keyprog/FuncKeyLayer.h"
#include "qxcontrols/keyprog/QXFreeProgKeys.h"
#include "qxcontrols/keyprog/QXLayeredFuncKeys.h"

namespace qx::com {

template <>
const Class& TableOf<QXFreeProgKeys>() {
    using C = QXFreeProgKeys;
    static const Class table = [] {
        ClassBuilder<C> builder(
            "QXFreeProgKeys", Look::Visible, "{A32EF847-A08C-407B-BC84-AF9404512A19}",
            "{5E0D8DB8-D82D-4737-8CD9-332F0EC7F25E}", "{ADC538CD-3682-401F-B8E7-E28645121F3B}");
        AddModuleContract(builder);
        return builder.ReadableService("LayoutSource", 2, &C::SetLayoutSource)
            .Part("ButtonEdit", 16, &C::ButtonEdit, &C::SetButtonEdit)
            .Part("ButtonClean", 17, &C::ButtonClean, &C::SetButtonClean)
            .Part("ButtonCleanAll", 18, &C::ButtonCleanAll, &C::SetButtonCleanAll)
            .Property("SequenceForCurrKey", 19, &C::SequenceForCurrKey, &C::SetSequenceForCurrKey)
            .Property("ShowDetails", 20, &C::ShowDetails, &C::SetShowDetails)
            .Method("KeyFontSizeChanged", 21, &C::KeyFontSizeChanged, {"nNewSize"})
            .Method("ReloadKeysSettings", 22, &C::ReloadKeysSettings)
            .Event("RemoveAllSequences", 1, &C::RemoveAllSequences, {"fRemoveIt"})
            .Event("RemoveSequence", 2, &C::RemoveSequence, {"fRemoveIt"})
            .Event("EditSequence", 3, &C::EditSequence,
                   {"nPosCode", "sOutSeq", "fCancelEdit", "sInSeq"})
            .Event("KeyNoEditable", 4, &C::KeyNoEditable, {Variant("nPositionCode")})
            .Event("AdvanceEdit", 5, &C::AdvanceEdit, {"fEdit"})
            .Built();
    }();
    return table;
}

template <>
const Class& TableOf<FuncKeyLayer>() {
    using C = FuncKeyLayer;
    static const Class table =
        ClassBuilder<C>("FuncKeyLayer", Look::None, "{9F375DCC-DC14-4608-BB7B-C50DECB26F1B}",
                        "{0F3DC387-85B6-4D5D-AFFF-D44259F482F2}")
            .Method("GetKeyDesc", 1, &C::GetKeyDesc, {"nKeyID"})
            .Method("SetKeyDesc", 2, &C::SetKeyDesc, {"nKeyID", "sDesc"})
            .Method("GetKey", 3, Changing(&C::GetKey), {"nKeyID"})
            .Method("CleanLayer", 4, &C::CleanLayer)
            .Built();
    return table;
}

template <>
const Class& TableOf<QXLayeredFuncKeys>() {
    using C = QXLayeredFuncKeys;
    static const Class table = [] {
        ClassBuilder<C> builder(
            "QXLayeredFuncKeys", Look::Visible, "{BD7B6304-B902-431E-85B7-6FC8B1B5E7DA}",
            "{780A5021-05A2-48FD-8FB3-E0E8BF47B708}", "{D692036C-2BAA-440C-AF68-C51BF98D38C8}");
        AddModuleContract(builder);
        return builder.Service("LayoutSource", 2, &C::SetLayoutSource)
            .Part("ButtonEdit", 16, &C::ButtonEdit, &C::SetButtonEdit)
            .Part("ButtonCleanKey", 17, &C::ButtonCleanKey, &C::SetButtonCleanKey)
            .Part("ButtonCleanLayer", 18, &C::ButtonCleanLayer, &C::SetButtonCleanLayer)
            .Part("ButtonCleanAllLayer", 19, &C::ButtonCleanAllLayer, &C::SetButtonCleanAllLayer)
            .Part("ButtonLayerDec", 20, &C::ButtonLayerDec, &C::SetButtonLayerDec)
            .Part("ButtonLayerInc", 21, &C::ButtonLayerInc, &C::SetButtonLayerInc)
            .Property("CaptionSequence", 22, &C::CaptionSequence, &C::SetCaptionSequence)
            .Property("FunctionKeyDescription", 23, &C::FunctionKeyDescription,
                      &C::SetFunctionKeyDescription)
            .Property("ShowDetails", 24, &C::ShowDetails, &C::SetShowDetails)
            .Property("LayerDesc", 25, &C::LayerDesc, &C::SetLayerDesc)
            .Method("ShowCurrentSelectedLayerOnKeyboard", 26,
                    &C::ShowCurrentSelectedLayerOnKeyboard)
            .Event("NoKeySelectedToEdit", 1, &C::NoKeySelectedToEdit)
            .Event("NoKeySelectedToClean", 2, &C::NoKeySelectedToClean)
            .Event("CleanThisLayer", 3, &C::CleanThisLayer, {"fCancelClean"})
            .Event("CleanAllLayers", 4, &C::CleanAllLayers, {"fCancelClean"})
            .Event("EditLayeredFuncKey", 5, &C::EditLayeredFuncKey,
                   {"sCurrSeq", "fCancelEdit", "sNewSeq"})
            .Event("AdvanceEdit", 6, &C::AdvanceEdit, {"fEdit"})
            .Built();
    }();
    return table;
}

} // namespace qx::com
