// Crew: several workers, each a process that programs one unit at a time.
#pragma once

#include "batch/Worker.h"

#include <deque>
#include <functional>
#include <memory>
#include <vector>

namespace qx::batch {

class Crew {
public:
    // `program` is the worker's file. Throws host::Error(FileFailed) when it cannot be started.
    Crew(std::size_t size, std::filesystem::path program, WorkerSettings settings);
    ~Crew();

    // Programs the units, of which those of one port take turns, and hands each attempt over as it
    // ends. A worker that crashes costs the unit that it had. Once it is interrupted, no unit
    // begins, and those that have begun are waited for. Throws host::Error(FileFailed) when all
    // workers have crashed and no other can be started.
    void Run(const std::vector<const Unit*>& units, const std::function<bool()>& isInterrupted,
             const std::function<void(const Unit&, const Attempt&)>& finished);

private:
    struct Task {
        const Unit* unit;
        // A keyboard that cannot be told from one at which another worker writes waits for its
        // turn until none does.
        bool isAlone = false;
    };
    struct Member;

    void Assign(std::deque<Task>& waiting);
    [[nodiscard]] std::vector<const Member*> Busy() const;
    void ReplaceCrashed();
    [[nodiscard]] std::deque<Task>::iterator Next(std::deque<Task>& waiting) const;
    [[nodiscard]] std::unique_ptr<Member> NewMember() const;
    void Give(Member& member, const Task& task);
    // The attempt of a member from which something has arrived; none while it is not complete.
    [[nodiscard]] std::optional<Attempt> Hear(std::unique_ptr<Member>& member);

    std::filesystem::path m_program;
    WorkerSettings m_settings;
    std::vector<std::unique_ptr<Member>> m_members; // null: crashed
};

} // namespace qx::batch
