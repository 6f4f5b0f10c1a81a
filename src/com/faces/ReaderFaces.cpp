// The faces of the reader controls and of the control for the keyboard as a whole.
#include "com/faces/Faces.h"
#include "qxcontrols/device/QXCommonKeyboard.h"
#include "qxcontrols/readers/QXBarcode.h"
#include "qxcontrols/readers/QXMagnetCard.h"

#include <utility>

namespace qx::com {
namespace {

// A header or a terminator: its check box above the keys, with the buttons that change them beside.
Part SequenceRows(Part use, Part keys, Part edit, Part remove) {
    return Column(
        {std::move(use), Row({Stretching(std::move(keys)), std::move(edit), std::move(remove)})});
}

Part OptionPage(QXBarcode& control) {
    std::vector<Part> parts;
    for (Integer nID = 0; nID < BarcodeOptionPage::kFlags; ++nID)
        parts.push_back(PartOf(ElementOf("chkBarOption", nID),
                               control.chkBarOption[static_cast<std::size_t>(nID)],
                               [&control, nID] { control.chkBarOption_Click(nID); }));
    std::vector<Part> sizes;
    for (Integer nIndex = 0; nIndex < 2; ++nIndex) {
        const auto i = static_cast<std::size_t>(nIndex);
        sizes.push_back(
            Row({PartOf(ElementOf("lblRange", nIndex), control.lblRange[i]),
                 Stretching(PartOf(ElementOf("slidRange", nIndex), control.slidRange[i],
                                   control.lblRange[i],
                                   [&control, nIndex] { control.slidRange_Change(nIndex); })),
                 PartOf(ElementOf("lblCurrSize", nIndex), control.lblCurrSize[i])}));
    }
    parts.push_back(Grid(std::move(sizes)));
    return Column(std::move(parts));
}

Part ReaderPage(QXBarcode& control) {
    std::vector<Part> parts{PartOf("lblHint", control.lblHint)};
    for (Integer nIndex = 0; nIndex < 2; ++nIndex) {
        const auto i = static_cast<std::size_t>(nIndex);
        parts.push_back(SequenceRows(
            PartOf(ElementOf("chkReader", nIndex), control.chkReader[i],
                   [&control, nIndex] { control.chkReader_Click(nIndex); }),
            SequencePart(
                ElementOf("lblReader", nIndex), control.lblReader[i], control.chkReader[i].Caption,
                [&control, nIndex](Integer KeyCode) { control.lblReader_KeyDown(nIndex, KeyCode); },
                {}),
            About(control.chkReader[i].Caption,
                  PartOf(ElementOf("cmdEdit", nIndex), control.cmdEdit[i],
                         [&control, nIndex] { control.cmdEdit_Click(nIndex); })),
            About(control.chkReader[i].Caption,
                  PartOf(ElementOf("cmdRemove", nIndex), control.cmdRemove[i],
                         [&control, nIndex] { control.cmdRemove_Click(nIndex); }))));
    }
    parts.push_back(PartOf("chkShowDetails", control.chkShowDetails,
                           [&control] { control.chkShowDetails_Click(); }));
    return Column(std::move(parts));
}

Part MagneticSequences(QXMagnetCard& control) {
    const auto button = [&control](std::string_view name, std::array<Button, 2>& buttons,
                                   Integer nIndex, void (QXMagnetCard::*click)(Integer)) {
        const CheckBox& use = nIndex == 0 ? control.chkUseThisHeader : control.chkUseThisTerminator;
        return About(use.Caption,
                     PartOf(ElementOf(name, nIndex), buttons[static_cast<std::size_t>(nIndex)],
                            [&control, nIndex, click] { (control.*click)(nIndex); }));
    };
    return Column(
        {SequenceRows(PartOf("chkUseThisHeader", control.chkUseThisHeader,
                             [&control] { control.chkUseThisHeader_Click(); }),
                      SequencePart("lblCurrHeader", control.lblCurrHeader,
                                   control.chkUseThisHeader.Caption, {},
                                   [&control] { control.lblCurrHeader_KeyPress(); }),
                      button("cmdCreate", control.cmdCreate, 0, &QXMagnetCard::cmdCreate_Click),
                      button("cmdRemove", control.cmdRemove, 0, &QXMagnetCard::cmdRemove_Click)),
         SequenceRows(PartOf("chkUseThisTerminator", control.chkUseThisTerminator,
                             [&control] { control.chkUseThisTerminator_Click(); }),
                      SequencePart("lblCurrTerminator", control.lblCurrTerminator,
                                   control.chkUseThisTerminator.Caption, {},
                                   [&control] { control.lblCurrTerminator_KeyPress(); }),
                      button("cmdCreate", control.cmdCreate, 1, &QXMagnetCard::cmdCreate_Click),
                      button("cmdRemove", control.cmdRemove, 1, &QXMagnetCard::cmdRemove_Click))});
}

} // namespace

template <>
FaceTable FaceTableOf(QXBarcode& control) {
    return {Row({Column({PartOf("lblList", control.lblList),
                         Stretching(PartOf("lstPrefGroup", control.lstPrefGroup, control.lblList,
                                           [&control] { control.lstPrefGroup_Click(); }))}),
                 Stretching(Column({OptionPage(control), ReaderPage(control)}))}),
            RefreshOf(control), [&control] { control.UserControl_Show(); }};
}

template <>
FaceTable FaceTableOf(QXMagnetCard& control) {
    std::vector<Part> options;
    for (Integer nIndex = 0; nIndex < 3; ++nIndex)
        options.push_back(PartOf(ElementOf("chkMagneticOptions", nIndex),
                                 control.chkMagneticOptions[static_cast<std::size_t>(nIndex)],
                                 [&control, nIndex] { control.chkMagneticOptions_Click(nIndex); }));
    Part tracks = Column({PartOf("lblTracks", control.lblTracks),
                          Stretching(PartOf("trackList", control.trackList, control.lblTracks,
                                            [&control] { control.trackList_Click(); }))});
    Part track = Frame("lblTrackPreferences", control.lblTrackPreferences,
                       {PartOf("chkEnableCurrentTrack", control.chkEnableCurrentTrack,
                               [&control] { control.chkEnableCurrentTrack_Click(); }),
                        PartOf("lblHeaderAndTerminator", control.lblHeaderAndTerminator),
                        MagneticSequences(control),
                        PartOf("chkShowDetails", control.chkShowDetails,
                               [&control] { control.chkShowDetails_Click(); })});
    return {Column({Frame("lblCommonPrefs", control.lblCommonPrefs, std::move(options)),
                    Row({std::move(tracks), Stretching(std::move(track))})}),
            RefreshOf(control),
            {}};
}

template <>
FaceTable FaceTableOf(QXCommonKeyboard& control) {
    return {Column({PartOf("lblOutputDelay", control.lblOutputDelay),
                    Row({Stretching(PartOf("slidOutputDelay", control.slidOutputDelay,
                                           control.lblOutputDelay,
                                           [&control] { control.slidOutputDelay_Change(); })),
                         PartOf("lblCurrOutputDelay", control.lblCurrOutputDelay)})}),
            RefreshOf(control),
            {}};
}

} // namespace qx::com
