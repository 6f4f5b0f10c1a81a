#include "cli/commands/Commands.h"

#include "cli/Output.h"

#include <memory>

namespace qx::cli {

namespace {

void Upload(Context& context, const std::string& file) {
    WriteDocument(context, context.UploadedDocument(), file, "keyboard to file");
}

} // namespace

Command UploadCommand() {
    const auto file = std::make_shared<std::string>();
    return {
        .name = "upload",
        .summary = "Read the keyboard's settings into a document (keyboard to file)",
        .options = {OutputOption(*file)},
        .footer = "Never changes the keyboard.\n\nExamples:\n"
                  "  qxconf upload -o till.json\n"
                  "  qxconf --driver ./TANDORQX.DLL upload -o till.json",
        .run = [file](Context& context) { Upload(context, *file); },
    };
}

} // namespace qx::cli
