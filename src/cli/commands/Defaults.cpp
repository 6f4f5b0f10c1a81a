#include "cli/commands/Commands.h"

#include "cli/Output.h"

#include <memory>

namespace qx::cli {

namespace {

void Defaults(Context& context, const std::string& file) {
    host::Session& session = context.Keyboard();
    const auto configuration = context.NewConfiguration();
    const auto document =
        configuration->Write(session.SectionsIn(*configuration), session.Keyboard());
    context.CloseKeyboard();
    WriteDocument(context, document, file, "default values to file");
}

} // namespace

void AddDefaults(CLI::App& app, Context& context) {
    CLI::App* command =
        app.add_subcommand("defaults", "Write the document of this keyboard with default values");
    const auto file = std::make_shared<std::string>();
    command
        ->add_option("-o,--output", *file,
                     "Write the document into this file, not to standard output")
        ->type_name("FILE")
        ->check(NotEmpty());
    command->footer("Examples:\n"
                    "  qxconf defaults -o fresh.json\n"
                    "  qxconf defaults -o fresh.json && qxconf download fresh.json");
    command->callback([&context, file] { Defaults(context, *file); });
}

} // namespace qx::cli
