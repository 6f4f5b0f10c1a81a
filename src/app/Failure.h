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

// Both in the program's language, apart from what the system and the driver report themselves.
struct Failure {
    QString text;    // what went wrong, what the keyboard holds, what to do
    QString details; // the driver's calls, places, every fault of a document
};

// `what` is a sentence about the action that failed; may be empty.
[[nodiscard]] Failure FailureOf(const QString& what, const std::exception& error);

// The loss in a saved document, and its place.
[[nodiscard]] QString LossText(const host::Loss& loss);

// The information that could not be read at the keyboard's start-up.
[[nodiscard]] QString WarningText(const host::Error& warning);

// The part that a restored backup did not contain.
[[nodiscard]] QString NotRestoredText(const host::NotRestored& part);

// Shows a failure in a message box, with the details on request.
void ShowFailure(QWidget* parent, const Failure& failure);

} // namespace qx::app
