#include "views/QXCommonKeyboardView.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace qx::views {

QXCommonKeyboardView::QXCommonKeyboardView(QXCommonKeyboard& control, QWidget* parent)
    : QWidget(parent) {
    auto* caption = new QLabel;
    auto* slider = new QSlider(Qt::Horizontal);
    auto* value = new QLabel;
    caption->setBuddy(slider);
    slider->setPageStep(16);
    slider->setMaximumWidth(480);
    value->setMinimumWidth(value->fontMetrics().horizontalAdvance(QStringLiteral("0000")));
    m_bindings.Bind(caption, QStringLiteral("lblOutputDelay"), control.lblOutputDelay);
    m_bindings.Bind(slider, QStringLiteral("slidOutputDelay"), control.slidOutputDelay,
                    [&control] { control.slidOutputDelay_Change(); });
    m_bindings.Bind(value, QStringLiteral("lblCurrOutputDelay"), control.lblCurrOutputDelay);
    m_bindings.OnShow([slider, caption] { slider->setAccessibleName(caption->text()); });

    auto* row = new QHBoxLayout;
    row->addWidget(slider, 1);
    row->addWidget(value);
    row->addStretch(1);
    auto* column = new QVBoxLayout(this);
    column->addWidget(caption);
    column->addLayout(row);
    column->addStretch(1);

    m_refreshed = control.Refreshed.Subscribe([this] { m_bindings.ShowAll(); });
    m_bindings.ShowAll();
}

} // namespace qx::views
