#include "sheet/SheetModule.h"

#include "host/Configuration.h"
#include "host/ErrorText.h"
#include "setup/LayoutSource.h"
#include "sheet/KeySheet.h"

#include <QGuiApplication>

#include <algorithm>
#include <cstring>
#include <optional>
#include <string>

namespace qx::sheet {

namespace {

// Painting needs an application, but no screen. On Windows only the screen's platform plugin has
// fonts, and there is always a screen.
#ifdef _WIN32
constexpr const char* kPlatform = "windows";
#else
constexpr const char* kPlatform = "offscreen";
#endif

class Application {
public:
    Application() {
        if (QCoreApplication::instance() != nullptr)
            return;
        // Warnings about the machine, such as a missing folder for sockets, are irrelevant for a
        // sheet.
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
        m_application.emplace(m_count, m_arguments);
    }

private:
    std::string m_name = "qxsheet";
    std::string m_option = "-platform";
    std::string m_platform = kPlatform;
    char* m_arguments[4] = {m_name.data(), m_option.data(), m_platform.data(), nullptr};
    int m_count = 3;
    std::optional<QGuiApplication> m_application;
};

std::string NameOfKeyboard(const host::ConfigurationDocument& document) {
    const host::Json* keyboard = document.Find(host::ConfigurationDocument::kKeyboardKey);
    return keyboard != nullptr ? keyboard->value("name", "") : "";
}

void Write(const SheetRequest& request) {
    const Application application;
    QXKeyboardLayoutData layout;
    setup::OpenLayout(layout, request.layoutFolder, request.layoutName);
    host::Configuration configuration({}, &layout, nullptr, host::LayoutUse::Captions);
    const auto document =
        host::ConfigurationDocument::Parse(request.document, request.documentName);
    const auto sections = configuration.Read(document);
    WriteKeySheet({NameOfKeyboard(document), request.documentName, request.date, sections, layout},
                  request.file);
}

SheetStatus StatusOf(host::ErrorKind kind) {
    switch (kind) {
    case host::ErrorKind::Usage:
        return SheetStatus::WrongSuffix;
    case host::ErrorKind::FileFailed:
        return SheetStatus::FileFailed;
    default:
        return SheetStatus::Failed;
    }
}

SheetStatus Failed(SheetStatus status, const std::string& reason, char* error,
                   std::int32_t errorSize) {
    const auto size = static_cast<std::size_t>(errorSize);
    const std::size_t length = std::min(reason.size(), size - 1);
    std::memcpy(error, reason.data(), length);
    error[length] = '\0';
    return status;
}

} // namespace

extern "C" Q_DECL_EXPORT std::int32_t QXSHEET_Write(const SheetRequest* request, char* error,
                                                    std::int32_t errorSize) {
    auto status = SheetStatus::Written;
    try {
        Write(*request);
    } catch (const host::Error& failure) {
        status = Failed(StatusOf(failure.Kind()), host::TextOf(failure), error, errorSize);
    } catch (const std::exception& failure) {
        status = Failed(SheetStatus::Failed, failure.what(), error, errorSize);
    }
    return static_cast<std::int32_t>(status);
}

} // namespace qx::sheet
