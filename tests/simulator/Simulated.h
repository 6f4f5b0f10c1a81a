// Simulated: a simulated keyboard in a temporary folder, in process or as a driver library.
#pragma once

#include "qxcontrols/device/DriverLibrary.h"
#include "simulator/SimulatedDriver.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace qx::test {

enum class Kind { InProcess, Library };

class Simulated {
public:
    explicit Simulated(Kind kind) : m_kind(kind) {}

    // A new driver for the keyboard, not yet initialised; the previous one is destroyed.
    ConfigDriver& Plug(const std::string& model = "full",
                       const std::string& name = "keyboard.qxk") {
        Unplug();
        if (m_kind == Kind::InProcess) {
            auto driver = std::make_unique<sim::SimulatedDriver>(folder / name, model);
            m_inProcess = driver.get();
            m_driver = std::move(driver);
        } else {
            auto library = std::make_unique<DriverLibrary>(QX_SIMULATOR_LIBRARY);
            m_library = library.get();
            const std::string file = (folder / name).string();
            const auto status = Own<std::int32_t, const char*, const char*>(
                "QXSIM_SetKeyboard", file.c_str(), model.c_str());
            EXPECT_EQ(status, 0);
            m_driver = std::move(library);
        }
        return *m_driver;
    }

    // The same, initialised.
    ConfigDriver& Open(const std::string& model = "full",
                       const std::string& name = "keyboard.qxk") {
        Plug(model, name);
        EXPECT_EQ(m_driver->QXCFG_Init(), 0);
        return *m_driver;
    }
    void Unplug() { m_driver.reset(); }

    void FailCall(int n, Long lStatus, bool forEver) {
        if (m_kind == Kind::InProcess)
            m_inProcess->FailCall(n, lStatus, forEver);
        else
            Own<void, Long, Long, Long>("QXSIM_FailCall", n, lStatus, forEver ? 1 : 0);
    }
    // The text that the library writes to a buffer of this size; the bytes after it must not
    // change.
    std::string StatusText(Long lStatus, std::size_t size) {
        std::string buffer(size + 8, '~');
        const auto length = Own<Long, Long, char*, Long>("QXSIM_StatusText", lStatus, buffer.data(),
                                                         static_cast<Long>(size));
        EXPECT_EQ(buffer.substr(size), "~~~~~~~~");
        const std::string text = buffer.substr(0, buffer.find('\0'));
        EXPECT_EQ(text.size(), static_cast<std::size_t>(length));
        return text;
    }
    void StopTransferAfter(Long lBytes) {
        if (m_kind == Kind::InProcess)
            m_inProcess->StopTransferAfter(lBytes);
        else
            Own<void, Long>("QXSIM_StopTransferAfter", lBytes);
    }
    void LieFrom(std::int32_t seed) { // a negative seed cancels the request
        if (m_kind == Kind::Library)
            Own<void, std::int32_t>("QXSIM_LieFrom", seed);
        else if (seed < 0)
            m_inProcess->EndLies();
        else
            m_inProcess->LieFrom(static_cast<std::uint32_t>(seed));
    }
    void QueuePositionKey(Long lCode) {
        if (m_kind == Kind::InProcess)
            m_inProcess->QueuePositionKey(lCode);
        else
            Own<void, Long>("QXSIM_QueuePositionKey", lCode);
    }

    [[nodiscard]] std::string Image(Long lAddress, Long lSize) {
        std::string bytes(static_cast<std::size_t>(lSize), '?');
        EXPECT_EQ(m_driver->QXCFG_ImageRead(lAddress, bytes.data(), lSize), 0);
        return bytes;
    }
    void PutImage(Long lAddress, const std::string& bytes) {
        EXPECT_EQ(
            m_driver->QXCFG_ImageWrite(lAddress, bytes.data(), static_cast<Long>(bytes.size())), 0);
    }
    // The keyboard's memory, read through the image.
    [[nodiscard]] std::string Memory(Long lAddress, Long lSize) {
        m_driver->QXCFG_MemRequestClean();
        EXPECT_EQ(m_driver->QXCFG_MemRequestAdd(0, lAddress, lSize), 0);
        EXPECT_EQ(m_driver->QXCFG_ImageLoad(), 0);
        m_driver->QXCFG_MemRequestClean();
        return Image(lAddress, lSize);
    }

    TempFolder folder;

private:
    template <typename Result, typename... Arguments>
    Result Own(const char* name, Arguments... arguments) {
        return m_library->Find<Result(QX_DRIVER_CALL*)(Arguments...)>(name)(arguments...);
    }

    Kind m_kind;
    std::unique_ptr<ConfigDriver> m_driver;
    sim::SimulatedDriver* m_inProcess = nullptr; // m_driver, if it is in process
    DriverLibrary* m_library = nullptr;          // m_driver, if it is a library
};

// For tests with both kinds.
class SimulatedKeyboard : public testing::TestWithParam<Kind> {
protected:
    Simulated keyboard{GetParam()};
};
inline const auto kKinds = testing::Values(Kind::InProcess, Kind::Library);
inline std::string NameOfKind(const testing::TestParamInfo<Kind>& info) {
    return info.param == Kind::InProcess ? "InProcess" : "Library";
}

inline constexpr Long kPlace = 0x3000; // of the free keys in model "full"

inline Long Number(sim::Status status) {
    return static_cast<Long>(status);
}

} // namespace qx::test
