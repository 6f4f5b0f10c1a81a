// FileDrops: opens documents dropped on a window, and never moves them.
#pragma once

#include <QObject>
#include <QStringList>

class QRubberBand;
class QWidget;

namespace qx::app {

class FileDrops : public QObject {
    Q_OBJECT
public:
    // Makes the window accept drops, and highlights it while a file is dragged over it.
    explicit FileDrops(QWidget* window);

signals:
    void Dropped(const QStringList& files); // at least one

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Mark(bool isOn);

    QWidget* m_window;
    QRubberBand* m_mark;
};

} // namespace qx::app
