#include "host/Session.h"

#include "qxcontrols/common/Text.h"

#include <algorithm>

namespace qx::host {

namespace {

// The message that this host has drivers post for their progress; 0x8000 is the first number that
// belongs to applications.
constexpr Long kProgressMessage = 0x8000;

// No keyboard's memory reaches as far; the controls reckon with addresses up to here.
constexpr Long kAddressLimit = 1 << 30;

} // namespace

// The controls know the keyboard only while the session works with them, so that a configuration
// may outlive its session.
class Session::Assigned {
public:
    Assigned(const std::vector<Section*>& sections, QXKeyboardAccess& access)
        : m_sections(sections) {
        for (Section* section : m_sections)
            section->Control().SetKeyboard(&access);
    }
    ~Assigned() {
        for (Section* section : m_sections)
            section->Control().SetKeyboard(nullptr);
    }
    Assigned(const Assigned&) = delete;
    Assigned& operator=(const Assigned&) = delete;

private:
    const std::vector<Section*>& m_sections;
};

Session::Session(ConfigDriver& driver, const Platform& platform, Options options)
    : m_driver(driver), m_options(std::move(options)),
      m_window([this](std::int32_t lMsg, std::int32_t, std::int32_t lParam) {
          if (lMsg == kProgressMessage && m_options.progress)
              m_options.progress(std::clamp(lParam, 0, 100));
      }),
      m_access(m_driver, platform) {}

Session::~Session() {
    try {
        Close();
    } catch (const std::exception&) { // nobody is left to be told
    }
}

void Session::Attempt(ErrorKind kind, const std::string& what,
                      const std::function<void()>& operation) {
    m_driver.BeginOperation();
    operation();
    const auto& failure = m_driver.Failure();
    if (!failure)
        return;
    if (const std::string reason = m_options.failure ? m_options.failure() : ""; !reason.empty())
        throw Error(kind, what + ": " + reason);
    std::string message =
        what + ": " + failure->function + " gave status " + std::to_string(failure->status);
    const std::string meaning = m_options.statusText ? m_options.statusText(failure->status) : "";
    if (!meaning.empty())
        message += " (" + meaning + ")";
    throw Error(kind, message, failure->status);
}

void Session::Run(const std::string& what, const std::function<void()>& operation) {
    Attempt(ErrorKind::TransferFailed, what, operation);
}

void Session::Open() {
    bool ready = false;
    Attempt(ErrorKind::KeyboardNotOpened, "the keyboard could not be opened", [&] {
        ready = m_access.Init();
        m_isOpen = ready;
    });
    if (!ready || m_access.DirectorySize() == 0) // a negative size is none either
        throw Error(ErrorKind::KeyboardNotOpened,
                    "the keyboard could not be opened: it has no configuration directory");
    for (int i = 1; i <= m_access.DirectorySize(); ++i) {
        const ConfigDirEntry& entry = *m_access.DirectoryItem(static_cast<Integer>(i));
        const Long address = entry.StartAddress();
        if (!NameOf(entry.ModuleType()).empty() && (address < -1 || address >= kAddressLimit))
            throw Error(ErrorKind::KeyboardNotOpened,
                        "the keyboard could not be opened: its directory says that " +
                            std::string(NameOf(entry.ModuleType())) + " begins at " +
                            std::to_string(address) + ", which no memory has");
    }
    m_driver.QXSIM_SetMessagePoster(&MessageWindow::Post);
    m_access.SetNotificationValues(m_window.Handle(), kProgressMessage);
}

void Session::LookAgain() {
    Run("reading from the keyboard failed", [&] {
        if (m_driver.QXCFG_Init() != 0)
            return;
        if (m_access.HasItem(MODULE_LAYERED_FUNCKEYS))
            m_access.DisableFunctionKeyLayerSelection();
        m_access.SetNotificationValues(m_window.Handle(), kProgressMessage);
    });
}

void Session::Close() {
    if (!std::exchange(m_isOpen, false))
        return;
    m_driver.QXSIM_SetMessagePoster(nullptr);
    Run("the keyboard's own layer keys may still be blocked", [&] { m_access.Done(); });
}

Long Session::AreaAddress(const Area& area) const {
    return area.fixedAddress != -1 ? area.fixedAddress
                                   : m_access.GetBaseAddressForModule(area.module);
}

bool Session::Has(const Section& section) const {
    const auto areas = section.Info().areas;
    return std::all_of(areas.begin(), areas.end(),
                       [&](const Area& area) { return !area.required || AreaAddress(area) != -1; });
}

std::vector<Section*> Session::SectionsIn(const Configuration& configuration,
                                          bool fSkipAbsent) const {
    std::vector<Section*> present;
    for (const auto& section : configuration.Sections()) {
        if (!Has(*section))
            continue;
        present.push_back(section.get());
        for (const Area& area : section->Info().areas)
            if (AreaAddress(area) == -1)
                section->LacksArea(area.module, fSkipAbsent);
    }
    return present;
}

void Session::LeaveOutMissingAreas(const Section& section) {
    m_driver.EndLeavingOut();
    for (const Area& area : section.Info().areas)
        if (AreaAddress(area) == -1)
            m_driver.LeaveOut(-1, area.size);
}

void Session::LeaveOutKeptAreas(const Section& section) {
    for (const Area& area : section.Info().areas)
        if (AreaAddress(area) != -1 && section.Keeps(area.module))
            m_driver.LeaveOut(AreaAddress(area), area.size);
}

void Session::Upload(const std::vector<Section*>& sections) {
    const Assigned assigned(sections, m_access);
    Run("reading from the keyboard failed", [&] {
        m_access.DataTransferPrepare();
        for (Section* section : sections) {
            LeaveOutMissingAreas(*section);
            section->Control().PrepareDataUpload(true);
        }
        m_driver.EndLeavingOut();
        if (m_driver.Failure() || m_access.Upload() != 0)
            return m_access.DataTransferFixUp();
        for (Section* section : sections) {
            LeaveOutMissingAreas(*section);
            section->Control().DataUpload(true);
        }
        m_driver.EndLeavingOut();
        m_access.DataTransferFixUp();
    });
    for (Section* section : sections)
        section->Uploaded();
}

void Session::Download(const std::vector<Section*>& sections) {
    const Assigned assigned(sections, m_access);
    bool isEncoded = false; // a control that cannot encode a setting leaves part of its block out
    bool isSent = false;
    try {
        Run("writing to the keyboard failed", [&] {
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
            m_access.DataTransferFixUp();
        });
        if (!isEncoded)
            throw Error(ErrorKind::TransferFailed,
                        "writing to the keyboard failed: a setting has no place in its block");
    } catch (const Error& error) {
        throw Error(error.Kind(),
                    std::string(error.what()) +
                        (isSent ? "; the keyboard may be partly written" : "; nothing was written"),
                    error.Status().value_or(0));
    }
}

void Session::RequestRest(const std::vector<Section*>& sections) {
    for (const Stretch& stretch : m_driver.Written().Without(m_driver.Requested()))
        m_access.MemRequestAdd(ModuleAt(sections, stretch.address), stretch.address, stretch.size);
}

KeyboardModuleIDs Session::ModuleAt(const std::vector<Section*>& sections, Long address) const {
    for (Section* section : sections)
        for (const Area& area : section->Info().areas) {
            const Long base = AreaAddress(area);
            const Long size = area.size != 0 ? area.size : section->Control().TransferSize(true);
            if (base != -1 && address >= base && address - base < size)
                return area.requestedAs;
        }
    return MODULE_KEYBOARD;
}

} // namespace qx::host
