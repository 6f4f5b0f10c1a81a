#include "app/DeviceKeys.h"

#include "app/Failure.h"
#include "app/Workbench.h"
#include "views/SequenceInspector.h"

#include <utility>

namespace qx::app {

using host::Cause;
using views::SequenceInspector;

namespace {

constexpr int kInterval = 100; // milliseconds, as in the sequence editor

bool IsPressed(Long lCode) {
    return lCode != 0 && lCode != -1 && lCode != -2;
}

} // namespace

DeviceKeys::DeviceKeys(Workbench& workbench, SequenceInspector& inspector)
    : QObject(&inspector), m_workbench(workbench), m_inspector(inspector) {
    m_asking.setInterval(kInterval);
    m_asking.setSingleShot(true); // the keyboard may be slow to answer
    connect(&m_asking, &QTimer::timeout, this, &DeviceKeys::Ask);
    connect(&inspector, &SequenceInspector::DeviceWanted, this,
            [this](bool isWanted) { isWanted ? Begin() : End(); });
    const auto stop = [this] { m_inspector.StopRecording(); };
    connect(&workbench, &Workbench::Leaving, this, stop);
    connect(&workbench, &Workbench::Began, this, stop);
    const auto offer = [this] { m_inspector.OfferDevice(m_workbench.IsConnected()); };
    connect(&workbench, &Workbench::KeyboardChanged, this, offer);
    offer();
}

DeviceKeys::~DeviceKeys() {
    End();
}

void DeviceKeys::Begin() {
    try {
        m_workbench.Session().Run(host::Error(Cause::PositionModeNotEntered), [this] {
            m_isOn = m_workbench.Session().Access().EnablePositionProgMode();
        });
        m_asking.start();
    } catch (const host::Error& error) {
        m_inspector.StopRecording();
        emit m_workbench.Noticed(FailureOf({}, error).text);
    }
}

void DeviceKeys::Ask() {
    Long code = 0;
    try {
        m_workbench.Session().Run(host::Error(Cause::KeysNotAsked), [&] {
            code = m_workbench.Session().Access().GetPositionCodeKey();
        });
    } catch (const host::Error& error) {
        m_inspector.StopRecording();
        emit m_workbench.Noticed(FailureOf({}, error).text);
        return;
    }
    m_asking.start();
    if (IsPressed(code))
        m_inspector.TakeFromDevice(code);
}

void DeviceKeys::End() {
    m_asking.stop();
    if (!std::exchange(m_isOn, false) || !m_workbench.IsConnected())
        return;
    try {
        m_workbench.Session().Run(host::Error(Cause::PositionModeNotLeft), [this] {
            m_workbench.Session().Access().DisablePositionProgMode();
        });
    } catch (const host::Error& error) {
        emit m_workbench.Noticed(FailureOf({}, error).text);
    }
}

} // namespace qx::app
