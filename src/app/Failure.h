// Failure: what went wrong, as the user reads it.
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

// `what` names the thing that the user wanted and did not get, as a sentence; may be empty.
[[nodiscard]] Failure FailureOf(const QString& what, const std::exception& error);

// What a saved document has lost, and where.
[[nodiscard]] QString LossText(const host::Loss& loss);

// What the start-up of a keyboard did without.
[[nodiscard]] QString WarningText(const host::Error& warning);

// What a restored backup has not brought back.
[[nodiscard]] QString NotRestoredText(const host::NotRestored& part);

// Shows a failure in a box, with the details on request.
void ShowFailure(QWidget* parent, const Failure& failure);

} // namespace qx::app
