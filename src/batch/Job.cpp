#include "batch/Job.h"

#include "files/Files.h"
#include "files/Limits.h"
#include "files/Sha256.h"
#include "files/SystemTexts.h"
#include "host/ErrorText.h"
#include "qxcontrols/platform/GuidCreator.h"
#include "json/Reader.h"

#include <map>
#include <set>

namespace qx::batch {

namespace {

using json::Fault;
using json::FaultKind;
using json::Json;
using json::Object;
using json::Value;
namespace fs = std::filesystem;

constexpr std::string_view kFormat = "qx-batch";
constexpr int kVersion = 1;

[[noreturn]] void Refuse(const fs::path& file, const std::vector<Fault>& faults) {
    throw host::Error(host::Cause::JobFaults, {.place = {.file = files::TextOf(file)},
                                               .holds = host::Holds::NotTouched,
                                               .faults = faults});
}

// A text that must not be empty; returns an empty text if there is none.
std::string TextOf(const Value& value) {
    const std::string text = value.Text().value_or("");
    if (value.Exists() && value.AsJson().is_string() && text.empty())
        value.Refuse(FaultKind::EmptyText);
    if (text.find('\0') == std::string::npos)
        return text;
    value.Refuse(FaultKind::TextWithNul);
    return {};
}

host::Variables::Values VariablesOf(const Value& value) {
    host::Variables::Values values;
    for (const auto& [name, variable] : Object(value).All()) {
        const auto text = variable.Text();
        if (!host::Variables::IsName(name))
            variable.Refuse(FaultKind::NotAVariable, json::ShortText(name));
        else if (text && text->find('\0') != std::string::npos)
            variable.Refuse(FaultKind::TextWithNul);
        else if (text)
            values[name] = *text;
    }
    return values;
}

} // namespace

// Reads the job, continuing after faults.
class Job::Reader {
public:
    explicit Reader(Job& job) : m_job(job) {}

    void Read(const Value& whole) {
        Object job(whole);
        if (!HasFormat(job, kFormat, kVersion))
            return;
        m_job.m_layout = TextOf(job.Find("layout"));
        m_job.m_common = VariablesOf(job.Find("variables"));
        m_document = TextOf(job.Find("document"));
        if (const Value bench = job.Find("bench"); bench.Exists()) {
            Object target(bench);
            std::string written;
            m_job.m_bench = Target(target, written);
            target.RefuseOthers();
            if (target.IsObject() && !m_job.m_bench)
                bench.Refuse(FaultKind::NoKeyboard);
        }
        const Value units = job.Get("units");
        job.RefuseOthers();
        if (units.Exists() && units.AsJson().is_array() && units.AsJson().empty())
            units.Refuse(FaultKind::EmptyList);
        for (const Value& unit : units.Elements())
            ReadUnit(unit);
        LeaveOutSharedIdentifiers();
    }

private:
    [[nodiscard]] fs::path Path(const std::string& text) const {
        return text.empty() ? fs::path() : m_job.m_file.parent_path() / files::PathOf(text);
    }
    // A library without a folder that is not beside the job is searched for by the system.
    [[nodiscard]] fs::path LibraryPath(const std::string& text) const {
        std::error_code ignored;
        const bool isForSystem =
            !files::PathOf(text).has_parent_path() && !fs::exists(Path(text), ignored);
        return isForSystem ? files::PathOf(text) : Path(text);
    }
    // `written` identifies it, wherever the program is started.
    [[nodiscard]] std::optional<setup::KeyboardChoice> Target(Object& members,
                                                              std::string& written) const {
        const std::string driver = TextOf(members.Find("driver"));
        const std::string keyboard = TextOf(members.Find("keyboard"));
        const Value model = members.Find("model");
        written = driver + '\n' + keyboard;
        setup::KeyboardChoice choice;
        choice.driver = LibraryPath(driver);
        choice.keyboard = Path(keyboard);
        choice.model = TextOf(model);
        if (!choice.driver.empty() || !choice.keyboard.empty())
            return choice;
        if (!choice.model.empty())
            model.Refuse(FaultKind::ModelWithoutKeyboard);
        return std::nullopt;
    }

    void ReadUnit(const Value& value) {
        Object members(value);
        if (!members.IsObject())
            return;
        Unit unit;
        const Value name = members.Get("name");
        unit.name = TextOf(name);
        if (!Claim("name", unit.name, unit.name).empty())
            name.Refuse(FaultKind::NameTaken);
        unit.target = Target(members, unit.targetText);
        const Value identifier = members.Find("identifier");
        unit.identifier = TextOf(identifier);
        if (const auto guid = GuidFromText(unit.identifier))
            unit.identifier = ToText(*guid);
        else if (!unit.identifier.empty())
            identifier.RefuseAs(FaultKind::NotAnIdentifier);
        if (const auto other = Claim("identifier", unit.identifier, unit.name); !other.empty())
            identifier.Refuse(FaultKind::IdentifierTaken, other);
        if (unit.target && m_job.m_bench)
            value.Refuse(FaultKind::KeyboardAtBench);
        else if (!unit.target && !m_job.m_bench)
            value.Refuse(FaultKind::NoKeyboard);
        if (unit.target)
            ClaimTarget(members, unit);
        const Value document = members.Find("document");
        const std::string file = TextOf(document);
        if (!m_document.empty() || !file.empty())
            unit.document = Document(document, file.empty() ? m_document : file);
        else
            value.Refuse(FaultKind::NoDocument);
        unit.variables = VariablesOf(members.Find("variables"));
        m_job.m_own.push_back(unit.variables);
        unit.variables.insert(m_job.m_common.begin(), m_job.m_common.end());
        members.RefuseOthers();
        m_job.m_units.push_back(std::move(unit));
    }

