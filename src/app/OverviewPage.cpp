#include "app/OverviewPage.h"

#include "app/KeyboardPicture.h"
#include "app/KeyboardState.h"
#include "app/ModuleCards.h"
#include "app/SelectionPanel.h"
#include "views/Bindings.h"
#include "views/LineIcon.h"
#include "views/PlainText.h"
#include "views/ScrollArea.h"
#include "views/TitleFont.h"

#include <QAction>
#include <QEvent>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace qx::app {

using views::ToQt;

namespace {

using State = StartStages::State;

constexpr int kFill = 100;  // stretch of the widget that fills the remaining room
constexpr int kCardGap = 8; // pixels
constexpr int kLeft = 372;  // of the window's height, to all but the picture
constexpr int kMarkSize = 16;

// Stages that have not ended have no icon, but its room.
QPixmap MarkOf(State state) {
    const QIcon icon = state == State::Done     ? views::LineIcon(QStringLiteral("done"))
                       : state == State::Failed ? views::LineIcon(QStringLiteral("error"))
                                                : QIcon();
    return icon.pixmap(kMarkSize, kMarkSize);
}

QString WordOf(State state) {
    switch (state) {
    case State::Waiting:
        return OverviewPage::tr("not yet");
    case State::Running:
        return OverviewPage::tr("running");
    case State::Done:
        return OverviewPage::tr("done");
    case State::Failed:
        return OverviewPage::tr("failed");
    }
    return {};
}

} // namespace

OverviewPage::OverviewPage(Workbench& workbench, const KeyboardState& state,
                           const Commands& commands, QWidget* parent)
    : QWidget(parent), m_workbench(workbench), m_state(state), m_name(new QLabel),
      m_kind(new QLabel), m_buttons(new QWidget), m_interrupted(new QWidget), m_failure(new QLabel),
      m_remedies(new QWidget), m_picture(new KeyboardPicture(workbench)),
      m_cards(new ModuleCards(workbench)), m_fold(new QToolButton), m_identity(new QFormLayout),
      m_directory(new QTableWidget) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->setSpacing(kCardGap);
    column->addWidget(MakeKeyboard(commands));
    column->addWidget(m_startUp = MakeStages());
    column->addWidget(m_picture);
    column->addWidget(m_cards);
    column->addWidget(m_fold, 0, Qt::AlignLeft);
    column->addWidget(m_details = MakeDetails(), kFill);
    column->addStretch(1);
    m_picture->setMaximumWidth(m_cards->maximumWidth());
    m_fold->setObjectName(QStringLiteral("foldDetails"));
    m_fold->setText(tr("Technical details"));
    m_fold->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_fold->setAutoRaise(true);
    m_fold->setCheckable(true);
    connect(m_fold, &QToolButton::toggled, this, [this](bool isOn) { FoldDetails(!isOn); });
    FoldDetails(true);

    connect(m_picture, &KeyboardPicture::PlaceChosen, this, &OverviewPage::PlaceChosen);
    connect(m_cards, &ModuleCards::Chosen, this, &OverviewPage::PageRequested);
    connect(&workbench.Stages(), &StartStages::Changed, this, &OverviewPage::ShowStages);
    connect(&workbench, &Workbench::KeyboardChanged, this, &OverviewPage::ShowKeyboard);
    connect(&state, &KeyboardState::Changed, this, &OverviewPage::ShowInterrupted);
    ShowFailure({});
    ShowKeyboard();
}

bool OverviewPage::event(QEvent* event) {
    const bool isDone = QWidget::event(event);
    if (event->type() == QEvent::Resize || event->type() == QEvent::LayoutRequest)
        m_picture->setFixedHeight(m_picture->HeightAt(
            std::min(views::WidthWithoutBar(*this), m_picture->maximumWidth()), kLeft));
    return isDone;
}

