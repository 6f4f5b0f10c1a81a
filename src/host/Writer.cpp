#include "host/Writer.h"

#include "host/ErrorText.h"
#include "host/Traces.h"

#include <algorithm>

namespace qx::host {

namespace {

// Runs the step before anything is sent.
template <typename Step>
auto BeforeWriting(const Step& step) {
    try {
        return step();
    } catch (Error& error) {
        error.holds = Holds::NotTouched;
        throw;
    }
}

// An error of the time before anything is sent.
Error Refusal(Cause cause, ErrorFacts facts = {}) {
    Error refusal(cause, std::move(facts));
    refusal.holds = Holds::NotTouched;
    return refusal;
}

// Runs a step of the records, and adds its failure to the others.
template <typename Step>
void Attempt(Cause cause, std::vector<Error>& failures, const Step& step) {
    try {
        step();
    } catch (const Error& error) {
        failures.push_back(Error(cause, {.related = {error}}));
    }
}

KeyboardContent Ended(const JournalEntry& entry, Writer::Way way, const KeyboardContent& now) {
    return way == Writer::Way::Finish ? entry.Finished(now) : entry.RolledBack(now);
}

void FillIn(Receipt& receipt, const Sent& sent) {
    receipt.bytesSent = sent.bytes;
    receipt.afterSha256 = sent.afterSha256;
    receipt.result = sent.result;
}

} // namespace

Writer::Writer(Session& session, Options options)
    : m_session(session), m_options(std::move(options)), m_records(m_options.folder),
      m_scratch(m_options.newConfiguration()) {}

KeyboardContent Writer::Read() {
    return m_session.ReadContent(*m_scratch);
}

WritePlan Writer::Plan(const std::vector<Section*>& sections, const PlanOptions& options) {
    WritePlan plan = Planner(Read(), *m_scratch).ForSettings(sections, options);
    ProveNothingToDo(plan);
    return plan;
}

// The first reading has nothing to be compared with: a transfer that stopped half-way and reported
// success may just look like what is wanted.
void Writer::ProveNothingToDo(const WritePlan& plan) {
    if (plan.IsEmpty())
        RequireStillAs(plan.before);
}

void Writer::RequireStillAs(const KeyboardContent& planned) {
    const KeyboardContent now = BeforeWriting([&] {
        m_session.LookAgain();
        return m_session.ReadAgain(planned);
    });
    if (now.identity != planned.identity)
        throw Refusal(Cause::OtherKeyboard);
    if (!now.HoldsSame(planned))
        throw Refusal(Cause::ContentsChanged);
}

void Writer::CheckBeforeWriting(const KeyboardContent& planned) {
    m_options.onStep(Step::Checking);
    RequireStillAs(planned);
    if (m_options.isStopped())
        throw Refusal(Cause::Stopped);
}

Writer::Claimed Writer::Claim(const std::string& keyboard) const {
    if (Claimed claimed = BeforeWriting([&] { return m_records.journal.Claim(keyboard); }))
        return claimed;
    throw Refusal(Cause::KeyboardBusy);
}

KeyboardContent Writer::AsReadFor(const JournalEntry& entry, const KeyboardContent& now) {
    return entry.HasAreasOf(now) ? now : m_session.ReadPlaces(entry.Areas());
}

std::vector<TracedWrite> Writer::Traced(const KeyboardContent& now, const Claims& own) {
    std::vector<DamagedRecord> damaged;
    std::vector<TracedWrite> traced;
    BeforeWriting([&] {
        for (JournalEntry& entry : m_records.journal.Entries(&damaged)) {
            if (!entry.keyboard.IsLike(now.identity) ||
                (!own.contains(Journal::ClaimOf(entry.keyboard, entry.origin)) &&
                 m_records.journal.IsInProgress(entry)))
                continue;
            const Trace trace = entry.TraceIn(AsReadFor(entry, now));
            traced.push_back({std::move(entry), trace});
        }
    });
    for (const DamagedRecord& record : damaged)
        if (Journal::MayBeOf(record, now.identity))
            throw Refusal(Cause::EntryDamaged,
                          {.place = record.error.place, .related = {record.error}});
    return traced;
}

std::vector<JournalEntry> Writer::PartlyIn(const KeyboardContent& now, const Claims& own) {
    std::vector<JournalEntry> entries;
    for (TracedWrite& write : Traced(now, own))
        if (write.trace == Trace::Partial)
            entries.push_back(std::move(write));
    return entries;
}

void Writer::RefuseInterrupted(const std::vector<JournalEntry>& entries) const {
    if (!entries.empty())
        throw Refusal(Cause::WriteInterrupted, {.writes = NamesOf(entries)});
}

std::string Writer::SaveBackup(const KeyboardContent& now, const std::string& document,
                               const Till& till) {
    m_options.onStep(Step::SavingBackup);
    return BeforeWriting([&] {
        return m_records.backups.Save({now, document, m_options.origin, till},
                                      Planner(now, *m_scratch).Document(now), m_options.now(),
                                      [this] { return NamedBackups(); });
    });
}

std::optional<BackupStore::Named> Writer::NamedBackups() const {
    std::vector<DamagedRecord> damaged;
    BackupStore::Named named;
    for (const Receipt& receipt : m_records.receipts.List(&damaged)) {
        std::string& newest = named[receipt.backup];
        newest = std::max(newest, receipt.time);
    }
    for (const JournalEntry& entry : m_records.journal.Entries(&damaged))
        named[entry.backup].clear();
    if (!damaged.empty()) // any may be named there
        return std::nullopt;
    return named;
}

JournalEntry Writer::Begin(const WritePlan& plan, const std::vector<ByteRange>& ranges,
                           const Request& request, const std::vector<JournalEntry>& replaced) {
    JournalEntry entry;
    entry.backup = SaveBackup(plan.before, request.document, m_options.till);
    entry.action = request.action;
    entry.document = request.document;
    entry.origin = m_options.origin;
    entry.till = m_options.till;
    entry.ranges = ranges;
    if (replaced.size() == 1) { // and what that one replaced
        entry.replaced = replaced.front().replaced;
        entry.replaced.push_back(replaced.front().Id());
    }
    BeforeWriting([&] { m_records.journal.Begin(entry, plan.before, m_options.now()); });
    return entry;
}

Receipt Writer::NewReceipt(const Request& request, const KeyboardContent& before) const {
    Receipt receipt;
    receipt.action = request.action;
    receipt.document = request.document;
    receipt.documentSha256 = request.documentSha256;
    receipt.till = m_options.till;
    receipt.full = request.full;
    receipt.keyboard = before.identity;
    receipt.beforeSha256 = before.Hash();
    return receipt;
}

Writer::Outcome Writer::Write(const WritePlan& plan, const Request& request) {
    const std::vector<ByteRange> ranges = plan.ToSend(request.full);
    const bool settles = request.action == Request::kRestore;
    if (ranges.empty() && !settles)
        return {false, true, 0, ""}; // as the plan has proved
    const std::string claim = Journal::ClaimOf(plan.before.identity, m_options.origin);
    const Claimed claimed = Claim(claim);
    const auto interrupted = Candidates(PartlyIn(plan.before, {claim}), m_options.origin);
    if (!settles)
        RefuseInterrupted(interrupted);
    if (ranges.empty()) {
        if (interrupted.size() == 1) { // the user wants it to stay so
            RequireStillAs(plan.before);
            m_records.journal.End(interrupted.front());
        }
        return {false, true, 0, ""};
    }
    const JournalEntry entry = Begin(plan, ranges, request, interrupted);
    Receipt receipt = NewReceipt(request, plan.before);
    receipt.backup = entry.backup;
    Sent sent;
    try {
        CheckBeforeWriting(plan.before);
        sent = Sending(m_session, *m_scratch, m_options.onStep).Run(plan, ranges, request.verify);
    } catch (const Error& error) {
        sent.failure = error;
    }
    if (sent.failure)
        throw Failed(sent, entry, receipt);
    FillIn(receipt, sent);
    Close(&entry, request.verify, receipt);
    return {true, request.verify, SizeOf(ranges), entry.backup};
}

// What has not begun has ended. Whatever was begun stays on record, also where a reading then found
// the keyboard whole: that may have been another one already.
Error Writer::Failed(const Sent& sent, const JournalEntry& entry, Receipt receipt) {
    Error failure = *sent.failure;
    if (sent.holds == Holds::Unknown ||
        (sent.holds == Holds::PartlyWritten && entry.TraceIn(*sent.found) == Trace::Partial)) {
        failure.suggestion = Suggestion::Recover;
    } else if (sent.holds == Holds::PartlyWritten) {
        failure.suggestion = Suggestion::RestoreBackup;
        failure.backup = receipt.backup;
    }
    FillIn(receipt, sent);
    receipt.message = TextOf(failure);
    if (!sent.isBegun)
        Attempt(Cause::EntryNotEnded, failure.related, [&] { m_records.journal.End(entry); });
    else
        Attempt(Cause::NoReceipt, failure.related,
                [&] { m_records.receipts.Add(receipt, m_options.now()); });
    return failure;
}

void Writer::Close(const JournalEntry* entry, bool isProved, const Receipt& receipt) {
    std::vector<Error> left;
    if (entry != nullptr)
        Attempt(Cause::EntryNotEnded, left, [&] { m_records.journal.End(*entry); });
    if (entry != nullptr && isProved && !entry->replaced.empty())
        Attempt(Cause::EntryNotEnded, left, [&] {
            for (const JournalEntry& other : m_records.journal.Entries())
                if (std::count(entry->replaced.begin(), entry->replaced.end(), other.Id()) != 0)
                    m_records.journal.End(other);
        });
    Attempt(Cause::NoReceipt, left, [&] { m_records.receipts.Add(receipt, m_options.now()); });
    if (!left.empty())
        throw Error(isProved ? Cause::NotRecorded : Cause::UnprovedNotRecorded,
                    {.holds = isProved ? Holds::New : Holds::Unknown, .related = left});
}

std::vector<TracedWrite> Writer::OnRecord() {
    return Traced(Read());
}

std::vector<JournalEntry> Writer::Interrupted() {
    std::vector<DamagedRecord> damaged;
    const auto entries = m_records.journal.Entries(&damaged);
    if (damaged.empty() && PartlyHeld(m_session, entries).empty())
        return {};
    return Candidates(PartlyIn(Read()), m_options.origin);
}

void Writer::RequireOneEnd(const std::vector<JournalEntry>& candidates, Way way,
                           const KeyboardContent& now) const {
    bool isSame = true;
    for (const JournalEntry& entry : candidates)
        isSame = isSame && entry.HasAreasOf(now) &&
                 Ended(entry, way, now).HoldsSame(Ended(candidates.front(), way, now));
    if (candidates.size() > 1 && !isSame)
        throw Refusal(Cause::WritesInterrupted, {.writes = NamesOf(candidates)});
}

Writer::Outcome Writer::Recover(const JournalEntry& entry, Way way, bool isNamed) {
    const std::string claim = Journal::ClaimOf(entry.keyboard, entry.origin);
    const Claimed claimed = Claim(claim);
    std::error_code ignored;
    if (!std::filesystem::exists(entry.file, ignored)) // before it was claimed
        throw Refusal(Cause::WriteSettled);
    const KeyboardContent now = Read();
    const std::string claimNow = Journal::ClaimOf(now.identity, m_options.origin);
    const Claimed claimedNow = claimNow == claim ? nullptr : Claim(claimNow);
    WritePlan plan;
    plan.before = AsReadFor(entry, now);
    const Trace trace = entry.TraceIn(plan.before);
    if (trace != Trace::Partial)
        throw NotPartlyHeld({entry, trace});
    const auto candidates = Candidates(PartlyIn(now, {claim, claimNow}), m_options.origin);
    if (!isNamed)
        RequireOneEnd(candidates, way, plan.before);
    const bool isRecordKept = !isNamed && candidates.size() > 1;
    const bool finishes = way == Way::Finish;
    plan.after = Ended(entry, way, plan.before);
    const auto ranges = Differences(plan.before, plan.after, kRequestCost);
    JournalEntry ended = entry;
    if (!finishes) // what it was to replace is then as open as it was before
        ended.replaced.clear();
    Request request;
    request.action = finishes ? "finish" : "roll back";
    request.document = entry.document;
    // The keyboard shows a part of that unit's write, and perhaps of another's.
    const Till till = m_options.till.unit.empty() && !isRecordKept ? entry.till : m_options.till;
    Receipt receipt = NewReceipt(request, now);
    receipt.till = till;
    receipt.backup = SaveBackup(now, request.document, till);
    CheckBeforeWriting(plan.before);
    const Sent sent = Sending(m_session, *m_scratch, m_options.onStep).Run(plan, ranges, true);
    if (sent.failure) {
        Sent begun = sent; // the entry stays in any case
        begun.isBegun = true;
        throw Failed(begun, entry, receipt);
    }
    FillIn(receipt, sent);
    Close(isRecordKept ? nullptr : &ended, true, receipt);
    return {true, true, SizeOf(ranges), receipt.backup, isRecordKept};
}

Writer::Outcome Writer::RunUnproved(const Request& request,
                                    const std::function<void()>& operation) {
    const KeyboardContent before = Read();
    const std::string claim = Journal::ClaimOf(before.identity, m_options.origin);
    const Claimed claimed = Claim(claim);
    Receipt receipt = NewReceipt(request, before);
    receipt.full = true;
    if (request.isOfKeyboard) {
        RefuseInterrupted(Candidates(PartlyIn(before, {claim}), m_options.origin));
        receipt.backup = SaveBackup(before, request.document, m_options.till);
    }
    CheckBeforeWriting(before);
    m_options.onStep(Step::Writing);
    std::optional<Error> failure;
    try {
        operation();
        receipt.result = "not verified";
    } catch (const Error& error) {
        failure = error;
        if (request.isOfKeyboard) {
            failure->holds = Holds::Unknown;
            failure->backup = receipt.backup;
            failure->suggestion = Suggestion::RestoreBackup;
        }
        receipt.result = "unknown";
        receipt.message = TextOf(*failure);
    }
    std::vector<Error> left;
    Attempt(Cause::NoReceipt, left, [&] { m_records.receipts.Add(receipt, m_options.now()); });
    if (!left.empty() && !failure)
        failure = Error(Cause::LoadNotRecorded, {.holds = Holds::Unknown});
    if (failure) {
        failure->related.insert(failure->related.end(), left.begin(), left.end());
        throw Error(*failure);
    }
    return {true, false, 0, receipt.backup};
}

} // namespace qx::host
