// Sending: sends the bytes of a plan to the keyboard and verifies them.
#pragma once

#include "host/Error.h"
#include "host/Session.h"
#include "host/WriteCodes.h"
#include "host/WritePlan.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qx::host {

// The steps of a write, in order.
enum class Step { SavingBackup, Checking, Writing, ReadingBack };
// "saving a backup", "reading back".
[[nodiscard]] std::string_view TextOf(Step step);
using OnStep = std::function<void(Step)>; // called at the start of each

// The result of a sending. Without a failure the bytes were sent and, if requested, verified.
struct Sent {
    std::optional<Error> failure;
    Holds holds = Holds::Unknown;         // when last read
    std::optional<KeyboardContent> found; // if they are neither old nor new
    std::optional<Long> bytes;            // sent; none if the transfer failed
    std::string afterSha256;              // of all areas as read back; empty if they were not
    WriteResult result = WriteResult::NothingChanged;

    void Fail(Error error) {
        error.holds = holds;
        failure = std::move(error);
    }
};

// Checks that the opened keyboard is still the one of the plan, with the same contents: the driver
// looks again, and all areas are read again. Throws Error(KeyboardChanged) if not.
void RequireStillAs(Session& session, const KeyboardContent& planned);

class Sending {
public:
    // `scratch` is a configuration for this keyboard whose settings may be overwritten.
    Sending(Session& session, Configuration& scratch, const OnStep& onStep)
        : m_session(session), m_scratch(scratch), m_onStep(onStep) {}

    // Sends the ranges, which are prepared, and, unless disabled, verifies that the keyboard then
    // holds everything in the plan. The failure describes the keyboard's contents; nothing is
    // thrown.
    [[nodiscard]] Sent Run(const WritePlan& plan, const std::vector<ByteRange>& ranges,
                           bool verify);

private:
    void Transfer(const WritePlan& plan, const std::vector<ByteRange>& ranges, Sent& sent);
    void Prove(const WritePlan& plan, Sent& sent);
    void Look(const WritePlan& plan, Sent& sent);
    [[nodiscard]] Error Differing(const KeyboardContent& expected, const KeyboardContent& found);

    Session& m_session;
    Configuration& m_scratch;
    const OnStep& m_onStep;
};

} // namespace qx::host
