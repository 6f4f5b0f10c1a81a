// The session's work with bytes: what a keyboard holds, and changed ranges of it.

#include "host/Session.h"

#include "host/Stretches.h"

namespace qx::host {

namespace {

constexpr const char* kReading = "reading from the keyboard failed";
constexpr const char* kWriting = "writing to the keyboard failed";
constexpr Long kGuidSize = 16;

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

} // namespace

KeyboardIdentity Session::ReadIdentity() {
    KeyboardIdentity identity;
    Run(kReading, [&] {
        identity.identification.resize(QXKeyboardAccess::kIdentificationSize);
        m_driver.QXCFG_ImageRead(QXKeyboardAccess::kIdentificationAddress,
                                 identity.identification.data(),
                                 QXKeyboardAccess::kIdentificationSize);
        char capabilities = 0;
        m_driver.QXCFG_ImageRead(QXKeyboardAccess::kCapabilityAddress, &capabilities, 1);
        identity.capabilities = static_cast<Byte>(capabilities);
        const auto count = static_cast<Integer>(m_driver.QXCFG_ConfigDirectorySize());
        for (Integer i = 0; i < count && !m_driver.Failure(); ++i) {
            std::int32_t module = 0;
            std::int32_t address = 0;
            m_driver.QXCFG_ConfigDirectoryGetEntry(i, &module, &address);
            identity.directory.emplace_back(
                static_cast<KeyboardModuleIDs>(static_cast<Integer>(module)), address);
        }
    });
    return identity;
}

void Session::LoadPieces(KeyboardContent& content) {
    Run(kReading, [&] {
        m_access.DataTransferPrepare();
        for (const ContentPiece& piece : content.pieces) {
            const auto size = static_cast<Long>(piece.bytes.size());
            m_driver.QXCFG_ImageWrite(piece.address, piece.bytes.data(), size);
            m_access.MemRequestAdd(piece.module, piece.address, size);
        }
        if (m_driver.Failure() || m_access.Upload() != 0)
            return m_access.DataTransferFixUp();
        for (ContentPiece& piece : content.pieces)
            m_driver.QXCFG_ImageRead(piece.address, piece.bytes.data(),
                                     static_cast<Long>(piece.bytes.size()));
        m_access.DataTransferFixUp();
    });
    content.UpdateGuid();
}

KeyboardContent Session::ReadContent(const Configuration& configuration) {
    KeyboardContent content;
    content.identity = ReadIdentity();
    Stretches known;
    for (const auto& section : configuration.Sections()) {
        if (!Has(*section))
            continue;
        for (const Area& area : section->Info().areas)
            if (AreaAddress(area) != -1)
                AddPieces(content, known, area.requestedAs, section->Info().key, AreaAddress(area),
                          area.size != 0 ? area.size : section->Control().TransferSize(true));
    }
    if (m_access.HasItem(MODULE_GUID))
        AddPieces(content, known, MODULE_GUID, "", m_access.GetBaseAddressForModule(MODULE_GUID),
                  kGuidSize);
    LoadPieces(content);
    return content;
}

KeyboardContent Session::ReadAgain(const KeyboardContent& expected) {
    KeyboardContent content = expected;
    content.identity = ReadIdentity();
    // The image may still hold what is expected: a transfer that does nothing must not pass.
    for (ContentPiece& piece : content.pieces)
        Complement(piece.bytes);
    LoadPieces(content);
    return content;
}

void Session::PrepareSending(const std::vector<ByteRange>& ranges) {
    Run(kWriting, [&] {
        m_access.DataTransferPrepare();
        for (const ByteRange& range : ranges) {
            m_driver.QXCFG_ImageWrite(range.address, range.to.data(), range.Size());
            m_access.MemRequestAdd(range.module, range.address, range.Size());
        }
    });
}

void Session::Send() {
    Run(kWriting, [&] {
        (void)m_access.Download(); // its status is watched
        m_access.DataTransferFixUp();
    });
}

} // namespace qx::host
