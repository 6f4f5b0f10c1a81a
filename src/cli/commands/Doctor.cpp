#include "cli/commands/Commands.h"

#include "cli/Output.h"

#include "driverhost/WordSize.h"
#include "files/Files.h"
#include "files/Sha256.h"
#include "files/SystemTexts.h"
#include "host/ErrorText.h"
#include "host/ForwardingDriver.h"
#include "host/SettingsStore.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "setup/LayoutSource.h"

#include <optional>
#include <utility>

namespace qx::cli {

namespace {

using driverhost::kOwnWordSize;

using Rows = std::vector<std::vector<std::string>>;

std::string Bits(int size) {
    return std::to_string(size) + " bits";
}

// A driver that records the called functions and their results, but not the transferred bytes.
class CallLog : public host::ForwardingDriver {
public:
    using ForwardingDriver::ForwardingDriver;

    struct Call {
        std::string function;
        host::DriverResult kind;
        std::int32_t result;
        int times = 1; // consecutive calls with the same result
    };
    [[nodiscard]] const std::vector<Call>& Calls() const { return m_calls; }

protected:
    std::int32_t Noted(std::string_view function, host::DriverResult kind,
                       std::int32_t result) override {
        if (!m_calls.empty() && m_calls.back().function == function &&
            m_calls.back().result == result)
            ++m_calls.back().times;
        else
            m_calls.push_back({std::string(function), kind, result});
        return result;
    }

private:
    std::vector<Call> m_calls;
};

class Doctor {
public:
    explicit Doctor(Context& context) : m_context(context) {}

    void Examine() {
        Program();
        const InterruptWatch interrupts;
        Try([&] { Driver(); });
        if (interrupts.IsInterrupted())
            throw Interrupted{InterruptWatch::Signal()};
        Try([&] { Layouts(); });
        Try([&] { Preferences(); });
        Try([&] { Records(); });
        Problems();
        m_context.Result(m_json, m_lines);
    }

private:
    // Runs a part of the examination, which continues after a failure.
    template <typename Part>
    void Try(const Part& part) {
        try {
            part();
        } catch (const host::Error& error) {
            Complain(error);
        } catch (const std::exception& error) {
            Complain(host::Error(host::Cause::Unforeseen, {.problem = files::ProblemOf(error)}));
        }
    }
    void Complain(const host::Error& error) { Complain(error.Kind(), MessageOf(error)); }
    void Complain(host::ErrorKind kind, const std::string& message) {
        if (m_problems.empty())
            m_context.exitStatus = ExitStatusOf(kind);
        m_problems.emplace_back(host::CodeOf(kind), message);
    }

    void Add(const std::string& title, const Rows& rows) {
        if (!m_lines.empty())
            m_lines.emplace_back();
        m_lines.push_back(title);
        Append(m_lines, AlignedLines(rows));
    }

    void Program() {
        const std::string system = files::SystemName();
        m_json["program"] = {
            {"version", QX_VERSION}, {"wordSize", kOwnWordSize}, {"system", system}};
        Add("program", {{"qxconf", QX_VERSION ", " + Bits(kOwnWordSize)}, {"system", system}});
    }

    void Driver() {
        const setup::KeyboardChoice choice = m_context.Chosen();
        if (choice.driver.empty()) {
            m_json["driver"] = nullptr;
            Add("driver",
                {{"simulated keyboard",
                  choice.keyboard.empty() ? "of the user" : files::TextOf(choice.keyboard)}});
        } else {
            Library(choice.driver);
        }
        setup::OpenedDriver opened = m_context.OpenDriver(choice);
        CallLog log(*opened.driver);
        Try([&] { Keyboard(log, opened); });
        Calls(log, opened.statusText);
    }

    // Whether it can be loaded is checked later.
    void Library(const std::filesystem::path& library) {
        const std::string place = files::TextOf(std::filesystem::absolute(library));
        host::Json& json = m_json["driver"] = {{"library", place}};
        Rows rows = {{"library", place}};
        try {
            const std::string bytes = files::ReadFile(library);
            const std::string hash = files::Sha256(bytes);
            const std::optional<int> wordSize = driverhost::WordSizeOf(library);
            json["size"] = bytes.size();
            json["sha256"] = hash;
            json["wordSize"] = wordSize ? host::Json(*wordSize) : host::Json();
            rows.push_back({"size", Counted(bytes.size(), "byte")});
            rows.push_back({"SHA-256", hash});
            rows.push_back(
                {"word size", wordSize ? Bits(*wordSize) : "none: this is not a library"});
        } catch (const std::runtime_error& error) {
            rows.push_back({"file", error.what()});
        }
        Add("driver", rows);
    }

