#include "app/UnsavedWork.h"

#include "files/SystemTexts.h"
#include "host/Error.h"

#include <algorithm>
#include <string>
#include <system_error>
#include <vector>

namespace qx::app {

namespace {

namespace fs = std::filesystem;

constexpr const char* kDocument = "document";
constexpr const char* kConfiguration = "configuration";
constexpr const char* kSuffix = ".json";

fs::path LockOf(fs::path file) {
    return file += ".lock";
}

host::Json ContentOf(const fs::path& copy) {
    try {
        constexpr std::size_t kMost = files::kMostOfDocument;
        host::Json content = host::ParseStrictly(files::ReadFile(copy, kMost), kMost);
        if (content.is_object() && content.contains(kConfiguration) &&
            content.value(kDocument, host::Json()).is_string())
            return content;
    } catch (const json::FaultError&) { // may be damaged as well
    }
    throw host::Error(host::Cause::UnsavedWorkDamaged, {.place = {.file = files::TextOf(copy)}});
}

} // namespace

std::optional<UnsavedWork::LeftCopy> UnsavedWork::Claim(const fs::path& file) {
    LeftCopy copy;
    copy.m_file = file;
    copy.m_lock = std::make_unique<files::FileLock>(file);
    return copy.m_lock->TryLock() ? std::optional(std::move(copy)) : std::nullopt;
}

// A program that has ended may have had the same process id.
void UnsavedWork::MakeOwn() {
    files::MakeFolder(m_folder);
    fs::permissions(m_folder, fs::perms::owner_all);
    for (int number = 0; !m_own; ++number) {
        const fs::path file = m_folder / (std::to_string(files::ProcessId()) + "-" +
                                          std::to_string(number) + kSuffix);
        if (!fs::exists(file))
            m_own = Claim(file);
    }
}

void UnsavedWork::Keep(const host::ConfigurationDocument& document, const fs::path& file) {
    if (!m_own)
        MakeOwn();
    const auto name = (file.empty() ? file : fs::absolute(file)).u8string();
    host::Json content;
    content[kDocument] = std::string(name.begin(), name.end());
    content[kConfiguration] = document.AsJson();
    const std::string text = host::PrettyText(content);
    if (!files::WriteNewFile(m_own->File(), text)) // otherwise it was created private
        files::WriteFileAtomically(m_own->File(), text);
}

void UnsavedWork::Drop() {
    if (m_own)
        m_own->Remove();
    m_own.reset();
}

std::optional<UnsavedWork::LeftCopy> UnsavedWork::Left() const {
    std::vector<fs::path> copies;
    std::error_code none; // without a folder there are no copies
    for (const auto& entry : fs::directory_iterator(m_folder, none))
        if (entry.path().extension() == kSuffix && entry.is_regular_file(none))
            copies.push_back(entry.path());
    std::sort(copies.begin(), copies.end(), [&](const fs::path& a, const fs::path& b) {
        return fs::last_write_time(a, none) > fs::last_write_time(b, none);
    });
    for (const fs::path& copy : copies)
        if (auto claimed = Claim(copy); claimed && fs::exists(copy))
            return claimed;
    return std::nullopt;
}

fs::path UnsavedWork::LeftCopy::OwnFile() const {
    const std::string name = ContentOf(m_file)[kDocument];
    return std::u8string(name.begin(), name.end());
}

host::ConfigurationDocument UnsavedWork::LeftCopy::Document() const {
    return host::ConfigurationDocument::Parse(host::PrettyText(ContentOf(m_file)[kConfiguration]),
                                              files::TextOf(m_file));
}

// The copy is deleted before its lock is released, so that nobody can claim a deleted copy.
void UnsavedWork::LeftCopy::Remove() {
    std::error_code ignored;
    fs::remove(m_file, ignored);
    fs::remove(LockOf(m_file), ignored);
}

} // namespace qx::app
