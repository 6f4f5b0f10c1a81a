#include "app/Workbench.h"

#include "app/Failure.h"
#include "app/Places.h"
#include "app/SettingWords.h"
#include "files/Files.h"
#include "files/Sha256.h"
#include "files/SystemTexts.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "setup/LayoutSource.h"
#include "views/Bindings.h"

#include <algorithm>

namespace qx::app {

using host::Section;
using views::ToQt;

// While it lives, the controls change by themselves, not by the user.
class Workbench::Busy {
public:
    explicit Busy(Workbench& workbench) : m_flag(workbench.m_isBusy) {
        m_before = std::exchange(m_flag, true);
    }
    ~Busy() { m_flag = m_before; }
    Busy(const Busy&) = delete;
    Busy& operator=(const Busy&) = delete;

private:
    bool& m_flag;
    bool m_before;
};

Workbench::Workbench(const Platform& platform, Options options)
    : m_platform(platform), m_options(std::move(options)), m_store(m_options.settings),
      m_preferences(m_store, platform) {
    m_preferences.Load();
    if (m_store.IsNew() && m_options.hasWindows) {
        FitColours(host::ColourSetId::Classic);   // the defaults
        m_preferences.SetWinParam(0, 0, 0, 0, 0); // the window chooses its first place
        SavePreferences();
    }
    try {
        OpenLayout();
    } catch (const host::Error&) { // reported when a keyboard is connected
        setup::OpenLayout(m_layout, m_options.layouts, setup::LayoutName({}, {}));
    }
    m_configuration = std::make_unique<host::Configuration>(m_platform, &m_layout, &m_preferences);
    m_faces = std::make_unique<SectionFaces>(*m_configuration);
    m_history = std::make_unique<host::History>(*m_configuration);
    for (const auto& section : m_configuration->Sections()) {
        Section& edited = *section;
        m_edits.push_back(
            edited.Control().Refreshed.Subscribe([this, &edited] { NoteEdit(edited); }));
    }
}

Workbench::~Workbench() {
    Disconnect();
}

void Workbench::Quietly(const std::function<void()>& change) {
    const Busy busy(*this);
    change();
}

void Workbench::Connect(setup::KeyboardChoice choice) {
    m_options.keyboard = std::move(choice);
    Connect();
}

void Workbench::Connect() {
    Disconnect();
    m_stages.Begin();
    try {
        setup::KeyboardChoice choice = m_options.keyboard;
        choice.isolation.onWait = [this] { emit Waits(); };
        m_driver = setup::OpenDriver(choice);
        m_driverNote = m_driver.unchosen.empty()
                           ? QString()
                           : tr("No keyboard was chosen: the simulated keyboard in %1 is used.")
                                 .arg(ToQt(m_driver.unchosen));
        m_session = std::make_unique<host::Session>(
            *m_driver.driver, m_platform,
            setup::SessionOptions(m_driver, [this](int percent) { emit Progressed(percent); }));
        m_stages.Follow(m_session->Access());
        m_session->Access().SetCommandDelta(m_preferences.CommandDelta());
        m_session->Open();
        for (const host::Error& warning : m_session->Warnings())
            emit Noticed(WarningText(warning));
        Quietly([this] { m_faces->Follow(*m_session); });
        NameOptions();
        ReloadPreferences();
    } catch (...) {
        Disconnect();
        m_stages.BreakOff();
        throw;
    }
    emit KeyboardChanged();
}

void Workbench::Disconnect() {
    if (!m_session)
        return;
    emit Leaving();
    const Busy busy(*this);
    m_faces->FollowNone();
    m_stages.Leave();
    try {
        m_session->Close();
    } catch (const host::Error& error) {
        emit Noticed(FailureOf({}, error).text);
    }
    m_writer.reset();
    m_session.reset();
    m_driver = {};
    emit KeyboardChanged();
}

host::Session& Workbench::Session() {
    if (!IsConnected())
        throw host::Error(host::Cause::NoKeyboardConnected);
    return *m_session;
}

bool Workbench::Has(const Section& section) const {
    return !IsConnected() || m_session->Has(section);
}

void Workbench::ReadKeyboard() {
    const bool isMixture = !Interrupted().empty();
    const Busy busy(*this);
    const auto before = m_configuration->TakeAll();
    auto sections = m_session->SectionsIn(*m_configuration, true);
    try {
        for (const host::Fault& fault : m_session->Upload(sections))
            emit Noticed(tr("%1: damaged in the keyboard, and left out of the document.")
                             .arg(SectionTitle(SectionOfPlace(fault.place))));
    } catch (...) {
        m_configuration->RestoreAll(before);
        throw;
    }
    m_file.clear();
    m_keyboardNote.reset();
    m_isMixture = isMixture;
    m_history->Restart(sections, true);
    emit DocumentChanged();
    emit Held(true);
}

std::vector<Section*> Workbench::WantedSections() const {
    std::vector<Section*> wanted = m_history->Sections();
    std::erase_if(wanted, [&](const Section* section) { return !Has(*section); });
    return wanted;
}

std::vector<Section*> Workbench::AbsentSections() const {
    std::vector<Section*> absent = m_history->Sections();
    std::erase_if(absent, [&](const Section* section) { return Has(*section); });
    return absent;
}

host::WriteRecords Workbench::Records() const {
    return host::WriteRecords(setup::RecordFolder(m_options.records));
}

host::Writer& Workbench::Writer() {
    if (m_writer)
        return *m_writer;
    host::Writer::Options options =
        setup::WriterOptions(m_driver, m_options.records, [this] { return NewConfiguration(); });
    options.isStopped = [this] {
        emit StopAsked();
        return m_isStopRequested;
    };
    options.onStep = [this](host::Step step) { emit Stepped(step); };
    m_writer = std::make_unique<host::Writer>(Session(), std::move(options));
    return *m_writer;
}

template <typename Function>
auto Workbench::WithWriter(const Function& work) {
    const Busy busy(*this);
    return work(Writer());
}

template <typename Function>
auto Workbench::WithChange(const Function& work) {
    m_isStopRequested = false;
    try {
        const auto outcome = WithWriter(work);
        emit Held(false);
        return outcome;
    } catch (const host::Error& error) {
        if (error.holds != host::Holds::NotTouched && error.holds != host::Holds::Old)
            emit Held(false);
        throw;
    }
}

host::WritePlan Workbench::PlanWrite(bool repairs) {
    host::WritePlan plan = WithWriter([&](host::Writer& writer) {
        return writer.Plan(WantedSections(), {.full = false, .repair = repairs});
    });
    if (!repairs)
        emit Compared(plan.settings);
    return plan;
}

host::Writer::Outcome Workbench::WriteKeyboard(const host::WritePlan& plan) {
    host::Writer::Request request;
    request.document = files::TextOf(m_file);
    request.documentSha256 = files::Sha256(m_history->Document().ToText());
    const auto outcome =
        WithChange([&](host::Writer& writer) { return writer.Write(plan, request); });
    m_history->ResetDataChanged();
    emit Held(true);
    return outcome;
}

void Workbench::LoadKeyboardFile(const host::KeyboardFileKind& kind,
                                 const std::filesystem::path& file, const host::SerialLine& line) {
    WithChange([&](host::Writer& writer) {
        return host::LoadKeyboardFile(*m_session, writer, kind, file, line);
    });
}

std::vector<host::JournalEntry> Workbench::Interrupted() {
    return WithWriter([](host::Writer& writer) { return writer.Interrupted(); });
}

void Workbench::Recover(const host::JournalEntry& entry, host::Writer::Way way, bool isNamed) {
    WithChange([&](host::Writer& writer) { return writer.Recover(entry, way, isNamed); });
}

host::WritePlan Workbench::PlanRestore(const host::Backup& backup) {
    return WithWriter([&](host::Writer& writer) { return writer.PlanRestore(backup, true); });
}

void Workbench::Restore(const host::WritePlan& plan, const std::string& backup) {
    host::Writer::Request request;
    request.action = host::WriteAction::Restore;
    request.document = backup;
    WithChange([&](host::Writer& writer) { return writer.Write(plan, request); });
}

void Workbench::NewDocument() {
    const Busy busy(*this);
    std::vector<Section*> sections;
    for (const auto& section : m_configuration->Sections()) {
        section->Control().DefaultValues();
        section->Show();
        if (Has(*section))
            sections.push_back(section.get());
    }
    m_file.clear();
    m_keyboardNote.reset();
    m_isMixture = false;
    m_history->Restart(sections, true);
    emit DocumentChanged();
}

void Workbench::OpenDocument(const std::filesystem::path& file, OpenAs as) {
    TakeDocument(host::ConfigurationDocument::Load(file),
                 as == OpenAs::File ? file : std::filesystem::path());
    if (as == OpenAs::File)
        StoreLastDocument();
}

std::filesystem::path Workbench::UnsavedFolder() const {
    return setup::RecordFolder(m_options.records) / "unsaved";
}

// A document without its own file counts as changed.
void Workbench::TakeDocument(const host::ConfigurationDocument& document,
                             const std::filesystem::path& file) {
    const Busy busy(*this);
    const auto read = m_configuration->Read(document);
    for (const auto& section : m_configuration->Sections())
        if (std::find(read.begin(), read.end(), section.get()) == read.end()) {
            section->Control().DefaultValues();
            section->Show();
        }
    const host::Json* note = document.Find(host::ConfigurationDocument::kKeyboardKey);
    m_keyboardNote = note == nullptr ? nullptr : std::make_unique<host::Json>(*note);
    m_file = file;
    m_isMixture = false;
    if (!IsConnected())
        NameOptions();
    m_history->Restart(read, !file.empty());
    emit DocumentChanged();
}

void Workbench::StoreLastDocument() {
    m_preferences.SetLastDownloadFile(files::TextOf(m_file));
    StorePreferences();
}

QString Workbench::DocumentKeyboard() const {
    return ToQt(host::KeyboardInfo::In(m_keyboardNote.get()).name);
}

QString Workbench::KeyboardName() const {
    return IsConnected() ? ToQt(m_session->Keyboard().name) : QString();
}

host::ConfigurationDocument Workbench::Document() {
    const Busy busy(*this); // some controls show themselves when they are written
    if (IsConnected())
        return m_configuration->Write(m_history->Sections(), m_session->Keyboard());
    host::ConfigurationDocument document = m_history->Document();
    if (m_keyboardNote)
        document.Place(host::ConfigurationDocument::kKeyboardKey) = *m_keyboardNote;
    return document;
}

void Workbench::SaveDocument(const std::filesystem::path& file) {
    const host::ConfigurationDocument document = Document();
    try {
        files::WriteFileAtomically(file, document.ToText());
    } catch (const std::exception& error) {
        throw host::FileError(error);
    }
    m_file = file;
    m_history->MarkSaved();
    StoreLastDocument();
    emit DocumentChanged();
    for (const host::Loss& loss : document.Losses())
        emit Noticed(LossText(loss));
}

void Workbench::Edit(Section& section, const std::function<void()>& change, bool goesOn) {
    m_history->Seal();
    Quietly([&] {
        change();
        section.Control().SetDataChanged(true);
    });
    NoteEdit(section, goesOn);
    m_history->Seal();
}

// A control shows itself again after each selection too, which is not an edit.
void Workbench::NoteEdit(Section& section, bool goesOn) {
    if (m_isBusy)
        return;
    const Busy busy(*this); // writing a document has some controls show themselves
    if (!section.MarksEdits())
        section.Control().SetDataChanged(true);
    if (m_history->Note(goesOn))
        emit DocumentChanged();
    emit Touched();
}

void Workbench::Undo() {
    const Busy busy(*this);
    m_history->Undo();
    emit DocumentChanged();
}

void Workbench::Redo() {
    const Busy busy(*this);
    m_history->Redo();
    emit DocumentChanged();
}

} // namespace qx::app
