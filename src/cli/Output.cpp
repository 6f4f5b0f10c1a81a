#include "cli/Output.h"

#include "files/Files.h"

namespace qx::cli {

void WriteDocument(Context& context, const host::ConfigurationDocument& document,
                   const std::string& file, const std::string& direction) {
    if (file.empty()) {
        context.Result({{"direction", direction}, {"document", document.AsJson()}},
                       document.ToText());
        return;
    }
    try {
        files::WriteFileAtomically(file, document.ToText());
    } catch (const std::exception& error) {
        throw host::Error(host::ErrorKind::FileFailed, error.what());
    }
    context.Result({{"direction", direction}, {"file", file}},
                   direction + ": wrote " + file + "\n");
}

std::string Counted(std::size_t count, const std::string& noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

} // namespace qx::cli
