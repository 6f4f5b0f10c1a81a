#include "cli/commands/Commands.h"

#include "host/KeyboardFiles.h"

#include <memory>

namespace qx::cli {

namespace {

void Compare(Context& context, const std::string& file) {
    const bool equal = host::HasCodePage(context.Keyboard(), file);
    context.CloseKeyboard();
    context.exitStatus = equal ? 0 : 1;
    context.Result({{"file", file}, {"equal", equal}}, std::string("the keyboard's code page ") +
                                                           (equal ? "equals " : "differs from ") +
                                                           file + "\n");
}

} // namespace

void AddCodePage(CLI::App& app, Context& context) {
    CLI::App* codepage = app.add_subcommand("codepage", "Work with the keyboard's code page");
    codepage->require_subcommand(1);
    codepage->footer("Example:\n  qxconf codepage compare cp850.bin");
    CLI::App* command =
        codepage->add_subcommand("compare", "Compare the keyboard's code page with a file");
    const auto file = std::make_shared<std::string>();
    command->add_option("FILE", *file, "The code page: its first 256 bytes count")
        ->required()
        ->check(NotEmpty());
    command->footer(
        "Exits with 1 when they differ.\n\nExample:\n  qxconf codepage compare cp850.bin");
    command->callback([&context, file] { Compare(context, *file); });
}

} // namespace qx::cli
