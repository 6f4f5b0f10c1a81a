#include "cli/commands/Commands.h"

#include "cli/Output.h"

#include <memory>

namespace qx::cli {

void AddValidate(CLI::App& app, Context& context) {
    CLI::App* command = app.add_subcommand("validate", "Check a document and name every fault");
    const auto file = std::make_shared<std::string>();
    command->add_option("FILE", *file, "The document")->required()->check(NotEmpty());
    const auto set = std::make_shared<std::vector<std::string>>();
    AddSet(*command, *set);
    command->footer("Needs no keyboard, and so does not know which keys its layout lets be "
                    "programmed.\n\nExamples:\n"
                    "  qxconf validate till.json\n"
                    "  qxconf validate --set till=042 till.json\n"
                    "  qxconf --json validate till.json");
    command->callback([&context, file, set] {
        const auto document = host::ConfigurationDocument::Load(*file);
        host::Variables variables = VariablesOf(*set);
        const auto sections = ReadDocument(*context.NewConfiguration(), document, variables);
        RefuseUnused(variables);
        context.Result({{"valid", true}, {"file", *file}},
                       *file + " is valid: " + Counted(sections.size(), "section") + "\n");
    });
}

} // namespace qx::cli
