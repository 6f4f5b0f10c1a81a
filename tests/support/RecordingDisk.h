// RecordingDisk: a disk on which any call can fail, and which knows the possible states of a
// folder's files after a power failure.
//
// Calls work on the real folder. In parallel it records the durable state: a file's bytes when it
// was flushed and a folder's names when that was flushed. Any part of the later changes may be lost
// and any part kept, in any order.
#pragma once

#include "files/Files.h"
#include "files/System.h"

#include <fstream>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace qx::test {

class RecordingDisk : public files::System {
public:
    // The folder's current contents count as durable.
    explicit RecordingDisk(Path folder) : m_folder(std::move(folder)), m_replacement(*this) {
        namespace fs = std::filesystem;
        for (const auto& entry : fs::recursive_directory_iterator(m_folder)) {
            const int node = entry.is_directory() ? kFolder : NewNode();
            if (node != kFolder)
                m_nodes.at(static_cast<std::size_t>(node)).bytes =
                    m_nodes.at(static_cast<std::size_t>(node)).safe = files::ReadFile(entry.path());
            m_now[entry.path()] = m_safe[entry.path()] = node;
        }
    }

    int failingCall = 0; // counted from 1; 0: none
    int calls = 0;
    std::function<void()> afterEach = [] {};

    // Creates every possible state after a power failure at this moment, one by one, in the other
    // folder, and calls `check` for each.
    void ForEachLoss(const Path& other, const std::function<void()>& check) const {
        const std::size_t count = m_pending.size();
        std::vector<std::vector<bool>> kept = {std::vector<bool>(count, false),
                                               std::vector<bool>(count, true)};
        for (std::size_t i = 0; i < count; ++i) {
            kept.emplace_back(count, false).at(i) = true;
            kept.emplace_back(count, true).at(i) = false;
        }
        for (const auto& each : kept)
            for (const bool keepsBytes : {false, true}) {
                Make(other, each, keepsBytes);
                check();
            }
    }

    int Create(const Path& path, files::Access access, Reason& reason) override {
        if (Fails(reason))
            return -1;
        const int file = System::Create(path, access, reason);
        if (file >= 0) {
            m_now[path] = m_open[file] = NewNode();
            m_pending.push_back({path, {}, m_now[path]});
        }
        return Done(file);
    }
    int OpenForFlushing(const Path& path, Reason& reason) override {
        if (Fails(reason))
            return -1;
        const int file = System::OpenForFlushing(path, reason);
        m_open[file] = m_now.at(path);
        NodeOf(file).bytes = files::ReadFile(path);
        return Done(file);
    }
    std::size_t Write(int file, const char* bytes, std::size_t size, Reason& reason) override {
        if (Fails(reason))
            return 0;
        const std::size_t written = System::Write(file, bytes, (size + 1) / 2, reason);
        NodeOf(file).bytes.append(bytes, written);
        return Done(written);
    }
    void Flush(int file, Reason& reason) override {
        if (Fails(reason))
            return;
        NodeOf(file).safe = NodeOf(file).bytes;
        reason.clear();
        afterEach();
    }
    void Close(int file, Reason& reason) override {
        System::Close(file, reason); // closes the file in any case
        m_open.erase(file);
        if (!Fails(reason))
            afterEach();
    }
    void Rename(const Path& from, const Path& to, Reason& reason) override {
        if (Fails(reason))
            return;
        System::Rename(from, to, reason);
        Renamed(from, to);
        afterEach();
    }
    bool RenameToNew(const Path& from, const Path& to, Reason& reason) override {
        if (Fails(reason) || !System::RenameToNew(from, to, reason))
            return false;
        m_now[to] = m_now.at(from);
        m_pending.push_back({to, {}, m_now[to]}); // adds the new name, then removes the old one
        m_pending.push_back({{}, from, 0});
        m_now.erase(from);
        return Done(true);
    }
    void Remove(const Path& path, Reason& reason) override {
        if (Fails(reason))
            return;
        System::Remove(path, reason);
        if (m_now.erase(path) != 0)
            m_pending.push_back({{}, path, 0});
        afterEach();
    }
    void MakeFolder(const Path& path, Reason& reason) override {
        if (Fails(reason))
            return;
        System::MakeFolder(path, reason);
        m_now[path] = kFolder;
        m_pending.push_back({path, {}, kFolder});
        afterEach();
    }
    void FlushFolder(const Path& path, Reason& reason) override {
        if (Fails(reason))
            return;
        std::erase_if(m_pending, [&](const Change& change) {
            const bool isHere =
                (change.added.empty() ? change.removed : change.added).parent_path() == path;
            if (isHere)
                Apply(change, m_safe);
            return isHere;
        });
        reason.clear();
        afterEach();
    }

private:
    static constexpr int kFolder = -1;
    struct Node {
        std::string bytes;
        std::string safe;
    };
    using Names = std::map<Path, int>; // to the nodes' indexes
    // A name added, a name removed, or both in one step.
    struct Change {
        Path added;
        Path removed;
        int node;
    };

    bool Fails(Reason& reason) {
        const bool fails = ++calls == failingCall;
        if (fails)
            reason = std::make_error_code(std::errc::io_error);
        return fails;
    }
    template <typename Result>
    Result Done(Result result) {
        afterEach();
        return result;
    }
    Node& NodeOf(int file) { return m_nodes.at(static_cast<std::size_t>(m_open.at(file))); }
    int NewNode() {
        m_nodes.emplace_back();
        return static_cast<int>(m_nodes.size()) - 1;
    }
    void Renamed(const Path& from, const Path& to) {
        m_now[to] = m_now.at(from);
        m_now.erase(from);
        m_pending.push_back({to, from, m_now[to]});
    }
    static void Apply(const Change& change, Names& names) {
        if (!change.removed.empty())
            names.erase(change.removed);
        if (!change.added.empty())
            names[change.added] = change.node;
    }
    void Make(const Path& other, const std::vector<bool>& kept, bool keepsBytes) const {
        namespace fs = std::filesystem;
        Names names = m_safe;
        for (std::size_t i = 0; i < kept.size(); ++i)
            if (kept[i])
                Apply(m_pending[i], names);
        fs::remove_all(other);
        fs::create_directories(other);
        for (const auto& [path, node] : names) { // a folder precedes its contents
            const Path copy = other / path.lexically_relative(m_folder);
            if (!fs::is_directory(copy.parent_path()))
                continue; // lost with its folder
            if (node == kFolder)
                fs::create_directory(copy);
            else
                std::ofstream(copy, std::ios::binary)
                    << (keepsBytes ? m_nodes[static_cast<std::size_t>(node)].bytes
                                   : m_nodes[static_cast<std::size_t>(node)].safe);
        }
    }

    Path m_folder;
    std::vector<Node> m_nodes;
    Names m_now;
    Names m_safe;
    std::vector<Change> m_pending;
    std::map<int, int> m_open; // open files to nodes
    Replacement m_replacement;
};

} // namespace qx::test
