#include "app/QuickFind.h"

#include "views/RoomyRows.h"

#include <QApplication>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QRegularExpression>
#include <QToolButton>

#include <algorithm>
#include <map>
#include <utility>

namespace qx::app {

namespace {

constexpr std::size_t kMostOfGroup = 6;
constexpr std::size_t kMostRows = 14; // without headings
constexpr std::size_t kLeastOfGroup = 2;
constexpr int kPopupWidth = 640;
constexpr int kIndexRole = Qt::UserRole;

bool BeginsWord(const QString& text, qsizetype at) {
    return at == 0 || !text.at(at - 1).isLetterOrNumber();
}

bool IsWord(const QString& text, qsizetype at, qsizetype size) {
    return BeginsWord(text, at) &&
           (at + size == text.size() || !text.at(at + size).isLetterOrNumber());
}

// Of what it is, not of where it is: "Preferences › Language".
QString InitialsOf(const QString& text) {
    QString initials;
    for (qsizetype at = text.lastIndexOf(u'›') + 1; at < text.size(); ++at)
        if (text.at(at).isLetterOrNumber() && BeginsWord(text, at))
            initials += text.at(at);
    return initials;
}

// The quality of the match of a word: 0 for none.
int FitOf(const QString& text, const QString& word) {
    int fit = 0;
    for (auto at = text.indexOf(word, 0, Qt::CaseInsensitive); at >= 0;
         at = text.indexOf(word, at + 1, Qt::CaseInsensitive))
        fit = std::max(fit, at == 0                         ? 7
                            : IsWord(text, at, word.size()) ? 6
                            : BeginsWord(text, at)          ? 5
                                                            : 2);
    if (fit < 3 && word.size() > 1 && InitialsOf(text).startsWith(word, Qt::CaseInsensitive))
        fit = 3; // "wtk" for "Write to keyboard"
    return fit;
}

// Of another name only the words' beginnings count, as it is not seen why it fits.
int FitOfOther(const QString& otherName, const QString& word) {
    constexpr int kFit = 4;
    return FitOf(otherName, word) > kFit ? kFit : 0;
}

// Whether one of the text's words begins with this.
bool HasWord(const QString& text, const QString& word) {
    auto at = text.indexOf(word, 0, Qt::CaseInsensitive);
    while (at >= 0 && !BeginsWord(text, at))
        at = text.indexOf(word, at + 1, Qt::CaseInsensitive);
    return at >= 0;
}

// Whether the words of the phrase occur as they stand, the last of them to its end; commas between
// them do not count.
bool HasPhrase(QString text, const QString& phrase) {
    text.replace(QLatin1String(", "), QLatin1String(" "));
    for (auto at = text.indexOf(phrase, 0, Qt::CaseInsensitive); at >= 0;
         at = text.indexOf(phrase, at + 1, Qt::CaseInsensitive))
        if (IsWord(text, at, phrase.size()))
            return true;
    return false;
}

// Whether the word's letters occur in this order, the first at the beginning of a word: "wrkey".
bool IsLike(const QString& text, const QString& word) {
    constexpr qsizetype kLeast = 3;
    if (word.size() < kLeast)
        return text.contains(word, Qt::CaseInsensitive);
    qsizetype at = -1;
    for (qsizetype i = 0; i < word.size(); ++i) {
        do
            at = text.indexOf(word.at(i), at + 1, Qt::CaseInsensitive);
        while (i == 0 && at >= 0 && !BeginsWord(text, at));
        if (at < 0)
            return false;
    }
    return true;
}

int Fit(const Findable& findable, const QStringList& words) {
    int fit = findable.isPart ? 1 : 2;
    if (const QString phrase = words.join(u' '); words.size() > 1)
        fit += HasPhrase(findable.text, phrase) ? 4 : HasPhrase(findable.otherName, phrase) ? 2 : 0;
    for (const QString& word : words) {
        const int inText =
            std::max(FitOf(findable.text, word), FitOfOther(findable.otherName, word));
        if (inText == 0 && !HasWord(findable.detail, word))
            return 0;
        fit += std::max(inText, 1);
    }
    return fit;
}

int LooseFit(const Findable& findable, const QStringList& words) {
    return std::all_of(words.begin(), words.end(),
                       [&](const QString& word) { return IsLike(findable.text, word); })
               ? 1
               : 0;
}

using Fits = std::vector<std::pair<int, std::size_t>>; // the best first

template <typename Measure>
Fits FitsOf(const std::vector<Findable>& all, const QStringList& words, const Measure& measure) {
    Fits fits;
    for (std::size_t i = 0; i < all.size(); ++i)
        if (const int fit = measure(all[i], words); fit > 0)
            fits.emplace_back(fit, i);
    std::stable_sort(fits.begin(), fits.end(),
                     [](const auto& a, const auto& b) { return a.first > b.first; });
    return fits;
}

QString TitleOf(Findable::Group group) {
    switch (group) {
    case Findable::Group::Actions:
        return QuickFind::tr("Actions");
    case Findable::Group::Pages:
        return QuickFind::tr("Pages");
    case Findable::Group::Keys:
        return QuickFind::tr("Keys");
    case Findable::Group::Settings:
        return QuickFind::tr("Settings");
    }
    return {};
}

} // namespace

QuickFind::QuickFind(std::function<std::vector<Findable>()> list, QWidget* parent)
    : QLineEdit(parent), m_list(std::move(list)), m_popup(new QListWidget(this)) {
    setObjectName(QStringLiteral("quickFind"));
    setPlaceholderText(tr("Find (Ctrl+K)"));
    setAccessibleName(tr("Find"));
    setClearButtonEnabled(true);
    for (auto* button : findChildren<QToolButton*>())
        button->setAccessibleName(tr("Clear the search"));
    m_popup->setWindowFlags(Qt::ToolTip);
    m_popup->setFocusProxy(this);
    m_popup->setObjectName(QStringLiteral("quickFindResults"));
    m_popup->setAccessibleName(tr("Found"));
    m_popup->setItemDelegate(new views::RoomyRows(m_popup));
    m_popup->setTextElideMode(Qt::ElideRight);
    m_popup->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    connect(this, &QLineEdit::textEdited, this, &QuickFind::Search);
    connect(m_popup, &QListWidget::clicked, this,
            [this](const QModelIndex& index) { Choose(index.row()); });
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget* old, const QWidget* now) {
        if (now == this && old != nullptr)
            m_before = old;
    });
    qApp->installEventFilter(this);
}

