// The configuration application.
#include "app/Appearance.h"
#include "app/Application.h"
#include "app/EndSignals.h"
#include "app/Failure.h"
#include "app/Language.h"
#include "app/MainWindow.h"
#include "app/Paths.h"
#include "app/StartWizard.h"
#include "app/Workbench.h"
#include "files/Files.h"
#include "simulator/SimulatedDriver.h"
#include "views/QtPlatform.h"

#include <QCommandLineParser>

namespace {

using qx::app::StartChoice;

struct CommandLine {
    qx::app::Workbench::Options options;
    QString start;
    QStringList files; // at most one is opened
};

// Ends the program if it is wrong or asks for help.
CommandLine Read(const QCoreApplication& application) {
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Programs modular point-of-sale keyboards. Without a keyboard it works "
                       "with a simulated one."));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption driver("driver", "Use this driver library.", "PATH");
    const QCommandLineOption keyboard("keyboard", "Use the simulated keyboard kept in FILE.",
                                      "FILE");
    const QCommandLineOption model("model", "The model of a new simulated keyboard.", "NAME");
    const QCommandLineOption layouts("layouts", "Where the keyboard layouts are.", "DIR");
    const QCommandLineOption layout("layout", "Which layout: a file name or a language id.",
                                    "NAME");
    const QCommandLineOption settings("settings", "Keep the preferences in FILE.", "FILE");
    const QCommandLineOption start(
        "start", "Begin without asking: read (the keyboard), last (document) or defaults.", "HOW");
    parser.addOptions({driver, keyboard, model, layouts, layout, settings, start});
    parser.addPositionalArgument(QStringLiteral("FILE"), QStringLiteral("A document to open."),
                                 QStringLiteral("[FILE]"));
    parser.process(application);
    using qx::app::ToPath;
    return {{{ToPath(parser.value(driver)), ToPath(parser.value(keyboard)),
              parser.value(model).toStdString()},
             ToPath(parser.value(layouts)),
             parser.value(layout).toStdString(),
             ToPath(parser.value(settings)),
             {},
             true},
            parser.value(start),
            parser.positionalArguments()};
}

// How to begin: by the command line, else by the preferences if the user does not want to be asked,
// else by the user's answer to the wizard.
StartChoice ChoiceOf(const QString& option, qx::app::Workbench& workbench) {
    qx::QXProgSettings& preferences = workbench.Preferences();
    if (option == QLatin1String("read"))
        return StartChoice::ReadKeyboard;
    if (option == QLatin1String("last"))
        return StartChoice::LastDocument;
    if (option == QLatin1String("defaults"))
        return StartChoice::Defaults;
    if (const auto stored = qx::app::StoredStart(preferences))
        return *stored;
    qx::app::StartWizard wizard(preferences, workbench.IsConnected());
    wizard.exec();
    workbench.SavePreferences();
    return wizard.Choice();
}

void Begin(qx::app::MainWindow& window, qx::app::Workbench& workbench, StartChoice choice) {
    const bool isOpened = choice == StartChoice::LastDocument && window.Documents().OpenLast();
    if (isOpened)
        return;
    workbench.NewDocument();
    if (choice == StartChoice::ReadKeyboard && workbench.IsConnected())
        window.Transfers().Read();
}

} // namespace

int main(int argc, char** argv) {
    qx::files::PrepareStandardStreams();
    qx::app::Application application(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("qxcontrols"));
    QApplication::setApplicationName(QStringLiteral("qx-configurator"));
    QApplication::setApplicationVersion(QStringLiteral(QX_VERSION));

    QGuiApplication::setDesktopFileName(QStringLiteral("qx-configurator"));
#ifndef Q_OS_WIN // there it is a resource of the program
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/desktop/qx-configurator.svg")));
#endif

    const CommandLine commandLine = Read(application);
    try {
        qx::views::QtPlatform qtPlatform;
        qx::app::Language language;
        qx::app::Workbench workbench(qtPlatform.Services(), commandLine.options);
        workbench.UseStoredAppearance();
        qx::app::MainWindow window(workbench, qtPlatform.Services(), language);
        // Clicks in the sequence editor can press the simulated keyboard's keys.
        QObject::connect(&workbench, &qx::app::Workbench::KeyboardChanged, &window, [&] {
            qtPlatform.modalForms.pressTwinKey =
                workbench.Simulated() == nullptr
                    ? std::function<void(qx::Long)>()
                    : [simulated = workbench.Simulated()](qx::Long lPositionCode) {
                          simulated->QueuePositionKey(lPositionCode);
                      };
        });
        const qx::app::EndSignals endSignals(workbench, window.Documents());
        const QStringList& files = commandLine.files;
        QObject::connect(&application, &qx::app::Application::Failed, &window,
                         [&] { window.Documents().KeepUnsaved(); });
        application.show = [&](const QString& text, const QString& details) {
            window.screen.warn({text, details});
        };
        QObject::connect(&window, &qx::app::MainWindow::Appeared, &window, [&] {
            window.Keyboards().ConnectAgain();
            if (!files.isEmpty())
                window.Documents().Open(files.front());
            if (!window.Documents().OpenLeft() && files.isEmpty())
                Begin(window, workbench, ChoiceOf(commandLine.start, workbench));
        });
        window.show();
        return QApplication::exec();
    } catch (const std::exception& error) {
        qx::app::ShowFailure(nullptr, qx::app::FailureOf({}, error));
        return 1;
    }
}
