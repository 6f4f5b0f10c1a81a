#include "cli/commands/Commands.h"

#include "host/Schemas.h"

#include <memory>

namespace qx::cli {

Command SchemaCommand() {
    const auto name = std::make_shared<std::string>("document");
    return {
        .name = "schema",
        .summary = "Print a JSON Schema, for editors and validators",
        .options = {{.name = "NAME",
                     .target = name.get(),
                     .summary = "The schema of a document (the default), result, error, job, "
                                "report, journal, backup or receipt",
                     .choices = host::SchemaNames()}},
        .footer = "An editor that knows the document's schema completes members and marks faults "
                  "while a document is typed.\nOnly qxconf validate finds all faults.\n\n"
                  "Examples:\n"
                  "  qxconf schema > document.schema.json\n"
                  "  qxconf schema result",
        .run =
            [name](Context& context) {
                const host::Json schema = host::Schema(*name);
                context.DocumentResult({{"name", *name}, {"jsonSchema", schema}}, schema);
            },
    };
}

} // namespace qx::cli
