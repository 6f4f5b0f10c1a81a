// The faces of the controls that show keyboards.
#include "com/faces/KeyParts.h"
#include "qxcontrols/keyprog/QXFreeProgKeys.h"
#include "qxcontrols/keyprog/QXLayeredFuncKeys.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "qxcontrols/pos/QXPos.h"

#include <utility>

namespace qx::com {
namespace {

PartState FuncKeys(const QXLayeredFuncKeys& control) {
    PartState state;
    state.name = "Function keys of layer " + std::to_string(control.CurrentLayer());
    state.value = control.CurrentKey();
    for (Integer nKey = 0; nKey < FuncKeyLayer::kKeys; ++nKey) {
        const FuncKeyButton& key = control.cmdFuncKey[static_cast<std::size_t>(nKey)];
        KeyCap cap = CapOf(key, nKey, key.BackColor);
        Put(cap, kFuncKeyRows, nKey);
        cap.isProgrammed = key.Programmed;
        cap.isCurrent = key.Current;
        cap.name = key.Caption + (key.ToolTip.empty() ? "" : ", " + key.ToolTip) +
                   (key.Programmed ? ", programmed" : ", not programmed") +
                   (key.Current ? ", current key" : "");
        if (!key.ToolTip.empty()) // the description is more useful than the number
            cap.caption += "\n" + key.ToolTip;
        state.keys.push_back(std::move(cap));
    }
    return state;
}

template <std::size_t Count, typename C>
std::vector<Part> ButtonsOf(std::string_view name, const std::array<Button, Count>& buttons,
                            C& control, void (C::*click)(Integer)) {
    std::vector<Part> parts;
    for (Integer nIndex = 0; nIndex < static_cast<Integer>(Count); ++nIndex)
        parts.push_back(PartOf(ElementOf(name, nIndex), buttons[static_cast<std::size_t>(nIndex)],
                               [&control, nIndex, click] { (control.*click)(nIndex); }));
    return parts;
}

} // namespace

template <>
FaceTable FaceTableOf(QXLayoutDisplay& control) {
    return {Column({Stretching(LayoutPart(control))}),
            [&control](const FaceEvents& events) { return SubscribedTo(control, events); },
            {}};
}

template <>
FaceTable FaceTableOf(QXPosDisplay& control) {
    return {Column({Stretching(PosPart(control))}),
            [&control](const FaceEvents& events) { return SubscribedTo(control, events); },
            {}};
}

template <>
FaceTable FaceTableOf(QXFreeProgKeys& control) {
    std::vector<Part> buttons =
        ButtonsOf("cmdEdit", control.cmdEdit, control, &QXFreeProgKeys::cmdEdit_Click);
    buttons.push_back(PartOf("chkShowDetails", control.chkShowDetails,
                             [&control] { control.chkShowDetails_Click(); }));
    return {Column({Stretching(LayoutPart(control.layoutDisplay)),
                    Row({PartOf("lblSequence", control.lblSequence),
                         Stretching(SequencePart("lblCurrSeq", control.lblCurrSeq,
                                                 control.lblSequence.Caption, {},
                                                 [&control] { control.lblCurrSeq_KeyPress(); }))}),
                    Flow(std::move(buttons))}),
            WithDisplay(control, control.layoutDisplay),
            {}};
}

template <>
FaceTable FaceTableOf(QXPos& control) {
    return {
        Column({Stretching(PosPart(control.posDisplay)),
                Flow({PartOf("cmdEdit", control.cmdEdit, [&control] { control.cmdEdit_Click(); }),
                      PartOf("cmdCleanAll", control.cmdCleanAll,
                             [&control] { control.cmdCleanAll_Click(); }),
                      Row({PartOf("lblNumBlocks", control.lblNumBlocks),
                           PartOf("lblBlockNum", control.lblBlockNum)})})}),
        WithDisplay(control, control.posDisplay),
        {}};
}

template <>
FaceTable FaceTableOf(QXLayeredFuncKeys& control) {
    std::vector<Part> layer{PartOf("lblLayerDesc", control.lblLayerDesc),
                            PartOf("lblLayerID", control.lblLayerID),
                            Stretching(PartOf("spinLayer", control.spinLayer, control.lblLayerDesc,
                                              [&control] { control.spinLayer_Change(); }))};
    for (Part& button :
         ButtonsOf("cmdLayer", control.cmdLayer, control, &QXLayeredFuncKeys::cmdLayer_Click))
        layer.push_back(std::move(button));
    std::vector<Part> buttons =
        ButtonsOf("cmdEdit", control.cmdEdit, control, &QXLayeredFuncKeys::cmdEdit_Click);
    buttons.push_back(PartOf("chkShowDetails", control.chkShowDetails,
                             [&control] { control.chkShowDetails_Click(); }));
    Part keys = KeysPart(
        "funcKeys", [&control] { return FuncKeys(control); },
        [&control](Integer nKey) { control.cmdFuncKey_Click(nKey); },
        [&control](Integer nKey) {
            if (nKey != control.CurrentKey())
                control.cmdFuncKey_Click(nKey);
        });
    Part texts = Grid(
        {Row({PartOf("lblSequence", control.lblSequence),
              Stretching(SequencePart("lblCurrSeq", control.lblCurrSeq, control.lblSequence.Caption,
                                      {}, [&control] { control.lblCurrSeq_KeyPress(); }))}),
         Row({PartOf("lblSymbolDesc", control.lblSymbolDesc),
              Stretching(PartOf("txtSymbolDesc", control.txtSymbolDesc, control.lblSymbolDesc,
                                [&control] { control.txtSymbolDesc_Change(); }))})});
    return {Column({Row(std::move(layer)), Stretching(std::move(keys)), std::move(texts),
                    Flow(std::move(buttons))}),
            RefreshOf(control),
            {}};
}

} // namespace qx::com
