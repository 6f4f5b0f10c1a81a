#include "views/TypedCodes.h"

#include "qxcontrols/keys/KeySequence.h"
#include "qxcontrols/keys/TypedText.h"
#include "views/Bindings.h"

namespace qx::views {

namespace {

constexpr Byte kEnter = 43; // its customary number, the same in every layout

} // namespace

TypedCodes::TypedCodes(const QString& text, bool withEnter, const QXKeyboardLayoutData& layout) {
    try {
        codes = CodesThatType(text.toStdString(), layout);
    } catch (const UntypableCharacter& error) {
        fault = tr("No key of this layout types \"%1\".").arg(ToQt(error.Character()));
        return;
    }
    if (withEnter)
        codes.insert(codes.end(), {kEnter, static_cast<Byte>(kEnter + kRelease)});
}

} // namespace qx::views
