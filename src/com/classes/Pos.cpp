#include "com/classes/ModuleContract.h"
#include "qxcontrols/device/QXKeyboardAccess.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "qxcontrols/pos/QXPOSProgrammer.h"
#include "qxcontrols/pos/QXPos.h"
#include "qxcontrols/pos/QXPosCodePage.h"
#include "qxcontrols/settings/QXProgSettings.h"

namespace qx::com {

template <>
const Class& TableOf<POSBlock>() {
    using C = POSBlock;
    static const Class table =
        ClassBuilder<C>("POSBlock", Look::None, "{B42CC921-1B2F-4EDD-AA0C-A8AC61CB3A28}",
                        "{F1A3C703-614E-40E9-8218-85FA2790E059}")
            .Method("AddKey", 1, &C::AddKey, {"nKey"})
            .Method("HasKey", 2, &C::HasKey, {"nKey"})
            .Method("GetKey", 3,
                    +[](C& self, Integer nIndex) -> Value { return self.GetKey(nIndex); },
                    {"nIndex"})
            .Method("GetLast", 4, &C::GetLast)
            .Method("CleanLast", 5, &C::CleanLast)
            .Method("Clean", 6, &C::Clean)
            .Method("CopyContent", 7, &C::CopyContent, {"oSource"})
            .Property("BlockID", 8, &C::BlockID, &C::SetBlockID)
            .Property("ColorID", 9, &C::ColorID, &C::SetColorID)
            .Property("BlockSize", 10, &C::BlockSize)
            .Part("Sequence", 11, &C::Sequence, &C::SetSequence)
            .Built();
    return table;
}

template <>
const Class& TableOf<POSKeyboard>() {
    using C = POSKeyboard;
    static const Class table =
        ClassBuilder<C>("POSKeyboard", Look::None, "{27F26884-E1DD-4F57-846F-AEC9A10F45A0}",
                        "{B988E790-7A02-4320-A263-E6AD4759CC52}")
            .Method("Block", 1, Changing(&C::Block), {"nIndex"})
            .Method("FindBlockForKey", 2, &C::FindBlockForKey, {"nKey"})
            .Property("BlockNum", 3, &C::BlockNum)
            .Method("CalcDefinedBlockNum", 4, &C::CalcDefinedBlockNum)
            .Method("CleanAllBlocks", 5, &C::CleanAllBlocks)
            .Method("CopyContent", 6, &C::CopyContent, {"oSource"})
            .Method("VBObjectDump", 7, &C::VBObjectDump)
            .Built();
    return table;
}

template <>
const Class& TableOf<POSCodeMapping>() {
    using C = POSCodeMapping;
    static const Class table =
        ClassBuilder<C>("POSCodeMapping", Look::None, "{774BA8BC-B077-4FFB-AE6C-72399D97E8D0}",
                        "{914B5CCC-59D4-4CDF-9BE7-13A11386BD0C}")
            .Method("GetPositionCodeForKey", 1, &C::GetPositionCodeForKey, {"nKeyID"})
            .Method("GetKeyIndex", 2, &C::GetKeyIndex, {"nPositionCode"})
            .Built();
    return table;
}

template <>
const Class& TableOf<PosCodePage>() {
    using C = PosCodePage;
    static const Class table =
        ClassBuilder<C>("PosCodePage", Look::None, "{A43F1B14-2621-4E1F-9E97-9F3F86B20A11}",
                        "{B2B5B31B-286F-4C83-BCCD-EEBD132E5247}")
            .Method("GetByte", 1, &C::GetByte, {"nIndex"})
            .Method("IsEqualPage", 2, &C::IsEqualPage, {"oPage"})
            .Method("LoadPageFromFile", 3, &C::LoadPageFromFile, {"sPath"})
            .Method("LoadPageFromKeyboard", 4, &C::LoadPageFromKeyboard, {"oKeyboard"})
            .Built();
    return table;
}

template <>
const Class& TableOf<QXPosCodePage>() {
    using C = QXPosCodePage;
    static const Class table =
        ClassBuilder<C>("QXPosCodePage", Look::Invisible, "{4DE60B23-0979-47E2-B1C8-0A56DC4031FE}",
                        "{6B261B18-8B64-421A-B89C-D51409D292E3}",
                        "{56857FA6-2EC5-45CB-9618-468390EC0623}")
            .Part("KeyboardPage", 1, &C::KeyboardPage, &C::SetKeyboardPage)
            .Part("FilePage", 2, &C::FilePage, &C::SetFilePage)
            .Method("PagesAreEqual", 3, &C::PagesAreEqual)
            .Built();
    return table;
}

template <>
const Class& TableOf<QXPos>() {
    using C = QXPos;
    static const Class table = [] {
        ClassBuilder<C> builder("QXPos", Look::Visible, "{19B8D478-1194-45E0-8741-A7C053FEE2E7}",
                                "{89967B47-9F0E-4A99-A426-4B8E37C20EEC}",
                                "{80C065B2-972A-4F89-B902-93638694F0A7}");
        AddModuleContract(builder);
        return builder.Service("LayoutSource", 2, &C::SetLayoutSource)
            .Part("PosData", 16, &C::PosData, &C::SetPosData)
            .Part("CodeMap", 17, &C::CodeMap, &C::SetCodeMap)
            .Property("NumBlocksCaption", 18, &C::NumBlocksCaption, &C::SetNumBlocksCaption)
            .Part("ButtonEdit", 19, &C::ButtonEdit, &C::SetButtonEdit)
            .Part("ButtonCleanAll", 20, &C::ButtonCleanAll, &C::SetButtonCleanAll)
            .Event("POSEditorRequested", 1, &C::POSEditorRequested, {"fCancelEdit"})
            .Event("RemoveAllBlocks", 2, &C::RemoveAllBlocks, {"fCancelRemoving"})
            .Built();
    }();
    return table;
}

template <>
const Class& TableOf<QXPosDisplay>() {
    using C = QXPosDisplay;
    static const Class table =
        ClassBuilder<C>("QXPosDisplay", Look::Visible, "{FBE8421D-BE12-4556-9FA9-752660D10CDC}",
                        "{A4C3864F-D21E-45CF-B80F-6C0AD8346D14}",
                        "{663F597B-E88B-4949-BA35-4BB575508A4F}")
            .Method("SetKeyCaption", 1, &C::SetKeyCaption, {"nIndex", "sCaption", "sToolTip"})
            .Method("SetAsUnused", 2, &C::SetAsUnused, {"nIndex", "lColor"})
            .Method("SetAsCurrentCaption", 3, &C::SetAsCurrentCaption,
                    {"nIndex", "sCaption", "sToolTip"})
            .Method("SetKeyColor", 4, &C::SetKeyColor, {"nIndex", "lColor"})
            .Method("SetCursor", 5, &C::SetCursor, {"nIndex"})
            .Method("IsUsedKey", 6, &C::IsUsedKey, {"nIndex"})
            .Event("KeyClicked", 1, &C::KeyClicked, {"nKeyIndex"})
            .Built();
    return table;
}

template <>
const Class& TableOf<QXPOSProgrammer>() {
    using C = QXPOSProgrammer;
    static const Class table =
        ClassBuilder<C>(
            "QXPOSProgrammer", Look::Invisible, "{9DA72068-2C95-4ACB-B7E2-07DB38CD0B53}",
            "{7355444E-37BC-4B19-99C9-877457A7E70A}", "{FEE6FF14-1D42-4B1C-865C-A2028C29E910}")
            .Method("ShowPosProgrammer", 1, &C::ShowPosProgrammer, {"oPosData"})
            .Method("Translate", 2, &C::Translate)
            .Method("ReloadColor", 3, &C::ReloadColor)
            .Service("LayoutSource", 4, &C::SetLayoutSource)
            .Service("PrefSource", 5, &C::SetPrefSource)
            .Part("ButtonOK", 6, &C::ButtonOK, &C::SetButtonOK)
            .Part("ButtonCancel", 7, &C::ButtonCancel, &C::SetButtonCancel)
            .Part("ButtonNewBlock", 8, &C::ButtonNewBlock, &C::SetButtonNewBlock)
            .Part("ButtonEdit", 9, &C::ButtonEdit, &C::SetButtonEdit)
            .Part("ButtonClean", 10, &C::ButtonClean, &C::SetButtonClean)
            .Part("ButtonCleanAll", 11, &C::ButtonCleanAll, &C::SetButtonCleanAll)
            .Property("ProgrammerCaption", 12, &C::ProgrammerCaption, &C::SetProgrammerCaption)
            .Property("NumBlocksCaption", 13, &C::NumBlocksCaption, &C::SetNumBlocksCaption)
            .Property("BlockIDCaption", 14, &C::BlockIDCaption, &C::SetBlockIDCaption)
            .Property("KeysCaption", 15, &C::KeysCaption, &C::SetKeysCaption)
            .Property("ColorCaption", 16, &C::ColorCaption, &C::SetColorCaption)
            .Property("SequenceCaption", 17, &C::SequenceCaption, &C::SetSequenceCaption)
            .Event("UserNeedsHelp", 1, &C::UserNeedsHelp)
            .Event("EditSequence", 2, &C::EditSequence,
                   {"nPosCode", "sOutSeq", "fCancelEdit", "sInSeq"})
            .Event("RemoveBlock", 3, &C::RemoveBlock, {"nBlockID", "fCancelRemoving"})
            .Event("RemoveAllBlocks", 4, &C::RemoveAllBlocks, {"fCancelRemoving"})
            .Built();
    return table;
}

} // namespace qx::com
