#include "sheet/SheetModule.h"

#include "host/Configuration.h"
#include "host/ErrorJson.h"
#include "setup/LayoutSource.h"
#include "sheet/KeySheet.h"

#include <QGuiApplication>

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

void Write(const SheetRequest& request) {
    const Application application;
    QXKeyboardLayoutData layout;
    setup::OpenLayout(layout, request.layoutFolder, request.layoutName);
    host::Configuration configuration({}, &layout, nullptr, host::LayoutUse::Captions);
    const auto document =
        host::ConfigurationDocument::Parse(request.document, request.documentName);
    const auto sections = configuration.Read(document);
    const host::Json* keyboard = document.Find(host::ConfigurationDocument::kKeyboardKey);
    WriteKeySheet({host::KeyboardInfo::In(keyboard).name, request.documentName, request.date,
                   sections, layout},
                  request.file);
}

const char* TextOf(const host::Error& error) {
    static std::string text;
    text = host::ToJson(error).dump(-1, ' ', false, host::Json::error_handler_t::replace);
    return text.c_str();
}

} // namespace

extern "C" Q_DECL_EXPORT const char* QXSHEET_Write(const SheetRequest* request) {
    try {
        Write(*request);
        return nullptr;
    } catch (const host::Error& error) {
        return TextOf(error);
    } catch (const std::exception& error) {
        return TextOf(host::Error(host::Cause::Unforeseen, {.problem = files::ProblemOf(error)}));
    }
}

} // namespace qx::sheet
