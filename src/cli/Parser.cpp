#include "cli/Parser.h"

#include "cli/Errors.h"
#include "files/SystemTexts.h"

// The only file that includes the parser library, which is slow to compile.
#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <algorithm>
#include <charconv>
#include <limits>
#include <numeric>

namespace qx::cli {

namespace {

// Help only names each value; the sentences explain it.
class HelpFormatter : public CLI::Formatter {
public:
    HelpFormatter() {
        label("SUBCOMMAND", "COMMAND");
        label("Positionals", "Arguments");
    }
    std::string make_option_opts(const CLI::Option* option) const override {
        const bool hasValue = option->get_type_size() != 0 && !option->get_positional();
        return hasValue ? " " + option->get_type_name() : "";
    }
};

std::string RangeText(const std::pair<Long, Long>& range) {
    if (range == kAboveZero)
        return "above 0";
    return "from " + std::to_string(range.first) + " to " + std::to_string(range.second);
}

std::string NumberComplaint(const std::string& text, const std::pair<Long, Long>& range) {
    Long number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool isGood = error == std::errc() && end == text.data() + text.size() &&
                        number >= range.first && number <= range.second;
    return isGood ? "" : text + " is not a whole number " + RangeText(range);
}

std::string TextComplaint(const std::string& text, const Option& option) {
    if (text.empty() && !option.mayBeEmpty)
        return "is empty";
    return option.complaint ? option.complaint(text) : "";
}

// One value of a target.
template <typename T>
struct ValueOf {
    using Type = T;
    static constexpr bool isList = false;
};
template <typename T>
struct ValueOf<std::optional<T>> : ValueOf<T> {};
template <typename T>
struct ValueOf<std::vector<T>> {
    using Type = T;
    static constexpr bool isList = true;
};

// Adds the option according to the type of its target.
struct Adder {
    CLI::App& app;
    const Option& option;

    void operator()(bool* target) const { app.add_flag(option.name, *target, option.summary); }