QuickFind::~QuickFind() = default;

// Listing everything is slow, and most visits end without a letter typed.
void QuickFind::focusInEvent(QFocusEvent* event) {
    m_isFresh = true;
    QLineEdit::focusInEvent(event);
}

void QuickFind::Search(const QString& text) {
    static const QRegularExpression kBetween(
        QStringLiteral("(,?[\\s+])+")); // "Ctrl+C" is "Ctrl C", "Layer 0, F3" is "Layer 0 F3"
    const QStringList words = text.split(kBetween, Qt::SkipEmptyParts);
    m_popup->clear();
    if (std::exchange(m_isFresh, false))
        m_findables = m_list();
    if (words.isEmpty())
        return m_popup->hide();
    Fits fits = FitsOf(m_findables, words, Fit);
    if (fits.empty())
        fits = FitsOf(m_findables, words, LooseFit);

    std::vector<Findable::Group> order; // by their best
    std::map<Findable::Group, std::vector<std::size_t>> groups;
    for (const auto& [fit, index] : fits) {
        const Findable::Group group = m_findables[index].group;
        if (groups[group].empty())
            order.push_back(group);
        groups[group].push_back(index);
    }
    std::size_t left = kMostRows; // each group has some of them
    for (const auto& [group, found] : groups)
        left -= std::min(found.size(), kLeastOfGroup);
    for (const Findable::Group group : order) {
        const std::vector<std::size_t>& found = groups[group];
        const std::size_t least = std::min(found.size(), kLeastOfGroup);
        const std::size_t shown = std::min({found.size(), kMostOfGroup, least + left});
        left -= shown - least;
        AddHeading(shown == found.size() ? TitleOf(group)
                                         : tr("%1 (%2 of %3)", "kind, shown, found")
                                               .arg(TitleOf(group))
                                               .arg(shown)
                                               .arg(found.size()));
        std::for_each_n(found.begin(), shown, [this](std::size_t index) { AddFound(index); });
    }
    if (m_popup->count() == 0)
        AddHeading(tr("Nothing found"));
    m_popup->setCurrentRow(-1);
    MoveBy(1);
    ShowPopup();
}

