// The real program with real signals.
#include "files/Files.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <QProcess>
#include <QTest>

#include <csignal>

namespace qx::test {

TEST(EndSignals, TheKeyboardIsGivenBackAsItWas) {
    const TempFolder folder;
    const std::string file = (folder / "till.qxk").string();
    files::WriteFileAtomically(file + ".wild", "* log");
    const auto log = [&] {
        return std::filesystem::exists(file + ".log") ? files::ReadFile(file + ".log") : "";
    };
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        std::filesystem::remove(file + ".log");
        QProcess program;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("QT_QPA_PLATFORM", "offscreen");
        environment.insert("XDG_DATA_HOME", QString::fromStdString((folder / "data").string()));
        program.setProcessEnvironment(environment);
        program.start(QX_CONFIGURATOR,
                      {"--driver", QX_WILD_DRIVER, "--keyboard", QString::fromStdString(file),
                       "--model", "full", "--layouts", QX_LAYOUTS, "--settings",
                       QString::fromStdString((folder / "settings.ini").string()), "--start",
                       "read"});
        // The keyboard's layer keys are disabled while it is open, so that the layer cannot change.
        ASSERT_TRUE(QTest::qWaitFor(
            [&] { return log().find("QXCFG_DisableLayerSelection") != std::string::npos; }, 60000))
            << program.readAllStandardError().toStdString();
        ::kill(static_cast<pid_t>(program.processId()), signal);
        ASSERT_TRUE(program.waitForFinished(60000));
        EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(program.exitCode(), 128 + signal) << program.readAllStandardError().toStdString();
        const std::string calls = log();
        EXPECT_GT(calls.rfind("QXCFG_EnableLayerSelection") + 1,
                  calls.rfind("QXCFG_DisableLayerSelection"));
    }
}

} // namespace qx::test
