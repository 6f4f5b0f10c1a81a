#include "cli/commands/Commands.h"

#include "files/Files.h"
#include "qxcontrols/pos/QXPosCodePage.h"

#include <memory>

namespace qx::cli {

namespace {

std::string ReasonOfFailure(const std::string& file) {
    try {
        return file + " is no code page: it has " + std::to_string(files::ReadFile(file).size()) +
               " bytes, and " + std::to_string(PosCodePage::kSize) + " are needed";
    } catch (const std::exception& error) {
        return error.what();
    }
}

void Compare(Context& context, const std::string& file) {
    QXPosCodePage pages;
    if (!pages.FilePage().LoadPageFromFile(file))
        throw host::Error(host::ErrorKind::FileFailed, ReasonOfFailure(file));
    host::Session& session = context.Keyboard();
    session.Run("reading the code page from the keyboard failed",
                [&] { pages.KeyboardPage().LoadPageFromKeyboard(&session.Access()); });
    context.CloseKeyboard();
    const bool equal = pages.PagesAreEqual();
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
