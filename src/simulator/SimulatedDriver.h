// SimulatedDriver: a keyboard driver without a keyboard.
//
// It behaves as the real one does towards its host: the image is apart from the keyboard's memory
// and is lost with the driver; the memory stays, in a file. One thread, one call at a time: what is
// called from a progress message is refused. Faults can be asked for, to see how a host takes them.
#pragma once

#include "qxcontrols/device/ConfigDriver.h"
#include "simulator/KeyboardMemory.h"
#include "simulator/SealedFile.h"
#include "simulator/Status.h"

#include <deque>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace qx::sim {

class SimulatedDriver : public ConfigDriver {
public:
    // The keyboard in `file`, which is made from the model, a built-in one or a file, when it does
    // not exist. Throws std::runtime_error when there is no such model or it is invalid. The
    // keyboard itself is opened by QXCFG_Init and stays so until the driver is gone; until then
    // most functions give Status::NotOpen. Another QXCFG_Init empties the image.
    SimulatedDriver(std::filesystem::path file, const std::string& modelNameOrPath);

#define QX_DRIVER_FUNCTION(name, parameters, arguments, result)                                    \
    std::int32_t name parameters override;
#include "qxcontrols/device/DriverFunctions.def"
    void QXSIM_SetMessagePoster(MessagePoster post) override {
        m_post = post;
    }

    // Why the last call failed, in words; empty after one that did not.
    [[nodiscard]] const std::string& LastError() const {
        return m_lastError;
    }
    // The open keyboard's model. Throws std::logic_error while it is not open.
    [[nodiscard]] const KeyboardModel& Model() const;
    // The selected layer of the function keys; 0 at first.
    [[nodiscard]] Integer Layer() const {
        return m_layer;
    }
    // File name of the keyboard's layout; empty while it is not open.
    [[nodiscard]] std::string Layout() const;

    // Faults. The n-th call of a QXCFG function from now, n from 1, does nothing and gives the
    // status; with forEver so do all later ones. A later request replaces an earlier one; n 0 ends
    // it.
    void FailCall(int n, Long lStatus, bool forEver);
    // The next transfer breaks off after so many bytes, which stay moved; a negative number ends
    // the request.
    void StopTransferAfter(Long lBytes);
    // One of the next transfers lies: it reports success, but is not what it should have been. The
    // seed alone decides how - nothing is written, less is written, one bit is written wrongly, or
    // less is read - and whether the first or the second transfer of that direction does so. A
    // later request replaces an earlier one.
    void LieFrom(std::uint32_t seed);
    void EndLies() {
        m_lie = {};
    }
    // Presses a key in position-programming mode: the next question for a key reports it.
    void QueuePositionKey(Long lPositionCode) {
        m_positionKeys.push_back(lPositionCode);
    }
    // How many QXCFG functions have been called.
    [[nodiscard]] int Calls() const {
        return m_calls;
    }

    // Bytes of the open keyboard's memory; a change is stored at once. Throw std::out_of_range
    // outside the memory, std::logic_error while the keyboard is not open.
    [[nodiscard]] std::string Memory(Long lAddress, Long lSize) const;
    void Poke(Long lAddress, std::string_view bytes);

private:
    struct Stretch {
        Long address;
        Long size;
    };
    struct RequestedFault {
        int call;
        Long status;
        bool forEver;
    };

    enum class LieKind { None, DroppedWrite, ShortWrite, FlippedBit, ShortRead };
    struct Lie {
        LieKind kind = LieKind::None;
        int transfersBefore = 0;  // of its direction
        std::uint32_t offset = 0; // of the byte, modulo the transfer's size
        int bit = 0;
    };

    // Every QXCFG function runs in Value, which counts it and gives a fault that is due; `lRefused`
    // is its result when it is called during another call.
    Long Value(Long lRefused, const std::function<Long()>& function);
    // The same for a function that gives a status: what is thrown becomes one.
    Long Call(const std::function<Status()>& function);
    // The same for a function that needs the open keyboard, or one with layers.
    Long CallOpen(const std::function<Status()>& function);
    Long CallWithLayers(const std::function<Status()>& function);

    void PutIdentification();
    Status Read(Long lAddress, char* to, Long lSize) const;
    Status Write(Long lAddress, std::string_view bytes);
    template <typename Number>
    Long ReadNumber(Long lAddress, Number* value);
    template <typename Number>
    Long WriteNumber(Long lAddress, Number value);

    Status Transfer(const std::string& from, std::string& to, bool isWrite);
    // The lie that this transfer tells, if any.
    [[nodiscard]] Lie TakeLie(bool isWrite);
    // The address of a byte of the transfer that the requests make.
    [[nodiscard]] std::size_t AddressInTransfer(std::int64_t offset) const;
    void PostProgress(Long lPercent) const;

    // The file that a caller means, which is not that of the keyboard. Throws Failure.
    [[nodiscard]] std::filesystem::path FileOf(const char* name) const;
    Status SaveFile(const char* name, const SealedKind& kind,
                    const std::vector<std::string>& parts) const;
    Long LoadProgram(const char* name, const SealedKind& kind,
                     std::string KeyboardMemory::Content::*program);

    std::filesystem::path m_file;
    KeyboardModel m_newModel; // of a keyboard that is made
    std::optional<KeyboardMemory> m_keyboard;
    std::string m_image;
    std::vector<Stretch> m_requests;
    bool m_hasBadRequest = false; // one that reaches out of the memory; it fails the transfer
    MessagePoster m_post = nullptr;
    Long m_window = 0, m_message = 0, m_what = 0;
    Integer m_layer = 0;
    bool m_positionMode = false;
    std::deque<Long> m_positionKeys;

    int m_calls = 0;
    bool m_isBusy = false;
    std::optional<RequestedFault> m_fault;
    std::optional<Long> m_stopAfter;
    Lie m_lie;
    std::string m_lastError;
};

} // namespace qx::sim
