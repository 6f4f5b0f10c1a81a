// KeyboardContent: the contents of a keyboard as read: its identity, and the bytes of all areas
// that the configuration's sections have in it.
#pragma once

#include "host/Json.h"
#include "qxcontrols/device/KeyboardModuleIDs.h"
#include "qxcontrols/platform/GuidCreator.h"
#include "json/Reader.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace qx::host {

// Whether these bytes, or this number, are an identifier: where none has ever been given, all bytes
// are the same.
[[nodiscard]] bool IsIdentifier(std::string_view bytes);
[[nodiscard]] bool IsIdentifier(const Guid& guid);

struct KeyboardIdentity {
    std::string identification; // the bytes of the identification block; empty: not readable
    Byte capabilities = 0;
    std::vector<std::pair<KeyboardModuleIDs, Long>> directory; // module and address
    std::string guid; // its 16 bytes; empty if the keyboard stores none

    // The keyboard's name, as far as it can be printed.
    [[nodiscard]] std::string Name() const;
    // A name for files about this keyboard: letters, digits and hyphens, different for others.
    [[nodiscard]] std::string FileName() const;
    // Whether both are of one kind: the same identification, capabilities and directory. One whose
    // identification could not be read may be of any kind with this directory.
    [[nodiscard]] bool IsLike(const KeyboardIdentity& other) const;
    bool operator==(const KeyboardIdentity&) const = default;
};

// A stretch of the memory that belongs to one section.
struct ContentPiece {
    KeyboardModuleIDs module = MODULE_NONE; // with which it is requested
    std::string section;                    // the section's key; empty if in no section
    Long address = 0;
    std::string bytes;

    [[nodiscard]] Long Size() const { return static_cast<Long>(bytes.size()); }
    [[nodiscard]] Long End() const { return address + Size(); }
    bool operator==(const ContentPiece&) const = default;
};

// Bytes that are to be replaced.
struct ByteRange {
    KeyboardModuleIDs module = MODULE_NONE;
    std::string section;
    Long address = 0;
    std::string from;
    std::string to;

    [[nodiscard]] Long Size() const { return static_cast<Long>(to.size()); }
    bool operator==(const ByteRange&) const = default;
};

// How many bytes the ranges have.
[[nodiscard]] Long SizeOf(const std::vector<ByteRange>& ranges);

struct KeyboardContent {
    KeyboardIdentity identity;
    std::vector<ContentPiece> pieces; // apart from each other

    // The bytes of a stretch. Throws std::out_of_range where some are not known.
    [[nodiscard]] std::string Bytes(Long address, Long size) const;
    // Replaces known bytes; the identity follows the GUID's. Throws std::out_of_range.
    void Overwrite(Long address, std::string_view bytes);
    // Takes the keyboard's GUID from its piece into the identity.
    void UpdateGuid();

    [[nodiscard]] bool HoldsSame(const KeyboardContent& other) const {
        return pieces == other.pieces;
    }
    [[nodiscard]] Long Size() const;
    // SHA-256 of all bytes with their addresses.
    [[nodiscard]] std::string Hash() const;
};

// The ranges in which two contents of the same pieces differ. Within a piece, those less than `gap`
// bytes apart are one. Throws std::invalid_argument when the pieces are not the same.
[[nodiscard]] std::vector<ByteRange> Differences(const KeyboardContent& from,
                                                 const KeyboardContent& to, Long gap);

// An upper limit for addresses, above the memory of every keyboard.
inline constexpr Long kAddressLimit = 1 << 30;

// The form in records.
[[nodiscard]] Long AddressOf(const json::Value& value);
[[nodiscard]] KeyboardModuleIDs ModuleOf(const json::Value& value);
[[nodiscard]] Json ToJson(const KeyboardIdentity& identity);
void Take(const json::Value& value, KeyboardIdentity& identity);
[[nodiscard]] Json ToJson(const ContentPiece& piece);
void Take(const json::Value& value, ContentPiece& piece);
[[nodiscard]] Json ToJson(const ByteRange& range);
void Take(const json::Value& value, ByteRange& range);

} // namespace qx::host
