#include "views/frmPOSProgrammerView.h"

#include "views/CaptionedRow.h"
#include "views/ColorSwatch.h"
#include "views/Discard.h"
#include "views/QXPosDisplayView.h"
#include "views/RoomyRows.h"
#include "views/ScrollArea.h"

#include <QEvent>
#include <QGridLayout>
#include <QIntValidator>
#include <QScreen>
#include <QShortcut>
#include <QVBoxLayout>

#include <algorithm>
#include <limits>

namespace qx::views {

namespace {

constexpr int kColumnGap = 16; // pixels

int TwoLines(const QWidget& widget) {
    return 2 * widget.fontMetrics().lineSpacing();
}

// Room for two lines of a text that may need more, so that nothing moves when it changes.
QWidget* TwoLinesOf(QLabel* label) {
    label->setWordWrap(true);
    label->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    auto* area = new ScrollArea(label);
    area->setFocusPolicy(Qt::StrongFocus); // the label has none
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setFixedHeight(TwoLines(*label));
    return area;
}

} // namespace

frmPOSProgrammerView::frmPOSProgrammerView(frmPOSProgrammer& form, QWidget* parent)
    : QDialog(parent), m_form(form) {
    setObjectName(QStringLiteral("frmPOSProgrammer"));
    auto* details = new QHBoxLayout;
    details->addLayout(MakeBlocks(), 2);
    details->addSpacing(16);
    details->addLayout(MakeCurrentBlock(), 3);
    auto* keys = MakeKeys();
    auto* content = new QWidget;
    auto* parts = new QVBoxLayout(content);
    parts->setContentsMargins({});
    parts->addWidget(keys, 1);
    parts->addSpacing(8);
    parts->addLayout(details);
    auto* column = new QVBoxLayout(this);
    column->addLayout(MakeHead());
    auto* area = new TallArea(content); // small screens lack the room
    column->addWidget(area, 1);
    column->addSpacing(8);
    column->addLayout(MakeButtons());
    m_bindings.OnShow([this, area, content] {
        setWindowTitle(ToQt(m_form.lblCaption.Caption));
        area->setMinimumHeight(std::min(content->minimumSizeHint().height(),
                                        screen()->availableSize().height() * 6 / 10));
        area->updateGeometry(); // it is as wide as the texts
    });

    auto* confirm = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_Return), this);
    connect(confirm, &QShortcut::activated, this, [&form] { form.cmdOK_Click(); });
    auto* undo = new QShortcut(QKeySequence::Undo, this);
    connect(undo, &QShortcut::activated, this, [&form] { form.cmdUndo_Click(); });
    auto* help = new QShortcut(QKeySequence(Qt::Key_F1), this);
    connect(help, &QShortcut::activated, this, [&form] { form.imgHelp_Click(); });
    m_refreshed = form.Refreshed.Subscribe([this] { m_bindings.ShowAll(); });
    m_closed = form.Closed.Subscribe([this] { done(m_form.OK() ? QDialog::Accepted : Rejected); });
    m_bindings.ShowAll();
    keys->setFocus();
    resize(sizeHint().boundedTo(screen()->availableSize() * 19 / 20));
}

QPushButton* frmPOSProgrammerView::MakeButton(const QString& name, const Button& child,
                                              const Bindings::Action& clicked) {
    auto* button = new QPushButton;
    button->setAutoDefault(false); // Enter picks keys
    m_bindings.Bind(button, name, child, clicked);
    return button;
}

QLabel* frmPOSProgrammerView::MakeLabel(const char* name, const Label& child) {
    auto* label = new QLabel;
    label->setTextFormat(Qt::PlainText);
    m_bindings.Bind(label, QString::fromLatin1(name), child);
    return label;
}

QLayout* frmPOSProgrammerView::MakeHead() {
    auto* hint = new QLabel;
    hint->setWordWrap(true);
    auto* help = new QPushButton;
    help->setAutoDefault(false);
    help->setObjectName(QStringLiteral("imgHelp"));
    connect(help, &QPushButton::clicked, this, [this] { m_form.imgHelp_Click(); });
    m_bindings.OnShow([this, hint, help] {
        hint->setText(m_form.CurrBlock() == 0
                          ? tr("Click a free key to start a block, or a key of a block to "
                               "change that block.")
                          : tr("Click keys to put them into the block or to take them out; "
                               "Ctrl+click takes a key from another block. Ctrl and the arrow keys "
                               "move without leaving the block. The first key, row by row, is "
                               "the major key, in bold."));
        help->setText(tr("Help"));
    });
    auto* row = new QHBoxLayout;
    row->addWidget(hint, 1);
    row->addWidget(help);
    return row;
}

QWidget* frmPOSProgrammerView::MakeKeys() {
    auto* keys = new QXPosDisplayView(m_form.posDisplay);
    keys->SetTexts([this](Integer key) { return ToQt(m_form.KeyLabel(key)); },
                   [this](Integer key) { return m_form.SequenceOf(key); },
                   [this] { return m_form.LayoutSource(); });
    keys->SetActions([this](Integer key) { m_form.ReachKey(key); },
                     [this](Integer key) { m_form.TakeKey(key); });
    return keys;
}

