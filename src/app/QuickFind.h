// QuickFind: a field that finds any page, setting, key or programmed text by name.
#pragma once

#include <QLineEdit>
#include <QListWidget>

#include <functional>
#include <vector>

namespace qx::app {

struct Findable {
    QString text;   // its name
    QString detail; // its value or contents
    std::function<void()> show;
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
    void Choose(int row);

    std::function<std::vector<Findable>()> m_list;
    std::vector<Findable> m_findables;
    bool m_isFresh = true;            // nothing has been listed since the user came to the field
    std::vector<std::size_t> m_found; // in the order of the popup's rows
    QListWidget* m_popup;
};

} // namespace qx::app
