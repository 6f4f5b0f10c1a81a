// PageBook: the list of all pages, and the chosen one beside it.
//
// A page is made when it is first shown. Pages that are larger than the window scroll.
#pragma once

#include <QIcon>
#include <QWidget>

#include <functional>
#include <vector>

class QListWidget;
class QListWidgetItem;
class QStackedWidget;

namespace qx::app {

class PageBook : public QWidget {
    Q_OBJECT
public:
    // Above the list stands one widget, and another above the pages.
    PageBook(QWidget* aboveList, QWidget* abovePages, QWidget* parent = nullptr);

    void Add(const QString& id, const QString& title, const QIcon& icon,
             std::function<QWidget*()> make);
    // A line above the pages that are added next.
    void AddHeading(const QString& title);
    // Names the page in the list, dimmed where the keyboard has nothing for it.
    void SetTitle(const QString& id, const QString& title, bool isPresent);
    // Makes the list as wide as its titles.
    void FitList();

    struct Listed {
        QString id;
        QString title;
        bool isPresent;
    };
    [[nodiscard]] std::vector<Listed> Pages() const; // as they are listed

    void Show(const QString& id); // nothing happens for an unknown one
    void FocusPage();             // gives the focus to the first widget that Tab reaches
    [[nodiscard]] QString Current() const;
    // The page's widget, made where it was not yet; null for an unknown one.
    [[nodiscard]] QWidget* Page(const QString& id);

signals:
    void Shown(); // another page than before

private:
    struct Leaf {
        std::function<QWidget*()> make;
        QWidget* widget; // null before it is first shown
    };

    [[nodiscard]] QListWidgetItem* ItemOf(const QString& id) const;
    [[nodiscard]] QWidget* LeafAt(int row);

    QWidget* m_aboveList;
    QListWidget* m_list;
    QStackedWidget* m_stack;
    std::vector<Leaf> m_leaves; // by the rows of the list
};

} // namespace qx::app
