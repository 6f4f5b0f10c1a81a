// How long the application takes to its first picture, and how much memory it then has had at most:
// qxfirstpaint empty | application LAYOUTS
//
// "empty" is a main window of the toolkit with nothing in it. Both print milliseconds since the
// start of the process and the peak of the resident memory in KiB; bench/first-paint takes the
// ratios.
#include "app/Language.h"
#include "app/MainWindow.h"
#include "views/QtPlatform.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QTemporaryDir>

#include <sys/resource.h>

#include <cstdio>
#include <cstring>
#include <functional>

namespace {

// Ends the program after the window has painted.
class FirstPaint : public QObject {
public:
    explicit FirstPaint(const QElapsedTimer& clock) : m_clock(clock) {}

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            watched->removeEventFilter(this);
            QMetaObject::invokeMethod(
                this,
                [this] {
                    rusage usage{};
                    getrusage(RUSAGE_SELF, &usage);
                    std::printf("%.1f %ld\n",
                                static_cast<double>(m_clock.nsecsElapsed()) / 1'000'000,
                                usage.ru_maxrss);
                    QApplication::exit();
                },
                Qt::QueuedConnection);
        }
        return QObject::eventFilter(watched, event);
    }

private:
    const QElapsedTimer& m_clock;
};

} // namespace

int main(int argc, char** argv) {
    QElapsedTimer clock;
    clock.start();
    QApplication application(argc, argv);
    FirstPaint painted(clock);
    if (argc == 3 && std::strcmp(argv[1], "application") == 0) {
        using namespace qx;
        const QTemporaryDir folder;
        const std::filesystem::path work = folder.path().toStdString();
        views::QtPlatform platform;
        app::Language language;
        app::Workbench workbench(platform.Services(), {{{}, work / "keyboard.qxk", {}},
                                                       argv[2],
                                                       {},
                                                       work / "settings.ini",
                                                       work / "records"});
        app::MainWindow window(workbench, platform.Services(), language);
        window.Connect(workbench.Choice());
        window.Transfers().Read();
        window.installEventFilter(&painted);
        window.show();
        return QApplication::exec();
    }
    QMainWindow window;
    window.installEventFilter(&painted);
    window.showMaximized();
    return QApplication::exec();
}
