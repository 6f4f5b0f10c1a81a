// SimulatedDriver: a keyboard driver without a keyboard.
//
// It behaves as the real one does towards its host: the image is apart from the keyboard's memory and
// is lost with the driver; the memory stays, in a file. One thread, one call at a time. Faults can be
// asked for, to see how a host takes them.
#pragma once

#include "qxcontrols/device/ConfigDriver.h"
#include "simulator/KeyboardMemory.h"
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
    // The keyboard in `file`, which is made from the model, a shipped one or a file, when it does not
    // exist. Throws std::runtime_error when there is no such model or it is invalid. The keyboard
    // itself is opened by QXCFG_Init and stays so until the driver is gone.
    SimulatedDriver(std::filesystem::path file, const std::string& modelNameOrPath);

#define QX_DRIVER_FUNCTION(name, parameters, arguments, result) std::int32_t name parameters override;
#include "qxcontrols/device/DriverFunctions.def"
    void QXSIM_SetMessagePoster(MessagePoster post) override { m_post = post; }

    // Why the last call failed, in words; empty after one that did not.
    [[nodiscard]] const std::string& LastError() const { return m_lastError; }
    // File name of the keyboard's layout; empty while it is not open.
    [[nodiscard]] std::string Layout() const;

    // Faults. The n-th call of a QXCFG function from now, n from 1, does nothing and gives the status;
    // with forEver so do all later ones.
    void FailCall(int n, Long lStatus, bool forEver);
    // The next transfer breaks off after so many bytes, which stay moved.
    void StopTransferAfter(Long lBytes) { m_stopAfter = lBytes; }
    // A key that will have been pressed in position-programming mode.
    void QueuePositionKey(Long lPositionCode) { m_positionKeys.push_back(lPositionCode); }
    // How many QXCFG functions have been called.
    [[nodiscard]] int Calls() const { return m_calls; }

    // Bytes of the open keyboard's memory; a change is stored at once.
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

    // Every QXCFG function runs in Call, which counts it, gives a fault that is due, and turns what
    // is thrown into a status.
    Long Call(const std::function<Status()>& function);
    // The same for a function that needs the open keyboard.
    Long CallOpen(const std::function<Status()>& function);
    // The same for a function whose result is a value.
    Long Value(const std::function<Long()>& function);

    Status Read(Long lAddress, void* to, Long lSize);
    Status Write(Long lAddress, const void* from, Long lSize);
    template <typename Number>
    Long ReadNumber(Long lAddress, Number* value);
    template <typename Number>
    Long WriteNumber(Long lAddress, Number value);
    Status Transfer(const std::string& from, std::string& to);
    void PostProgress(Long lPercent);
    Long SaveFile(const char* name, std::string_view kind, std::string KeyboardMemory::*content);
    Long LoadFile(const char* name, std::string_view kind, std::string KeyboardMemory::*content);

    std::filesystem::path m_file;
    std::string m_modelText;
    std::optional<KeyboardMemory> m_keyboard;
    std::string m_image;
    std::vector<Stretch> m_requests;
    MessagePoster m_post = nullptr;
    Long m_window = 0, m_message = 0, m_what = 0;
    bool m_positionMode = false;
    std::deque<Long> m_positionKeys;

    int m_calls = 0;
    std::optional<RequestedFault> m_fault;
    std::optional<Long> m_stopAfter;
    std::string m_lastError;
};

} // namespace qx::sim
