// Workbench: the objects of the application: one keyboard, one document, the user's preferences.
//
// It knows no window. It opens the keyboard, moves whole configurations, reads and writes documents
// and keeps the history of edits; its signals report changes that windows must show. Operations
// throw host::Error; the document is then unchanged, and the error describes the keyboard's
// contents.
#pragma once

#include "app/Appearance.h"
#include "app/StartStages.h"
#include "app/sections/SectionFaces.h"
#include "host/ColourSet.h"
#include "host/History.h"
#include "host/KeyboardFiles.h"
#include "host/Session.h"
#include "host/SettingsStore.h"
#include "host/Writer.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "qxcontrols/settings/QXProgSettings.h"
#include "setup/DriverSource.h"

#include <QObject>
#include <QString>

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace qx::app {

// Of the program with the keyboard, while it is busy.
enum class Work {
    Read,  // nothing is written
    Write, // with a backup before and a reading afterwards
    Load,  // of a file: with a backup before
};

class Workbench : public QObject {
    Q_OBJECT
public:
    struct Options {
        setup::KeyboardChoice keyboard;
        std::filesystem::path layouts;  // empty: the shipped ones
        std::string layout;             // empty: the keyboard's own, else the preferred one
        std::filesystem::path settings; // empty: the user's own
        std::filesystem::path records;  // of writes; empty: the user's own
        bool hasWindows = false;        // a user without preferences gets key colours that fit them
    };

    Workbench(const Platform& platform, Options options);
    ~Workbench() override;

    [[nodiscard]] QXProgSettings& Preferences() { return m_preferences; }
    // Stores the preferences; Noticed reports why they cannot be stored.
    void SavePreferences();
    // Reports damaged preferences; empty if they could be read.
    [[nodiscard]] QString PreferencesWarning() const;

    // A preference of the application alone, stored at once. When windows turn light or dark, now
    // or with the system since the last start, the keys get colours that fit, unless the user has
    // chosen others.
    [[nodiscard]] app::Appearance Appearance();
    void SetAppearance(app::Appearance appearance);
    void UseStoredAppearance();
    // After the system has turned; true if windows are not as light or dark as before.
    bool FitColours();

    [[nodiscard]] QXKeyboardLayoutData& Layout() { return m_layout; }
    // The name of the file of the connected keyboard's own layout; empty if it has none.
    [[nodiscard]] std::string OwnLayout() const;
    // Shows everything by the preferences as they are now.
    void ReloadPreferences();
    [[nodiscard]] const std::filesystem::path& LayoutFolder() const { return m_options.layouts; }
    [[nodiscard]] host::Configuration& Configuration() { return *m_configuration; }
    [[nodiscard]] host::History& History() { return *m_history; }
    [[nodiscard]] SectionFaces& Faces() { return *m_faces; }

    // The keyboard. Connect closes one that is open; a failure leaves none open, is shown
    // by the stages, and throws.
    void Connect();
    void Connect(setup::KeyboardChoice choice);
    void Disconnect();
    [[nodiscard]] bool IsConnected() const { return m_session != nullptr; }
    // Throws host::Error(KeyboardNotOpened), as all operations with the keyboard do, while none is
    // connected.
    [[nodiscard]] host::Session& Session();
    [[nodiscard]] sim::SimulatedDriver* Simulated() const { return m_driver.simulated; }
    [[nodiscard]] const setup::KeyboardChoice& Choice() const { return m_options.keyboard; }
    [[nodiscard]] const QString& DriverNote() const { return m_driverNote; }
    [[nodiscard]] const StartStages& Stages() const { return m_stages; }
    // Whether the keyboard has the section's modules; true for all while none is connected.
    [[nodiscard]] bool Has(const host::Section& section) const;

    // Keyboard to document: the settings of all modules that the keyboard has.
    void ReadKeyboard();
    // The changes that writing the document would make in the keyboard, which is only read.
    // Sections that the keyboard lacks are skipped; damaged ones are replaced only if `repairs`.
    [[nodiscard]] host::WritePlan PlanWrite(bool repairs = false);
    // Document to keyboard: what was planned, read back and compared.
    host::Writer::Outcome WriteKeyboard(const host::WritePlan& plan);
    // The document's sections that the keyboard has, or lacks.
    [[nodiscard]] std::vector<host::Section*> WantedSections() const;
    [[nodiscard]] std::vector<host::Section*> AbsentSections() const;

    // Cancels the present write: it ends with Error(Stopped) if no byte has been sent; otherwise
    // it is completed.
    void RequestStop() { m_isStopRequested = true; }

    // The keyboard's bytes, and what they would be if the document were written into a keyboard
    // that holds these. Nothing is changed.
    [[nodiscard]] host::KeyboardContent HeldContent();
    [[nodiscard]] host::KeyboardContent DocumentContent(const host::KeyboardContent& held);
    // The settings in such bytes; sections that are damaged have their defaults.
    [[nodiscard]] std::unique_ptr<host::Configuration>
    SettingsIn(const host::KeyboardContent& content);
    // The settings that differ between the other document and this one, in sections of both.
    [[nodiscard]] std::vector<host::Difference> ChangesBy(const host::ConfigurationDocument& other);

    // File to keyboard: after a backup, with a receipt, not proved.
    void LoadKeyboardFile(const host::KeyboardFileKind& kind, const std::filesystem::path& file,
                          const host::SerialLine& line);

    // The interrupted writes that this keyboard may have been cut in; Recover ends one.
    [[nodiscard]] std::vector<host::JournalEntry> Interrupted();
    void Recover(const host::JournalEntry& entry, host::Writer::Way way, bool isNamed);
    // The records of writes to all keyboards: interrupted writes, backups, receipts.
    [[nodiscard]] host::WriteRecords Records() const;
    // Backup to keyboard; the document is unchanged. A backup of another keyboard of the same model
    // is accepted: the plan names the reason to ask the user.
    [[nodiscard]] host::WritePlan PlanRestore(const host::Backup& backup);
    void Restore(const host::WritePlan& plan, const std::string& backup);

    // The document.
    void NewDocument();
    enum class OpenAs { File, Copy }; // a copy has no file yet
    void OpenDocument(const std::filesystem::path& file, OpenAs as);
    // Unsaved work as an untitled document.
    void OpenUnsaved(const host::ConfigurationDocument& document) { TakeDocument(document, {}); }
    // Where copies of unsaved work are kept.
    [[nodiscard]] std::filesystem::path UnsavedFolder() const;
    // The names of the keyboard that the document was made for, and of the connected one; may be
    // empty.
    [[nodiscard]] QString DocumentKeyboard() const;
    [[nodiscard]] QString KeyboardName() const;
    void SaveDocument(const std::filesystem::path& file);
    // The document as it would be saved.
    [[nodiscard]] host::ConfigurationDocument Document();
    // Whether it was read from a keyboard while a write to that was interrupted.
    [[nodiscard]] bool IsMixture() const { return m_isMixture; }
    [[nodiscard]] const std::filesystem::path& File() const { return m_file; }
    [[nodiscard]] bool IsModified() const { return !m_history->IsSaved(); }

    // An edit of the section's settings, which its control then shows: one step, however many of
    // them it changes, or a part of the last step, which it goes on with.
    void Edit(host::Section& section, const std::function<void()>& change, bool goesOn = false);
    // Runs a change of the controls that is not an edit of the document.
    void Quietly(const std::function<void()>& change);
    // True during such a change and during transfers, when the controls may hold half of something.
    [[nodiscard]] bool IsBusy() const { return m_isBusy; }
    void Undo();
    void Redo();

signals:
    void Leaving();             // the keyboard, which is still connected
    void KeyboardChanged();     // another one, or none
    void Held(bool isDocument); // the keyboard now holds the document, or something unknown
    // The keyboard was found to hold the document except for these settings, from its to ours.
    void Compared(const std::vector<host::Difference>& differences);
    void LayoutChanged();
    void DocumentChanged(); // its settings, its file, or whether it is saved
    void Began(const QString& text, app::Work work); // slow work; see Working
    void Stepped(host::Step step);                   // of a write
    void Progressed(int percent);
    void Waits();     // for the driver, several times a second
    void StopAsked(); // before the first byte: the last moment for RequestStop
    void Ended();
    void Noticed(const QString& text);
    void Touched(); // the user has changed something on a page, if only what is selected

private:
    class Busy;

    void NoteEdit(host::Section& section, bool goesOn = false);
    void TakeDocument(const host::ConfigurationDocument& document,
                      const std::filesystem::path& file);
    // If the keys have the set of colours of before.
    void FitColours(host::ColourSetId before);
    void StorePreferences();
    void StoreLastDocument();
    void OpenLayout();
    // One of default values, for the connected keyboard or for any.
    [[nodiscard]] std::unique_ptr<host::Configuration>
    NewConfiguration(host::LayoutUse use = host::LayoutUse::Keyboard);
    // Names the options as for the connected keyboard, or else for that of the document.
    void NameOptions();
    // The writer for the connected keyboard.
    [[nodiscard]] host::Writer& Writer();
    // Runs work with it, during which the controls change by themselves.
    template <typename Function>
    auto WithWriter(const Function& work);
    template <typename Function>
    auto WithChange(const Function& work); // of what the keyboard holds

    Platform m_platform;
    Options m_options;
    host::SettingsStore m_store;
    QXProgSettings m_preferences;
    QXKeyboardLayoutData m_layout;
    std::unique_ptr<host::Configuration> m_configuration;
    std::unique_ptr<SectionFaces> m_faces;
    std::unique_ptr<host::History> m_history;
    setup::OpenedDriver m_driver;
    std::unique_ptr<host::Session> m_session;
    std::unique_ptr<host::Writer> m_writer; // when it is first needed
    std::vector<Subscription> m_edits;
    StartStages m_stages;
    QString m_driverNote;
    std::filesystem::path m_file;
    std::unique_ptr<host::Json> m_keyboardNote; // of the document: which keyboard it is for
    bool m_isMixture = false;
    bool m_isBusy = false;
    bool m_isStopRequested = false;
};

} // namespace qx::app
