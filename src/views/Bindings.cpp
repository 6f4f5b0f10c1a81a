#include "views/Bindings.h"

#include <QScopedValueRollback>

namespace qx::views {

QString ChildName(const char* name, int index) {
    return QStringLiteral("%1_%2").arg(QLatin1String(name)).arg(index);
}

template <typename Store>
void Bindings::Act(Store store, const Action& action) {
    if (m_isShowing)
        return;
    store();
    action();
}

void Bindings::ShowAll() {
    if (m_isShowing)
        return;
    const QScopedValueRollback showing(m_isShowing, true);
    for (const Action& show : m_shows)
        show();
}

void Bindings::Bind(QLabel* widget, const QString& name, const Label& child) {
    widget->setObjectName(name);
    OnShow([widget, &child] {
        widget->setText(ToQt(child.Caption));
        widget->setVisible(child.Visible);
        widget->setEnabled(child.Enabled);
    });
}

void Bindings::Bind(QGroupBox* widget, const QString& name, const Label& child) {
    widget->setObjectName(name);
    OnShow([widget, &child] {
        widget->setTitle(ToQt(child.Caption));
        widget->setVisible(child.Visible);
    });
}

void Bindings::Bind(QCheckBox* widget, const QString& name, CheckBox& child,
                    const Action& clicked) {
    widget->setObjectName(name);
    OnShow([widget, &child] {
        widget->setText(ToQt(child.Caption));
        widget->setChecked(child.Value == 1);
        widget->setVisible(child.Visible);
        widget->setEnabled(child.Enabled);
    });
    QObject::connect(widget, &QCheckBox::toggled, widget, [this, &child, clicked](bool isOn) {
        Act([&] { child.Value = isOn ? 1 : 0; }, clicked);
    });
}

void Bindings::Bind(QAbstractButton* widget, const QString& name, const Button& child,
                    const Action& clicked) {
    widget->setObjectName(name);
    OnShow([widget, &child] {
        widget->setText(ToQt(child.Caption));
        widget->setToolTip(ToQt(child.ToolTip));
        widget->setVisible(child.Visible);
        widget->setEnabled(child.Enabled);
    });
    QObject::connect(widget, &QAbstractButton::clicked, widget,
                     [this, clicked] { Act([] {}, clicked); });
}

void Bindings::Bind(QSlider* widget, const QString& name, Slider& child, const Action& changed) {
    widget->setObjectName(name);
    OnShow([widget, &child] {
        widget->setRange(child.Min, child.Max);
        widget->setValue(child.Value);
        widget->setVisible(child.Visible);
    });
    QObject::connect(widget, &QSlider::valueChanged, widget, [this, &child, changed](int value) {
        Act([&] { child.Value = static_cast<Integer>(value); }, changed);
    });
}

void Bindings::Bind(QListWidget* widget, const QString& name, ListBox& child,
                    const Action& clicked) {
    widget->setObjectName(name);
    OnShow([widget, &child] {
        QStringList items;
        for (const std::string& item : child.Items)
            items.append(ToQt(item));
        QStringList shown;
        for (int row = 0; row < widget->count(); ++row)
            shown.append(widget->item(row)->text());
        if (shown != items) {
            widget->clear();
            widget->addItems(items);
        }
        widget->setCurrentRow(child.ListIndex);
    });
    QObject::connect(widget, &QListWidget::currentRowChanged, widget,
                     [this, &child, clicked](int row) {
                         if (row >= 0)
                             Act([&] { child.ListIndex = static_cast<Integer>(row); }, clicked);
                     });
}

void Bindings::Bind(QLineEdit* widget, const QString& name, TextBox& child, const Action& changed) {
    widget->setObjectName(name);
    OnShow([widget, &child] {
        if (widget->text() != ToQt(child.Text)) // setting an equal text would move the cursor
            widget->setText(ToQt(child.Text));
        widget->setEnabled(child.Enabled);
    });
    QObject::connect(widget, &QLineEdit::textChanged, widget,
                     [this, &child, changed](const QString& text) {
                         Act([&] { child.Text = text.toStdString(); }, changed);
                     });
}

} // namespace qx::views