    template <typename T>
    void operator()(T* target) const {
        using Value = typename ValueOf<T>::Type;
        CLI::Option* added = nullptr;
        if constexpr (std::is_same_v<T, std::filesystem::path>)
            added = app.add_option_function<std::string>(
                option.name, [target](const std::string& text) { *target = files::PathOf(text); },
                option.summary);
        else
            added = app.add_option(option.name, *target, option.summary);
        if (ValueOf<T>::isList && !option.IsPositional())
            added->expected(1)->allow_extra_args(false)->take_all();
        std::function<std::string(const std::string&)> complaint;
        if constexpr (std::is_integral_v<Value>)
            complaint =
                [range = option.range.value_or(std::pair<Long, Long>(
                     std::numeric_limits<Value>::min(), std::numeric_limits<Value>::max()))](
                    const std::string& text) { return NumberComplaint(text, range); };
        else
            complaint = [&each = option](const std::string& text) {
                return TextComplaint(text, each);
            };
        added->check(
            CLI::Validator([complaint](const std::string& text) { return complaint(text); }, ""));
        if (!option.choices.empty())
            added->transform(CLI::IsMember(option.choices, CLI::ignore_case));
    }
};

void AddOptions(CLI::App& app, const Command& command) {
    for (const Option& option : command.options) {
        std::visit(Adder{app, option}, option.target);
        CLI::Option* added = app.get_options().back();
        added->required(option.isRequired);
        if (!option.value.empty())
            added->type_name(option.value);
        for (const std::string& other : option.excludes)
            added->excludes(app.get_option(other));
    }
}

// The program's own options, valid for every command.
std::string GlobalOptionsText(const Command& program) {
    std::string names;
    for (const Option& option : program.options)
        names += " " + option.name.substr(option.name.rfind(',') + 1);
    return "\n\nOptions of every command (see " + program.name + " --help):\n " + names;
}

void Add(CLI::App& app, const Command& command, const std::string& globals) {
    app.set_help_flag("-h,--help", "Show this help");
    app.footer(command.footer + (app.get_parent() == nullptr ? "" : globals));
    AddOptions(app, command);
    for (const Command& inner : command.commands) {
        CLI::App* added = app.add_subcommand(inner.name, inner.summary);
        added->group("Commands");
        // Adding the options of every command would take longer than most commands do.
        added->preparse_callback(
            [=, &inner, &globals](std::size_t) { Add(*added, inner, globals); });
    }
    if (!command.commands.empty())
        app.require_subcommand(1);
}

// The innermost command found, with its full name: "qxconf prefs" of "qxconf prefs bogus".
struct Found {
    const CLI::App* app;
    const Command* command;
    std::string name;
};

const Command* Inner(const Command& command, const std::string& name) {
    const auto found = std::find_if(command.commands.begin(), command.commands.end(),
                                    [&](const Command& each) { return each.name == name; });
    return found == command.commands.end() ? nullptr : &*found;
}

Found Innermost(const CLI::App& app, const Command& command, const std::string& name) {
    const auto found = app.get_subcommands();
    if (found.empty())
        return {&app, &command, name};
    const std::string& inner = found.front()->get_name();
    return Innermost(*found.front(), *Inner(command, inner), name + " " + inner);
}

// The number of letters to change, add or remove to turn one word into the other.
std::size_t Distance(const std::string& one, const std::string& other) {
    std::vector<std::size_t> distances(other.size() + 1);
    std::iota(distances.begin(), distances.end(), std::size_t{0});
    for (std::size_t i = 0; i < one.size(); ++i) {
        std::size_t diagonal = std::exchange(distances[0], i + 1);
        for (std::size_t k = 0; k < other.size(); ++k) {
            const std::size_t changed = diagonal + (one[i] == other[k] ? 0 : 1);
            diagonal = distances[k + 1];
            distances[k + 1] = std::min({changed, diagonal + 1, distances[k] + 1});
        }
    }
    return distances.back();
}

// "; did you mean upload?" if one of the names is similar to the word.
std::string Suggestion(const std::string& word, const std::vector<std::string>& names) {
    const auto nearest = std::min_element(names.begin(), names.end(),
                                          [&](const std::string& one, const std::string& other) {
                                              return Distance(word, one) < Distance(word, other);
                                          });
    const bool isLike = nearest != names.end() && Distance(word, *nearest) <= 1 + word.size() / 5;
    return isLike ? "; did you mean " + *nearest + "?" : "";
}

std::string NoOption(const Command& program, const Command& command, const std::string& word) {
    std::vector<std::string> names;
    for (const Command* each : {&command, &program})
        for (const Option& option : each->options)
            if (!option.IsPositional())
                names.push_back(option.name.substr(option.name.rfind(',') + 1));
    return "unknown option " + word + Suggestion(word.substr(0, word.find('=')), names);
}

std::string NoCommand(const Command& command, const std::string& name, const std::string& word) {
    std::vector<std::string> names;
    for (const Command& each : command.commands)
        names.push_back(each.name);
    return "unknown command \"" + name + " " + word + "\"" + Suggestion(word, names);
}

// The error in the arguments, and where to find help.
std::string UsageText(const CLI::App& app, const Command& program, const CLI::ParseError& error) {
    const Found found = Innermost(app, program, program.name);
    const auto unknown = app.remaining(true);
    const bool lacksCommand = !found.command->commands.empty() &&
                              dynamic_cast<const CLI::RequiredError*>(&error) != nullptr;
    const bool isTooMuch = dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr;
    std::string text = error.what();
    if (!unknown.empty() && (lacksCommand || isTooMuch) && unknown.front().starts_with('-'))
        text = NoOption(program, *found.command, unknown.front());
    else if (lacksCommand)
        text = unknown.empty() ? found.name + " needs a command"
                               : NoCommand(*found.command, found.name, unknown.front());
    else if (isTooMuch && !unknown.empty())
        text = found.name + ": unexpected argument \"" + unknown.front() + "\"";
    return text + " (see " + found.name +
           (found.app == &app && !lacksCommand ? " COMMAND --help)" : " --help)");
}

} // namespace

Parsed Parse(const Command& program, const std::string& version,
             const std::vector<std::string>& arguments) {
    CLI::App app(program.summary, program.name);
    app.formatter(std::make_shared<HelpFormatter>());
    app.set_version_flag("-V,--version", version, "Show the version");
    app.fallthrough();
    app.allow_windows_style_options(false); // file names may begin with "/"
    const std::string globals = GlobalOptionsText(program);
    Add(app, program, globals);
    try {
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
        return {Innermost(app, program, program.name).command, ""};
    } catch (const CLI::CallForVersion&) {
        return {nullptr, version + "\n"};
    } catch (const CLI::Success&) { // thrown when help is requested
        return {nullptr, app.help()};
    } catch (const CLI::ParseError& error) {
        throw UsageError(UsageText(app, program, error));
    }
}

std::string HelpFor(const Command& program, const std::vector<std::string>& words) {
    const Command* command = &program;
    std::string name = program.name;
    for (const std::string& word : words) {
        const Command* const inner = Inner(*command, word);
        if (inner == nullptr)
            throw UsageError(NoCommand(*command, name, word) + " (see " + name + " --help)");
        command = inner;
        name += " " + word;
    }
    std::vector<std::string> arguments = words;
    arguments.emplace_back("--help");
    return Parse(program, "", arguments).text;
}

} // namespace qx::cli
