// ControlTexts: the texts that the application gives its controls, in the user's language.
#pragma once

#include <QString>

#include <string_view>

namespace qx {
class QXPOSProgrammer;
class QXSequencer;
} // namespace qx
namespace qx::host {
class Configuration;
}

namespace qx::app {

// Gives every control its texts in the present language, and has it show them.
void TranslateControls(host::Configuration& configuration);
void TranslateEditors(QXSequencer& sequencer, QXPOSProgrammer& posProgrammer);

// The name of a section in the present language: "Magnetic card reader".
[[nodiscard]] QString SectionTitle(std::string_view sectionKey);

} // namespace qx::app
