// Session: work with one keyboard, from its start-up to its shut-down.
//
// A session opens the keyboard, moves whole configurations from it and to it in the order of the
// controls' contract, and gives the keyboard back when it ends, whatever ends it. It reports
// success only when every driver call that matters has succeeded, also where the controls
// themselves do not look at a status. Upload always means keyboard to PC, Download PC to keyboard.
#pragma once

#include "host/Configuration.h"
#include "host/KeyboardContent.h"
#include "host/MessageWindow.h"
#include "host/WatchedDriver.h"
#include "qxcontrols/device/QXKeyboardAccess.h"

#include <functional>
#include <set>
#include <string>
#include <vector>

namespace qx::host {

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

    // Starts the keyboard up. Throws Error(KeyboardNotOpened) when that fails in any of its calls.
    void Open();
    // Gives the keyboard back. Throws Error(TransferFailed) when that fails. The destructor does
    // the same for a session that is still open, without a word.
    void Close();
    // Has the driver look again which keyboard is there: another one may have been plugged in. Its
    // image is lost. Throws Error(TransferFailed).
    void LookAgain();

    [[nodiscard]] QXKeyboardAccess& Access() { return m_access; }
    [[nodiscard]] KeyboardInfo Keyboard() const { return KeyboardInfo::Of(m_access); }

    // Whether the keyboard has all that the section requires.
    [[nodiscard]] bool Has(const Section& section) const;
    // The sections of the configuration that the keyboard has. They are told which of their areas
    // it lacks, and whether to pass over settings that would lie there instead of refusing them.
    [[nodiscard]] std::vector<Section*> SectionsIn(const Configuration& configuration,
                                                   bool fSkipAbsent = false) const;

    // Reads the sections from the keyboard. Throws Error(TransferFailed); what the controls then
    // hold is not to be used. Never changes the keyboard.
    void Upload(const std::vector<Section*>& sections);

    // Writes the sections into the keyboard: what the controls request, and whatever else they have
    // encoded, so that a later upload gives the same settings. Throws Error(TransferFailed) and has
    // then written nothing, except when the transfer itself broke off, which its message says.
    void Download(const std::vector<Section*>& sections);

    // What the opened keyboard says of itself, without its GUID. Throws Error(TransferFailed).
    [[nodiscard]] KeyboardIdentity ReadIdentity();
    // Reads all areas of the configuration's sections that the keyboard has, as bytes. Throws
    // Error(TransferFailed).
    [[nodiscard]] KeyboardContent ReadContent(const Configuration& configuration);
    // The same areas again, now. What does not come from the keyboard is never taken for
    // `expected`.
    [[nodiscard]] KeyboardContent ReadAgain(const KeyboardContent& expected);

    // Puts the new bytes of the ranges into the image and requests them. Throws
    // Error(TransferFailed); the keyboard is not touched.
    void PrepareSending(const std::vector<ByteRange>& ranges);
    // Sends what has been prepared. Throws Error(TransferFailed); what the keyboard then holds is
    // not known.
    void Send();

    // Runs an operation of the keyboard and throws Error(TransferFailed) when one of its driver
    // calls fails; `what` begins the message.
    void Run(const std::string& what, const std::function<void()>& operation);

private:
    class Assigned; // gives the sections' controls the keyboard for a while

    void Attempt(ErrorKind kind, const std::string& what, const std::function<void()>& operation);
    void LeaveOutMissingAreas(const Section& section);
    void LeaveOutKeptAreas(const Section& section);
    void LoadPieces(KeyboardContent& content);
    void RequestRest(const std::vector<Section*>& sections);
    [[nodiscard]] Long AreaAddress(const Area& area) const;
    [[nodiscard]] KeyboardModuleIDs ModuleAt(const std::vector<Section*>& sections,
                                             Long address) const;

    WatchedDriver m_driver;
    Options m_options;
    MessageWindow m_window;
    QXKeyboardAccess m_access;
    bool m_isOpen = false;
};

} // namespace qx::host
