#include "views/QXPosDisplayView.h"

#include "qxcontrols/keys/KeyName.h"
#include "qxcontrols/pos/POSKeyboard.h"
#include "views/RowPlace.h"

#include <QEvent>
#include <QVBoxLayout>

#include <utility>

namespace qx::views {

namespace {

constexpr double kOrdinaryFontSize = 8;

} // namespace

QXPosDisplayView::QXPosDisplayView(QXPosDisplay& display, QWidget* parent)
    : QWidget(parent), m_display(display), m_grid(new KeyGrid(this)) {
    m_grid->setObjectName(QStringLiteral("posDisplay"));
    m_grid->SetKeyName("cmdPOS");
    setFocusProxy(m_grid);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->addWidget(m_grid);

    connect(m_grid, &KeyGrid::KeyPicked, this, [this](int index, bool withControl) {
        if (withControl && m_take)
            m_take(static_cast<Integer>(index));
        else
            m_display.cmdPOS_Click(static_cast<Integer>(index));
    });
    connect(m_grid, &KeyGrid::KeyReached, this, [this](int index) {
        if (m_reach)
            m_reach(static_cast<Integer>(index));
    });
    connect(m_grid, &KeyGrid::FocusKeyChanged, this, [this](int index) {
        if (m_grid->hasFocus() && index != m_display.Focus())
            m_display.SetCursor(static_cast<Integer>(index));
    });
    m_refreshed = m_display.Refreshed.Subscribe([this] { ShowKeys(); });
    m_focusMoved = m_display.FocusMoved.Subscribe([this] { FollowFocus(); });
    ShowKeys();
    m_grid->SetFocusKey(m_display.Focus());
}

void QXPosDisplayView::SetActions(KeyAction reach, KeyAction take) {
    m_reach = std::move(reach);
    m_take = std::move(take);
    m_grid->SetControlMoves(static_cast<bool>(m_take));
}

void QXPosDisplayView::FollowFocus() {
    if (!m_grid->HasKey(m_display.Focus()))
        return;
    if (m_grid->FocusKey() != m_display.Focus())
        m_grid->SetFocusKey(m_display.Focus());
    m_grid->setFocus();
}

void QXPosDisplayView::SetTexts(TextOfKey legend, SequenceOfKey sequence, LayoutInUse layout) {
    m_legend = std::move(legend);
    m_sequence = std::move(sequence);
    m_layout = std::move(layout);
    ShowKeys();
}

void QXPosDisplayView::ShowKeys() {
    std::vector<KeyCap> caps;
    SentTexts texts(m_layout ? m_layout() : nullptr);
    for (Integer key = QXPosDisplay::kMinKey; key <= QXPosDisplay::kMaxKey; ++key)
        if (m_display.cmdPOS[static_cast<std::size_t>(key)].Visible)
            caps.push_back(CapOf(key, texts));
    m_grid->setAccessibleName(tr("POS keys"));
    m_grid->SetKeys(std::move(caps));
}

KeyCap QXPosDisplayView::CapOf(Integer nKeyIndex, SentTexts& texts) const {
    const PosButton& key = m_display.cmdPOS[static_cast<std::size_t>(nKeyIndex)];
    const int place = nKeyIndex - QXPosDisplay::kMinKey;
    const bool isOfModule = nKeyIndex <= POSKeyboard::kSlots;
    const QString legend = isOfModule && m_legend ? m_legend(nKeyIndex) : QString();
    const KeySequence* sent = isOfModule && m_sequence ? m_sequence(nKeyIndex) : nullptr;
    const QString sequence = sent == nullptr ? QString() : texts.Whole(*sent);
    const bool isUsed = m_display.IsUsedKey(nKeyIndex);
    KeyCap cap;
    cap.index = nKeyIndex;
    cap.place = RowPlace(kPosKeyRows, place);
    cap.caption = ToQt(key.Caption);
    cap.legend = legend.isEmpty() && m_legend ? QString::number(nKeyIndex) : legend;
    cap.color = ToQColor(key.BackColor);
    cap.state = isUsed ? KeyState::Programmed : KeyState::Unused;
    cap.isCurrent = cap.isBold = key.FontBold;
    cap.textScale = key.FontSize / kOrdinaryFontSize;
    cap.isEnabled = key.Enabled;
    cap.joinsRanges = isOfModule;

    QString name = tr("Key %1").arg(ToQt(KeyName(nKeyIndex, legend.toStdString())));
    name = isUsed ? tr("%1, block %2").arg(name, cap.caption) : tr("%1, in no block").arg(name);
    if (!sequence.isEmpty())
        name = tr("%1, sends: %2").arg(name, sequence);
    cap.toolTip = key.ToolTip.empty() ? name : ToQt(key.ToolTip);
    cap.name = cap.isCurrent ? tr("%1, current key").arg(name) : name;
    bool isNumber = false;
    if (const int block = cap.caption.toInt(&isNumber); isUsed && isNumber)
        cap.group = block + 1;
    if (!sequence.isEmpty())
        cap.caption = texts.Brief(*sent);
    return cap;
}

void QXPosDisplayView::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::LanguageChange)
        ShowKeys();
}

} // namespace qx::views
