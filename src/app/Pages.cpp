#include "app/Pages.h"

#include "app/InPlaceEditor.h"
#include "app/KeyActions.h"
#include "app/KeyMarks.h"
#include "app/ReaderEditor.h"
#include "app/SelectionPanel.h"
#include "app/SettingWords.h"
#include "app/Workbench.h"
#include "views/BesideOrBelow.h"
#include "views/KeyGrid.h"
#include "views/ScrollArea.h"
#include "views/SequenceLabel.h"
#include "views/TitleFont.h"

#include <QAction>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QSignalBlocker>
#include <QTabWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace qx::app {

namespace {

// Room for the inspector, so that the keys keep their size when one is selected.
constexpr int kCharactersBeside = 42;
constexpr int kPageGap = 8; // pixels

QLabel* Heading(const QString& title) {
    auto* heading = new QLabel(title);
    heading->setFont(views::TitleFont(heading->font(), 1.4));
    // Some fonts draw accents above their line, where the label ends.
    heading->setContentsMargins(0, heading->fontMetrics().height() / 6, 0, 0);
    return heading;
}

// The room above the heading and below the page is the window's.
QVBoxLayout* PageColumn(QWidget& page) {
    auto* column = new QVBoxLayout(&page);
    QMargins margins = column->contentsMargins();
    margins.setTop(0);
    margins.setBottom(0);
    column->setContentsMargins(margins);
    return column;
}

} // namespace

int Page::heightForWidth(int width) const {
    return layout()->totalMinimumHeightForWidth(width);
}

ModulePage::ModulePage(Workbench& workbench, EditRequests& edits, const KeyboardState& state,
                       std::string sectionKey, QWidget* parent)
    : Page(parent), m_workbench(workbench), m_sectionKey(std::move(sectionKey)),
      m_state(new QLabel), m_view(workbench.Faces().Of(m_sectionKey).MakeView()) {
    if (workbench.Faces().Of(m_sectionKey).HasKeys())
        m_view = WithKeyEditors(edits, state);
    else if (workbench.Faces().Of(m_sectionKey).HasSequences())
        m_view = WithReaderEditors();
    else
        m_view->layout()->setContentsMargins({}); // the page has some
    m_state->setWordWrap(true);
    m_state->setForegroundRole(QPalette::PlaceholderText);
    QVBoxLayout* column = PageColumn(*this);
    column->addWidget(Heading(SectionTitle(m_sectionKey)));
    column->addWidget(m_state);
    column->addWidget(m_view, 1);
    connect(&workbench, &Workbench::KeyboardChanged, this, &ModulePage::ShowState);
    connect(&workbench, &Workbench::DocumentChanged, this, &ModulePage::ShowState);
    ShowState();
}

ModulePage::~ModulePage() = default;

QWidget* ModulePage::WithKeyEditors(EditRequests& edits, const KeyboardState& state) {
    auto& grid = *m_view->findChild<views::KeyGrid*>();
    m_edits = std::make_unique<KeyEdits>(m_workbench, edits, m_sectionKey);
    m_actions = std::make_unique<KeyActions>(*m_edits, grid);
    m_workbench.Faces().Of(m_sectionKey).AddActions(*m_actions, *m_edits, *m_view);
    auto* inspector = new views::SequenceInspector;
    m_inspectors.push_back(inspector);
    auto* panel = new SelectionPanel(*m_actions, grid);
    auto* beside = new Page; // one of them; a stack would be as large as the larger
    auto* column = new QVBoxLayout(beside);
    column->setContentsMargins({});
    column->addWidget(inspector);
    column->addWidget(panel);
    panel->hide();
    m_editor = std::make_unique<InPlaceEditor>(*m_edits, grid, *inspector);
    m_marks = std::make_unique<KeyMarks>(state, *m_edits, grid, *m_view);
    const int width = std::max(fontMetrics().averageCharWidth() * kCharactersBeside,
                               inspector->minimumSizeHint().width());
    connect(m_actions.get(), &KeyActions::StateShown, beside, [inspector, panel](bool isSeveral) {
        (isSeveral ? static_cast<QWidget*>(inspector) : panel)->hide();
        (isSeveral ? static_cast<QWidget*>(panel) : inspector)->show();
    });
    connect(m_actions.get(), &KeyActions::EditWanted, inspector,
            &views::SequenceInspector::TakeFocus);
    connect(m_actions.get(), &KeyActions::RecordWanted, inspector,
            &views::SequenceInspector::StartRecording);
    connect(m_actions.get(), &KeyActions::SeriesWanted, panel, &SelectionPanel::FocusSeries);
    for (const QWidget* each : std::initializer_list<QWidget*>{m_view, inspector, panel})
        each->layout()->setContentsMargins({}); // the page has some
    auto* both = new views::BesideOrBelow(m_view, grid, beside, width);
    auto* sequence = m_view->findChild<QWidget*>(QStringLiteral("sequenceRow"));
    connect(both, &views::BesideOrBelow::BelowChanged, beside, [=](bool isBelow) {
        inspector->SetWide(isBelow);
        panel->SetWide(isBelow);
        if (sequence != nullptr) // the keys need its room; the inspector shows the same
            sequence->setVisible(!isBelow);
    });
    for (QWidget* each : {static_cast<QWidget*>(inspector), static_cast<QWidget*>(panel)}) {
        auto* leave = new QAction(each);
        leave->setShortcut(Qt::Key_Escape);
        leave->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        connect(leave, &QAction::triggered, &grid, [&grid] { grid.setFocus(); });
        each->addAction(leave);
    }
    return both;
}

