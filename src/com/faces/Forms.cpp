#include "com/faces/Forms.h"

#include "com/faces/KeyParts.h"
#include "qxcontrols/keys/frmSequencer.h"
#include "qxcontrols/pos/frmPOSProgrammer.h"

#include <utility>

namespace qx::com {
namespace {

const Label kTyped{"As &text:"};
constexpr const char* kHelp = "Help";
constexpr const char* kCodesLeft = "Codes left:";
const Button kAlways{}; // visible and enabled
constexpr KeyRows kColorPlaces{frmPOSProgrammer::kColors, 700, 500};

// A button whose caption is not set by the form, but by its window.
Part ButtonPart(std::string id, const std::string& text, const Button& child, PartAction clicked) {
    Part part = PartOf(std::move(id), child, std::move(clicked));
    part.now = [text, now = std::move(part.now)] {
        PartState state = now();
        state.text = text;
        return state;
    };
    return part;
}

template <typename Form>
Part HelpPart(Form& form) {
    return ButtonPart("imgHelp", kHelp, kAlways, [&form] { form.imgHelp_Click(); });
}

template <typename Form>
FormTable TableOf(Form& form, Part root,
                  std::function<std::vector<Subscription>(const FaceEvents&)> subscribe) {
    FormTable table;
    table.face = {std::move(root), std::move(subscribe), {}};
    Refresh(table.face.root);
    table.title = [&form] { return form.lblCaption.Caption; };
    table.onClosed = [&form](std::function<void()> closed) {
        return form.Closed.Subscribe(std::move(closed));
    };
    table.isChanged = [&form] { return form.IsChanged(); };
    table.accept = [&form] { form.cmdOK_Click(); };
    table.cancel = [&form] { form.cmdCancel_Click(); };
    return table;
}

template <typename Form>
Part CleanPart(Form& form, Integer nIndex) {
    return PartOf(ElementOf("cmdClean", nIndex), form.cmdClean[static_cast<std::size_t>(nIndex)],
                  [&form, nIndex] { form.cmdClean_Click(nIndex); });
}

template <typename Form>
std::vector<Part> LeavingParts(Form& form) {
    return {PartOf("cmdOK", form.cmdOK, [&form] { form.cmdOK_Click(); }),
            PartOf("cmdCancel", form.cmdCancel, [&form] { form.cmdCancel_Click(); })};
}

// The text as a field that scrolls and can be copied from.
Part FieldPart(std::string id, const std::string& text, const Label& name) {
    static const Label whole;
    Part part = SequencePart(std::move(id), whole, name.Caption, {}, {});
    part.now = [&text, now = std::move(part.now)] {
        PartState state = now();
        state.text = text;
        return state;
    };
    return part;
}

Part TypedPart(frmSequencer& form) {
    Part typed = PartOf("txtTyped", form.txtTyped, kTyped, [&form] { form.txtTyped_Change(); });
    typed.focus = [&form](bool hasCome) {
        if (hasCome)
            form.txtTyped_GotFocus();
        else
            form.txtTyped_LostFocus();
    };
    typed.enter = [&form] { form.ApplyTyped(); };
    return typed;
}

PartState ColorsOf(const frmPOSProgrammer& form) {
    PartState state;
    state.name = PlainCaption(form.lblColor.Caption);
    state.value = -1;
    for (Integer nIndex = 0; nIndex < frmPOSProgrammer::kColors; ++nIndex) {
        const ColorButton& button = form.cmdColor[static_cast<std::size_t>(nIndex)];
        KeyCap cap = CapOf(button, nIndex, button.BackColor);
        Put(cap, kColorPlaces, nIndex);
        cap.caption = std::to_string(nIndex);
        cap.isCurrent = button.IsSelected;
        cap.name = "Colour " + cap.caption + (cap.isCurrent ? ", current" : "");
        if (cap.isCurrent)
            state.value = nIndex;
        state.keys.push_back(std::move(cap));
    }
    return state;
}

Part BlocksPart(frmPOSProgrammer& form) {
    return Column(
        {Row({PartOf("lblNumBlocks", form.lblNumBlocks), PartOf("lblBlockNum", form.lblBlockNum),
              TextPart("lblFreeKeysCaption", "Keys without a block:"),
              PartOf("lblFreeKeys", form.lblFreeKeys)}),
         Stretching(PartOf("lstBlocks", form.lstBlocks, form.lblNumBlocks,
                           [&form] { form.lstBlocks_Click(); })),
         Flow({PartOf("cmdNewBlock", form.cmdNewBlock, [&form] { form.cmdNewBlock_Click(); }),
               CleanPart(form, 0), CleanPart(form, 1),
               ButtonPart("cmdUndo", "&Undo", form.cmdUndo, [&form] { form.cmdUndo_Click(); })})});
}

Part CurrentBlockPart(frmPOSProgrammer& form) {
    Part colors = KeysPart(
        "cmdColor", [&form] { return ColorsOf(form); },
        [&form](Integer nIndex) { form.cmdColor_Click(nIndex); }, {});
    return Column(
        {Grid({Row({PartOf("lblBlockID", form.lblBlockID),
                    Stretching(PartOf("txtBlockID", form.txtBlockID, form.lblBlockID,
                                      [&form] { form.txtBlockID_Change(); }))}),
               Row({PartOf("lblKeys", form.lblKeys),
                    Stretching(FieldPart("lblCurrKeys", form.lblCurrKeys.Caption, form.lblKeys))}),
               Row({PartOf("lblColor", form.lblColor), Stretching(std::move(colors))}),
               Row({PartOf("lblSequence", form.lblSequence),
                    Stretching(
                        FieldPart("lblCurrSeq", form.lblCurrSeq.Caption, form.lblSequence))})}),
         Flow({PartOf("cmdEdit", form.cmdEdit, [&form] { form.cmdEdit_Click(); }),
               Row({TextPart("lblRemainingCaption", kCodesLeft),
                    PartOf("lblRemaining", form.lblRemaining)})})});
}

} // namespace

FormTable FormTableOf(frmSequencer& form) {
    std::vector<Part> buttons{
        Stretching(Flow({CleanPart(form, 0), CleanPart(form, 1), HelpPart(form)}))};
    for (Part& leaving : LeavingParts(form))
        buttons.push_back(std::move(leaving));
    Part apply = ButtonPart("cmdApply", "&Apply", kAlways, [&form] { form.ApplyTyped(); });
    FormTable table = TableOf(
        form,
        Column({Stretching(LayoutPart(form.layoutDisplay)),
                Row({Stretching(PartOf("lblSequence", form.lblSequence)),
                     PartOf("chkShowDetails", form.chkShowDetails,
                            [&form] { form.chkShowDetails_Click(); }),
                     TextPart("lblRemainingCaption", kCodesLeft),
                     PartOf("lblRemaining", form.lblRemaining)}),
                FieldPart("txtSequence", form.txtSequence.Text, form.lblSequence),
                Row({PartOf("lblTyped", kTyped), Stretching(TypedPart(form)), std::move(apply)}),
                PartOf("lblTypedFault", form.lblTypedFault), PartOf("lblSizeMsg", form.lblSizeMsg),
                Row(std::move(buttons))}),
        WithDisplay(form, form.layoutDisplay));
    table.activate = [&form](bool isActive) {
        if (isActive)
            form.Form_Activate();
        else
            form.Form_Deactivate();
    };
    table.activateApplication = [&form](bool isActive) {
        if (isActive)
            form.AppActivate();
        else
            form.AppDeactivate();
    };
    table.unload = [&form] { form.Form_Unload(); };
    return table;
}

FormTable FormTableOf(frmPOSProgrammer& form) {
    std::vector<Part> buttons{Stretching(Flow({HelpPart(form)}))};
    for (Part& leaving : LeavingParts(form))
        buttons.push_back(std::move(leaving));
    FormTable table =
        TableOf(form,
                Column({Stretching(PosPart(form.posDisplay,
                                           {[&form](Integer nKey) { return form.KeyLabel(nKey); },
                                            [&form](Integer nKey) { return form.SentBy(nKey); },
                                            [&form](Integer nKey) { form.ReachKey(nKey); },
                                            [&form](Integer nKey) { form.TakeKey(nKey); }})),
                        Row({Stretching(BlocksPart(form)), Stretching(CurrentBlockPart(form))}),
                        Row(std::move(buttons))}),
                WithDisplay(form, form.posDisplay));
    table.undo = [&form] { form.cmdUndo_Click(); };
    return table;
}

} // namespace qx::com
