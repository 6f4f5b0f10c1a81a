#include "app/QuickFind.h"

#include <QApplication>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QToolButton>

#include <algorithm>
#include <utility>

namespace qx::app {

namespace {

constexpr int kMostRows = 12;

// The quality of the match: 0 for none, and higher the earlier the words occur.
int Fit(const Findable& findable, const QStringList& words) {
    int fit = 1;
    for (const QString& word : words) {
        const auto inText = findable.text.indexOf(word, 0, Qt::CaseInsensitive);
        if (inText == 0)
            fit += 4;
        else if (inText > 0)
            fit += findable.text.at(inText - 1).isLetterOrNumber() ? 2 : 3;
        else if (findable.detail.contains(word, Qt::CaseInsensitive))
            fit += 1;
        else
            return 0;
    }
    return fit;
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
    m_popup->setAlternatingRowColors(true);
    m_popup->setTextElideMode(Qt::ElideRight);
    m_popup->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    connect(this, &QLineEdit::textEdited, this, &QuickFind::Search);
    connect(m_popup, &QListWidget::clicked, this,
            [this](const QModelIndex& index) { Choose(index.row()); });
    qApp->installEventFilter(this);
}

QuickFind::~QuickFind() = default;

// Listing everything takes its time, and most visits end without a letter.
void QuickFind::focusInEvent(QFocusEvent* event) {
    m_isFresh = true;
    QLineEdit::focusInEvent(event);
}

void QuickFind::Search(const QString& text) {
    const QStringList words = text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    m_found.clear();
    m_popup->clear();
    if (std::exchange(m_isFresh, false))
        m_findables = m_list();
    std::vector<std::pair<int, std::size_t>> fits;
    if (!words.isEmpty())
        for (std::size_t i = 0; i < m_findables.size(); ++i)
            if (const int fit = Fit(m_findables[i], words); fit > 0)
                fits.emplace_back(-fit, i);
    std::stable_sort(fits.begin(), fits.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    if (fits.size() > kMostRows)
        fits.resize(kMostRows);
    for (const auto& [fit, index] : fits) {
        const Findable& findable = m_findables[index];
        m_found.push_back(index);
        m_popup->addItem(findable.detail.isEmpty()
                             ? findable.text
                             : findable.text + QStringLiteral(" — ") + findable.detail);
    }
    if (!words.isEmpty() && m_found.empty()) {
        m_popup->addItem(tr("Nothing found"));
        m_popup->item(0)->setFlags(Qt::NoItemFlags);
    }
    m_popup->setCurrentRow(m_found.empty() ? -1 : 0);
    m_popup->setVisible(m_popup->count() > 0);
    if (m_popup->count() == 0)
        return;
    const int height = m_popup->sizeHintForRow(0) * m_popup->count() + 2 * m_popup->frameWidth();
    const int popupWidth = std::max(width(), 460);
    const QPoint below = mapToGlobal(QPoint(0, this->height()));
    m_popup->setGeometry(QRect(below, QSize(popupWidth, height)));
}

void QuickFind::Choose(int row) {
    m_popup->hide();
    if (row < 0 || static_cast<std::size_t>(row) >= m_found.size())
        return;
    const auto show = m_findables[m_found[static_cast<std::size_t>(row)]].show;
    clear();
    clearFocus();
    show();
}

void QuickFind::keyPressEvent(QKeyEvent* event) {
    const int row = m_popup->currentRow();
    switch (event->key()) {
    case Qt::Key_Down:
        m_popup->setCurrentRow(std::min(row + 1, m_popup->count() - 1));
        return;
    case Qt::Key_Up:
        m_popup->setCurrentRow(std::max(row - 1, 0));
        return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        Choose(row);
        return;
    case Qt::Key_Escape:
        m_popup->hide();
        clear();
        clearFocus();
        return;
    default:
        QLineEdit::keyPressEvent(event);
    }
}

// The results are hidden when the user turns to something else.
bool QuickFind::eventFilter(QObject* watched, QEvent* event) {
    const bool isElsewhere = (event->type() == QEvent::MouseButtonPress && watched != this &&
                              watched != m_popup->viewport() && watched->isWidgetType()) ||
                             (event->type() == QEvent::FocusOut && watched == this) ||
                             event->type() == QEvent::ApplicationDeactivate;
    if (isElsewhere && m_popup->isVisible())
        m_popup->hide();
    return QLineEdit::eventFilter(watched, event);
}

} // namespace qx::app
