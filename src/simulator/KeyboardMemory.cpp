#include "simulator/KeyboardMemory.h"

#include "qxcontrols/platform/GuidCreator.h"
#include "qxcontrols/pos/POSModuleBlock.h"
#include "qxcontrols/readers/BarcodeBlocks.h"
#include "qxcontrols/readers/MagneticBlocks.h"
#include "simulator/SealedFile.h"

namespace qx::sim {

namespace {

constexpr std::size_t kParts = 4; // model, memory, program, chipcard program

std::string FactoryBarcodeConfig() {
    BarcodeSettings settings;
    SetBarcodeLimits(settings);
    SetBarcodeDefaults(settings);
    return EncodeBarcodeConfig(settings);
}

std::string FactoryMagnetConfig() {
    constexpr char kOutputDelay = 6;
    MagneticSettings settings;
    for (MagneticTrack& track : settings.tracks)
        SetTrackDefaults(track);
    std::string area(static_cast<std::size_t>(kMagneticSwitchesOffset), '\0');
    area[0] = kOutputDelay;
    return area + EncodeMagneticSwitches(settings);
}

std::string FactoryGuid() {
    const Guid guid = GuidCreator().CreateSafeGuid();
    std::string area;
    for (unsigned shift = 0; shift < 32; shift += 8)
        area += static_cast<char>(static_cast<Byte>(guid.first >> shift));
    for (const std::uint16_t field : {guid.second, guid.third})
        for (unsigned shift = 0; shift < 16; shift += 8)
            area += static_cast<char>(static_cast<Byte>(field >> shift));
    for (const Byte byte : guid.rest)
        area += static_cast<char>(byte);
    return area;
}

// What a module's area holds at first, where that is not all zeros.
struct FactoryContent {
    KeyboardModuleIDs module;
    std::string (*make)();
};

constexpr FactoryContent kFactoryContents[] = {
    {MODULE_MAGNET_CONFIG, FactoryMagnetConfig},
    {MODULE_BARCODE_CONFIG, FactoryBarcodeConfig},
    {MODULE_GUID, FactoryGuid},
    {MODULE_POS, [] { return EncodePOSModuleBlock(POSKeyboard()); }},
};

} // namespace

std::string FactoryMemory(const KeyboardModel& model) {
    std::string memory(static_cast<std::size_t>(KeyboardMemory::kSize), '\0');
    for (const KeyboardModel::Entry& entry : model.directory)
        for (const FactoryContent& content : kFactoryContents) {
            if (content.module != entry.module)
                continue;
            const std::string area = content.make();
            const auto address = static_cast<std::size_t>(entry.address);
            if (address + area.size() > memory.size())
                throw std::runtime_error("/directory: " + std::string(NameOf(entry.module)) +
                                         " reaches beyond the memory");
            memory.replace(address, area.size(), area);
        }
    return memory;
}

KeyboardMemory::KeyboardMemory(const std::filesystem::path& file, const std::string& modelText)
    : m_file(file), m_lock(file), m_modelText(modelText) {
    if (!m_lock.TryLock())
        throw KeyboardInUse(file.string() + " is being used by another program");
    if (std::filesystem::exists(file))
        Load();
    else
        MakeNew();
}

void KeyboardMemory::MakeNew() {
    m_model = KeyboardModel::FromJson(m_modelText);
    memory = FactoryMemory(m_model);
    Save();
}

void KeyboardMemory::Load() {
    const std::string bytes = files::ReadFile(m_file);
    try {
        auto parts = Split(Unseal(kKeyboardFile, bytes), kParts);
        m_modelText = std::move(parts[0]);
        memory = std::move(parts[1]);
        program = std::move(parts[2]);
        chipcardProgram = std::move(parts[3]);
        if (memory.size() != static_cast<std::size_t>(kSize))
            throw std::runtime_error("the memory has " + std::to_string(memory.size()) + " bytes");
        m_model = KeyboardModel::FromJson(m_modelText);
    } catch (const std::exception& error) {
        throw KeyboardFileInvalid(m_file.string() + ": not usable as a simulated keyboard: " +
                                  error.what());
    }
}

void KeyboardMemory::Save() const {
    files::WriteFileAtomically(
        m_file, Seal(kKeyboardFile, Join({m_modelText, memory, program, chipcardProgram})));
}

} // namespace qx::sim
