#include "views/QXLayoutDisplayView.h"

#include "qxcontrols/keys/KeyCharacters.h"
#include "qxcontrols/keys/KeyName.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"

#include <QEvent>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace qx::views {

QXLayoutDisplayView::QXLayoutDisplayView(QXLayoutDisplay& display, QWidget* parent)
    : QWidget(parent), m_display(display), m_grid(new KeyGrid(this)) {
    m_grid->setObjectName(QStringLiteral("layoutDisplay"));
    m_grid->SetKeyName("cmdKey");
    setFocusProxy(m_grid);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->addWidget(m_grid);

    connect(m_grid, &KeyGrid::KeyPicked, this,
            [this](int index) { m_display.cmdKey_Click(static_cast<Integer>(index)); });
    connect(m_grid, &KeyGrid::KeyReached, this, [this](int index) {
        if (IsSetting() && index != m_display.CurrProgKey())
            m_display.cmdKey_Click(static_cast<Integer>(index));
    });
    connect(m_grid, &KeyGrid::FocusKeyChanged, this, [this](int index) {
        if (m_grid->hasFocus() && index != m_display.SelectedKey())
            m_display.SelectKey(static_cast<Integer>(index));
    });
    m_refreshed = m_display.Refreshed.Subscribe([this] { ShowKeys(); });
    m_keySelected = m_display.KeySelected.Subscribe([this] { FollowSelection(); });
    ShowKeys();
    m_grid->SetFocusKey(m_display.SelectedKey());
}

void QXLayoutDisplayView::FollowSelection() {
    if (!m_grid->HasKey(m_display.SelectedKey()))
        return;
    if (m_grid->FocusKey() != m_display.SelectedKey())
        m_grid->SetFocusKey(m_display.SelectedKey());
    m_grid->setFocus();
}

void QXLayoutDisplayView::SetSequences(SequenceOfKey sequenceOf) {
    m_sequenceOf = std::move(sequenceOf);
    ShowKeys();
}

void QXLayoutDisplayView::ShowKeys() {
    std::vector<KeyCap> caps;
    SentTexts texts(m_display.LayoutSource());
    for (std::size_t key = 0; key < m_display.cmdKey.size(); ++key)
        if (m_display.cmdKey[key].Visible)
            caps.push_back(CapOf(static_cast<Integer>(key), texts));
    std::stable_sort(caps.begin(), caps.end(), [](const KeyCap& a, const KeyCap& b) {
        return std::pair(a.place.top(), a.place.left()) < std::pair(b.place.top(), b.place.left());
    });
    m_grid->setAccessibleName(tr("Keyboard"));
    m_grid->SetPointSize(m_display.UserFontSize());
    m_grid->SetKeys(std::move(caps));
    const Integer current = m_display.CurrProgKey();
    if (IsSetting() && std::exchange(m_shownKey, current) != current)
        m_grid->SetFocusKey(current);
}

bool QXLayoutDisplayView::IsSetting() const {
    return m_display.DisplayKeyType() == DISPLAY_SETTING;
}

bool QXLayoutDisplayView::IsProgrammable(Integer nPositionCode) const {
    const QXKeyboardLayoutData* layout = m_display.LayoutSource();
    return layout != nullptr && layout->KeySupport(nPositionCode) == KEYMODE_PROG;
}

KeyCap QXLayoutDisplayView::CapOf(Integer nPositionCode, SentTexts& texts) const {
    const KeyButton& key = m_display.cmdKey[static_cast<std::size_t>(nPositionCode)];
    const bool isSetting = IsSetting();
    const KeyCharacters types = CharactersOf(key.Caption, key.ToolTip);
    KeyCap cap;
    cap.index = nPositionCode;
    cap.place = {key.Left, key.Top, key.Width, key.Height};
    cap.caption = ToQt(key.Caption).trimmed();
    if (types.isPlainDead || types.isShiftedDead)
        cap.legend = QStringLiteral("\u25CC");
    cap.color = ToQColor(key.BackColor);
    cap.isEnabled = key.Enabled;
    cap.isCurrent = nPositionCode == m_display.CurrProgKey();
    if (isSetting ? IsProgrammable(nPositionCode) : key.Enabled)
        cap.state = isSetting && key.Programmed ? KeyState::Programmed : KeyState::Empty;
    cap.joinsRanges = cap.state != KeyState::Unused;
    const KeySequence* sent =
        cap.state == KeyState::Programmed && m_sequenceOf ? m_sequenceOf(nPositionCode) : nullptr;
    const QString sequence = sent == nullptr ? QString() : texts.Whole(*sent);
    cap.toolTip = ToQt(key.ToolTip);
    if (!sequence.isEmpty())
        cap.toolTip += u'\n' + sequence;
    if (!isSetting && !key.Enabled)
        cap.toolTip += u'\n' + tr("Cannot be recorded: a sequence has no codes that press and "
                                  "release key %1, only those of the keys up to 127.")
                                   .arg(nPositionCode);
    cap.name = NameOf(cap, sequence);
    if (!sequence.isEmpty()) {
        cap.legend = cap.caption;
        cap.caption = texts.Brief(*sent);
    }
    return cap;
}

QString QXLayoutDisplayView::NameOf(const KeyCap& cap, const QString& sequence) const {
    const bool isSetting = IsSetting();
    QString name = tr("Key %1").arg(ToQt(KeyName(cap.index, m_display.LayoutSource())));
    if (!cap.legend.isEmpty())
        name = tr("%1, dead key").arg(name);
    if (cap.state == KeyState::Unused)
        name =
            (isSetting ? tr("%1, cannot be programmed") : tr("%1, cannot be recorded")).arg(name);
    else if (cap.state == KeyState::Programmed && !sequence.isEmpty())
        name = tr("%1, programmed: %2").arg(name, sequence);
    else if (cap.state == KeyState::Programmed)
        name = tr("%1, programmed").arg(name);
    else if (isSetting)
        name = tr("%1, not programmed").arg(name);
    return cap.isCurrent ? tr("%1, current key").arg(name) : name;
}

void QXLayoutDisplayView::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::LanguageChange)
        ShowKeys();
}

} // namespace qx::views
