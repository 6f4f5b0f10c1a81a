#include "simulator/SimulatedDriver.h"

#include "qxcontrols/common/LittleEndian.h"
#include "simulator/FixedAreas.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace qx::sim {

namespace {

// The keyboard's memory, after a range check.
const std::string& Checked(const std::string& memory, Long lAddress, std::size_t size) {
    if (size > memory.size() || !IsInMemory(lAddress, static_cast<Long>(size)))
        throw std::out_of_range(std::to_string(size) + " bytes at " + std::to_string(lAddress) +
                                " exceed the keyboard's memory");
    return memory;
}

} // namespace

SimulatedDriver::SimulatedDriver(std::filesystem::path file, const std::string& modelNameOrPath)
    : m_file(std::move(file)), m_newModel(KeyboardModel::ByName(modelNameOrPath)) {}

const KeyboardModel& SimulatedDriver::Model() const {
    if (!m_keyboard)
        throw std::logic_error("the keyboard is not open");
    return m_keyboard->Model();
}

std::string SimulatedDriver::Layout() const {
    return m_keyboard ? m_keyboard->Model().layout : std::string();
}

void SimulatedDriver::FailCall(int n, Long lStatus, bool forEver) {
    m_fault.reset();
    if (n > 0)
        m_fault = RequestedFault{m_calls + n, lStatus, forEver};
}

std::string SimulatedDriver::Memory(Long lAddress, Long lSize) const {
    if (!m_keyboard)
        throw std::logic_error("the keyboard is not open");
    const auto size = static_cast<std::size_t>(std::max<Long>(lSize, 0));
    return Checked(m_keyboard->Stored().memory, lAddress, size)
        .substr(static_cast<std::size_t>(lAddress), size);
}

void SimulatedDriver::Poke(Long lAddress, std::string_view bytes) {
    if (!m_keyboard)
        throw std::logic_error("the keyboard is not open");
    KeyboardMemory::Content content = m_keyboard->Stored();
    Checked(content.memory, lAddress, bytes.size());
    content.memory.replace(static_cast<std::size_t>(lAddress), bytes.size(), bytes);
    m_keyboard->Store(std::move(content));
}

Long SimulatedDriver::Value(Long lRefused, const std::function<Long()>& function) {
    ++m_calls;
    if (m_isBusy)
        return lRefused;
    m_problem = {};
    m_faults.clear();
    if (m_fault && (m_calls == m_fault->call || (m_fault->forEver && m_calls > m_fault->call)))
        return m_fault->status;
    struct Busy {
        bool& flag;
        explicit Busy(bool& isBusy) : flag(isBusy) { flag = true; }
        ~Busy() { flag = false; }
    } const busy(m_isBusy);
    return function();
}

Long SimulatedDriver::Call(const std::function<Status()>& function) {
    return Value(static_cast<Long>(Status::Busy), [&] {
        Status status = Status::FileFailed;
        try {
            status = function();
        } catch (const Failure& failure) {
            status = failure.Why();
            m_problem = failure.What();
            m_faults = failure.Faults();
        } catch (const std::exception& error) {
            m_problem = files::ProblemOf(error);
        } catch (...) { // progress handlers may throw anything
        }
        return static_cast<Long>(status);
    });
}

Long SimulatedDriver::CallOpen(const std::function<Status()>& function) {
    return Call([&] { return m_keyboard ? function() : Status::NotOpen; });
}

Long SimulatedDriver::CallWithLayers(const std::function<Status()>& function) {
    return CallOpen([&] {
        return m_keyboard->Model().Has(MODULE_LAYERED_FUNCKEYS) ? function() : Status::NoSuchLayer;
    });
}

// The identification belongs to the keyboard itself; transfers do not read or write it.
void SimulatedDriver::PutIdentification() {
    const KeyboardModel& model = m_keyboard->Model();
    (void)Write(kIdentification.address, model.IdentificationBlock());
    (void)Write(kCapabilities.address, LittleEndian(model.capabilities));
}

std::int32_t SimulatedDriver::QXCFG_SetCommandDelta(std::int32_t /*lDelta*/) {
    return Call([] { return Status::Ok; });
}

