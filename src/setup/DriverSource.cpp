#include "setup/DriverSource.h"

#include "files/Files.h"
#include "host/Error.h"
#include "qxcontrols/device/DriverLibrary.h"
#include "simulator/SimulatedDriver.h"

namespace qx::setup {

namespace {

constexpr const char* kDefaultModel = "full";

// The meaning of a status as the library tells it; the empty text when it tells none.
std::string StatusText(const DriverLibrary& library, std::int32_t lStatus) {
    using Text = std::int32_t(QX_DRIVER_CALL*)(std::int32_t status, char* text, std::int32_t size);
    const auto tell = library.Find<Text>("QXSIM_StatusText");
    if (tell == nullptr)
        return {};
    char text[1000] = "";
    (void)tell(lStatus, text, sizeof text);
    return text;
}

std::string Whole(const std::filesystem::path& path) {
    std::error_code ignored;
    const bool isForSystem = !path.has_parent_path() && !std::filesystem::exists(path, ignored);
    const auto whole = isForSystem ? path : std::filesystem::weakly_canonical(path, ignored);
    return (ignored ? path : whole).string();
}

std::string OriginOf(const std::filesystem::path& driver, const std::filesystem::path& file) {
    return (driver.empty() ? "" : Whole(driver)) + "|" + (file.empty() ? "" : Whole(file));
}

// A driver library that is itself a simulated keyboard takes the file to keep it in.
void ChooseSimulatedKeyboard(const DriverLibrary& library, const KeyboardChoice& choice) {
    using Setter = std::int32_t(QX_DRIVER_CALL*)(const char* file, const char* model);
    const auto set = library.Find<Setter>("QXSIM_SetKeyboard");
    if (set == nullptr)
        throw host::Error(
            host::ErrorKind::Usage,
            "--keyboard and --model choose a simulated keyboard; the driver library " +
                choice.driver.string() + " takes none");
    const std::string model = choice.model.empty() ? kDefaultModel : choice.model;
    const std::int32_t status = set(choice.keyboard.string().c_str(), model.c_str());
    if (status == static_cast<std::int32_t>(sim::Status::ModelInvalid))
        throw host::Error(host::ErrorKind::ModelInvalid, StatusText(library, status), status);
    if (status != 0)
        throw host::Error(host::ErrorKind::KeyboardNotOpened,
                          "the keyboard file " + choice.keyboard.string() +
                              " could not be chosen: QXSIM_SetKeyboard gave status " +
                              std::to_string(status) + " (" + StatusText(library, status) + ")",
                          status);
}

OpenedDriver OpenLibrary(const KeyboardChoice& choice) {
    try {
        auto library = std::make_unique<DriverLibrary>(choice.driver);
        if (!choice.keyboard.empty() || !choice.model.empty())
            ChooseSimulatedKeyboard(*library, choice);
        OpenedDriver opened;
        opened.statusText = [loaded = library.get()](std::int32_t lStatus) {
            return StatusText(*loaded, lStatus);
        };
        opened.driver = std::move(library);
        opened.file = choice.keyboard;
        opened.origin = OriginOf(choice.driver, choice.keyboard);
        return opened;
    } catch (const host::Error&) {
        throw;
    } catch (const std::exception& error) {
        throw host::Error(host::ErrorKind::KeyboardNotOpened, error.what());
    }
}

} // namespace

OpenedDriver OpenDriver(const KeyboardChoice& choice) {
    if (!choice.driver.empty())
        return OpenLibrary(choice);
    OpenedDriver opened;
    std::filesystem::path file = choice.keyboard;
    if (file.empty()) {
        file = files::UserDataFolder() / "keyboard.qxk";
        opened.note =
            "no --driver and no --keyboard: using the simulated keyboard in " + file.string();
        std::error_code ignored; // the driver tells when it cannot write there
        std::filesystem::create_directories(file.parent_path(), ignored);
    }
    try {
        auto simulated = std::make_unique<sim::SimulatedDriver>(
            file, choice.model.empty() ? kDefaultModel : choice.model);
        sim::SimulatedDriver& driver = *simulated;
        opened.statusText = [&driver](std::int32_t lStatus) {
            return driver.LastError().empty() ? std::string(sim::StatusText(lStatus))
                                              : driver.LastError();
        };
        opened.layout = [&driver] { return driver.Layout(); };
        opened.simulated = &driver;
        opened.driver = std::move(simulated);
        opened.file = file;
        opened.origin = OriginOf({}, file);
    } catch (const std::exception& error) {
        throw host::Error(host::ErrorKind::ModelInvalid, error.what());
    }
    return opened;
}

std::filesystem::path RecordFolder(const std::filesystem::path& chosen) {
    try {
        return chosen.empty() ? files::UserDataFolder() : chosen;
    } catch (const std::exception& error) {
        throw host::Error(host::ErrorKind::FileFailed, error.what());
    }
}

} // namespace qx::setup
