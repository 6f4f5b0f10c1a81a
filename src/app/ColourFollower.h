// ColourFollower: the colours of the keys when the system turns light or dark while the
// application runs.
#pragma once

#include <QObject>

namespace qx::app {

class Workbench;

class ColourFollower : public QObject {
    Q_OBJECT
public:
    explicit ColourFollower(Workbench& workbench, QObject* parent = nullptr);

signals:
    // The keys have other colours now; windows with icons of the old ones should be made again.
    void Turned();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    Workbench& m_workbench;
};

} // namespace qx::app
