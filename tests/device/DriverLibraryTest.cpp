#include "qxcontrols/device/DriverLibrary.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <fstream>

namespace qx {

TEST(DriverLibrary, ErrorsNameTheFileAndTheReason) {
#ifdef _WIN32
    const char* const missing = "error 126: the file, or a library that it needs, is missing";
    const char* const text = "error 193: the file is not a library";
#else
    const char* const missing = "No such file";
    const char* const text = "cannot load the driver library";
#endif
    const test::TempFolder folder;
    std::ofstream(folder / "text.so") << "not a library";
    const struct {
        std::string path;
        std::string reason;
    } cases[] = {
        {(folder / "missing.so").string(), missing},
        {(folder / "text.so").string(), text},
        {QX_INCOMPLETE_DRIVER, "lacks the functions QXCFG_ImageSave, QXCFG_GetPositionKey"},
    };
    for (const auto& each : cases) {
        std::string message;
        try {
            const DriverLibrary library(each.path);
        } catch (const std::runtime_error& error) {
            message = error.what();
        }
        EXPECT_NE(message.find(each.path), std::string::npos) << message;
        EXPECT_NE(message.find(each.reason), std::string::npos) << message;
    }
}

} // namespace qx
