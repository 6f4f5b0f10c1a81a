// The search for the driver; packaging/com-test puts copies of it into the folders.

#include "com/windows/Client.h"
#include "com/windows/Members.h"

#include <cstdlib>

namespace qx::test {
namespace {

class ComDriver : public ComClient {};

// The environment names the expected folder, or "none".
TEST_F(ComDriver, IsTheOneOfTheFolderThatIsExpected) {
    const char* const expected = std::getenv("QX_DRIVER_FOLDER");
    ASSERT_NE(expected, nullptr);
    const auto keyboard = NewObject(L"QXControls.QXKeyboardAccess");
    const bool isFound = Call(keyboard.Get(), IdOf(keyboard.Get(), L"Init"), kCall, {}).Flag();
    std::string folder = "none";
    if (const HMODULE driver = GetModuleHandleW(L"TANDORQX.DLL")) {
        wchar_t file[MAX_PATH] = {};
        GetModuleFileNameW(driver, file, MAX_PATH);
        folder = Narrow(file);
        folder.erase(folder.find_last_of('\\'));
        folder.erase(0, folder.find_last_of('\\') + 1);
    }
    EXPECT_EQ(folder, expected);
    EXPECT_EQ(isFound, folder != "none");
}

} // namespace
} // namespace qx::test
