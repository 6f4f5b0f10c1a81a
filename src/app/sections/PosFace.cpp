#include "app/BlockActions.h"
#include "app/EditRequests.h"
#include "app/KeyActions.h"
#include "app/SelectionPanel.h"
#include "app/SettingWords.h"
#include "app/sections/Entries.h"
#include "qxcontrols/pos/POSBlockPlaces.h"
#include "qxcontrols/pos/QXPos.h"
#include "views/KeyGrid.h"
#include "views/QXPosView.h"

#include <QLayout>
#include <QMenu>
#include <QToolButton>

namespace qx::app {

namespace {

constexpr int kArrow = 12; // pixels, of a button with a menu

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
            ButtonText(tr("Remove all…"), tr("Remove all blocks and their sequences")));
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

    [[nodiscard]] bool HasKeys() const override { return true; }
    [[nodiscard]] std::string PlaceOf(int key) override {
        return "blocks[" + std::to_string(key) + "]";
    }
    [[nodiscard]] std::string SenderOf(int key) override {
        const Integer slot = Control().PosData().FindBlockForKey(static_cast<Integer>(key));
        return PlaceOf(slot == 0 ? key : slot);
    }
    [[nodiscard]] Groups GroupedKeys() override {
        Groups groups;
        for (Integer slot = 1; slot <= POSKeyboard::kSlots; ++slot)
            for (const Integer key : KeysOf(Control().PosData().Block(slot)))
                groups.emplace(key, PlaceOf(slot));
        return groups;
    }
    [[nodiscard]] QString GroupOf(int key) override {
        const Integer slot = Control().PosData().FindBlockForKey(static_cast<Integer>(key));
        if (slot == 0)
            return {};
        const POSBlock& block = Control().PosData().Block(slot);
        return tr("Block %1 (%n key(s))", "", block.BlockSize()).arg(block.BlockID());
    }
    [[nodiscard]] int KeyAt(Integer nPositionCode) override {
        const Integer key = Control().CodeMap().GetKeyIndex(nPositionCode);
        return key == 0 ? -1 : key;
    }
    [[nodiscard]] std::optional<Position> PositionOf(int key) override {
        const auto index = static_cast<Integer>(key);
        return Position{Control().CodeMap().GetPositionCodeForKey(index), index};
    }
    void AddActions(KeyActions& actions, KeyEdits& edits, QWidget& view) override {
        new BlockActions(actions, edits, *view.findChild<views::KeyGrid*>(), Control());
        auto* buttons = view.findChild<QLayout*>(QStringLiteral("buttons"));
        for (QAction* action : actions.Added()) {
            QToolButton* button = ActionButton(action, action->objectName());
            if (action->menu() != nullptr) { // no room for a text and its arrow
                button->setToolButtonStyle(Qt::ToolButtonIconOnly);
                button->setPopupMode(QToolButton::InstantPopup);
                button->setMinimumWidth(button->sizeHint().width() + kArrow);
            }
            buttons->addWidget(button);
        }
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
