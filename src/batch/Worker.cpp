#include "batch/Worker.h"

#include "batch/Keyboard.h"
#include "files/Limits.h"
#include "files/SystemTexts.h"
#include "host/ErrorJson.h"
#include "host/HexText.h"
#include "qxcontrols/common/Trace.h"
#include "json/Members.h"

#include <iostream>

namespace qx::batch {

namespace {

using host::Json;

// As one line, whatever bytes a text has.
std::string LineOf(const Json& json) {
    return json.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
}

// The names of files have any bytes.
Json ToJson(const std::filesystem::path& path) {
    return host::ToHexText(files::TextOf(path));
}
std::filesystem::path PathFrom(const json::Value& value) {
    const auto text = value.Text();
    const auto bytes = text ? host::FromHexText(*text) : std::nullopt;
    if (text && !bytes)
        value.RefuseAs(json::FaultKind::NotBytes);
    return files::PathOf(bytes.value_or(""));
}

// Reads a line. Throws json::FaultError.
template <typename Read>
auto FromLine(const std::string& line, const Read& read) {
    const Json json = json::ParseStrictly(line, files::kMostOfRecord);
    json::Faults faults;
    json::Object members(json::Value(json, "", faults));
    auto result = read(members);
    members.RefuseOthers();
    faults.ThrowAny();
    return result;
}

WorkerSettings SettingsFrom(json::Object& members) {
    WorkerSettings settings;
    settings.layouts.folder = PathFrom(members.Get("layouts"));
    json::Take(members.Get("layout"), settings.layouts.chosen);
    json::Take(members.Get("preferredLanguage"), settings.layouts.preferredLanguage);
    settings.records = PathFrom(members.Get("records"));
    json::Take(members.Get("skipAbsent"), settings.skipAbsent);
    json::Take(members.Get("repair"), settings.repair);
    settings.isolation.program = PathFrom(members.Get("driverHost"));
    std::int64_t limit = 0;
    json::Take(members.Get("limit"), limit);
    settings.isolation.limit = std::chrono::milliseconds(limit);
    json::Take(members.Get("trace"), settings.trace);
    return settings;
}

Unit UnitFrom(json::Object& members) {
    Unit unit;
    json::Take(members.Get("name"), unit.name);
    unit.target.emplace();
    unit.target->driver = PathFrom(members.Get("driver"));
    unit.target->keyboard = PathFrom(members.Get("keyboard"));
    json::Take(members.Get("model"), unit.target->model);
    json::Take(members.Get("place"), unit.targetText);
    json::Take(members.Get("identifier"), unit.identifier);
    std::string name;
    json::Take(members.Get("documentName"), name);
    if (const json::Value document = members.Get("document"); document.Exists())
        unit.document = std::make_shared<const host::ConfigurationDocument>(
            host::ConfigurationDocument::Parse(document.AsJson().dump(), name));
    json::Object variables(members.Get("variables"));
    for (const auto& [variable, value] : variables.All())
        json::Take(value, unit.variables[variable]);
    json::Take(members.Get("wanted"), unit.wanted);
    return unit;
}

// Collects the controls' messages for the batch.
class CollectedMessageBoxes : public MessageBoxes {
public:
    explicit CollectedMessageBoxes(std::vector<host::Error>& warnings) : m_warnings(warnings) {}
    void Show(std::string_view sText) override {
        m_warnings.push_back(
            host::Error(host::Cause::ControlReported, {.reason = std::string(sText)}));
    }

private:
    std::vector<host::Error>& m_warnings;
};

// The next line; the empty text when the channel is closed.
std::string NextLine(process::Channel& channel, std::string& arrived) {
    while (arrived.find('\n') == std::string::npos)
        if (channel.Receive(arrived) == process::Channel::Received::End)
            return {};
    const std::size_t end = arrived.find('\n');
    std::string line = arrived.substr(0, end);
    arrived.erase(0, end + 1);
    return line;
}

Json ToJson(const Attempt& attempt) {
    return {{"report", ToJson(attempt.report)}, {"warnings", host::ToJson(attempt.warnings)}};
}

} // namespace

std::string LineOf(const WorkerSettings& settings) {
    return LineOf(Json{{"layouts", ToJson(settings.layouts.folder)},
                       {"layout", settings.layouts.chosen},
                       {"preferredLanguage", settings.layouts.preferredLanguage},
                       {"records", ToJson(settings.records)},
                       {"skipAbsent", settings.skipAbsent},
                       {"repair", settings.repair},
                       {"driverHost", ToJson(settings.isolation.program)},
                       {"limit", settings.isolation.limit.count()},
                       {"trace", settings.trace}});
}

std::string LineOf(const Unit& unit) {
    return LineOf(Json{{"name", unit.name},
                       {"driver", ToJson(unit.target->driver)},
                       {"keyboard", ToJson(unit.target->keyboard)},
                       {"model", unit.target->model},
                       {"place", unit.targetText},
                       {"identifier", unit.identifier},
                       {"document", unit.document->AsJson()},
                       {"documentName", unit.document->Name()},
                       {"variables", unit.variables},
                       {"wanted", unit.wanted}});
}

Attempt AttemptOf(const std::string& line) {
    return FromLine(line, [](json::Object& members) {
        Attempt attempt;
        Take(members.Get("report"), attempt.report);
        attempt.warnings = host::ErrorsFrom(members.Get("warnings"));
        return attempt;
    });
}

void Work(process::Channel& channel) {
    std::string arrived;
    const WorkerSettings settings = FromLine(NextLine(channel, arrived), SettingsFrom);
    Layouts layouts(settings.layouts);
    std::vector<host::Error> warnings;
    CollectedMessageBoxes boxes(warnings);
    Services services;
    services.openDriver = [&](setup::KeyboardChoice choice) {
        choice.isolation = settings.isolation;
        return setup::OpenDriver(choice);
    };
    services.layout = [&](const std::string& name) -> QXKeyboardLayoutData& {
        return layouts.For(name);
    };
    services.platform.messageBoxes = &boxes;
    services.records = settings.records;
    services.skipAbsent = settings.skipAbsent;
    services.repair = settings.repair;
    services.warn = [&](const std::string& /*unit*/, const host::Error& warning) {
        warnings.push_back(warning);
    };
    if (settings.trace)
        SetTraceSink([](std::string_view text) { std::cerr << std::string(text) + "\n"; });
    for (std::string line = NextLine(channel, arrived); !line.empty();
         line = NextLine(channel, arrived)) {
        const Unit unit = FromLine(line, UnitFrom);
        Attempt attempt = MakeAttempt(unit, services.now(), [&](UnitReport& report) {
            Keyboard(services.openDriver(*unit.target), services).Program(unit, report);
        });
        attempt.warnings = std::exchange(warnings, {});
        (void)channel.Send(LineOf(ToJson(attempt))); // it ends with the batch
    }
}

} // namespace qx::batch
