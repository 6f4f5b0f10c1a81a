// Application: the Qt application; no exception leaves an event handler.
//
// Everything that runs in the event loop passes through notify: input, timers, queued calls and
// event filters, also below a modal dialog. An exception that reaches it ends the user's action, is
// shown in one message, and leaves the document unchanged.
#pragma once

#include <QApplication>

#include <functional>

namespace qx::app {

class Application : public QApplication {
    Q_OBJECT
public:
    Application(int& argc, char** argv);

    // Shows the message; a message box by default.
    std::function<void(const QString& text, const QString& details)> show;

    bool notify(QObject* receiver, QEvent* event) override;

signals:
    void Failed(); // before the message is shown

private:
    void Report(const QString& details);

    bool m_isReporting = false; // further failures belong to the one being shown
};

} // namespace qx::app
