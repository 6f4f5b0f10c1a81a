// WritePlan: what a write would change in a keyboard, found out before any of it is sent.
//
// A plan is a value. It is made by a Planner from what the keyboard holds, and is good for that
// keyboard as long as it still holds that.
#pragma once

#include "host/Configuration.h"
#include "host/CopiedKeyboard.h"
#include "host/KeyboardContent.h"

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace qx::host {

// What one request more costs on the way to the keyboard, in bytes: a gap between two changes that
// is smaller than this is sent along.
inline constexpr Long kRequestCost = 16;

struct PlannedRange : ByteRange {
    std::vector<Difference> settings; // that it changes; see Planner::NameSettings
    bool isDamaged = false;           // of a damaged section, whose settings are not known
};

struct PlanOptions {
    // Write what the controls request, with bytes that no setting uses as the controls encode them;
    // else only slots with changed settings are written.
    bool full = false;
    // Replace blocks of the keyboard that no document can express.
    bool repair = false;
};

// A part of the keyboard that a backup lacks, or bytes of a backup that have no place.
struct NotRestored {
    std::string section; // its key, or the module's name; empty: the backup's bytes
    Long bytes = 0;      // of the backup
};

struct WritePlan {
    KeyboardContent before;                        // as read from the keyboard
    KeyboardContent after;                         // as it is to be
    std::vector<PlannedRange> ranges;              // all that differs
    std::vector<Difference> settings;              // that differ
    std::vector<CopiedKeyboard::Request> requests; // of a full write
    std::vector<NotRestored> notRestored;          // by a backup
    std::optional<Error> otherKeyboard;            // why a backup seems to be of another one

    [[nodiscard]] bool IsEmpty() const { return ranges.empty(); }
    // Whether the keyboard is given an identifier that it does not have; and in place of its own.
    [[nodiscard]] bool GivesIdentifier() const {
        return !after.identity.guid.empty() && before.identity.guid != after.identity.guid;
    }
    [[nodiscard]] bool ReplacesIdentifier() const {
        return GivesIdentifier() && !before.identity.guid.empty();
    }
    [[nodiscard]] Long BytesToSend() const; // of the ranges
    [[nodiscard]] Long BytesInAll() const;  // of the requests
    // What is sent: the ranges, or, when full, all requests.
    [[nodiscard]] std::vector<ByteRange> ToSend(bool full) const;
};

// Makes plans on a copy of the keyboard: neither the keyboard nor its driver's image is touched.
class Planner {
public:
    // `scratch` is a configuration for this keyboard whose settings are not needed otherwise.
    Planner(KeyboardContent content, Configuration& scratch);

    // What a write of these sections' settings would do. Throws Error(TransferFailed) when they
    // cannot be encoded, and Error(KeyboardDamaged) when one of them would replace a block that no
    // document can express and is not to repair it.
    [[nodiscard]] WritePlan ForSettings(const std::vector<Section*>& sections,
                                        const PlanOptions& options = {});
    // Of these sections, those that are damaged in the keyboard: their places, and how.
    [[nodiscard]] std::vector<Fault> Damaged(const std::vector<Section*>& sections);
    // Gives each range of a plan the settings that it changes. For people who ask: this takes its
    // time when many change.
    void NameSettings(WritePlan& plan);
    // What it takes to make the keyboard hold these bytes in the same areas.
    [[nodiscard]] WritePlan ForContent(const KeyboardContent& wanted);
    // The same of a backup, in those areas that both have; with its GUID, or the keyboard's own.
    [[nodiscard]] WritePlan ForBackup(const KeyboardContent& backup, bool withGuid);

    // The settings of a section that one content has otherwise than the other.
    [[nodiscard]] std::vector<Difference>
    Compare(const KeyboardContent& from, const KeyboardContent& to, const std::string& section);
    // The document of such a content, with a note of the keyboard, without damaged sections.
    [[nodiscard]] ConfigurationDocument Document(const KeyboardContent& content);

private:
    using Keys = std::set<std::string, std::less<>>; // of sections
    struct Encoded {
        KeyboardContent content;
        std::vector<CopiedKeyboard::Request> requests;
    };
    // Sections of the scratch configuration with the settings that a content has.
    struct Decoded {
        std::vector<Section*> sections; // those that are sound
        std::vector<Snapshot> settings; // theirs
        std::vector<Fault> damaged;
    };

    [[nodiscard]] Encoded Encode(const std::vector<Section*>& sections) const;
    [[nodiscard]] Decoded Decode(const KeyboardContent& content, const Keys& keys);
    [[nodiscard]] std::vector<Difference> Compare(const Decoded& from, const KeyboardContent& to,
                                                  const Keys& keys);
    void Finish(WritePlan& plan);
    using Changes = std::map<std::string, Difference>; // of settings, by their places
    void NameSettingsOfSlot(const Section& section, const WritePlan& plan,
                            const std::vector<PlannedRange*>& ranges, const Changes& changes);

    KeyboardContent m_content;
    Configuration& m_scratch;
};

} // namespace qx::host
