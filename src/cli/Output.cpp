#include "cli/Output.h"

#include "cli/commands/Commands.h"

#include "files/Files.h"
#include "files/SystemTexts.h"
#include "host/VisibleText.h"
#include "qxcontrols/common/Text.h"
#include "simulator/KeyboardMemory.h"

#include <algorithm>
#include <fstream>

namespace qx::cli {

namespace {

// The approximate width of the text on a screen: the number of visible UTF-8 characters.
std::size_t Width(const std::string& text) {
    const std::string shown = host::VisibleText(text);
    return static_cast<std::size_t>(std::count_if(shown.begin(), shown.end(), [](char c) {
        return (static_cast<Byte>(c) & 0xC0U) != 0x80U;
    }));
}

// Devices and pipes get the text as a stream; a file has either its old text or the new one.
void WriteFile(const std::filesystem::path& file, const std::string& text) {
    std::error_code ignored;
    const auto status = std::filesystem::status(file, ignored);
    if (!std::filesystem::is_character_file(status) && !std::filesystem::is_fifo(status))
        return files::WriteFileAtomically(file, text);
    std::ofstream out(file, std::ios::binary);
    if (!(out << text).flush())
        throw files::ProblemError({.deed = files::Deed::Write, .subject = files::TextOf(file)});
}

// The simulated keyboard whose lock is this file; empty if none.
std::string KeyboardLockedBy(const std::filesystem::path& lock) {
    std::error_code ignored;
    if (lock.extension() != ".lock")
        return {};
    for (const auto& entry : std::filesystem::directory_iterator(lock.parent_path(), ignored))
        if (files::FileLock::LockName(entry.path()) == lock &&
            sim::KeyboardMemory::IsIn(entry.path()))
            return files::TextOf(entry.path());
    return {};
}

// All folders in the data folder are for records and their locks.
bool IsRecord(const Context& context, const std::filesystem::path& file) try {
    std::error_code ignored;
    const auto folder = std::filesystem::weakly_canonical(context.DataFolder(), ignored);
    const auto inFolder = file.lexically_relative(folder);
    return inFolder.has_parent_path() && *inFolder.begin() != "..";
} catch (const host::Error&) {
    return false;
}

} // namespace

Lines AlignedLines(const std::vector<std::vector<std::string>>& rows) {
    std::vector<std::size_t> widths;
    for (const auto& row : rows) {
        widths.resize(std::max(widths.size(), row.size()));
        for (std::size_t i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], Width(row[i]));
    }
    Lines lines;
    for (const auto& row : rows) {
        std::string line = "  ";
        for (std::size_t i = 0; i < row.size(); ++i)
            line += row[i] + std::string(widths[i] - Width(row[i]) + 2, ' ');
        lines.push_back(line.substr(0, line.find_last_not_of(' ') + 1));
    }
    return lines;
}

void Append(Lines& lines, const Lines& more) {
    lines.insert(lines.end(), more.begin(), more.end());
}

void RefuseKeyboardFile(const std::string& file) {
    if (sim::KeyboardMemory::IsIn(files::PathOf(file)))
        throw UsageError(file + " is the file of a simulated keyboard, and is not overwritten");
}

void RefuseTarget(const Context& context, const std::string& file) {
    RefuseKeyboardFile(file);
    std::error_code ignored;
    const auto target = std::filesystem::weakly_canonical(files::PathOf(file), ignored);
    const std::string keyboard = KeyboardLockedBy(target);
    if (!keyboard.empty())
        throw UsageError(file + " is the lock of the simulated keyboard in " + keyboard +
                         ", and is not overwritten");
    if (IsRecord(context, target))
        throw UsageError(file + " is in a folder of records, where no other files are written");
}

void RefuseOwnSource(const std::string& source, const std::string& file) {
    if (files::IsSameFile(files::PathOf(source), files::PathOf(file)))
        throw UsageError(file + " is the file to read from, and is not overwritten");
}

void WriteDocument(Context& context, const host::ConfigurationDocument& document,
                   const std::string& file, const std::string& direction) {
    if (file.empty() || file == kStandardStream || file == "/dev/stdout")
        return context.DocumentResult({{"direction", direction}, {"document", document.AsJson()}},
                                      document.AsJson());
    RefuseTarget(context, file);
    try {
        WriteFile(files::PathOf(file), document.ToText());
    } catch (const std::exception& error) {
        throw host::FileError(error);
    }
    context.Result({{"direction", direction}, {"file", file}}, {direction + ": wrote " + file});
}

namespace {

std::vector<std::string> TextsOf(const std::vector<host::Difference>& differences) {
    std::vector<std::string> texts;
    texts.reserve(differences.size());
    for (const host::Difference& difference : differences)
        texts.push_back(ToText(difference));
    return texts;
}

} // namespace

host::Json ToJson(const host::JournalEntry& entry) {
    return {{"id", entry.Id()},
            {"time", entry.time},
            {"action", CodeOf(entry.action)},
            {"document", entry.document},
            {"keyboard", entry.keyboard.Name()},
            {"unit", entry.till.unit},
            {"place", entry.till.place},
            {"backup", entry.backup},
            {"bytes", host::SizeOf(entry.ranges)},
            {"ranges", entry.ranges.size()}};
}

host::Json ToJson(const host::Difference& difference) {
    return {{"setting", ToText(difference.name)},
            {"place", difference.place},
            {"from", ToText(difference.from)},
            {"to", ToText(difference.to)}};
}

host::Json ToJson(const host::WritePlan& plan) {
    host::Json settings = host::Json::array();
    for (const host::Difference& difference : plan.settings)
        settings.push_back(ToJson(difference));
    host::Json ranges = host::Json::array();
    for (const host::PlannedRange& range : plan.ranges)
        ranges.push_back({{"module", NameOf(range.module)},
                          {"section", range.section},
                          {"address", range.address},
                          {"size", range.Size()},
                          {"damaged", range.isDamaged},
                          {"settings", TextsOf(range.settings)}});
    return {{"bytesToSend", plan.BytesToSend()},
            {"bytesInAll", plan.BytesInAll()},
            {"settings", settings},
            {"ranges", ranges}};
}

Lines ToLines(const host::WritePlan& plan) {
    std::vector<std::vector<std::string>> rows;
    for (const host::PlannedRange& range : plan.ranges) {
        const char* const unnamed =
            range.isDamaged ? "(of the damaged section)" : "(bytes that no setting uses)";
        const std::vector<std::string> settings = TextsOf(range.settings);
        rows.push_back({std::string(NameOf(range.module)), Hex(range.address),
                        Counted(range.Size(), "byte"),
                        settings.empty() ? unnamed : settings.front()});
        for (std::size_t i = 1; i < settings.size(); ++i)
            rows.push_back({"", "", "", settings[i]});
    }
    return AlignedLines(rows);
}

} // namespace qx::cli
