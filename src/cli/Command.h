// Command: a command of qxconf as data, used for parsing and help.
#pragma once

#include "qxcontrols/common/Types.h"

#include <filesystem>
#include <functional>
#include <limits>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace qx::cli {

class Context;

// The range of a positive number.
inline constexpr std::pair<Long, Long> kAboveZero{1, std::numeric_limits<Long>::max()};

// The destination of a value. A bool is a flag without a value; an option with a list can be
// repeated.
using Target =
    std::variant<bool*, std::string*, std::filesystem::path*, Long*, Integer*,
                 std::optional<Integer>*, std::vector<std::string>*, std::vector<Integer>*>;

// The values offered by completion; by default those of a small range, or files for a text.
using Offers = std::function<std::vector<std::string>(Context&)>;
[[nodiscard]] inline std::vector<std::string> OfferNothing(Context&) {
    return {};
}

// An option, or a positional argument.
struct Option {
    std::string name; // "-o,--output"; of an argument "FILE"
    Target target = {};
    std::string summary = {};
    std::string value = {}; // the name of an option's value in help: "FILE"
    bool isRequired = false;
    bool mayBeEmpty = false;                         // a text may be empty
    std::optional<std::pair<Long, Long>> range = {}; // of a number: minimum and maximum
    std::vector<std::string> choices = {};           // of a text: the allowed values, ignoring case
    std::function<std::string(const std::string&)> complaint = {}; // about a value; empty: valid
    std::vector<std::string> excludes = {}; // options that must not be given together with it
    Offers offers = {};

    [[nodiscard]] bool IsPositional() const { return name.front() != '-'; }
};

struct Command {
    std::string name;
    std::string summary = {};
    std::vector<Option> options = {}; // arguments in order
    std::string footer = {};          // further information and examples
    std::function<void(Context&)> run = {};
    std::vector<Command> commands = {}; // one of these must be given; replaces `run`
};

} // namespace qx::cli
