// Refusal: an error of the time before anything is sent to a keyboard.
#pragma once

#include "host/Error.h"

#include <utility>
#include <vector>

namespace qx::host {

[[nodiscard]] inline Error Refusal(Cause cause, ErrorFacts facts = {},
                                   std::vector<Error> because = {}) {
    facts.holds = Holds::NotTouched;
    return Error(cause, std::move(facts), std::move(because));
}

// Runs the step; its exceptions are refusals.
template <typename Step>
auto BeforeWriting(const Step& step) {
    try {
        return step();
    } catch (Error& error) {
        error.holds = Holds::NotTouched;
        throw;
    }
}

} // namespace qx::host