QWidget* OverviewPage::MakeKeyboard(const Commands& commands) {
    m_name->setTextFormat(Qt::PlainText);
    m_name->setFont(views::TitleFont(m_name->font()));
    m_kind->setForegroundRole(QPalette::PlaceholderText);
    auto* buttons = new QHBoxLayout(m_buttons);
    buttons->setContentsMargins({});
    buttons->addWidget(ActionButton(commands.read, QStringLiteral("overviewRead")));
    buttons->addWidget(ActionButton(commands.write, QStringLiteral("overviewWrite")));
    auto* interrupted = new QHBoxLayout(m_interrupted);
    interrupted->setContentsMargins({});
    auto* warning = new QLabel;
    warning->setPixmap(views::LineIcon(QStringLiteral("warning"))
                           .pixmap(style()->pixelMetric(QStyle::PM_SmallIconSize)));
    interrupted->addWidget(warning);
    interrupted->addWidget(new QLabel(tr("A write to this keyboard was interrupted.")));
    interrupted->addWidget(ActionButton(commands.resolve, QStringLiteral("overviewResolve")));
    interrupted->addStretch(1);

    auto* names = new QVBoxLayout;
    names->setSpacing(4);
    names->addWidget(m_name);
    names->addWidget(m_kind);
    auto* head = new QHBoxLayout;
    head->addLayout(names);
    head->addStretch(1);
    head->addWidget(m_buttons);
    auto* keyboard = new QWidget;
    keyboard->setMaximumWidth(m_cards->maximumWidth());
    auto* column = new QVBoxLayout(keyboard);
    column->setContentsMargins({});
    column->setSpacing(8);
    column->addLayout(head);
    column->addWidget(m_interrupted);
    return keyboard;
}

QWidget* OverviewPage::MakeStages() {
    auto* startUp = new QWidget;
    auto* stages = new QVBoxLayout(startUp);
    stages->setContentsMargins({});
    stages->setSpacing(4);
    auto* list = new QGridLayout;
    list->setColumnMinimumWidth(0, kMarkSize);
    list->setColumnStretch(1, 1);
    list->setVerticalSpacing(4);
    for (int i = 0; i < kStages; ++i) {
        list->addWidget(m_marks[i] = new QLabel, i, 0);
        list->addWidget(m_stages[i] = new QLabel, i, 1);
    }
    stages->addLayout(list);
    m_failure->setObjectName(QStringLiteral("lblFailure"));
    m_failure->setWordWrap(true);
    m_failure->setTextFormat(Qt::PlainText);
    m_failure->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    stages->addSpacing(kCardGap);
    stages->addWidget(m_failure);
    stages->addSpacing(kCardGap);
    auto* again = new QPushButton(tr("&Try again"));
    auto* simulated = new QPushButton(tr("Use the &simulated keyboard"));
    auto* remedies = new QHBoxLayout(m_remedies);
    remedies->setContentsMargins({});
    remedies->addWidget(again);
    remedies->addWidget(simulated);
    remedies->addStretch(1);
    stages->addWidget(m_remedies);
    stages->addSpacing(kCardGap); // the cards are another matter
    connect(again, &QPushButton::clicked, this, &OverviewPage::ConnectAgainRequested);
    connect(simulated, &QPushButton::clicked, this, &OverviewPage::SimulatedKeyboardRequested);
    return startUp;
}

QWidget* OverviewPage::MakeDetails() {
    m_directory->setObjectName(QStringLiteral("directory"));
    m_directory->setAccessibleName(tr("Modules"));
    m_directory->setColumnCount(3);
    m_directory->setHorizontalHeaderLabels({tr("Number"), tr("Name"), tr("Address")});
    m_directory->verticalHeader()->hide();
    m_directory->verticalHeader()->setDefaultSectionSize(m_directory->fontMetrics().height() + 6);
    m_directory->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_directory->horizontalHeader()->setSectionResizeMode(1, QHeaderView::Stretch);
    m_directory->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_directory->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_directory->setAlternatingRowColors(true);
    m_directory->setTabKeyNavigation(false);
    auto* details = new QWidget;
    details->setMaximumWidth(m_cards->maximumWidth());
    auto* row = new QHBoxLayout(details);
    row->setContentsMargins({});
    auto* identity = new QWidget;
    identity->setLayout(m_identity);
    row->addWidget(identity, 4);
    row->addWidget(m_directory, 5);
    return details;
}

void OverviewPage::FoldDetails(bool isFolded) {
    m_fold->setArrowType(isFolded ? Qt::RightArrow : Qt::DownArrow);
    m_details->setVisible(!isFolded && m_workbench.IsConnected());
}

