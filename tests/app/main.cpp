// The application's tests run in the application's own event loop, without a screen.
#include "app/Appearance.h"
#include "app/Application.h"

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    qx::app::Application application(argc, argv);
    qx::app::UseAppearance(qx::app::Appearance::System);
    application.show = [](const QString& text, const QString& details) {
        ADD_FAILURE() << text.toStdString() << "\n" << details.toStdString();
    };
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
