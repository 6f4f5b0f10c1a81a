#include "cli/commands/Commands.h"

#include "cli/Output.h"
#include "host/SequenceLint.h"
#include "qxcontrols/keys/KeyName.h"
#include "qxcontrols/keys/KeySequence.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"

#include <memory>

namespace qx::cli {

namespace {

struct ValidateOptions {
    std::string file;
    std::vector<std::string> set;
    bool lint = false;
};

std::string TextOf(const host::SequenceWarning& warning, const QXKeyboardLayoutData& layout) {
    const std::string key = KeyName(warning.key, &layout);
    switch (warning.kind) {
    case host::SequenceWarningKind::NeverReleased:
        return "key " + key + " is pressed and never released";
    case host::SequenceWarningKind::NeverPressed:
        return "key " + key + " is released and was not pressed";
    case host::SequenceWarningKind::KeyAbove127:
        return "code " + std::to_string(warning.key + kRelease) + " releases key " + key +
               ", which was not pressed; key " + KeyName(warning.key + kRelease, &layout) +
               " cannot be pressed through a sequence";
    case host::SequenceWarningKind::NotInLayout:
        return "the layout has no key " + key;
    case host::SequenceWarningKind::NeverSent:
        return "never sent: the key sends the sequence of " + ToText(warning.by) + " instead";
    }
    return {};
}

// The result of --lint: the warnings about the document's sequences.
void ShowWarnings(Context& context, const ValidateOptions& options,
                  const host::Configuration& configuration,
                  const std::vector<host::Section*>& sections) {
    const QXKeyboardLayoutData& layout = context.Layout();
    host::Json json = host::Json::array();
    std::vector<std::string> lines = {options.file +
                                      " is valid: " + Counted(sections.size(), "section")};
    const auto warnings = host::Lint(configuration, sections, &layout);
    for (const host::SettingWarning& each : warnings) {
        const std::string name = ToText(each.name);
        const std::string text = TextOf(each.warning, layout);
        json.push_back({{"place", each.place},
                        {"setting", name},
                        {"code", host::CodeOf(each.warning.kind)},
                        {"key", each.warning.key},
                        {"index", each.warning.at},
                        {"message", text}});
        if (!each.warning.byPlace.empty())
            json.back()["by"] = each.warning.byPlace;
        lines.push_back(name + ": " + text);
    }
    lines.push_back(warnings.empty() ? "no warnings" : Counted(warnings.size(), "warning"));
    context.Result({{"valid", true}, {"file", options.file}, {"warnings", std::move(json)}}, lines);
    if (!warnings.empty())
        context.exitStatus = 1;
}

void Validate(Context& context, const ValidateOptions& options) {
    const auto document = LoadDocument(context, options.file);
    host::Variables variables = VariablesOf(options.set);
    const auto configuration = context.NewConfiguration();
    const auto sections = configuration->Read(document, variables);
    RefuseUnused(variables);
    if (options.lint)
        return ShowWarnings(context, options, *configuration, sections);
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
                    SetOption(options->set),
                    {.name = "--lint",
                     .target = &options->lint,
                     .summary =
                         "Also list sequences that leave a key pressed, release a key that is "
                         "not pressed, use a key that the layout does not have, or are never "
                         "sent; exit with 1 if there are any"}},
        .footer =
            "Needs no keyboard, so it cannot check whether the keyboard's layout allows a key to "
            "be programmed.\n\nExamples:\n"
            "  qxconf validate till.json\n"
            "  qxconf validate --set till=042 till.json\n"
            "  qxconf validate --lint till.json\n"
            "  qxconf --json validate till.json",
        .run = [options](Context& context) { Validate(context, *options); },
    };
}

} // namespace qx::cli