    void Keyboard(ConfigDriver& driver, const setup::OpenedDriver& opened) {
        host::Session session(driver, m_context.Services(), setup::SessionOptions(opened));
        session.Open();
        const Described described = DescriptionOf(session);
        m_json.update(described.json);
        m_lines.emplace_back();
        Append(m_lines, described.lines);
        for (const host::Error& warning : session.Warnings())
            Complain(warning);
        if (opened.layout)
            m_layoutOfKeyboard = opened.layout();
        QXKeyboardLayoutData layout; // determines the keys that have memory
        setup::OpenLayout(layout, m_context.options.layouts,
                          m_context.LayoutNameFor(m_layoutOfKeyboard));
        const host::Configuration configuration(m_context.Services(), &layout, nullptr);
        Areas(session.ReadContent(configuration));
        session.Close();
    }

    void Areas(const host::KeyboardContent& content) {
        host::Json& json = m_json["areas"] = host::Json::array();
        Rows rows;
        for (const host::ContentPiece& piece : content.pieces) {
            json.push_back({{"module", static_cast<Long>(piece.module)},
                            {"section", piece.section},
                            {"address", piece.address},
                            {"size", piece.Size()}});
            rows.push_back({piece.section, std::string(NameOf(piece.module)),
                            std::to_string(piece.address), Counted(piece.Size(), "byte")});
        }
        Add("areas that were read", rows);
    }

    void Calls(const CallLog& log, const std::function<std::string(std::int32_t)>& statusText) {
        host::Json& json = m_json["calls"] = host::Json::array();
        Rows rows;
        for (const CallLog::Call& call : log.Calls()) {
            const bool isFailure = call.kind == host::DriverResult::Status && call.result != 0;
            const std::string meaning = isFailure && statusText ? statusText(call.result) : "";
            json.push_back({{"function", call.function},
                            {"result", call.result},
                            {"times", call.times},
                            {"meaning", meaning}});
            rows.push_back({call.function, std::to_string(call.result),
                            call.times == 1 ? "" : std::to_string(call.times) + " times", meaning});
        }
        Add("calls of the driver and their results", rows);
    }

    void Layouts() {
        const std::filesystem::path folder =
            m_context.options.layouts.empty() ? setup::ShippedLayouts() : m_context.options.layouts;
        const std::vector<std::string> names = setup::LayoutNames(folder);
        const std::string chosen = m_context.LayoutNameFor(m_layoutOfKeyboard);
        m_json["layouts"] = {
            {"folder", files::TextOf(folder)}, {"files", names}, {"chosen", chosen}};
        Add("layouts", {{"folder", files::TextOf(folder)},
                        {"files", std::to_string(names.size())},
                        {"chosen", chosen}});
        for (const std::string& name : names)
            Try([&] {
                QXKeyboardLayoutData layout;
                setup::OpenLayout(layout, folder, name);
            });
    }

    void Preferences() {
        const host::SettingsStore store(m_context.options.settings);
        m_json["preferences"] = {{"place", store.Location()}, {"damaged", store.IsDamaged()}};
        Add("preferences", {{"place", store.Location()}});
        if (store.IsDamaged())
            Complain(host::ErrorKind::FileFailed,
                     "the preferences in " + store.Location() + " are damaged");
    }

    void Records() {
        const std::filesystem::path folder = m_context.DataFolder();
        const host::WriteRecords records = m_context.Records();
        std::vector<host::DamagedRecord> damaged;
        const auto writes = records.journal.Entries(&damaged);
        const auto backups = records.backups.List();
        m_json["records"] = {{"folder", files::TextOf(folder)},
                             {"backups", backups.size()},
                             {"interruptedWrites", writes.size()}};
        Add("records of writes", {{"folder", files::TextOf(folder)},
                                  {"backups", std::to_string(backups.size())},
                                  {"interrupted writes", std::to_string(writes.size())}});
        for (const host::JournalEntry& write : writes)
            Complain(host::ErrorKind::WriteInterrupted, "on record: " + host::InWords(write));
        for (const host::DamagedRecord& record : damaged)
            Complain(record.error);
    }

    void Problems() {
        host::Json& json = m_json["problems"] = host::Json::array();
        Rows rows;
        for (const auto& [code, message] : m_problems) {
            json.push_back({{"code", code}, {"message", message}});
            rows.push_back({message});
        }
        Add("problems", rows.empty() ? Rows{{"none"}} : rows);
    }

    Context& m_context;
    host::Json m_json;
    Lines m_lines;
    std::string m_layoutOfKeyboard;
    std::vector<std::pair<std::string, std::string>> m_problems; // code and message
};

} // namespace

Command DoctorCommand() {
    return {
        .name = "doctor",
        .summary =
            "Examine the driver library, the keyboard and the files, and report the results for "
            "support",
        .footer =
            "Reads the keyboard and continues after each problem. The report contains the driver "
            "library, all\nits calls with their results, the directory and the folders, "
            "but nothing that is stored in\nthe keyboard. The exit status is that of the "
            "first problem.\n\nExamples:\n"
            "  qxconf --driver TANDORQX.DLL doctor > report.txt\n"
            "  qxconf --json doctor",
        .run = [](Context& context) { Doctor(context).Examine(); },
    };
}

} // namespace qx::cli
