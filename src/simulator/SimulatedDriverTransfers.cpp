// The transfers of SimulatedDriver: requests, progress, and injected faults.
#include "simulator/FixedAreas.h"
#include "simulator/SimulatedDriver.h"

#include <algorithm>
#include <cstdint>
#include <random>
#include <utility>

namespace qx::sim {

namespace {

constexpr Long kTransferStep = 256; // bytes between two progress messages

} // namespace

void SimulatedDriver::StopTransferAfter(Long lBytes) {
    m_stopAfter.reset();
    if (lBytes >= 0)
        m_stopAfter = lBytes;
}

void SimulatedDriver::LieFrom(std::uint32_t seed) {
    std::mt19937 random(seed);
    const auto below = [&](std::uint32_t end) { return static_cast<int>(random() % end); };
    constexpr LieKind kKinds[] = {LieKind::DroppedWrite, LieKind::ShortWrite, LieKind::FlippedBit,
                                  LieKind::ShortRead};
    m_lie.kind = kKinds[below(4)];
    m_lie.transfersBefore = below(2);
    m_lie.bit = below(8);
    m_lie.offset = static_cast<std::uint32_t>(random());
}

SimulatedDriver::Lie SimulatedDriver::TakeLie(bool isWrite) {
    const bool isDue = m_lie.kind != LieKind::None &&
                       isWrite == (m_lie.kind != LieKind::ShortRead) &&
                       m_lie.transfersBefore-- == 0;
    return isDue ? std::exchange(m_lie, {}) : Lie();
}

std::int32_t SimulatedDriver::QXCFG_MemRequestClean() {
    return CallOpen([&] {
        m_requests.clear();
        m_hasBadRequest = false;
        return Status::Ok;
    });
}

std::int32_t SimulatedDriver::QXCFG_MemRequestAdd(std::int16_t /*nModule*/, std::int32_t lAddress,
                                                  std::int32_t lSize) {
    return CallOpen([&] {
        if (!IsInMemory(lAddress, lSize)) {
            m_hasBadRequest = true; // callers may ignore this status
            return Status::OutsideMemory;
        }
        m_requests.push_back({lAddress, lSize});
        return Status::Ok;
    });
}

void SimulatedDriver::PostProgress(Long lPercent) const {
    if (m_post != nullptr && m_window != 0)
        m_post(m_window, m_message, m_what, lPercent);
}

std::size_t SimulatedDriver::AddressInTransfer(std::int64_t offset) const {
    auto request = m_requests.begin();
    for (; offset >= request->size; ++request)
        offset -= request->size;
    return static_cast<std::size_t>(request->address + offset);
}

Status SimulatedDriver::Transfer(const std::string& from, std::string& to, bool isWrite) {
    if (m_hasBadRequest)
        return Status::OutsideMemory;
    std::int64_t total = 0;
    for (const Stretch& request : m_requests)
        total += request.size;
    const std::optional<Long> stopAfter = std::exchange(m_stopAfter, {});
    const std::int64_t end = std::min<std::int64_t>(total, stopAfter.value_or(total));
    const Lie lie = total > 0 ? TakeLie(isWrite) : Lie();
    const std::int64_t lieOffset = total > 0 ? lie.offset % total : 0;
    std::int64_t kept = end; // bytes that actually arrive
    if (lie.kind == LieKind::DroppedWrite)
        kept = 0;
    else if (lie.kind == LieKind::ShortWrite || lie.kind == LieKind::ShortRead)
        kept = lieOffset;
    std::int64_t moved = 0;
    PostProgress(0);
    for (const Stretch& request : m_requests)
        for (Long done = 0; done < request.size && moved < end;) {
            const auto step = static_cast<Long>(
                std::min<std::int64_t>({kTransferStep, request.size - done, end - moved}));
            const Long start = request.address + done;
            const auto address = static_cast<std::size_t>(start);
            const auto arrives =
                static_cast<std::size_t>(std::clamp<std::int64_t>(kept - moved, 0, step));
            to.replace(address, arrives, from, address, arrives);
            done += step;
            moved += step;
            if (moved < total) // 100 is posted once the transfer is complete and stored
                PostProgress(static_cast<Long>(moved * 100 / total));
        }
    if (lie.kind == LieKind::FlippedBit && lieOffset < moved) {
        char& byte = to[AddressInTransfer(lieOffset)];
        byte = static_cast<char>(byte ^ (1 << lie.bit));
    }
    return moved == total ? Status::Ok : Status::TransferStopped;
}

std::int32_t SimulatedDriver::QXCFG_ImageLoad() {
    return CallOpen([&] {
        const Status status = Transfer(m_keyboard->Stored().memory, m_image, false);
        PutIdentification();
        if (status == Status::Ok)
            PostProgress(100);
        return status;
    });
}

std::int32_t SimulatedDriver::QXCFG_ImageSave() {
    return CallOpen([&] {
        KeyboardMemory::Content content = m_keyboard->Stored();
        const Status status = Transfer(m_image, content.memory, true);
        m_keyboard->Store(std::move(content));
        if (status == Status::Ok)
            PostProgress(100);
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

} // namespace qx::sim