void QuickFind::AddHeading(const QString& text) {
    auto* item = new QListWidgetItem(text, m_popup);
    item->setFlags(Qt::NoItemFlags);
    QFont font = m_popup->font();
    font.setBold(true);
    item->setFont(font);
    item->setForeground(palette().brush(QPalette::Active, QPalette::PlaceholderText));
}

void QuickFind::AddFound(std::size_t index) {
    const Findable& findable = m_findables[index];
    QString text = findable.text;
    if (!findable.detail.isEmpty())
        text =
            (findable.group == Findable::Group::Actions ? tr("%1 — %2", "an action and its menu")
                                                        : tr("%1: %2", "a setting and its value"))
                .arg(text, findable.detail);
    if (!findable.shortcut.isEmpty())
        text += QStringLiteral(" (%1)").arg(findable.shortcut);
    auto* item = new QListWidgetItem(text, m_popup);
    item->setData(kIndexRole, static_cast<qulonglong>(index));
}

void QuickFind::ShowPopup() {
    int height = 2 * m_popup->frameWidth();
    for (int row = 0; row < m_popup->count(); ++row)
        height += m_popup->sizeHintForRow(row);
    const QPoint below = mapToGlobal(QPoint(0, this->height() + 1));
    m_popup->setGeometry(QRect(below, QSize(std::max(width(), kPopupWidth), height)));
    m_popup->show();
}

// To the next row in this direction that is not a heading.
void QuickFind::MoveBy(int rows) {
    for (int row = m_popup->currentRow() + rows; row >= 0 && row < m_popup->count(); row += rows)
        if (m_popup->item(row)->data(kIndexRole).isValid())
            return m_popup->setCurrentRow(row);
}

void QuickFind::Leave() {
    m_popup->hide();
    clear();
    clearFocus();
    if (m_before != nullptr && m_before->isVisible())
        m_before->setFocus(Qt::OtherFocusReason);
}

void QuickFind::Choose(int row) {
    const QListWidgetItem* item = m_popup->item(row);
    if (item == nullptr || !m_popup->isVisible() || !item->data(kIndexRole).isValid())
        return;
    const auto show = m_findables[item->data(kIndexRole).toULongLong()].show;
    Leave();
    show();
}

void QuickFind::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Down:
        return MoveBy(1);
    case Qt::Key_Up:
        return MoveBy(-1);
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return Choose(m_popup->currentRow());
    case Qt::Key_Escape:
        return Leave();
    default:
        QLineEdit::keyPressEvent(event);
    }
}

// When the user turns to something else, the results are hidden, and they may no longer be true.
bool QuickFind::eventFilter(QObject* watched, QEvent* event) {
    const bool isElsewhere = (event->type() == QEvent::MouseButtonPress && watched != this &&
                              watched != m_popup->viewport() && watched->isWidgetType()) ||
                             (event->type() == QEvent::FocusOut && watched == this) ||
                             event->type() == QEvent::ApplicationDeactivate;
    if (isElsewhere && m_popup->isVisible()) {
        m_popup->hide();
        m_isFresh = true;
    }
    return QLineEdit::eventFilter(watched, event);
}

} // namespace qx::app
