// Context: the environment of every command.
//
// It holds the global options and the console, creates services on first use, and writes results.
#pragma once

#include "cli/Console.h"
#include "cli/Errors.h"
#include "cli/InterruptWatch.h"
#include "host/Session.h"
#include "host/Writer.h"
#include "setup/DriverSource.h"

#include <chrono>
#include <functional>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace qx {
class QXKeyboardLayoutData;
class QXProgSettings;
} // namespace qx

namespace qx::cli {

// The program's environment; tests provide their own.
struct Surroundings {
    std::function<setup::OpenedDriver(const setup::KeyboardChoice&)> openDriver = setup::OpenDriver;
    std::istream* in = &std::cin;
    // The driver library for commands without an option for it; empty: the simulated one.
    std::filesystem::path driver;
    // Waits a while, when polling.
    std::function<void()> pause = [] { std::this_thread::sleep_for(std::chrono::seconds(1)); };
    // The folder for backups, journal and receipts; empty: in the user's data folder.
    std::filesystem::path dataFolder;
};

struct GlobalOptions {
    setup::KeyboardChoice keyboard;
    std::filesystem::path layouts;
    std::string layout;
    std::filesystem::path settings;
    bool trace = false;
    bool json = false;
    bool quiet = false;
};

class Context {
public:
    Context(Streams streams, Surroundings surroundings);
    ~Context();
    Context(const Context&) = delete;
    Context& operator=(const Context&) = delete;

    GlobalOptions options;

    // The exit status of a command that completes; 0 by default.
    int exitStatus = 0;

    // Called once the options are set.
    void Begin() { m_console.isQuiet = options.quiet; }

    // The keyboard, started up by the first call. Throws host::Error and Interrupted; Writer and
    // CloseKeyboard also throw Interrupted before and after the keyboard is written to.
    [[nodiscard]] host::Session& Keyboard();
    // The same without start-up, for functions of the driver that need no keyboard.
    [[nodiscard]] host::Session& Driver();
    // The writer for the opened keyboard. Throws host::Error.
    [[nodiscard]] host::Writer& Writer();
    // The records of all writes to any keyboard.
    [[nodiscard]] host::WriteRecords Records() const;
    // The simulated keyboard, not started up; null for any other driver.
    [[nodiscard]] sim::SimulatedDriver* Simulated();
    // Closes the keyboard, if one is open. No driver can refuse that.
    void CloseKeyboard();

    // The keyboard layout: the chosen one, or else the opened keyboard's, or else the preferred
    // one. Throws host::Error(LayoutInvalid).
    [[nodiscard]] QXKeyboardLayoutData& Layout();

    // The name by which that layout is opened; and the layout name for a keyboard with this layout
    // name, or without one (empty).
    [[nodiscard]] const std::string& LayoutName();
    [[nodiscard]] std::string LayoutNameFor(const std::string& ofKeyboard);

    // All settings of the keyboard, which is then closed.
    [[nodiscard]] host::ConfigurationDocument UploadedDocument();
    // Warns about sections of the keyboard that no document can express, and that are omitted.
    void WarnOfDamage(const std::vector<host::Fault>& damaged);
    // A configuration with default values, for the opened keyboard or, if none is open, for any:
    // then all keys are treated as programmable.
    [[nodiscard]] std::unique_ptr<host::Configuration> NewConfiguration();
    // The same for the opened keyboard, with the names of its options, for lists of settings.
    [[nodiscard]] std::unique_ptr<host::Configuration> NamedConfiguration();
    // Names the options of a configuration as for the keyboard of the document, which it has read.
    void NameOptions(host::Configuration& configuration,
                     const host::ConfigurationDocument& document);

    // For commands that use other keyboards than the one in the options: drivers, services of
    // controls, the folder of all records, and waiting.
    // According to the options. Its isolation must not outlive this object.
    [[nodiscard]] setup::KeyboardChoice Chosen() const;
    [[nodiscard]] setup::OpenedDriver OpenDriver(const setup::KeyboardChoice& choice);
    [[nodiscard]] const Platform& Services() const { return m_platform; }
    [[nodiscard]] std::filesystem::path DataFolder() const;
    void Pause() const { m_surroundings.pause(); }

    // Writes a command's result: the lines, or the members of `json` with the schema number.
    void Result(const host::Json& json, const Lines& lines);
    // The same with the document instead of lines.
    void DocumentResult(const host::Json& json, const host::Json& document);
    // The other functions are as in Console.
    void Flush() { m_console.Flush(); }
    void Text(const std::string& text) { m_console.Text(text); }
    void Note(std::string_view text) { m_console.Note(text); }
    // The same for loss, damage, an interrupted write or a changed identity, even with --quiet.
    void Warn(std::string_view text) { m_console.Error(text); }
    void Trace(std::string_view text) { m_console.Error(text); }
    // All of standard input. Throws host::Error(FileFailed) if it is larger than any file may be.
    [[nodiscard]] std::string StandardInput();
    // Shows the progress of a transfer, if a terminal is used.
    void ShowProgress(int percent) { m_console.ShowProgress(m_step, percent); }
    // Reports an error and returns its exit status.
    int Report(const host::Error& error);
    int Report(const Interrupted& interrupted);

private:
    [[nodiscard]] std::unique_ptr<host::Session> NewSession();
    void WarnOfInterruptedWrites();
    [[nodiscard]] host::OptionCaptions CaptionsFor(const host::KeyboardInfo& keyboard);
    // Writes these members, with the schema number and the known facts about the opened keyboard.
    void JsonResult(const host::Json& json);
    class MessageBoxLines;

    Console m_console;
    Surroundings m_surroundings;
    std::unique_ptr<MessageBoxLines> m_boxes;
    Platform m_platform;
    setup::OpenedDriver m_driver;
    std::optional<InterruptWatch> m_interrupts; // while a keyboard is open
    std::string_view m_step = "transfer";       // the work's current step, shown in the bar
    bool m_isWriting = false; // or has written: the driver is then left all of its time
    std::unique_ptr<host::Session> m_session;
    std::unique_ptr<host::Writer> m_writer;
    bool m_isOpen = false;
    std::unique_ptr<QXKeyboardLayoutData> m_layout;
    std::string m_layoutName;                       // empty until needed
    std::optional<host::OptionCaptions> m_captions; // of the opened keyboard, once needed
    bool m_isCaptionsWarned = false;
    host::Json m_damaged = host::Json::array();
    host::Json m_interrupted; // the interrupted write found when the keyboard was opened
};

} // namespace qx::cli
