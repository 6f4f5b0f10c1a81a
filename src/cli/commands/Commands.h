// The commands of qxconf, each as a value that holds its options.
#pragma once

#include "cli/Command.h"
#include "cli/Context.h"

namespace qx::cli {

// In place of a file's name: standard input or standard output.
inline constexpr const char* kStandardStream = "-";

// Reads a document from a file or standard input, which has a name for people. Throws host::Error.
[[nodiscard]] std::string NameOf(const std::string& file);
[[nodiscard]] std::string TextOf(Context& context, const std::string& file);
[[nodiscard]] host::ConfigurationDocument LoadDocument(Context& context, const std::string& file);

// Where a document is written to: -o FILE.
[[nodiscard]] Option OutputOption(std::string& file);

// The option --set, which gives values to a document's variables; reading a document with them; and
// what throws host::Error(Usage) for values that no document had a placeholder for.
[[nodiscard]] Option SetOption(std::vector<std::string>& set);
[[nodiscard]] host::Variables VariablesOf(const std::vector<std::string>& set);
[[nodiscard]] std::vector<host::Section*> ReadDocument(host::Configuration& configuration,
                                                       const host::ConfigurationDocument& document,
                                                       host::Variables& variables);
void RefuseUnused(const host::Variables& variables);

// What an opened keyboard says of itself, with its directory.
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
// The program's own, which it outlives.
[[nodiscard]] Command CompletionCommand(const Command& program);

} // namespace qx::cli