void OverviewPage::ShowStages() {
    using Stage = StartStages::Stage;
    const std::pair<Stage, QString> stages[kStages] = {
        {Stage::Driver, tr("Opening the driver")},
        {Stage::Directory, tr("Finding the keyboard's modules")},
        {Stage::Naming, tr("Reading its name and versions")}};
    bool hasFailed = false;
    for (int i = 0; i < kStages; ++i) {
        const auto& [stage, name] = stages[i];
        const State state = m_workbench.Stages().Of(stage);
        m_marks[i]->setPixmap(MarkOf(state));
        hasFailed = hasFailed || state == State::Failed;
        const bool isLeftOut = hasFailed && state == State::Waiting;
        m_stages[i]->setText(
            QStringLiteral("%1: %2").arg(name, isLeftOut ? tr("not tried") : WordOf(state)));
        for (QLabel* part : {m_marks[i], m_stages[i]})
            part->repaint(); // the program is busy with the keyboard
    }
}

void OverviewPage::ShowFailure(const Failure& reason) {
    const bool hasFailed = !reason.text.isEmpty();
    m_failure->setText(reason.text);
    m_failure->setToolTip(views::Plain(reason.details));
    m_failure->setAccessibleDescription(reason.details);
    m_failure->setVisible(hasFailed);
    m_remedies->setVisible(hasFailed);
}

void OverviewPage::ShowKeyboard() {
    ShowStages();
    const bool isConnected = m_workbench.IsConnected();
    m_startUp->setVisible(!isConnected);
    m_buttons->setVisible(isConnected);
    m_fold->setVisible(isConnected);
    m_kind->setVisible(isConnected);
    m_picture->setVisible(isConnected);
    FoldDetails(!m_fold->isChecked());
    ShowInterrupted();
    m_name->setText(isConnected ? ToQt(m_workbench.Session().Access().Keyboard())
                                : tr("No keyboard"));
    if (!isConnected)
        return;
    ShowFailure({});
    m_kind->setText(m_workbench.Simulated() != nullptr ? tr("simulated keyboard")
                                                       : tr("keyboard behind a driver library"));
    ShowDetails();
}

void OverviewPage::ShowInterrupted() {
    m_interrupted->setVisible(m_state.Now() == KeyboardState::Kind::Interrupted);
}

void OverviewPage::ShowDetails() {
    while (m_identity->rowCount() > 0)
        m_identity->removeRow(0);
    m_directory->setRowCount(0);
    QXKeyboardAccess& access = m_workbench.Session().Access();
    const auto add = [this](const QString& name, const QString& value) {
        auto* label = new QLabel(value);
        label->setTextFormat(Qt::PlainText);
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);
        m_identity->addRow(name + QLatin1Char(':'), label);
    };
    add(tr("Name"), ToQt(access.Keyboard()));
    add(tr("Firmware"), ToQt(access.Program()));
    add(tr("Bootloader"), ToQt(access.Bootloader()));
    add(tr("Country"), ToQt(access.Country()));
    add(tr("Configuration"), ToQt(access.Config()));
    QStringList has;
    const std::pair<bool, QString> flags[] = {
        {access.FlagFreeProgrammableKeys(), tr("free keys")},
        {access.FlagConnectionV24(), tr("V.24 connection")},
        {access.FlagChicpcardReader(), tr("chipcard reader")},
        {access.FlagBarcodeReader(), tr("barcode reader")},
        {access.FlagMagneticTrack1(), tr("magnetic track 1")},
        {access.FlagMagneticTrack2(), tr("magnetic track 2")},
        {access.FlagMagneticTrack3(), tr("magnetic track 3")},
        {access.FlagMagneticTrack4(), tr("magnetic track 4")},
    };
    for (const auto& [isThere, name] : flags)
        if (isThere)
            has.append(name);
    add(tr("Features"), has.isEmpty() ? tr("no modules") : has.join(QLatin1Char('\n')));
    add(tr("Kind"), m_kind->text());

    for (int i = 1; i <= access.DirectorySize(); ++i) {
        const ConfigDirEntry* entry = access.DirectoryItem(static_cast<Integer>(i));
        const int row = m_directory->rowCount();
        m_directory->insertRow(row);
        const QString cells[] = {
            QString::number(entry->ModuleType()), ToQt(std::string(NameOf(entry->ModuleType()))),
            QStringLiteral("0x%1").arg(entry->StartAddress(), 4, 16, QLatin1Char('0'))};
        for (int column = 0; column < 3; ++column)
            m_directory->setItem(row, column, new QTableWidgetItem(cells[column]));
    }
}

} // namespace qx::app
