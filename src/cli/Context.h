// Context: what every command of the command line works with.
//
// It holds the global options and the console, makes the services that a command asks for on first
// use, and writes results.
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

// What the command line takes from its surroundings; tests put their own in.
struct Surroundings {
    std::function<setup::OpenedDriver(const setup::KeyboardChoice&)> openDriver = setup::OpenDriver;
    std::istream* in = &std::cin;
    // The driver library of the command that chooses no keyboard; empty: the simulated one.
    std::filesystem::path driver;
    // Lets some time pass while something is waited for.
    std::function<void()> pause = [] { std::this_thread::sleep_for(std::chrono::seconds(1)); };
    // Where backups, journal and receipts are; empty: in the user's data folder.
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

    // The exit status of a command that ran to its end; 0 unless set.
    int exitStatus = 0;

    // Called when the options have their values.
    void Begin() { m_console.isQuiet = options.quiet; }

    // The keyboard, started up at the first call. Throws host::Error; and, as Writer and
    // CloseKeyboard do before and after the keyboard is written to, Interrupted.
    [[nodiscard]] host::Session& Keyboard();
    // The same without start-up, for what the driver does without a keyboard.
    [[nodiscard]] host::Session& Driver();
    // What writes to the opened keyboard. Throws host::Error.
    [[nodiscard]] host::Writer& Writer();
    // The records of all writes, of any keyboard.
    [[nodiscard]] host::WriteRecords Records() const;
    // The simulated keyboard, not started up by this; null when the driver is another.
    [[nodiscard]] sim::SimulatedDriver* Simulated();
    // Gives the keyboard back, where one was opened. No driver can refuse that.
    void CloseKeyboard();

    // The keyboard layout: as chosen, else the one that the opened keyboard names, else the
    // preferred one. Throws host::Error(LayoutInvalid).
    [[nodiscard]] QXKeyboardLayoutData& Layout();

    // The name of that layout, as it is opened by; and of the one for a keyboard that names this
    // one, or none (the empty text).
    [[nodiscard]] const std::string& LayoutName();
    [[nodiscard]] std::string LayoutNameFor(const std::string& ofKeyboard);

    // All settings of the keyboard, which is closed then.
    [[nodiscard]] host::ConfigurationDocument UploadedDocument();
    // Warns of sections of the keyboard that no document can express, and that are left out.
    void WarnOfDamage(const std::vector<host::Fault>& damaged);
    // A configuration with default values, of the opened keyboard or, where none is open, of any:
    // then which keys can be programmed is not known.
    [[nodiscard]] std::unique_ptr<host::Configuration> NewConfiguration();

    // For commands that work with other keyboards than the one of the options: drivers, the
    // services of controls, the folder of all records, and the waiting.
    [[nodiscard]] setup::KeyboardChoice Chosen() const; // as the options say
    [[nodiscard]] setup::OpenedDriver OpenDriver(const setup::KeyboardChoice& choice);
    [[nodiscard]] const Platform& Services() const { return m_platform; }
    [[nodiscard]] std::filesystem::path DataFolder() const;
    void Pause() const { m_surroundings.pause(); }

    // Writes a command's result: the lines, or the members of `json` with the schema number.
    void Result(const host::Json& json, const Lines& lines);
    // The same with the document in place of lines.
    void DocumentResult(const host::Json& json, const host::Json& document);
    // The rest as in Console.
    void Flush() { m_console.Flush(); }
    void Text(const std::string& text) { m_console.Text(text); }
    void Note(std::string_view text) { m_console.Note(text); }
    // The same for loss, damage, an interrupted write or a changed identity: --quiet shows it too.
    void Warn(std::string_view text) { m_console.Error(text); }
    void Trace(std::string_view text) { m_console.Error(text); }
    // All of standard input. Throws host::Error(FileFailed) when it is larger than any file.
    [[nodiscard]] std::string StandardInput();
    // Draws the bar of a transfer, where people watch.
    void ShowProgress(int percent) { m_console.ShowProgress(m_step, percent); }
    // Reports an error and returns the exit status that belongs to it.
    int Report(const host::Error& error);
    int Report(const Interrupted& interrupted);

private:
    [[nodiscard]] std::unique_ptr<host::Session> NewSession();
    void WarnOfInterruptedWrites();
    // Writes these members, with the schema number and what is known of the opened keyboard.
    void JsonResult(const host::Json& json);
    class MessageBoxLines;

    Console m_console;
    Surroundings m_surroundings;
    std::unique_ptr<MessageBoxLines> m_boxes;
    Platform m_platform;
    setup::OpenedDriver m_driver;
    std::optional<InterruptWatch> m_interrupts; // while a keyboard is open
    std::string_view m_step = "transfer";       // of the work, that the bar shows
    std::unique_ptr<host::Session> m_session;
    std::unique_ptr<host::Writer> m_writer;
    bool m_isOpen = false;
    std::unique_ptr<QXKeyboardLayoutData> m_layout;
    std::string m_layoutName; // empty until it is asked for
    host::Json m_damaged = host::Json::array();
    host::Json m_interrupted; // the write that the keyboard held a part of when it was opened
};

} // namespace qx::cli
