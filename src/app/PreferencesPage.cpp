#include "app/PreferencesPage.h"

#include "app/ColourButton.h"
#include "app/KeySample.h"
#include "app/Language.h"
#include "app/PreferenceTab.h"
#include "app/StartWizard.h"
#include "app/VersionBox.h"
#include "host/ColourSet.h"
#include "setup/LayoutSource.h"
#include "views/PlainText.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QSpinBox>
#include <QTabWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <limits>

namespace qx::app {

namespace {

constexpr int kMaxInteger = std::numeric_limits<Integer>::max();
constexpr int kPosBlocks = 10;

QString NameOf(Preference preference) {
    const std::string_view name = InfoOf(preference).property;
    return QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()));
}

QString NameOf(host::ColourSetId id) {
    switch (id) {
    case host::ColourSetId::Light:
        return PreferencesPage::tr("Light");
    case host::ColourSetId::Dark:
        return PreferencesPage::tr("Dark");
    case host::ColourSetId::Classic:
        return PreferencesPage::tr("Classic");
    }
    return {};
}

Preference PosBlock(int block) {
    return static_cast<Preference>(static_cast<int>(Preference::POSColorBlock0) + block);
}

QString PlainLabel(QString label) {
    return label.remove(u'&').remove(u':');
}

} // namespace

PreferencesPage::PreferencesPage(QXProgSettings& settings, const std::filesystem::path& layouts,
                                 QWidget* parent)
    : QWidget(parent), m_settings(settings), m_layouts(layouts) {
    m_tabs = new QTabWidget;
    m_tabs->addTab(MakeGeneralTab(), tr("General"));
    m_tabs->addTab(MakeLanguagesTab(), tr("Languages"));
    m_tabs->addTab(MakeKeyboardTab(), tr("Keyboard"));
    m_tabs->addTab(MakeKeyDisplayTab(), tr("Key display"));
    m_tabs->addTab(MakePosTab(), tr("POS keys"));

    auto* reset = new QPushButton(tr("Reset to defa&ults …"));
    reset->setObjectName(QStringLiteral("reset"));
    connect(reset, &QPushButton::clicked, this, [this] { ResetToDefaults(); });
    auto* column = new QVBoxLayout(this);
    column->setSpacing(12);
    column->addWidget(m_tabs);
    column->addWidget(reset, 0, Qt::AlignLeft);
    ShowAll();
}

QWidget* PreferencesPage::MakeGeneralTab() {
    PreferenceTab tab;
    QFormLayout* start = tab.AddGroup(tr("At the start"));
    AddCheck(*start, Preference::ShowStartupWizard, tr("&Ask how to begin"));
    AddChoice(*start, Preference::ShowStartupAction, tr("&Begin with:"),
              {{tr("What the keyboard holds"), static_cast<Integer>(StartChoice::ReadKeyboard)},
               {tr("The last document"), static_cast<Integer>(StartChoice::LastDocument)},
               {tr("The defaults"), static_cast<Integer>(StartChoice::Defaults)}});
    AddCheck(*start, Preference::NewDocumentOnStartup,
             tr("Begin with a &new document rather than the last one"));
    AddLastDocument(*start);

    QFormLayout* work = tab.AddGroup(tr("While you work"));
    AddCheck(*work, Preference::AutoSave, tr("&Save documents automatically"));
    AddCheck(*work, Preference::AutoTestdrive, tr("Open the &test page after writing"));
    AddCheck(*work, Preference::ShowUpcodes, tr("Show &released keys in sequences"));
    AddChoice(*work, Preference::AdvancedEditor, tr("&Open the sequence editor:"),
              {{tr("With its button"), Integer{0}},
               {tr("With its button or by typing on a sequence"), Integer{1}}});
    return tab.Done();
}

