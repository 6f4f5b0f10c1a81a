#include "app/SelectionPanel.h"

#include "app/KeyActions.h"
#include "views/FaultLabel.h"
#include "views/FlowLayout.h"
#include "views/KeyGrid.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QToolButton>
#include <QVBoxLayout>

namespace qx::app {

namespace {

constexpr double kTitleScale = 1.2;
constexpr int kButtonGap = 8; // pixels
constexpr int kMostFirst = 999999;
constexpr int kMostDigits = 6;

KeyActions::Series SeriesOf(const QLineEdit& text, const QSpinBox& first, const QSpinBox& digits,
                            const QCheckBox& enter) {
    return {text.text(), first.value(), digits.value(), enter.isChecked()};
}

} // namespace

QLayout* ButtonRow(const std::vector<QAction*>& actions) {
    auto* row = new views::FlowLayout(kButtonGap);
    for (QAction* action : actions) {
        auto* button = new QToolButton;
        button->setDefaultAction(action);
        button->setObjectName(action->objectName());
        button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
        button->setFocusPolicy(Qt::StrongFocus);
        row->addWidget(button);
    }
    return row;
}

SelectionPanel::SelectionPanel(KeyActions& actions, const views::KeyGrid& grid)
    : m_actions(actions), m_grid(grid), m_title(new QLabel) {
    QFont font = m_title->font();
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * kTitleScale);
    m_title->setFont(font);
    m_title->setObjectName(QStringLiteral("selectionTitle"));
    auto* column = new QVBoxLayout(this);
    column->addWidget(m_title);
    column->addLayout(
        ButtonRow({actions.ClearAction(), actions.PasteAction(), actions.SwapAction()}));
    column->addWidget(MakeSeries());
    column->addStretch(1);
    connect(&grid, &views::KeyGrid::SelectionChanged, this, &SelectionPanel::ShowSelection);
    ShowSelection();
}

QWidget* SelectionPanel::MakeSeries() {
    m_text = new QLineEdit;
    m_first = new QSpinBox;
    m_digits = new QSpinBox;
    m_enter = new QCheckBox(tr("Enter after each"));
    m_preview = new QLabel;
    m_fault = new views::FaultLabel;
    m_fill = new QPushButton(tr("Fill"));
    m_text->setObjectName(QStringLiteral("seriesText"));
    m_first->setObjectName(QStringLiteral("seriesFirst"));
    m_digits->setObjectName(QStringLiteral("seriesDigits"));
    m_enter->setObjectName(QStringLiteral("seriesEnter"));
    m_preview->setObjectName(QStringLiteral("seriesPreview"));
    m_fill->setObjectName(QStringLiteral("seriesFill"));
    m_text->setPlaceholderText(tr("for example TILL"));
    m_first->setMaximum(kMostFirst);
    m_first->setValue(1);
    m_digits->setRange(1, kMostDigits);
    m_digits->setValue(2);
    m_preview->setTextFormat(Qt::PlainText);
    m_preview->setWordWrap(true);
    m_fault->setWordWrap(true);
    connect(m_text, &QLineEdit::textChanged, this, &SelectionPanel::ShowSelection);
    connect(m_text, &QLineEdit::returnPressed, this, &SelectionPanel::Fill);
    connect(m_first, &QSpinBox::valueChanged, this, &SelectionPanel::ShowSelection);
    connect(m_digits, &QSpinBox::valueChanged, this, &SelectionPanel::ShowSelection);
    connect(m_enter, &QCheckBox::toggled, this, &SelectionPanel::ShowSelection);
    connect(m_fill, &QPushButton::clicked, this, &SelectionPanel::Fill);

    auto* group = new QGroupBox(tr("Fill a series"));
    auto* form = new QFormLayout(group);
    form->addRow(tr("Text:"), m_text);
    form->addRow(tr("First number:"), m_first);
    form->addRow(tr("Digits:"), m_digits);
    form->addRow(QString(), m_enter);
    form->addRow(m_preview);
    form->addRow(m_fault);
    form->addRow(QString(), m_fill);
    return group;
}

void SelectionPanel::FocusSeries() {
    m_text->setFocus(Qt::ShortcutFocusReason);
    m_text->selectAll();
}

void SelectionPanel::ShowSelection() {
    const int count = static_cast<int>(m_grid.Selected().size());
    m_title->setText(tr("%n keys selected", nullptr, count));
    const auto series = SeriesOf(*m_text, *m_first, *m_digits, *m_enter);
    m_preview->setText(tr("%1 to %2")
                           .arg(KeyActions::TextOf(series, 0),
                                KeyActions::TextOf(series, std::max(0, count - 1))));
    m_fault->clear();
}

void SelectionPanel::Fill() {
    m_fault->setText(m_actions.Fill(SeriesOf(*m_text, *m_first, *m_digits, *m_enter)));
}

} // namespace qx::app
