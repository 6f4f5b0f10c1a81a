// A code page file either provides its first 256 bytes or is refused, and the keyboard's page
// compares equal exactly if all bytes are the same.

#include "../tests/support/FakeDriver.h"
#include "Fuzz.h"
#include "qxcontrols/device/MemoryMap.h"
#include "qxcontrols/device/QXKeyboardAccess.h"
#include "qxcontrols/pos/QXPosCodePage.h"

#include <algorithm>

#include <sys/mman.h>
#include <unistd.h>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace qx;
    static const int file = memfd_create("codepage", 0);
    static const std::string path = "/proc/self/fd/" + std::to_string(file);
    fuzz::Require(ftruncate(file, 0) == 0 &&
                      pwrite(file, data, size, 0) == static_cast<ssize_t>(size),
                  "the file can be made");
    QXPosCodePage control;
    const bool isLoaded = control.FilePage().LoadPageFromFile(path);
    fuzz::Require(isLoaded == (size >= 256), "a file of 256 bytes or more is taken");
    for (Integer i = 1; i <= kCodePageSize; ++i) {
        const auto at = static_cast<std::size_t>(i - 1);
        fuzz::Require(control.FilePage().GetByte(i) == (at < size ? data[at] : 0),
                      "the page has the file's bytes");
    }
    // The bytes after the page are the changes to the keyboard's page.
    constexpr Long kAddress = 0x6C80;
    static test::FakeDriver driver;
    driver.notesCalls = false;
    driver.memory.replace(kAddress, 256, 256, '\0');
    driver.memory.replace(kAddress, std::min<std::size_t>(size, 256),
                          fuzz::AsText(data, std::min<std::size_t>(size, 256)));
    const bool isChanged = size > 257 && data[257] != 0;
    if (isChanged) {
        char& byte = driver.memory[kAddress + data[256]];
        byte = static_cast<char>(byte ^ static_cast<char>(data[257]));
    }
    QXKeyboardAccess access{driver};
    fuzz::Require(control.KeyboardPage().LoadPageFromKeyboard(&access), "the keyboard is read");
    fuzz::Require(control.PagesAreEqual() == !isChanged, "pages are equal where their bytes are");
    return 0;
}