    // A document read from a keyboard has that keyboard's identifier, which no other may get: it is
    // removed if more than one unit would get it.
    void LeaveOutSharedIdentifiers() {
        std::map<std::string, std::vector<Unit*>> units; // by the identifier they would get
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
                    m_job.m_warnings.push_back(host::Error(
                        host::Cause::IdentifierLeftOut,
                        {.name = identifier, .place = {.file = unit->document->Name()}}));
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

    // Claims a value that only one unit may have; returns the unit that already has it, or an empty
    // text.
    [[nodiscard]] std::string Claim(const std::string& key, const std::string& value,
                                    const std::string& unit) {
        if (value.empty())
            return {};
        const auto [claimed, isNew] = m_claims[key].emplace(value, unit);
        return isNew ? std::string() : claimed->second;
    }

    // Several units may share a port only if each of them has an identifier.
    void ClaimTarget(Object& members, Unit& unit) {
        const bool isNamed = !unit.identifier.empty();
        unit.port = TargetText(*unit.target);
        const auto [claimed, isNew] = m_targets.emplace(unit.port, std::pair(unit.name, isNamed));
        if (!isNew && !(isNamed && claimed->second.second))
            members.Find(unit.target->keyboard.empty() ? "driver" : "keyboard")
                .Refuse(FaultKind::KeyboardTaken, claimed->second.first);
    }

    // Each document is loaded once, and its faults are reported once.
    std::shared_ptr<const host::ConfigurationDocument> Document(const Value& value,
                                                                const std::string& name) {
        const auto [entry, isNew] = m_documents.emplace(name, nullptr);
        if (isNew) {
            try {
                entry->second = std::make_shared<host::ConfigurationDocument>(
                    host::ConfigurationDocument::Load(Path(name)));
            } catch (const host::Error& error) {
                value.Refuse(FaultKind::DocumentUnusable, host::TextOf(error));
            }
        }
        return entry->second;
    }

    Job& m_job;
    std::string m_document;
    std::map<std::string, std::map<std::string, std::string>> m_claims; // key, value, unit
    std::map<std::string, std::pair<std::string, bool>> m_targets; // unit, and whether it is named
    std::map<std::string, std::shared_ptr<const host::ConfigurationDocument>> m_documents;
};

Job Job::Load(const fs::path& file) {
    Job job;
    job.m_file = file;
    try {
        const Json json =
            json::ParseStrictly(files::ReadFile(file, files::kMostOfJob), files::kMostOfJob);
        json::Faults faults;
        Reader(job).Read(Value(json, "", faults));
        faults.ThrowAny();
    } catch (const json::FaultError& error) {
        Refuse(file, error.Faults());
    } catch (const std::exception& error) {
        throw host::FileError(error);
    }
    return job;
}

// Checks every unit's settings and records the faults.
class Job::Checker {
public:
    Checker(Job& job, const Platform& platform, QXKeyboardLayoutData& layout,
            const std::string& sChosen, bool skipAbsent)
        : m_job(job), m_platform(platform), m_layout(layout), m_chosen(sChosen),
          m_skipsAbsent(skipAbsent) {}

    // Throws FaultError.
    void Run() {
        for (std::size_t i = 0; i < m_job.m_units.size(); ++i)
            Check(m_job.m_units[i], m_job.m_own[i], json::JsonPointer("/units", std::to_string(i)));
        for (const auto& [name, value] : m_job.m_common)
            if (!m_used.contains(name))
                m_faults.Add(
                    {json::JsonPointer("/variables", name), FaultKind::VariableUnused, name});
        m_faults.ThrowAny();
    }

private:
    void Check(Unit& unit, const host::Variables::Values& own, const std::string& place) {
        host::Variables variables(unit.variables);
        try {
            NoteIdentifier(unit, IdentifierGiven(unit, variables), place);
        } catch (const host::Error& error) {
            for (const Fault& fault : error.faults)
                m_faults.Add({place, FaultKind::FaultInDocument, unit.name, unit.document->Name(),
                              fault.place, WordsOf(fault)});
        }
        for (const auto& [name, value] : own)
            if (!variables.Used().contains(name))
                m_faults.Add({json::JsonPointer(place + "/variables", name),
                              FaultKind::VariableUnusedByUnit, unit.name, unit.document->Name(),
                              name});
        m_used.insert(variables.Used().begin(), variables.Used().end());
        unit.wanted = WantedBy(unit, variables.Used());
    }

    // The identifier that the document gives the keyboard; empty if none.
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
            m_faults.Add({place, FaultKind::SetsTakenIdentifier, unit.name, first->second});
        if (!unit.identifier.empty() && guid != unit.identifier)
            m_faults.Add({place + "/identifier", FaultKind::SetsOtherIdentifier, unit.name});
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
        return files::Sha256(json::PrettyText(wanted));
    }

    Job& m_job;
    const Platform& m_platform;
    QXKeyboardLayoutData& m_layout;
    std::string m_chosen;
    bool m_skipsAbsent;
    json::Faults m_faults;
    std::map<std::string, std::string> m_given; // identifier, unit
    std::set<std::string> m_used;               // variables
};

void Job::Check(const Platform& platform, QXKeyboardLayoutData& layout, const std::string& sChosen,
                bool skipAbsent) {
    try {
        Checker(*this, platform, layout, sChosen, skipAbsent).Run();
    } catch (const json::FaultError& error) {
        Refuse(m_file, error.Faults());
    }
}

} // namespace qx::batch
