// Makes pictures of all pages and states of the application:
//   qxscreenshots FOLDER LAYOUTS LANGUAGE LOOK [WIDTH HEIGHT]
// and lists, on standard output, where one of them is cut, crowded or crooked.
//
// The look is "light" or "dark", which are the same on every system, or "system", the system's own.
// They show a separate simulated keyboard with a few settings; `make` beside this file and
// packaging/windows/pictures run it for all combinations.
#include "LayoutFaults.h"
#include "app/Appearance.h"
#include "app/Language.h"
#include "app/MainWindow.h"
#include "app/Paths.h"
#include "app/StartWizard.h"
#include "qxcontrols/keyprog/QXFreeProgKeys.h"
#include "qxcontrols/keyprog/QXLayeredFuncKeys.h"
#include "simulator/SimulatedDriver.h"
#include "views/KeyGrid.h"
#include "views/QtPlatform.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QEventLoop>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QTabWidget>
#include <QTimer>
#include <QTreeWidget>

#include <cstdio>
#include <filesystem>
#include <fstream>

namespace {

using namespace qx;

constexpr const char* kSettings = R"({ "format": "qx-configuration", "version": 1,
  "commonKeyboard": { "outputDelay": 9 },
  "freeProgKeys": { "keys": [
    { "positionCode": 75, "sequence": "Ctrl+C" }, { "positionCode": 80, "sequence": "Alt+F4" },
    { "positionCode": 112, "sequence": "Esc Enter" }, { "positionCode": 113, "sequence": "1 2 3" } ] },
  "layeredFuncKeys": { "keys": [
    { "layer": 0, "key": 0, "sequence": "F1", "description": "Cash" },
    { "layer": 0, "key": 1, "sequence": "F2", "description": "Card" },
    { "layer": 0, "key": 2, "sequence": "F3", "description": "Voucher" },
    { "layer": 0, "key": 13, "sequence": "Ctrl+P", "description": "Print the last receipt again" } ] },
  "pos": { "blocks": [
    { "slot": 1, "blockId": 1, "colorId": 0, "keys": [1, 2, 16, 17], "sequence": "A" },
    { "slot": 5, "blockId": 2, "colorId": 1, "keys": [5, 20, 35], "sequence": "B" } ] } })";

class Camera {
public:
    explicit Camera(QString folder) : m_folder(std::move(folder)) {}

    // Takes the window, with the one that pops up over it if there is one.
    void Take(QWidget& window, const QString& name, QWidget* popup = nullptr) {
        QEventLoop waiting; // for the user
        QTimer::singleShot(1, &waiting, &QEventLoop::quit);
        waiting.exec();
        for (int round = 0; round < 5; ++round) // a layout may ask for another
            QApplication::processEvents();
        for (const QString& fault : test::LayoutFaults(window))
            std::printf("%s: %s\n", qUtf8Printable(name), qUtf8Printable(fault));
        QPixmap picture = window.grab();
        if (popup != nullptr)
            QPainter(&picture).drawPixmap(window.mapFromGlobal(popup->geometry().topLeft()),
                                          popup->grab());
        picture.save(QStringLiteral("%1/%2.png").arg(m_folder, name));
    }
    // Takes the dialog that the action opens, and leaves it with its button of this name, or gives
    // it up.
    void TakeDialog(const QString& name, const std::function<void()>& open,
                    const QString& button = {}) {
        QTimer watch;
        QObject::connect(&watch, &QTimer::timeout, [this, name, button, &watch] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (dialog == nullptr || !dialog->isVisible())
                return;
            watch.stop();
            Take(*dialog, name);
            if (button.isEmpty())
                dialog->reject();
            else
                dialog->findChild<QAbstractButton*>(button)->click();
        });
        watch.start(100);
        open();
    }

private:
    QString m_folder;
};

// The page as it is with this document; where it has a choice, something that is programmed.
void ShowPage(app::MainWindow& window, const QString& id) {
    if (id == QLatin1String("freeProgKeys"))
        window.GoTo("/freeProgKeys/keys[75]/sequence");
    else if (id == QLatin1String("layeredFuncKeys"))
        window.GoTo("/layeredFuncKeys/keys[0][2]/sequence");
    else if (id == QLatin1String("barcode"))
        window.GoTo("/barcode/pages/Code39/minSize");
    window.ShowPage(id);
    if (id == QLatin1String("backups")) {
        auto* backups = window.findChild<QTreeWidget*>(id);
        backups->setCurrentItem(backups->topLevelItem(0));
    } else if (id == QLatin1String("testDrive")) {
        for (const int key : {75, 112})
            window.findChild<views::KeyGrid*>(QStringLiteral("testDriveKeys"))->Pick(key);
    }
}

