#include "cli/commands/Commands.h"

#include "cli/Output.h"

#include <memory>

namespace qx::cli {

namespace {

struct ValidateOptions {
    std::string file;
    std::vector<std::string> set;
};

void Validate(Context& context, const ValidateOptions& options) {
    const auto document = LoadDocument(context, options.file);
    host::Variables variables = VariablesOf(options.set);
    const auto sections = ReadDocument(*context.NewConfiguration(), document, variables);
    RefuseUnused(variables);
    context.Result({{"valid", true}, {"file", options.file}},
                   {options.file + " is valid: " + Counted(sections.size(), "section")});
}

} // namespace

Command ValidateCommand() {
    const auto options = std::make_shared<ValidateOptions>();
    return {
        .name = "validate",
        .summary = "Check a document and name every fault",
        .options = {{.name = "FILE",
                     .target = &options->file,
                     .summary = "The document",
                     .isRequired = true},
                    SetOption(options->set)},
        .footer = "Needs no keyboard, and so does not know which keys its layout allows to be "
                  "programmed.\n\nExamples:\n"
                  "  qxconf validate till.json\n"
                  "  qxconf validate --set till=042 till.json\n"
                  "  qxconf --json validate till.json",
        .run = [options](Context& context) { Validate(context, *options); },
    };
}

} // namespace qx::cli
