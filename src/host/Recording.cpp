#include "host/Recording.h"

#include "host/ErrorText.h"
#include "host/Refusal.h"
#include "host/WritePlan.h"

#include <algorithm>

namespace qx::host {

namespace {

// Runs a step of the records, and adds its failure to the others.
template <typename Step>
void Attempt(Cause cause, std::vector<Error>& failures, const Step& step) {
    try {
        step();
    } catch (const Error& error) {
        failures.push_back(Error(cause, {}, {error}));
    }
}

void FillIn(Receipt& receipt, const Sent& sent) {
    receipt.bytesSent = sent.bytes;
    receipt.afterSha256 = sent.afterSha256;
    receipt.result = sent.result;
}

} // namespace

Recording::Recording(Recorder recorder, const WriteRequest& request, const KeyboardContent& before)
    : m_recorder(std::move(recorder)), m_before(before), m_isProved(request.verify) {
    m_receipt.action = request.action;
    m_receipt.document = request.document;
    m_receipt.documentSha256 = request.documentSha256;
    m_receipt.till = m_recorder.till;
    m_receipt.full = request.full;
    m_receipt.keyboard = before.identity;
    m_receipt.beforeSha256 = before.Hash();
}

void Recording::SaveBackup(Configuration& scratch) {
    const WriteRecords& records = m_recorder.records;
    m_receipt.backup = BeforeWriting([&] {
        return records.backups.Save(
            {m_before, m_receipt.document, m_recorder.origin, m_recorder.till},
            Planner(m_before, scratch).Document(m_before), m_recorder.now(),
            [&] { return records.NamedBackups(); });
    });
}

void Recording::Begin(const std::vector<ByteRange>& ranges,
                      const std::vector<JournalEntry>& replaced) {
    JournalEntry entry;
    entry.backup = m_receipt.backup;
    entry.action = m_receipt.action;
    entry.document = m_receipt.document;
    entry.origin = m_recorder.origin;
    entry.till = m_recorder.till;
    entry.ranges = ranges;
    if (replaced.size() == 1) { // and the ones that it replaced
        entry.replaced = replaced.front().replaced;
        entry.replaced.push_back(replaced.front().Id());
    }
    BeforeWriting([&] { m_recorder.records.journal.Begin(entry, m_before, m_recorder.now()); });
    m_entry = std::move(entry);
    m_ends = true;
}

void Recording::Continue(const JournalEntry& entry, bool ends) {
    m_entry = entry;
    m_ends = ends;
}

void Recording::LeaveReceipt(std::vector<Error>& failures) {
    Attempt(Cause::NoReceipt, failures,
            [&] { m_recorder.records.receipts.Add(m_receipt, m_recorder.now()); });
}

void Recording::EndEntry(std::vector<Error>& failures) {
    Attempt(Cause::EntryNotEnded, failures, [&] { m_recorder.records.journal.End(*m_entry); });
}

// The write stays on record, even if a read then found the keyboard intact: that may have been
// another keyboard.
Error Recording::Failed(const Sent& sent) {
    Error failure = *sent.failure;
    if (sent.holds == Holds::Unknown ||
        (sent.holds == Holds::PartlyWritten && m_entry->TraceIn(*sent.found) == Trace::Partial)) {
        failure.suggestion = Suggestion::Recover;
    } else if (sent.holds == Holds::PartlyWritten) {
        failure.suggestion = Suggestion::RestoreBackup;
        failure.backup = m_receipt.backup;
    }
    FillIn(m_receipt, sent);
    m_receipt.message = TextOf(failure);
    LeaveReceipt(failure.related);
    return failure;
}

void Recording::Close(const Sent& sent) {
    FillIn(m_receipt, sent);
    std::vector<Error> left;
    if (m_ends)
        EndEntry(left);
    if (m_ends && m_isProved && !m_entry->replaced.empty())
        Attempt(Cause::EntryNotEnded, left, [&] { EndReplaced(); });
    LeaveReceipt(left);
    if (!left.empty())
        throw Error(m_isProved ? Cause::NotRecorded : Cause::UnprovedNotRecorded,
                    {.holds = m_isProved ? Holds::New : Holds::Unknown}, left);
}

void Recording::EndReplaced() const {
    const auto& replaced = m_entry->replaced;
    const Journal& journal = m_recorder.records.journal;
    for (const JournalEntry& other : journal.Entries())
        if (std::count(replaced.begin(), replaced.end(), other.Id()) != 0)
            journal.End(other);
}

void Recording::CloseUnproved(std::optional<Error> failure) {
    if (failure)
        failure->holds = Holds::Unknown;
    if (failure && !m_receipt.backup.empty()) {
        failure->backup = m_receipt.backup;
        failure->suggestion = Suggestion::RestoreBackup;
    }
    m_receipt.result = failure ? WriteResult::Unknown : WriteResult::NotVerified;
    m_receipt.message = failure ? TextOf(*failure) : "";
    std::vector<Error> left;
    LeaveReceipt(left);
    if (!failure && left.empty())
        return;
    Error error = failure ? *failure : Error(Cause::LoadNotRecorded, {.holds = Holds::Unknown});
    error.related.insert(error.related.end(), left.begin(), left.end());
    throw Error(error);
}

} // namespace qx::host
