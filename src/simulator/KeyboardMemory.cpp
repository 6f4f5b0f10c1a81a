#include "simulator/KeyboardMemory.h"

#include "files/SystemTexts.h"
#include "qxcontrols/keyprog/LayeredFuncKeyBlocks.h"
#include "qxcontrols/pos/POSModuleBlock.h"
#include "qxcontrols/readers/BarcodeBlocks.h"
#include "qxcontrols/readers/MagneticBlocks.h"
#include "simulator/SealedFile.h"
#include "simulator/Status.h"

#include <fstream>
#include <utility>

namespace qx::sim {

namespace {

std::string FactoryBarcodeConfig() {
    BarcodeSettings settings;
    SetBarcodeLimits(settings);
    SetBarcodeDefaults(settings);
    return EncodeBarcodeConfig(settings);
}

std::string FactoryMagnetConfig() {
    constexpr char kOutputDelay = 6;
    constexpr std::string_view kSwitches = "\xFF\x0F\x7E"; // all enabled
    static_assert(kSwitches.size() == static_cast<std::size_t>(kMagneticSwitchesSize));
    std::string area(static_cast<std::size_t>(kMagneticSwitchesOffset), '\0');
    area[0] = kOutputDelay;
    return area += kSwitches;
}

std::string FactoryGuid() {
    return GuidToBytes(GuidCreator().CreateSafeGuid());
}

std::string FactoryPOS() {
    return EncodePOSModuleBlock(POSKeyboard());
}

// The factory contents of a module's area, where not all zeros.
struct FactoryArea {
    KeyboardModuleIDs module;
    std::string (*make)();
};
constexpr FactoryArea kFactoryAreas[] = {
    {MODULE_MAGNET_CONFIG, FactoryMagnetConfig},
    {MODULE_BARCODE_CONFIG, FactoryBarcodeConfig},
    {MODULE_GUID, FactoryGuid},
    {MODULE_POS, FactoryPOS},
};

KeyboardMemory::Content FactoryContent(const KeyboardModel& model) {
    KeyboardMemory::Content content;
    content.memory.assign(static_cast<std::size_t>(KeyboardMemory::kSize), '\0');
    for (const KeyboardModel::Entry& entry : model.directory)
        for (const FactoryArea& factory : kFactoryAreas)
            if (factory.module == entry.module) {
                const std::string area = factory.make();
                content.memory.replace(static_cast<std::size_t>(entry.address), area.size(), area);
            }
    content.program = model.name + " program " + model.program;
    content.chipcardProgram = model.name + " chipcard program " + model.program;
    return content;
}

// The file, if it is missing or a regular one. Any other is refused before a lock file is created.
const std::filesystem::path& Ordinary(const std::filesystem::path& file) {
    std::error_code ignored;
    const auto status = std::filesystem::status(file, ignored);
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status))
        throw Failure(Status::KeyboardInvalid, {.deed = files::Deed::Read,
                                                .subject = files::TextOf(file),
                                                .obstacle = files::Obstacle::NotOrdinary});
    return file;
}

} // namespace

struct KeyboardMemory::Parts {
    KeyboardModel model;
    Content content;
};

KeyboardMemory::KeyboardMemory(const std::filesystem::path& file, const KeyboardModel& model)
    : m_file(Ordinary(file)), m_lock(file), m_model(model) {
    if (!m_lock.TryLock())
        throw Failure(Status::KeyboardInUse, {.deed = files::Deed::Read,
                                              .subject = files::TextOf(file),
                                              .obstacle = files::Obstacle::InUse});
    if (!std::filesystem::exists(file)) {
        Store(FactoryContent(model));
        return;
    }
    Parts parts = PartsOf(file);
    m_model = std::move(parts.model);
    m_content = std::move(parts.content);
}

bool KeyboardMemory::IsIn(const std::filesystem::path& file) {
    std::error_code ignored;
    if (!std::filesystem::is_regular_file(file, ignored))
        return false;
    std::string letters(kKeyboardFile.letters.size(), '\0');
    std::ifstream(file, std::ios::binary)
        .read(letters.data(), static_cast<std::streamsize>(letters.size()));
    return letters == kKeyboardFile.letters;
}

KeyboardModel KeyboardMemory::ModelIn(const std::filesystem::path& file) {
    return KeyboardModel::FromJson(FirstPart(kKeyboardFile, file));
}

KeyboardMemory::Parts KeyboardMemory::PartsOf(const std::filesystem::path& file) {
    auto parts = UnsealFile(kKeyboardFile, file, Status::KeyboardInvalid);
    const std::size_t size = parts[1].size();
    if (size != static_cast<std::size_t>(kSize))
        throw Failure(Status::KeyboardInvalid, {.deed = files::Deed::Read,
                                                .subject = files::TextOf(file),
                                                .obstacle = files::Obstacle::WrongMemory,
                                                .number = static_cast<std::int64_t>(size)});
    try {
        return {KeyboardModel::FromJson(std::move(parts[0])),
                {std::move(parts[1]), std::move(parts[2]), std::move(parts[3])}};
    } catch (const json::FaultError& error) {
        throw Failure(Status::KeyboardInvalid,
                      {.deed = files::Deed::Read,
                       .subject = files::TextOf(file),
                       .obstacle = files::Obstacle::InvalidModel},
                      error.Faults());
    }
}

void KeyboardMemory::Store(Content content) {
    files::WriteFileAtomically(
        m_file, Seal(kKeyboardFile,
                     {m_model.json, content.memory, content.program, content.chipcardProgram}));
    m_content = std::move(content);
}

} // namespace qx::sim