// Presses the button of this name on the page that is shown.
void Press(app::MainWindow& window, const char* name) {
    for (auto* button : window.findChildren<QAbstractButton*>(QString::fromLatin1(name)))
        if (button->isVisible())
            return button->click();
}

template <typename Control>
void Edit(app::Workbench& workbench, const char* key, const std::function<void(Control&)>& change) {
    host::Section& section = *workbench.Configuration().Find(key);
    workbench.Edit(section, [&] {
        change(dynamic_cast<Control&>(section.Control()));
        section.Show();
    });
}

// Help on a page, and what the search lists.
void TakeHelp(Camera& camera, app::MainWindow& window) {
    window.ShowPage(QStringLiteral("freeProgKeys"));
    for (auto* action : window.findChildren<QAction*>())
        if (action->shortcut() == QKeySequence(Qt::Key_F1))
            action->trigger();
    auto* help = window.findChild<QWidget*>(QStringLiteral("helpWindow"));
    camera.Take(*help, QStringLiteral("19-help"));
    help->close();
    auto* find = window.findChild<QLineEdit*>(QStringLiteral("quickFind"));
    find->setFocus();
    find->setText(QStringLiteral("pos"));
    emit find->textEdited(find->text());
    auto* found = find->findChild<QWidget*>(QStringLiteral("quickFindResults"));
    camera.Take(window, QStringLiteral("19-find"), found);
    found->hide();
    find->clear();
}

// A write that the keyboard does not survive: its notice, the page that settles it, and the
// question there.
void TakeInterrupted(Camera& camera, app::MainWindow& window, app::Workbench& workbench) {
    QObject receiver;
    QObject::connect(&workbench, &app::Workbench::Stepped, &receiver, [&](host::Step step) {
        if (step == host::Step::Writing)
            workbench.Simulated()->StopTransferAfter(5);
        if (step == host::Step::ReadingBack)
            workbench.Simulated()->FailCall(1, 77, true);
    });
    window.findChild<QWidget*>(QStringLiteral("notice"))->hide();
    camera.TakeDialog(
        QStringLiteral("25-review"), [&] { window.Transfers().Write(); },
        QStringLiteral("cmdWrite"));
    Press(window, "noticeDetails");
    camera.Take(window, QStringLiteral("23-failure"));
    window.findChild<QWidget*>(QStringLiteral("notice"))->hide();
    workbench.Simulated()->FailCall(0, 0, false);
    workbench.Simulated()->StopTransferAfter(-1);
    window.ShowPage(QStringLiteral("freeProgKeys"));
    camera.Take(window, QStringLiteral("25-interrupted-keys"));
    window.ShowPage(QStringLiteral("overview"));
    camera.Take(window, QStringLiteral("25-interrupted"));
    camera.TakeDialog(QStringLiteral("25-resolve"), [&] { window.Transfers().Recover(); });
}

