// How long the application takes to its first picture, and how much memory it has had at most when
// it is ready to edit: qxfirstpaint START empty | application LAYOUTS
//
// START is the time at which the process was started, in nanoseconds of the system's clock; "empty"
// is a main window of the toolkit with nothing in it. Both print milliseconds from the start to the
// picture and the peak of the resident memory in KiB; bench/first-paint takes the ratios.
#include "app/Language.h"
#include "app/MainWindow.h"
#include "views/QtPlatform.h"

#include <QApplication>
#include <QEvent>
#include <QTemporaryDir>

#include <sys/resource.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>

namespace {

double MillisecondsSince(const char* start) {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::duration<double, std::milli>(
               now - std::chrono::nanoseconds(std::strtoll(start, nullptr, 10)))
        .count();
}

// Tells of a window's first picture; then gets ready, tells of the memory, and ends the program.
class FirstPaint : public QObject {
public:
    FirstPaint(QWidget& window, const char* start, std::function<void()> getReady)
        : m_start(start), m_getReady(std::move(getReady)) {
        window.installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            watched->removeEventFilter(this);
            QMetaObject::invokeMethod(this, &FirstPaint::Tell, Qt::QueuedConnection);
        }
        return QObject::eventFilter(watched, event);
    }

private:
    void Tell() {
        const double milliseconds = MillisecondsSince(m_start);
        m_getReady();
        QApplication::processEvents();
        rusage usage{};
        getrusage(RUSAGE_SELF, &usage);
        std::printf("%.1f %ld\n", milliseconds, usage.ru_maxrss);
        QApplication::exit();
    }

    const char* m_start;
    std::function<void()> m_getReady;
};

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    const bool isApplication = argc == 4 && std::strcmp(argv[2], "application") == 0;
    if (!isApplication && argc != 3)
        return 2;
    if (!isApplication) {
        QMainWindow window;
        const FirstPaint painted(window, argv[1], [] {});
        window.showMaximized();
        return QApplication::exec();
    }
    using namespace qx;
    const QTemporaryDir folder;
    const std::filesystem::path work = folder.path().toStdString();
    views::QtPlatform platform;
    app::Language language;
    app::Workbench workbench(platform.Services(), {{{}, work / "keyboard.qxk", "full"},
                                                   argv[3],
                                                   {},
                                                   work / "settings.ini",
                                                   work / "records"});
    app::MainWindow window(workbench, platform.Services(), language);
    const FirstPaint painted(window, argv[1], [&] {
        workbench.Connect();
        window.Transfers().Read();
        window.ShowPage(QStringLiteral("freeProgKeys"));
    });
    window.show();
    return QApplication::exec();
}
