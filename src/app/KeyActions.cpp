#include "app/KeyActions.h"

#include "app/KeyClipboard.h"
#include "app/Workbench.h"
#include "views/KeyGrid.h"
#include "views/LineIcon.h"
#include "views/TypedCodes.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMenu>
#include <QMimeData>

#include <algorithm>
#include <utility>

namespace qx::app {

using views::KeyGrid;

KeyActions::KeyActions(KeyEdits& edits, KeyGrid& grid) : m_edits(edits), m_grid(grid) {
    grid.SetSelects(true);
    grid.SetCarries([this](int key) { return IsProgrammed(key); });
    m_edit = Make("editKey", "edit", tr("Edit"), {Qt::Key_Return, Qt::Key_Enter}, [this] {
        SelectFocusKey();
        emit EditWanted();
    });
    m_record =
        Make("recordKeys", "record", tr("Record"), {Qt::CTRL | Qt::SHIFT | Qt::Key_R}, [this] {
            SelectFocusKey();
            emit RecordWanted();
        });
    m_cut = Make("cutKeys", "cut", tr("Cut"), {QKeySequence::Cut}, [this] {
        Copy();
        Clear(WithDescriptions::Yes);
    });
    m_copy = Make("copyKeys", "copy", tr("Copy"), {QKeySequence::Copy}, [this] { Copy(); });
    m_paste = Make("pasteKeys", "paste", tr("Paste"), {QKeySequence::Paste}, [this] { Paste(); });
    m_duplicate = Make("duplicateKey", "duplicate", tr("Duplicate to the next free key"),
                       {Qt::CTRL | Qt::Key_D}, [this] { Duplicate(); });
    m_swap = Make("swapKeys", "swap", tr("Swap"), {Qt::CTRL | Qt::Key_T}, [this] {
        const std::vector<int> keys = Senders();
        Swap(keys[0], keys[1]);
    });
    m_clear = Make("clearSelected", "delete", tr("Clear"), {QKeySequence::Delete},
                   [this] { Clear(WithDescriptions::No); });
    m_series = Make("fillSeries", "series", tr("Fill a series"), {Qt::CTRL | Qt::Key_L},
                    [this] { emit SeriesWanted(); });
    m_all =
        Make("selectAllKeys", "select-all", tr("Select all"), {QKeySequence::SelectAll}, [this] {
            std::set<int> keys;
            for (const views::KeyCap& cap : m_grid.Keys())
                if (cap.joinsRanges)
                    keys.insert(cap.index);
            m_grid.Select(keys);
        });
    connect(&grid, &KeyGrid::KeyActivated, this, &KeyActions::EditWanted);
    connect(&grid, &KeyGrid::MenuRequested, this, &KeyActions::ShowMenu);
    connect(&grid, &KeyGrid::SelectionChanged, this, &KeyActions::ShowState);
    connect(&grid, &KeyGrid::KeyDropped, this, &KeyActions::Drop);
    m_refreshed = edits.Section().Control().Refreshed.Subscribe([this] { ShowState(); });
    ShowState();
}

QAction* KeyActions::Make(const char* name, const char* icon, const QString& text,
                          const QList<QKeySequence>& shortcuts, const std::function<void()>& act) {
    auto* action = new QAction(views::LineIcon(QString::fromLatin1(icon)), text, this);
    action->setObjectName(QString::fromLatin1(name));
    action->setShortcuts(shortcuts);
    action->setShortcutContext(Qt::WidgetShortcut);
    connect(action, &QAction::triggered, this, [this, act] {
        m_grid.setFocus(
            Qt::OtherFocusReason); // and not what follows a button that is then disabled
        act();
    });
    m_grid.addAction(action);
    return action;
}

void KeyActions::SelectFocusKey() {
    if (!m_grid.IsSelected(m_grid.FocusKey()))
        m_grid.Pick(m_grid.FocusKey());
}

void KeyActions::ShowMenu(const QPoint& globalAt) {
    auto* menu = new QMenu(&m_grid);
    menu->setObjectName(QStringLiteral("keyMenu"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const std::vector<int> keys = m_grid.Selected();
    QAction* title =
        menu->addAction(keys.size() == 1 ? m_edits.NameOf(keys.front())
                                         : tr("%n keys", nullptr, static_cast<int>(keys.size())));
    title->setEnabled(false);
    menu->addSeparator();
    menu->addActions({m_edit, m_record});
    menu->addSeparator();
    menu->addActions({m_cut, m_copy, m_paste, m_duplicate, m_swap, m_clear});
    menu->addSeparator();
    menu->addActions({m_series, m_all});
    if (!m_more.empty())
        menu->addSeparator();
    for (QAction* action : m_more)
        menu->addAction(action);
    menu->popup(globalAt);
}

void KeyActions::ShowState() {
    const std::vector<int> keys = m_grid.Selected();
    const std::vector<int> senders = Senders();
    const std::vector<KeyEdits::Sent> sent = m_edits.SentBy(senders);
    const bool isProgrammed = std::any_of(
        sent.begin(), sent.end(), [](const KeyEdits::Sent& each) { return !each.codes.empty(); });
    const bool hasContent = std::any_of(sent.begin(), sent.end(),
                                        [](const KeyEdits::Sent& each) { return !each.IsEmpty(); });
    m_edit->setEnabled(senders.size() == 1);
    m_record->setEnabled(senders.size() == 1);
    m_clear->setEnabled(isProgrammed);
    m_cut->setEnabled(hasContent);
    m_copy->setEnabled(hasContent);
    m_paste->setEnabled(!keys.empty());
    m_paste->setText(senders.size() > 1 ? tr("Paste into all") : tr("Paste"));
    m_duplicate->setEnabled(senders.size() == 1 && hasContent);
    m_swap->setEnabled(senders.size() == 2 && hasContent);
    m_series->setEnabled(senders.size() > 1);
    emit StateShown(senders.size() > 1);
}

std::vector<int> KeyActions::Senders() const {
    return m_edits.Senders(m_grid.Selected());
}

bool KeyActions::IsProgrammed(int key) const {
    return !m_edits.SentBy(key).codes.empty();
}

void KeyActions::Clear(WithDescriptions with) {
    const std::vector<int> keys = Senders();
    const std::vector<KeyEdits::Sent> sent = m_edits.SentBy(keys);
    std::map<int, KeyEdits::Content> wanted;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        KeyEdits::Content left;
        if (with == WithDescriptions::Yes && sent[i].description)
            left.description.emplace();
        if (!sent[i].codes.empty() || (left.description && !sent[i].IsEmpty()))
            wanted.emplace(keys[i], left);
    }
    const int count = static_cast<int>(wanted.size());
    if (m_edits.Put(wanted) && count > 1)
        m_edits.ReportDone(tr("%n keys cleared.", nullptr, count));
}

void KeyActions::Copy() {
    KeyContents contents;
    for (KeyEdits::Sent& sent : m_edits.SentBy(Senders()))
        contents.push_back(std::move(sent));
    QGuiApplication::clipboard()->setMimeData(ToMime(contents, m_edits.Bench().Layout()));
}

// One sequence goes to every selected key, several to as many keys.
void KeyActions::Paste() {
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    const KeyContents contents =
        data == nullptr ? KeyContents() : FromMime(*data, m_edits.Bench().Layout());
    const std::vector<int> keys = Senders();
    if (contents.empty())
        return m_edits.Report(tr("The clipboard has no key sequence."));
    if (contents.size() > 1 && contents.size() != keys.size())
        return m_edits.Report(tr("%n sequences were copied: select as many keys to paste them.",
                                 nullptr, static_cast<int>(contents.size())));
    if (keys.size() == 1)
        return static_cast<void>(PutOnto(keys.front(), contents.front()));
    std::map<int, KeyEdits::Content> wanted;
    for (std::size_t i = 0; i < keys.size(); ++i)
        wanted[keys[i]] = contents[contents.size() == 1 ? 0 : i];
    if (m_edits.Put(wanted))
        m_edits.ReportDone(tr("Pasted into %n keys.", nullptr, static_cast<int>(wanted.size())));
}

bool KeyActions::PutOnto(int key, const KeyEdits::Content& content) {
    const bool wasEmpty = m_edits.SentBy(key).IsEmpty();
    if (!m_edits.Put({{key, content}}))
        return false;
    if (!wasEmpty)
        m_edits.ReportDone(tr("%1 overwritten.").arg(m_edits.SenderName(key)));
    return true;
}

void KeyActions::Duplicate() {
    const int from = m_grid.Selected().front();
    std::vector<int> behind;
    for (const views::KeyCap& cap : m_grid.Keys())
        if (cap.index == from || !behind.empty())
            behind.push_back(cap.index);
    const std::vector<KeyEdits::Sent> sent = m_edits.SentBy(behind);
    const auto free = std::find_if(sent.begin(), sent.end(), [](const KeyEdits::Sent& each) {
        return each.capacity > 0 && each.IsEmpty();
    });
    if (free == sent.end())
        return m_edits.Report(tr("No key after this one is free."));
    const int onto = behind[static_cast<std::size_t>(free - sent.begin())];
    if (m_edits.Put({{onto, m_edits.SentBy(from)}}))
        m_grid.Select({onto});
}

bool KeyActions::Swap(int one, int other) {
    if (!m_edits.Put({{one, m_edits.SentBy(other)}, {other, m_edits.SentBy(one)}}))
        return false;
    m_edits.ReportDone(
        tr("%1 and %2 swapped.").arg(m_edits.SenderName(one), m_edits.SenderName(other)));
    return true;
}

void KeyActions::Drop(int from, int onto, bool swaps) {
    if (swaps ? Swap(from, onto) : PutOnto(onto, m_edits.SentBy(from)))
        m_grid.Select({onto});
}

QString KeyActions::TextOf(const Series& series, int index) {
    return series.text + QString::number(series.first + index).rightJustified(series.digits, u'0');
}

QString KeyActions::Fill(const Series& series) {
    std::map<int, KeyEdits::Content> wanted;
    int index = 0;
    for (const int key : Senders()) {
        views::TypedCodes typed(TextOf(series, index++), series.withEnter,
                                m_edits.Bench().Layout());
        if (!typed.fault.isEmpty())
            return typed.fault;
        wanted[key] = {std::move(typed.codes)};
    }
    if (m_edits.Put(wanted))
        m_edits.ReportDone(tr("%n keys filled.", nullptr, index));
    m_grid.setFocus(Qt::OtherFocusReason); // whose undo is the window's
    return {};
}

} // namespace qx::app
