// Job: the file that lists the keyboards to program, and their documents.
//
// It is JSON and is read as strictly as a configuration document; docs/batch.md describes its
// format. Paths in it are relative to its folder.
#pragma once

#include "host/Configuration.h"
#include "setup/DriverSource.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace qx::batch {

// One keyboard of the job.
struct Unit {
    std::string name;
    std::optional<setup::KeyboardChoice> target; // none: it is programmed at the bench
    std::string targetText;                      // the same as written in the job
    std::string port;       // the same as full paths: the units of a port take turns
    std::string identifier; // "{...}" of the only acceptable keyboard; may be empty
    // Without an identifier that other units would get too.
    std::shared_ptr<const host::ConfigurationDocument> document;
    host::Variables::Values variables; // its own, and the job's for other names

    // Set when the job has been checked.
    bool setsIdentifier = false; // the document gives the keyboard an identifier
    std::string wanted;          // a hash of everything that determines the wanted contents
};

class Job {
public:
    // Throws Error(DocumentInvalid) with all faults of the job and of the documents' frames, and
    // Error(FileFailed) if the job cannot be read.
    [[nodiscard]] static Job Load(const std::filesystem::path& file);

    // Reads every unit's settings with its variables, and throws Error(DocumentInvalid) with all
    // faults. Keys are named according to the layout; `sChosen` is its name if it is used for all
    // keyboards, and empty if each keyboard has its own. `skipAbsent` also affects which units
    // count as done.
    void Check(const Platform& platform, QXKeyboardLayoutData& layout, const std::string& sChosen,
               bool skipAbsent);

    [[nodiscard]] const std::filesystem::path& File() const { return m_file; }
    [[nodiscard]] const std::string& Layout() const { return m_layout; } // may be empty
    [[nodiscard]] const std::optional<setup::KeyboardChoice>& Bench() const { return m_bench; }
    [[nodiscard]] const std::vector<Unit>& Units() const { return m_units; }
    // For the user: identifiers that are left out.
    [[nodiscard]] const std::vector<host::Error>& Warnings() const { return m_warnings; }

private:
    class Reader;
    class Checker;

    std::filesystem::path m_file;
    std::string m_layout;
    std::optional<setup::KeyboardChoice> m_bench;
    std::vector<Unit> m_units;
    std::vector<host::Error> m_warnings;
    // For finding variables without a placeholder in any document.
    host::Variables::Values m_common;
    std::vector<host::Variables::Values> m_own; // per unit
};

} // namespace qx::batch
