// QtPlatform: the services that the controls need of a Qt host.
//
// A host makes one on its user-interface thread after its QApplication, hands Services() to the
// controls that it creates, and keeps it alive as long as these.
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

// Repaints and runs timers, and keeps back what the user does meanwhile.
class QtPendingMessages : public PendingMessages {
public:
    void Process() override;
};

// Timers of Qt's event loop.
class QtFormTimers : public FormTimers {
public:
    [[nodiscard]] std::unique_ptr<FormTimer> Create() override;
};

// Shows the forms as dialogs before the window that is active, else before the parent.
class QtModalForms : public ModalForms {
public:
    explicit QtModalForms(QWidget* parent) : m_parent(parent) {}
    void ShowModal(frmSequencer& form) override;
    void ShowModal(frmPOSProgrammer& form) override;

    // See frmSequencer::pressTwinKey; for hosts of a simulated keyboard.
    std::function<void(Long)> pressTwinKey;

private:
    QPointer<QWidget> m_parent;
};

class QtPlatform {
public:
    // Boxes and dialogs belong to the parent, the host's main window.
    explicit QtPlatform(QWidget* parent = nullptr) : messageBoxes(parent), modalForms(parent) {}

    [[nodiscard]] Platform Services();

    QtMessageBoxes messageBoxes;
    QtWaitPointer waitPointer;
    QtPendingMessages pendingMessages;
    QtFormTimers formTimers;
    QtModalForms modalForms;
};

} // namespace qx::views
