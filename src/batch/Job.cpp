#include "batch/Job.h"

#include "files/Files.h"
#include "files/Sha256.h"
#include "qxcontrols/platform/GuidCreator.h"

#include <map>

namespace qx::batch {

namespace {

using host::Fault;
using host::Json;
using host::ShortText;
namespace fs = std::filesystem;

constexpr std::string_view kFormat = "qx-batch";
constexpr int kVersion = 1;

[[noreturn]] void Refuse(const fs::path& file, const std::vector<Fault>& faults,
                         const std::string& hint = "") {
    const Fault& first = faults.front();
    throw host::Error(host::ErrorKind::DocumentInvalid,
                      file.string() + ": " + first.place + (first.place.empty() ? "" : ": ") +
                          first.message + hint + "; no keyboard was touched",
                      faults);
}

// The members of an object, each of which is asked for once.
class Members {
public:
    Members(const Json& value, std::string place, std::vector<Fault>& faults)
        : m_value(value), m_place(std::move(place)), m_faults(faults) {
        if (!value.is_object())
            AddFault("", ShortText(value) + " is not an object");
    }

    [[nodiscard]] const Json* Find(const std::string& key) {
        m_asked.insert(key);
        if (!m_value.is_object())
            return nullptr;
        const auto found = m_value.find(key);
        return found == m_value.end() ? nullptr : &*found;
    }
    // A text that is not empty; the empty text where there is none.
    [[nodiscard]] std::string Text(const std::string& key, bool fRequired = false) {
        const Json* value = Find(key);
        if (value == nullptr && fRequired && m_value.is_object())
            AddFault("", "\"" + key + "\" is missing");
        if (value == nullptr)
            return {};
        if (!value->is_string() || value->get<std::string>().empty() ||
            value->get<std::string>().find('\0') != std::string::npos) {
            AddFault(key, ShortText(*value) + " is not a text, or is empty");
            return {};
        }
        return value->get<std::string>();
    }
    [[nodiscard]] host::Variables::Values Variables() {
        host::Variables::Values values;
        const Json* object = Find("variables");
        if (object == nullptr)
            return values;
        Members members(*object, Place("variables"), m_faults);
        if (!object->is_object())
            return values;
        for (const auto& [name, value] : object->items()) {
            if (!host::Variables::IsName(name))
                members.AddFault(name, "a variable's name is a letter, and then letters, digits, "
                                       "hyphens and underscores");
            else if (!value.is_string() || value.get<std::string>().find('\0') != std::string::npos)
                members.AddFault(name, ShortText(value) + " is not a text: write \"42\"");
            else
                values[name] = value.get<std::string>();
        }
        return values;
    }
    void RefuseOthers() {
        if (m_value.is_object())
            for (const auto& [key, value] : m_value.items())
                if (!m_asked.contains(key))
                    AddFault(key, ShortText(key) + " is not known here");
    }
    [[nodiscard]] std::string Place(const std::string& key) const {
        return key.empty() ? m_place : host::JsonPointer(m_place, key);
    }
    void AddFault(const std::string& key, const std::string& message) {
        m_faults.push_back({Place(key), message});
    }

private:
    const Json& m_value;
    std::string m_place;
    std::vector<Fault>& m_faults;
    std::set<std::string> m_asked;
};

} // namespace

// Reads the job, and goes on behind faults.
class Job::Reader {
public:
    Reader(Job& job, std::vector<Fault>& faults) : m_job(job), m_faults(faults) {}

