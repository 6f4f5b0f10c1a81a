// The commands of qxconf, each as a value that contains its options.
#pragma once

#include "cli/Command.h"
#include "cli/Context.h"

namespace qx::cli {

// The file name for standard input or standard output.
inline constexpr const char* kStandardStream = "-";

// Reading a document from a file or standard input; NameOf gives its display name. Throws
// host::Error.
[[nodiscard]] std::string NameOf(const std::string& file);
[[nodiscard]] std::string TextOf(Context& context, const std::string& file);
[[nodiscard]] host::ConfigurationDocument LoadDocument(Context& context, const std::string& file);

// The option -o FILE for the output document.
[[nodiscard]] Option OutputOption(std::string& file);

// The option --set, which sets a document's variables; and RefuseUnused, which throws
// host::Error(Usage) for variables without a placeholder in any document.
[[nodiscard]] Option SetOption(std::vector<std::string>& set);
[[nodiscard]] host::Variables VariablesOf(const std::vector<std::string>& set);
void RefuseUnused(const host::Variables& variables);

// The identification of an opened keyboard, with its directory.
struct Described {
    host::Json json;
    Lines lines;
};
[[nodiscard]] Described DescriptionOf(host::Session& keyboard);

[[nodiscard]] Command IdentifyCommand();
[[nodiscard]] Command UploadCommand();
[[nodiscard]] Command DownloadCommand();
[[nodiscard]] Command ShowCommand();
[[nodiscard]] Command SheetCommand();
[[nodiscard]] Command DiffCommand();
[[nodiscard]] Command ValidateCommand();
[[nodiscard]] Command DefaultsCommand();
[[nodiscard]] Command SchemaCommand();
[[nodiscard]] std::vector<Command> KeyboardFileCommands(); // rom, chipcard, param
[[nodiscard]] Command ConvertCommand();
[[nodiscard]] Command LayerCommand();
[[nodiscard]] Command PositionCommand();
[[nodiscard]] Command CodePageCommand();
[[nodiscard]] Command PrefsCommand();
[[nodiscard]] Command TestDriveCommand();
[[nodiscard]] Command RecoverCommand();
[[nodiscard]] Command BackupCommand();
[[nodiscard]] Command ReceiptsCommand();
[[nodiscard]] Command DoctorCommand();
[[nodiscard]] Command BatchCommand();
// The program's own command; the program must outlive it.
[[nodiscard]] Command CompletionCommand(const Command& program);

} // namespace qx::cli