std::int32_t SimulatedDriver::QXCFG_Init() {
    return Call([&] {
        if (!m_keyboard)
            m_keyboard.emplace(m_file, m_newModel);
        m_image.assign(static_cast<std::size_t>(kMemorySize), '\0');
        PutIdentification();
        m_requests.clear();
        m_hasBadRequest = false;
        m_positionMode = false;
        return Status::Ok;
    });
}

std::int32_t SimulatedDriver::QXCFG_ConfigDirectorySize() {
    return Value(0, [&] {
        return m_keyboard ? static_cast<Long>(m_keyboard->Model().directory.size()) : 0;
    });
}

std::int32_t SimulatedDriver::QXCFG_ConfigDirectoryGetEntry(std::int16_t nIndex,
                                                            std::int32_t* module,
                                                            std::int32_t* address) {
    return CallOpen([&] {
        const auto& directory = m_keyboard->Model().directory;
        if (module == nullptr || address == nullptr)
            return Status::NoArgument;
        if (nIndex < 0 || static_cast<std::size_t>(nIndex) >= directory.size())
            return Status::NoSuchEntry;
        *module = directory[static_cast<std::size_t>(nIndex)].module;
        *address = directory[static_cast<std::size_t>(nIndex)].address;
        return Status::Ok;
    });
}

Status SimulatedDriver::Read(Long lAddress, char* to, Long lSize) const {
    if (!IsInMemory(lAddress, lSize))
        return Status::OutsideMemory;
    m_image.copy(to, static_cast<std::size_t>(lSize), static_cast<std::size_t>(lAddress));
    return Status::Ok;
}

Status SimulatedDriver::Write(Long lAddress, std::string_view bytes) {
    if (!IsInMemory(lAddress, static_cast<Long>(bytes.size())))
        return Status::OutsideMemory;
    m_image.replace(static_cast<std::size_t>(lAddress), bytes.size(), bytes);
    return Status::Ok;
}

std::int32_t SimulatedDriver::QXCFG_ImageRead(std::int32_t lAddress, char* buffer,
                                              std::int32_t lSize) {
    return CallOpen(
        [&] { return buffer != nullptr ? Read(lAddress, buffer, lSize) : Status::NoArgument; });
}

std::int32_t SimulatedDriver::QXCFG_ImageWrite(std::int32_t lAddress, const char* buffer,
                                               std::int32_t lSize) {
    return CallOpen([&] {
        if (buffer == nullptr)
            return Status::NoArgument;
        if (lSize < 0)
            return Status::OutsideMemory;
        return Write(lAddress, {buffer, static_cast<std::size_t>(lSize)});
    });
}

template <typename Number>
Long SimulatedDriver::ReadNumber(Long lAddress, Number* value) {
    return CallOpen([&] {
        if (value == nullptr)
            return Status::NoArgument;
        char bytes[sizeof(Number)] = {};
        const Status status = Read(lAddress, bytes, sizeof bytes);
        if (status == Status::Ok)
            *value = FromLittleEndian<Number>(bytes);
        return status;
    });
}

template <typename Number>
Long SimulatedDriver::WriteNumber(Long lAddress, Number value) {
    return CallOpen([&] { return Write(lAddress, LittleEndian(value)); });
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

std::int32_t SimulatedDriver::QXCFG_ChipcardIOParam(std::int16_t /*nBaudRateIndex*/,
                                                    std::int16_t /*nComPort*/) {
    return CallOpen([] { return Status::Ok; });
}

std::int32_t SimulatedDriver::QXCFG_SelectLayer(std::int16_t nLayer) {
    return CallWithLayers([&] {
        if (nLayer < 0 || nLayer >= kFuncKeyLayers)
            return Status::NoSuchLayer;
        m_layer = nLayer;
        return Status::Ok;
    });
}

std::int32_t SimulatedDriver::QXCFG_EnableLayerSelection() {
    return CallWithLayers([] { return Status::Ok; });
}

std::int32_t SimulatedDriver::QXCFG_DisableLayerSelection() {
    return CallWithLayers([] { return Status::Ok; });
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
    constexpr Long kNoPositionMode = -1;
    return Value(kNoPositionMode, [&]() -> Long {
        if (!m_positionMode)
            return kNoPositionMode;
        if (m_positionKeys.empty())
            return 0;
        const Long key = m_positionKeys.front();
        m_positionKeys.pop_front();
        return key;
    });
}

} // namespace qx::sim