QWidget* PreferencesPage::MakeLanguagesTab() {
    PreferenceTab tab;
    QFormLayout* program = tab.AddGroup(tr("The program"));
    Choices languages{{tr("As the system"), Integer{0}}};
    for (const ProgramLanguage& language : kLanguages)
        languages.emplace_back(QString::fromUtf8(language.name), language.id);
    AddChoice(*program, Preference::PreferedAppLang, tr("&Language:"), languages);

    QFormLayout* keys = tab.AddGroup(tr("The keys"));
    Choices layouts{{tr("Standard (English, United States)"), Integer{0}}};
    for (const setup::LayoutEntry& entry : setup::ListLayouts(m_layouts))
        layouts.emplace_back(QString::fromStdString(entry.name), entry.language);
    AddChoice(*keys, Preference::PreferedKeyLang, tr("Key la&yout:"), layouts);
    return tab.Done();
}

QWidget* PreferencesPage::MakeKeyboardTab() {
    PreferenceTab tab;
    QFormLayout* link = tab.AddGroup(tr("Connection"));
    AddNumber(*link, Preference::CommandDelta,
              tr("&Command delta (0 unless the driver requires another):"), 0,
              std::numeric_limits<Long>::max());

    QFormLayout* chipcard = tab.AddGroup(tr("Chipcard programs"));
    AddNumber(*chipcard, Preference::ChipcardPort, tr("Serial &port:"), 0, kMaxInteger);
    AddNumber(*chipcard, Preference::ChipcardBaudrate, tr("&Baud rate (the driver's index):"), 0,
              kMaxInteger);

    QFormLayout* firmware = tab.AddGroup(tr("Firmware"));
    AddCheck(*firmware, Preference::VerifyFirmware, tr("Check the firmware at the &start"));
    AddNumber(*firmware, Preference::VersionFirmware, tr("&Oldest suitable version:"), 0,
              kMaxInteger, {}, new VersionBox);
    return tab.Done();
}

QWidget* PreferencesPage::MakeKeyDisplayTab() {
    PreferenceTab tab;
    QFormLayout* text = tab.AddGroup(tr("Captions"));
    AddNumber(*text, Preference::KeyFontSize, tr("&Font size:"), 4, 24, tr(" pt"));
    QFormLayout* colours = tab.AddGroup(tr("Colours"));
    AddColourSet(*colours);
    AddColour(*colours, Preference::ColorProg, tr("&Programmed keys:"));
    AddColour(*colours, Preference::ColorEmpty, tr("E&mpty keys:"));
    AddColour(*colours, Preference::ColorCurr, tr("The &current key:"));
    AddColour(*colours, Preference::ColorUnused, tr("Keys that are &not used:"));

    auto* sample = new KeySample(4, [this] {
        using views::KeyState;
        KeySample::Look look;
        look.caps = {SampleKey(tr("Enter"), m_settings.ColorProg(), KeyState::Programmed),
                     SampleKey(tr("Empty"), m_settings.ColorEmpty(), KeyState::Empty),
                     SampleKey(tr("Current"), m_settings.ColorCurr(), KeyState::Programmed),
                     SampleKey(tr("Unused"), m_settings.ColorUnused(), KeyState::Unused)};
        look.caps[2].isCurrent = true;
        look.pointSize = m_settings.KeyFontSize();
        return look;
    });
    sample->setObjectName(QStringLiteral("keySample"));
    m_shows.emplace_back([sample] { sample->update(); });
    tab.AddGroup(tr("How it looks"))->addRow(sample);
    return tab.Done();
}

QWidget* PreferencesPage::MakePosTab() {
    PreferenceTab tab;
    AddCodePage(*tab.AddGroup(tr("Code page")));

    auto* colours = new QGroupBox(tr("Colours"));
    auto* columns = new QHBoxLayout(colours);
    columns->setSpacing(32);
    const std::pair<Preference, QString> others[] = {
        {Preference::POSColorCurrent, tr("The &current block:")},
        {Preference::POSColorUnused, tr("Keys of &no block:")}};
    int block = 0;
    for (const auto& [preference, label] : others) {
        QFormLayout* form = NewPreferenceForm();
        for (const int end = block + kPosBlocks / 2; block < end; ++block)
            AddColour(*form, PosBlock(block), tr("Block %1:").arg(block));
        AddColour(*form, preference, label);
        columns->addLayout(form);
    }
    columns->addStretch(1);
    tab.column->addWidget(colours);

    auto* sample = new KeySample(6, [this] {
        using views::KeyState;
        KeySample::Look look;
        for (Integer nBlock = 0; nBlock < kPosBlocks; ++nBlock)
            look.caps.push_back(SampleKey(tr("Block %1").arg(nBlock),
                                          m_settings.POSColorBlock(nBlock), KeyState::Programmed));
        look.caps.push_back(
            SampleKey(tr("Current"), m_settings.POSColorCurrent(), KeyState::Programmed));
        look.caps.back().isCurrent = true;
        look.caps.push_back(SampleKey(tr("Unused"), m_settings.POSColorUnused(), KeyState::Unused));
        return look;
    });
    m_shows.emplace_back([sample] { sample->update(); });
    tab.AddGroup(tr("How it looks"))->addRow(sample);
    return tab.Done();
}

