// EditorTexts: the texts that the application gives its editors, in the user's language.
#pragma once

namespace qx {
class QXPOSProgrammer;
class QXSequencer;
} // namespace qx

namespace qx::app {

void TranslateEditors(QXSequencer& sequencer, QXPOSProgrammer& posProgrammer);

} // namespace qx::app
