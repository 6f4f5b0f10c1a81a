// The services of qxcontrols/platform on Windows: one small class for each, and all of them
// together.
#pragma once

#include "com/Environment.h"
#include "com/windows/LazyDriver.h"
#include "qxcontrols/platform/WindowsRegistry.h"

namespace qx::com {

class WindowsTickCounter : public TickCounter {
public:
    std::uint32_t GetTickCount() override;
};

class WindowsGuidCreator : public GuidCreator {
public:
    Guid CreateSafeGuid() override;
};

// Message boxes belong to the host's window.
class WindowsMessageBoxes : public MessageBoxes {
public:
    void Show(std::string_view sText) override;
};

class WindowsWaitPointer : public WaitPointer {
public:
    void Show() override;
    void Restore() override;
};

class WindowsPendingMessages : public PendingMessages {
public:
    void Process() override;
};

// So do forms.
class WindowsModalForms : public ModalForms {
public:
    void ShowModal(frmSequencer& form) override;
    void ShowModal(frmPOSProgrammer& form) override;
};

// The host's message loop drives the timers.
class WindowsFormTimers : public FormTimers {
public:
    std::unique_ptr<FormTimer> Create() override;
};

class Machine {
public:
    Machine();
    Machine(const Machine&) = delete;
    Machine& operator=(const Machine&) = delete;

    [[nodiscard]] const Environment& ForObjects() const { return m_environment; }
    void LetDriverGo() { m_driver.LetGo(); }

private:
    LazyDriver m_driver;
    WindowsRegistry m_registry;
    WindowsTickCounter m_tickCounter;
    WindowsGuidCreator m_guidCreator;
    WindowsMessageBoxes m_messageBoxes;
    WindowsWaitPointer m_waitPointer;
    WindowsPendingMessages m_pendingMessages;
    WindowsFormTimers m_formTimers;
    WindowsModalForms m_modalForms;
    Environment m_environment;
};

} // namespace qx::com