QLayout* frmPOSProgrammerView::MakeBlocks() {
    auto* head = new QHBoxLayout;
    auto* freeCaption = new QLabel;
    auto* list = new QListWidget;
    m_bindings.Bind(list, QStringLiteral("lstBlocks"), m_form.lstBlocks,
                    [this] { m_form.lstBlocks_Click(); });
    list->setItemDelegate(new RoomyRows(list));
    list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff); // long lines are cut off
    list->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
    list->setMinimumHeight(list->fontMetrics().lineSpacing() * 4);
    m_bindings.OnShow([this, freeCaption, list] {
        freeCaption->setText(tr("Keys without a block:"));
        list->setAccessibleName(ToQt(m_form.lblNumBlocks.Caption));
    });
    head->addLayout(CaptionedRow(MakeLabel("lblNumBlocks", m_form.lblNumBlocks),
                                 MakeLabel("lblBlockNum", m_form.lblBlockNum)));
    head->addStretch(1);
    head->addLayout(CaptionedRow(freeCaption, MakeLabel("lblFreeKeys", m_form.lblFreeKeys)));

    auto* row = new QHBoxLayout;
    row->addWidget(MakeButton(QStringLiteral("cmdNewBlock"), m_form.cmdNewBlock,
                              [this] { m_form.cmdNewBlock_Click(); }));
    for (const int index : {0, 1})
        row->addWidget(MakeButton(
            ChildName("cmdClean", index), m_form.cmdClean[static_cast<std::size_t>(index)],
            [this, index] { m_form.cmdClean_Click(static_cast<Integer>(index)); }));
    row->addStretch(1);
    auto* undo =
        MakeButton(QStringLiteral("cmdUndo"), m_form.cmdUndo, [this] { m_form.cmdUndo_Click(); });
    m_bindings.OnShow([undo] {
        undo->setText(tr("&Undo"));
        undo->setToolTip(QKeySequence(QKeySequence::Undo).toString(QKeySequence::NativeText));
    });
    row->addWidget(undo);
    auto* column = new QVBoxLayout;
    column->addLayout(head);
    column->addWidget(list, 1);
    column->addLayout(row);
    return column;
}

QLayout* frmPOSProgrammerView::MakeCurrentBlock() {
    auto* id = new QLineEdit;
    id->setValidator(new QIntValidator(0, std::numeric_limits<Integer>::max(), id));
    id->setMaximumWidth(id->fontMetrics().horizontalAdvance(QStringLiteral("0000000000")));
    m_bindings.Bind(id, QStringLiteral("txtBlockID"), m_form.txtBlockID,
                    [this] { m_form.txtBlockID_Change(); });
    auto* idCaption = MakeLabel("lblBlockID", m_form.lblBlockID);
    idCaption->setBuddy(id);
    auto* keys = MakeLabel("lblCurrKeys", m_form.lblCurrKeys);

    auto* left = new QLabel;
    m_bindings.OnShow([left] { left->setText(tr("Codes left:")); });
    auto* sequence = MakeLabel("lblCurrSeq", m_form.lblCurrSeq);
    m_bindings.OnShow([this, sequence] {
        if (m_form.CurrBlock() != 0 && m_form.lblCurrSeq.Caption.empty())
            sequence->setText(tr("Sends nothing yet"));
    });

    auto* grid = new QGridLayout;
    grid->setColumnStretch(1, 1);
    grid->setHorizontalSpacing(kColumnGap);
    grid->addWidget(idCaption, 0, 0);
    grid->addWidget(id, 0, 1);
    grid->addWidget(MakeLabel("lblKeys", m_form.lblKeys), 1, 0);
    grid->addWidget(TwoLinesOf(keys), 1, 1);
    grid->addWidget(MakeLabel("lblColor", m_form.lblColor), 2, 0);
    grid->addLayout(MakeColors(), 2, 1);
    grid->addWidget(MakeLabel("lblSequence", m_form.lblSequence), 3, 0);
    auto* sequenceRow = new QHBoxLayout;
    sequenceRow->addWidget(TwoLinesOf(sequence), 1);
    sequenceRow->addWidget(
        MakeButton(QStringLiteral("cmdEdit"), m_form.cmdEdit, [this] { m_form.cmdEdit_Click(); }));
    grid->addLayout(sequenceRow, 3, 1);
    grid->addLayout(CaptionedRow(left, MakeLabel("lblRemaining", m_form.lblRemaining)), 4, 1,
                    Qt::AlignLeft);
    grid->setRowStretch(5, 1);
    return grid;
}

QLayout* frmPOSProgrammerView::MakeColors() {
    auto* row = new QHBoxLayout;
    row->setSpacing(2);
    for (Integer index = 0; index < frmPOSProgrammer::kColors; ++index) {
        auto* swatch = new ColorSwatch;
        swatch->setObjectName(ChildName("cmdColor", index));
        swatch->setCheckable(true);
        connect(swatch, &QAbstractButton::clicked, this,
                [this, index] { m_form.cmdColor_Click(index); });
        m_bindings.OnShow([this, swatch, index] {
            const ColorButton& child = m_form.cmdColor[static_cast<std::size_t>(index)];
            swatch->SetColor(ToQColor(child.BackColor));
            swatch->setChecked(child.IsSelected);
            swatch->setEnabled(child.Enabled);
            swatch->setText(QString::number(index));
            swatch->setToolTip(tr("Colour %1").arg(index));
            swatch->setAccessibleName(swatch->toolTip());
        });
        row->addWidget(swatch);
    }
    row->addStretch(1);
    return row;
}

QLayout* frmPOSProgrammerView::MakeButtons() {
    auto* row = new QHBoxLayout;
    row->addStretch(1);
    row->addWidget(
        MakeButton(QStringLiteral("cmdOK"), m_form.cmdOK, [this] { m_form.cmdOK_Click(); }));
    row->addWidget(MakeButton(QStringLiteral("cmdCancel"), m_form.cmdCancel,
                              [this] { m_form.cmdCancel_Click(); }));
    return row;
}

void frmPOSProgrammerView::reject() {
    if (Discard::IsAgreed(this, m_form.IsChanged()))
        m_form.LeaveWithCancel();
}

void frmPOSProgrammerView::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        m_bindings.ShowAll();
}

} // namespace qx::views
