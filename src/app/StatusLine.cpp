#include "app/StatusLine.h"

#include "host/Firmware.h"
#include "views/Bindings.h"
#include "views/PlainText.h"

#include <QLabel>
#include <QTimer>

namespace qx::app {

using views::ToQt;

namespace {

constexpr int kBriefly = 3000; // milliseconds

} // namespace

StatusLine::StatusLine(Workbench& workbench, QWidget* parent)
    : QStatusBar(parent), m_workbench(workbench), m_keyboard(new QLabel), m_brief(new QLabel) {
    m_keyboard->setObjectName(QStringLiteral("lblKeyboard"));
    for (QLabel* label : {m_keyboard, m_brief})
        label->setTextFormat(Qt::PlainText);
    m_keyboard->setMinimumWidth(1); // cut off in a narrow window
    m_brief->setObjectName(QStringLiteral("lblSaved"));
    addWidget(m_keyboard, 1);
    addPermanentWidget(m_brief);
    connect(&workbench, &Workbench::KeyboardChanged, this, &StatusLine::ShowKeyboard);
    ShowKeyboard();
}

void StatusLine::ShowBriefly(const QString& text) {
    m_brief->setText(text);
    QTimer::singleShot(kBriefly, m_brief, &QLabel::clear);
}

void StatusLine::ShowKeyboard() {
    setToolTip(views::Plain(m_workbench.DriverNote()));
    if (!m_workbench.IsConnected()) // the chip beside it shows that
        return m_keyboard->clear();
    const QXKeyboardAccess& access = m_workbench.Session().Access();
    QString text =
        tr("%1 — firmware %2, bootloader %3")
            .arg(ToQt(access.Keyboard()), ToQt(access.Program()), ToQt(access.Bootloader()));
    if (m_workbench.Simulated() != nullptr)
        text = tr("%1 — simulated keyboard").arg(text);
    const QString fault = FirmwareFault();
    if (!fault.isEmpty())
        text = tr("%1 — ⚠ firmware too old").arg(text);
    m_keyboard->setText(text);
    m_keyboard->setToolTip(views::Plain(fault));
    m_keyboard->setAccessibleDescription(fault);
}

QString StatusLine::FirmwareFault() const {
    const QXProgSettings& preferences = m_workbench.Preferences();
    const std::string& program = m_workbench.Session().Access().Program();
    if (!host::IsFirmwareTooOld(program, preferences))
        return {};
    return tr("The keyboard's firmware %1 is older than version %2, which the preferences require. "
              "Newer firmware can be loaded on the Keyboard files page.")
        .arg(ToQt(program), ToQt(host::FirmwareVersionText(preferences.VersionFirmware())));
}

} // namespace qx::app
