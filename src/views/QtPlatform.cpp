#include "views/QtPlatform.h"

#include "views/frmPOSProgrammerView.h"
#include "views/frmSequencerView.h"

#include <QApplication>
#include <QMessageBox>
#include <QThread>
#include <QTimer>

namespace qx::views {

namespace {

class QtFormTimer : public FormTimer {
public:
    QtFormTimer() {
        QObject::connect(&m_timer, &QTimer::timeout, [this] { Tick(); });
    }
    void SetInterval(int milliseconds) override {
        FormTimer::SetInterval(milliseconds);
        m_timer.setInterval(milliseconds);
    }
    void SetEnabled(bool fEnabled) override {
        FormTimer::SetEnabled(fEnabled);
        if (!fEnabled)
            m_timer.stop();
        else if (!m_timer.isActive())
            m_timer.start();
    }

private:
    QTimer m_timer;
};

// The window that owns a new one.
QWidget* Before(QWidget* parent) {
    if (QWidget* const modal = QApplication::activeModalWidget())
        return modal;
    QWidget* const active = QApplication::activeWindow();
    return active != nullptr ? active : parent;
}

} // namespace

void QtMessageBoxes::Show(std::string_view sText) {
    QMessageBox box(QMessageBox::Warning, QApplication::applicationDisplayName(),
                    QString::fromUtf8(sText.data(), static_cast<qsizetype>(sText.size())),
                    QMessageBox::Ok, Before(m_parent));
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

void QtWaitPointer::Show() {
    QApplication::setOverrideCursor(Qt::WaitCursor);
}

void QtWaitPointer::Restore() {
    QApplication::restoreOverrideCursor();
}

void QtPendingMessages::Process() {
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    QThread::msleep(1); // callers poll
}

std::unique_ptr<FormTimer> QtFormTimers::Create() {
    return std::make_unique<QtFormTimer>();
}

void QtModalForms::ShowModal(frmSequencer& form) {
    form.pressTwinKey = pressTwinKey;
    frmSequencerView(form, Before(m_parent)).exec();
    form.pressTwinKey = nullptr;
}

void QtModalForms::ShowModal(frmPOSProgrammer& form) {
    frmPOSProgrammerView(form, Before(m_parent)).exec();
}

Platform QtPlatform::Services() {
    Platform platform;
    platform.messageBoxes = &messageBoxes;
    platform.waitPointer = &waitPointer;
    platform.pendingMessages = &pendingMessages;
    platform.formTimers = &formTimers;
    platform.modalForms = &modalForms;
    return platform;
}

} // namespace qx::views
