#include "cli/commands/Commands.h"

#include "cli/Output.h"

#include <memory>

namespace qx::cli {

namespace {

void Upload(Context& context, const std::string& file) {
    host::Session& session = context.Keyboard();
    const auto configuration = context.NewConfiguration();
    const auto sections = session.SectionsIn(*configuration);
    session.Upload(sections);
    const auto document = configuration->Write(sections, session.Keyboard());
    context.CloseKeyboard();
    WriteDocument(context, document, file, "keyboard to file");
}

} // namespace

void AddUpload(CLI::App& app, Context& context) {
    CLI::App* command = app.add_subcommand(
        "upload", "Read the keyboard's settings into a document (keyboard to file)");
    const auto file = std::make_shared<std::string>();
    command
        ->add_option("-o,--output", *file,
                     "Write the document into this file, not to standard output")
        ->type_name("FILE")
        ->check(NotEmpty());
    command->footer("Never changes the keyboard.\n\nExamples:\n"
                    "  qxconf upload -o till.json\n"
                    "  qxconf --driver ./TANDORQX.DLL upload > till.json");
    command->callback([&context, file] { Upload(context, *file); });
}

} // namespace qx::cli
