// KeyActions: what can be done with the selected keys of a page, from the keyboard, the context
// menu of the keys and the panel beside them.
#pragma once

#include "app/KeyEdits.h"
#include "qxcontrols/common/Event.h"

#include <QAction>
#include <QObject>

#include <functional>
#include <vector>

namespace qx::views {
class KeyGrid;
}

namespace qx::app {

class KeyActions : public QObject {
    Q_OBJECT
public:
    // From now on, keys of the grid are selected, copied and dragged. All outlive this object.
    KeyActions(KeyEdits& edits, views::KeyGrid& grid);

    [[nodiscard]] QAction* ClearAction() const { return m_clear; }
    [[nodiscard]] QAction* PasteAction() const { return m_paste; }
    [[nodiscard]] QAction* SwapAction() const { return m_swap; }
    // An action on the keyboard, and, once it is added, in the menu and above the inspector.
    QAction* Make(const char* name, const char* icon, const QString& text,
                  const QList<QKeySequence>& shortcuts, const std::function<void()>& act);
    void Add(QAction* action) { m_more.push_back(action); }
    [[nodiscard]] const std::vector<QAction*>& Added() const { return m_more; }

    [[nodiscard]] bool IsProgrammed(int key) const;

    // "TILL 01", "TILL 02" and so on, one for each selected key.
    struct Series {
        QString text;
        int first = 1;
        int digits = 2;
        bool withEnter = false;
    };
    // Why a series cannot be put in, if it cannot: a character that no key types.
    [[nodiscard]] QString Fill(const Series& series);
    [[nodiscard]] static QString TextOf(const Series& series, int index);

signals:
    void EditWanted();   // in the inspector
    void RecordWanted(); // likewise
    void SeriesWanted();
    // The selection or what the keys send has changed; `isSeveral` if they send several sequences.
    void StateShown(bool isSeveral);

private:
    void SelectFocusKey();
    void ShowMenu(const QPoint& globalAt);
    void ShowState();
    enum class WithDescriptions { No, Yes };
    void Clear(WithDescriptions with);
    void Copy();
    void Paste();
    void Duplicate();
    // These two report what they have done; false if nothing has changed.
    bool PutOnto(int key, const KeyEdits::Content& content);
    bool Swap(int one, int other);
    void Drop(int from, int onto, bool swaps);
    [[nodiscard]] std::vector<int> Senders() const; // among the selected keys

    KeyEdits& m_edits;
    views::KeyGrid& m_grid;
    QAction *m_edit, *m_record, *m_cut, *m_copy, *m_paste, *m_duplicate, *m_swap, *m_clear,
        *m_series, *m_all;
    std::vector<QAction*> m_more;
    Subscription m_refreshed;
};

} // namespace qx::app
