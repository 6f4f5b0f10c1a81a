// PreferenceTab: a tab of the preferences: groups of rows, one below the other.
#pragma once

#include <QFormLayout>
#include <QGroupBox>
#include <QVBoxLayout>

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
    [[nodiscard]] QWidget* Done() const;
};

} // namespace qx::app
