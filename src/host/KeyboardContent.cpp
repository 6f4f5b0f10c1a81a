#include "host/KeyboardContent.h"

#include "files/Sha256.h"
#include "host/HexText.h"
#include "qxcontrols/device/MemoryMap.h"

#include <algorithm>
#include <array>
#include <bit>
#include <stdexcept>

namespace qx::host {

namespace {

bool IsLetterOrDigit(char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

std::string DirectoryText(const KeyboardIdentity& identity) {
    std::string text;
    for (const auto& [module, address] : identity.directory)
        text += std::to_string(module) + "@" + std::to_string(address) + " ";
    return text;
}

void TakeBytes(const json::Value& value, std::string& bytes) {
    const auto text = value.Text();
    const auto read = text ? FromHexText(*text) : std::nullopt;
    if (read)
        bytes = *read;
    else if (text)
        value.RefuseAs(FaultKind::NotBytes);
}

// Calls `part` with each piece that has some of the bytes, where they begin in the piece and in the
// stretch, and how many they are.
template <typename Pieces, typename Part>
void ForEachPart(Pieces& pieces, Long address, Long size, const Part& part) {
    Long known = 0;
    for (auto& piece : pieces) {
        const Long start = std::max(address, piece.address);
        const Long end = std::min(address + size, piece.End());
        if (start >= end)
            continue;
        known += end - start;
        part(piece, static_cast<std::size_t>(start - piece.address),
             static_cast<std::size_t>(start - address), static_cast<std::size_t>(end - start));
    }
    if (known != size)
        throw std::out_of_range("bytes that were not read from the keyboard");
}

} // namespace

bool IsIdentifier(std::string_view bytes) {
    return !bytes.empty() && bytes.find_first_not_of(bytes[0]) != std::string_view::npos;
}

bool IsIdentifier(const Guid& guid) {
    const auto bytes = std::bit_cast<std::array<char, sizeof guid>>(guid); // in any order
    return IsIdentifier(std::string_view(bytes.data(), bytes.size()));
}

std::string KeyboardIdentity::Name() const {
    std::string name = identification.substr(kKeyboardText.start, kKeyboardText.length);
    while (!name.empty() && !IsLetterOrDigit(name.back()))
        name.pop_back();
    for (char& c : name)
        if (c <= ' ' || c > '~')
            c = '-';
    return name;
}

std::string KeyboardIdentity::FileName() const {
    constexpr std::size_t kHashDigits = 12;
    std::string name = Name();
    std::replace_if(
        name.begin(), name.end(), [](char c) { return !IsLetterOrDigit(c); }, '-');
    const std::string source = guid.empty() ? identification + DirectoryText(*this) : guid;
    return name + (name.empty() ? "" : "-") + files::Sha256(source).substr(0, kHashDigits);
}

bool KeyboardIdentity::IsLike(const KeyboardIdentity& other) const {
    const bool isUnknown = identification.empty() || other.identification.empty();
    return directory == other.directory && (isUnknown || (identification == other.identification &&
                                                          capabilities == other.capabilities));
}

Long SizeOf(const std::vector<ByteRange>& ranges) {
    Long size = 0;
    for (const ByteRange& range : ranges)
        size += range.Size();
    return size;
}

std::string KeyboardContent::Bytes(Long address, Long size) const {
    std::string bytes(static_cast<std::size_t>(size), '\0');
    ForEachPart(pieces, address, size,
                [&](const ContentPiece& piece, std::size_t from, std::size_t to,
                    std::size_t count) { bytes.replace(to, count, piece.bytes, from, count); });
    return bytes;
}

void KeyboardContent::Overwrite(Long address, std::string_view bytes) {
    const auto part = [&](ContentPiece& piece, std::size_t to, std::size_t from,
                          std::size_t count) {
        piece.bytes.replace(to, count, bytes.substr(from, count));
    };
    ForEachPart(pieces, address, static_cast<Long>(bytes.size()), part);
    UpdateGuid();
}

void KeyboardContent::UpdateGuid() {
    identity.guid.clear();
    for (const ContentPiece& piece : pieces)
        if (piece.module == MODULE_GUID && IsIdentifier(piece.bytes))
            identity.guid = piece.bytes;
}

Long KeyboardContent::Size() const {
    Long size = 0;
    for (const ContentPiece& piece : pieces)
        size += static_cast<Long>(piece.bytes.size());
    return size;
}

std::string KeyboardContent::Hash() const {
    std::string all;
    for (const ContentPiece& piece : pieces)
        all += std::to_string(piece.address) + ":" + std::to_string(piece.bytes.size()) + ":" +
               piece.bytes;
    return files::Sha256(all);
}

std::vector<ByteRange> Differences(const KeyboardContent& from, const KeyboardContent& to,
                                   Long gap) {
    const auto isSamePlace = [](const ContentPiece& one, const ContentPiece& other) {
        return one.address == other.address && one.bytes.size() == other.bytes.size();
    };
    if (!std::equal(from.pieces.begin(), from.pieces.end(), to.pieces.begin(), to.pieces.end(),
                    isSamePlace))
        throw std::invalid_argument("contents of different areas");
    std::vector<ByteRange> ranges;
    for (std::size_t p = 0; p < from.pieces.size(); ++p) {
        const ContentPiece& before = from.pieces[p];
        const ContentPiece& after = to.pieces[p];
        std::size_t start = 0; // of the range that is being found, up to `end`
        std::size_t end = 0;
        const auto add = [&] {
            if (end > start)
                ranges.push_back({before.module, before.section,
                                  before.address + static_cast<Long>(start),
                                  before.bytes.substr(start, end - start),
                                  after.bytes.substr(start, end - start)});
        };
        for (std::size_t i = 0; i < before.bytes.size(); ++i) {
            if (before.bytes[i] == after.bytes[i])
                continue;
            if (end == 0 || i - end >= static_cast<std::size_t>(gap)) {
                add();
                start = i;
            }
            end = i + 1;
        }
        add();
    }
    return ranges;
}

Json ToJson(const KeyboardIdentity& identity) {
    Json directory = Json::array();
    for (const auto& [module, address] : identity.directory)
        directory.push_back({{"module", static_cast<Long>(module)}, {"address", address}});
    return {{"name", identity.Name()},
            {"identification", ToHexText(identity.identification)},
            {"capabilities", identity.capabilities},
            {"guid", ToHexText(identity.guid)},
            {"directory", directory}};
}

KeyboardModuleIDs ModuleOf(const json::Value& value) {
    return static_cast<KeyboardModuleIDs>(value.WholeNumber<Integer>().value_or(0));
}

Long AddressOf(const json::Value& value) {
    return value.WholeNumber<Long>(0, kAddressLimit - 1).value_or(0);
}

void Take(const json::Value& value, KeyboardIdentity& identity) {
    json::Object members(value);
    (void)members.Find("name"); // which is for people
    TakeBytes(members.Get("identification"), identity.identification);
    identity.capabilities = members.Get("capabilities").WholeNumber<Byte>().value_or(0);
    TakeBytes(members.Get("guid"), identity.guid);
    for (const json::Value& element : members.Get("directory").Elements()) {
        json::Object entry(element);
        auto& [module, address] = identity.directory.emplace_back();
        module = ModuleOf(entry.Get("module"));
        address = entry.Get("address").WholeNumber<Long>().value_or(0);
        entry.RefuseOthers();
    }
    members.RefuseOthers();
}

Json ToJson(const ContentPiece& piece) {
    return {{"module", static_cast<Long>(piece.module)},
            {"section", piece.section},
            {"address", piece.address},
            {"bytes", ToHexText(piece.bytes)}};
}

void Take(const json::Value& value, ContentPiece& piece) {
    json::Object members(value);
    piece.module = ModuleOf(members.Get("module"));
    piece.section = members.Get("section").Text().value_or("");
    piece.address = AddressOf(members.Get("address"));
    TakeBytes(members.Get("bytes"), piece.bytes);
    members.RefuseOthers();
}

Json ToJson(const ByteRange& range) {
    return {{"module", static_cast<Long>(range.module)},
            {"section", range.section},
            {"address", range.address},
            {"from", ToHexText(range.from)},
            {"to", ToHexText(range.to)}};
}

void Take(const json::Value& value, ByteRange& range) {
    json::Object members(value);
    range.module = ModuleOf(members.Get("module"));
    range.section = members.Get("section").Text().value_or("");
    range.address = AddressOf(members.Get("address"));
    TakeBytes(members.Get("from"), range.from);
    TakeBytes(members.Get("to"), range.to);
    members.RefuseOthers();
    if (range.from.size() != range.to.size())
        value.Refuse(FaultKind::RangeSizesDiffer);
}

} // namespace qx::host
