#include "batch/Crew.h"

#include <algorithm>
#include <chrono>

namespace qx::batch {

struct Crew::Member {
    process::ChildProcess child;
    std::string arrived;
    std::optional<Task> task; // the one it works on
    bool isBriefed = false;   // it has been sent the settings
};

namespace {

bool IsBusy(const Attempt& attempt) {
    const auto& error = attempt.report.error;
    return error && error->Kind() == host::ErrorKind::KeyboardBusy;
}

} // namespace

Crew::Crew(std::size_t size, std::filesystem::path program, WorkerSettings settings)
    : m_program(std::move(program)), m_settings(std::move(settings)) {
    while (m_members.size() < size)
        m_members.push_back(NewMember());
}

Crew::~Crew() = default;

void Crew::Run(const std::vector<const Unit*>& units, const std::function<bool()>& isInterrupted,
               const std::function<void(const Unit&, const Attempt&)>& finished) {
    std::deque<Task> waiting;
    for (const Unit* unit : units)
        waiting.push_back({unit});
    for (;;) {
        if (!isInterrupted())
            Assign(waiting);
        std::vector<const process::Channel*> channels;
        for (const Member* member : Busy())
            channels.push_back(&member->child.Connection());
        if (channels.empty())
            return;
        if (!process::Channel::WaitForAny(channels))
            continue; // interrupted by a signal
        for (auto& member : m_members) {
            if (!member || !member->task)
                continue;
            const Task task = *member->task;
            const auto attempt = Hear(member);
            if (!attempt)
                continue;
            if (IsBusy(*attempt) && !task.isAlone)
                waiting.push_back({task.unit, true});
            else
                finished(*task.unit, *attempt);
        }
    }
}

std::vector<const Crew::Member*> Crew::Busy() const {
    std::vector<const Member*> busy;
    for (const auto& member : m_members)
        if (member && member->task)
            busy.push_back(member.get());
    return busy;
}

void Crew::Assign(std::deque<Task>& waiting) {
    if (!waiting.empty())
        ReplaceCrashed();
    for (auto& member : m_members) {
        const auto next = Next(waiting);
        if (next == waiting.end())
            return;
        if (!member || member->task)
            continue;
        const Task task = *next;
        waiting.erase(next);
        Give(*member, task);
    }
}

// A worker that cannot be replaced only matters if it was the last.
void Crew::ReplaceCrashed() {
    for (auto& member : m_members) {
        if (member)
            continue;
        try {
            member = NewMember();
        } catch (const host::Error&) {
            const bool isLast = std::none_of(m_members.begin(), m_members.end(),
                                             [](const auto& other) { return other != nullptr; });
            if (isLast)
                throw;
        }
    }
}

std::deque<Crew::Task>::iterator Crew::Next(std::deque<Task>& waiting) const {
    const auto busy = Busy();
    const auto mayBegin = [&](const Task& task) {
        if (task.isAlone)
            return busy.empty();
        return std::none_of(busy.begin(), busy.end(), [&](const Member* other) {
            return other->task->isAlone || other->task->unit->port == task.unit->port;
        });
    };
    return std::find_if(waiting.begin(), waiting.end(), mayBegin);
}

std::unique_ptr<Crew::Member> Crew::NewMember() const {
    try {
        return std::unique_ptr<Member>(
            new Member{process::ChildProcess(m_program, {}), "", std::nullopt});
    } catch (const std::exception& error) {
        throw host::FileError(error);
    }
}

void Crew::Give(Member& member, const Task& task) {
    const bool isNew = !std::exchange(member.isBriefed, true);
    member.task = task;
    // A member that is already gone is noticed when its answer is read.
    (void)member.child.Connection().Send((isNew ? LineOf(m_settings) : "") + LineOf(*task.unit));
}

std::optional<Attempt> Crew::Hear(std::unique_ptr<Member>& member) {
    using std::chrono::steady_clock;
    const auto received = member->child.Connection().Receive(member->arrived, steady_clock::now());
    if (const auto end = member->arrived.find('\n'); end != std::string::npos) {
        try {
            Attempt attempt = AttemptOf(member->arrived.substr(0, end));
            member->arrived.clear();
            member->task.reset();
            return attempt;
        } catch (const std::exception&) { // its output can no longer be used
        }
    } else if (received != process::Channel::Received::End) {
        return std::nullopt;
    }
    Attempt attempt = NewAttempt(*member->task->unit, std::chrono::system_clock::now());
    const auto ending = member->child.End(steady_clock::now() + std::chrono::seconds(1));
    attempt.Fail(host::Error(host::Cause::UnitProcessEnded,
                             {.problem = ending.AsProblem(), .holds = host::Holds::Unknown}));
    member.reset();
    return attempt;
}

} // namespace qx::batch
