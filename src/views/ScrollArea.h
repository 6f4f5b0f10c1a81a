// ScrollArea: shows all of its content where there is room, and else a part of it that scrolls.
#pragma once

#include <QScrollArea>

namespace qx::views {

class ScrollArea : public QScrollArea {
public:
    // Takes the content over.
    explicit ScrollArea(QWidget* content) {
        setWidgetResizable(true);
        setFrameShape(QFrame::NoFrame);
        setFocusPolicy(Qt::NoFocus); // the content's widgets have it
        setWidget(content);
        content->setAutoFillBackground(false);
        viewport()->setAutoFillBackground(false);
    }

    [[nodiscard]] QSize sizeHint() const override { return widget()->sizeHint(); }

    // Scrolls to this part of a widget, whatever area that is in.
    static void Reveal(const QWidget& widget, const QRect& part) {
        for (QWidget* parent = widget.parentWidget(); parent != nullptr;
             parent = parent->parentWidget())
            if (auto* area = qobject_cast<QScrollArea*>(parent)) {
                const QPoint at = widget.mapTo(area->widget(), part.center());
                area->ensureVisible(at.x(), at.y(), part.width(), part.height());
            }
    }
};

} // namespace qx::views
