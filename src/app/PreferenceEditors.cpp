#include "app/PreferenceEditors.h"

#include "app/ColourButton.h"
#include "app/StartWizard.h"
#include "host/ColourSet.h"
#include "views/PlainText.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QSpinBox>

#include <algorithm>
#include <limits>
#include <optional>

namespace qx::app {

namespace {

constexpr int kAsk = -1; // among the values of StartChoice

QString TitleOf(host::ColourSetId id) {
    switch (id) {
    case host::ColourSetId::Light:
        return PreferenceEditors::tr("Light");
    case host::ColourSetId::Dark:
        return PreferenceEditors::tr("Dark");
    case host::ColourSetId::Classic:
        return PreferenceEditors::tr("Classic");
    }
    return {};
}

// Of all numbers, whatever their ranges.
int NumberWidth() {
    QSpinBox widest;
    widest.setMaximum(std::numeric_limits<int>::max());
    return widest.sizeHint().width();
}

QString PlainLabel(QString label) {
    return label.remove(u'&').remove(u':');
}

} // namespace

QString PreferenceEditors::NameOf(Preference preference) {
    const std::string_view name = InfoOf(preference).property;
    return QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()));
}

void PreferenceEditors::AddCheck(QFormLayout& form, Preference preference, const QString& text) {
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

void PreferenceEditors::AddChoice(QFormLayout& form, Preference preference, const QString& label,
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

void PreferenceEditors::AddNumber(QFormLayout& form, Preference preference, const QString& label,
                                  int least, int greatest, const QString& unit, QSpinBox* box) {
    if (box == nullptr)
        box = new QSpinBox;
    box->setObjectName(NameOf(preference));
    box->setSuffix(unit);
    box->setFixedWidth(NumberWidth());
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

void PreferenceEditors::AddColour(QFormLayout& form, Preference preference, const QString& label) {
    auto* button = new ColourButton(
        [this, preference] { return host::DesignedColour(m_settings, preference); });
    button->setObjectName(NameOf(preference));
    button->setAccessibleName(PlainLabel(label));
    m_shows.emplace_back([this, button, preference] { button->SetColour(Number(preference)); });
    connect(button, &ColourButton::Picked, this,
            [this, preference](Long lColor) { Set(preference, lColor); });
    form.addRow(label, button);
    NoteLabel(preference, label);
}

void PreferenceEditors::AddColourSet(QFormLayout& form) {
    auto* box = new QComboBox;
    box->setObjectName(QStringLiteral("colourSet"));
    for (const host::ColourSetId id : host::kColourSets)
        box->addItem(TitleOf(id), static_cast<int>(id));
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

void PreferenceEditors::AddStart(QFormLayout& form) {
    auto* box = new QComboBox;
    box->setObjectName(NameOf(Preference::ShowStartupAction));
    const std::pair<QString, std::optional<StartChoice>> choices[] = {
        {tr("Ask"), {}},
        {tr("Read the keyboard"), StartChoice::ReadKeyboard},
        {tr("Open the last document"), StartChoice::LastDocument},
        {tr("Start from the defaults"), StartChoice::Defaults}};
    for (const auto& [text, choice] : choices)
        box->addItem(text, choice ? static_cast<int>(*choice) : kAsk);
    m_shows.emplace_back([this, box] {
        const auto stored = StoredStart(m_settings);
        box->setCurrentIndex(box->findData(stored ? static_cast<int>(*stored) : kAsk));
    });
    connect(box, &QComboBox::activated, this, [this, box] {
        const int choice = box->currentData().toInt();
        StoreStart(m_settings,
                   choice == kAsk ? std::nullopt : std::optional(static_cast<StartChoice>(choice)));
        ShowAll();
        emit Changed();
    });
    const QString label = tr("&Begin with:");
    form.addRow(label, box);
    NoteLabel(Preference::ShowStartupAction, label);
}

void PreferenceEditors::AddCodePage(QFormLayout& form) {
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
    auto* browse = new QPushButton(tr("B&rowse…"));
    browse->setObjectName(QStringLiteral("browseCodePage"));
    connect(browse, &QPushButton::clicked, this, [file, use] {
        const QString path = QFileDialog::getOpenFileName(
            file->window(), tr("Code page of the POS keys"), file->text());
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

void PreferenceEditors::AddLastDocument(QFormLayout& form) {
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
    row->setSpacing(16);
    row->addWidget(file);
    row->addWidget(forget);
    form.addRow(tr("Last document:"), row);
}

void PreferenceEditors::NoteLabel(Preference preference, const QString& label) {
    m_labels.emplace_back(preference, PlainLabel(label));
}

void PreferenceEditors::ShowAll() {
    if (m_isShowing)
        return;
    const QScopedValueRollback showing(m_isShowing, true);
    for (const auto& show : m_shows)
        show();
}

void PreferenceEditors::Set(Preference preference, const QXProgSettings::Value& value) {
    if (m_isShowing)
        return;
    m_settings.Set(InfoOf(preference).property, value);
    ShowAll();
    emit Changed();
}

Long PreferenceEditors::Number(Preference preference) const {
    return std::get<Long>(m_settings.Get(InfoOf(preference).property));
}

QString PreferenceEditors::Text(Preference preference) const {
    return QString::fromStdString(
        std::get<std::string>(m_settings.Get(InfoOf(preference).property)));
}

} // namespace qx::app