void TakeAll(Camera& camera, app::MainWindow& window, app::Workbench& workbench) {
    ShowPage(window, QStringLiteral("overview"));
    camera.Take(window, QStringLiteral("00-opened"));
    window.ShowPage(QStringLiteral("freeProgKeys"));
    camera.Take(window, QStringLiteral("00-no-key"));
    const auto writing =
        QObject::connect(&workbench, &app::Workbench::Stepped, &window, [&](host::Step step) {
            if (step == host::Step::Checking)
                camera.Take(window, QStringLiteral("21-writing"));
        });
    camera.TakeDialog(
        QStringLiteral("20-review"), [&] { window.Transfers().Write(); },
        QStringLiteral("cmdWrite"));
    QObject::disconnect(writing);
    window.Transfers().Read(); // with all sections
    camera.Take(window, QStringLiteral("00-notice"));
    Edit<QXFreeProgKeys>(workbench, "freeProgKeys", [](QXFreeProgKeys& control) {
        for (const Integer key :
             {Integer{76}, Integer{80}}) // the first of them never releases its key
            control.Sequences().Key(key).SetBytes(key == 76 ? "\x1F" : "\x1F\x9F");
    });
    Edit<QXLayeredFuncKeys>(workbench, "layeredFuncKeys", [](QXLayeredFuncKeys& control) {
        control.Layer(0).GetKey(5).SetBytes("\x1F\x9F");
        control.Layer(4).GetKey(1).SetBytes("\x1F\x9F");
    });
    camera.TakeDialog(QStringLiteral("22-review-warnings"), [&] { window.Transfers().Write(); });
    const setup::KeyboardChoice choice = workbench.Choice();
    auto* pages = window.findChild<QListWidget*>(QStringLiteral("pages"));
    for (int row = 0; row < pages->count(); ++row) {
        const QString id = pages->item(row)->data(Qt::UserRole).toString();
        if (id.isEmpty()) // a heading
            continue;
        if (id.startsWith(QLatin1String("funcKeys")))
            continue; // as the free keys
        ShowPage(window, id);
        const QString name = QStringLiteral("%1-%2").arg(row, 2, 10, QLatin1Char('0')).arg(id);
        camera.Take(window, name);
        for (auto* tabs : window.findChildren<QTabWidget*>())
            for (int tab = 1; tabs->isVisible() && tab < tabs->count(); ++tab) {
                tabs->setCurrentIndex(tab);
                camera.Take(window, QStringLiteral("%1-%2").arg(name).arg(tab));
            }
    }
    Press(window, "absentPages");
    camera.Take(window, QStringLiteral("13-absent"));
    window.ShowPage(QStringLiteral("funcKeys4620"));
    camera.Take(window, QStringLiteral("13-absent-page"));
    window.GoTo("/barcode/readers[0]/header");
    camera.Take(window, QStringLiteral("14-barcode-reader"));
    window.Keyboards().Connect({"no-such-driver.so", {}, {}});
    camera.Take(window, QStringLiteral("15-no-keyboard"));
    window.Keyboards().Connect(choice);
    window.GoTo("/layeredFuncKeys/keys[0][2]/sequence");
    auto* name = window.findChild<QLineEdit*>(QStringLiteral("layerName"));
    name->setText(QStringLiteral("Checkout"));
    emit name->textEdited(name->text());
    window.findChild<views::KeyGrid*>(QStringLiteral("funcKeys"))->Select({1, 2, 3, 13, 14, 15});
    camera.Take(window, QStringLiteral("16-several-keys"));
    window.ShowPage(QStringLiteral("pos"));
    window.findChild<views::KeyGrid*>(QStringLiteral("posDisplay"))->Select({18, 19, 33, 34});
    camera.Take(window, QStringLiteral("17-pos-keys"));
    window.GoTo("/freeProgKeys/keys[75]/sequence");
    Press(window, "record");
    camera.Take(window, QStringLiteral("18-recording"));
    Press(window, "record");
    const QString leave = QStringLiteral("cmdOK"); // giving up asks where something would be lost
    camera.TakeDialog(
        QStringLiteral("21-sequence"), [&] { Press(window, "cmdEdit_0"); }, leave);
    window.ShowPage(QStringLiteral("pos"));
    camera.TakeDialog(
        QStringLiteral("22-pos-programmer"),
        [&] {
            QTimer::singleShot(50, [] { // a block is chosen
                if (auto* editor = QApplication::activeModalWidget())
                    editor->findChild<views::KeyGrid*>()->Pick(1);
            });
            Press(window, "cmdEdit");
        },
        leave);
    for (const bool isConnected : {false, true})
        camera.TakeDialog(QStringLiteral("23-start-%1").arg(isConnected), [&] {
            app::StartWizard wizard(workbench.Preferences(), isConnected, &window);
            wizard.exec();
        });
    TakeHelp(camera, window);
    TakeInterrupted(camera, window, workbench);
}

} // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() != 5 && arguments.size() != 7)
        return 2;
    app::UseAppearance(arguments[4] == QLatin1String("dark")    ? app::Appearance::Dark
                       : arguments[4] == QLatin1String("light") ? app::Appearance::Light
                                                                : app::Appearance::System);

    const auto folder = app::ToPath(arguments[1]);
    const auto work = folder / "work";
    std::filesystem::create_directories(work);
    std::ofstream(work / "till.json") << kSettings;
    {
        views::QtPlatform platform;
        app::Language language;
        app::Workbench workbench(platform.Services(), {{{}, work / "keyboard.qxk", "full"},
                                                       app::ToPath(arguments[2]),
                                                       {},
                                                       work / "settings.ini",
                                                       work / "records",
                                                       true});
        workbench.Preferences().SetAutoTestdrive(false);
        workbench.Preferences().SetPreferedAppLang(static_cast<Integer>(arguments[3].toInt()));
        app::MainWindow window(workbench, platform.Services(), language);
        window.setWindowState(Qt::WindowNoState);
        window.resize(arguments.value(5, QStringLiteral("1366")).toInt(),
                      arguments.value(6, QStringLiteral("768")).toInt());
        QEventLoop appearing;
        QObject::connect(&window, &app::MainWindow::Appeared, &appearing, &QEventLoop::quit);
        window.show();
        appearing.exec();
        window.Keyboards().Connect(workbench.Choice());
        window.Documents().Open(app::ToQt(work / "till.json"));
        Camera camera(arguments[1]);
        TakeAll(camera, window, workbench);
    }
    std::filesystem::remove_all(work);
    return 0;
}
