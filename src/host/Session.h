// Session: work with one keyboard, from its start-up to its shut-down.
//
// A session opens the keyboard, moves whole configurations from it and to it in the order of the
// controls' contract, and gives the keyboard back when it ends, whatever ends it. It reports
// success only when every driver call with a meaningful status has succeeded, also where the
// controls themselves do not look at it, and when a reading is seen to have moved all that it was
// to move. Upload always means keyboard to PC, Download PC to keyboard.
//
// The driver is called by QXKeyboardAccess alone; the WatchedDriver in between only looks on.
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
        // Told the percent done, 0 to 100, during transfers.
        std::function<void(int)> progress;
        // The meaning of a driver's status, for messages; may be empty or give the empty text.
        std::function<std::string(Long)> statusText;
        // Why the driver no longer answers; may be empty, or give the empty text while it does.
        std::function<std::string()> failure;
    };

    // The driver and the services stay alive as long as the session.
    explicit Session(ConfigDriver& driver, const Platform& platform = {}, Options options = {});
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    // Starts the keyboard up. Throws Error(KeyboardNotOpened) when QXKeyboardAccess::Init fails, or
    // finds a directory without entries.
    void Open();
    // What the start-up could not read and did without.
    [[nodiscard]] const std::vector<Error>& Warnings() const { return m_warnings; }
    // Gives the keyboard back; so does the destructor.
    void Close();
    // Has the driver look again which keyboard is there: another one may have been plugged in. Its
    // image is lost. Throws Error(TransferFailed).
    void LookAgain();

    [[nodiscard]] QXKeyboardAccess& Access() { return m_access; }
    [[nodiscard]] KeyboardInfo Keyboard() const { return KeyboardInfo::Of(m_access); }

    // The section's areas that the keyboard has, with their sizes.
    [[nodiscard]] std::vector<PlacedArea> Areas(Section& section) const;
    // Whether the keyboard has all that the section requires.
    [[nodiscard]] bool Has(const Section& section) const;
    // The sections of the configuration that the keyboard has, as far as its directory could be
    // read. They are told which of their areas it lacks, and whether to ignore settings that would
    // lie there instead of refusing them.
    [[nodiscard]] std::vector<Section*> Present(const Configuration& configuration,
                                                bool fSkipAbsent = false) const;
    // The same for a transfer of all sections, or of those in a document. Throws
    // Error(TransferFailed) when the directory does not show one of them and has entries that could
    // not be read.
    [[nodiscard]] std::vector<Section*>
    SectionsIn(const Configuration& configuration, bool fSkipAbsent = false,
               const ConfigurationDocument* document = nullptr) const;

    // Reads the sections from the keyboard. Throws Error(TransferFailed); what the controls then
    // hold is not to be used. Never changes the keyboard. Sections whose bytes no document can
    // express get their default values, are taken out of `sections`, and are the result: their
    // places in a document, and where the keyboard is damaged.
    std::vector<Fault> Upload(std::vector<Section*>& sections);

    // Writes the sections into the keyboard: what the controls request, and whatever else they have
    // encoded, so that a later upload gives the same settings. Throws Error(TransferFailed) and has
    // then written nothing, except when the transfer itself broke off, as the error shows.
    void Download(const std::vector<Section*>& sections);

    // What the opened keyboard says of itself, without its GUID. Throws Error(TransferFailed), also
    // when entries of its directory could not be read, by which keyboards are known as well.
    [[nodiscard]] KeyboardIdentity ReadIdentity();
    // Reads all areas of the configuration's sections that the keyboard has, as bytes. Throws
    // Error(TransferFailed).
    [[nodiscard]] KeyboardContent ReadContent(const Configuration& configuration);
    // The bytes at these places, whatever is given for them.
    [[nodiscard]] KeyboardContent ReadPlaces(KeyboardContent places);
    // The same areas again, now. What does not come from the keyboard is never taken for
    // `expected`.
    [[nodiscard]] KeyboardContent ReadAgain(const KeyboardContent& expected);

    // Puts the new bytes of the ranges into the image and requests them. Throws
    // Error(TransferFailed), which ends the transfer; the keyboard is not touched.
    void PrepareSending(const std::vector<ByteRange>& ranges);
    // Sends what has been prepared. Throws Error(TransferFailed); what the keyboard then holds is
    // not known.
    void Send();

    // Runs an operation of the keyboard and throws `failure`, with the call, when one of its driver
    // calls with a meaningful status fails.
    void Run(const Error& failure, const std::function<void()>& operation);

private:
    class Assigned; // gives the sections' controls the keyboard for a while
    // Ends a transfer, whatever ends it.
    struct TransferEnd {
        QXKeyboardAccess& access;
        ~TransferEnd() { access.DataTransferFixUp(); }
    };

    // The error with the call that failed, or with the reason for which the driver is gone.
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
    [[nodiscard]] Long AreaAddress(const Area& area) const; // -1 where there is none
    [[nodiscard]] KeyboardModuleIDs ModuleAt(const std::vector<Section*>& sections,
                                             Long address) const;

    WatchedDriver m_driver;
    Platform m_platform;
    Options m_options;
    MessageWindow m_window;
    QXKeyboardAccess m_access;
    std::unique_ptr<QXKeyboardAccess> m_again; // of the last look, if there was one
    std::vector<Error> m_warnings;
    std::vector<Error> m_holes;  // of the directory
    bool m_hidesEntries = false; // the first hole is of entries that could not be read
    bool m_isNamed = false;      // the start-up has read names and abilities
    bool m_isOpen = false;
};

} // namespace qx::host
