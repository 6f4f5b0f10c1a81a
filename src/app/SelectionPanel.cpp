#include "app/SelectionPanel.h"

#include "app/KeyActions.h"
#include "views/EntryLine.h"
#include "views/FaultLabel.h"
#include "views/FlowLayout.h"
#include "views/KeyGrid.h"
#include "views/TitleFont.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QToolButton>
#include <QVBoxLayout>

namespace qx::app {

namespace {

constexpr int kButtonGap = 8; // pixels
constexpr int kMostFirst = 999999;
constexpr int kMostDigits = 6;

KeyActions::Series SeriesOf(const QLineEdit& text, const QSpinBox& first, const QSpinBox& digits,
                            const QCheckBox& enter) {
    return {text.text(), first.value(), digits.value(), enter.isChecked()};
}

// In as many lines as they need.
QLayout* ButtonRow(const std::vector<QAction*>& actions) {
    auto* row = new views::FlowLayout(kButtonGap);
    for (QAction* action : actions)
        row->addWidget(ActionButton(action, action->objectName()));
    return row;
}

} // namespace

QToolButton* ActionButton(QAction* action, const QString& name) {
    auto* button = new QToolButton;
    button->setDefaultAction(action);
    button->setObjectName(name);
    button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    button->setFocusPolicy(Qt::StrongFocus);
    return button;
}

SelectionPanel::SelectionPanel(KeyActions& actions, const views::KeyGrid& grid)
    : m_actions(actions), m_grid(grid), m_title(new QLabel) {
    m_title->setFont(views::TitleFont(m_title->font()));
    m_title->setObjectName(QStringLiteral("selectionTitle"));
    auto* head = new QVBoxLayout;
    head->addWidget(m_title);
    head->addLayout(
        ButtonRow({actions.ClearAction(), actions.PasteAction(), actions.SwapAction()}));
    head->addStretch(0);
    m_column = new QVBoxLayout;
    m_column->setSpacing(2 * kButtonGap);
    m_column->addLayout(head);
    m_column->addWidget(MakeSeries());
    auto* whole = new QVBoxLayout(this);
    whole->addLayout(m_column);
    whole->addStretch(1);
    connect(&grid, &views::KeyGrid::SelectionChanged, this, &SelectionPanel::ShowSelection);
    ShowSelection();
}

QWidget* SelectionPanel::MakeSeries() {
    m_text = new views::EntryLine;
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
    for (QSpinBox* number : {m_first, m_digits})
        number->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(m_text, &QLineEdit::textChanged, this, &SelectionPanel::ShowSelection);
    connect(m_text, &QLineEdit::returnPressed, this, &SelectionPanel::Fill);
    connect(m_first, &QSpinBox::valueChanged, this, &SelectionPanel::ShowSelection);
    connect(m_digits, &QSpinBox::valueChanged, this, &SelectionPanel::ShowSelection);
    connect(m_enter, &QCheckBox::toggled, this, &SelectionPanel::ShowSelection);
    connect(m_fill, &QPushButton::clicked, this, &SelectionPanel::Fill);

    auto* group = new QGroupBox(tr("Fill a series"));
    m_series = new QVBoxLayout(group);
    auto* form = new QFormLayout;
    auto* outcome = new QVBoxLayout;
    m_series->addLayout(form, 1);
    m_series->addLayout(outcome, 1);
    form->addRow(tr("Text:"), m_text);
    form->addRow(tr("First number:"), m_first);
    form->addRow(tr("Digits:"), m_digits);
    outcome->setSpacing(form->verticalSpacing());
    for (QWidget* beside : std::initializer_list<QWidget*>{m_enter, m_preview})
        beside->setMinimumHeight(m_first->sizeHint().height()); // in the rows of the form
    outcome->addWidget(m_enter);
    outcome->addWidget(m_preview);
    outcome->addWidget(m_fill, 0, Qt::AlignLeft);
    outcome->addWidget(m_fault);
    outcome->addStretch(1);
    return group;
}

void SelectionPanel::SetWide(bool isWide) {
    for (QBoxLayout* layout : {m_column, m_series})
        layout->setDirection(isWide ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    m_column->setStretch(1, isWide ? 1 : 0);
}

void SelectionPanel::FocusSeries() {
    m_text->setFocus(Qt::ShortcutFocusReason);
    m_text->selectAll();
}

void SelectionPanel::ShowSelection() {
    const int count = static_cast<int>(m_grid.Selected().size());
    m_title->setText(tr("%n keys selected", nullptr, count));
    const auto series = SeriesOf(*m_text, *m_first, *m_digits, *m_enter);
    m_preview->setText(tr("Texts: %1 to %2")
                           .arg(KeyActions::TextOf(series, 0),
                                KeyActions::TextOf(series, std::max(0, count - 1))));
    m_fault->clear();
}

void SelectionPanel::Fill() {
    m_fault->setText(m_actions.Fill(SeriesOf(*m_text, *m_first, *m_digits, *m_enter)));
}

} // namespace qx::app
