// TroubledKeyboard: a keyboard in memory with failing driver calls, interrupted transfers and
// transfers that misreport their success, on request.
#pragma once

#include "support/FakeDriver.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>
#include <utility>

namespace qx::test {

// The effect of a transfer that reports success.
enum class Lie { None, DropsWrite, CutsWrite, FlipsBit, CutsRead };

class TroubledTransfers : public FakeDriver {
public:
    // The next transfer to the keyboard stops after this many bytes and returns the status.
    std::optional<std::int32_t> cutAfter;
    Lie lie = Lie::None;
    std::uint32_t seed = 0;        // selects the affected byte
    std::int32_t bytesWritten = 0; // into the keyboard, since this was set to 0

    // The driver reads the identification of the connected keyboard.
    std::int32_t QXCFG_Init() override {
        image.replace(0x7FC0, 32, memory, 0x7FC0, 32);
        return 0;
    }

    std::int32_t QXCFG_ImageSave() override {
        const auto cut = std::exchange(cutAfter, std::nullopt);
        std::int32_t most = cut.value_or(std::numeric_limits<std::int32_t>::max());
        if (lie == Lie::DropsWrite)
            most = 0;
        if (lie == Lie::CutsWrite)
            most = Somewhere();
        Move(image, memory, most, &bytesWritten);
        if (lie == Lie::FlipsBit) {
            const std::int32_t address = AddressOf(Somewhere());
            memory[static_cast<std::size_t>(address)] ^= static_cast<char>(1U << (seed / 7 % 8));
        }
        return cut ? kCutStatus : 0;
    }

    std::int32_t QXCFG_ImageLoad() override {
        const bool isCut = lie == Lie::CutsRead;
        Move(memory, image, isCut ? Somewhere() : std::numeric_limits<std::int32_t>::max());
        return 0;
    }

    static constexpr std::int32_t kCutStatus = 88;

private:
    // A place within the requested bytes, selected by the seed.
    [[nodiscard]] std::int32_t Somewhere() const {
        std::uint32_t all = 0;
        for (const Request& request : requests)
            all += static_cast<std::uint32_t>(request.size);
        return static_cast<std::int32_t>(seed * 2654435761U % std::max(all, 1U));
    }
    [[nodiscard]] std::int32_t AddressOf(std::int32_t place) const {
        for (const Request& request : requests) {
            if (place < request.size)
                return request.address + place;
            place -= request.size;
        }
        return 0;
    }
    void Move(const std::string& from, std::string& to, std::int32_t most,
              std::int32_t* moved = nullptr) {
        for (const Request& request : requests)
            for (std::int32_t i = 0; i < request.size && most > 0; ++i, --most) {
                const auto at = static_cast<std::size_t>(request.address + i);
                to.at(at) = from.at(at);
                if (moved != nullptr)
                    ++*moved;
            }
    }
};

class TroubledKeyboard : public TroubledTransfers {
public:
    TroubledKeyboard(std::vector<FakeDriver::Entry> entries, const std::string& name) {
        directory = std::move(entries);
        notesCalls = false;
        memory.replace(0x7FC0, 32, name + std::string(16 - name.size(), ' ') + "B100P100US01C002");
        Replug();
    }

    // Call number `failingCall` of the driver from now on (from 1) does nothing and returns a
    // status, as do all later ones if the failure is permanent; 0 for none.
    int failingCall = 0;
    bool failsForEver = false;
    int calls = 0; // so far
    static constexpr std::int32_t kCallStatus = 77;

    // As if unplugged and opened by a new program: clears the image and all troubles.
    void Replug() {
        std::fill(image.begin(), image.end(), '\x5A');
        image.replace(0x7FC0, 32, memory, 0x7FC0, 32);
        requests.clear();
        cutAfter.reset();
        lie = Lie::None;
        failingCall = calls = bytesWritten = 0;
        failsForEver = false;
    }

#define QX_DRIVER_FUNCTION(name, parameters, arguments, result)                                    \
    std::int32_t name parameters override {                                                        \
        return Fails() ? kCallStatus : TroubledTransfers::name arguments;                          \
    }
#include "qxcontrols/device/DriverFunctions.def"

private:
    bool Fails() {
        ++calls;
        return failingCall != 0 && (calls == failingCall || (failsForEver && calls > failingCall));
    }
};

} // namespace qx::test