void PreferencesPage::AddCheck(QFormLayout& form, Preference preference, const QString& text) {
    auto* box = new QCheckBox(text);
    box->setObjectName(NameOf(preference));
    m_shows.emplace_back([this, box, preference] {
        box->setChecked(std::get<bool>(m_settings.Get(InfoOf(preference).property)));
    });
    connect(box, &QCheckBox::toggled, this,
            [this, preference](bool isOn) { Set(preference, isOn); });
    form.addRow(box);
    NoteLabel(preference, text);
}

void PreferencesPage::AddChoice(QFormLayout& form, Preference preference, const QString& label,
                                const Choices& choices) {
    auto* box = new QComboBox;
    box->setObjectName(NameOf(preference));
    box->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    for (const auto& [text, value] : choices)
        box->addItem(text, static_cast<int>(value));
    m_shows.emplace_back([this, box, preference] {
        const int value = Number(preference);
        if (box->findData(value) == -1) // another program's; it stays until another is chosen
            box->addItem(tr("Other (%1)").arg(value), value);
        box->setCurrentIndex(box->findData(value));
    });
    connect(box, &QComboBox::currentIndexChanged, this, [this, box, preference] {
        Set(preference, static_cast<Long>(box->currentData().toInt()));
    });
    form.addRow(label, box);
    NoteLabel(preference, label);
}

void PreferencesPage::AddNumber(QFormLayout& form, Preference preference, const QString& label,
                                int least, int greatest, const QString& unit, QSpinBox* box) {
    if (box == nullptr)
        box = new QSpinBox;
    box->setObjectName(NameOf(preference));
    box->setSuffix(unit);
    box->setRange(least, std::min(greatest, 99999)); // for its width
    box->setMinimumWidth(box->sizeHint().width());
    m_shows.emplace_back([this, box, preference, least, greatest] {
        const int value = Number(preference);
        box->setRange(std::min(least, value), std::max(greatest, value));
        box->setValue(value);
    });
    connect(box, &QSpinBox::valueChanged, this,
            [this, preference](int value) { Set(preference, static_cast<Long>(value)); });
    form.addRow(label, box);
    NoteLabel(preference, label);
}

void PreferencesPage::AddColour(QFormLayout& form, Preference preference, const QString& label) {
    auto* button = new ColourButton(InfoOf(preference).loadDefault);
    button->setObjectName(NameOf(preference));
    button->setAccessibleName(PlainLabel(label));
    m_shows.emplace_back([this, button, preference] { button->SetColour(Number(preference)); });
    connect(button, &ColourButton::Picked, this,
            [this, preference](Long lColor) { Set(preference, lColor); });
    form.addRow(label, button);
    NoteLabel(preference, label);
}

void PreferencesPage::AddColourSet(QFormLayout& form) {
    auto* box = new QComboBox;
    box->setObjectName(QStringLiteral("colourSet"));
    for (const host::ColourSetId id : host::kColourSets)
        box->addItem(NameOf(id), static_cast<int>(id));
    m_shows.emplace_back([this, box] {
        const auto used = host::ColoursInUse(m_settings);
        if (!used && box->findData(-1) == -1)
            box->addItem(tr("Your own"), -1);
        box->setCurrentIndex(box->findData(used ? static_cast<int>(*used) : -1));
    });
    connect(box, &QComboBox::activated, this, [this, box] {
        if (const int id = box->currentData().toInt(); id != -1) {
            host::UseColours(m_settings, static_cast<host::ColourSetId>(id));
            ShowAll();
            emit Changed();
        }
    });
    form.addRow(tr("Colour &set:"), box);
}

