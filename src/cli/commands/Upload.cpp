#include "cli/commands/Commands.h"

#include "cli/Output.h"

#include <memory>

namespace qx::cli {

namespace {

void Upload(Context& context, const std::string& file, bool noIdentifier) {
    host::ConfigurationDocument document = context.UploadedDocument();
    if (noIdentifier)
        document.RemoveIdentifier();
    WriteDocument(context, document, file, "keyboard to file");
}

} // namespace

Command UploadCommand() {
    const auto file = std::make_shared<std::string>();
    const auto noIdentifier = std::make_shared<bool>(false);
    return {
        .name = "upload",
        .summary = "Read the keyboard's settings into a document (keyboard to file)",
        .options =
            {OutputOption(*file),
             {"--no-identifier", noIdentifier.get(),
              "Leave out the keyboard's identifier, so that the document can be used for others"}},
        .footer = "Never changes the keyboard.\n\nExamples:\n"
                  "  qxconf upload -o till.json\n"
                  "  qxconf upload --no-identifier -o every-till.json\n"
                  "  qxconf --driver ./TANDORQX.DLL upload -o till.json",
        .run = [file, noIdentifier](Context& context) { Upload(context, *file, *noIdentifier); },
    };
}

} // namespace qx::cli
