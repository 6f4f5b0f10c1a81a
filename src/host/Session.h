// Session: work with one keyboard, from its start-up to its shut-down.
//
// A session opens the keyboard, transfers whole configurations in the order of the controls'
// contract, and returns the keyboard to its normal state however the session ends. It reports
// success only if every driver call with a meaningful status has succeeded, even where the controls
// themselves ignore the status, and if a read has evidently moved all requested bytes. Upload
// always means keyboard to PC, Download PC to keyboard.
//
// Only QXKeyboardAccess calls the driver; the WatchedDriver in between only observes.
#pragma once

#include "host/Configuration.h"
#include "host/KeyboardContent.h"
#include "host/MessageWindow.h"
#include "host/WatchedDriver.h"
#include "qxcontrols/device/QXKeyboardAccess.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace qx::host {

// An area of a section in one keyboard.
struct PlacedArea : Area {
    Long address;
};

class Session {
public:
    struct Options {
        // Receives the percentage done, 0 to 100, during transfers.
        std::function<void(int)> progress;
        // The meaning of a driver's status, for messages; the function or its result may be empty.
        std::function<std::string(Long)> statusText;
        // Adds why the driver's last call failed, from a driver that has it as data; may be empty.
        std::function<void(ErrorFacts&)> explain;
        // Why the driver no longer answers; the function may be empty, and there is no problem
        // while the driver works.
        std::function<std::optional<files::Problem>()> failure;
    };

    // The driver and the services must outlive the session.
    explicit Session(ConfigDriver& driver, const Platform& platform = {}, Options options = {});
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    // Starts up the keyboard. Throws Error(KeyboardNotOpened) if QXKeyboardAccess::Init fails or
    // the directory is empty.
    void Open();
    // The information that the start-up could not read.
    [[nodiscard]] const std::vector<Error>& Warnings() const { return m_warnings; }
    // Returns the keyboard to its normal state; so does the destructor.
    void Close();
    // Makes the driver check which keyboard is connected: another one may have been plugged in.
    // Clears the image. Throws Error(TransferFailed).
    void LookAgain();

    [[nodiscard]] QXKeyboardAccess& Access() { return m_access; }
    [[nodiscard]] KeyboardInfo Keyboard() const { return KeyboardInfo::Of(m_access); }

    // The section's areas that the keyboard has, with their sizes.
    [[nodiscard]] std::vector<PlacedArea> Areas(Section& section) const;
    // Whether the keyboard has everything the section requires.
    [[nodiscard]] bool Has(const Section& section) const;
    // The sections of the configuration that the keyboard has, as far as its directory could be
    // read. The sections are notified of missing areas, and whether to ignore settings for them
    // instead of refusing them.
    [[nodiscard]] std::vector<Section*> Present(const Configuration& configuration,
                                                bool fSkipAbsent = false) const;
    // The same for a transfer of all sections, or of those in a document. Throws
    // Error(TransferFailed) if one of them is not found in the directory and some entries could not
    // be read.
    [[nodiscard]] std::vector<Section*>
    SectionsIn(const Configuration& configuration, bool fSkipAbsent = false,
               const ConfigurationDocument* document = nullptr) const;

    struct Wanted {
        std::vector<Section*> sections;
        std::vector<Fault> absent; // those of the document that the keyboard lacks
    };
    // Reads a document for this keyboard into the configuration, as Configuration::Read does. Also
    // throws Error(DocumentInvalid) for sections that the keyboard lacks, unless fSkipAbsent, and
    // Error(TransferFailed) as SectionsIn does.
    [[nodiscard]] Wanted Read(Configuration& configuration, const ConfigurationDocument& document,
                              Variables& variables, bool fSkipAbsent) const;

    // Reads the sections from the keyboard without changing it. Throws Error(TransferFailed); the
    // controls' contents must not be used then. Sections with bytes that no document can express
    // get their default values and are removed from `sections`; they are returned with their places
    // in a document and the kind of damage.
    std::vector<Fault> Upload(std::vector<Section*>& sections);

    // Writes the sections to the keyboard: the stretches the controls request, and everything else
    // they have encoded, so that a later upload yields the same settings. Throws
    // Error(TransferFailed); nothing has been written then, unless the transfer itself was
    // interrupted, which the error shows.
    void Download(const std::vector<Section*>& sections);

    // The opened keyboard's identity, without its GUID. Throws Error(TransferFailed), also if
    // entries of its directory, which is part of the identity, could not be read.
    [[nodiscard]] KeyboardIdentity ReadIdentity();
    // Reads the bytes of all areas of the configuration's sections that the keyboard has. Throws
    // Error(TransferFailed).
    [[nodiscard]] KeyboardContent ReadContent(const Configuration& configuration);
    // The bytes at these places, ignoring the given bytes.
    [[nodiscard]] KeyboardContent ReadPlaces(KeyboardContent places);
    // Reads the same areas again. Bytes that do not come from the keyboard are never mistaken for
    // `expected`.
    [[nodiscard]] KeyboardContent ReadAgain(const KeyboardContent& expected);

    // Puts the new bytes of the ranges into the image and requests them. Throws
    // Error(TransferFailed), which ends the transfer without touching the keyboard.
    void PrepareSending(const std::vector<ByteRange>& ranges);
    // Sends the prepared bytes. Throws Error(TransferFailed); the keyboard's contents are then
    // unknown.
    void Send();

    // Runs an operation of the keyboard and throws `failure`, with the call, if one of its driver
    // calls with a meaningful status fails.
    void Run(const Error& failure, const std::function<void()>& operation);

private:
    class Assigned; // assigns the keyboard to the sections' controls temporarily
    // Ends a transfer in its destructor.
    struct TransferEnd {
        QXKeyboardAccess& access;
        ~TransferEnd() { access.DataTransferFixUp(); }
    };

    // The error with the failed call, or with the reason why the driver is gone.
    [[nodiscard]] std::optional<files::Problem> DriverProblem() const;
    [[nodiscard]] Error Failed(Error failure, const FailedCall& call) const;
    [[nodiscard]] Error ReadingFailed(const FailedCall& call) const {
        return Failed(Error(Cause::ReadingFailed), call);
    }
    void FindHoles();
    void ReadPieces(KeyboardContent& content);
    [[nodiscard]] KeyboardIdentity IdentityAsFound();
    void Load();
    void LeaveOutMissingAreas(const Section& section);
    void LeaveOutKeptAreas(const Section& section);
    void RequestRest(const std::vector<Section*>& sections);
    [[nodiscard]] std::optional<Fault> DamageOf(Section& section);
    [[nodiscard]] Long AreaAddress(const Area& area) const; // -1 if there is none
    [[nodiscard]] KeyboardModuleIDs ModuleAt(const std::vector<Section*>& sections,
                                             Long address) const;

    WatchedDriver m_driver;
    Platform m_platform;
    Options m_options;
    MessageWindow m_window;
    QXKeyboardAccess m_access;
    std::unique_ptr<QXKeyboardAccess> m_again; // of the last LookAgain, if any
    std::vector<Error> m_warnings;
    std::vector<Error> m_holes;  // in the directory
    bool m_hidesEntries = false; // the first hole is of unreadable entries
    bool m_isNamed = false;      // the start-up has read names and capabilities
    bool m_isOpen = false;
};

} // namespace qx::host
