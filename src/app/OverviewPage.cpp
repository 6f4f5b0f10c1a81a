#include "app/OverviewPage.h"

#include "views/Bindings.h"
#include "views/PlainText.h"

#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace qx::app {

using views::ToQt;

namespace {

using State = StartStages::State;

QString MarkOf(State state) {
    switch (state) {
    case State::Waiting:
        return QStringLiteral("○");
    case State::Running:
        return QStringLiteral("…");
    case State::Done:
        return QStringLiteral("✓");
    case State::Failed:
        return QStringLiteral("✗");
    }
    return {};
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

OverviewPage::OverviewPage(Workbench& workbench, QWidget* parent)
    : QWidget(parent), m_workbench(workbench), m_failure(new QLabel), m_remedies(new QWidget),
      m_directory(new QTableWidget) {
    auto* startUp = new QGroupBox(tr("Start-up"));
    auto* stages = new QVBoxLayout(startUp);
    for (QLabel*& stage : m_stages)
        stages->addWidget(stage = new QLabel);
    m_failure->setObjectName(QStringLiteral("lblFailure"));
    m_failure->setWordWrap(true);
    m_failure->setTextFormat(Qt::PlainText);
    m_failure->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    stages->addWidget(m_failure);
    auto* again = new QPushButton(tr("&Try again"));
    auto* simulated = new QPushButton(tr("Use the &simulated keyboard"));
    auto* remedies = new QHBoxLayout(m_remedies);
    remedies->setContentsMargins({});
    remedies->addWidget(again);
    remedies->addWidget(simulated);
    remedies->addStretch(1);
    stages->addWidget(m_remedies);

    m_keyboard = new QGroupBox(tr("Keyboard"));
    m_identity = new QFormLayout(m_keyboard);

    auto* modules = new QGroupBox(tr("Modules"));
    auto* modulesColumn = new QVBoxLayout(modules);
    m_directory->setObjectName(QStringLiteral("directory"));
    m_directory->setAccessibleName(modules->title());
    m_directory->setColumnCount(3);
    m_directory->setHorizontalHeaderLabels({tr("Number"), tr("Name"), tr("Address")});
    m_directory->verticalHeader()->hide();
    m_directory->verticalHeader()->setDefaultSectionSize(m_directory->fontMetrics().height() + 8);
    m_directory->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_directory->horizontalHeader()->setSectionResizeMode(1, QHeaderView::Stretch);
    m_directory->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_directory->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_directory->setAlternatingRowColors(true);
    m_directory->setTabKeyNavigation(false);
    modulesColumn->addWidget(m_directory);

    auto* left = new QVBoxLayout;
    left->addWidget(startUp);
    left->addWidget(m_keyboard);
    left->addStretch(1);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins({});
    row->addLayout(left, 4);
    row->addWidget(modules, 5);

    connect(again, &QPushButton::clicked, this, &OverviewPage::ConnectAgainRequested);
    connect(simulated, &QPushButton::clicked, this, &OverviewPage::SimulatedKeyboardRequested);
    connect(&workbench.Stages(), &StartStages::Changed, this, &OverviewPage::ShowStages);
    connect(&workbench, &Workbench::KeyboardChanged, this, &OverviewPage::ShowKeyboard);
    ShowFailure({});
    ShowKeyboard();
}

void OverviewPage::ShowStages() {
    using Stage = StartStages::Stage;
    const std::pair<Stage, QString> stages[] = {
        {Stage::Driver, tr("Open the driver")},
        {Stage::Directory, tr("Read which modules the keyboard has")},
        {Stage::Naming, tr("Read its name and versions")}};
    for (std::size_t i = 0; i < std::size(m_stages); ++i) {
        const auto& [stage, name] = stages[i];
        const State state = m_workbench.Stages().Of(stage);
        m_stages[i]->setText(QStringLiteral("%1  %2: %3").arg(MarkOf(state), name, WordOf(state)));
        m_stages[i]->repaint(); // the program is busy with the keyboard
    }
}

void OverviewPage::ShowFailure(const Failure& reason) {
    const bool hasFailed = !reason.text.isEmpty();
    QString text;
    if (hasFailed)
        text = tr("%1\n\nCheck that the keyboard is plugged in, that no other program uses it, and "
                  "that the chosen driver library belongs to it.")
                   .arg(reason.text);
    m_failure->setText(text);
    m_failure->setToolTip(views::Plain(reason.details));
    m_failure->setAccessibleDescription(reason.details);
    m_failure->setVisible(hasFailed);
    m_remedies->setVisible(hasFailed);
}

void OverviewPage::ShowKeyboard() {
    ShowStages();
    while (m_identity->rowCount() > 0)
        m_identity->removeRow(0);
    m_directory->setRowCount(0);
    m_keyboard->setVisible(m_workbench.IsConnected());
    if (!m_workbench.IsConnected())
        return;
    ShowFailure({});
    QXKeyboardAccess& access = m_workbench.Session().Access();
    const auto add = [this](const QString& name, const QString& value) {
        auto* label = new QLabel(value);
        label->setTextFormat(Qt::PlainText);
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);
        m_identity->addRow(name + QLatin1Char(':'), label);
    };
    add(tr("Name"), ToQt(access.Keyboard()));
    add(tr("Program"), ToQt(access.Program()));
    add(tr("Bootloader"), ToQt(access.Bootloader()));
    add(tr("Country"), ToQt(access.Country()));
    add(tr("Configuration"), ToQt(access.Config()));
    QStringList has;
    const std::pair<bool, QString> flags[] = {
        {access.FlagFreeProgrammableKeys(), tr("free programmable keys")},
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
    add(tr("Has"), has.isEmpty() ? tr("nothing of its own") : has.join(QLatin1Char('\n')));
    add(tr("Kind"), m_workbench.Simulated() != nullptr ? tr("simulated keyboard")
                                                       : tr("keyboard behind a driver library"));

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
