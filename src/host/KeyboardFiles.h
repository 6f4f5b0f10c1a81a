// KeyboardFiles: the keyboard's own files, in the driver's formats, and its code page.
#pragma once

#include "host/Writer.h"

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

namespace qx::host {

// The serial line of the chipcard reader; other files do without it.
struct SerialLine {
    Integer baudRateIndex;
    Integer comPort;
};

struct KeyboardFileKind {
    std::string_view key;     // for commands: "rom", "chipcard", "param"
    std::string_view content; // for people: "program"
    Long (QXKeyboardAccess::*save)(std::string&);
    Long (QXKeyboardAccess::*load)(std::string&);
    bool hasSerialLine;
};

inline constexpr KeyboardFileKind kKeyboardFiles[] = {
    {"rom", "program", &QXKeyboardAccess::SaveRomIntoFile, &QXKeyboardAccess::LoadRomFromFile,
     false},
    {"chipcard", "chipcard reader's program", &QXKeyboardAccess::SaveChipcardRomIntoFile,
     &QXKeyboardAccess::LoadChipcardRomFromFile, true},
    {"param", "parameter memory", &QXKeyboardAccess::SaveParameterIntoFile,
     &QXKeyboardAccess::LoadParameterFromFile, false},
};

// The file's name, as drivers are given it. Throws Error(FileFailed) for one that the driver's
// 8-bit character set does not have whole: it would name another file.
[[nodiscard]] std::string NameForDriver(const std::filesystem::path& file);

// Has `write` fill a file beside the wanted one, which is replaced when all went well. Throws what
// `write` throws, Error(TransferFailed) when that left the file empty, and Error(FileFailed).
void WriteBeside(const std::filesystem::path& file,
                 const std::function<void(const std::string& beside)>& write);

// Keyboard to file: an earlier file stays as it was unless all goes well. Throws Error.
void SaveKeyboardFile(Session& session, const KeyboardFileKind& kind,
                      const std::filesystem::path& file, const SerialLine& line);
// File to keyboard, with a receipt and unproved. What replaces the keyboard's own memory leaves a
// backup, as a write does, and is refused while one is interrupted. Throws Error.
Writer::Outcome LoadKeyboardFile(Session& session, Writer& writer, const KeyboardFileKind& kind,
                                 const std::filesystem::path& file, const SerialLine& line);

// Whether the first 256 bytes of the file are the keyboard's code page. Throws Error.
[[nodiscard]] bool HasCodePage(Session& session, const std::filesystem::path& file);

} // namespace qx::host
