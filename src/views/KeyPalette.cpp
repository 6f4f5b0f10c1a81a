#include "views/KeyPalette.h"

#include "qxcontrols/keys/KeyNames.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "views/Bindings.h"
#include "views/EntryLine.h"
#include "views/FlowLayout.h"
#include "views/HeldKeys.h"
#include "views/ScrollArea.h"

#include <QEvent>
#include <QGridLayout>
#include <QTabWidget>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <array>
#include <map>

namespace qx::views {

namespace {

constexpr int kSpacing = 4;
constexpr int kLeastKeyWidth = 32;
constexpr int kLeastKeyHeight = 28;
constexpr int kLeastWideHeight = 24; // for three rows below the keys of a small window
constexpr int kMostFound = 30;

enum Group { Letters, Function, Navigation, Pad, Modifiers, kGroups };

constexpr std::array<const char*, kGroups> kTitles = {
    QT_TRANSLATE_NOOP("KeyPalette", "A–Z"),        QT_TRANSLATE_NOOP("KeyPalette", "F1–F12"),
    QT_TRANSLATE_NOOP("KeyPalette", "Navigation"), QT_TRANSLATE_NOOP("KeyPalette", "Pad"),
    QT_TRANSLATE_NOOP("KeyPalette", "Ctrl/Alt"),
};

constexpr Byte kControl = 58;
constexpr Byte kAlt = 60;

// Keys that stay together, as on a keyboard: in rows of three; 0 where there is none.
constexpr std::size_t kColumns = 3;
using Block = std::array<Byte, 4 * kColumns>;
constexpr Block kNavigationBlocks[] = {
    {75, 80, 85, 76, 81, 86}, // Insert, Home, Page Up; Delete, End, Page Down
    {0, 83, 0, 79, 84, 89},   // Up; Left, Down, Right
    {15, 0, 0, 16, 43},       // Backspace; Tab, Enter
};
constexpr Block kPadBlocks[] = {
    {91, 96, 101, 92, 97, 102, 93, 98, 103, 99, 104}, // 7, 8, 9 and below; the separator
    {95, 100, 0, 105, 106, 0, 108, 0, 0, 90},         // divide, times; minus, plus; Enter; Num Lock
};

// By the customary numbers. Beside the function keys are Esc and those to their right.
Group GroupOf(Byte key) {
    static constexpr Byte kModifiers[] = {30, 44, 57, kControl, kAlt, 62, 64};
    static constexpr Byte kNavigation[] = {15, 16, 43}; // Backspace, Tab, Enter
    if (std::ranges::find(kNavigation, key) != std::end(kNavigation) || (key >= 75 && key <= 89))
        return Navigation;
    if (std::ranges::find(kModifiers, key) != std::end(kModifiers))
        return Modifiers;
    if (key >= 110)
        return Function;
    return key >= 90 ? Pad : Letters;
}

std::span<const Block> BlocksOf(int group) {
    if (group == Navigation)
        return kNavigationBlocks;
    return group == Pad ? std::span<const Block>(kPadBlocks) : std::span<const Block>();
}

// Takes all widgets out of the layout.
void Empty(QLayout& layout) {
    while (QLayoutItem* item = layout.takeAt(0)) {
        item->widget()->deleteLater();
        item->widget()->hide();
        delete item;
    }
}

} // namespace

KeyPalette::KeyPalette(QWidget* parent)
    : QWidget(parent), m_held(new HeldKeys), m_search(new EntryLine), m_tabs(new QTabWidget),
      m_found(new QWidget) {
    connect(m_held, &HeldKeys::HeldChanged, this, &KeyPalette::HeldChanged);
    m_search->setObjectName(QStringLiteral("searchKey"));
    m_search->setClearButtonEnabled(true);
    connect(m_search, &QLineEdit::textChanged, this, &KeyPalette::Search);
    connect(m_search, &QLineEdit::returnPressed, this, [this] { // the first one found
        if (auto* button = m_found->findChild<QToolButton*>();
            button != nullptr && !m_search->text().isEmpty())
            button->click();
    });
    m_found->setLayout(new FlowLayout(kSpacing));
    m_found->hide();
    m_tabs->setObjectName(QStringLiteral("keyGroups"));
    m_tabs->setDocumentMode(true);
    m_tabs->setUsesScrollButtons(false); // all of them have room
    m_tabs->setElideMode(Qt::ElideNone);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    m_head = new QVBoxLayout;
    m_head->addWidget(m_held);
    m_head->addWidget(m_search);
    column->addLayout(m_head);
    column->addWidget(m_found);
    column->addWidget(m_tabs, 1);
    ShowTexts();
}

QToolButton* KeyPalette::MakeButton(const Key& key) {
    auto* button = new QToolButton;
    button->setObjectName(QStringLiteral("key_%1").arg(key.code));
    button->setText(QString(key.caption).replace(u'&', QStringLiteral("&&")));
    button->setToolTip(key.name);
    button->setAccessibleName(key.name.isEmpty() ? key.caption : key.name);
    button->setMinimumSize(kLeastKeyWidth, m_isWide ? kLeastWideHeight : kLeastKeyHeight);
    connect(button, &QToolButton::clicked, this, [this, code = key.code] {
        if (!m_search->text().isEmpty()) { // the next search starts anew
            m_search->Empty();
            m_search->setFocus();
        }
        emit KeyChosen(code);
    });
    return button;
}

// Takes the keys of the block out of the others.
QWidget* KeyPalette::MakeBlock(std::vector<Key>& keys, std::span<const Byte> block) {
    auto* widget = new QWidget;
    auto* grid = new QGridLayout(widget);
    grid->setContentsMargins(0, 0, 2 * kSpacing, 2 * kSpacing); // to the next block
    grid->setSpacing(kSpacing);
    for (std::size_t place = 0; place < block.size(); ++place) {
        const auto key = std::ranges::find(keys, block[place], &Key::code);
        if (key == keys.end())
            continue;
        QToolButton* button = MakeButton(*key);
        button->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed); // as wide as the column
        grid->addWidget(button, static_cast<int>(place / kColumns),
                        static_cast<int>(place % kColumns));
        keys.erase(key);
    }
    return widget;
}

