// UnsavedWork: copies of edited documents that survive the program.
//
// While a document has changes that are not saved, its window keeps a copy of it in a file of its
// own and locks that file. A copy that nobody locks was left by a program that ended without
// closing its document; the next program can take it over.
#pragma once

#include "files/Files.h"
#include "host/ConfigurationDocument.h"

#include <filesystem>
#include <memory>
#include <optional>

namespace qx::app {

class UnsavedWork {
public:
    // The folder of the copies, which is made when the first one is kept.
    explicit UnsavedWork(std::filesystem::path folder) : m_folder(std::move(folder)) {}

    // Keeps this state of the document, whose own file is given where it has one, in place of the
    // one kept before. Throws std::runtime_error.
    void Keep(const host::ConfigurationDocument& document, const std::filesystem::path& file);
    // Removes the copy: the document is saved, or given up. Does not throw.
    void Drop();

    // A copy that another program left, claimed for as long as this object lives.
    class LeftCopy {
    public:
        [[nodiscard]] const std::filesystem::path& File() const { return m_file; }
        // The document's own file; empty for an untitled one. Both throw when the copy is damaged.
        [[nodiscard]] std::filesystem::path OwnFile() const;
        [[nodiscard]] host::ConfigurationDocument Document() const;
        void Remove();

    private:
        friend class UnsavedWork;
        std::filesystem::path m_file;
        std::unique_ptr<files::FileLock> m_lock;
    };
    // The newest one that is left; none of a window that is still open.
    [[nodiscard]] std::optional<LeftCopy> Left() const;

private:
    [[nodiscard]] static std::optional<LeftCopy> Claim(const std::filesystem::path& file);
    void MakeOwn();

    std::filesystem::path m_folder;
    std::optional<LeftCopy> m_own;
};

} // namespace qx::app
