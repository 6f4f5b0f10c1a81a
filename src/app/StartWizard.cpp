#include "app/StartWizard.h"

#include "app/Help.h"

#include <QCheckBox>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace qx::app {

namespace {

constexpr int kWidth = 432; // of a choice

// A button with a title and a description below it.
class ChoiceButton : public QPushButton {
public:
    ChoiceButton(const QString& title, const QString& description) {
        auto* heading = new QLabel(title);
        QFont font = heading->font();
        font.setBold(true);
        heading->setFont(font);
        heading->setBuddy(this); // the title's mnemonic then clicks the button
        auto* text = new QLabel(description);
        text->setWordWrap(true);
        text->setTextFormat(Qt::PlainText);
        auto* column = new QVBoxLayout(this);
        column->setContentsMargins(16, 8, 16, 8);
        column->setSpacing(4);
        QPalette legible = text->palette(); // the text is the reason why a choice is disabled
        legible.setBrush(QPalette::Disabled, QPalette::ButtonText,
                         legible.brush(QPalette::Active, QPalette::PlaceholderText));
        for (QLabel* label : {heading, text}) {
            label->setPalette(legible);
            label->setForegroundRole(QPalette::ButtonText);
            label->setAttribute(Qt::WA_TransparentForMouseEvents);
            column->addWidget(label);
        }
        setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Minimum);
        setAccessibleName(QString(title).remove(u'&'));
        setAccessibleDescription(description);
    }

    [[nodiscard]] QSize sizeHint() const override {
        return {kWidth, layout()->totalHeightForWidth(kWidth)};
    }
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }
};

void StoreChoice(QXProgSettings& settings, StartChoice choice) {
    settings.SetShowStartupAction(static_cast<Integer>(choice));
    settings.SetNewDocumentOnStartup(choice != StartChoice::LastDocument);
}

} // namespace

std::optional<StartChoice> StoredStart(const QXProgSettings& settings) {
    if (settings.GetShowStartupWizard())
        return {};
    if (!settings.NewDocumentOnStartup() && !settings.GetLastDownloadFile().empty())
        return StartChoice::LastDocument;
    switch (const auto choice = static_cast<StartChoice>(settings.GetShowStartupAction())) {
    case StartChoice::ReadKeyboard:
    case StartChoice::LastDocument:
        return choice;
    default: // or another program's
        return StartChoice::Defaults;
    }
}

void StoreStart(QXProgSettings& settings, std::optional<StartChoice> choice) {
    settings.SetShowStartupWizard(!choice);
    if (choice)
        StoreChoice(settings, *choice);
}

StartWizard::StartWizard(QXProgSettings& settings, bool isConnected, QWidget* parent)
    : QDialog(parent), m_settings(settings) {
    setWindowTitle(tr("Start"));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(24, 24, 24, 24);
    column->setSpacing(8);
    auto* question = new QLabel(tr("What would you like to begin with?"));
    QFont font = question->font();
    font.setPointSizeF(font.pointSizeF() * 1.3);
    question->setFont(font);
    column->addWidget(question);
    column->addSpacing(8);

    auto* read = AddChoice(StartChoice::ReadKeyboard, "readKeyboard", tr("&Read the keyboard"),
                           isConnected ? tr("Show and change what the keyboard holds now.")
                                       : tr("No keyboard is connected."));
    read->setEnabled(isConnected);

    const QFileInfo file(QString::fromStdString(settings.GetLastDownloadFile()));
    QString description = tr("Continue with %1.").arg(file.fileName());
    if (!file.exists())
        description = tr("%1 is no longer there.").arg(QDir::toNativeSeparators(file.filePath()));
    auto* open = AddChoice(StartChoice::LastDocument, "lastDocument", tr("&Open the last document"),
                           description);
    open->setEnabled(file.exists());
    open->setVisible(!file.filePath().isEmpty()); // at the first start there is none

    auto* defaults =
        AddChoice(StartChoice::Defaults, "defaults", tr("Start from the &defaults"),
                  tr("A new document with default settings; no keyboard needs to be connected."));

    auto* again = new QCheckBox(tr("&Show this at startup"));
    again->setObjectName(QStringLiteral("ShowStartupWizard"));
    again->setChecked(settings.GetShowStartupWizard());
    connect(again, &QCheckBox::toggled, this,
            [this](bool isOn) { m_settings.SetShowStartupWizard(isOn); });
    column->addSpacing(8);
    column->addWidget(again);
    column->addStretch(1);
    OfferHelp(*this, QStringLiteral("start"));

    const std::pair<StartChoice, QPushButton*> choices[] = {{StartChoice::ReadKeyboard, read},
                                                            {StartChoice::LastDocument, open},
                                                            {StartChoice::Defaults, defaults}};
    QPushButton* first = nullptr;
    for (const auto& [choice, button] : choices) {
        const bool isPreferred = static_cast<Integer>(choice) == settings.GetShowStartupAction();
        if (button->isEnabled() && (first == nullptr || isPreferred)) {
            first = button;
            m_choice = choice;
        }
    }
    first->setDefault(true);
    first->setFocus();
}

QPushButton* StartWizard::AddChoice(StartChoice choice, const char* name, const QString& title,
                                    const QString& description) {
    auto* button = new ChoiceButton(title, description);
    button->setObjectName(QLatin1String(name));
    connect(button, &QPushButton::clicked, this, [this, choice] {
        m_choice = choice;
        StoreChoice(m_settings, choice);
        accept();
    });
    layout()->addWidget(button);
    return button;
}

} // namespace qx::app
