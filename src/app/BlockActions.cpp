#include "app/BlockActions.h"

#include "app/KeyActions.h"
#include "app/Workbench.h"
#include "qxcontrols/pos/POSBlockPlaces.h"
#include "qxcontrols/pos/QXPos.h"
#include "views/KeyGrid.h"
#include "views/KeyPainting.h"

#include <QMenu>
#include <QPixmap>

#include <algorithm>
#include <set>

namespace qx::app {

namespace {

constexpr QSize kSwatch(16, 16); // of a colour in the menu

} // namespace

BlockActions::BlockActions(KeyActions& actions, KeyEdits& edits, views::KeyGrid& grid,
                           QXPos& control)
    : QObject(&actions), m_edits(edits), m_grid(grid), m_control(control) {
    // Keys lie close together: a band begins on any of them, except those of the selected block.
    grid.SetCarries([this, &actions](int key) {
        std::vector<int> keys = m_grid.Selected();
        const bool isSelected = !keys.empty();
        keys.push_back(key);
        return isSelected && m_edits.Senders(keys).size() == 1 && actions.IsProgrammed(key);
    });
    m_join =
        actions.Make("joinKeys", "join", tr("Join"), {Qt::CTRL | Qt::Key_J}, [this] { Join(); });
    m_split = actions.Make("splitKeys", "split", tr("Split"), {Qt::CTRL | Qt::SHIFT | Qt::Key_J},
                           [this] { Split(); });
    m_whole = actions.Make("selectBlock", "select-all", tr("Select block"), {Qt::CTRL | Qt::Key_B},
                           [this] { SelectBlocks(); });
    m_join->setToolTip(tr("Make the selected keys one block, which sends one sequence"));
    m_split->setToolTip(tr("Take the selected keys out of their blocks"));
    m_whole->setToolTip(tr("Select all keys of the blocks"));
    m_colour = actions.Make("colourBlocks", "colour", tr("Colour"), {}, [] {});
    m_colour->setToolTip(tr("Choose the colour of the blocks"));
    m_colour->setMenu(MakeColours());
    for (QAction* action : {m_join, m_split, m_whole, m_colour})
        actions.Add(action);
    connect(&actions, &KeyActions::StateShown, this, &BlockActions::ShowState);
    ShowState();
}

// As the preferences have them when the menu opens.
QMenu* BlockActions::MakeColours() {
    auto* menu = new QMenu(&m_grid);
    for (Integer colour = 0; colour < POSBlock::kColors; ++colour) {
        QAction* action = menu->addAction(tr("Colour %1").arg(colour));
        action->setObjectName(QStringLiteral("blockColour_%1").arg(colour));
        action->setCheckable(true);
        connect(action, &QAction::triggered, this, [this, colour] {
            Edit([&](POSKeyboard& changed) {
                for (const Integer slot : BlocksWith(changed, Selected()))
                    changed.Block(slot).SetColorID(colour);
            });
        });
        connect(menu, &QMenu::aboutToShow, action, [this, action, colour] {
            const Long shown = m_edits.Bench().Preferences().POSColorBlock(colour);
            QPixmap swatch(kSwatch);
            swatch.fill(views::ToQColor(shown));
            action->setIcon(swatch);
            const POSKeyboard& blocks = m_control.PosData();
            action->setChecked(
                std::ranges::all_of(BlocksWith(blocks, Selected()), [&](Integer slot) {
                    return blocks.Block(slot).ColorID() == colour;
                }));
        });
    }
    return menu;
}

std::vector<Integer> BlockActions::Selected() const {
    std::vector<Integer> keys;
    for (const int key : m_grid.Selected())
        if (key <= POSKeyboard::kSlots)
            keys.push_back(static_cast<Integer>(key));
    return keys;
}

void BlockActions::ShowState() {
    const std::vector<Integer> keys = Selected();
    const bool isInBlock = !BlocksWith(m_control.PosData(), keys).empty();
    std::vector<int> all(keys.begin(), keys.end());
    m_join->setEnabled(m_edits.Senders(all).size() > 1);
    m_split->setEnabled(isInBlock);
    m_whole->setEnabled(isInBlock);
    m_colour->setEnabled(isInBlock);
}

void BlockActions::Edit(const std::function<void(POSKeyboard&)>& change) {
    m_edits.Bench().Edit(m_edits.Section(), [&] {
        POSKeyboard blocks = m_control.PosData();
        change(blocks);
        blocks.CalcDefinedBlockNum();
        m_control.SetPosData(blocks);
    });
}

void BlockActions::Join() {
    const std::vector<Integer> keys = Selected();
    const POSKeyboard& blocks = m_control.PosData();
    Integer own = 0;
    for (const Integer key : keys) {
        const Integer slot = blocks.FindBlockForKey(key);
        if (slot != 0 && own != 0 && slot != own)
            return m_edits.Report(tr("%1 is in block %2, other keys are in block %3: split one of "
                                     "them off first. Nothing has been changed.")
                                      .arg(m_edits.NameOf(key))
                                      .arg(blocks.Block(slot).BlockID())
                                      .arg(blocks.Block(own).BlockID()));
        own = own == 0 ? slot : own;
    }
    Edit([&](POSKeyboard& changed) { static_cast<void>(JoinKeys(changed, keys)); });
    m_edits.ReportDone(tr("%n keys joined.", nullptr, static_cast<int>(keys.size())));
}

void BlockActions::Split() {
    const std::vector<Integer> keys = Selected();
    QStringList gone;
    for (const Integer slot : BlocksWith(m_control.PosData(), keys)) {
        const POSBlock& block = m_control.PosData().Block(slot);
        const std::vector<Integer> own = KeysOf(block);
        const bool isWhole = std::all_of(own.begin(), own.end(), [&](Integer key) {
            return std::find(keys.begin(), keys.end(), key) != keys.end();
        });
        if (isWhole && block.Sequence().Length() > 0)
            gone.append(QString::number(block.BlockID()));
    }
    Edit([&](POSKeyboard& changed) { SplitKeys(changed, keys); });
    m_edits.ReportDone(
        gone.isEmpty()
            ? tr("%n key(s) split off.", nullptr, static_cast<int>(keys.size()))
            : tr("Block(s) %1 removed with the sequence.", nullptr, static_cast<int>(gone.size()))
                  .arg(gone.join(QStringLiteral(", "))));
}

void BlockActions::SelectBlocks() {
    std::set<int> keys;
    for (const int key : m_grid.Selected())
        keys.insert(key);
    for (const Integer slot : BlocksWith(m_control.PosData(), Selected()))
        for (const Integer key : KeysOf(m_control.PosData().Block(slot)))
            keys.insert(key);
    m_grid.Select(keys);
}

} // namespace qx::app
