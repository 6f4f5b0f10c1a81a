// The application's time to its first picture, and its peak memory until it is ready to edit:
// qxfirstpaint START empty | application LAYOUTS
//
// START is the time at which the process was started, in nanoseconds of the system's clock; "empty"
// is a main window of the toolkit with nothing in it. Both print milliseconds from the start to the
// first picture and to the one with everything in it, which is the same for the empty window, and
// the peak of the resident memory in KiB; bench/first-paint takes the ratios.
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

// Notes when a window's first picture is there.
class FirstPaint : public QObject {
public:
    FirstPaint(QWidget& window, const char* start, std::function<void()> painted)
        : m_start(start), m_painted(std::move(painted)) {
        window.installEventFilter(this);
    }

    [[nodiscard]] double Milliseconds() const { return m_milliseconds; }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            watched->removeEventFilter(this);
            QMetaObject::invokeMethod(this, &FirstPaint::Note, Qt::QueuedConnection);
        }
        return QObject::eventFilter(watched, event);
    }

private:
    void Note() {
        m_milliseconds = MillisecondsSince(m_start);
        m_painted();
    }

    const char* m_start;
    std::function<void()> m_painted;
    double m_milliseconds = 0;
};

void Report(double first, double whole) {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    std::printf("%.1f %.1f %ld\n", first, whole, usage.ru_maxrss);
    QApplication::exit();
}

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    const bool isApplication = argc == 4 && std::strcmp(argv[2], "application") == 0;
    if (!isApplication && argc != 3)
        return 2;
    if (!isApplication) {
        QMainWindow window;
        const FirstPaint painted(window, argv[1],
                                 [&] { Report(painted.Milliseconds(), painted.Milliseconds()); });
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
    const FirstPaint painted(window, argv[1], [] {});
    const auto getReady = [&] {
        window.repaint();
        const double whole = MillisecondsSince(argv[1]);
        workbench.Connect();
        window.Transfers().Read();
        window.ShowPage(QStringLiteral("freeProgKeys"));
        QApplication::processEvents();
        Report(painted.Milliseconds(), whole);
    };
    QObject::connect(&window, &app::MainWindow::Appeared, &window, getReady, Qt::QueuedConnection);
    window.show();
    return QApplication::exec();
}
