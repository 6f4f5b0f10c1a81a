#include "views/QXLayeredFuncKeysView.h"

#include "views/EntryLine.h"
#include "views/FlowLayout.h"
#include "views/RowPlace.h"
#include "views/SequenceLabel.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QPainter>
#include <QTabBar>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace qx::views {

namespace {

constexpr int kButtonGap = 8; // pixels
constexpr int kOfOneKey = 2;  // the first buttons are for the key that is selected

// The same dot as on keys.
QIcon DotIcon(const QTabBar& tabs) {
    const double ratio = tabs.devicePixelRatioF();
    const QSize size = tabs.iconSize();
    QPixmap image(size * ratio);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(kDotColor);
    painter.drawEllipse(QRectF({}, size).center(), size.height() / 3.0, size.height() / 3.0);
    return {image};
}

} // namespace

QXLayeredFuncKeysView::QXLayeredFuncKeysView(QXLayeredFuncKeys& control, QWidget* parent)
    : QWidget(parent), m_control(control), m_grid(new KeyGrid(this)) {
    m_grid->setObjectName(QStringLiteral("funcKeys"));
    m_grid->SetKeyName("cmdFuncKey");
    connect(m_grid, &KeyGrid::KeyPicked, this,
            [this](int index) { m_control.cmdFuncKey_Click(static_cast<Integer>(index)); });
    connect(m_grid, &KeyGrid::KeyReached, this, [this](int index) { // the focus is on the current
        if (index != m_control.CurrentKey())
            m_control.cmdFuncKey_Click(static_cast<Integer>(index));
    });
    m_bindings.OnShow([this] { ShowKeys(); });

    auto* column = new QVBoxLayout(this);
    column->addLayout(MakeLayerTabs());
    column->addWidget(m_grid, 1);
    column->addLayout(MakeKeyRows());
    column->addLayout(MakeButtonRow());

    m_refreshed = control.Refreshed.Subscribe([this] { m_bindings.ShowAll(); });
    m_bindings.ShowAll();
}

QLayout* QXLayeredFuncKeysView::MakeLayerTabs() {
    auto* caption = new QLabel;
    m_tabs = new QTabBar;
    m_tabs->setObjectName(QStringLiteral("layers"));
    m_tabs->setExpanding(false);
    const int dot = m_tabs->fontMetrics().height() - 4; // no tab becomes higher by one
    m_tabs->setIconSize({dot, dot});
    m_tabs->setElideMode(Qt::ElideNone); // tabs that have no room are scrolled to
    m_tabs->setContextMenuPolicy(Qt::CustomContextMenu);
    for (Integer layer = 0; layer < kFuncKeyLayers; ++layer)
        m_tabs->addTab({});
    caption->setBuddy(m_tabs);
    m_bindings.Bind(caption, QStringLiteral("lblLayerDesc"), m_control.lblLayerDesc);
    m_bindings.OnShow([this, caption] {
        m_tabs->setAccessibleName(caption->text());
        ShowLayers();
    });
    connect(m_tabs, &QTabBar::currentChanged, this, [this](int layer) {
        if (layer == m_control.CurrentLayer())
            return;
        m_control.spinLayer.Value = static_cast<Integer>(layer);
        m_control.spinLayer_Change();
    });
    connect(m_tabs, &QTabBar::customContextMenuRequested, this, [this](const QPoint& at) {
        const int layer = m_tabs->tabAt(at);
        emit LayerMenuRequested(layer < 0 ? m_tabs->currentIndex() : layer,
                                m_tabs->mapToGlobal(at));
    });

    auto* row = new QHBoxLayout;
    row->addWidget(caption);
    row->addWidget(m_tabs, 1);
    m_belowTabs = new QVBoxLayout;
    m_belowTabs->addLayout(row);
    return m_belowTabs;
}

void QXLayeredFuncKeysView::AddBelowTabs(QWidget* widget) {
    m_belowTabs->addWidget(widget);
}

void QXLayeredFuncKeysView::SetMarkedLayers(const std::set<int>& layers, const QString& meaning) {
    m_markMeaning = meaning;
    if (layers == m_markedLayers)
        return;
    m_markedLayers = layers;
    ShowLayers();
}

