#include "app/ControlDisplay.h"

#include "host/CopiedKeyboard.h"
#include "qxcontrols/device/MemoryMap.h"
#include "qxcontrols/keyprog/QXFreeProgKeys.h"
#include "qxcontrols/keyprog/QXLayeredFuncKeys.h"
#include "qxcontrols/readers/QXBarcode.h"
#include "qxcontrols/readers/QXMagnetCard.h"

#include <utility>

namespace qx::app {

using host::Section;

namespace {

constexpr const char* kMagnetCard = "magnetCard";
constexpr const char* kLayeredFuncKeys = "layeredFuncKeys";

// A keyboard with every ability, and no more than its directory needs to be one.
host::KeyboardContent AbleKeyboard() {
    host::KeyboardContent content;
    content.identity.identification = std::string(kIdentificationSize, ' ');
    content.identity.capabilities = 0xFF;
    content.identity.directory = {{MODULE_MAGNET_CONFIG, 0}};
    return content;
}

} // namespace

ControlDisplay::ControlDisplay(host::Configuration& configuration,
                               const QXProgSettings& preferences)
    : m_configuration(configuration), m_preferences(preferences),
      m_layer(ControlOf<QXLayeredFuncKeys>(kLayeredFuncKeys).Refreshed.Subscribe([this] {
          ShowLayerOnKeyboard();
      })) {
    FollowNone();
}

void ControlDisplay::Follow(host::Session& keyboard) {
    for (Section* section : keyboard.Present(m_configuration, true))
        section->Follow(&keyboard.Access());
    ListTracks();
}

// Which tracks there are is for a keyboard to tell: the control sees one that reads them all.
void ControlDisplay::FollowNone() {
    for (const auto& section : m_configuration.Sections())
        section->Follow(nullptr);
    host::CopiedKeyboard able(AbleKeyboard());
    host::Session session(able);
    session.Open();
    auto& control = ControlOf<QXMagnetCard>(kMagnetCard);
    control.SetKeyboard(&session.Access());
    ListTracks();
    control.SetKeyboard(nullptr);
}

// The track that is shown is one of the list.
void ControlDisplay::ListTracks() {
    auto& control = ControlOf<QXMagnetCard>(kMagnetCard);
    control.RescanTracks();
    if (control.trackList.ListIndex != -1 || control.trackList.Items.empty())
        return;
    control.trackList.ListIndex = 0;
    control.trackList_Click();
}

void ControlDisplay::ApplyPreferences() {
    ShowReleases();
    for (const auto& section : m_configuration.Sections()) {
        ModuleControl& control = section->Control();
        if (auto* keys = dynamic_cast<QXFreeProgKeys*>(&control))
            keys->KeyFontSizeChanged(m_preferences.KeyFontSize());
        control.ReloadKeySettings();
        control.ReloadColor();
    }
}

// The pages show released keys as the preference says, until the user wants it otherwise on a page.
void ControlDisplay::ShowReleases() {
    const bool isWanted = m_preferences.ShowUpcodes();
    if (std::exchange(m_showsReleases, isWanted) == isWanted)
        return;
    const auto show = [isWanted](auto* control) {
        if (control == nullptr)
            return;
        control->chkShowDetails.Value = isWanted ? 1 : 0;
        control->chkShowDetails_Click();
    };
    for (const auto& section : m_configuration.Sections()) {
        ModuleControl* control = &section->Control();
        show(dynamic_cast<QXMagnetCard*>(control));
        show(dynamic_cast<QXBarcode*>(control));
        show(dynamic_cast<QXFreeProgKeys*>(control));
        show(dynamic_cast<QXLayeredFuncKeys*>(control));
    }
}

// The keyboard's own keys follow the layer that is shown.
void ControlDisplay::ShowLayerOnKeyboard() {
    auto& control = ControlOf<QXLayeredFuncKeys>(kLayeredFuncKeys);
    if (std::exchange(m_shownLayer, control.CurrentLayer()) != control.CurrentLayer())
        control.ShowCurrentSelectedLayerOnKeyboard();
}

} // namespace qx::app
