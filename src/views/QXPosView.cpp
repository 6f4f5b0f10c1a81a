#include "views/QXPosView.h"

#include "qxcontrols/keys/KeyName.h"
#include "views/CaptionedRow.h"
#include "views/QXPosDisplayView.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace qx::views {

namespace {

QString LabelOf(const QXPos& control, Integer nKeyIndex) {
    return ToQt(
        KeyLabel(control.CodeMap().GetPositionCodeForKey(nKeyIndex), control.LayoutSource()));
}

const KeySequence* SequenceOf(const QXPos& control, Integer nKeyIndex) {
    const Integer slot = control.PosData().FindBlockForKey(nKeyIndex);
    return slot == 0 ? nullptr : &control.PosData().Block(slot).Sequence();
}

} // namespace

QXPosView::QXPosView(QXPos& control, QWidget* parent) : QWidget(parent) {
    auto* keys = new QXPosDisplayView(control.posDisplay);
    keys->SetTexts([&control](Integer key) { return LabelOf(control, key); },
                   [&control](Integer key) { return SequenceOf(control, key); },
                   [&control] { return control.LayoutSource(); });
    auto* caption = new QLabel;
    auto* number = new QLabel;
    auto* edit = new QPushButton;
    auto* cleanAll = new QPushButton;
    m_bindings.Bind(caption, QStringLiteral("lblNumBlocks"), control.lblNumBlocks);
    m_bindings.Bind(number, QStringLiteral("lblBlockNum"), control.lblBlockNum);
    m_bindings.Bind(edit, QStringLiteral("cmdEdit"), control.cmdEdit,
                    [&control] { control.cmdEdit_Click(); });
    m_bindings.Bind(cleanAll, QStringLiteral("cmdCleanAll"), control.cmdCleanAll,
                    [&control] { control.cmdCleanAll_Click(); });

    auto* buttons = new QHBoxLayout;
    buttons->setObjectName(QStringLiteral("buttons"));
    buttons->addWidget(edit);
    buttons->addWidget(cleanAll);
    auto* row = new QHBoxLayout;
    row->addLayout(buttons);
    row->addLayout(CaptionedRow(caption, number));
    row->addStretch(1);
    auto* column = new QVBoxLayout(this);
    column->addWidget(keys, 1);
    column->addLayout(row);

    m_refreshed = control.Refreshed.Subscribe([this] { m_bindings.ShowAll(); });
    m_bindings.ShowAll();
}

} // namespace qx::views
