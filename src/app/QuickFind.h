// QuickFind: a field that finds actions, pages, keys and settings by name, and runs or shows the
// chosen one.
#pragma once

#include <QLineEdit>
#include <QListWidget>
#include <QPointer>

#include <functional>
#include <vector>

namespace qx::app {

struct Findable {
    enum class Group { Actions, Pages, Keys, Settings };

    Group group;
    QString text;   // its name
    QString detail; // its value or contents
    std::function<void()> show;
    QString shortcut = {};
    QString otherName = {}; // found too, but not shown
    bool isPart = false;    // of a key: its name or colour, say, and not what it sends
};

class QuickFind : public QLineEdit {
    Q_OBJECT
public:
    // `list` returns everything that can be found; it is called when the user begins to search.
    explicit QuickFind(std::function<std::vector<Findable>()> list, QWidget* parent = nullptr);
    ~QuickFind() override;

protected:
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Search(const QString& text);
    void AddHeading(const QString& text);
    void AddFound(std::size_t index);
    void ShowPopup();
    void MoveBy(int rows);
    void Leave();
    void Choose(int row);

    std::function<std::vector<Findable>()> m_list;
    std::vector<Findable> m_findables;
    bool m_isFresh = true;      // nothing has been listed since the user turned to the field
    QPointer<QWidget> m_before; // had the focus
    QListWidget* m_popup;       // its items know their findables; headings have none
};

} // namespace qx::app
