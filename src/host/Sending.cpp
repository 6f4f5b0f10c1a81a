#include "host/Sending.h"

#include "host/Refusal.h"

namespace qx::host {

namespace {

WriteResult AfterFailedTransfer(Holds holds) {
    switch (holds) {
    case Holds::NotTouched:
    case Holds::Old:
        return WriteResult::NothingChanged;
    case Holds::New:
        return WriteResult::Written;
    case Holds::PartlyWritten:
        return WriteResult::PartlyWritten;
    case Holds::Unknown:
        break;
    }
    return WriteResult::Unknown;
}

} // namespace

std::string_view TextOf(Step step) {
    switch (step) {
    case Step::SavingBackup:
        return "saving a backup";
    case Step::Checking:
        return "checking";
    case Step::Writing:
        return "writing";
    case Step::ReadingBack:
        return "reading back";
    }
    return "";
}

void RequireStillAs(Session& session, const KeyboardContent& planned) {
    const KeyboardContent now = BeforeWriting([&] {
        session.LookAgain();
        return session.ReadAgain(planned);
    });
    if (now.identity != planned.identity)
        throw Refusal(Cause::OtherKeyboard);
    if (!now.HoldsSame(planned))
        throw Refusal(Cause::ContentsChanged);
}

Sent Sending::Run(const WritePlan& plan, const std::vector<ByteRange>& ranges, bool verify) {
    Sent sent;
    Transfer(plan, ranges, sent);
    if (!sent.failure && verify)
        Prove(plan, sent);
    return sent;
}

void Sending::Transfer(const WritePlan& plan, const std::vector<ByteRange>& ranges, Sent& sent) {
    m_onStep(Step::Writing);
    try {
        m_session.Send();
        sent.bytes = SizeOf(ranges);
        sent.result = WriteResult::NotVerified;
    } catch (const Error& error) {
        m_onStep(Step::ReadingBack);
        Look(plan, sent);
        sent.result = AfterFailedTransfer(sent.holds);
        sent.Fail(error);
    }
}

void Sending::Prove(const WritePlan& plan, Sent& sent) {
    m_onStep(Step::ReadingBack);
    try {
        const KeyboardContent now = m_session.ReadAgain(plan.after);
        sent.afterSha256 = now.Hash();
        if (now.HoldsSame(plan.after)) {
            sent.holds = Holds::New;
            sent.result = WriteResult::Verified;
            return;
        }
        Look(plan, sent);
        sent.result = sent.holds == Holds::New ? WriteResult::Written : WriteResult::Differs;
        sent.Fail(Differing(plan.after, now));
    } catch (const Error& error) {
        sent.result = WriteResult::Unknown;
        sent.Fail(
            Error(Cause::ReadBackFailed, {.call = error.call, .place = error.place}, {error}));
    }
}

// Each range is read separately: a range that was not read then differs for sure.
void Sending::Look(const WritePlan& plan, Sent& sent) {
    try {
        sent.holds = Holds::New;
        if (m_session.ReadAgain(plan.after).HoldsSame(plan.after))
            return;
        sent.found = m_session.ReadAgain(plan.before);
        sent.holds = sent.found->HoldsSame(plan.before) ? Holds::Old : Holds::PartlyWritten;
    } catch (const Error&) {
        sent.holds = Holds::Unknown;
    }
}

Error Sending::Differing(const KeyboardContent& expected, const KeyboardContent& found) {
    const auto ranges = Differences(expected, found, 1);
    const ByteRange& first = ranges.front();
    Error differing(Cause::ReadBackDiffers,
                    {.count = SizeOf(ranges),
                     .found = static_cast<Byte>(first.to[0]),
                     .expected = static_cast<Byte>(first.from[0]),
                     .place = {.section = first.section, .address = first.address}});
    try {
        KeyboardContent partly = expected;
        partly.Overwrite(first.address, first.to);
        const auto settings = Planner(expected, m_scratch).Compare(expected, partly, first.section);
        if (!settings.empty()) {
            differing.setting = settings.front().name;
            differing.place.pointer = settings.front().place;
        }
    } catch (const std::exception&) {
        differing.place.pointer = "/" + first.section; // what was found cannot be read as settings
    }
    return differing;
}

} // namespace qx::host
