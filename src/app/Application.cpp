#include "app/Application.h"

#include "app/Failure.h"

#include <exception>
#include <utility>

namespace qx::app {

Application::Application(int& argc, char** argv) : QApplication(argc, argv) {
    show = [](const QString& text, const QString& details) {
        ShowFailure(activeWindow(), {text, details});
    };
}

bool Application::notify(QObject* receiver, QEvent* event) {
    try {
        return QApplication::notify(receiver, event);
    } catch (const std::exception& error) {
        const Failure failure = FailureOf({}, error);
        Report((failure.text + QLatin1Char('\n') + failure.details).trimmed());
    } catch (...) {
        Report({});
    }
    return false;
}

// The message is queued: a box cannot be opened while a widget is being painted.
void Application::Report(const QString& details) {
    if (std::exchange(m_isReporting, true))
        return;
    emit Failed();
    const auto report = [this, details] {
        show(tr("Something unexpected went wrong, and the last action was not completed. The "
                "document is still open; save it under another name before you go on."),
             details);
        m_isReporting = false;
    };
    QMetaObject::invokeMethod(this, report, Qt::QueuedConnection);
}

} // namespace qx::app