// Each layer's name is followed by the number of its programmed keys.
void QXLayeredFuncKeysView::ShowLayers() {
    for (Integer number = 0; number < kFuncKeyLayers; ++number) {
        const FuncKeyLayer& layer = m_control.Layer(number);
        const Integer programmed = layer.CountProgrammed();
        QString text = QString::number(number);
        if (!layer.Name().empty())
            text += u' ' + ToQt(layer.Name());
        const bool isMarked = m_markedLayers.contains(number);
        QString meaning =
            programmed > 0 ? tr("%1, programmed").arg(text) : tr("%1, empty").arg(text);
        if (isMarked)
            meaning += u'\n' + m_markMeaning;
        text.replace(u'&', QStringLiteral("&&"));
        if (programmed > 0)
            text += QStringLiteral(" (%1)").arg(programmed);
        // Any change lays out all tabs again.
        if (m_tabs->tabText(number) == text && m_tabs->accessibleTabName(number) == meaning)
            continue;
        m_tabs->setAccessibleTabName(number, meaning);
        m_tabs->setTabIcon(number, isMarked ? DotIcon(*m_tabs) : QIcon());
        m_tabs->setTabToolTip(number, meaning);
        m_tabs->setTabText(number, text);
    }
    m_tabs->setCurrentIndex(m_control.CurrentLayer());
}

QLayout* QXLayeredFuncKeysView::MakeKeyRows() {
    auto* sequenceCaption = new QLabel;
    auto* sequence = new SequenceLabel;
    auto* descriptionCaption = new QLabel;
    auto* description = new EntryLine;
    sequenceCaption->setBuddy(sequence);
    descriptionCaption->setBuddy(description);
    description->setMaxLength(kFuncKeyDescLength); // both count UTF-16 units
    m_bindings.Bind(sequenceCaption, QStringLiteral("lblSequence"), m_control.lblSequence);
    m_bindings.Bind(sequence, QStringLiteral("lblCurrSeq"), m_control.lblCurrSeq);
    m_bindings.Bind(descriptionCaption, QStringLiteral("lblSymbolDesc"), m_control.lblSymbolDesc);
    m_bindings.Bind(description, QStringLiteral("txtSymbolDesc"), m_control.txtSymbolDesc,
                    [this] { m_control.txtSymbolDesc_Change(); });
    const auto showSelection = [=, this] {
        const bool isSeveral = m_grid->Selected().size() > 1; // they have nothing in common
        const QString text = isSeveral ? QString() : ToQt(m_control.txtSymbolDesc.Text);
        const QSignalBlocker quiet(description);
        if (description->text() != text) // setting an equal text would move the cursor
            description->setText(text);
        description->setEnabled(!isSeveral && m_control.txtSymbolDesc.Enabled);
        description->setPlaceholderText(isSeveral ? tr("(several keys selected)") : QString());
        sequence->setText(isSeveral ? tr("(several keys selected)")
                                    : ToQt(m_control.lblCurrSeq.Caption));
        sequence->setEnabled(!isSeveral);
        for (QLabel* caption : {sequenceCaption, descriptionCaption})
            caption->setMinimumWidth(std::max(sequenceCaption->sizeHint().width(),
                                              descriptionCaption->sizeHint().width()));
        sequence->ShowAccessibleName(sequenceCaption->text());
        description->setAccessibleName(descriptionCaption->text());
    };
    m_bindings.OnShow(showSelection);
    connect(m_grid, &KeyGrid::SelectionChanged, description, showSelection);
    connect(sequence, &SequenceLabel::KeyPress, this, [this] { m_control.lblCurrSeq_KeyPress(); });

    auto* sequenceRow = new QWidget;
    sequenceRow->setObjectName(QStringLiteral("sequenceRow"));
    auto* sent = new QHBoxLayout(sequenceRow);
    sent->setContentsMargins({});
    sent->addWidget(sequenceCaption);
    sent->addWidget(sequence, 1);
    auto* described = new QHBoxLayout;
    described->addWidget(descriptionCaption);
    described->addWidget(description, 1);
    auto* rows = new QVBoxLayout;
    rows->addWidget(sequenceRow);
    rows->addLayout(described);
    return rows;
}