QWidget* ModulePage::WithReaderEditors() {
    auto* tabs = qobject_cast<QTabWidget*>(m_view);
    if (tabs == nullptr) {
        m_view->layout()->setContentsMargins({}); // the page has some
        return WithReaderEditor(m_view);
    }
    const QSignalBlocker arranging(tabs); // the control has its page already
    const int shown = tabs->currentIndex();
    for (int tab = 0; tab < tabs->count(); ++tab) {
        QWidget* page = tabs->widget(tab);
        const QString title = tabs->tabText(tab);
        tabs->removeTab(tab);
        if (page->findChild<views::SequenceLabel*>() != nullptr)
            page = WithReaderEditor(page);
        page->show(); // a tab that was not the current one was hidden
        tabs->insertTab(tab, new views::TallArea(page), title);
    }
    tabs->setCurrentIndex(shown);
    return tabs;
}

QWidget* ModulePage::WithReaderEditor(QWidget* view) {
    auto* both = new Page;
    auto* inspector = new views::SequenceInspector;
    m_inspectors.push_back(inspector);
    inspector->layout()->setContentsMargins(0, view->layout()->contentsMargins().top(), 0, 0);
    auto* row = new QHBoxLayout(both);
    row->setContentsMargins({});
    row->setSpacing(2 * kPageGap);
    row->addWidget(view, 2);
    row->addWidget(inspector, 1);
    view->show();
    auto* editor = new ReaderEditor(m_workbench, m_sectionKey, *view, *inspector);
    editor->setParent(this);
    return both;
}

void ModulePage::keyPressEvent(QKeyEvent* event) {
    if (std::ranges::none_of(m_inspectors, [&](auto* each) { return each->StartTyping(*event); }))
        Page::keyPressEvent(event);
}

void ModulePage::ShowState() {
    const host::Section& section = *m_workbench.Configuration().Find(m_sectionKey);
    const bool isThere = m_workbench.Has(section);
    const bool takesPart = m_workbench.History().TakesPart(section);
    QString state;
    if (!isThere && takesPart)
        state = tr("This keyboard does not have this module. The document keeps these settings; "
                   "writing leaves them out.");
    else if (!isThere)
        state = tr("This keyboard does not have this module.");
    else if (!takesPart)
        state = tr("The document has no settings for this module, and writing leaves the "
                   "keyboard's as they are. Changes made here become part of the document.");
    m_state->setText(state);
    m_state->setVisible(!state.isEmpty());
    m_view->setEnabled(isThere || takesPart);
}

QWidget* TitledPage(const QString& title, QWidget* content) {
    auto* page = new Page;
    QVBoxLayout* column = PageColumn(*page);
    column->addWidget(Heading(title));
    column->addWidget(content, 1);
    return page;
}

} // namespace qx::app
