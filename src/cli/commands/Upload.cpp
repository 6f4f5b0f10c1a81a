#include "cli/commands/Commands.h"

#include "cli/Output.h"

#include <memory>

namespace qx::cli {

namespace {

void Upload(Context& context, const std::string& file) {
    WriteDocument(context, context.UploadedDocument(), file, "keyboard to file");
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
