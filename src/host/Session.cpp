#include "host/Session.h"

#include "qxcontrols/common/Text.h"

#include <algorithm>

namespace qx::host {

namespace {

// The message that this host has drivers post for their progress; 0x8000 is the first number that
// belongs to applications.
constexpr Long kProgressMessage = 0x8000;

bool IsAddress(Long address) {
    return address >= 0 && address < kAddressLimit;
}

constexpr const char* kImageRead = "QXCFG_ImageRead";
constexpr const char* kGetEntry = "QXCFG_ConfigDirectoryGetEntry";

} // namespace

// The controls work with the session's keyboard during a transfer, and then again with the one that
// they had before, if any: configuration and session may end in any order.
class Session::Assigned {
public:
    Assigned(const std::vector<Section*>& sections, QXKeyboardAccess& access) {
        for (Section* section : sections) {
            m_before.emplace_back(section->Control(), section->Control().Keyboard());
            section->Control().SetKeyboard(&access);
        }
    }
    ~Assigned() {
        for (const auto& [control, keyboard] : m_before)
            control.SetKeyboard(keyboard);
    }
    Assigned(const Assigned&) = delete;
    Assigned& operator=(const Assigned&) = delete;

private:
    std::vector<std::pair<ModuleControl&, QXKeyboardAccess*>> m_before;
};

Session::Session(ConfigDriver& driver, const Platform& platform, Options options)
    : m_driver(driver), m_platform(platform), m_options(std::move(options)),
      m_window([this](std::int32_t lMsg, std::int32_t, std::int32_t lParam) {
          if (lMsg == kProgressMessage && m_options.progress)
              m_options.progress(std::clamp(lParam, 0, 100));
      }),
      m_access(m_driver, platform) {}

Session::~Session() {
    try {
        Close();
    } catch (const std::exception&) { // nobody is left to catch it
    }
}

std::optional<files::Problem> Session::DriverProblem() const {
    return m_options.failure ? m_options.failure() : std::nullopt;
}

Error Session::Failed(Error failure, const FailedCall& call) const {
    if (const auto problem = DriverProblem()) {
        failure.problem = *problem;
        return failure;
    }
    failure.call = call;
    failure.call->meaning = m_options.statusText ? m_options.statusText(call.status) : "";
    if (m_options.explain)
        m_options.explain(failure);
    return failure;
}

void Session::Run(const Error& failure, const std::function<void()>& operation) {
    m_driver.BeginOperation();
    operation();
    if (const auto& call = m_driver.Failure())
        throw Failed(failure, *call);
}

void Session::Open() {
    bool hasNames = false;
    const Subscription naming =
        m_access.InitKeyboardNamingOK.Subscribe([&hasNames] { hasNames = true; });
    m_driver.BeginOperation();
    m_isOpen = m_access.Init();
    const auto& failure = m_driver.Failure();
    if (const auto problem = DriverProblem())
        throw Error(Cause::OpeningFailed, {.problem = *problem});
    if (!m_isOpen && failure)
        throw Failed(Error(Cause::OpeningFailed), *failure);
    FindHoles();
    if (!m_isOpen || (m_access.DirectorySize() == 0 && m_holes.empty()))
        throw Error(Cause::NoDirectory);
    m_warnings = m_holes;
    m_isNamed = !failure;
    if (failure && failure->function == kImageRead)
        m_warnings.push_back(Failed(
            Error(hasNames ? Cause::CapabilitiesUnreadable : Cause::NamesUnreadable), *failure));
    m_driver.QXSIM_SetMessagePoster(&MessageWindow::Post);
    m_access.SetNotificationValues(m_window.Handle(), kProgressMessage);
}

// Collects the directory's unreadable entries and impossible addresses: each may hide a module.
void Session::FindHoles() {
    m_holes.clear();
    m_hidesEntries = m_driver.Unreadable().count > 0;
    if (const auto& entries = m_driver.Unreadable(); entries.count > 0)
        m_holes.push_back(
            Error(Cause::EntriesUnreadable, {.count = entries.count,
                                             .index = entries.first,
                                             .call = FailedCall{kGetEntry, entries.status}}));
    for (int i = 1; i <= m_access.DirectorySize(); ++i) {
        const ConfigDirEntry& entry = *m_access.DirectoryItem(static_cast<Integer>(i));
        const Long address = entry.StartAddress();
        if (!NameOf(entry.ModuleType()).empty() && address != -1 && !IsAddress(address))
            m_holes.push_back(
                Error(Cause::AddressImpossible, {.name = std::string(NameOf(entry.ModuleType())),
                                                 .place = {.address = address}}));
    }
}

void Session::LookAgain() {
    auto again = std::make_unique<QXKeyboardAccess>(m_driver, m_platform);
    m_driver.BeginOperation();
    if (!again->Init()) {
        const auto& failure = m_driver.Failure();
        throw failure ? ReadingFailed(*failure) : Error(Cause::DirectoryGone);
    }
    if (const auto& entries = m_driver.Unreadable(); entries.count > 0)
        throw ReadingFailed({kGetEntry, entries.status});
    if (m_driver.Failure() && m_isNamed)
        throw ReadingFailed(*m_driver.Failure());
    m_again = std::move(again);
    m_access.SetNotificationValues(m_window.Handle(), kProgressMessage);
}

void Session::Close() {
    if (!std::exchange(m_isOpen, false))
        return;
    m_driver.QXSIM_SetMessagePoster(nullptr);
    m_access.Done();
}

Long Session::AreaAddress(const Area& area) const {
    const Long base =
        area.fixedAddress != -1 ? area.fixedAddress : m_access.GetBaseAddressForModule(area.module);
    return IsAddress(base) ? base + area.offset : -1;
}

std::vector<PlacedArea> Session::Areas(Section& section) const {
    std::vector<PlacedArea> areas;
    for (const Area& area : section.Info().areas) {
        const Long address = AreaAddress(area);
        if (address == -1)
            continue;
        areas.push_back({area, address});
        if (area.size == 0)
            areas.back().size = section.Control().TransferSize(true);
    }
    return areas;
}

bool Session::Has(const Section& section) const {
    const auto areas = section.Info().areas;
    return std::all_of(areas.begin(), areas.end(),
                       [&](const Area& area) { return !area.required || AreaAddress(area) != -1; });
}

std::vector<Section*> Session::Present(const Configuration& configuration, bool fSkipAbsent) const {
    std::vector<Section*> present;
    for (const auto& section : configuration.Sections()) {
        if (!Has(*section))
            continue;
        present.push_back(section.get());
        for (const Area& area : section->Info().areas)
            if (!area.required)
                section->NoteArea(area.module, AreaAddress(area) != -1, fSkipAbsent);
    }
    return present;
}

std::vector<Section*> Session::SectionsIn(const Configuration& configuration, bool fSkipAbsent,
                                          const ConfigurationDocument* document) const {
    for (const auto& section : configuration.Sections()) {
        const SectionInfo& info = section->Info();
        const bool isWhole = std::all_of(info.areas.begin(), info.areas.end(),
                                         [&](const Area& area) { return AreaAddress(area) != -1; });
        if (!m_holes.empty() && !isWhole &&
            (document == nullptr || document->Find(info.key) != nullptr))
            throw Error(Cause::SectionUnknown,
                        {.setting = NameOf(info), .place = {.section = std::string(info.key)}},
                        {m_holes.front()});
    }
    return Present(configuration, fSkipAbsent);
}

Session::Wanted Session::Read(Configuration& configuration, const ConfigurationDocument& document,
                              Variables& variables, bool fSkipAbsent) const {
    const auto present = SectionsIn(configuration, fSkipAbsent, &document);
    Wanted wanted{configuration.Read(document, variables), {}};
    std::erase_if(wanted.sections, [&](const Section* section) {
        const bool isAbsent = std::find(present.begin(), present.end(), section) == present.end();
        if (isAbsent)
            wanted.absent.emplace_back("/" + std::string(section->Info().key),
                                       FaultKind::NoSuchModule);
        return isAbsent;
    });
    if (!wanted.absent.empty() && !fSkipAbsent)
        throw Error(Cause::SectionsAbsent, {.place = {.file = document.Name()},
                                            .holds = Holds::NotTouched,
                                            .faults = wanted.absent});
    return wanted;
}

void Session::LeaveOutMissingAreas(const Section& section) {
    m_driver.EndLeavingOut();
    for (const Area& area : section.Info().areas)
        if (AreaAddress(area) == -1)
            m_driver.LeaveOut(m_access.GetBaseAddressForModule(area.module), area.size);
}

void Session::LeaveOutKeptAreas(const Section& section) {
    for (const Area& area : section.Info().areas)
        if (AreaAddress(area) != -1 && section.Keeps(area.module))
            m_driver.LeaveOut(AreaAddress(area), area.size);
}

// Where the section's bytes in the image are such that no document can express them.
std::optional<Fault> Session::DamageOf(Section& section) {
    for (const PlacedArea& area : Areas(section)) {
        std::string bytes;
        if (!m_access.ReadFromMemory(bytes, area.address, area.size))
            continue; // which fails the upload
        if (const auto damage = section.DamageIn(area.module, bytes)) {
            Fault fault("/" + std::string(section.Info().key), damage->kind,
                        Hex(area.address + damage->offset));
            fault.arguments.insert(fault.arguments.end(), damage->arguments.begin(),
                                   damage->arguments.end());
            return fault;
        }
    }
    return std::nullopt;
}

std::vector<Fault> Session::Upload(std::vector<Section*>& sections) {
    std::vector<Fault> damaged;
    const Assigned assigned(sections, m_access);
    std::vector<Section*> sound;
    Run(Error(Cause::ReadingFailed), [&] {
        const TransferEnd end{m_access};
        m_access.DataTransferPrepare();
        for (Section* section : sections) {
            LeaveOutMissingAreas(*section);
            section->Control().PrepareDataUpload(true);
        }
        m_driver.EndLeavingOut();
        Load();
        if (m_driver.Failure())
            return;
        for (Section* section : sections) {
            if (auto damage = DamageOf(*section)) {
                damaged.push_back(std::move(*damage));
                section->Control().DefaultValues();
                continue;
            }
            sound.push_back(section);
            LeaveOutMissingAreas(*section);
            section->Control().DataUpload(true);
        }
        m_driver.EndLeavingOut();
    });
    for (Section* section : sound)
        section->Uploaded();
    sections = std::move(sound);
    return damaged;
}

void Session::Download(const std::vector<Section*>& sections) {
    const Assigned assigned(sections, m_access);
    bool isEncoded = false; // a control that cannot encode a setting leaves part of its block out
    bool isSent = false;
    try {
        Run(Error(Cause::WritingFailed), [&] {
            const TransferEnd end{m_access};
            m_access.DataTransferPrepare();
            for (Section* section : sections) {
                LeaveOutMissingAreas(*section);
                LeaveOutKeptAreas(*section);
                section->Control().DataDownload(true);
                section->Control().PrepareDataDownload(true);
            }
            m_driver.EndLeavingOut();
            isEncoded = m_driver.Requested().Without(m_driver.Written()).empty();
            RequestRest(sections);
            if (isEncoded && !m_driver.Failure()) {
                isSent = true;
                (void)m_access.Download(); // its status is watched
            }
        });
        if (!isEncoded)
            throw Error(Cause::NoPlaceInBlock);
    } catch (Error& error) {
        error.holds = isSent ? Holds::Unknown : Holds::NotTouched;
        throw;
    }
}

void Session::RequestRest(const std::vector<Section*>& sections) {
    for (const Stretch& stretch : m_driver.Written().Without(m_driver.Requested()))
        m_access.MemRequestAdd(ModuleAt(sections, stretch.address), stretch.address, stretch.size);
}

KeyboardModuleIDs Session::ModuleAt(const std::vector<Section*>& sections, Long address) const {
    for (Section* section : sections)
        for (const PlacedArea& area : Areas(*section))
            if (address >= area.address && address - area.address < area.size)
                return area.requestedAs;
    return MODULE_KEYBOARD;
}

} // namespace qx::host
