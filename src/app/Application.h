// Application: the Qt application, in which no exception leaves an event handler.
//
// Everything that runs in the event loop passes notify: input, timers, queued calls and event
// filters, also below a modal dialog. An exception that reaches it ends what the user began, is
// shown in one message, and leaves the document as it is.
#pragma once

#include <QApplication>

#include <functional>

namespace qx::app {

class Application : public QApplication {
    Q_OBJECT
public:
    Application(int& argc, char** argv);

    // Shows the message; a box unless something else is put in.
    std::function<void(const QString& text, const QString& details)> show;

    bool notify(QObject* receiver, QEvent* event) override;

signals:
    void Failed(); // before the message is shown

private:
    void Report(const QString& details);

    bool m_isReporting = false; // further failures are part of the one that is shown
};

} // namespace qx::app