QLayout* QXLayeredFuncKeysView::MakeButtonRow() {
    auto* row = new FlowLayout(kButtonGap);
    for (int i = 0; i < static_cast<int>(m_control.cmdEdit.size()); ++i) {
        auto* button = new QPushButton;
        m_bindings.Bind(button, ChildName("cmdEdit", i),
                        m_control.cmdEdit[static_cast<std::size_t>(i)],
                        [this, i] { m_control.cmdEdit_Click(static_cast<Integer>(i)); });
        if (i < kOfOneKey) {
            const auto show = [this, button, i] {
                button->setEnabled(m_control.cmdEdit[static_cast<std::size_t>(i)].Enabled &&
                                   m_control.CurrentKey() != QXLayeredFuncKeys::kNoKey &&
                                   m_grid->Selected().size() <= 1);
            };
            m_bindings.OnShow(show);
            connect(m_grid, &KeyGrid::SelectionChanged, button, show);
        }
        row->addWidget(button);
    }
    auto* details = new QCheckBox;
    m_bindings.Bind(details, QStringLiteral("chkShowDetails"), m_control.chkShowDetails,
                    [this] { m_control.chkShowDetails_Click(); });
    row->addWidget(details);
    row->setAlignment(details, Qt::AlignVCenter);
    return row;
}

void QXLayeredFuncKeysView::ShowKeys() {
    std::vector<KeyCap> caps;
    SentTexts texts(m_control.LayoutSource());
    for (Integer key = 0; key < FuncKeyLayer::kKeys; ++key)
        caps.push_back(CapOf(key, texts));
    m_grid->setAccessibleName(tr("Function keys of layer %1").arg(m_control.CurrentLayer()));
    m_grid->SetKeys(std::move(caps));
    if (std::exchange(m_shownKey, m_control.CurrentKey()) != m_shownKey)
        m_grid->SetFocusKey(m_shownKey);
}

KeyCap QXLayeredFuncKeysView::CapOf(Integer nKey, SentTexts& texts) const {
    const FuncKeyButton& key = m_control.cmdFuncKey[static_cast<std::size_t>(nKey)];
    KeyCap cap;
    cap.index = nKey;
    cap.place = RowPlace(kFuncKeyRows, nKey);
    cap.caption = ToQt(key.Caption);
    const KeySequence& sent = m_control.Layer(m_control.CurrentLayer()).GetKey(nKey);
    const QString shown = key.ToolTip.empty() ? texts.Brief(sent) : ToQt(key.ToolTip);
    if (!shown.isEmpty()) { // the key's number is the least that there is to show
        cap.legend = cap.caption;
        cap.caption = shown;
    }
    cap.color = ToQColor(key.BackColor);
    cap.state = key.Programmed ? KeyState::Programmed : KeyState::Empty;
    cap.isCurrent = key.Current;
    cap.isEnabled = key.Enabled;
    const QString sequence = texts.Whole(sent);
    cap.toolTip = ToQt(key.ToolTip);
    if (!sequence.isEmpty())
        cap.toolTip += (cap.toolTip.isEmpty() ? QString() : QStringLiteral("\n")) + sequence;
    cap.name = NameOf(key, sequence);
    return cap;
}

QString QXLayeredFuncKeysView::NameOf(const FuncKeyButton& key, const QString& sequence) const {
    QString name = ToQt(key.Caption);
    if (!key.ToolTip.empty())
        name += QStringLiteral(", ") + ToQt(key.ToolTip);
    if (!key.Programmed)
        name = tr("%1, not programmed").arg(name);
    else
        name = tr("%1, programmed: %2").arg(name, sequence);
    return key.Current ? tr("%1, current key").arg(name) : name;
}

void QXLayeredFuncKeysView::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::LanguageChange)
        m_bindings.ShowAll();
}

} // namespace qx::views
