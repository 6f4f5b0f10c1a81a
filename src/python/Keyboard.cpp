#include "python/Keyboard.h"

#include "files/Sha256.h"
#include "host/JsonFieldWriter.h"
#include "host/Variables.h"
#include "setup/LayoutSource.h"

#include <stdexcept>
#include <utility>

namespace qx::python {

namespace {

// The time a driver may be inactive: nobody watches a script.
constexpr std::chrono::minutes kDriverSilence{2};

void RefuseUnused(const host::Variables& variables) {
    if (const auto unused = variables.Unused(); !unused.empty())
        throw std::invalid_argument("the document has no placeholder ${" + unused.front() + "}");
}

std::string ToText(const host::Writer::Outcome& outcome) {
    return host::Json(
               {{"written", outcome.isWritten},
                {"verified", outcome.isVerified},
                {"bytes", outcome.bytesSent},
                {"backup", outcome.backup.empty() ? host::Json() : host::Json(outcome.backup)}})
        .dump();
}

} // namespace

void Check(const std::string& text, const std::string& name, const Values& variables,
           const std::filesystem::path& layouts, const std::string& layout) {
    QXKeyboardLayoutData captions;
    setup::OpenLayout(captions, layouts, setup::LayoutName(layout, {}));
    const Platform platform;
    host::Configuration configuration(platform, &captions, nullptr, host::LayoutUse::Captions);
    host::Variables values(variables);
    configuration.Read(host::ConfigurationDocument::Parse(text, name), values);
    RefuseUnused(values);
}

std::string PlannedWrite::Changes() const {
    host::Json changes = host::Json::array();
    for (const host::Difference& change : plan.settings)
        changes.push_back({{"place", change.place},
                           {"setting", host::ToText(change.name)},
                           {"before", host::ToText(change.from)},
                           {"after", host::ToText(change.to)}});
    return changes.dump();
}

void Keyboard::Open() {
    Close();
    setup::KeyboardChoice choice = m_choice.keyboard;
    if (!choice.driver.empty()) // such a library may do anything, even end its process
        choice.isolation = {{}, kDriverSilence};
    m_driver = setup::OpenDriver(choice);
    auto session = std::make_unique<host::Session>(
        *m_driver.driver, m_platform,
        setup::SessionOptions(m_driver, [this](int percent) { ShowProgress(percent); }));
    session->Open();
    setup::OpenLayout(m_layout, m_choice.layouts,
                      setup::LayoutName(m_choice.layout, m_driver.layout ? m_driver.layout() : ""));
    m_session = std::move(session);
}

void Keyboard::Close() {
    m_writer.reset();
    m_session.reset(); // before its driver
    m_driver = {};
}

void Keyboard::ShowProgress(int percent) noexcept {
    if (!m_progress || m_progressFailure)
        return;
    try {
        m_progress(m_step, percent);
    } catch (...) {
        m_progressFailure = std::current_exception();
    }
}

template <typename Function>
std::string Keyboard::WithProgress(const Progress& progress, const Function& write) {
    struct Forget {
        Progress& progress;
        ~Forget() { progress = {}; }
    };
    m_progress = progress;
    m_progressFailure = nullptr;
    const Forget forget{m_progress};
    const std::string outcome = ToText(write());
    if (const std::exception_ptr failure = std::exchange(m_progressFailure, nullptr))
        std::rethrow_exception(failure);
    return outcome;
}

host::Session& Keyboard::Session() {
    if (m_session == nullptr)
        throw std::logic_error("the keyboard is not open");
    return *m_session;
}

std::unique_ptr<host::Configuration> Keyboard::NewConfiguration() {
    return std::make_unique<host::Configuration>(m_platform, &m_layout, nullptr);
}

host::Writer& Keyboard::Writer() {
    host::Session& session = Session();
    if (m_writer == nullptr) {
        host::Writer::Options options =
            setup::WriterOptions(m_driver, m_choice.records, [this] { return NewConfiguration(); });
        options.onStep = [this](host::Step step) { m_step = TextOf(step); };
        m_writer = std::make_unique<host::Writer>(session, std::move(options));
    }
    return *m_writer;
}

std::string Keyboard::Identify() {
    host::KeyboardInfo info = Session().Keyboard();
    host::Json json;
    std::vector<host::Loss> losses; // always empty: a keyboard's identification fits
    host::JsonFieldWriter writer(json, "", losses);
    info.Visit(writer);
    return json.dump();
}

Keyboard::Reading Keyboard::Read() {
    const auto configuration = NewConfiguration();
    auto sections = Session().SectionsIn(*configuration);
    Reading reading;
    for (const host::Fault& fault : Session().Upload(sections))
        reading.damaged.push_back(json::ToText(fault));
    reading.document = configuration->Write(sections, Session().Keyboard()).ToText();
    return reading;
}

PlannedWrite Keyboard::Plan(const std::string& text, const std::string& name,
                            const Values& variables, bool skipAbsent, bool full, bool repair) {
    const auto document = host::ConfigurationDocument::Parse(text, name);
    const auto configuration = NewConfiguration();
    host::Variables values(variables);
    const auto wanted = Session().Read(*configuration, document, values, skipAbsent);
    RefuseUnused(values);
    PlannedWrite planned{Writer().Plan(wanted.sections, {full, repair}), {}};
    planned.request.document = name;
    planned.request.documentSha256 = files::Sha256(text);
    planned.request.full = full;
    return planned;
}

PlannedWrite Keyboard::PlanRestore(const std::string& backup, bool otherKeyboard) {
    const host::BackupStore& backups = Writer().Records().backups;
    PlannedWrite planned{Writer().PlanRestore(backups.Load(backups.Find(backup)), otherKeyboard),
                         {}};
    planned.request.action = host::WriteAction::Restore;
    planned.request.document = backup;
    return planned;
}

std::string Keyboard::Write(const PlannedWrite& planned, bool verify, const Progress& progress) {
    host::WriteRequest request = planned.request;
    request.verify = verify;
    return WithProgress(progress, [&] { return Writer().Write(planned.plan, request); });
}

std::vector<std::string> Keyboard::Interrupted() {
    std::vector<std::string> ids;
    for (const host::JournalEntry& entry : Writer().Interrupted())
        ids.push_back(entry.Id());
    return ids;
}

std::string Keyboard::Recover(const std::string& id, bool finish, const Progress& progress) {
    const auto way = finish ? host::RecoverWay::Finish : host::RecoverWay::RollBack;
    for (const host::JournalEntry& entry : Writer().Interrupted())
        if (entry.Id() == id)
            return WithProgress(progress, [&] { return Writer().Recover(entry, way, true); });
    throw host::Error(host::Cause::NoSuchWrite, {.name = id});
}

} // namespace qx::python
