// UnsavedWork: copies of edited documents that survive the program.
//
// While a document has unsaved changes, its window keeps a copy of it in a separate file and locks
// that file. A copy that is not locked was left by a program that ended without closing its
// document; the next program can adopt it.
#pragma once

#include "files/Files.h"
#include "host/ConfigurationDocument.h"

#include <filesystem>
#include <memory>
#include <optional>

namespace qx::app {

class UnsavedWork {
public:
    // The folder of the copies, created with the first copy.
    explicit UnsavedWork(std::filesystem::path folder) : m_folder(std::move(folder)) {}

    // Stores this state of the document, with the document's own file if it has one, replacing the
    // previous copy. Throws std::runtime_error.
    void Keep(const host::ConfigurationDocument& document, const std::filesystem::path& file);
    // Deletes the copy: the document is saved or discarded. Does not throw.
    void Drop();

    // A copy left by another program, claimed during this object's lifetime.
    class LeftCopy {
    public:
        [[nodiscard]] const std::filesystem::path& File() const { return m_file; }
        // The document's own file; empty for an untitled one. Both throw if the copy is damaged.
        [[nodiscard]] std::filesystem::path OwnFile() const;
        [[nodiscard]] host::ConfigurationDocument Document() const;
        void Remove();

    private:
        friend class UnsavedWork;
        std::filesystem::path m_file;
        std::unique_ptr<files::FileLock> m_lock;
    };
    // The newest copy that is left; never one of a window that is still open.
    [[nodiscard]] std::optional<LeftCopy> Left() const;

private:
    [[nodiscard]] static std::optional<LeftCopy> Claim(const std::filesystem::path& file);
    void MakeOwn();

    std::filesystem::path m_folder;
    std::optional<LeftCopy> m_own;
};

} // namespace qx::app
