// Sending: the bytes of a plan on their way into the keyboard, and the proof that they are there.
#pragma once

#include "host/Error.h"
#include "host/Session.h"
#include "host/WritePlan.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace qx::host {

// The steps of a write, in their order.
enum class Step { SavingBackup, Checking, Writing, ReadingBack };
using OnStep = std::function<void(Step)>; // called when one begins

// How a sending ended. Without a failure the bytes are sent and, where that was wanted, proved.
struct Sent {
    std::optional<Error> failure;
    bool isBegun = false;            // bytes may have left for the keyboard, whichever that was
    Holds holds = Holds::NotTouched; // as was last seen
    std::optional<KeyboardContent> found;   // where it is neither old nor new
    std::optional<Long> bytes;              // sent; none where the transfer failed
    std::string afterSha256;                // of all areas as read back; empty where they were not
    std::string result = "nothing changed"; // for people: "verified", "partly written", ...

    void Fail(Error error) {
        error.holds = holds;
        failure = std::move(error);
    }
};

// Proves that the opened keyboard is still the one of the plan, and holds what it held then: the
// driver looks again, and all areas are read anew. Throws Error(KeyboardChanged) where it is not.
void RequireStillAs(Session& session, const KeyboardContent& planned);

class Sending {
public:
    // `scratch` is a configuration for this keyboard whose settings are not needed otherwise.
    Sending(Session& session, Configuration& scratch, const OnStep& onStep)
        : m_session(session), m_scratch(scratch), m_onStep(onStep) {}

    // Sends the ranges and proves, unless that is not wanted, that the keyboard then holds all that
    // the plan says. The failure shows what the keyboard holds; nothing is thrown.
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
