#include "cli/Parser.h"

#include "host/Error.h"

// The only file that sees the parser's library, which takes long to compile.
#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <algorithm>
#include <charconv>
#include <limits>

namespace qx::cli {

namespace {

// Help names each value and nothing else: the sentences tell the rest.
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

// Adds the option in the way that fits the type of its target.
struct Adder {
    CLI::App& app;
    const Option& option;

    void operator()(bool* target) const { app.add_flag(option.name, *target, option.summary); }

    template <typename T>
    void operator()(T* target) const {
        using Value = typename ValueOf<T>::Type;
        CLI::Option* added = app.add_option(option.name, *target, option.summary);
        if (ValueOf<T>::isList)
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

void Add(CLI::App& app, const Command& command) {
    app.set_help_flag("-h,--help", "Show this help");
    app.footer(command.footer);
    AddOptions(app, command);
    for (const Command& inner : command.commands) {
        CLI::App* added = app.add_subcommand(inner.name, inner.summary);
        added->group("Commands");
        Add(*added, inner);
    }
    if (!command.commands.empty())
        app.require_subcommand(1);
}

// The innermost command that was found, with its whole name: "qxconf prefs" of "qxconf prefs
// bogus".
struct Found {
    const CLI::App* app;
    const Command* command;
    std::string name;
};

Found Innermost(const CLI::App& app, const Command& command, const std::string& name) {
    const auto found = app.get_subcommands();
    if (found.empty())
        return {&app, &command, name};
    const std::string& inner = found.front()->get_name();
    const auto chosen = std::find_if(command.commands.begin(), command.commands.end(),
                                     [&](const Command& each) { return each.name == inner; });
    return Innermost(*found.front(), *chosen, name + " " + inner);
}

// What was wrong with the arguments, and where more is to be learnt.
std::string UsageText(const CLI::App& app, const Found& found, const CLI::ParseError& error) {
    std::string text = error.what();
    const bool lacksCommand = found.app->get_require_subcommand_min() > 0 &&
                              dynamic_cast<const CLI::RequiredError*>(&error) != nullptr;
    const auto unknown = app.remaining(true);
    if (lacksCommand && unknown.empty())
        text = found.name + " needs a command";
    else if (lacksCommand && unknown.front().starts_with('-'))
        text = "there is no option " + unknown.front();
    else if (lacksCommand)
        text = "there is no command \"" + found.name + " " + unknown.front() + "\"";
    return text + " (see " + found.name +
           (found.app == &app && !lacksCommand ? " COMMAND --help)" : " --help)");
}

} // namespace

Parsed Parse(const Command& program, const std::string& version,
             const std::vector<std::string>& arguments) {
    CLI::App app(program.summary, program.name);
    app.formatter(std::make_shared<HelpFormatter>());
    app.set_version_flag("--version", version, "Show the version");
    app.fallthrough();
    Add(app, program);
    try {
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
        return {Innermost(app, program, program.name).command, ""};
    } catch (const CLI::CallForVersion&) {
        return {nullptr, version + "\n"};
    } catch (const CLI::Success&) { // help is asked for in this way
        return {nullptr, app.help()};
    } catch (const CLI::ParseError& error) {
        throw host::Error(host::ErrorKind::Usage,
                          UsageText(app, Innermost(app, program, program.name), error));
    }
}

} // namespace qx::cli
