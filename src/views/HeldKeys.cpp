#include "views/HeldKeys.h"

#include "qxcontrols/keys/KeyName.h"
#include "views/Bindings.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QToolButton>

#include <algorithm>

namespace qx::views {

namespace {

constexpr int kSpacing = 4;
constexpr QSize kLeastSize(32, 28);

struct Modifier {
    Byte key;
    const char* text;
};
// Their numbers are the same in every layout.
constexpr Modifier kModifiers[] = {
    {44, QT_TRANSLATE_NOOP("HeldKeys", "Shift")},
    {58, QT_TRANSLATE_NOOP("HeldKeys", "Ctrl")},
    {60, QT_TRANSLATE_NOOP("HeldKeys", "Alt")},
    {62, QT_TRANSLATE_NOOP("HeldKeys", "Alt Gr")},
};

} // namespace

HeldKeys::HeldKeys(QWidget* parent) : QWidget(parent) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins({});
    row->setSpacing(kSpacing);
    for (const Modifier& modifier : kModifiers) {
        auto* button = new QToolButton;
        button->setObjectName(QStringLiteral("hold_%1").arg(modifier.key));
        button->setCheckable(true);
        button->setMinimumSize(kLeastSize);
        connect(button, &QToolButton::toggled, this,
                [this, key = modifier.key](bool isHeld) { emit HeldChanged(key, isHeld); });
        m_keys.push_back(button);
        row->addWidget(button);
    }
    row->addStretch(1);
    ShowTexts();
}

void HeldKeys::ShowLayout(const QXKeyboardLayoutData* layout) {
    m_captions.clear();
    for (const Modifier& modifier : kModifiers)
        m_captions.push_back(ToQt(KeyLabel(modifier.key, layout)));
    ShowTexts();
}

void HeldKeys::Show(const std::vector<Byte>& held) {
    for (std::size_t i = 0; i < m_keys.size(); ++i)
        m_keys[i]->setChecked(std::ranges::find(held, kModifiers[i].key) != held.end());
}

void HeldKeys::ShowTexts() {
    for (std::size_t i = 0; i < m_keys.size(); ++i) {
        const bool isNamed = i < m_captions.size() && !m_captions[i].isEmpty();
        const QString text = isNamed ? m_captions[i] : tr(kModifiers[i].text);
        m_keys[i]->setText(text);
        m_keys[i]->setToolTip(tr("Hold %1 while the next key is pressed").arg(text));
    }
}

void HeldKeys::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        ShowTexts();
}

} // namespace qx::views
