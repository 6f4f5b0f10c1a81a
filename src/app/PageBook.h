// PageBook: the list of all pages, and the chosen one beside it.
//
// A page is made when it is first shown. Pages that are larger than the window scroll. Pages of
// modules that the keyboard does not have are behind one line at the end of the list.
#pragma once

#include <QIcon>
#include <QStringList>
#include <QWidget>

#include <functional>
#include <map>
#include <utility>
#include <vector>

class QListWidget;
class QListWidgetItem;
class QStackedWidget;
class QToolButton;

namespace qx::app {

class PageBook : public QWidget {
    Q_OBJECT
public:
    // One widget is placed above the list, the other below the pages.
    PageBook(QWidget* aboveList, QWidget* belowPages, QWidget* parent = nullptr);

    void Add(const QString& id, const QString& title, const QIcon& icon,
             std::function<QWidget*()> make);
    // A line above the pages that are added next.
    void AddHeading(const QString& title);
    // A page that the keyboard has nothing for is dimmed and folded away.
    void SetPresent(const QString& id, bool isPresent);
    // The number beside the title; 0 for none.
    void SetCount(const QString& id, int count);
    // Makes the list as wide as its titles, and folds absent pages away.
    void FitList();

    struct Listed {
        QString id;
        QString title; // "(absent)" follows if it is
        bool isPresent;
    };
    [[nodiscard]] std::vector<Listed> Pages() const; // as they are listed

    // Texts typed on the pages, and their logs: by page, in the order of the fields.
    using Texts = std::map<QString, QStringList>;
    [[nodiscard]] Texts TypedTexts() const;
    // Pages that are made from now on have these texts.
    void KeepTexts(Texts texts) { m_texts = std::move(texts); }

    void Show(const QString& id); // nothing happens for an unknown one
    // Gives the focus to the keys of a page that programs some, or else to the first widget that
    // Tab reaches.
    void FocusPage();
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

    void Fold();
    [[nodiscard]] QListWidgetItem* ItemOf(const QString& id) const;
    [[nodiscard]] QWidget* LeafAt(int row);

    QWidget* m_aboveList;
    QListWidget* m_list;
    QToolButton* m_absent; // shows the absent pages, if there are any
    QStackedWidget* m_stack;
    std::vector<Leaf> m_leaves; // by the rows of the list
    Texts m_texts;
};

} // namespace qx::app
