#include "com/windows/LazyDriver.h"

#include "com/windows/Server.h"
#include "qxcontrols/common/Trace.h"
#include "qxcontrols/common/Utf.h"

#include <string>
#include <vector>

namespace qx::com {
namespace {

// The first function called at each start-up.
constexpr std::string_view kFirstFunction = "QXCFG_SetCommandDelta";

std::wstring FolderOf(const std::wstring& file) {
    return file.substr(0, file.find_last_of(L'\\'));
}

std::vector<std::wstring> Folders() {
    std::wstring system(MAX_PATH, L'\0');
    system.resize(GetSystemDirectoryW(system.data(), static_cast<UINT>(system.size())));
    return {FolderOf(FileOfModule(nullptr)), FolderOf(FileOfModule(Module())), system};
}

// For drivers that do not post to windows themselves.
void QX_DRIVER_CALL PostToWindow(std::int32_t hWindow, std::int32_t lMsg, std::int32_t wParam,
                                 std::int32_t lParam) {
    const auto window = reinterpret_cast<HWND>(static_cast<std::intptr_t>(hWindow));
    if (window != nullptr) // a message without a window would go to the thread
        PostMessageW(window, static_cast<UINT>(lMsg), static_cast<WPARAM>(wParam), lParam);
}

} // namespace

void LazyDriver::LetGo() {
    const std::lock_guard lock(m_mutex);
    m_library.reset();
    m_isMissing = false;
}

void LazyDriver::Load() {
    m_isMissing = true;
    for (const std::wstring& folder : Folders()) {
        const std::wstring file = folder + L"\\" + Wide(DriverLibrary::kWindowsFileName);
        if (GetFileAttributesW(file.c_str()) == INVALID_FILE_ATTRIBUTES)
            continue;
        try {
            m_library.emplace(Utf8FromUtf16(std::u16string(file.begin(), file.end())));
            m_library->QXSIM_SetMessagePoster(PostToWindow);
            m_isMissing = false;
            return;
        } catch (const std::exception& error) {
            Trace(error.what());
        }
    }
}

ConfigDriver* LazyDriver::For(std::string_view sFunction) {
    if (!m_library && (!m_isMissing || sFunction == kFirstFunction))
        Load();
    if (!m_library) {
        Trace(std::string(sFunction) + " failed: there is no " + DriverLibrary::kWindowsFileName);
        return nullptr;
    }
    return &*m_library;
}

#define QX_DRIVER_FUNCTION(name, parameters, arguments, result)                                    \
    std::int32_t LazyDriver::name parameters {                                                     \
        const std::lock_guard lock(m_mutex);                                                       \
        ConfigDriver* const driver = For(#name);                                                   \
        return driver == nullptr ? kNoDriver : driver->name arguments;                             \
    }
#include "qxcontrols/device/DriverFunctions.def"

} // namespace qx::com
