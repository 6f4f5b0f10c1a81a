#include "host/Writer.h"

#include "host/BackupMatch.h"
#include "host/Refusal.h"

namespace qx::host {

Writer::Writer(Session& session, Options options)
    : m_session(session), m_options(std::move(options)), m_records(m_options.folder),
      m_interrupted(m_session, m_records, m_options.origin),
      m_scratch(m_options.newConfiguration()) {}

WritePlan Writer::Plan(const std::vector<Section*>& sections, const PlanOptions& options) {
    WritePlan plan = PlannerFor(Read()).ForSettings(sections, options);
    ProveNothingToDo(plan);
    return plan;
}

WritePlan Writer::PlanRestore(const Backup& backup, bool otherKeyboard) {
    const KeyboardContent now = Read();
    RequireSameKind(backup, now);
    const auto other =
        WhyOfOtherKeyboard(backup, now, m_options.origin, m_records.receipts, m_interrupted);
    if (other && !otherKeyboard)
        throw Error(*other);
    WritePlan plan = PlannerFor(now).ForBackup(backup.content, !other);
    plan.otherKeyboard = other;
    ProveNothingToDo(plan);
    return plan;
}

// The first read cannot be checked: a transfer that stopped half-way but reported success may look
// exactly like the wanted contents.
void Writer::ProveNothingToDo(const WritePlan& plan) {
    if (plan.IsEmpty())
        RequireStillAs(m_session, plan.before);
}

void Writer::CheckBeforeWriting(const KeyboardContent& planned) {
    m_options.onStep(Step::Checking);
    RequireStillAs(m_session, planned);
    if (m_options.isStopped())
        throw Refusal(Cause::Stopped);
}

void Writer::Prepare(const WritePlan& plan, const std::vector<ByteRange>& ranges) {
    CheckBeforeWriting(plan.before);
    BeforeWriting([&] { m_session.PrepareSending(ranges); });
}

void Writer::SaveBackup(Recording& recording) {
    m_options.onStep(Step::SavingBackup);
    recording.SaveBackup(*m_scratch);
}

Recording Writer::NewRecording(const Request& request, const KeyboardContent& before,
                               const Till& till) const {
    return {{m_records, m_options.now, m_options.origin, till}, request, before};
}

std::vector<JournalEntry> Writer::CutIn(const KeyboardContent& now,
                                        const InterruptedWrites::ClaimNames& own) const {
    return BeforeWriting([&] { return m_interrupted.CutIn(now, own); });
}

Sent Writer::Send(const WritePlan& plan, const std::vector<ByteRange>& ranges, bool verify) {
    return Sending(m_session, *m_scratch, m_options.onStep).Run(plan, ranges, verify);
}

Writer::Outcome Writer::Write(const WritePlan& plan, const Request& request) {
    const std::vector<ByteRange> ranges = plan.ToSend(request.full);
    const bool settles = request.action == WriteAction::Restore;
    if (ranges.empty() && !settles)
        return {false, true, 0, ""}; // verified by the plan
    const std::string claimName = Claims::NameOf(plan.before.identity, m_options.origin);
    const Claim claim = m_records.claims.Require(claimName);
    const auto interrupted = CutIn(plan.before, {claimName});
    if (!settles)
        RefuseInterrupted(interrupted);
    if (ranges.empty()) {
        if (interrupted.size() == 1) { // the user confirms this content
            RequireStillAs(m_session, plan.before);
            m_records.journal.End(interrupted.front());
        }
        return {false, true, 0, ""};
    }
    Recording recording = NewRecording(request, plan.before, m_options.till);
    SaveBackup(recording);
    recording.Begin(ranges, interrupted);
    try {
        Prepare(plan, ranges);
    } catch (Error& error) {
        recording.Withdraw(error.related);
        throw;
    } catch (...) {
        std::vector<Error> unreported;
        recording.Withdraw(unreported);
        throw;
    }
    const Sent sent = Send(plan, ranges, request.verify);
    if (sent.failure)
        throw recording.Failed(sent);
    recording.Close(sent);
    return {true, request.verify, SizeOf(ranges), recording.Backup()};
}

std::vector<TracedWrite> Writer::OnRecord() {
    return m_interrupted.OnRecord(Read());
}

std::vector<JournalEntry> Writer::Interrupted() {
    return m_interrupted.MayHaveAny() ? Interrupted(OnRecord()) : std::vector<JournalEntry>();
}

Writer::Outcome Writer::Recover(const JournalEntry& entry, Way way, bool isNamed) {
    const std::string claimName = Claims::NameOf(entry.keyboard, entry.origin);
    const Claim claim = m_records.claims.Require(claimName);
    std::error_code ignored;
    if (!std::filesystem::exists(entry.file, ignored)) // before it was claimed
        throw Refusal(Cause::WriteResolved);
    const KeyboardContent now = BeforeWriting([this] { return Read(); });
    const std::string nameNow = Claims::NameOf(now.identity, m_options.origin);
    const Claim claimNow = nameNow == claimName ? nullptr : m_records.claims.Require(nameNow);
    WritePlan plan;
    plan.before = BeforeWriting([&] { return m_interrupted.AsReadFor(entry, now); });
    const Trace trace = entry.TraceIn(plan.before);
    if (trace != Trace::Partial)
        throw NotPartlyHeld({entry, trace});
    const auto candidates = CutIn(now, {claimName, nameNow});
    if (!isNamed)
        RequireOneEnd(candidates, way, plan.before);
    plan.after = entry.Ended(way, plan.before);
    return End(entry, way, plan, now, !isNamed && candidates.size() > 1);
}

Writer::Outcome Writer::End(const JournalEntry& entry, Way way, const WritePlan& plan,
                            const KeyboardContent& now, bool isRecordKept) {
    const auto ranges = Differences(plan.before, plan.after, kRequestCost);
    JournalEntry ended = entry;
    if (way == Way::RollBack) // the writes it would have replaced are open again
        ended.replaced.clear();
    Request request;
    request.action = way == Way::Finish ? WriteAction::Finish : WriteAction::RollBack;
    request.document = entry.document;
    // The keyboard contains a part of that unit's write, and perhaps of another's.
    const Till till = m_options.till.unit.empty() && !isRecordKept ? entry.till : m_options.till;
    Recording recording = NewRecording(request, now, till);
    SaveBackup(recording);
    recording.Continue(ended, !isRecordKept);
    Prepare(plan, ranges);
    const Sent sent = Send(plan, ranges, true);
    if (sent.failure)
        throw recording.Failed(sent);
    recording.Close(sent);
    return {true, true, SizeOf(ranges), recording.Backup(), isRecordKept};
}

Writer::Outcome Writer::RunUnproved(const Request& request,
                                    const std::function<void()>& operation) {
    const KeyboardContent before = Read();
    const std::string claimName = Claims::NameOf(before.identity, m_options.origin);
    const Claim claim = m_records.claims.Require(claimName);
    Request whole = request;
    whole.full = true;
    Recording recording = NewRecording(whole, before, m_options.till);
    if (request.isOfKeyboard) {
        RefuseInterrupted(CutIn(before, {claimName}));
        SaveBackup(recording);
    }
    CheckBeforeWriting(before);
    m_options.onStep(Step::Writing);
    std::optional<Error> failure;
    try {
        operation();
    } catch (const Error& error) {
        failure = error;
    }
    recording.CloseUnproved(failure);
    return {true, false, 0, recording.Backup()};
}

} // namespace qx::host
