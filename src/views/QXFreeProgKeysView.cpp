#include "views/QXFreeProgKeysView.h"

#include "views/FlowLayout.h"
#include "views/QXLayoutDisplayView.h"
#include "views/SequenceLabel.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace qx::views {

namespace {

constexpr int kButtonGap = 8; // pixels
constexpr int kOfOneKey = 2;  // the first buttons are for the key that is selected

} // namespace

QXFreeProgKeysView::QXFreeProgKeysView(QXFreeProgKeys& control, QWidget* parent) : QWidget(parent) {
    auto* keys = new QXLayoutDisplayView(control.layoutDisplay);
    keys->SetSequences(
        [&control](Integer nPositionCode) { return &control.Sequences().Key(nPositionCode); });
    auto* caption = new QLabel;
    auto* sequence = new SequenceLabel;
    auto* details = new QCheckBox;
    caption->setBuddy(sequence);
    m_bindings.Bind(caption, QStringLiteral("lblSequence"), control.lblSequence);
    m_bindings.Bind(sequence, QStringLiteral("lblCurrSeq"), control.lblCurrSeq);
    m_bindings.Bind(details, QStringLiteral("chkShowDetails"), control.chkShowDetails,
                    [&control] { control.chkShowDetails_Click(); });
    m_bindings.OnShow([caption, sequence] { sequence->ShowAccessibleName(caption->text()); });
    connect(sequence, &SequenceLabel::KeyPress, this,
            [&control] { control.lblCurrSeq_KeyPress(); });

    auto* sequenceRow = new QWidget;
    sequenceRow->setObjectName(QStringLiteral("sequenceRow"));
    auto* row = new QHBoxLayout(sequenceRow);
    row->setContentsMargins({});
    row->addWidget(caption);
    row->addWidget(sequence, 1);
    auto* buttonRow = new FlowLayout(kButtonGap);
    for (int i = 0; i < static_cast<int>(control.cmdEdit.size()); ++i) {
        auto* button = new QPushButton;
        m_bindings.Bind(button, ChildName("cmdEdit", i),
                        control.cmdEdit[static_cast<std::size_t>(i)],
                        [&control, i] { control.cmdEdit_Click(static_cast<Integer>(i)); });
        if (i < kOfOneKey) {
            const auto show = [button, i, &control, grid = keys->Grid()] {
                button->setEnabled(control.cmdEdit[static_cast<std::size_t>(i)].Enabled &&
                                   control.CurrentKey() != QXFreeProgKeys::kNoKey &&
                                   grid->Selected().size() <= 1);
            };
            m_bindings.OnShow(show);
            connect(keys->Grid(), &KeyGrid::SelectionChanged, button, show);
        }
        buttonRow->addWidget(button);
    }
    buttonRow->addWidget(details);
    buttonRow->setAlignment(details, Qt::AlignVCenter);
    auto* column = new QVBoxLayout(this);
    column->addWidget(keys, 1);
    column->addWidget(sequenceRow);
    column->addLayout(buttonRow);

    m_refreshed = control.Refreshed.Subscribe([this] { m_bindings.ShowAll(); });
    m_bindings.ShowAll();
}

} // namespace qx::views
