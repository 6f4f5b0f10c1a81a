// KeyboardFiles: the keyboard's files in the driver's formats, and its code page.
#pragma once

#include "host/Writer.h"

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

namespace qx::host {

// The serial line of the chipcard reader; not used for other files.
struct SerialLine {
    Integer baudRateIndex;
    Integer comPort;
};

struct KeyboardFileKind {
    KeyboardFile file;
    std::string_view content; // display name: "firmware"
    Long (QXKeyboardAccess::*save)(std::string&);
    Long (QXKeyboardAccess::*load)(std::string&);
    WriteAction loading;
    bool hasSerialLine;
};

// In the order of the enumeration.
inline constexpr KeyboardFileKind kKeyboardFiles[] = {
    {KeyboardFile::Rom, "firmware", &QXKeyboardAccess::SaveRomIntoFile,
     &QXKeyboardAccess::LoadRomFromFile, WriteAction::LoadRom, false},
    {KeyboardFile::ChipcardRom, "chipcard reader's firmware",
     &QXKeyboardAccess::SaveChipcardRomIntoFile, &QXKeyboardAccess::LoadChipcardRomFromFile,
     WriteAction::LoadChipcardRom, true},
    {KeyboardFile::Parameter, "parameter memory", &QXKeyboardAccess::SaveParameterIntoFile,
     &QXKeyboardAccess::LoadParameterFromFile, WriteAction::LoadParameter, false},
};
static_assert([] {
    std::size_t i = 0;
    for (const KeyboardFileKind& kind : kKeyboardFiles)
        if (kind.file != static_cast<KeyboardFile>(i++))
            return false;
    return kKeyboardFiles[i - 1].file == LastOf(KeyboardFile());
}());

[[nodiscard]] constexpr const KeyboardFileKind& KindOf(KeyboardFile file) {
    return kKeyboardFiles[static_cast<std::size_t>(file)];
}

// The file's name in the form for drivers. Throws Error(FileFailed) if the drivers' 8-bit character
// set cannot represent it exactly: it would name another file.
[[nodiscard]] std::string NameForDriver(const std::filesystem::path& file);

// Lets `write` fill a file beside the wanted one, which is replaced on success. Throws the
// exceptions of `write`, Error(TransferFailed) if it left the file empty, and Error(FileFailed).
void WriteBeside(const std::filesystem::path& file,
                 const std::function<void(const std::string& beside)>& write);

// Saves from the keyboard to a file; an existing file is unchanged after a failure. Throws Error.
void SaveKeyboardFile(Session& session, const KeyboardFileKind& kind,
                      const std::filesystem::path& file, const SerialLine& line);
// Loads a file into the keyboard, with a receipt but without verification. If it replaces the
// keyboard's own memory, it makes a backup, like a write, and is refused while a write is
// interrupted. Throws Error.
Writer::Outcome LoadKeyboardFile(Session& session, Writer& writer, const KeyboardFileKind& kind,
                                 const std::filesystem::path& file, const SerialLine& line);

// Whether the first 256 bytes of the file are the keyboard's code page. Throws Error.
[[nodiscard]] bool HasCodePage(Session& session, const std::filesystem::path& file);

} // namespace qx::host
