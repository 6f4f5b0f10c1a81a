#include "batch/Worker.h"

#include "batch/Keyboard.h"
#include "files/SystemTexts.h"
#include "host/HexText.h"
#include "qxcontrols/device/Trace.h"
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
std::filesystem::path PathFrom(const Json& json) {
    return files::PathOf(host::FromHexText(json.get<std::string>()).value());
}

WorkerSettings SettingsFrom(const Json& json) {
    WorkerSettings settings;
    settings.layouts = {PathFrom(json.at("layouts")), json.at("layout").get<std::string>(),
                        json.at("preferredLayout").get<std::string>()};
    settings.records = PathFrom(json.at("records"));
    settings.skipAbsent = json.at("skipAbsent").get<bool>();
    settings.repair = json.at("repair").get<bool>();
    settings.isolation.program = PathFrom(json.at("driverHost"));
    settings.isolation.limit = std::chrono::milliseconds(json.at("limit").get<std::int64_t>());
    settings.trace = json.at("trace").get<bool>();
    return settings;
}

Unit UnitFrom(const Json& json) {
    Unit unit;
    unit.name = json.at("name").get<std::string>();
    unit.target = setup::KeyboardChoice{PathFrom(json.at("driver")), PathFrom(json.at("keyboard")),
                                        json.at("model").get<std::string>()};
    unit.targetText = json.at("place").get<std::string>();
    unit.identifier = json.at("identifier").get<std::string>();
    unit.document =
        std::make_shared<const host::ConfigurationDocument>(host::ConfigurationDocument::Parse(
            json.at("document").dump(), json.at("documentName").get<std::string>()));
    for (const auto& [name, value] : json.at("variables").items())
        unit.variables[name] = value.get<std::string>();
    unit.wanted = json.at("wanted").get<std::string>();
    return unit;
}

// Collects notes that would otherwise be shown to the user at once.
class NotedMessageBoxes : public MessageBoxes {
public:
    explicit NotedMessageBoxes(std::vector<std::string>& notes) : m_notes(notes) {}
    void Show(std::string_view sText) override { m_notes.emplace_back(sText); }

private:
    std::vector<std::string>& m_notes;
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
    return {{"report", ToJson(attempt.report)},
            {"failure", attempt.failure ? Json(static_cast<int>(*attempt.failure)) : Json()},
            {"notes", attempt.notes}};
}

} // namespace

std::string LineOf(const WorkerSettings& settings) {
    return LineOf(Json{{"layouts", ToJson(settings.layouts.folder)},
                       {"layout", settings.layouts.chosen},
                       {"preferredLayout", settings.layouts.preferred},
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
    const Json json = json::ParseStrictly(line, line.size());
    json::Faults faults;
    json::Object members(json::Value(json, "", faults));
    Attempt attempt;
    std::optional<int> failure;
    Take(members.Get("report"), attempt.report);
    json::Take(members.Get("failure"), failure);
    json::Take(members.Get("notes"), attempt.notes);
    faults.ThrowAny();
    if (failure)
        attempt.failure = static_cast<host::ErrorKind>(*failure);
    return attempt;
}

void Work(process::Channel& channel) {
    std::string arrived;
    const WorkerSettings settings = SettingsFrom(Json::parse(NextLine(channel, arrived)));
    Layouts layouts(settings.layouts);
    std::vector<std::string> notes;
    NotedMessageBoxes boxes(notes);
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
    services.warn = [&](const std::string& text) { notes.push_back(text); };
    if (settings.trace)
        SetTraceSink([](std::string_view text) { std::cerr << std::string(text) + "\n"; });
    for (std::string line = NextLine(channel, arrived); !line.empty();
         line = NextLine(channel, arrived)) {
        const Unit unit = UnitFrom(Json::parse(line));
        Attempt attempt = MakeAttempt(unit, services.now(), [&](UnitReport& report) {
            Keyboard(services.openDriver(*unit.target), services).Program(unit, report);
        });
        attempt.notes = std::exchange(notes, {});
        (void)channel.Send(LineOf(ToJson(attempt))); // it ends with the batch
    }
}

} // namespace qx::batch
