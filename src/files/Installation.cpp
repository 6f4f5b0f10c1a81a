#include "files/Installation.h"

#include "files/Files.h"
#include "files/SystemTexts.h"

#include <cstdlib>
#include <sstream>
#include <string_view>
#include <system_error>

namespace qx::files {

namespace {

namespace fs = std::filesystem;

// The root of the installation: the program's folder without the folder for programs or helpers
// within an installation.
fs::path Root() {
    const fs::path folder = ExecutableFolder();
    for (const char* const place : {QX_PROGRAMS, QX_HELPERS}) {
        fs::path root = folder;
        fs::path rest = place;
        while (rest.has_filename() && rest.filename() == root.filename()) {
            rest = rest.parent_path();
            root = root.parent_path();
        }
        if (!rest.has_filename())
            return root;
    }
    return folder.parent_path();
}

bool Exists(const fs::path& path) {
    std::error_code ignored;
    return fs::exists(path, ignored);
}

// The file beside the program, or else in its folder of the installation.
fs::path BesideOrIn(const char* place, const std::string& name) {
    const fs::path beside = ExecutableFolder() / PathOf(name);
    const fs::path installed = Root() / place / PathOf(name);
    return Exists(installed) && !Exists(beside) ? installed : beside;
}

} // namespace

fs::path HelperProgram(const std::string& name) {
    return BesideOrIn(QX_HELPERS, name + QX_PROGRAM_SUFFIX);
}

fs::path ModuleFile(const std::string& name) {
    return BesideOrIn(QX_MODULES, name);
}

fs::path DataFolder(const std::string& name) {
    const fs::path own = Root() / QX_DATA / PathOf(name);
    if (Exists(own))
        return own;
#ifndef _WIN32
    const char* given = std::getenv("XDG_DATA_DIRS");
    std::istringstream folders(given != nullptr && *given != '\0' ? given
                                                                  : "/usr/local/share:/usr/share");
    for (std::string folder; std::getline(folders, folder, ':');)
        if (const fs::path shared = fs::path(folder) / "qxcontrols" / PathOf(name);
            shared.is_absolute() && Exists(shared))
            return shared;
#endif
    return own;
}

} // namespace qx::files
