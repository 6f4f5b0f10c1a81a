#include "app/ChangeMark.h"

#include "views/ScrollArea.h"
#include "views/SequenceLabel.h"

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QEvent>
#include <QLineEdit>
#include <QPainter>
#include <QSpinBox>
#include <QTimer>

#include <set>
#include <tuple>

namespace qx::app {

namespace {

constexpr int kShownFor = 2500; // milliseconds
constexpr int kAround = 4;      // pixels

// Not valid for widgets that edit nothing.
QVariant ValueOf(const QWidget& widget) {
    if (qobject_cast<const QAbstractSpinBox*>(widget.parentWidget()) != nullptr ||
        qobject_cast<const QComboBox*>(widget.parentWidget()) != nullptr)
        return {};
    if (const auto* button = qobject_cast<const QAbstractButton*>(&widget))
        return button->isCheckable() ? button->isChecked() : QVariant();
    if (const auto* slider = qobject_cast<const QAbstractSlider*>(&widget))
        return slider->value();
    if (const auto* number = qobject_cast<const QSpinBox*>(&widget))
        return number->value();
    if (const auto* choice = qobject_cast<const QComboBox*>(&widget))
        return choice->currentIndex();
    if (const auto* text = qobject_cast<const QLineEdit*>(&widget))
        return text->isReadOnly() ? QVariant() : text->text();
    if (const auto* sequence = qobject_cast<const views::SequenceLabel*>(&widget))
        return sequence->text();
    return {};
}

// The part of a key's appearance that depends on its settings, not on which key is current.
auto Shown(const views::KeyCap& cap) {
    return std::tie(cap.state, cap.caption, cap.toolTip, cap.group);
}

QRect PlaceAround(const QWidget& widget, const QWidget& parent) {
    return QRect(widget.mapTo(&parent, QPoint()), widget.size())
        .adjusted(-kAround, -kAround, kAround, kAround);
}

// The nearest parent that has room for a frame; what scrolls, scrolls its frame too.
QWidget* RoomAround(const QWidget& widget) {
    QWidget* parent = widget.parentWidget();
    while (!parent->rect().contains(PlaceAround(widget, *parent)) &&
           qobject_cast<QAbstractScrollArea*>(parent->parentWidget()->parentWidget()) == nullptr)
        parent = parent->parentWidget();
    return parent;
}

class Frame : public QWidget {
public:
    explicit Frame(const QWidget& around) : QWidget(RoomAround(around)) {
        setObjectName(QStringLiteral("changeMark"));
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setGeometry(PlaceAround(around, *parentWidget()));
        show();
        raise();
        QTimer::singleShot(kShownFor, this, &QObject::deleteLater);
        qApp->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::KeyPress)
            deleteLater(); // the user goes on
        return QWidget::eventFilter(watched, event);
    }

    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
        painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), kAround, kAround);
    }
};

} // namespace

// Scroll bars are sliders too; only they take no focus.
ChangeMark::ChangeMark(const QWidget& page) {
    for (QWidget* widget : page.findChildren<QWidget*>())
        if (widget->isVisible() && (widget->focusPolicy() & Qt::TabFocus) != 0)
            if (const QVariant value = ValueOf(*widget); value.isValid())
                m_before.emplace_back(widget, value);
    for (auto* grid : page.findChildren<views::KeyGrid*>())
        if (grid->isVisible() && grid->Selects())
            m_keysBefore.emplace_back(grid, grid->Keys());
}

void ChangeMark::MarkChanged() const {
    bool isFirst = true;
    for (const auto& [widget, before] : m_before) {
        if (widget == nullptr || !widget->isVisible() || ValueOf(*widget) == before)
            continue;
        new Frame(*widget);
        if (std::exchange(isFirst, false)) {
            widget->setFocus(Qt::OtherFocusReason);
            views::ScrollArea::Reveal(*widget, widget->rect());
        }
    }
    for (const auto& [grid, before] : m_keysBefore) {
        std::set<int> changed;
        for (std::size_t i = 0; grid != nullptr && i < before.size(); ++i)
            if (i < grid->Keys().size() && Shown(grid->Keys()[i]) != Shown(before[i]))
                changed.insert(before[i].index);
        if (changed.empty() || grid->Selected() == std::vector(changed.begin(), changed.end()))
            continue;
        grid->Select(changed);
        grid->setFocus(Qt::OtherFocusReason); // a field for one key alone is hidden now
    }
}

} // namespace qx::app
