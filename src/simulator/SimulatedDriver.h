// SimulatedDriver: a keyboard driver without a keyboard.
//
// It behaves like a real one: the image is separate from the keyboard's memory and is lost with the
// driver; the memory persists in a file. One thread, one call at a time: calls from a progress
// message are refused. Faults can be injected to test how a host handles them.
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
    // The keyboard in `file`, created from the model (a built-in one or a file) if it does not
    // exist. Throws as KeyboardModel::ByName does. QXCFG_Init opens the keyboard, which stays open
    // while the driver lives; before that, most functions return Status::NotOpen. Another
    // QXCFG_Init clears the image.
    SimulatedDriver(std::filesystem::path file, const std::string& modelNameOrPath);

#define QX_DRIVER_FUNCTION(name, parameters, arguments, result)                                    \
    std::int32_t name parameters override;
#include "qxcontrols/device/DriverFunctions.def"
    void QXSIM_SetMessagePoster(MessagePoster post) override {
        m_post = post;
    }

    // Details of the last call's failure; empty if its status is enough.
    [[nodiscard]] const files::Problem& LastProblem() const {
        return m_problem;
    }
    // Of the contents of the file that the problem is about.
    [[nodiscard]] const std::vector<json::Fault>& LastFaults() const {
        return m_faults;
    }
    // Both as text.
    [[nodiscard]] std::string LastError() const {
        return files::WordsOf(m_problem) + (m_faults.empty() ? "" : ": " + ToText(m_faults));
    }
    // The open keyboard's model. Throws std::logic_error while it is not open.
    [[nodiscard]] const KeyboardModel& Model() const;
    // The selected layer of the function keys; initially 0.
    [[nodiscard]] Integer Layer() const {
        return m_layer;
    }
    // File name of the keyboard's layout; empty while it is not open.
    [[nodiscard]] std::string Layout() const;

    // Faults. The n-th call of a QXCFG function from now (n >= 1) does nothing and returns the
    // status; with forEver, so do all later ones. A later request replaces an earlier one; n = 0
    // cancels it.
    void FailCall(int n, Long lStatus, bool forEver);
    // The next transfer stops after this many bytes, which remain moved; a negative number cancels
    // the request.
    void StopTransferAfter(Long lBytes);
    // One of the next transfers reports success but does something else. The seed alone decides
    // what - nothing is written, less is written, one bit is written wrongly, or less is read - and
    // whether the first or the second transfer in that direction is affected. A later request
    // replaces an earlier one.
    void LieFrom(std::uint32_t seed);
    void EndLies() {
        m_lie = {};
    }
    // Presses a key in position-programming mode: the next query for a key returns it.
    void QueuePositionKey(Long lPositionCode) {
        m_positionKeys.push_back(lPositionCode);
    }
    // The number of QXCFG calls so far.
    [[nodiscard]] int Calls() const {
        return m_calls;
    }

    // Bytes of the open keyboard's memory; changes are stored at once. Throw std::out_of_range
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
        int transfersBefore = 0;  // in the same direction
        std::uint32_t offset = 0; // of the byte, modulo the transfer's size
        int bit = 0;
    };

    // All QXCFG functions run through Value, which counts them and injects faults; `lRefused` is
    // the result for a nested call.
    Long Value(Long lRefused, const std::function<Long()>& function);
    // The same for a function that returns a status: exceptions are converted to one.
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
    // The fault of this transfer, if any.
    [[nodiscard]] Lie TakeLie(bool isWrite);
    // The address of a byte within the requested transfer.
    [[nodiscard]] std::size_t AddressInTransfer(std::int64_t offset) const;
    void PostProgress(Long lPercent) const;

    // The file named by a caller. Throws Failure if it is the keyboard's own.
    [[nodiscard]] std::filesystem::path FileOf(const char* name, files::Deed deed) const;
    Status SaveFile(const char* name, const SealedKind& kind,
                    const std::vector<std::string>& parts) const;
    Long LoadProgram(const char* name, const SealedKind& kind,
                     std::string KeyboardMemory::Content::*program);

    std::filesystem::path m_file;
    KeyboardModel m_newModel; // for creating a keyboard
    std::optional<KeyboardMemory> m_keyboard;
    std::string m_image;
    std::vector<Stretch> m_requests;
    bool m_hasBadRequest = false; // outside the memory; makes the transfer fail
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
    files::Problem m_problem;
    std::vector<json::Fault> m_faults;
};

} // namespace qx::sim
