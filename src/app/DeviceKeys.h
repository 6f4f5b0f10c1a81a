// DeviceKeys: has an inspector record keys that are pressed on the connected keyboard.
//
// Meanwhile the keyboard reports its keys instead of typing. It types again when the recording
// ends, and that ends before anything else is done with the keyboard.
#pragma once

#include <QObject>
#include <QTimer>

namespace qx::views {
class SequenceInspector;
}

namespace qx::app {

class Workbench;

class DeviceKeys : public QObject {
    Q_OBJECT
public:
    // The workbench outlives this object, which belongs to the inspector.
    DeviceKeys(Workbench& workbench, views::SequenceInspector& inspector);
    ~DeviceKeys() override;

private:
    void Begin();
    void Ask();
    void End();

    Workbench& m_workbench;
    views::SequenceInspector& m_inspector;
    QTimer m_asking;
    bool m_isOn = false; // the keyboard reports its keys
};

} // namespace qx::app
