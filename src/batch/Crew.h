// Crew: several worker processes, each programming one unit at a time.
#pragma once

#include "batch/Worker.h"

#include <deque>
#include <functional>
#include <memory>
#include <vector>

namespace qx::batch {

class Crew {
public:
    // `program` is the worker's file. Throws host::Error(FileFailed) if it cannot be started.
    Crew(std::size_t size, std::filesystem::path program, WorkerSettings settings);
    ~Crew();

    // Programs the units, those of one port one after the other, and passes on each attempt when it
    // ends. A worker that crashes costs only its current unit. After an interruption no unit is
    // started, and those that have begun are completed. Throws host::Error(FileFailed) if all
    // workers have crashed and no other can be started.
    void Run(const std::vector<const Unit*>& units, const std::function<bool()>& isInterrupted,
             const std::function<void(const Unit&, const Attempt&)>& finished);

private:
    struct Task {
        const Unit* unit;
        // The unit must run alone: its keyboard cannot be distinguished from one that another
        // worker is writing to.
        bool isAlone = false;
    };
    struct Member;

    void Assign(std::deque<Task>& waiting);
    [[nodiscard]] std::vector<const Member*> Busy() const;
    void ReplaceCrashed();
    [[nodiscard]] std::deque<Task>::iterator Next(std::deque<Task>& waiting) const;
    [[nodiscard]] std::unique_ptr<Member> NewMember() const;
    void Give(Member& member, const Task& task);
    // The attempt of a member that has sent data; none if it is incomplete.
    [[nodiscard]] std::optional<Attempt> Hear(std::unique_ptr<Member>& member);

    std::filesystem::path m_program;
    WorkerSettings m_settings;
    std::vector<std::unique_ptr<Member>> m_members; // null if crashed
};

} // namespace qx::batch