QWidget* KeyPalette::MakePage(std::vector<Key> keys, int group) {
    auto* content = new QWidget;
    auto* flow = new FlowLayout(kSpacing, content);
    flow->setContentsMargins(kSpacing, kSpacing, kSpacing, 0);
    for (const Block& block : BlocksOf(group))
        flow->addWidget(MakeBlock(keys, block));
    for (const Key& key : keys)
        flow->addWidget(MakeButton(key));
    auto* scroll = new ScrollArea(content);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setMinimumHeight(kLeastWideHeight + 2 * kSpacing); // one row
    return scroll;
}

void KeyPalette::ShowKeys(const QXKeyboardLayoutData* layout) {
    m_held->ShowLayout(layout);
    std::array<std::vector<Key>, kGroups> groups;
    m_keys.clear();
    for (int code = 1; layout != nullptr && code < KeyNames::kFirstUnpressable; ++code) {
        const Key key{static_cast<Byte>(code), ToQt(layout->KeyCaption(code)).trimmed(),
                      ToQt(layout->KeyLongCaption(code)).trimmed()};
        if (key.caption.isEmpty())
            continue;
        m_keys.push_back(key);
        groups[GroupOf(key.code)].push_back(key);
    }
    const int shown = std::max(0, m_tabs->currentIndex());
    while (m_tabs->count() > 0) {
        QWidget* page = m_tabs->widget(0);
        m_tabs->removeTab(0);
        delete page;
    }
    for (int group = 0; group < kGroups; ++group)
        m_tabs->addTab(MakePage(groups[static_cast<std::size_t>(group)], group), QString());
    m_tabs->setCurrentIndex(shown);
    ShowTexts();
    Search(m_search->text());
}

void KeyPalette::SetWide(bool isWide) {
    m_head->setDirection(isWide ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    m_isWide = isWide;
    for (QWidget* pages : std::initializer_list<QWidget*>{m_tabs, m_found})
        for (auto* button : pages->findChildren<QToolButton*>())
            button->setMinimumHeight(isWide ? kLeastWideHeight : kLeastKeyHeight);
}

void KeyPalette::Release() {
    m_held->Show({});
}

// How well the key fits what is searched for, 0 best; nothing when it does not.
std::optional<int> KeyPalette::RankOf(const Key& key, const QString& wanted) {
    if (key.caption.compare(wanted, Qt::CaseInsensitive) == 0 ||
        QString::number(key.code) == wanted)
        return 0;
    if (key.caption.startsWith(wanted, Qt::CaseInsensitive))
        return 1;
    if (key.name.contains(wanted, Qt::CaseInsensitive))
        return 2;
    return {};
}

void KeyPalette::Search(const QString& text) {
    Empty(*m_found->layout());
    const QString wanted = text.trimmed();
    std::multimap<int, const Key*> found;
    if (!wanted.isEmpty())
        for (const Key& key : m_keys)
            if (const auto rank = RankOf(key, wanted))
                found.emplace(*rank, &key);
    int shown = 0;
    for (const auto& [rank, key] : found)
        if (++shown <= kMostFound)
            m_found->layout()->addWidget(MakeButton(*key));
    m_found->setVisible(!wanted.isEmpty());
    m_tabs->setVisible(wanted.isEmpty());
}

void KeyPalette::ShowTexts() {
    m_search->setPlaceholderText(tr("Find a key"));
    m_search->setAccessibleName(tr("Find a key"));
    m_tabs->setAccessibleName(tr("Keys to add"));
    for (int i = 0; i < m_tabs->count(); ++i)
        m_tabs->setTabText(i, tr(kTitles[static_cast<std::size_t>(i)]));
    const auto control = std::ranges::find(m_keys, kControl, &Key::code);
    const auto alt = std::ranges::find(m_keys, kAlt, &Key::code);
    if (control != m_keys.end() && alt != m_keys.end()) // as on the keys
        m_tabs->setTabText(Modifiers, control->caption + u'/' + alt->caption);
}

void KeyPalette::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        ShowTexts();
}

} // namespace qx::views
