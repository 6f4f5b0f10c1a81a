#include "cli/commands/Commands.h"

#include "host/DocumentSchema.h"

namespace qx::cli {

Command SchemaCommand() {
    return {
        .name = "schema",
        .summary = "Print the JSON Schema of documents, for editors and validators",
        .footer = "An editor that knows the schema completes members and marks faults while a "
                  "document is typed.\nOnly qxconf validate finds all faults.\n\nExamples:\n"
                  "  qxconf schema > qx-configuration.schema.json",
        .run =
            [](Context& context) {
                const host::Json schema = host::DocumentSchema();
                context.DocumentResult({{"documentSchema", schema}}, schema);
            },
    };
}

} // namespace qx::cli
