// FileDrops: documents that are dropped on a window are opened, never moved.
#pragma once

#include <QObject>
#include <QStringList>

class QRubberBand;
class QWidget;

namespace qx::app {

class FileDrops : public QObject {
    Q_OBJECT
public:
    // Lets the window accept drops, and marks it while a file hovers over it.
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
