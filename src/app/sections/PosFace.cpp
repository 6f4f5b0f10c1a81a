#include "app/EditRequests.h"
#include "app/SettingWords.h"
#include "app/sections/Entries.h"
#include "qxcontrols/pos/QXPos.h"
#include "views/QXPosView.h"

namespace qx::app {

namespace {

constexpr SettingWord kWords[] = {
    {"slot", QT_TRANSLATE_NOOP("SettingWords", "Key")},
    {"blockId", QT_TRANSLATE_NOOP("SettingWords", "Number")},
    {"colorId", QT_TRANSLATE_NOOP("SettingWords", "Colour")},
    {"keys", QT_TRANSLATE_NOOP("SettingWords", "Keys")},
};

class PosFace : public FaceOf<QXPos> {
    Q_DECLARE_TR_FUNCTIONS(PosFace)
public:
    using FaceOf::FaceOf;

    void Translate() override {
        Control().SetNumBlocksCaption(tr("Blocks:").toStdString());
        Control().SetButtonEdit(
            ButtonText(tr("Edit blocks…"), tr("Group keys into blocks that send one sequence")));
        Control().SetButtonCleanAll(
            ButtonText(tr("Clear all blocks…"), tr("Remove all blocks and their sequences")));
    }

    [[nodiscard]] QWidget* MakeView() override { return new views::QXPosView(Control()); }

    [[nodiscard]] QString Summary() override {
        const int blocks = CountProgrammed();
        return blocks == 0 ? tr("No block") : tr("%n block(s)", "", blocks);
    }
    [[nodiscard]] int CountProgrammed() override {
        int count = 0;
        for (Integer slot = 1; slot <= POSKeyboard::kSlots; ++slot)
            count += Control().PosData().Block(slot).BlockSize() > 0 ? 1 : 0;
        return count;
    }

    void AnswerWith(EditRequests& edits) override {
        edits.On(Control().POSEditorRequested, [this, &edits](bool& fCancel) {
            fCancel = !edits.EditBlocks(Control().PosData());
        });
        edits.On(Control().RemoveAllBlocks,
                 [&edits](bool& fCancel) { fCancel = !edits.Ask(tr("Remove all POS blocks?")); });
    }

    void Show(const Place& place) override {
        if (!place.numbers.empty())
            Control().posDisplay.SetCursor(place.numbers[0]);
    }
};

} // namespace

constinit const SectionEntry kPos = {
    "pos", PageGroup::Keys, QT_TRANSLATE_NOOP("SettingWords", "POS keys"),
    "pos", kWords,          MakeFace<PosFace, QXPos>};

} // namespace qx::app