    void Read(const Json& json) {
        Members members(json, "", m_faults);
        const Json* format = members.Find("format");
        if (format == nullptr || *format != kFormat)
            return members.AddFault("format", R"(not a batch job: "format" is not ")" +
                                                  std::string(kFormat) + '"');
        const Json* version = members.Find("version");
        if (version == nullptr || *version != kVersion)
            return members.AddFault("version", "the version is not " + std::to_string(kVersion) +
                                                   ", the one that this program reads");
        m_job.m_layout = members.Text("layout");
        m_job.m_common = members.Variables();
        m_document = members.Text("document");
        if (const Json* bench = members.Find("bench")) {
            Members target(*bench, members.Place("bench"), m_faults);
            std::string written;
            m_job.m_bench = Target(target, written);
            target.RefuseOthers();
            if (!m_job.m_bench)
                target.AddFault("", R"(names neither a "driver" nor a "keyboard")");
        }
        const Json* units = members.Find("units");
        members.RefuseOthers();
        if (units == nullptr || !units->is_array() || units->empty())
            return members.AddFault("units", "the job has no list of units");
        for (std::size_t i = 0; i < units->size(); ++i)
            ReadUnit((*units)[i], host::JsonPointer("/units", std::to_string(i)));
    }

private:
    [[nodiscard]] fs::path Path(const std::string& text) const {
        return text.empty() ? fs::path() : m_job.m_file.parent_path() / fs::path(text);
    }
    // A library without a folder that is not beside the job is for the system to find.
    [[nodiscard]] fs::path LibraryPath(const std::string& text) const {
        std::error_code ignored;
        const bool isForSystem =
            !fs::path(text).has_parent_path() && !fs::exists(Path(text), ignored);
        return isForSystem ? fs::path(text) : Path(text);
    }
    // `written` is what tells it apart wherever the program is started.
    [[nodiscard]] std::optional<setup::KeyboardChoice> Target(Members& members,
                                                              std::string& written) const {
        const std::string driver = members.Text("driver");
        const std::string keyboard = members.Text("keyboard");
        written = driver + '\n' + keyboard;
        setup::KeyboardChoice choice;
        choice.driver = LibraryPath(driver);
        choice.keyboard = Path(keyboard);
        choice.model = members.Text("model");
        if (choice.driver.empty() && choice.keyboard.empty()) {
            if (!choice.model.empty())
                members.AddFault("model", R"(is for a "keyboard", which is missing)");
            return std::nullopt;
        }
        return choice;
    }

    void ReadUnit(const Json& json, const std::string& place) {
        Members members(json, place, m_faults);
        Unit unit;
        unit.name = members.Text("name", true);
        Claim(members, "name", unit.name, unit.name, "is the name of another unit");
        unit.target = Target(members, unit.targetText);
        unit.identifier = members.Text("identifier");
        if (const auto guid = GuidFromText(unit.identifier))
            unit.identifier = ToText(*guid);
        else if (!unit.identifier.empty())
            members.AddFault("identifier", "is not like {01234567-89AB-CDEF-0123-456789ABCDEF}");
        Claim(members, "identifier", unit.identifier, unit.name, "is also the identifier of ");
        if (unit.target && m_job.m_bench)
            members.AddFault("", "this is a job for the bench, so a unit names no driver and no "
                                 "keyboard");
        else if (!unit.target && !m_job.m_bench)
            members.AddFault("", R"(names neither a "driver" nor a "keyboard")");
        if (unit.target)
            ClaimTarget(members, unit);
        const std::string document = members.Text("document");
        if (document.empty() && m_document.empty() && json.is_object())
            members.AddFault("", "has no document, and neither has the job");
        else if (!m_document.empty() || !document.empty())
            unit.document = Document(members, document.empty() ? m_document : document);
        unit.variables = members.Variables();
        m_job.m_own.push_back(unit.variables);
        unit.variables.insert(m_job.m_common.begin(), m_job.m_common.end());
        members.RefuseOthers();
        m_job.m_units.push_back(std::move(unit));
    }

    [[nodiscard]] static std::string TargetText(const setup::KeyboardChoice& choice) {
        std::error_code ignored;
        const fs::path driver = fs::weakly_canonical(choice.driver, ignored);
        return driver.string() + '\n' + fs::weakly_canonical(choice.keyboard, ignored).string();
    }

    // What only one unit may have.
    void Claim(Members& members, const std::string& key, const std::string& value,
               const std::string& unit, const std::string& message) {
        if (value.empty())
            return;
        const auto [claimed, isNew] = m_claims[key].emplace(value, unit);
        if (!isNew)
            members.AddFault(key, message + (key == "name" ? "" : claimed->second));
    }

    // Several units may be reached in the same way only when it is told which is which.
    void ClaimTarget(Members& members, const Unit& unit) {
        const bool isNamed = !unit.identifier.empty();
        const auto [claimed, isNew] =
            m_targets.emplace(TargetText(*unit.target), std::pair(unit.name, isNamed));
        if (!isNew && !(isNamed && claimed->second.second))
            members.AddFault(unit.target->keyboard.empty() ? "driver" : "keyboard",
                             "is also that of " + claimed->second.first +
                                 R"(; units of one driver need an "identifier" each)");
    }

