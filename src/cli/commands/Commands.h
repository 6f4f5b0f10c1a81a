// The commands of qxconf. Each adds its own command with its options and its help to the parser; it
// runs when the parser finds it.
#pragma once

#include "cli/Context.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

namespace qx::cli {

// Checks of arguments: refused with these words.
[[nodiscard]] inline CLI::Validator NotEmpty() {
    return {[](std::string& text) { return std::string(text.empty() ? "is empty" : ""); }, ""};
}
[[nodiscard]] inline CLI::Validator AboveZero() {
    return {[](std::string& text) {
                int number = 0;
                const bool isNumber = CLI::detail::lexical_cast(text, number);
                return isNumber && number > 0 ? std::string()
                                              : text + " is not a whole number above 0";
            },
            ""};
}

// The option --set, which gives values to a document's variables; reading a document with them; and
// what throws host::Error(Usage) for values that no document had a placeholder for.
void AddSet(CLI::App& command, std::vector<std::string>& set);
[[nodiscard]] host::Variables VariablesOf(const std::vector<std::string>& set);
[[nodiscard]] std::vector<host::Section*> ReadDocument(host::Configuration& configuration,
                                                       const host::ConfigurationDocument& document,
                                                       host::Variables& variables);
void RefuseUnused(const host::Variables& variables);

void AddIdentify(CLI::App& app, Context& context);
void AddUpload(CLI::App& app, Context& context);
void AddDownload(CLI::App& app, Context& context);
void AddShow(CLI::App& app, Context& context);
void AddSheet(CLI::App& app, Context& context);
void AddDiff(CLI::App& app, Context& context);
void AddValidate(CLI::App& app, Context& context);
void AddDefaults(CLI::App& app, Context& context);
void AddKeyboardFiles(CLI::App& app, Context& context); // rom, chipcard, param, convert
void AddLayer(CLI::App& app, Context& context);
void AddPosition(CLI::App& app, Context& context);
void AddCodePage(CLI::App& app, Context& context);
void AddPrefs(CLI::App& app, Context& context);
void AddTestDrive(CLI::App& app, Context& context);
void AddRecover(CLI::App& app, Context& context);
void AddBackup(CLI::App& app, Context& context);
void AddReceipts(CLI::App& app, Context& context);
void AddBatch(CLI::App& app, Context& context);

} // namespace qx::cli
