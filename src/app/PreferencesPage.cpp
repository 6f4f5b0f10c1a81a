#include "app/PreferencesPage.h"

#include "app/Appearance.h"
#include "app/KeySample.h"
#include "app/Language.h"
#include "app/PreferenceTab.h"
#include "app/StartWizard.h"
#include "app/VersionBox.h"
#include "host/ColourSet.h"
#include "setup/LayoutSource.h"
#include "views/ScrollArea.h"

#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

#include <limits>

namespace qx::app {

namespace {

constexpr int kMaxInteger = std::numeric_limits<Integer>::max();
constexpr int kPosBlocks = 10;

Preference PosBlock(int block) {
    return static_cast<Preference>(static_cast<int>(Preference::POSColorBlock0) + block);
}

} // namespace

PreferencesPage::PreferencesPage(QXProgSettings& settings, const std::filesystem::path& layouts,
                                 QWidget* parent)
    : QWidget(parent), m_settings(settings), m_layouts(layouts),
      m_editors(new PreferenceEditors(settings, this)), m_ownLayout(new QLabel) {
    connect(m_editors, &PreferenceEditors::Changed, this, &PreferencesPage::Changed);
    m_tabs = new QTabWidget;
    // Each scrolls for itself: a short one does not because another one is tall.
    const auto add = [this](QWidget* tab, const QString& title) {
        m_tabs->addTab(new views::TallArea(tab), title);
    };
    add(MakeGeneralTab(), tr("General"));
    add(MakeLanguagesTab(), tr("Languages"));
    add(MakeKeyboardTab(), tr("Keyboard"));
    add(MakeKeyDisplayTab(), tr("Key display"));
    add(MakePosTab(), tr("POS keys"));

    auto* reset = new QPushButton(tr("Reset to defa&ults…"));
    reset->setObjectName(QStringLiteral("reset"));
    connect(reset, &QPushButton::clicked, this, [this] { ResetToDefaults(); });
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->setSpacing(8);
    column->addWidget(m_tabs);
    column->addWidget(reset, 0, Qt::AlignLeft);
    ShowAll();
}

QWidget* PreferencesPage::MakeGeneralTab() {
    PreferenceTab tab;
    m_appearance = new QComboBox;
    m_appearance->setObjectName(QStringLiteral("appearance"));
    m_appearance->addItem(tr("Same as system"), static_cast<int>(Appearance::System));
    m_appearance->addItem(tr("Light"), static_cast<int>(Appearance::Light));
    m_appearance->addItem(tr("Dark"), static_cast<int>(Appearance::Dark));
    connect(m_appearance, &QComboBox::activated, this, [this] {
        emit AppearanceChosen(static_cast<Appearance>(m_appearance->currentData().toInt()));
    });
    tab.AddGroup(tr("Appearance"))->addRow(tr("&Windows and keys:"), m_appearance);

    QFormLayout* start = tab.AddGroup(tr("At startup"));
    m_editors->AddStart(*start);
    m_editors->AddLastDocument(*start);

    QFormLayout* work = tab.AddGroup(tr("While you work"));
    m_editors->AddCheck(*work, Preference::AutoSave, tr("&Save documents automatically"));
    m_editors->AddCheck(*work, Preference::AutoTestdrive, tr("Open the &test page after writing"));
    m_editors->AddCheck(*work, Preference::ShowUpcodes, tr("Show key &releases in sequences"));
    m_editors->AddChoice(*work, Preference::AdvancedEditor, tr("&Open the sequence editor:"),
                         {{tr("With its button"), Integer{0}},
                          {tr("With its button or by typing on a sequence"), Integer{1}}});
    return tab.Done();
}

QWidget* PreferencesPage::MakeLanguagesTab() {
    PreferenceTab tab;
    QFormLayout* program = tab.AddGroup(tr("The program"));
    PreferenceEditors::Choices languages{{tr("Same as system"), Integer{0}}};
    for (const ProgramLanguage& language : kLanguages)
        languages.emplace_back(QString::fromUtf8(language.name), language.id);
    m_editors->AddChoice(*program, Preference::PreferedAppLang, tr("&Language:"), languages);

    QFormLayout* keys = tab.AddGroup(tr("The keys"));
    PreferenceEditors::Choices layouts{{tr("Standard (English, United States)"), Integer{0}}};
    for (const setup::LayoutEntry& entry : setup::ListLayouts(m_layouts))
        layouts.emplace_back(QString::fromStdString(entry.name), entry.language);
    m_editors->AddChoice(*keys, Preference::PreferedKeyLang, tr("Key la&yout:"), layouts);
    m_ownLayout->setObjectName(QStringLiteral("ownLayout"));
    m_ownLayout->setWordWrap(true);
    keys->addRow(m_ownLayout);
    return tab.Done();
}

QWidget* PreferencesPage::MakeKeyboardTab() {
    PreferenceTab tab;
    QFormLayout* link = tab.AddGroup(tr("Connection"));
    m_editors->AddNumber(*link, Preference::CommandDelta,
                         tr("&Command delta (stored for other programs):"), 0,
                         std::numeric_limits<Long>::max());

    QFormLayout* chipcard = tab.AddGroup(tr("Chipcard reader firmware"));
    m_editors->AddNumber(*chipcard, Preference::ChipcardPort, tr("Serial &port:"), 0, kMaxInteger);
    m_editors->AddNumber(*chipcard, Preference::ChipcardBaudrate,
                         tr("&Baud rate (the driver's index):"), 0, kMaxInteger);

    QFormLayout* firmware = tab.AddGroup(tr("Keyboard firmware"));
    m_editors->AddCheck(*firmware, Preference::VerifyFirmware,
                        tr("Check the firmware at &startup"));
    m_editors->AddNumber(*firmware, Preference::VersionFirmware, tr("&Oldest suitable version:"), 0,
                         kMaxInteger, {}, new VersionBox);
    return tab.Done();
}

QWidget* PreferencesPage::MakeKeyDisplayTab() {
    PreferenceTab tab;
    QFormLayout* text = tab.AddGroup(tr("Captions"));
    m_editors->AddNumber(*text, Preference::KeyFontSize, tr("Smallest &font size:"), 4, 24,
                         tr(" pt"));
    QFormLayout* colours = tab.AddGroup(tr("Colours"));
    m_editors->AddColourSet(*colours);
    m_editors->AddColour(*colours, Preference::ColorProg, tr("&Programmed keys:"));
    m_editors->AddColour(*colours, Preference::ColorEmpty, tr("E&mpty keys:"));
    m_editors->AddColour(*colours, Preference::ColorCurr, tr("The &current key:"));
    m_editors->AddColour(*colours, Preference::ColorUnused, tr("Keys that are &not used:"));

    auto* sample = new KeySample(4, [this] {
        using views::KeyState;
        KeySample::Look look;
        look.caps = {SampleKey(tr("Programmed"), m_settings.ColorProg(), KeyState::Programmed),
                     SampleKey(tr("Empty"), m_settings.ColorEmpty(), KeyState::Empty),
                     SampleKey(tr("Current"), m_settings.ColorCurr(), KeyState::Programmed),
                     SampleKey(tr("Unused"), m_settings.ColorUnused(), KeyState::Unused)};
        look.caps[2].isCurrent = true;
        look.pointSize = m_settings.KeyFontSize();
        return look;
    });
    sample->setObjectName(QStringLiteral("keySample"));
    m_editors->AddView([sample] { sample->update(); });
    tab.AddGroup(tr("Preview"))->addRow(sample);
    return tab.Done();
}

QWidget* PreferencesPage::MakePosTab() {
    PreferenceTab tab;
    m_editors->AddCodePage(*tab.AddGroup(tr("Code page")));

    auto* colours = new QGroupBox(tr("Colours"));
    auto* columns = new QHBoxLayout(colours);
    columns->setSpacing(32);
    const std::pair<Preference, QString> others[] = {
        {Preference::POSColorCurrent, tr("The &current block:")},
        {Preference::POSColorUnused, tr("Keys in &no block:")}};
    int block = 0;
    for (const auto& [preference, label] : others) {
        QFormLayout* form = NewForm();
        for (const int end = block + kPosBlocks / 2; block < end; ++block)
            m_editors->AddColour(*form, PosBlock(block), tr("Colour %1:").arg(block));
        m_editors->AddColour(*form, preference, label);
        columns->addLayout(form);
    }
    columns->addStretch(1);
    tab.column->addWidget(colours);

    auto* sample = new KeySample(6, [this] {
        using views::KeyState;
        KeySample::Look look;
        for (Integer nBlock = 0; nBlock < kPosBlocks; ++nBlock)
            look.caps.push_back(SampleKey(tr("Colour %1").arg(nBlock),
                                          m_settings.POSColorBlock(nBlock), KeyState::Programmed));
        look.caps.push_back(
            SampleKey(tr("Current"), m_settings.POSColorCurrent(), KeyState::Programmed));
        look.caps.back().isCurrent = true;
        look.caps.push_back(
            SampleKey(tr("In no block"), m_settings.POSColorUnused(), KeyState::Unused));
        return look;
    });
    m_editors->AddView([sample] { sample->update(); });
    tab.AddGroup(tr("Preview"))->addRow(sample);
    return tab.Done();
}

void PreferencesPage::ShowAppearance(Appearance appearance) {
    m_appearance->setCurrentIndex(m_appearance->findData(static_cast<int>(appearance)));
}

void PreferencesPage::ShowOwnLayout(const QString& name) {
    m_ownLayout->setText(name.isEmpty()
                             ? tr("A keyboard that has its own layout is shown with that one.")
                             : tr("The connected keyboard has its own layout: %1.").arg(name));
}

void PreferencesPage::ResetToDefaults() {
    const auto answer = QMessageBox::question(
        this, tr("Reset to defaults"),
        tr("Set all preferences to their defaults? The font size, the code page, what to begin "
           "with and the window's position do not change."),
        QMessageBox::Reset | QMessageBox::Cancel, QMessageBox::Cancel);
    if (answer != QMessageBox::Reset)
        return;
    m_settings.SetDefaults();
    host::UseColours(m_settings, FittingColours());
    ShowAll();
    emit Changed();
}

void PreferencesPage::Reveal(Preference preference) {
    auto* editor = m_tabs->findChild<QWidget*>(PreferenceEditors::NameOf(preference));
    if (editor == nullptr)
        return;
    for (int i = 0; i < m_tabs->count(); ++i)
        if (m_tabs->widget(i)->isAncestorOf(editor))
            m_tabs->setCurrentIndex(i);
    editor->setFocus();
    QMetaObject::invokeMethod( // when it has been laid out
        editor, [editor] { views::ScrollArea::Reveal(*editor, editor->rect()); },
        Qt::QueuedConnection);
}

int PreferencesPage::CurrentTab() const {
    return m_tabs->currentIndex();
}

void PreferencesPage::ShowTab(int tab) {
    m_tabs->setCurrentIndex(tab);
}

void PreferencesPage::showEvent(QShowEvent* event) {
    ShowAll(); // the program itself changes some
    QWidget::showEvent(event);
}

} // namespace qx::app
