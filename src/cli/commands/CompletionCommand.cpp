#include "cli/Completion.h"
#include "cli/commands/Commands.h"

#include <memory>

namespace qx::cli {

namespace {

constexpr const char* kWords = "words"; // instead of a shell's name

struct CompletionOptions {
    std::string shell;
    std::vector<std::string> words;
};

void Complete(Context& context, const Command& program, const CompletionOptions& options) {
    if (options.shell != kWords)
        return context.Text(CompletionScript(options.shell));
    const auto candidates = Candidates(program, context, options.words);
    context.Result({{"candidates", candidates}}, candidates);
}

} // namespace

Command CompletionCommand(const Command& program) {
    const auto options = std::make_shared<CompletionOptions>();
    return {
        .name = "completion",
        .summary = "Print the completion script of a shell",
        .options = {{.name = "SHELL",
                     .target = &options->shell,
                     .summary = "bash, zsh or fish",
                     .isRequired = true,
                     .choices = {"bash", "zsh", "fish", kWords}},
                    {.name = "WORDS",
                     .target = &options->words,
                     .summary =
                         "With \"words\" instead of a shell: the words typed so far; lists the "
                         "possible next ones",
                     .mayBeEmpty = true,
                     .offers = OfferNothing}},
        .footer = "The script calls this program, so it also completes the ids of backups and the "
                  "names of preferences.\n\nExamples:\n"
                  "  . <(qxconf completion bash)\n"
                  "  qxconf completion zsh > ~/.zfunc/_qxconf\n"
                  "  qxconf completion fish > ~/.config/fish/completions/qxconf.fish\n"
                  "  qxconf completion words -- backup sh",
        .run = [&program, options](Context& context) { Complete(context, program, *options); },
    };
}

} // namespace qx::cli
