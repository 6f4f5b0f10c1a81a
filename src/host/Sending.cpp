#include "host/Sending.h"

#include "qxcontrols/common/Text.h"

namespace qx::host {

namespace {

constexpr const char* kUnchanged = "; nothing changed: the keyboard holds what it held before";

// The end of the message, and the word of a receipt, for a transfer that failed.
std::string AfterFailedTransfer(Sent& sent) {
    switch (sent.holds) {
    case Sent::Holds::Before:
        sent.result = "nothing changed";
        return kUnchanged;
    case Sent::Holds::After:
        sent.result = "written";
        return "; read back, the keyboard holds all that was to be written";
    case Sent::Holds::Neither:
        sent.result = "partly written";
        return "; the keyboard is partly written";
    case Sent::Holds::Unknown:
        break;
    }
    sent.result = "unknown";
    return "; the keyboard may be partly written and could not be read";
}

// The same for one that succeeded and led to something else than it should.
std::string AfterWrongReading(Sent& sent) {
    sent.result = "differs";
    switch (sent.holds) {
    case Sent::Holds::Before:
        return kUnchanged;
    case Sent::Holds::After:
        sent.result = "written";
        return "; read once more, it holds all that was to be written: one of its readings went "
               "wrong without a word";
    case Sent::Holds::Neither:
    case Sent::Holds::Unknown:
        break;
    }
    return "";
}

} // namespace

Sent Sending::Run(const WritePlan& plan, const std::vector<ByteRange>& ranges, bool verify) {
    Sent sent;
    try {
        m_session.PrepareSending(ranges);
    } catch (const Error& error) {
        sent.failure = error.With("; nothing was written");
        return sent;
    }
    Transfer(plan, ranges, sent);
    if (!sent.failure && verify)
        Prove(plan, sent);
    return sent;
}

void Sending::Transfer(const WritePlan& plan, const std::vector<ByteRange>& ranges, Sent& sent) {
    m_onStep(Step::Writing);
    sent.isBegun = true;
    sent.holds = Sent::Holds::Unknown;
    try {
        m_session.Send();
        sent.bytes = SizeOf(ranges);
        sent.result = "not verified";
    } catch (const Error& error) {
        m_onStep(Step::ReadingBack);
        Look(plan, sent);
        sent.failure = error.With(AfterFailedTransfer(sent));
    }
}

void Sending::Prove(const WritePlan& plan, Sent& sent) {
    m_onStep(Step::ReadingBack);
    try {
        const KeyboardContent now = m_session.ReadAgain(plan.after);
        sent.afterSha256 = now.Hash();
        if (now.HoldsSame(plan.after)) {
            sent.holds = Sent::Holds::After;
            sent.result = "verified";
            return;
        }
        Look(plan, sent);
        const Error differing = Differing(plan.after, now);
        sent.failure = differing.With(AfterWrongReading(sent));
    } catch (const Error& error) {
        sent.result = "unknown";
        sent.failure = error.With("; the keyboard was written, and could not be read back");
    }
}

// Each is read on its own: what was not read then differs from just that one for sure.
void Sending::Look(const WritePlan& plan, Sent& sent) {
    try {
        sent.holds = Sent::Holds::After;
        if (m_session.ReadAgain(plan.after).HoldsSame(plan.after))
            return;
        sent.found = m_session.ReadAgain(plan.before);
        sent.holds =
            sent.found->HoldsSame(plan.before) ? Sent::Holds::Before : Sent::Holds::Neither;
    } catch (const Error&) {
        sent.holds = Sent::Holds::Unknown;
    }
}

Error Sending::Differing(const KeyboardContent& expected, const KeyboardContent& found) {
    const auto ranges = Differences(expected, found, 1);
    const ByteRange& first = ranges.front();
    std::string setting; // none: no setting uses these bytes
    std::string place;
    try {
        KeyboardContent partly = expected;
        partly.Overwrite(first.address, first.to);
        const auto settings = Planner(expected, m_scratch).Compare(expected, partly, first.section);
        if (!settings.empty()) {
            setting = settings.front().name;
            place = settings.front().place;
        }
    } catch (const std::exception&) {
        setting = first.section; // what was found cannot be read as settings
        place = "/" + first.section;
    }
    const Long bytes = SizeOf(ranges);
    const std::string address = Hex(first.address);
    const std::string held = Hex(static_cast<Byte>(first.to[0]));
    const std::string written = Hex(static_cast<Byte>(first.from[0]));
    const Fault fault =
        setting.empty()
            ? Fault(place, FaultKind::HoldsOtherUnusedBytes, address, held, written, bytes)
            : Fault(place, FaultKind::HoldsOtherBytes, setting, address, held, written, bytes);
    return {ErrorKind::ReadBackDiffers,
            "the keyboard does not hold what was written: " + WordsOf(fault),
            {fault}};
}

} // namespace qx::host
