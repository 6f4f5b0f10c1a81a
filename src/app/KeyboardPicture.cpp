#include "app/KeyboardPicture.h"

#include "app/LayoutCaps.h"
#include "app/SettingWords.h"
#include "app/Workbench.h"
#include "host/KeySenders.h"
#include "views/SentTexts.h"

namespace qx::app {

KeyboardPicture::KeyboardPicture(Workbench& workbench, QWidget* parent)
    : KeyGrid(parent), m_workbench(workbench) {
    setObjectName(QStringLiteral("keyboardPicture"));
    setAccessibleName(tr("Picture of the keyboard"));
    connect(this, &KeyGrid::KeyPicked, this, [this](int positionCode) {
        const Owner owner = OwnerOf(positionCode);
        emit PlaceChosen("/" + owner.section + "/" +
                         m_workbench.Faces().Of(owner.section).PlaceOf(owner.key));
    });
    const auto showLater = [this] { // the workbench is still at work
        QMetaObject::invokeMethod(this, &KeyboardPicture::ShowKeys, Qt::QueuedConnection);
    };
    for (const auto signal :
         {&Workbench::KeyboardChanged, &Workbench::DocumentChanged, &Workbench::LayoutChanged})
        connect(&workbench, signal, this, showLater);
}

// The section whose sequence the key sends, or else the first in which it can have one.
KeyboardPicture::Owner KeyboardPicture::OwnerOf(int positionCode) const {
    const auto code = static_cast<Integer>(positionCode);
    if (const auto sent = host::SentBy(m_workbench.WantedSections(), code))
        return {std::string(sent->section->Info().key), sent->key, sent->sequence};
    for (const auto& section : m_workbench.Configuration().Sections()) {
        if (!m_workbench.Has(*section))
            continue;
        const std::string name(section->Info().key);
        if (const int key = m_workbench.Faces().Of(name).KeyAt(code); key >= 0)
            return {name, key, nullptr};
    }
    return {};
}

void KeyboardPicture::ShowKeys() {
    if (!isVisible() || m_workbench.IsBusy())
        return;
    const QXProgSettings& preferences = m_workbench.Preferences();
    const QColor programmed = views::ToQColor(preferences.ColorProg());
    const QColor empty = views::ToQColor(preferences.ColorEmpty());
    const QColor unused = views::ToQColor(preferences.ColorUnused());
    views::SentTexts texts(&m_workbench.Layout());
    std::vector<views::KeyCap> caps = LayoutCaps(m_workbench.Layout());
    for (views::KeyCap& cap : caps) {
        const Owner owner = OwnerOf(cap.index);
        cap.isEnabled = owner.key >= 0;
        cap.state = owner.sent != nullptr ? views::KeyState::Programmed
                    : cap.isEnabled       ? views::KeyState::Empty
                                          : views::KeyState::Unused;
        cap.color = owner.sent != nullptr ? programmed : cap.isEnabled ? empty : unused;
        if (owner.sent == nullptr)
            continue;
        const QString sent = texts.Whole(*owner.sent);
        cap.toolTip += u'\n' + SectionTitle(owner.section) + QStringLiteral(": ") + sent;
        cap.name = tr("%1, programmed: %2").arg(cap.name, sent);
    }
    SetPointSize(preferences.KeyFontSize());
    SetKeys(std::move(caps));
}

void KeyboardPicture::showEvent(QShowEvent* event) {
    KeyGrid::showEvent(event);
    ShowKeys();
}

} // namespace qx::app
