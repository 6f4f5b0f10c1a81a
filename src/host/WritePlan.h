// WritePlan: the changes that a write would make in a keyboard, determined before anything is sent.
//
// A plan is a value. It is made by a Planner from the keyboard's contents, and is valid for that
// keyboard as long as its contents do not change.
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

// The cost of one more request, in bytes: a smaller gap between two changes is sent along.
inline constexpr Long kRequestCost = 16;

struct PlannedRange : ByteRange {
    std::vector<Difference> settings; // that it changes; see Planner::NameSettings
    bool isDamaged = false;           // of a damaged section, whose settings are not known
};

struct PlanOptions {
    // Send everything the controls request, with unused bytes as the controls encode them;
    // otherwise only slots with changed settings are sent.
    bool full = false;
    // Replace blocks of the keyboard that no document can express.
    bool repair = false;
};

// A part of the keyboard that is not in a backup, or bytes of a backup without a place.
struct NotRestored {
    std::string section; // the section's key, or the module's name; empty for the backup's bytes
    Long bytes = 0;      // of the backup
};

struct WritePlan {
    KeyboardContent before;                        // as read from the keyboard
    KeyboardContent after;                         // the wanted contents
    std::vector<PlannedRange> ranges;              // all differences
    std::vector<Difference> settings;              // the settings that differ
    std::vector<CopiedKeyboard::Request> requests; // of a full write
    std::vector<NotRestored> notRestored;          // from a backup
    std::optional<Error> otherKeyboard; // why a backup seems to come from another keyboard

    [[nodiscard]] bool IsEmpty() const { return ranges.empty(); }
    // Whether the keyboard gets a new identifier; and whether that replaces its own.
    [[nodiscard]] bool GivesIdentifier() const {
        return !after.identity.guid.empty() && before.identity.guid != after.identity.guid;
    }
    [[nodiscard]] bool ReplacesIdentifier() const {
        return GivesIdentifier() && !before.identity.guid.empty();
    }
    [[nodiscard]] Long BytesToSend() const; // of the ranges
    [[nodiscard]] Long BytesInAll() const;  // of the requests
    // The bytes to send: the ranges, or all requests if full.
    [[nodiscard]] std::vector<ByteRange> ToSend(bool full) const;
};

// Makes plans on a copy of the keyboard: the keyboard and its driver's image are not touched.
class Planner {
public:
    // `scratch` is a configuration for this keyboard whose settings may be overwritten.
    Planner(KeyboardContent content, Configuration& scratch);

    // The plan for writing these sections' settings. Throws Error(TransferFailed) if they cannot be
    // encoded, and Error(KeyboardDamaged) if one of them would replace a block that no document can
    // express, unless the block is to be repaired.
    [[nodiscard]] WritePlan ForSettings(const std::vector<Section*>& sections,
                                        const PlanOptions& options = {});
    // The damaged ones of these sections: their places and the kind of damage.
    [[nodiscard]] std::vector<Fault> Damaged(const std::vector<Section*>& sections);
    // Finds the settings that each range of a plan changes. Slow if many change, so only for
    // display.
    void NameSettings(WritePlan& plan);
    // The plan for making the keyboard hold these bytes in the same areas.
    [[nodiscard]] WritePlan ForContent(const KeyboardContent& wanted);
    // The same for a backup, in the areas that both have; with its GUID, or with the keyboard's
    // own.
    [[nodiscard]] WritePlan ForBackup(const KeyboardContent& backup, bool withGuid);

    // The settings of a section that differ between the two contents.
    [[nodiscard]] std::vector<Difference>
    Compare(const KeyboardContent& from, const KeyboardContent& to, const std::string& section);
    // The document for the contents, with a note of the keyboard and without damaged sections.
    [[nodiscard]] ConfigurationDocument Document(const KeyboardContent& content);

private:
    using Keys = std::set<std::string, std::less<>>; // of sections
    struct Encoded {
        KeyboardContent content;
        std::vector<CopiedKeyboard::Request> requests;
    };
    // Sections of the scratch configuration with the settings decoded from contents.
    struct Decoded {
        std::vector<Section*> sections; // the intact ones
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
