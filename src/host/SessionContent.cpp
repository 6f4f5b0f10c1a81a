// The session's work with bytes: what a keyboard holds, and changed ranges of it.

#include "host/Session.h"

#include "host/Stretches.h"
#include "qxcontrols/device/MemoryMap.h"

#include <algorithm>
#include <cstdint>
#include <optional>

namespace qx::host {

namespace {

// The parts of an area that no other has, as pieces without bytes yet.
void AddPieces(KeyboardContent& content, Stretches& known, KeyboardModuleIDs module,
               std::string_view section, Long address, Long size) {
    Stretches area;
    area.Add(address, size);
    for (const Stretch& stretch : area.Without(known))
        content.pieces.push_back({module, std::string(section), stretch.address,
                                  std::string(static_cast<std::size_t>(stretch.size), '\0')});
    known.Add(address, size);
}

void Complement(std::string& bytes) {
    for (char& byte : bytes)
        byte = static_cast<char>(~static_cast<Byte>(byte));
}

// Fills the image before it is read, so that bytes which the driver leaves out are noticed:
// irregular, and without the bytes that unused memory mostly holds. At most as long as a block.
std::string_view Pattern(Long address, Long size) {
    constexpr std::uint32_t kPeriod = 1U << 16U;
    static const std::string bytes = [] {
        std::string mixed;
        for (std::uint32_t i = 0; i < kPeriod + QXKeyboardAccess::kMaxBlockSize; ++i)
            mixed += static_cast<char>(0x40U + (i * 2654435761U >> 25U));
        return mixed;
    }();
    const Long length = std::clamp(size, 0, QXKeyboardAccess::kMaxBlockSize);
    return std::string_view(bytes).substr(static_cast<std::uint32_t>(address) % kPeriod,
                                          static_cast<std::size_t>(length));
}

std::string PatternComplement(Long address, Long size) {
    std::string pattern(Pattern(address, size));
    Complement(pattern);
    return pattern;
}

// The first of the bytes that a transfer may have left untouched; `isUntouched` shows which look
// so. A transfer that breaks off leaves the end of a request; so many in a row are not a
// coincidence.
template <typename IsUntouched>
std::optional<std::size_t> UntouchedFrom(std::size_t size, IsUntouched isUntouched) {
    constexpr std::size_t kNoChance = 4;
    const auto startOfRun = [&](std::size_t i) {
        while (i > 0 && isUntouched(i - 1))
            --i;
        return i;
    };
    // A run of that many has one of these places in it.
    for (std::size_t i = kNoChance - 1; i < size; i += kNoChance) {
        if (!isUntouched(i))
            continue;
        const std::size_t start = startOfRun(i);
        std::size_t end = i + 1;
        while (end < size && end - start < kNoChance && isUntouched(end))
            ++end;
        if (end - start >= kNoChance)
            return start;
    }
    const std::size_t start = startOfRun(size);
    return start < size ? std::optional(start) : std::nullopt;
}

} // namespace

// Transfers the requested memory into the image. Bytes that equal the fill pattern afterwards may
// not have been transferred, so they are read again over its complement.
void Session::Load() {
    const auto fill = [this](const std::vector<TransferRequest>& requests, bool isComplement) {
        for (const TransferRequest& request : requests) {
            const auto& [module, address, size] = request;
            if (size > 0 && isComplement)
                m_access.WriteIntoMemory(PatternComplement(address, size), address, size);
            else if (size > 0)
                m_access.WriteIntoMemory(Pattern(address, size), address, size);
        }
        return !m_driver.Failure() && m_access.Upload() == 0;
    };
    const std::vector<TransferRequest> requests = m_driver.Requests();
    if (!fill(requests, false))
        return;
    std::vector<TransferRequest> suspects;
    std::vector<std::string> before;
    for (const TransferRequest& request : requests) {
        std::string bytes;
        if (!m_access.ReadFromMemory(bytes, request.address, request.size))
            return;
        const std::string_view pattern = Pattern(request.address, request.size);
        if (UntouchedFrom(bytes.size(), [&](auto k) { return bytes[k] == pattern[k]; })) {
            suspects.push_back(request);
            before.push_back(std::move(bytes));
        }
    }
    if (suspects.empty())
        return;
    m_access.DataTransferPrepare();
    for (const TransferRequest& request : suspects)
        m_access.MemRequestAdd(request.module, request.address, request.size);
    if (!fill(suspects, true))
        return;
    for (std::size_t i = 0; i < suspects.size(); ++i) {
        const auto& [module, address, size] = suspects[i];
        const std::string_view pattern = Pattern(address, size);
        const std::string complement = PatternComplement(address, size);
        std::string bytes;
        if (!m_access.ReadFromMemory(bytes, address, size))
            return;
        const auto untouched = UntouchedFrom(bytes.size(), [&](std::size_t k) {
            return before[i][k] == pattern[k] && bytes[k] == complement[k];
        });
        if (untouched)
            throw Error(Cause::NothingMoved,
                        {.place = {.address = address + static_cast<Long>(*untouched)}});
    }
}

KeyboardIdentity Session::ReadIdentity() {
    if (m_hidesEntries)
        throw Error(Cause::KeyboardUnknown, {}, {m_holes.front()});
    return IdentityAsFound();
}

// Parts that the start-up could not read stay empty if they still cannot be read.
KeyboardIdentity Session::IdentityAsFound() {
    QXKeyboardAccess& access = m_again ? *m_again : m_access;
    m_driver.BeginOperation();
    KeyboardIdentity identity;
    access.ReadFromMemory(identity.identification, kIdentificationAddress, kIdentificationSize);
    identity.capabilities = access.ReadByteFromMem(kCapabilityAddress);
    if (m_driver.Failure() && m_isNamed)
        throw ReadingFailed(*m_driver.Failure());
    if (m_driver.Failure())
        identity.identification.clear();
    for (int i = 1; i <= access.DirectorySize(); ++i) {
        const ConfigDirEntry& entry = *access.DirectoryItem(static_cast<Integer>(i));
        identity.directory.emplace_back(entry.ModuleType(), entry.StartAddress());
    }
    return identity;
}

KeyboardContent Session::ReadContent(const Configuration& configuration) {
    KeyboardContent content;
    content.identity = IdentityAsFound();
    Stretches known;
    for (const auto& section : configuration.Sections()) {
        if (!Has(*section))
            continue;
        for (const PlacedArea& area : Areas(*section))
            AddPieces(content, known, area.requestedAs, section->Info().key, area.address,
                      area.size);
    }
    constexpr Area kGuid{MODULE_GUID, kGuidSize, 0};
    if (AreaAddress(kGuid) != -1)
        AddPieces(content, known, kGuid.module, "", AreaAddress(kGuid), kGuid.size);
    ReadPieces(content);
    return content;
}

KeyboardContent Session::ReadPlaces(KeyboardContent places) {
    places.identity = ReadIdentity();
    ReadPieces(places);
    return places;
}

void Session::ReadPieces(KeyboardContent& content) {
    Run(Error(Cause::ReadingFailed), [&] {
        const TransferEnd end{m_access};
        m_access.DataTransferPrepare();
        for (const ContentPiece& piece : content.pieces)
            m_access.MemRequestAdd(piece.module, piece.address, piece.Size());
        Load();
        for (ContentPiece& piece : content.pieces)
            m_access.ReadFromMemory(piece.bytes, piece.address, piece.Size());
    });
    content.UpdateGuid();
}

KeyboardContent Session::ReadAgain(const KeyboardContent& expected) {
    KeyboardContent content = expected;
    content.identity = ReadIdentity();
    Run(Error(Cause::ReadingFailed), [&] {
        const TransferEnd end{m_access};
        m_access.DataTransferPrepare();
        // The image may still hold what is expected: a transfer that does nothing must not pass.
        for (ContentPiece& piece : content.pieces) {
            Complement(piece.bytes);
            m_access.WriteIntoMemory(piece.bytes, piece.address, piece.Size());
            m_access.MemRequestAdd(piece.module, piece.address, piece.Size());
        }
        if (m_driver.Failure() || m_access.Upload() != 0)
            return;
        for (ContentPiece& piece : content.pieces)
            m_access.ReadFromMemory(piece.bytes, piece.address, piece.Size());
    });
    content.UpdateGuid();
    return content;
}

void Session::PrepareSending(const std::vector<ByteRange>& ranges) {
    try {
        Run(Error(Cause::WritingFailed), [&] {
            m_access.DataTransferPrepare();
            for (const ByteRange& range : ranges) {
                m_access.WriteIntoMemory(range.to, range.address, range.Size());
                m_access.MemRequestAdd(range.module, range.address, range.Size());
            }
        });
    } catch (...) {
        m_access.DataTransferFixUp();
        throw;
    }
}

void Session::Send() {
    Run(Error(Cause::WritingFailed), [&] {
        const TransferEnd end{m_access};
        (void)m_access.Download(); // its status is watched
    });
}

} // namespace qx::host
