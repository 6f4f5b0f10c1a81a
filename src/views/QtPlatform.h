// QtPlatform: the services that the controls need from a Qt program.
//
// The program creates one on its user-interface thread after its QApplication, passes Services() to
// the controls it creates, and keeps it alive as long as they live.
#pragma once

#include "qxcontrols/platform/Platform.h"

#include <QPointer>
#include <QWidget>

#include <functional>
#include <memory>

namespace qx::views {

class QtMessageBoxes : public MessageBoxes {
public:
    explicit QtMessageBoxes(QWidget* parent) : m_parent(parent) {}
    void Show(std::string_view sText) override;

private:
    QPointer<QWidget> m_parent;
};

class QtWaitPointer : public WaitPointer {
public:
    void Show() override;
    void Restore() override;
};

// Repaints and runs timers, but holds back user input.
class QtPendingMessages : public PendingMessages {
public:
    void Process() override;
};

// Timers on Qt's event loop.
class QtFormTimers : public FormTimers {
public:
    [[nodiscard]] std::unique_ptr<FormTimer> Create() override;
};

// Shows the forms as dialogs of the active window, or of the parent if none is active.
class QtModalForms : public ModalForms {
public:
    explicit QtModalForms(QWidget* parent) : m_parent(parent) {}
    void ShowModal(frmSequencer& form) override;
    void ShowModal(frmPOSProgrammer& form) override;

    // See frmSequencer::pressTwinKey; for programs with a simulated keyboard.
    std::function<void(Long)> pressTwinKey;

private:
    QPointer<QWidget> m_parent;
};

class QtPlatform {
public:
    // `parent` is the program's main window, which owns message boxes and dialogs.
    explicit QtPlatform(QWidget* parent = nullptr) : messageBoxes(parent), modalForms(parent) {}

    [[nodiscard]] Platform Services();

    QtMessageBoxes messageBoxes;
    QtWaitPointer waitPointer;
    QtPendingMessages pendingMessages;
    QtFormTimers formTimers;
    QtModalForms modalForms;
};

} // namespace qx::views
