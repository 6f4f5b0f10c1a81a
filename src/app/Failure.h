// Failure: an error in the user's words.
#pragma once

#include "host/ConfigurationDocument.h"
#include "host/Error.h"

#include <QString>

#include <exception>

class QWidget;

namespace qx::host {
struct NotRestored;
} // namespace qx::host

namespace qx::app {

// Both in the program's language, apart from messages of the system and the driver.
struct Failure {
    QString text;    // the failure, the contents of the keyboard, the next step
    QString details; // the driver's calls, places, every fault of a document
    // That the window can offer as a button.
    enum class Remedy { None, Resolve, Backups } remedy = Remedy::None;
};

// `what` is a sentence about the action that failed; may be empty. For an error of a write, it is
// replaced by WriteFailureText.
[[nodiscard]] Failure FailureOf(const QString& what, const std::exception& error);

// The cause of a failed write, and the keyboard's state:
//
//   NotTouched      the cause and "Nothing was written."
//   Old             the cause and "The keyboard's contents have not changed."
//   New             "Only a second read showed that the write was complete." (ReadBackDiffers),
//                   "The driver reported a failure, but the write was complete."
//   PartlyWritten   the cause and "The keyboard is partly written."
//   Unknown         the cause and "The keyboard may be partly written."
//
// A cause that itself shows the keyboard's contents (host::ShowsWhatIsHeld) is the whole text.
// FailureOf adds the suggestion.
[[nodiscard]] QString WriteFailureText(const host::Error& error);

// The loss in a saved document, and its place.
[[nodiscard]] QString LossText(const host::Loss& loss);

// The information that could not be read at the keyboard's start-up.
[[nodiscard]] QString WarningText(const host::Error& warning);

// The part that a restored backup did not contain.
[[nodiscard]] QString NotRestoredText(const host::NotRestored& part);

// Shows a failure in a message box, with the details on request: for programs without a window.
void ShowFailure(QWidget* parent, const Failure& failure);

} // namespace qx::app
