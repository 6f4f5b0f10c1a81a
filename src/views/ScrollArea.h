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
