// Finds and uses the widgets of a view like a user.
#pragma once

#include <gtest/gtest.h>

#include <QListWidget>
#include <QTest>
#include <QWidget>

namespace qx::test {

// The widget of a view with this object name.
template <typename Widget>
Widget* Find(const QWidget& view, const char* name) {
    auto* widget = view.findChild<Widget*>(QLatin1String(name));
    if (widget == nullptr)
        throw std::invalid_argument(std::string("the view has no ") + name);
    return widget;
}

// Whether it is shown in its view.
inline bool IsShown(const QWidget& view, const char* name) {
    return Find<QWidget>(view, name)->isVisibleTo(&view);
}

inline void Click(const QWidget& view, const char* name) {
    auto* widget = Find<QWidget>(view, name);
    // Check boxes react to clicks on their box, but not everywhere beside it.
    const QPoint at(qMin(10, widget->width() / 2), widget->height() / 2);
    QTest::mouseClick(widget, Qt::LeftButton, Qt::NoModifier, at);
}

inline void ClickRow(const QWidget& view, const char* name, int row) {
    auto* list = Find<QListWidget>(view, name);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier,
                      list->visualItemRect(list->item(row)).center());
}

} // namespace qx::test
