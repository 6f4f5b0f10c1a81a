#include "com/classes/ModuleContract.h"
#include "qxcontrols/readers/BarcodePage.h"
#include "qxcontrols/readers/QXBarcode.h"
#include "qxcontrols/readers/QXMagnetCard.h"

namespace qx::com {

template <>
const Enumeration& EnumerationOf<BarcodePage>() {
    static const Enumeration table{"BarcodePage",
                                   "{1BBE8421-76FE-4E54-BCC9-2732084C930E}",
                                   {{"BP_CommonSettings", BP_CommonSettings},
                                    {"BP_EAN", BP_EAN},
                                    {"BP_UPC", BP_UPC},
                                    {"BP_Code39", BP_Code39},
                                    {"BP_Code128", BP_Code128},
                                    {"BP_CodaBar", BP_CodaBar},
                                    {"BP_Code25_Overlapped", BP_Code25_Overlapped},
                                    {"BP_Code25_Industrial", BP_Code25_Industrial},
                                    {"BP_Code25_Matrix", BP_Code25_Matrix},
                                    {"BP_Code93", BP_Code93},
                                    {"BP_Code11", BP_Code11},
                                    {"BP_Code16K", BP_Code16K},
                                    {"BP_MSI", BP_MSI},
                                    {"BP_Plessey", BP_Plessey},
                                    {"BP_Reader_1", BP_Reader_1},
                                    {"BP_Reader_2", BP_Reader_2}}};
    return table;
}

template <>
const Class& TableOf<OptionBool>() {
    using C = OptionBool;
    static const Class table =
        ClassBuilder<C>("OptionBool", Look::None, "{E8A9DDDB-C755-4D78-B8BD-73E8E2112C3B}",
                        "{A469652C-E968-4574-BE1A-8BB85584C9BE}")
            .Property("Value", 1, &C::Value, &C::SetValue)
            .Property("CtlValue", 2, &C::CtlValue, &C::SetCtlValue)
            .Property("Caption", 3, &C::Caption, &C::SetCaption)
            .Built();
    return table;
}

template <>
const Class& TableOf<ButtonCaption>() {
    using C = ButtonCaption;
    static const Class table =
        ClassBuilder<C>("ButtonCaption", Look::None, "{C7C11E5D-B2A0-4B8A-A1CF-9FEEDAA047D0}",
                        "{0BFAB410-AC10-4EC7-BD8E-251BD46389C1}")
            .Property("Caption", 1, &C::Caption, &C::SetCaption)
            .Property("ToolTip", 2, &C::ToolTip, &C::SetToolTip)
            .Built();
    return table;
}

template <>
const Class& TableOf<BarcodeOptionPage>() {
    using C = BarcodeOptionPage;
    static const Class table =
        ClassBuilder<C>("BarcodeOptionPage", Look::None, "{49056BC9-64C8-4C58-A99D-C5A9341243EE}",
                        "{7EDD1A49-206B-49F2-B1F9-AACF8792D291}")
            .Property("OptionNum", 1, &C::OptionNum, &C::SetOptionNum)
            .Property("LimitMinSize", 2, &C::LimitMinSize, &C::SetLimitMinSize)
            .Property("LimitMaxSize", 3, &C::LimitMaxSize, &C::SetLimitMaxSize)
            .Property("MinSize", 4, &C::MinSize, &C::SetMinSize)
            .Property("MaxSize", 5, &C::MaxSize, &C::SetMaxSize)
            .Property("SupportsSizing", 6, &C::SupportsSizing, &C::SetSupportsSizing)
            .Property("Flag", 7, Changing(&C::Flag), {"nID"})
            .Built();
    return table;
}

template <>
const Class& TableOf<QXBarcode>() {
    using C = QXBarcode;
    static const Class table = [] {
        ClassBuilder<C> builder(
            "QXBarcode", Look::Visible, "{5341FDC6-9FD4-4EF3-9B74-4D6577042B17}",
            "{6560083E-B716-42F1-9FB7-EFFF8975F909}", "{17DEF260-685C-429B-BC56-0D63363674C9}");
        AddModuleContract(builder);
        return builder.Service("LayoutSource", 2, &C::SetLayoutSource)
            .Property("ListCaption", 16, &C::ListCaption, &C::SetListCaption)
            .Property("ShowDetails", 17, &C::ShowDetails, &C::SetShowDetails)
            .Part("ButtonEdit", 18, &C::ButtonEdit, &C::SetButtonEdit)
            .Part("ButtonRemove", 19, &C::ButtonRemove, &C::SetButtonRemove)
            .Part("OptionHeader", 20, &C::OptionHeader, &C::SetOptionHeader)
            .Part("OptionTerminator", 21, &C::OptionTerminator, &C::SetOptionTerminator)
            .Property("Reader1Msg", 22, &C::Reader1Msg, &C::SetReader1Msg)
            .Property("Reader2Msg", 23, &C::Reader2Msg, &C::SetReader2Msg)
            .Property("MinSizeCaption", 24, &C::MinSizeCaption, &C::SetMinSizeCaption)
            .Property("MaxSizeCaption", 25, &C::MaxSizeCaption, &C::SetMaxSizeCaption)
            .Method("BitPage", 26,
                    +[](C& self, BarcodePage ePage) -> BarcodeOptionPage& {
                        return self.BitPage(ePage);
                    },
                    {"ePage"})
            .Method("SetListEntry", 27,
                    +[](C& self, BarcodePage ePage, std::string sCaption) {
                        self.SetListEntry(ePage, std::move(sCaption));
                    },
                    {"ePage", "sCaption"})
            .Event("EditHeader", 1, &C::EditHeader, {"sCurrSeq", "fCancelEdit", "sNewSeq"})
            .Event("EditTerminator", 2, &C::EditTerminator, {"sCurrSeq", "fCancelEdit", "sNewSeq"})
            .Event("RemoveHeader", 3, &C::RemoveHeader, {"fRemoveIt"})
            .Event("RemoveTerminator", 4, &C::RemoveTerminator, {"fRemoveIt"})
            .Event("AdvanceEdit", 5, &C::AdvanceEdit, {"fEdit"})
            .Built();
    }();
    return table;
}

template <>
const Class& TableOf<MagneticOptions>() {
    using C = MagneticOptions;
    static const Class table =
        ClassBuilder<C>("MagneticOptions", Look::None, "{4BCC068B-F6DF-4A52-B38E-EE7BA5314893}",
                        "{C99842CF-0302-459A-A83C-6C73DF1140A6}")
            .Part("VerifyLRC", 1, &C::VerifyLRC, &C::SetVerifyLRC)
            .Part("VerifyLastChar", 2, &C::VerifyLastChar, &C::SetVerifyLastChar)
            .Part("SendImmediate", 3, &C::SendImmediate, &C::SetSendImmediate)
            .Built();
    return table;
}

template <>
const Class& TableOf<MagneticTrack>() {
    using C = MagneticTrack;
    static const Class table =
        ClassBuilder<C>("MagneticTrack", Look::None, "{2AEA8BCF-11AA-4363-BD56-E398CBD5E5C3}",
                        "{BDA4C37D-F5C5-4040-9749-82345E60D7FD}")
            .Part("Header", 1, &C::Header, &C::SetHeader)
            .Part("Terminator", 2, &C::Terminator, &C::SetTerminator)
            .Property("Available", 3, &C::Available, &C::SetAvailable)
            .Property("Caption", 4, &C::Caption, &C::SetCaption)
            .Property("Enabled", 5, &C::Enabled, &C::SetEnabled)
            .Property("HeaderEnabled", 6, &C::HeaderEnabled, &C::SetHeaderEnabled)
            .Property("TerminatorEnabled", 7, &C::TerminatorEnabled, &C::SetTerminatorEnabled)
            .Built();
    return table;
}

template <>
const Class& TableOf<MagneticCaptions>() {
    using C = MagneticCaptions;
    static const Class table =
        ClassBuilder<C>("MagneticCaptions", Look::None, "{828A7D04-234F-4B0C-8058-A64DA5FDB70D}",
                        "{AE33C2DB-D302-45DA-A66B-DDC1EE27AAC6}")
            .Property("Tracks", 1, &C::Tracks, &C::SetTracks)
            .Property("CommonPrefs", 2, &C::CommonPrefs, &C::SetCommonPrefs)
            .Property("TrackPreferences", 3, &C::TrackPreferences, &C::SetTrackPreferences)
            .Property("HeaderAndTerminator", 4, &C::HeaderAndTerminator, &C::SetHeaderAndTerminator)
            .Property("UseThisTrack", 5, &C::UseThisTrack, &C::SetUseThisTrack)
            .Property("UseThisHeader", 6, &C::UseThisHeader, &C::SetUseThisHeader)
            .Property("UseThisTerminator", 7, &C::UseThisTerminator, &C::SetUseThisTerminator)
            .Part("CreateHeader", 8, &C::CreateHeader, &C::SetCreateHeader)
            .Part("RemoveHeader", 9, &C::RemoveHeader, &C::SetRemoveHeader)
            .Part("CreateTerminator", 10, &C::CreateTerminator, &C::SetCreateTerminator)
            .Part("RemoveTerminator", 11, &C::RemoveTerminator, &C::SetRemoveTerminator)
            .Built();
    return table;
}

template <>
const Class& TableOf<QXMagnetCard>() {
    using C = QXMagnetCard;
    static const Class table = [] {
        ClassBuilder<C> builder(
            "QXMagnetCard", Look::Visible, "{DA0659CD-1F49-4109-8620-2FCECC174D8F}",
            "{2638A32F-EE32-4A70-95B8-876945453BA7}", "{1ED16FBE-1AB8-4B0D-8F0A-0DFD1047FC98}");
        AddModuleContract(builder);
        return builder.Service("LayoutSource", 2, &C::SetLayoutSource)
            .Part("ReaderOptions", 16, &C::ReaderOptions, &C::SetReaderOptions)
            .Part("Track1", 17, &C::Track1, &C::SetTrack1)
            .Part("Track2", 18, &C::Track2, &C::SetTrack2)
            .Part("Track3", 19, &C::Track3, &C::SetTrack3)
            .Part("Track4", 20, &C::Track4, &C::SetTrack4)
            .Part("Captions", 21, &C::Captions, &C::SetCaptions)
            .Property("ShowDetails", 22, &C::ShowDetails, &C::SetShowDetails)
            .Method("ReloadKeysSettings", 23, &C::ReloadKeysSettings)
            .Method("DumpContext", 24, &C::DumpContext)
            .Method("RescanTracks", 25, &C::RescanTracks)
            .Event("ClearCurrentHeader", 1, &C::ClearCurrentHeader, {"nTrackId", "fCanRemoveIt"})
            .Event("ClearCurrentTerminator", 2, &C::ClearCurrentTerminator,
                   {"nTrackId", "fCanRemoveIt"})
            .Event("EditCurrentHeader", 3, &C::EditCurrentHeader,
                   {"nTrackId", "sInSequence", "fCancelAction", "sOutSequence"})
            .Event("EditCurrentTerminator", 4, &C::EditCurrentTerminator,
                   {"nTrackId", "sInSequence", "fCancelAction", "sOutSequence"})
            .Event("AdvanceEdit", 5, &C::AdvanceEdit, {"fEdit"})
            .Built();
    }();
    return table;
}

} // namespace qx::com