void PreferencesPage::AddCodePage(QFormLayout& form) {
    auto* file = new QLineEdit;
    file->setObjectName(NameOf(Preference::PosCodePage));
    file->setPlaceholderText(tr("None"));
    m_shows.emplace_back([this, file] {
        if (file->text() != Text(Preference::PosCodePage))
            file->setText(Text(Preference::PosCodePage));
    });
    const auto use = [this](const QString& path) {
        if (path != Text(Preference::PosCodePage))
            Set(Preference::PosCodePage, path.toStdString());
    };
    connect(file, &QLineEdit::editingFinished, this, [file, use] { use(file->text()); });
    auto* browse = new QPushButton(tr("B&rowse …"));
    browse->setObjectName(QStringLiteral("browseCodePage"));
    connect(browse, &QPushButton::clicked, this, [this, file, use] {
        const QString path =
            QFileDialog::getOpenFileName(this, tr("Code page of the POS keys"), file->text());
        if (!path.isEmpty())
            use(QDir::toNativeSeparators(path));
    });
    auto* row = new QHBoxLayout;
    row->setSpacing(8);
    row->addWidget(file, 1);
    row->addWidget(browse);
    form.setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    form.addRow(tr("F&ile:"), row);
    static_cast<QLabel*>(form.labelForField(row))->setBuddy(file);
    NoteLabel(Preference::PosCodePage, tr("Code page of the POS keys"));
}

void PreferencesPage::NoteLabel(Preference preference, const QString& label) {
    m_labels.emplace_back(preference, PlainLabel(label));
}

void PreferencesPage::AddLastDocument(QFormLayout& form) {
    auto* file = new QLabel;
    auto* forget = new QPushButton(tr("&Forget"));
    file->setObjectName(NameOf(Preference::LastDownloadFile));
    file->setTextFormat(Qt::PlainText);
    forget->setObjectName(QStringLiteral("forgetLastDocument"));
    forget->setAccessibleName(tr("Forget the last document"));
    m_shows.emplace_back([this, file, forget] {
        const QString path = Text(Preference::LastDownloadFile);
        const QString shown = path.isEmpty() ? tr("None") : QDir::toNativeSeparators(path);
        file->setText(file->fontMetrics().elidedText(shown, Qt::ElideMiddle, 360));
        file->setToolTip(path.isEmpty() ? QString() : views::Plain(shown));
        forget->setEnabled(!path.isEmpty());
    });
    connect(forget, &QPushButton::clicked, this,
            [this] { Set(Preference::LastDownloadFile, std::string()); });
    auto* row = new QHBoxLayout;
    row->setSpacing(12);
    row->addWidget(file);
    row->addWidget(forget);
    form.addRow(tr("Last document:"), row);
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
    ShowAll();
    emit Changed();
}

void PreferencesPage::ShowAll() {
    if (m_isShowing)
        return;
    const QScopedValueRollback showing(m_isShowing, true);
    for (const auto& show : m_shows)
        show();
}

void PreferencesPage::Set(Preference preference, const QXProgSettings::Value& value) {
    if (m_isShowing)
        return;
    m_settings.Set(InfoOf(preference).property, value);
    ShowAll();
    emit Changed();
}

Long PreferencesPage::Number(Preference preference) const {
    return std::get<Long>(m_settings.Get(InfoOf(preference).property));
}

QString PreferencesPage::Text(Preference preference) const {
    return QString::fromStdString(
        std::get<std::string>(m_settings.Get(InfoOf(preference).property)));
}

QWidget* PreferencesPage::Editor(Preference preference) const {
    return m_tabs->findChild<QWidget*>(NameOf(preference));
}

void PreferencesPage::Reveal(Preference preference) {
    QWidget* editor = Editor(preference);
    if (editor == nullptr)
        return;
    for (int i = 0; i < m_tabs->count(); ++i)
        if (m_tabs->widget(i)->isAncestorOf(editor))
            m_tabs->setCurrentIndex(i);
    editor->setFocus();
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
