#include "host/Writer.h"

#include "qxcontrols/common/Text.h"

#include <algorithm>

namespace qx::host {

namespace {

constexpr const char* kNothingWritten = "; nothing was written";

Error WithAddition(const Error& error, const std::string& addition) {
    const std::string message = error.what() + addition;
    return error.Status() ? Error(error.Kind(), message, *error.Status())
                          : Error(error.Kind(), message, error.Faults());
}

std::string InWords(const JournalEntry& entry) {
    return "a " + entry.action + " of " + entry.document + " to this keyboard of " + entry.time;
}

std::string HowToSettle(const JournalEntry& entry) {
    return "the keyboard holds other bytes than the interrupted write can have left; `qxconf "
           "backup "
           "restore " +
           entry.backup +
           "` brings back what it held before, `qxconf recover --forget` keeps what it holds now";
}

Long Size(const std::vector<ByteRange>& ranges) {
    Long size = 0;
    for (const ByteRange& range : ranges)
        size += range.Size();
    return size;
}

} // namespace

// What went wrong, with what the keyboard holds then.
class Writer::Failure : public Error {
public:
    Failure(const Error& error, Holds holds, const std::string& addition)
        : Error(WithAddition(error, addition)), m_holds(holds) {}
    [[nodiscard]] Holds State() const { return m_holds; }

private:
    Holds m_holds;
};

Writer::Writer(Session& session, Options options)
    : m_session(session), m_options(std::move(options)), m_records(m_options.folder),
      m_scratch(m_options.newConfiguration()) {}

KeyboardContent Writer::Read() {
    return m_session.ReadContent(*m_scratch);
}

WritePlan Writer::Plan(const std::vector<Section*>& sections) {
    WritePlan plan = Planner(Read(), *m_scratch).ForSettings(sections);
    ProveNothingToDo(plan);
    return plan;
}

// The first reading has nothing to be compared with: a transfer that stopped half-way and reported
// success may just look like what is wanted.
void Writer::ProveNothingToDo(const WritePlan& plan) {
    if (plan.IsEmpty())
        RequireStillAs(plan.before);
}

WritePlan Writer::PlanRestore(const KeyboardContent& backup, bool otherKeyboard) {
    const KeyboardContent now = Read();
    if (!backup.identity.IsLike(now.identity))
        throw Error(ErrorKind::KeyboardChanged, "the backup is of a " + backup.identity.Name() +
                                                    " with other modules than this " +
                                                    now.identity.Name() + kNothingWritten);
    const auto own = Own(now); // one that gives it another GUID may have left a part of it
    const bool isSame = backup.identity.guid == now.identity.guid ||
                        std::any_of(own.begin(), own.end(), [&](const PendingWrite& entry) {
                            return entry.keyboard.guid == backup.identity.guid;
                        });
    if (!isSame && !otherKeyboard)
        throw Error(ErrorKind::KeyboardChanged,
                    std::string("the backup is of another keyboard of this kind") +
                        kNothingWritten);
    WritePlan plan = Planner(now, *m_scratch).ForBackup(backup, isSame);
    ProveNothingToDo(plan);
    return plan;
}

void Writer::RequireStillAs(const KeyboardContent& planned) {
    KeyboardContent now;
    try {
        m_session.LookAgain();
        now = m_session.ReadAgain(planned);
    } catch (const Error& error) {
        throw WithAddition(error, kNothingWritten);
    }
    if (now.identity != planned.identity)
        throw Error(ErrorKind::KeyboardChanged,
                    std::string("this is not the keyboard that the write was planned for") +
                        kNothingWritten);
    if (!now.HoldsSame(planned))
        throw Error(ErrorKind::KeyboardChanged,
                    std::string("the keyboard no longer holds what it held when the write was "
                                "planned, or it is another one") +
                        kNothingWritten);
}

Writer::Claimed Writer::Claim(const KeyboardIdentity& keyboard) const {
    try {
        if (Claimed claimed = m_records.journal.Claim(keyboard))
            return claimed;
    } catch (const Error& error) {
        throw WithAddition(error, kNothingWritten);
    }
    throw Error(ErrorKind::KeyboardBusy,
                std::string("another program is writing to this keyboard, or to one of its kind "
                            "that cannot be told from it") +
                    kNothingWritten);
}

std::vector<PendingWrite> Writer::Own(const KeyboardContent& now) const {
    std::vector<DamagedRecord> damaged;
    std::vector<PendingWrite> own;
    try {
        for (JournalEntry& entry : m_records.journal.Entries(&damaged))
            if (entry.IsOf(now, m_options.origin)) {
                const bool isRecoverable = entry.Explains(now);
                own.push_back({std::move(entry), isRecoverable});
            }
    } catch (const Error& error) {
        throw WithAddition(error, kNothingWritten);
    }
    for (const DamagedRecord& record : damaged)
        if (Journal::MayBeOf(record, now.identity))
            throw Error(ErrorKind::FileFailed,
                        record.message +
                            "; it may tell that a write to this keyboard was interrupted: look at "
                            "what the keyboard holds, move that file to another folder, and try "
                            "again" +
                            kNothingWritten);
    return own;
}

void Writer::RefuseInterrupted(const std::vector<PendingWrite>& own) {
    if (own.empty())
        return;
    const bool isRecoverable = std::any_of(
        own.begin(), own.end(), [](const PendingWrite& entry) { return entry.isRecoverable; });
    const std::string what = InWords(own.back()) + " was interrupted";
    throw Error(ErrorKind::WriteInterrupted,
                what +
                    (isRecoverable ? " and is to be finished or rolled back first"
                                   : "; " + HowToSettle(own.back())) +
                    kNothingWritten);
}

std::string Writer::SaveBackup(const KeyboardContent& now) {
    try {
        std::set<std::string> needed;
        for (const JournalEntry& open : m_records.journal.Entries())
            needed.insert(open.backup);
        return m_records.backups.Save(now, Planner(now, *m_scratch).Document(now), m_options.now(),
                                      needed);
    } catch (const Error& error) {
        throw WithAddition(error, kNothingWritten);
    }
}

Writer::Outcome Writer::Write(const WritePlan& plan, const Request& request) {
    const std::vector<ByteRange> ranges = plan.ToSend(request.full);
    const bool replacesAll = request.action == Request::kRestore;
    if (ranges.empty() && !replacesAll)
        return {};
    const Claimed claimed = Claim(plan.before.identity);
    const auto own = Own(plan.before);
    if (!replacesAll)
        RefuseInterrupted(own);
    if (ranges.empty()) {
        if (!own.empty())
            RequireStillAs(plan.before);
        EndAll(own);
        return {};
    }
    JournalEntry entry;
    entry.backup = SaveBackup(plan.before);
    entry.action = request.action;
    entry.document = request.document;
    entry.origin = m_options.origin;
    entry.ranges = ranges;
    try {
        m_records.journal.Begin(entry, plan.before, m_options.now());
    } catch (const Error& error) {
        throw WithAddition(error, kNothingWritten);
    }
    try {
        RequireStillAs(plan.before); // right before the first byte
    } catch (const Error& error) {
        throw AfterEnding(entry, error);
    }

    Receipt receipt;
    receipt.action = request.action;
    receipt.document = request.document;
    receipt.documentSha256 = request.documentSha256;
    receipt.full = request.full;
    receipt.backup = entry.backup;
    try {
        Execute(plan, ranges, request.verify, receipt);
    } catch (const Failure& failure) {
        if (failure.State() == Holds::Before || failure.State() == Holds::After)
            throw AfterEnding(entry, failure);
        throw Error(failure); // by value: what it adds is for this class
    }
    EndJournal(entry);
    if (request.verify)
        EndAll(own);
    return {true, request.verify, Size(ranges), entry.backup};
}

std::optional<PendingWrite> Writer::Interrupted() {
    std::vector<DamagedRecord> damaged;
    const auto entries = m_records.journal.Entries(&damaged);
    const KeyboardIdentity identity = m_session.ReadIdentity();
    const bool mayBe = !damaged.empty() ||
                       std::any_of(entries.begin(), entries.end(), [&](const JournalEntry& entry) {
                           return entry.keyboard.IsLike(identity);
                       });
    if (!mayBe) // a reading takes its time
        return std::nullopt;
    auto own = Own(Read());
    std::erase_if(own,
                  [&](const PendingWrite& entry) { return m_records.journal.IsInProgress(entry); });
    if (own.empty())
        return std::nullopt;
    const auto newest = std::find_if(own.rbegin(), own.rend(),
                                     [](const PendingWrite& entry) { return entry.isRecoverable; });
    return newest == own.rend() ? own.back() : *newest;
}

// With the keyboard claimed, what is known of the write may have changed.
KeyboardContent Writer::ReadFor(const JournalEntry& entry) {
    std::error_code ignored;
    if (!std::filesystem::exists(entry.file, ignored))
        throw Error(ErrorKind::KeyboardChanged,
                    std::string("the interrupted write has been settled meanwhile") +
                        kNothingWritten);
    KeyboardContent now = Read();
    if (!entry.IsOf(now, m_options.origin))
        throw Error(ErrorKind::KeyboardChanged,
                    std::string("the interrupted write was to another keyboard") + kNothingWritten);
    return now;
}

Writer::Outcome Writer::Recover(const JournalEntry& entry, Way way) {
    const Claimed claimed = Claim(entry.keyboard);
    const KeyboardContent now = ReadFor(entry);
    if (!entry.Explains(now))
        throw Error(ErrorKind::WriteInterrupted, HowToSettle(entry) + kNothingWritten);
    const WritePlan plan =
        Planner(now, *m_scratch)
            .ForContent(way == Way::Finish ? entry.Finished(now) : entry.RolledBack(now));
    auto settled = Own(now);
    // What was begun before a write that is undone is as open as it was then.
    if (way == Way::RollBack)
        std::erase_if(settled, [&](const PendingWrite& own) { return own.file < entry.file; });
    if (plan.IsEmpty()) {
        RequireStillAs(plan.before); // it holds all of it already: no more is to be proved
        EndAll(settled);
        return {false, true, 0, ""};
    }
    Receipt receipt;
    receipt.action = way == Way::Finish ? "finish" : "roll back";
    receipt.document = entry.document;
    receipt.backup = SaveBackup(now);
    RequireStillAs(plan.before);
    try {
        Execute(plan, plan.ToSend(false), true, receipt);
    } catch (const Failure& failure) {
        throw Error(failure); // by value, and the entry stays
    }
    EndAll(settled);
    return {true, true, plan.BytesToSend(), receipt.backup};
}

void Writer::Forget(const JournalEntry& entry) {
    const Claimed claimed = Claim(entry.keyboard);
    (void)ReadFor(entry);
    m_records.journal.End(entry);
}

Writer::Outcome Writer::RunUnproved(const Request& request,
                                    const std::function<void()>& operation) {
    const KeyboardContent before = Read();
    const Claimed claimed = Claim(before.identity);
    RefuseInterrupted(Own(before));
    Receipt receipt;
    receipt.action = request.action;
    receipt.document = request.document;
    receipt.full = true;
    receipt.keyboard = before.identity;
    receipt.beforeSha256 = before.Hash();
    receipt.backup = SaveBackup(before);
    RequireStillAs(before);
    std::optional<Error> failure;
    try {
        operation();
        receipt.result = "not verified";
    } catch (const Error& error) {
        failure = WithAddition(error, "; what the keyboard held before is in the backup " +
                                          receipt.backup);
        receipt.result = "unknown";
        receipt.message = failure->what();
    }
    try {
        m_records.receipts.Add(receipt, m_options.now());
    } catch (const Error& error) {
        if (failure)
            throw WithAddition(*failure, std::string("; no receipt: ") + error.what());
        throw WithAddition(error, "; the file was loaded into the keyboard and has no receipt");
    }
    if (failure)
        throw Error(*failure);
    return {true, false, 0, receipt.backup};
}

void Writer::EndAll(const std::vector<PendingWrite>& entries) {
    for (const PendingWrite& entry : entries)
        EndJournal(entry);
}

// The failure of a write that has left the keyboard whole.
Error Writer::AfterEnding(const JournalEntry& entry, const Error& failure) {
    try {
        EndJournal(entry);
    } catch (const Error& error) {
        return WithAddition(failure, std::string("; ") + error.what());
    }
    return Error(failure);
}

void Writer::EndJournal(const JournalEntry& entry) {
    try {
        m_records.journal.End(entry);
    } catch (const Error& error) {
        throw WithAddition(error, "; the write itself has ended, and the record of it says "
                                  "otherwise until recovering removes it");
    }
}

void Writer::Execute(const WritePlan& plan, const std::vector<ByteRange>& ranges, bool verify,
                     Receipt receipt) {
    receipt.keyboard = plan.before.identity;
    receipt.beforeSha256 = plan.before.Hash();
    std::optional<Failure> failure;
    try {
        Send(plan.before, plan.after, ranges);
        receipt.bytesSent = Size(ranges);
        receipt.result = "not verified";
        if (verify)
            Verify(plan.before, plan.after, receipt);
    } catch (const Failure& error) {
        failure = error;
        receipt.message = error.what();
        receipt.result = error.State() == Holds::After                ? "written"
                         : error.Kind() == ErrorKind::ReadBackDiffers ? "differs"
                         : error.State() == Holds::Before             ? "nothing changed"
                         : error.State() == Holds::Mixed              ? "partly written"
                                                                      : "unknown";
    }
    try {
        m_records.receipts.Add(receipt, m_options.now());
    } catch (const Error& error) {
        if (!failure)
            throw Failure(error, verify ? Holds::After : Holds::Unknown,
                          verify ? "; the keyboard was written and verified, and has no receipt"
                                 : "; the keyboard was written and has no receipt");
        failure = Failure(*failure, failure->State(), std::string("; no receipt: ") + error.what());
    }
    if (failure)
        throw Failure(*failure);
}

Writer::Holds Writer::Look(const KeyboardContent& before, const KeyboardContent& after) {
    try {
        // Each is read on its own: what was not read then differs from just that one for sure.
        if (m_session.ReadAgain(after).HoldsSame(after))
            return Holds::After;
        return m_session.ReadAgain(before).HoldsSame(before) ? Holds::Before : Holds::Mixed;
    } catch (const Error&) {
        return Holds::Unknown;
    }
}

void Writer::Send(const KeyboardContent& before, const KeyboardContent& after,
                  const std::vector<ByteRange>& ranges) {
    try {
        m_session.PrepareSending(ranges);
    } catch (const Error& error) {
        throw Failure(error, Holds::Before, kNothingWritten);
    }
    try {
        m_session.Send();
    } catch (const Error& error) {
        switch (Look(before, after)) {
        case Holds::Before:
            throw Failure(error, Holds::Before,
                          "; nothing changed: the keyboard holds what it held before");
        case Holds::After:
            throw Failure(error, Holds::After,
                          "; read back, the keyboard holds all that was to be written");
        case Holds::Mixed:
            throw Failure(error, Holds::Mixed, "; the keyboard is partly written: recover it");
        case Holds::Unknown:
            break;
        }
        throw Failure(error, Holds::Unknown,
                      "; the keyboard may be partly written and could not be read: recover it");
    }
}

void Writer::Verify(const KeyboardContent& before, const KeyboardContent& after, Receipt& receipt) {
    KeyboardContent now;
    try {
        now = m_session.ReadAgain(after);
    } catch (const Error& error) {
        throw Failure(error, Holds::Unknown,
                      "; the keyboard was written, and could not be read back: recover it");
    }
    receipt.afterSha256 = now.Hash();
    if (now.HoldsSame(after)) {
        receipt.result = "verified";
        return;
    }
    switch (Look(before, after)) {
    case Holds::Before:
        throw Failure(Differing(after, now), Holds::Before,
                      "; nothing changed: the keyboard holds what it held before");
    case Holds::After:
        throw Failure(Differing(after, now), Holds::After,
                      "; read once more, it holds all that was to be written: one of its readings "
                      "went wrong without a word");
    case Holds::Mixed:
    case Holds::Unknown:
        break;
    }
    throw Failure(Differing(after, now), Holds::Mixed, "; recover the keyboard");
}

Error Writer::Differing(const KeyboardContent& expected, const KeyboardContent& found) {
    const auto ranges = Differences(expected, found, 1);
    const ByteRange& first = ranges.front();
    std::string setting = "bytes that no setting uses";
    std::string place;
    try {
        KeyboardContent partly = expected;
        partly.Overwrite(first.address, first.to);
        const auto settings =
            Planner(expected, *m_scratch).Compare(expected, partly, first.section);
        if (!settings.empty()) {
            setting = settings.front().name;
            place = settings.front().place;
        }
    } catch (const std::exception&) {
        setting = first.section; // what was found cannot be read as settings
        place = "/" + first.section;
    }
    const Long bytes = Size(ranges);
    const std::string message =
        "the keyboard does not hold what was written: " + setting + ": address " +
        Hex(first.address) + " holds " + Hex(static_cast<Byte>(first.to[0])) + " in place of " +
        Hex(static_cast<Byte>(first.from[0])) + " (hexadecimal); " + std::to_string(bytes) +
        (bytes == 1 ? " byte differs" : " bytes differ");
    return {ErrorKind::ReadBackDiffers, message, {Fault{place, message}}};
}

} // namespace qx::host
