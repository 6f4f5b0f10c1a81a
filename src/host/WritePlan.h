// WritePlan: what a write would change in a keyboard, found out before any of it is sent.
//
// A plan is a value. It is made by a Planner from what the keyboard holds, and is good for that
// keyboard as long as it still holds that.
#pragma once

#include "host/Configuration.h"
#include "host/CopiedKeyboard.h"
#include "host/KeyboardContent.h"

#include <string>
#include <vector>

namespace qx::host {

// What one request more costs on the way to the keyboard, in bytes: a gap between two changes that
// is smaller than this is sent along.
inline constexpr Long kRequestCost = 16;

struct PlannedRange : ByteRange {
    std::vector<std::string> settings; // what is changed by it, in words; empty for unused bytes
};

struct WritePlan {
    KeyboardContent before;                        // as read from the keyboard
    KeyboardContent after;                         // as it is to be
    std::vector<PlannedRange> ranges;              // all that differs
    std::vector<Difference> settings;              // that differ
    std::vector<CopiedKeyboard::Request> requests; // of a full write
    std::vector<std::string> notRestored;          // areas that a backup cannot bring back, and why
    bool isOfOtherKeyboard = false;                // a backup of what seems to be another keyboard

    [[nodiscard]] bool IsEmpty() const { return ranges.empty(); }
    // Whether the keyboard has an identifier and is given another one.
    [[nodiscard]] bool ReplacesIdentifier() const {
        return !before.identity.guid.empty() && before.identity.guid != after.identity.guid;
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
    // cannot be encoded.
    [[nodiscard]] WritePlan ForSettings(const std::vector<Section*>& sections);
    // What it takes to make the keyboard hold these bytes in the same areas.
    [[nodiscard]] WritePlan ForContent(const KeyboardContent& wanted);
    // The same of a backup, in those areas that both have; with its GUID, or the keyboard's own.
    [[nodiscard]] WritePlan ForBackup(const KeyboardContent& backup, bool withGuid);

    // The settings, in words, that one content has otherwise than the other, in a section.
    [[nodiscard]] std::vector<Difference>
    Compare(const KeyboardContent& from, const KeyboardContent& to, const std::string& section);
    // The document of such a content, with a note of the keyboard.
    [[nodiscard]] ConfigurationDocument Document(const KeyboardContent& content);

private:
    void Finish(WritePlan& plan);
    [[nodiscard]] std::vector<Setting> Settings(const KeyboardContent& content,
                                                const std::string& section);

    KeyboardContent m_content;
    Configuration& m_scratch;
};

} // namespace qx::host
