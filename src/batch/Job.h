// Job: the file that says which keyboards are to be programmed with what.
//
// It is JSON and is read as strictly as a configuration document; docs/batch.md has its form. Paths
// in it are relative to its folder.
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
    std::string targetText;                      // the same as the job writes it
    std::string port;                            // the same, whole: units of one port take turns
    std::string identifier;                      // "{...}" of the one keyboard meant; may be empty
    // Without an identifier that other units would get as well.
    std::shared_ptr<const host::ConfigurationDocument> document;
    host::Variables::Values variables; // its own, and the job's where it has none of that name

    // Known once the job has been checked.
    bool setsIdentifier = false; // the document gives the keyboard an identifier
    std::string wanted;          // a hash of all that decides on what the keyboard is to hold
};

class Job {
public:
    // Throws Error(DocumentInvalid) with all faults of the job and of the documents' frames, and
    // Error(FileFailed) when the job cannot be read.
    [[nodiscard]] static Job Load(const std::filesystem::path& file);

    // Reads every unit's settings with its variables, and throws Error(DocumentInvalid) with all
    // faults. The names of keys are the layout's; `sChosen` is its name where it is that of all
    // keyboards, and empty where each keyboard has its own. Whether what a keyboard lacks is left
    // out decides on what is done, too.
    void Check(const Platform& platform, QXKeyboardLayoutData& layout, const std::string& sChosen,
               bool skipAbsent);

    [[nodiscard]] const std::filesystem::path& File() const { return m_file; }
    [[nodiscard]] const std::string& Layout() const { return m_layout; } // may be empty
    [[nodiscard]] const std::optional<setup::KeyboardChoice>& Bench() const { return m_bench; }
    [[nodiscard]] const std::vector<Unit>& Units() const { return m_units; }
    // What people should know about the job, as that identifiers are left out.
    [[nodiscard]] const std::vector<std::string>& Notes() const { return m_notes; }

private:
    class Reader;
    class Checker;

    std::filesystem::path m_file;
    std::string m_layout;
    std::optional<setup::KeyboardChoice> m_bench;
    std::vector<Unit> m_units;
    std::vector<std::string> m_notes;
    // To tell variables that no document has a placeholder for.
    host::Variables::Values m_common;
    std::vector<host::Variables::Values> m_own; // of each unit
};

} // namespace qx::batch
