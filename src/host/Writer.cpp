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
    return Planner(Read(), *m_scratch).ForSettings(sections);
}

WritePlan Writer::PlanRestore(const KeyboardContent& backup, bool otherKeyboard) {
    const KeyboardContent now = Read();
    if (!backup.identity.IsLike(now.identity))
        throw Error(ErrorKind::KeyboardChanged, "the backup is of a " + backup.identity.Name() +
                                                    " with other modules than this " +
                                                    now.identity.Name() + kNothingWritten);
    if (backup.identity.guid != now.identity.guid && !otherKeyboard)
        throw Error(ErrorKind::KeyboardChanged,
                    std::string("the backup is of another keyboard of this kind") +
                        kNothingWritten);
    return Planner(now, *m_scratch).ForContent(backup);
}

void Writer::RequireStillAs(const KeyboardContent& planned) {
    KeyboardContent now;
    try {
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

Writer::Outcome Writer::Write(const WritePlan& plan, const Request& request) {
    const std::vector<ByteRange> ranges = plan.ToSend(request.full);
    if (ranges.empty())
        return {};
    RequireStillAs(plan.before);
    const auto pending = Pending(plan.before);
    const bool replacesAll = request.action == "restore";
    if (pending && !replacesAll)
        throw Error(ErrorKind::WriteInterrupted,
                    "a " + pending->action + " of " + pending->document + " to this keyboard of " +
                        pending->time +
                        " was interrupted and is to be finished or rolled back first" +
                        kNothingWritten);
    JournalEntry entry;
    try {
        std::set<std::string> needed;
        for (const JournalEntry& open : m_records.journal.Entries())
            needed.insert(open.backup);
        entry.backup = m_records.backups.Save(
            plan.before, Planner(plan.before, *m_scratch).Document(plan.before), m_options.now(),
            needed);
        entry.action = request.action;
        entry.document = request.document;
        entry.ranges = ranges;
        m_records.journal.Begin(entry, plan.before, m_options.now());
    } catch (const Error& error) {
        throw WithAddition(error, kNothingWritten);
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
            EndJournal(entry);
        throw Error(failure); // by value: what it adds is for this class
    }
    EndJournal(entry);
    if (pending && request.verify)
        EndJournal(*pending);
    return {true, request.verify, Size(ranges), entry.backup};
}

std::optional<JournalEntry> Writer::Pending(const KeyboardContent& now) const {
    try {
        return m_records.journal.Find(now);
    } catch (const Error& error) {
        throw WithAddition(error, kNothingWritten);
    }
}

std::optional<JournalEntry> Writer::Interrupted() {
    const auto entries = m_records.journal.Entries();
    const KeyboardIdentity identity = m_session.ReadIdentity();
    const bool mayBe = std::any_of(entries.begin(), entries.end(), [&](const JournalEntry& entry) {
        return entry.keyboard.IsLike(identity);
    });
    return mayBe ? Pending(Read()) : std::nullopt; // a reading takes its time
}

Writer::Outcome Writer::Recover(const JournalEntry& entry, Way way) {
    const KeyboardContent now = Read();
    if (!entry.BelongsTo(now))
        throw Error(ErrorKind::KeyboardChanged,
                    std::string("the interrupted write was to another keyboard") + kNothingWritten);
    const WritePlan plan =
        Planner(now, *m_scratch)
            .ForContent(way == Way::Finish ? entry.Finished(now) : entry.RolledBack(now));
    if (plan.IsEmpty())
        RequireStillAs(plan.before); // it holds all of it already: no more is to be proved
    else {
        RequireStillAs(plan.before);
        Receipt receipt;
        receipt.action = way == Way::Finish ? "finish" : "roll back";
        receipt.document = entry.document;
        receipt.backup = entry.backup;
        try {
            Execute(plan, plan.ToSend(false), true, receipt);
        } catch (const Failure& failure) {
            throw Error(failure); // by value, and the entry stays
        }
    }
    EndJournal(entry);
    return {!plan.IsEmpty(), true, plan.BytesToSend(), entry.backup};
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
        receipt.result = error.Kind() == ErrorKind::ReadBackDiffers ? "differs"
                         : error.State() == Holds::Before           ? "nothing changed"
                         : error.State() == Holds::After            ? "written"
                         : error.State() == Holds::Mixed            ? "partly written"
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
    if (Look(before, after) == Holds::Before)
        throw Failure(Differing(after, now), Holds::Before,
                      "; nothing changed: the keyboard holds what it held before");
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
