// The tests of what is on the screen need an application, but no screen.
#include <gtest/gtest.h>

#include <QApplication>

// An exception that passes through the toolkit leaves its own small allocations behind.
extern "C" [[gnu::visibility("default")]] const char* __lsan_default_suppressions() {
    return "leak:libQt6Core\nleak:libQt6Gui\n";
}

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
