#include "app/ModuleCards.h"

#include "app/SettingWords.h"
#include "app/Workbench.h"
#include "views/Bindings.h"

#include <QCommandLinkButton>
#include <QFrame>
#include <QGridLayout>
#include <QVBoxLayout>

#include <algorithm>

namespace qx::app {

using views::ToQt;

namespace {

constexpr int kLeastWidth = 230; // of a card
constexpr int kMostWidth = 380;
constexpr int kMostColumns = 3;
constexpr int kSpacing = 8;

} // namespace

ModuleCards::ModuleCards(Workbench& workbench, QWidget* parent)
    : QWidget(parent), m_workbench(workbench), m_grid(new QGridLayout(this)) {
    m_grid->setContentsMargins({});
    m_grid->setSpacing(kSpacing);
    setMaximumWidth(kMostColumns * (kMostWidth + kSpacing));
    for (const std::string& key : SectionsByGroup()) {
        auto* button = new QCommandLinkButton(SectionTitle(key));
        button->setObjectName(QStringLiteral("card_") + ToQt(key));
        button->setIcon(SectionIcon(key));
        connect(button, &QCommandLinkButton::clicked, this,
                [this, key] { emit Chosen(ToQt(key)); });
        auto* frame = new QFrame(this);
        frame->setFrameShape(QFrame::StyledPanel);
        auto* column = new QVBoxLayout(frame);
        column->setContentsMargins({});
        column->addWidget(button);
        m_cards.push_back({key, frame, button});
    }
    connect(&workbench, &Workbench::KeyboardChanged, this, &ModuleCards::Arrange);
    connect(&workbench, &Workbench::DocumentChanged, this, [this] {
        Arrange(); // without a keyboard, its sections are shown
        ShowSummaries();
    });
    Arrange();
}

void ModuleCards::ShowSummaries() {
    if (!isVisible())
        return;
    for (const Card& card : m_cards) {
        const QString summary = m_workbench.Faces().Of(card.sectionKey).Summary();
        card.button->setDescription(summary);
        card.button->setAccessibleDescription(summary);
    }
}

// In as many columns as fit.
void ModuleCards::Arrange() {
    const int columns =
        std::clamp((width() + kSpacing) / (kLeastWidth + kSpacing), 1, kMostColumns);
    int place = 0;
    for (const Card& card : m_cards) {
        const host::Section& section = *m_workbench.Configuration().Find(card.sectionKey);
        const bool isThere = m_workbench.IsConnected() ? m_workbench.Has(section)
                                                       : m_workbench.History().TakesPart(section);
        m_grid->removeWidget(card.frame);
        card.frame->setVisible(isThere);
        if (isThere) {
            m_grid->addWidget(card.frame, place / columns, place % columns);
            ++place;
        }
    }
    for (int column = 0; column < m_grid->columnCount(); ++column)
        m_grid->setColumnStretch(column, column < columns ? 1 : 0);
}

void ModuleCards::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    Arrange();
}

void ModuleCards::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    ShowSummaries();
}

} // namespace qx::app
