#include "cli/Context.h"

#include "cli/Errors.h"
#include "cli/Output.h"
#include "cli/PreferenceStore.h"
#include "files/Files.h"
#include "files/SystemTexts.h"
#include "host/ErrorJson.h"
#include "host/ErrorText.h"
#include "host/Traces.h"
#include "setup/CaptionSource.h"
#include "setup/LayoutSource.h"

#include <algorithm>
#include <istream>

namespace qx::cli {

namespace {

constexpr int kSchema = 1;
// The time a driver may be inactive. People watch, and can end the command earlier.
constexpr std::chrono::minutes kDriverSilence{10};
constexpr int kEndedBySignal = 128; // plus the signal's number, as in shells

// A document can have very many faults; nobody reads them all.
constexpr std::size_t kShownFaults = 20;

void EndIfInterrupted() {
    if (const int signal = InterruptWatch::Signal(); signal != 0)
        throw Interrupted{signal};
}

} // namespace

// Shows the controls' message boxes as lines on standard error.
class Context::MessageBoxLines : public MessageBoxes {
public:
    explicit MessageBoxLines(Context& context) : m_context(context) {}
    void Show(std::string_view sText) override { m_context.Warn(sText); }

private:
    Context& m_context;
};

Context::Context(Streams streams, Surroundings surroundings)
    : m_console(streams), m_surroundings(std::move(surroundings)),
      m_boxes(std::make_unique<MessageBoxLines>(*this)) {
    m_platform.messageBoxes = m_boxes.get();
}

Context::~Context() {
    m_session.reset(); // closes the keyboard while its driver still exists
}

setup::OpenedDriver Context::OpenDriver(const setup::KeyboardChoice& choice) {
    setup::OpenedDriver driver = m_surroundings.openDriver(choice);
    if (!driver.unchosen.empty())
        Note("no --driver and no --keyboard: using the simulated keyboard in " +
             files::TextOf(driver.unchosen));
    return driver;
}

setup::KeyboardChoice Context::Chosen() const {
    setup::KeyboardChoice choice = options.keyboard;
    if (choice.driver.empty() && choice.keyboard.empty())
        choice.driver = m_surroundings.driver;
    choice.isolation = {
        {}, kDriverSilence, [this] { return !m_isWriting && InterruptWatch::Signal() != 0; }};
    return choice;
}

std::unique_ptr<host::Session> Context::NewSession() {
    m_interrupts.emplace();
    const setup::KeyboardChoice choice = Chosen();
    if (choice.driver != options.keyboard.driver)
        Note("no --driver and no --keyboard: using the driver " + files::TextOf(choice.driver));
    m_driver = OpenDriver(choice);
    return std::make_unique<host::Session>(
        *m_driver.driver, m_platform,
        setup::SessionOptions(m_driver, [this](int percent) { ShowProgress(percent); }));
}

host::Session& Context::Keyboard() {
    if (!m_session)
        m_session = NewSession();
    if (!std::exchange(m_isOpen, true)) {
        m_step = "reading";
        m_session->Open();
        for (const host::Error& warning : m_session->Warnings())
            Warn(MessageOf(warning));
        WarnOfInterruptedWrites();
    }
    EndIfInterrupted();
    return *m_session;
}

std::filesystem::path Context::DataFolder() const {
    return setup::RecordFolder(m_surroundings.dataFolder);
}

host::WriteRecords Context::Records() const {
    return host::WriteRecords(DataFolder());
}

host::Writer& Context::Writer() {
    if (!m_writer) {
        host::Session& keyboard = Keyboard();
        host::Writer::Options writing = setup::WriterOptions(
            m_driver, m_surroundings.dataFolder, [this] { return NamedConfiguration(); });
        writing.isStopped = [] { return InterruptWatch::Signal() != 0; };
        writing.onStep = [this](host::Step step) {
            m_step = TextOf(step);
            m_isWriting = m_isWriting || step == host::Step::Writing;
        };
        m_writer = std::make_unique<host::Writer>(keyboard, std::move(writing));
    }
    EndIfInterrupted();
    return *m_writer;
}

// An unreadable journal must not prevent reading from a keyboard.
void Context::WarnOfInterruptedWrites() {
    try {
        std::vector<host::DamagedRecord> damaged;
        const host::WriteRecords records = Records();
        const auto entries = records.journal.Entries(&damaged);
        if (entries.empty() && damaged.empty()) // the keyboard is read only if necessary
            return;
        const host::KeyboardIdentity identity = m_session->ReadIdentity();
        for (const host::DamagedRecord& record : damaged)
            if (host::Journal::MayBeOf(record, identity))
                Warn(MessageOf(record.error));
        const auto isBusy = [&](const host::JournalEntry& entry) {
            return entry.origin == m_driver.origin && records.IsInProgress(entry);
        };
        for (const host::JournalEntry& entry : entries)
            if (isBusy(entry))
                Warn("another program is busy with a " + host::InWords(entry));
        for (const host::JournalEntry& entry : host::PartlyHeld(*m_session, entries))
            if (!isBusy(entry)) {
                Warn("this keyboard holds a part of an interrupted " + host::InWords(entry) +
                     ": see qxconf recover");
                m_interrupted = ToJson(entry);
            }
    } catch (const host::Error& error) {
        Warn(MessageOf(error));
    }
}

host::Session& Context::Driver() {
    if (!m_session)
        m_session = NewSession();
    return *m_session;
}

sim::SimulatedDriver* Context::Simulated() {
    static_cast<void>(Driver());
    return m_driver.simulated;
}

void Context::CloseKeyboard() {
    if (m_session)
        m_session->Close();
    if (m_session && !m_writer)
        EndIfInterrupted();
}

QXKeyboardLayoutData& Context::Layout() {
    if (m_layout)
        return *m_layout;
    auto layout = std::make_unique<QXKeyboardLayoutData>();
    setup::OpenLayout(*layout, options.layouts, LayoutName());
    m_layout = std::move(layout);
    return *m_layout;
}

const std::string& Context::LayoutName() {
    if (m_layoutName.empty())
        m_layoutName = LayoutNameFor(m_isOpen && m_driver.layout ? m_driver.layout() : "");
    return m_layoutName;
}

std::string Context::LayoutNameFor(const std::string& ofKeyboard) {
    return setup::LayoutName(options.layout, ofKeyboard, [this] {
        return PreferenceStore(*this).Settings().PreferedKeyLang();
    });
}

host::ConfigurationDocument Context::UploadedDocument() {
    host::Session& session = Keyboard();
    const auto configuration = NewConfiguration();
    auto sections = session.SectionsIn(*configuration);
    WarnOfDamage(session.Upload(sections));
    auto document = configuration->Write(sections, session.Keyboard());
    CloseKeyboard();
    return document;
}

void Context::WarnOfDamage(const std::vector<host::Fault>& damaged) {
    for (const host::Fault& fault : damaged) {
        Warn("left out " + ToText(fault));
        m_damaged.push_back(ToJson(fault));
    }
}

std::unique_ptr<host::Configuration> Context::NewConfiguration() {
    const auto use = m_isOpen ? host::LayoutUse::Keyboard : host::LayoutUse::Captions;
    return std::make_unique<host::Configuration>(m_platform, &Layout(), nullptr, use);
}

std::unique_ptr<host::Configuration> Context::NamedConfiguration() {
    auto configuration = NewConfiguration();
    if (!m_captions)
        m_captions = CaptionsFor(m_session->Keyboard());
    configuration->SetCaptions(*m_captions);
    return configuration;
}

void Context::NameOptions(host::Configuration& configuration,
                          const host::ConfigurationDocument& document) {
    configuration.SetCaptions(CaptionsFor(
        host::KeyboardInfo::In(document.Find(host::ConfigurationDocument::kKeyboardKey))));
}

host::OptionCaptions Context::CaptionsFor(const host::KeyboardInfo& keyboard) {
    std::vector<host::Error> warnings;
    auto captions = setup::CaptionsFor(keyboard, m_surroundings.dataFolder, warnings);
    if (!std::exchange(m_isCaptionsWarned, true))
        for (const host::Error& warning : warnings)
            Note(MessageOf(warning));
    return captions;
}

void Context::Result(const host::Json& json, const Lines& lines) {
    if (options.json)
        JsonResult(json);
    else
        m_console.Result(lines);
}

void Context::JsonResult(const host::Json& json) {
    host::Json result = {{"schema", kSchema}};
    result.update(json);
    if (!m_damaged.empty())
        result["damaged"] = m_damaged;
    if (!m_interrupted.is_null() && !json.contains("interrupted"))
        result["interrupted"] = m_interrupted;
    m_console.Result(result);
}

void Context::DocumentResult(const host::Json& json, const host::Json& document) {
    if (options.json)
        return Result(json, {});
    m_console.Result(document);
}

std::string Context::StandardInput() {
    std::string text;
    char part[1 << 16];
    std::istream& in = *m_surroundings.in;
    while (in.read(part, sizeof part) || in.gcount() > 0) {
        text.append(part, static_cast<std::size_t>(in.gcount()));
        if (text.size() > files::kMostOfDocument)
            throw host::Error(host::Cause::InputEndless,
                              {.count = static_cast<std::int64_t>(files::kMostOfDocument)});
    }
    return text;
}

int Context::Report(const host::Error& error) {
    const bool isEnded = error.Kind() == host::ErrorKind::Stopped ||
                         error.problem.obstacle == files::Obstacle::EndedByUser;
    if (isEnded && InterruptWatch::Signal() != 0)
        return Report(Interrupted{InterruptWatch::Signal()});
    const auto& faults = error.faults;
    m_console.Error("qxconf: " + MessageOf(error));
    for (std::size_t i = 1; i < std::min(faults.size(), kShownFaults); ++i)
        m_console.Error("        " + ToText(faults[i]));
    if (faults.size() > kShownFaults)
        m_console.Error("        and " + std::to_string(faults.size() - kShownFaults) + " more");
    if (options.json)
        JsonResult({{"error", host::ToJson(error)}});
    return ExitStatusOf(error.Kind());
}

int Context::Report(const Interrupted& interrupted) {
    const std::string message = "ended by " + InterruptWatch::NameOf(interrupted.signal) +
                                "; nothing was written to the keyboard";
    m_console.Error("qxconf: " + message);
    if (options.json) {
        host::Json json =
            host::ToJson(host::Error(host::Cause::Stopped, {.holds = host::Holds::NotTouched}));
        json["message"] = message;
        JsonResult({{"error", std::move(json)}});
    }
    return kEndedBySignal + interrupted.signal;
}

} // namespace qx::cli
