// ScrollArea: shows all of its content if there is room, otherwise scrolls it.
#pragma once

#include <QScrollArea>
#include <QStyle>

namespace qx::views {

class ScrollArea : public QScrollArea {
public:
    // Takes ownership of the content.
    explicit ScrollArea(QWidget* content) {
        setWidgetResizable(true);
        setFrameShape(QFrame::NoFrame);
        setFocusPolicy(Qt::NoFocus); // the content's widgets have it
        setWidget(content);
        content->setAutoFillBackground(false);
        viewport()->setAutoFillBackground(false);
    }

    [[nodiscard]] QSize sizeHint() const override { return widget()->sizeHint(); }

    // Makes this part of a widget visible, if the widget is inside any scroll area.
    static void Reveal(const QWidget& widget, const QRect& part) {
        for (QWidget* parent = widget.parentWidget(); parent != nullptr;
             parent = parent->parentWidget())
            if (auto* area = qobject_cast<QScrollArea*>(parent)) {
                const QPoint at = widget.mapTo(area->widget(), part.center());
                area->ensureVisible(at.x(), at.y(), part.width(), part.height());
            }
    }
};

// The width that a widget in a scroll area has while nothing scrolls: what makes it scroll must not
// depend on the room that the scroll bar takes.
inline int WidthWithoutBar(const QWidget& widget) {
    int width = widget.width();
    for (const QWidget* parent = widget.parentWidget(); parent != nullptr;
         parent = parent->parentWidget())
        if (const auto* area = qobject_cast<const QScrollArea*>(parent))
            width += area->width() - area->viewport()->width();
    return width;
}

// Scrolls up and down alone: it is never narrower than its content.
class TallArea : public ScrollArea {
public:
    explicit TallArea(QWidget* content) : ScrollArea(content) {
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    }
    [[nodiscard]] QSize minimumSizeHint() const override {
        return {widget()->minimumSizeHint().width() +
                    style()->pixelMetric(QStyle::PM_ScrollBarExtent),
                ScrollArea::minimumSizeHint().height()};
    }
};

} // namespace qx::views
