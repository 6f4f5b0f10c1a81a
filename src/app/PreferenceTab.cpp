#include "app/PreferenceTab.h"

#include <QComboBox>
#include <QPushButton>

#include <algorithm>

namespace qx::app {

QWidget* PreferenceTab::Done() const {
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

} // namespace qx::app
