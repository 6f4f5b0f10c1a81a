// Options shared by several commands.

#include "cli/commands/Commands.h"
#include "files/Files.h"
#include "files/SystemTexts.h"
#include "qxcontrols/common/Utf.h"

namespace qx::cli {

host::Variables VariablesOf(const std::vector<std::string>& set) {
    host::Variables::Values values;
    for (const std::string& assignment : set) {
        const std::size_t equals = assignment.find('=');
        const std::string name = assignment.substr(0, equals);
        if (equals == std::string::npos || !host::Variables::IsName(name))
            throw UsageError("--set " + assignment + ": expected NAME=VALUE, as in --set till=042");
        if (!IsWellFormedUtf8(assignment))
            throw UsageError("--set " + name + ": the value is not UTF-8");
        if (!values.emplace(name, assignment.substr(equals + 1)).second)
            throw UsageError("--set " + name + " is given twice");
    }
    return host::Variables(std::move(values));
}

Option OutputOption(std::string& file) {
    return {.name = "-o,--output",
            .target = &file,
            .summary = "Write the document to this file instead of standard output",
            .value = "FILE"};
}

Option SetOption(std::vector<std::string>& set) {
    return {.name = "--set",
            .target = &set,
            .summary = "Give a variable of the document its value; may be repeated",
            .value = "NAME=VALUE",
            .mayBeEmpty = true,
            .offers = OfferNothing};
}

host::ConfigurationDocument LoadDocument(Context& context, const std::string& file) {
    return host::ConfigurationDocument::Parse(TextOf(context, file), NameOf(file));
}

std::string NameOf(const std::string& file) {
    return file == kStandardStream ? "standard input" : file;
}

std::string TextOf(Context& context, const std::string& file) {
    if (file == kStandardStream)
        return context.StandardInput();
    try {
        return files::ReadFile(files::PathOf(file), files::kMostOfDocument);
    } catch (const std::exception& error) {
        throw host::FileError(error);
    }
}

void RefuseUnused(const host::Variables& variables) {
    const auto unused = variables.Unused();
    if (!unused.empty())
        throw UsageError("--set " + unused.front() + ": there is no placeholder ${" +
                         unused.front() + "} in the document");
}

} // namespace qx::cli
