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
#include <QScrollBar>
#include <QTabWidget>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <array>
#include <map>

namespace qx::views {

namespace {

constexpr int kSpacing = 4;
constexpr int kRows = 4;     // of keys
constexpr int kColumns = 14; // with some room to spare
constexpr QSize kLeastKey(32, 22);
constexpr QSize kMostKey(48, 36);
constexpr std::size_t kMostRoomy = 6; // columns; keys of more are narrow
constexpr int kNarrowKeyWidth = 22;
constexpr int kTightPadding = 8;
constexpr int kMostFound = 30;

enum Group { Letters, Function, Navigation, Pad, Modifiers, kGroups };

constexpr std::array<const char*, kGroups> kTitles = {
    QT_TRANSLATE_NOOP("KeyPalette", "A–Z"),        QT_TRANSLATE_NOOP("KeyPalette", "F1–F12"),
    QT_TRANSLATE_NOOP("KeyPalette", "Navigation"), QT_TRANSLATE_NOOP("KeyPalette", "Keypad"),
    QT_TRANSLATE_NOOP("KeyPalette", "Ctrl/Alt"),
};

constexpr Byte kControl = 58;
constexpr Byte kAlt = 60;

// Keys that stay together, row by row, in even columns; 0 where there is none. A key that is there
// twice is as wide.
struct Block {
    std::size_t columns;
    std::vector<Byte> keys;
};
const std::vector<Block>& BlocksOf(Group group) {
    static const std::vector<Block> kBlocks[kGroups] = {
        {{13, {1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12, 13,    // ` 1 to =
               17, 18, 19, 20, 21, 22, 23, 24, 25, 26, 27, 28, 29,    // Q to ]
               31, 32, 33, 34, 35, 36, 37, 38, 39, 40, 41, 42, 0,     // A to '
               46, 47, 48, 49, 50, 51, 52, 53, 54, 55, 61, 61, 45}}}, // Z to /; Space; <
        {{6, {112, 113, 114, 115, 116, 117, 118, 119, 120, 121, 122, 123}},
         {4, {110, 124, 125, 126}}},    // Esc, Print Screen, Scroll Lock, Pause
        {{3, {75, 80, 85, 76, 81, 86}}, // Insert, Home, Page Up; Delete, End, Page Down
         {3, {0, 83, 0, 79, 84, 89}},   // Up; Left, Down, Right
         {3, {16, 43, 15}}},            // Tab, Enter, Backspace
        {{3, {91, 96, 101, 92, 97, 102, 93, 98, 103, 99, 104}}, // 7, 8, 9 and below; separator
         {2, {95, 100, 105, 106, 108, 0, 90}}},  // divide, times; minus, plus; Enter; Num Lock
        {{4, {30, 44, 58, 60, 0, 57, 64, 62}}}}; // Caps Lock; left Shift, Ctrl, Alt; right ones
    return kBlocks[group];
}

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

// Has a given size; where many share a row, each can be narrower than other buttons.
class PaletteKey : public QToolButton {
public:
    void SetWanted(const QSize& size) {
        m_width = size.width();
        setFixedHeight(size.height());
        updateGeometry();
    }
    [[nodiscard]] QSize minimumSizeHint() const override {
        return {fontMetrics().horizontalAdvance(text()) + kTightPadding,
                QToolButton::minimumSizeHint().height()};
    }
    [[nodiscard]] QSize sizeHint() const override {
        return QToolButton::sizeHint().expandedTo({m_width, 0});
    }

private:
    int m_width = 0;
};

// Its keys are as large as there is room; if there is too little, it scrolls row by row and cuts
// none.
class WholeRows : public TallArea {
public:
    using TallArea::TallArea;

protected:
    void resizeEvent(QResizeEvent* event) override {
        TallArea::resizeEvent(event);
        const QSize room(width() / kColumns - kSpacing, height() / kRows - kSpacing);
        const QSize key = room.expandedTo({0, kLeastKey.height()}).boundedTo(kMostKey);
        for (auto* button : widget()->findChildren<QToolButton*>())
            static_cast<PaletteKey*>(button)->SetWanted(key);
        for (const auto* block :
             widget()->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly))
            if (block->layout() != nullptr)
                block->layout()->activate();
        // A bar would take room, and what then moves to the next row would need the bar.
        setVerticalScrollBarPolicy(widget()->heightForWidth(width()) <= height()
                                       ? Qt::ScrollBarAlwaysOff
                                       : Qt::ScrollBarAsNeeded);
        const int row = key.height() + kSpacing;
        verticalScrollBar()->setSingleStep(row);
        setViewportMargins(0, 0, 0, height() % row);
    }
};

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
    auto* head = new QHBoxLayout;
    head->addWidget(m_held);
    head->addWidget(m_search, 1);
    column->addLayout(head);
    column->addWidget(m_found);
    column->addWidget(m_tabs, 1);
    ShowTexts();
}

QToolButton* KeyPalette::MakeButton(const Key& key) {
    auto* button = new PaletteKey;
    button->setObjectName(QStringLiteral("key_%1").arg(key.code));
    button->setText(QString(key.caption).replace(u'&', QStringLiteral("&&")));
    button->setToolTip(key.name);
    button->setAccessibleName(key.name.isEmpty() ? key.caption : key.name);
    button->setMinimumHeight(kLeastKey.height());
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
QWidget* KeyPalette::MakeBlock(std::vector<Key>& keys, std::size_t columns,
                               std::span<const Byte> block) {
    auto* widget = new QWidget;
    auto* grid = new QGridLayout(widget);
    grid->setContentsMargins(0, 0, 2 * kSpacing, 0); // to the next block
    grid->setVerticalSpacing(kSpacing);
    grid->setHorizontalSpacing(columns > kMostRoomy ? kSpacing / 2 : kSpacing);
    int widest = columns > kMostRoomy ? kNarrowKeyWidth : kLeastKey.width();
    for (std::size_t place = 0; place < block.size(); ++place) {
        const auto key = std::ranges::find(keys, block[place], &Key::code);
        if (key == keys.end())
            continue;
        const auto wide = std::ranges::count(block, block[place]);
        QToolButton* button = MakeButton(*key);
        button->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed); // as wide as the column
        if (columns <= kMostRoomy)
            widest = std::max(widest, button->minimumSizeHint().width());
        grid->addWidget(button, static_cast<int>(place / columns),
                        static_cast<int>(place % columns), 1, static_cast<int>(wide));
        keys.erase(key);
    }
    for (int column = 0; column < grid->columnCount(); ++column)
        grid->setColumnMinimumWidth(column, widest);
    return widget;
}

QWidget* KeyPalette::MakePage(std::vector<Key> keys, int group) {
    auto* content = new QWidget;
    auto* flow = new FlowLayout(kSpacing, content);
    flow->setContentsMargins(0, kSpacing, 0, 0);
    for (const Block& block : BlocksOf(static_cast<Group>(group)))
        flow->addWidget(MakeBlock(keys, block.columns, block.keys));
    for (const Key& key : keys)
        flow->addWidget(MakeButton(key));
    auto* scroll = new WholeRows(content);
    scroll->setMinimumHeight(kLeastKey.height() + kSpacing); // one row
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
