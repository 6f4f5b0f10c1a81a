#include "setup/DriverSource.h"

#include "driverhost/LibraryExtras.h"
#include "driverhost/WordSize.h"
#include "files/Files.h"
#include "files/SystemTexts.h"
#include "host/Error.h"
#include "qxcontrols/device/DriverLibrary.h"
#include "simulator/KeyboardMemory.h"
#include "simulator/KeyboardModel.h"
#include "simulator/SimulatedDriver.h"

namespace qx::setup {

namespace {

constexpr const char* kDefaultModel = "full";

std::string Whole(const std::filesystem::path& path) {
    std::error_code ignored;
    const bool isForSystem = !path.has_parent_path() && !std::filesystem::exists(path, ignored);
    const auto whole = isForSystem ? path : std::filesystem::weakly_canonical(path, ignored);
    return files::TextOf(ignored ? path : whole);
}

std::string OriginOf(const std::filesystem::path& driver, const std::filesystem::path& file) {
    return (driver.empty() ? "" : Whole(driver)) + "|" + (file.empty() ? "" : Whole(file));
}

host::Error Unusable(const KeyboardChoice& choice, files::Problem problem) {
    return host::Error(
        host::Cause::DriverUnusable,
        {.problem = std::move(problem), .place = {.file = files::TextOf(choice.driver)}});
}

// Sets the file of a driver library that is a simulated keyboard.
void ChooseSimulatedKeyboard(driverhost::RemoteDriver& library, const KeyboardChoice& choice) {
    const std::string model = choice.model.empty() ? kDefaultModel : choice.model;
    const auto status = library.SetKeyboard(files::TextOf(choice.keyboard), model);
    if (!status)
        throw host::Error(host::Cause::DriverTakesNoKeyboard,
                          {.place = {.file = files::TextOf(choice.driver)}});
    if (*status == 0)
        return;
    if (const auto& problem = library.Failure())
        throw Unusable(choice, *problem);
    const host::FailedCall call = {"QXSIM_SetKeyboard", *status, library.StatusText(*status)};
    if (*status == static_cast<std::int32_t>(sim::Status::ModelInvalid))
        throw host::Error(host::Cause::ModelUnusable, {.call = call, .place = {.file = model}});
    throw host::Error(host::Cause::KeyboardFileRefused,
                      {.call = call, .place = {.file = files::TextOf(choice.keyboard)}});
}

// A mistyped file name must not create another keyboard, and a model that contradicts the
// keyboard's must not be ignored. Other errors in the file are found when it is opened.
void RequireMeant(const std::filesystem::path& file, const std::string& model) {
    std::error_code error;
    const bool exists = std::filesystem::exists(file, error);
    if (error)
        return;
    if (!exists && model.empty())
        throw host::Error(host::Cause::KeyboardFileMissing,
                          {.place = {.file = files::TextOf(file)}});
    if (!exists || model.empty())
        return;
    std::string is;
    std::string wanted;
    try {
        wanted = sim::KeyboardModel::ByName(model).name;
        is = sim::KeyboardMemory::ModelIn(file).name;
    } catch (const std::exception&) {
        return;
    }
    if (is != wanted)
        throw host::Error(host::Cause::KeyboardOfOtherModel,
                          {.name = is, .other = wanted, .place = {.file = files::TextOf(file)}});
}

OpenedDriver OpenLibrary(const KeyboardChoice& choice) {
    try {
        auto driver = std::make_unique<driverhost::RemoteDriver>(choice.driver, choice.isolation);
        driverhost::RemoteDriver& library = *driver;
        if (!choice.keyboard.empty() || !choice.model.empty())
            ChooseSimulatedKeyboard(library, choice);
        OpenedDriver opened;
        opened.statusText = [&library](std::int32_t lStatus) {
            return library.StatusText(lStatus);
        };
        opened.failure = [&library] { return library.Failure(); };
        opened.driver = std::move(driver);
        opened.origin = OriginOf(choice.driver, choice.keyboard);
        return opened;
    } catch (const host::Error&) {
        throw;
    } catch (const std::exception& error) {
        throw Unusable(choice, files::ProblemOf(error));
    }
}

std::filesystem::path KeyboardOfUser() {
    try {
        return files::UserDataFolder() / "keyboard.qxk";
    } catch (const std::exception& error) {
        throw host::FileError(error);
    }
}

} // namespace

host::Session::Options SessionOptions(const OpenedDriver& opened,
                                      std::function<void(int)> progress) {
    return {std::move(progress), opened.statusText, opened.explain, opened.failure};
}

host::Writer::Options
WriterOptions(const OpenedDriver& opened, const std::filesystem::path& records,
              std::function<std::unique_ptr<host::Configuration>()> newConfiguration) {
    host::Writer::Options options;
    options.folder = RecordFolder(records);
    options.newConfiguration = std::move(newConfiguration);
    options.origin = opened.origin;
    return options;
}

OpenedDriver OpenDriver(const KeyboardChoice& choice) {
    if (!choice.keyboard.empty())
        RequireMeant(choice.keyboard, choice.model);
    if (!choice.driver.empty())
        return OpenLibrary(choice);
    OpenedDriver opened;
    std::filesystem::path file = choice.keyboard;
    if (file.empty()) {
        file = opened.unchosen = KeyboardOfUser();
        std::error_code ignored; // the driver reports it if it cannot write there
        std::filesystem::create_directories(file.parent_path(), ignored);
        if (!choice.model.empty())
            RequireMeant(file, choice.model);
    }
    const std::string model = choice.model.empty() ? kDefaultModel : choice.model;
    try {
        auto simulated = std::make_unique<sim::SimulatedDriver>(file, model);
        sim::SimulatedDriver& driver = *simulated;
        opened.statusText = [&driver](std::int32_t lStatus) {
            const std::string error = driver.LastError();
            return error.empty() ? std::string(sim::StatusText(lStatus)) : error;
        };
        opened.explain = [&driver](host::ErrorFacts& facts) {
            facts.isSimulated = true;
            facts.problem = driver.LastProblem();
            facts.faults = driver.LastFaults();
        };
        opened.layout = [&driver] { return driver.Layout(); };
        opened.simulated = &driver;
        opened.driver = std::move(simulated);
        opened.origin = OriginOf({}, file);
    } catch (const sim::ModelError& error) {
        throw host::Error(host::Cause::ModelUnusable,
                          {.place = {.file = model}, .faults = error.Faults()});
    } catch (const std::exception& error) {
        throw host::Error(host::Cause::ModelUnusable,
                          {.problem = files::ProblemOf(error), .place = {.file = model}});
    }
    return opened;
}

std::filesystem::path RecordFolder(const std::filesystem::path& chosen) {
    try {
        return chosen.empty() ? files::UserDataFolder() : chosen;
    } catch (const std::exception& error) {
        throw host::FileError(error);
    }
}

} // namespace qx::setup
