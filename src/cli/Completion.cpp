#include "cli/Completion.h"

#include <algorithm>

namespace qx::cli {

namespace {

constexpr const char* kBash = R"(# Completion of qxconf for bash:  . <(qxconf completion bash)
_qxconf() {
    local IFS=$'\n' word=${COMP_WORDS[COMP_CWORD]}
    local words=($("${COMP_WORDS[0]}" completion words -- "${COMP_WORDS[@]:1:COMP_CWORD}" 2>/dev/null))
    case ${words[0]-} in
    :files) COMPREPLY=($(compgen -f -- "$word")) ;;
    :folders) COMPREPLY=($(compgen -d -- "$word")) ;;
    *) COMPREPLY=("${words[@]}") ;;
    esac
}
complete -o filenames -F _qxconf qxconf
)";

constexpr const char* kZsh = R"(#compdef qxconf
# Completion of qxconf for zsh:  . <(qxconf completion zsh)
_qxconf() {
    local -a candidates
    candidates=("${(@f)$("${words[1]}" completion words -- "${(@)words[2,CURRENT]}" 2>/dev/null)}")
    case ${candidates[1]} in
    :files) _files ;;
    :folders) _files -/ ;;
    *) compadd -- "${candidates[@]}" ;;
    esac
}
# An installed file of this text is itself the function _qxconf when it is first called.
if [[ ${funcstack[1]} == _qxconf ]]; then
    _qxconf "$@"
else
    compdef _qxconf qxconf
fi
)";

constexpr const char* kFish = R"(# Completion of qxconf for fish:  qxconf completion fish | source
function __qxconf_complete
    set -l words (commandline -opc) (commandline -ct)
    set -l candidates ($words[1] completion words -- $words[2..-1] 2>/dev/null)
    switch "$candidates[1]"
        case :files
            __fish_complete_path (commandline -ct)
        case :folders
            __fish_complete_directories (commandline -ct)
        case '*'
            printf '%s\n' $candidates
    end
end
complete -c qxconf -f -a '(__qxconf_complete)'
)";

// "-o" and "--output" of "-o,--output".
std::vector<std::string> NamesOf(const Option& option) {
    const std::size_t comma = option.name.find(',');
    if (comma == std::string::npos)
        return {option.name};
    return {option.name.substr(0, comma), option.name.substr(comma + 1)};
}

bool IsFlag(const Option& option) {
    return std::holds_alternative<bool*>(option.target);
}

bool IsList(const Option& option) {
    return std::holds_alternative<std::vector<std::string>*>(option.target);
}

bool IsText(const Option& option) {
    return std::holds_alternative<std::string*>(option.target) ||
           std::holds_alternative<std::filesystem::path*>(option.target) || IsList(option);
}

const Option* FindOption(const Command& program, const Command& command, const std::string& word) {
    for (const Command* each : {&command, &program})
        for (const Option& option : each->options) {
            const auto names = NamesOf(option);
            if (!option.IsPositional() &&
                std::find(names.begin(), names.end(), word) != names.end())
                return &option;
        }
    return nullptr;
}

std::vector<std::string> ValuesOf(const Option& option, Context& context) {
    if (!option.choices.empty())
        return option.choices;
    if (option.offers)
        return option.offers(context);
    if (option.value == "DIR")
        return {":folders"};
    if (IsText(option))
        return {":files"};
    std::vector<std::string> numbers;
    constexpr Long kMost = 100;
    if (option.range && option.range->second - option.range->first < kMost)
        for (Long number = option.range->first; number <= option.range->second; ++number)
            numbers.push_back(std::to_string(number));
    return numbers;
}

std::vector<std::string> OptionNames(const Command& program, const Command& command) {
    std::vector<std::string> names = {"--help"};
    if (&command == &program)
        names.emplace_back("--version");
    for (const Command* each : {&command, &program})
        for (const Option& option : each->options)
            if (!option.IsPositional())
                names.push_back(NamesOf(option).back());
    std::sort(names.begin(), names.end());
    names.erase(std::unique(names.begin(), names.end()), names.end());
    return names;
}

// The position in the command line: the command, and the number of its arguments so far.
struct Place {
    const Command* command;
    std::size_t arguments = 0;
    const Option* waiting = nullptr; // the option whose value is the next word
};

Place PlaceAfter(const Command& program, const std::vector<std::string>& words) {
    Place place{&program};
    for (std::size_t i = 0; i + 1 < words.size(); ++i) {
        const std::string& word = words[i];
        if (std::exchange(place.waiting, nullptr) != nullptr)
            continue;
        const auto& commands = place.command->commands;
        const auto inner = std::find_if(commands.begin(), commands.end(),
                                        [&](const Command& each) { return each.name == word; });
        if (inner != commands.end())
            place.command = &*inner;
        else if (const Option* option = FindOption(program, *place.command, word);
                 option != nullptr && !IsFlag(*option))
            place.waiting = option;
        else if (!word.starts_with('-'))
            ++place.arguments;
    }
    return place;
}

std::vector<std::string> All(const Command& program, Context& context, const Place& place,
                             const std::string& word) {
    if (place.waiting != nullptr)
        return ValuesOf(*place.waiting, context);
    if (word.starts_with('-'))
        return OptionNames(program, *place.command);
    std::vector<std::string> names;
    for (const Command& command : place.command->commands)
        names.push_back(command.name);
    std::size_t arguments = place.arguments;
    for (const Option& option : place.command->options)
        if (option.IsPositional() && (IsList(option) || arguments-- == 0))
            return ValuesOf(option, context);
    return names;
}

} // namespace

std::vector<std::string> Candidates(const Command& program, Context& context,
                                    const std::vector<std::string>& words) {
    const std::string word = words.empty() ? "" : words.back();
    auto candidates = All(program, context, PlaceAfter(program, words), word);
    std::erase_if(candidates, [&](const std::string& candidate) {
        return !candidate.starts_with(':') && !candidate.starts_with(word);
    });
    return candidates;
}

std::string CompletionScript(const std::string& shell) {
    return shell == "bash" ? kBash : shell == "zsh" ? kZsh : kFish;
}

} // namespace qx::cli
