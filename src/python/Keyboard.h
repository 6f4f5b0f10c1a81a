// Keyboard: a keyboard as Python scripts use it.
#pragma once

#include "host/Session.h"
#include "host/Writer.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "setup/DriverSource.h"

#include <exception>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace qx::python {

using Values = std::map<std::string, std::string, std::less<>>; // of placeholders
// Receives the step ("reading back") and its percentage. An exception from it is passed on when the
// write is over, because none may pass through a driver's call.
using Progress = std::function<void(const std::string&, int)>;

// Checks a document's text; the layout may be empty. Throws host::Error.
void Check(const std::string& text, const std::string& name, const Values& variables,
           const std::filesystem::path& layouts, const std::string& layout);

// A write as planned, for the keyboard that planned it.
struct PlannedWrite {
    host::WritePlan plan;
    host::WriteRequest request;

    [[nodiscard]] std::string
    Changes() const; // JSON: a list of objects with place, setting, before, after
    [[nodiscard]] Long Bytes() const {
        return request.full ? plan.BytesInAll() : plan.BytesToSend();
    }
};

class Keyboard {
public:
    struct Choice {
        setup::KeyboardChoice keyboard;
        std::filesystem::path layouts; // the folder; empty: the shipped ones
        std::string layout;            // empty: the keyboard's, or else that of English (US)
        std::filesystem::path records; // the folder of backups and receipts; empty: the user's
    };

    explicit Keyboard(Choice choice) : m_choice(std::move(choice)) {}

    // All functions throw host::Error, and Error(KeyboardNotOpened) unless the keyboard is open.
    void Open();
    void Close();

    [[nodiscard]] std::string Identify();
    struct Reading {
        std::string document;             // its text
        std::vector<std::string> damaged; // what was left out, for people
    };
    [[nodiscard]] Reading Read();
    [[nodiscard]] PlannedWrite Plan(const std::string& text, const std::string& name,
                                    const Values& variables, bool skipAbsent, bool full,
                                    bool repair);
    [[nodiscard]] PlannedWrite PlanRestore(const std::string& backup, bool otherKeyboard);
    // The outcome, as JSON.
    [[nodiscard]] std::string Write(const PlannedWrite& planned, bool verify,
                                    const Progress& progress);
    [[nodiscard]] std::vector<std::string> Interrupted(); // their ids, newest first
    [[nodiscard]] std::string Recover(const std::string& id, bool finish, const Progress& progress);

private:
    [[nodiscard]] host::Session& Session();
    [[nodiscard]] host::Writer& Writer();
    [[nodiscard]] std::unique_ptr<host::Configuration> NewConfiguration();
    void ShowProgress(int percent) noexcept;
    template <typename Function>
    [[nodiscard]] std::string WithProgress(const Progress& progress, const Function& write);

    Choice m_choice;
    Platform m_platform;
    setup::OpenedDriver m_driver;
    QXKeyboardLayoutData m_layout;
    Progress m_progress; // of the current call
    std::exception_ptr m_progressFailure;
    std::string m_step;
    std::unique_ptr<host::Session> m_session;
    std::unique_ptr<host::Writer> m_writer;
};

} // namespace qx::python
