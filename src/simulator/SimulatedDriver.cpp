#include "simulator/SimulatedDriver.h"

#include "simulator/SealedFile.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <type_traits>
#include <utility>

namespace qx::sim {

namespace {

constexpr Long kIdentificationAddress = 0x7FC0;
constexpr Long kCapabilityAddress = 0x7FF;
constexpr Long kTransferStep = 256; // bytes between two progress messages
constexpr Integer kLayers = 10;

bool IsInMemory(Long lAddress, Long lSize) {
    return lAddress >= 0 && lSize >= 0 && lAddress <= KeyboardMemory::kSize - lSize;
}

} // namespace

SimulatedDriver::SimulatedDriver(std::filesystem::path file, const std::string& modelNameOrPath)
    : m_file(std::move(file)), m_modelText(KeyboardModel::TextOf(modelNameOrPath)) {
    try {
        (void)FactoryMemory(KeyboardModel::FromJson(m_modelText));
    } catch (const std::exception& error) {
        throw std::runtime_error("the model " + modelNameOrPath + " is invalid: " + error.what());
    }
}

std::string SimulatedDriver::Layout() const {
    return m_keyboard ? m_keyboard->Model().layout : std::string();
}

void SimulatedDriver::FailCall(int n, Long lStatus, bool forEver) {
    m_fault = RequestedFault{m_calls + n, lStatus, forEver};
}

std::string SimulatedDriver::Memory(Long lAddress, Long lSize) const {
    return m_keyboard.value().memory.substr(static_cast<std::size_t>(lAddress),
                                            static_cast<std::size_t>(lSize));
}

void SimulatedDriver::Poke(Long lAddress, std::string_view bytes) {
    m_keyboard.value().memory.replace(static_cast<std::size_t>(lAddress), bytes.size(), bytes);
    m_keyboard->Save();
}

Long SimulatedDriver::Value(const std::function<Long()>& function) {
    ++m_calls;
    m_lastError.clear();
    if (m_fault && (m_calls == m_fault->call || (m_fault->forEver && m_calls > m_fault->call))) {
        m_lastError = StatusText(static_cast<Long>(Status::Requested));
        return m_fault->status;
    }
    return function();
}

Long SimulatedDriver::Call(const std::function<Status()>& function) {
    return Value([&] {
        Status status = Status::FileFailed;
        try {
            status = function();
        } catch (const KeyboardInUse& error) {
            status = Status::KeyboardInUse;
            m_lastError = error.what();
        } catch (const KeyboardFileInvalid& error) {
            status = Status::KeyboardInvalid;
            m_lastError = error.what();
        } catch (const std::exception& error) {
            m_lastError = error.what();
        }
        if (status != Status::Ok && m_lastError.empty())
            m_lastError = StatusText(static_cast<Long>(status));
        return static_cast<Long>(status);
    });
}

Long SimulatedDriver::CallOpen(const std::function<Status()>& function) {
    return Call([&] { return m_keyboard ? function() : Status::NotOpen; });
}

std::int32_t SimulatedDriver::QXCFG_SetCommandDelta(std::int32_t /*lDelta*/) {
    return Call([] { return Status::Ok; });
}

std::int32_t SimulatedDriver::QXCFG_Init() {
    return Call([&] {
        if (!m_keyboard)
            m_keyboard.emplace(m_file, m_modelText);
        const KeyboardModel& model = m_keyboard->Model();
        const std::string identification = model.IdentificationBlock();
        m_image.assign(static_cast<std::size_t>(KeyboardMemory::kSize), '\0');
        m_image.replace(kIdentificationAddress, identification.size(), identification);
        m_image[kCapabilityAddress] = static_cast<char>(model.capabilities);
        m_requests.clear();
        m_positionMode = false;
        return Status::Ok;
    });
}

std::int32_t SimulatedDriver::QXCFG_ConfigDirectorySize() {
    return Value([&] {
        return m_keyboard ? static_cast<Long>(m_keyboard->Model().directory.size()) : 0;
    });
}

std::int32_t SimulatedDriver::QXCFG_ConfigDirectoryGetEntry(std::int16_t nIndex,
                                                            std::int32_t* module,
                                                            std::int32_t* address) {
    return CallOpen([&] {
        const auto& directory = m_keyboard->Model().directory;
        if (nIndex < 0 || static_cast<std::size_t>(nIndex) >= directory.size())
            return Status::NoSuchEntry;
        *module = directory[static_cast<std::size_t>(nIndex)].module;
        *address = directory[static_cast<std::size_t>(nIndex)].address;
        return Status::Ok;
    });
}

Status SimulatedDriver::Read(Long lAddress, void* to, Long lSize) {
    if (!IsInMemory(lAddress, lSize))
        return Status::OutsideMemory;
    std::memcpy(to, m_image.data() + lAddress, static_cast<std::size_t>(lSize));
    return Status::Ok;
}

Status SimulatedDriver::Write(Long lAddress, const void* from, Long lSize) {
    if (!IsInMemory(lAddress, lSize))
        return Status::OutsideMemory;
    std::memcpy(m_image.data() + lAddress, from, static_cast<std::size_t>(lSize));
    return Status::Ok;
}

std::int32_t SimulatedDriver::QXCFG_ImageRead(std::int32_t lAddress, char* buffer,
                                              std::int32_t lSize) {
    return CallOpen([&] { return Read(lAddress, buffer, lSize); });
}

std::int32_t SimulatedDriver::QXCFG_ImageWrite(std::int32_t lAddress, const char* buffer,
                                               std::int32_t lSize) {
    return CallOpen([&] { return Write(lAddress, buffer, lSize); });
}

// Numbers are little-endian, on every machine.
template <typename Number>
Long SimulatedDriver::ReadNumber(Long lAddress, Number* value) {
    return CallOpen([&] {
        Byte bytes[sizeof(Number)];
        const Status status = Read(lAddress, bytes, sizeof bytes);
        if (status != Status::Ok)
            return status;
        std::uint32_t number = 0;
        for (std::size_t i = 0; i < sizeof bytes; ++i)
            number |= std::uint32_t{bytes[i]} << (8 * i);
        *value = static_cast<Number>(static_cast<std::make_unsigned_t<Number>>(number));
        return Status::Ok;
    });
}

template <typename Number>
Long SimulatedDriver::WriteNumber(Long lAddress, Number value) {
    return CallOpen([&] {
        Byte bytes[sizeof(Number)];
        for (std::size_t i = 0; i < sizeof bytes; ++i)
            bytes[i] = static_cast<Byte>(static_cast<std::make_unsigned_t<Number>>(value) >> (8 * i));
        return Write(lAddress, bytes, sizeof bytes);
    });
}

std::int32_t SimulatedDriver::QXCFG_ImageReadByte(std::int32_t lAddress, std::uint8_t* value) {
    return ReadNumber(lAddress, value);
}

std::int32_t SimulatedDriver::QXCFG_ImageWriteByte(std::int32_t lAddress, std::uint8_t value) {
    return WriteNumber(lAddress, value);
}

std::int32_t SimulatedDriver::QXCFG_ImageReadInt(std::int32_t lAddress, std::int16_t* value) {
    return ReadNumber(lAddress, value);
}

std::int32_t SimulatedDriver::QXCFG_ImageWriteInt(std::int32_t lAddress, std::int16_t value) {
    return WriteNumber(lAddress, value);
}

std::int32_t SimulatedDriver::QXCFG_ImageReadLong(std::int32_t lAddress, std::int32_t* value) {
    return ReadNumber(lAddress, value);
}

std::int32_t SimulatedDriver::QXCFG_ImageWriteLong(std::int32_t lAddress, std::int32_t value) {
    return WriteNumber(lAddress, value);
}

std::int32_t SimulatedDriver::QXCFG_MemRequestClean() {
    return CallOpen([&] {
        m_requests.clear();
        return Status::Ok;
    });
}

std::int32_t SimulatedDriver::QXCFG_MemRequestAdd(std::int16_t /*nModule*/, std::int32_t lAddress,
                                                  std::int32_t lSize) {
    return CallOpen([&] {
        if (!IsInMemory(lAddress, lSize))
            return Status::OutsideMemory;
        m_requests.push_back({lAddress, lSize});
        return Status::Ok;
    });
}

void SimulatedDriver::PostProgress(Long lPercent) {
    if (m_post != nullptr && m_window != 0)
        m_post(m_window, m_message, m_what, lPercent);
}

Status SimulatedDriver::Transfer(const std::string& from, std::string& to) {
    std::int64_t total = 0;
    for (const Stretch& request : m_requests)
        total += request.size;
    const std::int64_t end =
        std::min(total, std::int64_t{std::exchange(m_stopAfter, {}).value_or(INT32_MAX)});
    std::int64_t moved = 0;
    PostProgress(0);
    for (const Stretch& request : m_requests)
        for (Long done = 0; done < request.size && moved < end;) {
            const auto step = static_cast<Long>(std::min<std::int64_t>(
                {kTransferStep, request.size - done, end - moved}));
            const auto address = static_cast<std::size_t>(request.address + done);
            to.replace(address, static_cast<std::size_t>(step), from, address,
                       static_cast<std::size_t>(step));
            done += step;
            moved += step;
            if (moved < total)
                PostProgress(static_cast<Long>(moved * 100 / total));
        }
    if (moved < total)
        return Status::TransferStopped;
    PostProgress(100);
    return Status::Ok;
}

std::int32_t SimulatedDriver::QXCFG_ImageLoad() {
    return CallOpen([&] { return Transfer(m_keyboard->memory, m_image); });
}

std::int32_t SimulatedDriver::QXCFG_ImageSave() {
    return CallOpen([&] {
        const std::string before = m_keyboard->memory;
        const Status status = Transfer(m_image, m_keyboard->memory);
        try {
            m_keyboard->Save();
        } catch (...) {
            m_keyboard->memory = before; // as the file still has it
            throw;
        }
        return status;
    });
}

std::int32_t SimulatedDriver::QXCFG_TransferNotification(std::int32_t hWindow, std::int32_t lMsg,
                                                         std::int32_t lWhat) {
    return Call([&] {
        m_window = hWindow;
        m_message = lMsg;
        m_what = lWhat;
        return Status::Ok;
    });
}

Long SimulatedDriver::SaveFile(const char* name, std::string_view kind,
                               std::string KeyboardMemory::*content) {
    return CallOpen([&] {
        if (name == nullptr || *name == '\0')
            return Status::NoFileName;
        files::WriteFileAtomically(name, Seal(kind, (*m_keyboard).*content));
        return Status::Ok;
    });
}

Long SimulatedDriver::LoadFile(const char* name, std::string_view kind,
                               std::string KeyboardMemory::*content) {
    return CallOpen([&] {
        if (name == nullptr || *name == '\0')
            return Status::NoFileName;
        const std::string bytes = files::ReadFile(name);
        std::string loaded;
        try {
            loaded = Unseal(kind, bytes);
            if (kind == kParameterFile && loaded.size() != static_cast<std::size_t>(KeyboardMemory::kSize))
                throw std::runtime_error("the parameters have another size than the memory");
        } catch (const std::exception& error) {
            m_lastError = std::string(name) + ": " + error.what();
            return Status::FileInvalid;
        }
        std::swap((*m_keyboard).*content, loaded);
        try {
            m_keyboard->Save();
        } catch (...) {
            std::swap((*m_keyboard).*content, loaded);
            throw;
        }
        return Status::Ok;
    });
}

std::int32_t SimulatedDriver::QXCFG_KeyboardRomSave(char* name) {
    return SaveFile(name, kProgramFile, &KeyboardMemory::program);
}

std::int32_t SimulatedDriver::QXCFG_KeyboardRomLoad(char* name) {
    return LoadFile(name, kProgramFile, &KeyboardMemory::program);
}

std::int32_t SimulatedDriver::QXCFG_KeyboardChipcardRomSave(char* name) {
    return SaveFile(name, kChipcardProgramFile, &KeyboardMemory::chipcardProgram);
}

std::int32_t SimulatedDriver::QXCFG_KeyboardChipcardRomLoad(char* name) {
    return LoadFile(name, kChipcardProgramFile, &KeyboardMemory::chipcardProgram);
}

std::int32_t SimulatedDriver::QXCFG_KeyboardParamSave(char* name) {
    return SaveFile(name, kParameterFile, &KeyboardMemory::memory);
}

std::int32_t SimulatedDriver::QXCFG_KeyboardParamLoad(char* name) {
    return LoadFile(name, kParameterFile, &KeyboardMemory::memory);
}

std::int32_t SimulatedDriver::QXCFG_ChipcardIOParam(std::int16_t /*nBaudRateIndex*/,
                                                    std::int16_t /*nComPort*/) {
    return CallOpen([] { return Status::Ok; });
}

std::int32_t SimulatedDriver::QXCFG_ConvertBinFileIntoRomFile(char* source, char* destination,
                                                              std::int32_t /*lParam1*/,
                                                              std::int32_t /*lParam2*/,
                                                              std::int32_t /*lParam3*/) {
    return Call([&] {
        if (source == nullptr || *source == '\0' || destination == nullptr || *destination == '\0')
            return Status::NoFileName;
        files::WriteFileAtomically(destination, Seal(kProgramFile, files::ReadFile(source)));
        return Status::Ok;
    });
}

std::int32_t SimulatedDriver::QXCFG_SelectLayer(std::int16_t nLayer) {
    return CallOpen([&] { return nLayer >= 0 && nLayer < kLayers ? Status::Ok : Status::NoSuchLayer; });
}

std::int32_t SimulatedDriver::QXCFG_EnableLayerSelection() {
    return CallOpen([] { return Status::Ok; });
}

std::int32_t SimulatedDriver::QXCFG_DisableLayerSelection() {
    return CallOpen([] { return Status::Ok; });
}

std::int32_t SimulatedDriver::QXCFG_EnablePositionMode() {
    return CallOpen([&] {
        m_positionMode = true;
        return Status::Ok;
    });
}

std::int32_t SimulatedDriver::QXCFG_DisablePositionMode() {
    return CallOpen([&] {
        m_positionMode = false;
        return Status::Ok;
    });
}

std::int32_t SimulatedDriver::QXCFG_IsPositionMode() {
    return CallOpen([&] { return m_positionMode ? Status::Ok : Status::NotPositionMode; });
}

std::int32_t SimulatedDriver::QXCFG_GetPositionKey() {
    return Value([&]() -> Long {
        if (!m_positionMode)
            return -1;
        if (m_positionKeys.empty())
            return 0;
        const Long key = m_positionKeys.front();
        m_positionKeys.pop_front();
        return key;
    });
}

} // namespace qx::sim
