#include "host/KeyboardFiles.h"

#include "files/Files.h"
#include "qxcontrols/pos/QXPosCodePage.h"

namespace qx::host {

namespace {

void Run(Session& session, const KeyboardFileKind& kind, const std::string& direction,
         const std::filesystem::path& file, const std::filesystem::path& named,
         const SerialLine& line, Long (QXKeyboardAccess::*operation)(const std::string&)) {
    session.Run(direction + " " + named.string() + " failed", [&] {
        if (kind.hasSerialLine)
            session.Access().SetChipcardRomParameters(line.baudRateIndex, line.comPort);
        (void)(session.Access().*operation)(file.string()); // its status is watched
    });
}

} // namespace

void SaveKeyboardFile(Session& session, const KeyboardFileKind& kind,
                      const std::filesystem::path& file, const SerialLine& line) {
    try {
        files::WriteFileAtomically(file, [&](const std::filesystem::path& part) {
            Run(session, kind, "saving the " + std::string(kind.content) + " into", part, file,
                line, kind.save);
        });
    } catch (const Error&) {
        throw;
    } catch (const std::exception& error) {
        throw Error(ErrorKind::FileFailed, error.what());
    }
}

void LoadKeyboardFile(Session& session, const KeyboardFileKind& kind,
                      const std::filesystem::path& file, const SerialLine& line) {
    Run(session, kind, "loading the " + std::string(kind.content) + " from", file, file, line,
        kind.load);
}

bool HasCodePage(Session& session, const std::filesystem::path& file) {
    QXPosCodePage pages;
    if (!pages.FilePage().LoadPageFromFile(file.string()))
        throw Error(ErrorKind::FileFailed,
                    "cannot read a code page of 256 bytes from " + file.string());
    session.Run("reading the code page from the keyboard failed",
                [&] { pages.KeyboardPage().LoadPageFromKeyboard(&session.Access()); });
    return pages.PagesAreEqual();
}

} // namespace qx::host
