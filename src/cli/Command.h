// Command: a command of qxconf as data, from which its parsing and its help are made.
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

// The range of a number that is above zero.
inline constexpr std::pair<Long, Long> kAboveZero{1, std::numeric_limits<Long>::max()};

// Where a value goes. A bool is a flag, which takes no value; of a list, the option may be
// repeated.
using Target =
    std::variant<bool*, std::string*, std::filesystem::path*, Long*, Integer*,
                 std::optional<Integer>*, std::vector<std::string>*, std::vector<Integer>*>;

// The values that a shell can offer; without this, those of a small range, or of a text the files.
using Offers = std::function<std::vector<std::string>(Context&)>;
[[nodiscard]] inline std::vector<std::string> OfferNothing(Context&) {
    return {};
}

// An option, or an argument that is known by its position.
struct Option {
    std::string name; // "-o,--output"; of an argument "FILE"
    Target target = {};
    std::string summary = {};
    std::string value = {}; // the name of an option's value in help: "FILE"
    bool isRequired = false;
    bool mayBeEmpty = false;                         // a text may be the empty one
    std::optional<std::pair<Long, Long>> range = {}; // of a number: the least and the most
    std::vector<std::string> choices = {};           // of a text: one of these, in any case
    std::function<std::string(const std::string&)> complaint = {}; // about a value; empty: none
    std::vector<std::string> excludes = {}; // options that cannot be given as well
    Offers offers = {};

    [[nodiscard]] bool IsPositional() const { return name.front() != '-'; }
};

struct Command {
    std::string name;
    std::string summary = {};
    std::vector<Option> options = {}; // arguments in their order
    std::string footer = {};          // what else there is to know, and examples
    std::function<void(Context&)> run = {};
    std::vector<Command> commands = {}; // one of these has to be given, in place of `run`
};

} // namespace qx::cli
