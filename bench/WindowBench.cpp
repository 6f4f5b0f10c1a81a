// The application's window, with a keyboard in which every module has something:
// qxwindowbench LAYOUTS
//
// Prints the processor time of selecting another key on the pages of keys, until the window shows
// it; then the number of pictures, and the longest time between two, while a driver library takes
// two seconds to read the keyboard, once without a word and once reporting its progress.
#include "app/Appearance.h"
#include "app/Language.h"
#include "app/MainWindow.h"
#include "files/Files.h"
#include "views/KeyGrid.h"
#include "views/QtPlatform.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <tuple>

namespace {

// Counts the pictures of anything in the program.
class Pictures : public QObject {
public:
    Pictures() {
        m_since.start();
        qApp->installEventFilter(this);
    }

    void Begin() {
        m_count = 0;
        m_longest = 0;
        m_since.restart();
    }
    void End() { m_longest = std::max(m_longest, m_since.elapsed()); }
    [[nodiscard]] int Count() const { return m_count; }
    [[nodiscard]] qint64 Longest() const { return m_longest; } // in milliseconds

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            ++m_count;
            m_longest = std::max(m_longest, m_since.restart());
        }
        return QObject::eventFilter(watched, event);
    }

private:
    QElapsedTimer m_since; // the last picture
    int m_count = 0;
    qint64 m_longest = 0;
};

constexpr int kSelections = 500;

void MeasureSelections(qx::app::MainWindow& window) {
    for (const auto& [page, first, second] :
         {std::tuple{"freeProgKeys", 75, 90}, {"layeredFuncKeys", 3, 17}, {"pos", 12, 50}}) {
        window.ShowPage(QString::fromLatin1(page));
        QApplication::processEvents();
        qx::views::KeyGrid* shown = nullptr;
        for (auto* grid : window.findChildren<qx::views::KeyGrid*>())
            if (grid->isVisible())
                shown = grid;
        const std::clock_t start = std::clock();
        for (int i = 0; i < kSelections; ++i) {
            shown->Pick(i % 2 == 0 ? first : second);
            QApplication::processEvents();
        }
        std::printf("a selection on the page %s: %.2f ms of processor time\n", page,
                    1000.0 * static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC /
                        kSelections);
    }
}

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    if (argc != 2)
        return 2;
    using namespace qx;
    const QTemporaryDir folder;
    const std::filesystem::path work = folder.path().toStdString();
    views::QtPlatform platform;
    app::Language language;
    const setup::KeyboardChoice slow{QX_WILD_DRIVER, work / "keyboard.qxk", "full"};
    app::Workbench workbench(platform.Services(),
                             {slow, argv[1], {}, work / "settings.ini", work / "records"});
    app::UseAppearance(workbench.Appearance());
    app::MainWindow window(workbench, platform.Services(), language);
    Pictures pictures;
    QObject::connect(&workbench, &app::Workbench::Began, &window, [&] { pictures.Begin(); });
    QObject::connect(&workbench, &app::Workbench::Ended, &window, [&] { pictures.End(); });
    const auto measure = [&] {
        workbench.Connect();
        window.Transfers().Read();
        MeasureSelections(window);
        for (const char* behaviour : {"silent 2000", "slow 2000"}) {
            files::WriteFileAtomically(work / "keyboard.qxk.wild",
                                       std::string("QXCFG_ImageLoad ") + behaviour);
            workbench.Connect();
            QApplication::processEvents();
            window.Transfers().Read();
            std::printf("a driver that is %s ms: %d pictures, at most %lld ms apart\n", behaviour,
                        pictures.Count(), static_cast<long long>(pictures.Longest()));
        }
        QApplication::exit();
    };
    QObject::connect(&window, &app::MainWindow::Appeared, &window, measure, Qt::QueuedConnection);
    window.show();
    return QApplication::exec();
}
