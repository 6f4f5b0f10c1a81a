// Problems in the assertions of tests.
#pragma once

#include "files/Problem.h"
#include "files/SystemTexts.h"

#include <filesystem>
#include <functional>
#include <ostream>
#include <system_error>

namespace qx::files {

inline void PrintTo(const Problem& problem, std::ostream* stream) {
    *stream << WordsOf(problem);
}

} // namespace qx::files

namespace qx::test {

// Why the action failed; an empty problem if it did not.
inline files::Problem RefusalOf(const std::function<void()>& action) {
    try {
        action();
        return {};
    } catch (const std::runtime_error& error) {
        return files::ProblemOf(error);
    }
}

inline files::Problem Cannot(files::Deed deed, const std::filesystem::path& subject,
                             files::Obstacle obstacle, std::vector<std::string> names = {},
                             std::int64_t number = 0) {
    return {.deed = deed,
            .subject = files::TextOf(subject),
            .obstacle = obstacle,
            .names = std::move(names),
            .number = number};
}
inline files::Problem Cannot(files::Deed deed, const std::filesystem::path& subject,
                             std::errc reason) {
    return {.deed = deed,
            .subject = files::TextOf(subject),
            .system = std::make_error_code(reason).message()};
}

} // namespace qx::test