    // Each document is loaded once, and its faults are told once.
    std::shared_ptr<const host::ConfigurationDocument> Document(Members& members,
                                                                const std::string& name) {
        const auto [entry, isNew] = m_documents.emplace(name, nullptr);
        if (isNew) {
            try {
                entry->second = std::make_shared<host::ConfigurationDocument>(
                    host::ConfigurationDocument::Load(Path(name)));
            } catch (const host::Error& error) {
                members.AddFault("document", error.what());
            }
        }
        return entry->second;
    }

    Job& m_job;
    std::vector<Fault>& m_faults;
    std::string m_document;
    std::map<std::string, std::map<std::string, std::string>> m_claims; // key, value, unit
    std::map<std::string, std::pair<std::string, bool>> m_targets;      // unit, whether it is named
    std::map<std::string, std::shared_ptr<const host::ConfigurationDocument>> m_documents;
};

Job Job::Load(const fs::path& file) {
    Job job;
    job.m_file = file;
    std::vector<Fault> faults;
    try {
        const Json json = host::ParseStrictly(files::ReadFile(file));
        Reader(job, faults).Read(json);
    } catch (const host::JsonError& error) {
        faults.push_back({error.Place(), error.what()});
    } catch (const std::exception& error) {
        throw host::Error(host::ErrorKind::FileFailed, error.what());
    }
    if (!faults.empty())
        Refuse(file, faults);
    return job;
}

void Job::Check(const Platform& platform, QXKeyboardLayoutData& layout, const std::string& sChosen,
                bool skipAbsent) {
    std::vector<Fault> faults;
    std::map<std::string, std::string> given; // identifier, unit
    std::set<std::string> used;
    for (std::size_t i = 0; i < m_units.size(); ++i) {
        Unit& unit = m_units[i];
        const std::string place = host::JsonPointer("/units", std::to_string(i));
        host::Configuration configuration(platform, &layout, nullptr, host::LayoutUse::Captions);
        host::Variables variables(unit.variables);
        try {
            const auto sections = configuration.Read(*unit.document, variables);
            const Json written = configuration.Write(sections).AsJson();
            const std::string guid =
                written.value(Json::json_pointer("/layeredFuncKeys/guid"), std::string());
            unit.setsIdentifier = !guid.empty();
            const auto [first, isNew] = given.emplace(guid, unit.name);
            if (unit.setsIdentifier && !isNew)
                faults.push_back({place, unit.name +
                                             ": the document gives the keyboard the "
                                             "identifier that " +
                                             first->second + " gets"});
            if (unit.setsIdentifier && !unit.identifier.empty() && guid != unit.identifier)
                faults.push_back({place + "/identifier",
                                  unit.name + ": the document gives the keyboard another one"});
        } catch (const host::Error& error) {
            for (const Fault& fault : error.Faults())
                faults.push_back({place, unit.name + ": " + unit.document->Name() + ": " +
                                             fault.place + ": " + fault.message});
        }
        for (const auto& [name, value] : m_own[i])
            if (!variables.Used().contains(name))
                faults.push_back({host::JsonPointer(place + "/variables", name),
                                  unit.name + ": " + unit.document->Name() +
                                      " has no placeholder ${" + name + "}"});
        used.insert(variables.Used().begin(), variables.Used().end());
        Json values = Json::object();
        for (const std::string& name : variables.Used())
            values[name] = unit.variables.at(name);
        Json wanted = {{"document", unit.document->AsJson()},
                       {"variables", values},
                       {"target", unit.targetText},
                       {"identifier", unit.identifier},
                       {"layout", sChosen}};
        if (skipAbsent)
            wanted["skipAbsent"] = true;
        unit.wanted = files::Sha256(host::PrettyText(wanted));
    }
    for (const auto& [name, value] : m_common)
        if (!used.contains(name))
            faults.push_back({host::JsonPointer("/variables", name),
                              "no document has a placeholder ${" + name + "}"});
    if (!faults.empty())
        Refuse(m_file, faults);
}

} // namespace qx::batch
