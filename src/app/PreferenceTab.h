// PreferenceTab: a tab of the preferences: groups of rows, one below the other.
#pragma once

#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <vector>

namespace qx::app {

// A form whose fields are as wide as what they hold.
inline QFormLayout* NewForm(QWidget* parent = nullptr) {
    auto* form = new QFormLayout(parent);
    form->setFieldGrowthPolicy(QFormLayout::FieldsStayAtSizeHint);
    form->setLabelAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    form->setHorizontalSpacing(16);
    form->setVerticalSpacing(8);
    return form;
}

inline constexpr int kFormWidth = 900; // pixels, at most: the eye follows the rows

struct PreferenceTab {
    QWidget* page = new QWidget;
    QVBoxLayout* column = new QVBoxLayout(page);
    std::vector<QFormLayout*> forms;

    PreferenceTab() {
        page->setMaximumWidth(kFormWidth);
        column->setContentsMargins(16, 8, 16, 8);
        column->setSpacing(8);
    }
    [[nodiscard]] QFormLayout* AddGroup(const QString& title) {
        auto* group = new QGroupBox(title);
        column->addWidget(group);
        forms.push_back(NewForm(group));
        return forms.back();
    }
    // With the fields of all groups below each other, and its lists and buttons of one width.
    [[nodiscard]] QWidget* Done() const {
        column->addStretch(1);
        int width = 0;
        int fieldWidth = 0;
        std::vector<QWidget*> labels;
        std::vector<QComboBox*> lists;
        for (const QFormLayout* form : forms)
            for (int row = 0; row < form->rowCount(); ++row) {
                if (const QLayoutItem* item = form->itemAt(row, QFormLayout::LabelRole)) {
                    labels.push_back(item->widget());
                    width = std::max(width, item->sizeHint().width());
                }
                const QLayoutItem* field = form->itemAt(row, QFormLayout::FieldRole);
                if (field == nullptr)
                    continue;
                auto* list = qobject_cast<QComboBox*>(field->widget());
                if (list != nullptr)
                    lists.push_back(list);
                if (list != nullptr || qobject_cast<QPushButton*>(field->widget()) != nullptr)
                    fieldWidth = std::max(fieldWidth, field->sizeHint().width());
            }
        for (QWidget* label : labels)
            label->setMinimumWidth(width);
        for (QComboBox* list : lists)
            list->setMinimumWidth(fieldWidth);
        return page;
    }
};

} // namespace qx::app
