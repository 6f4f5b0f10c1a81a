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

Command DefaultsCommand() {
    const auto file = std::make_shared<std::string>();
    return {
        .name = "defaults",
        .summary = "Write the document of this keyboard with default values",
        .options = {OutputOption(*file)},
        .footer = "Examples:\n"
                  "  qxconf defaults -o fresh.json\n"
                  "  qxconf defaults -o fresh.json && qxconf download fresh.json",
        .run = [file](Context& context) { Defaults(context, *file); },
    };
}

} // namespace qx::cli
