#include "batch/Job.h"

#include "batch/Members.h"
#include "files/Files.h"
#include "files/Sha256.h"
#include "files/SystemTexts.h"
#include "host/ErrorText.h"
#include "qxcontrols/platform/GuidCreator.h"

#include <map>
#include <set>

namespace qx::batch {

namespace {

using host::Fault;
using host::Json;
using host::ShortText;
namespace fs = std::filesystem;

constexpr std::string_view kFormat = "qx-batch";
constexpr int kVersion = 1;

[[noreturn]] void Refuse(const fs::path& file, const std::vector<Fault>& faults) {
    throw host::Error(host::Cause::JobFaults,
                      {.place = {.file = files::TextOf(file)}, .faults = faults});
}

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
        LeaveOutSharedIdentifiers();
    }

private:
    [[nodiscard]] fs::path Path(const std::string& text) const {
        return text.empty() ? fs::path() : m_job.m_file.parent_path() / files::PathOf(text);
    }
    // A library without a folder that is not beside the job is for the system to find.
    [[nodiscard]] fs::path LibraryPath(const std::string& text) const {
        std::error_code ignored;
        const bool isForSystem =
            !files::PathOf(text).has_parent_path() && !fs::exists(Path(text), ignored);
        return isForSystem ? files::PathOf(text) : Path(text);
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

    // A document that was read from one keyboard has that keyboard's identifier, which no other may
    // get: it is left out where more than one unit would.
    void LeaveOutSharedIdentifiers() {
        std::map<std::string, std::vector<Unit*>> units; // by the identifier that they would get
        for (Unit& unit : m_job.m_units)
            if (unit.document)
                if (const auto guid = GuidFromText(unit.document->Identifier()))
                    units[ToText(*guid)].push_back(&unit);
        std::map<const host::ConfigurationDocument*,
                 std::shared_ptr<const host::ConfigurationDocument>>
            without;
        for (const auto& [identifier, sharing] : units) {
            if (sharing.size() < 2)
                continue;
            for (Unit* unit : sharing) {
                auto& replacement = without[unit->document.get()];
                if (!replacement) {
                    host::ConfigurationDocument document = *unit->document;
                    document.RemoveIdentifier();
                    replacement =
                        std::make_shared<const host::ConfigurationDocument>(std::move(document));
                    m_job.m_notes.push_back(
                        unit->document->Name() + " has the identifier " + identifier +
                        ", which only one keyboard can have: it is left out, and each keyboard "
                        "keeps its own");
                }
                unit->document = replacement;
            }
        }
    }

    [[nodiscard]] static std::string TargetText(const setup::KeyboardChoice& choice) {
        std::error_code ignored;
        const fs::path driver = fs::weakly_canonical(choice.driver, ignored);
        return files::TextOf(driver) + '\n' +
               files::TextOf(fs::weakly_canonical(choice.keyboard, ignored));
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
    void ClaimTarget(Members& members, Unit& unit) {
        const bool isNamed = !unit.identifier.empty();
        unit.port = TargetText(*unit.target);
        const auto [claimed, isNew] = m_targets.emplace(unit.port, std::pair(unit.name, isNamed));
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
                members.AddFault("document", host::TextOf(error));
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
        throw host::FileError(error);
    }
    if (!faults.empty())
        Refuse(file, faults);
    return job;
}

// Reads every unit's settings and notes what is wrong.
class Job::Checker {
public:
    Checker(Job& job, const Platform& platform, QXKeyboardLayoutData& layout,
            const std::string& sChosen, bool skipAbsent)
        : m_job(job), m_platform(platform), m_layout(layout), m_chosen(sChosen),
          m_skipsAbsent(skipAbsent) {}

    std::vector<Fault> Run() {
        for (std::size_t i = 0; i < m_job.m_units.size(); ++i)
            Check(m_job.m_units[i], m_job.m_own[i], host::JsonPointer("/units", std::to_string(i)));
        for (const auto& [name, value] : m_job.m_common)
            if (!m_used.contains(name))
                m_faults.push_back({host::JsonPointer("/variables", name),
                                    "no document has a placeholder ${" + name + "}"});
        return m_faults;
    }

private:
    void Check(Unit& unit, const host::Variables::Values& own, const std::string& place) {
        host::Variables variables(unit.variables);
        try {
            NoteIdentifier(unit, IdentifierGiven(unit, variables), place);
        } catch (const host::Error& error) {
            for (const Fault& fault : error.faults)
                m_faults.push_back({place, unit.name + ": " + unit.document->Name() + ": " +
                                               fault.place + ": " + fault.message});
        }
        for (const auto& [name, value] : own)
            if (!variables.Used().contains(name))
                m_faults.push_back({host::JsonPointer(place + "/variables", name),
                                    unit.name + ": " + unit.document->Name() +
                                        " has no placeholder ${" + name + "}"});
        m_used.insert(variables.Used().begin(), variables.Used().end());
        unit.wanted = WantedBy(unit, variables.Used());
    }

    // The identifier that the document gives the keyboard; the empty text where it gives none.
    [[nodiscard]] std::string IdentifierGiven(const Unit& unit, host::Variables& variables) const {
        host::Configuration configuration(m_platform, &m_layout, nullptr,
                                          host::LayoutUse::Captions);
        const auto sections = configuration.Read(*unit.document, variables);
        return configuration.Write(sections).Identifier();
    }

    void NoteIdentifier(Unit& unit, const std::string& guid, const std::string& place) {
        unit.setsIdentifier = !guid.empty();
        if (!unit.setsIdentifier)
            return;
        const auto [first, isNew] = m_given.emplace(guid, unit.name);
        if (!isNew)
            m_faults.push_back({place, unit.name +
                                           ": the document gives the keyboard the "
                                           "identifier that " +
                                           first->second + " gets"});
        if (!unit.identifier.empty() && guid != unit.identifier)
            m_faults.push_back({place + "/identifier",
                                unit.name + ": the document gives the keyboard another one"});
    }

    [[nodiscard]] std::string WantedBy(const Unit& unit, const std::set<std::string>& used) const {
        Json values = Json::object();
        for (const std::string& name : used)
            values[name] = unit.variables.at(name);
        Json wanted = {{"document", unit.document->AsJson()},
                       {"variables", values},
                       {"target", unit.targetText},
                       {"identifier", unit.identifier},
                       {"layout", m_chosen}};
        if (m_skipsAbsent)
            wanted["skipAbsent"] = true;
        return files::Sha256(host::PrettyText(wanted));
    }

    Job& m_job;
    const Platform& m_platform;
    QXKeyboardLayoutData& m_layout;
    std::string m_chosen;
    bool m_skipsAbsent;
    std::vector<Fault> m_faults;
    std::map<std::string, std::string> m_given; // identifier, unit
    std::set<std::string> m_used;               // variables
};

void Job::Check(const Platform& platform, QXKeyboardLayoutData& layout, const std::string& sChosen,
                bool skipAbsent) {
    const auto faults = Checker(*this, platform, layout, sChosen, skipAbsent).Run();
    if (!faults.empty())
        Refuse(m_file, faults);
}

} // namespace qx::batch
