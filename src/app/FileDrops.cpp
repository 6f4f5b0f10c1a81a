#include "app/FileDrops.h"

#include <QDropEvent>
#include <QMimeData>
#include <QRubberBand>
#include <QUrl>
#include <QWidget>

namespace qx::app {

namespace {

QStringList LocalFiles(const QMimeData& data) {
    QStringList files;
    for (const QUrl& url : data.urls())
        if (url.isLocalFile())
            files.append(url.toLocalFile());
    return files;
}

} // namespace

FileDrops::FileDrops(QWidget* window)
    : QObject(window), m_window(window), m_mark(new QRubberBand(QRubberBand::Rectangle, window)) {
    m_mark->setObjectName(QStringLiteral("dropMark"));
    m_mark->hide();
    window->setAcceptDrops(true);
    window->installEventFilter(this);
}

void FileDrops::Mark(bool isOn) {
    m_mark->setGeometry(m_window->rect());
    m_mark->setVisible(isOn);
    m_mark->raise();
}

bool FileDrops::eventFilter(QObject* watched, QEvent* event) {
    const auto type = event->type();
    if (type == QEvent::DragLeave)
        Mark(false);
    if (type != QEvent::DragEnter && type != QEvent::DragMove && type != QEvent::Drop)
        return QObject::eventFilter(watched, event);
    auto& drop = static_cast<QDropEvent&>(*event);
    const QStringList files = LocalFiles(*drop.mimeData());
    const bool isTaken = !files.isEmpty() && (drop.possibleActions() & Qt::CopyAction) != 0;
    Mark(isTaken && type != QEvent::Drop);
    if (!isTaken) {
        drop.ignore();
        return true;
    }
    drop.setDropAction(Qt::CopyAction); // never move: the source would delete the file
    drop.accept();
    if (type == QEvent::Drop)
        emit Dropped(files);
    return true;
}

} // namespace qx::app
