// CommandLine: runs qxconf's commands in process, on a simulated keyboard with injected faults.
#pragma once

#include "cli/Qxconf.h"
#include "files/Files.h"
#include "host/ForwardingDriver.h"
#include "qxcontrols/device/DriverLibrary.h"
#include "simulator/SimulatedDriver.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <functional>
#include <sstream>
#include <string>
#include <vector>

namespace qx::test {

struct Outcome {
    int status;
    std::string out;
    std::string err;
};

// A fault of the simulated keyboard: driver call number `call`, counted from 1, returns `status`.
struct Fault {
    int call = 0; // 0: none
    std::int32_t status = 77;
    bool forEver = false;
    std::int32_t transferBytes = -1; // a transfer stops after these; -1: never
    std::int32_t writtenBytes = -1;  // the same, only for transfers to the keyboard
    bool dropsWrites = false;        // transfers to the keyboard, or to a file, report success and
                                     // do nothing
};

struct DriverCall {
    std::string_view function;
    host::DriverResult result; // as decoded
};

// A driver that can fake its writes, and records the calls without an effect on the memory.
class LyingDriver : public host::ForwardingDriver {
public:
    LyingDriver(std::unique_ptr<ConfigDriver> inner, bool dropsWrites,
                std::function<void()> beforeWrite, std::function<void()> beforeRead = {},
                std::vector<std::string>* noted = nullptr, std::vector<DriverCall>* made = nullptr)
        : ForwardingDriver(*inner), m_inner(std::move(inner)), m_dropsWrites(dropsWrites),
          m_beforeWrite(std::move(beforeWrite)), m_beforeRead(std::move(beforeRead)),
          m_noted(noted), m_made(made) {}
    std::int32_t QXCFG_ImageLoad() override {
        if (m_beforeRead)
            m_beforeRead();
        return ForwardingDriver::QXCFG_ImageLoad();
    }
    std::int32_t QXCFG_ChipcardIOParam(std::int16_t nBaudRateIndex,
                                       std::int16_t nComPort) override {
        Note("ChipcardIOParam", nBaudRateIndex, nComPort);
        return ForwardingDriver::QXCFG_ChipcardIOParam(nBaudRateIndex, nComPort);
    }
    std::int32_t QXCFG_SelectLayer(std::int16_t nLayer) override {
        Note("SelectLayer", nLayer);
        return ForwardingDriver::QXCFG_SelectLayer(nLayer);
    }
    std::int32_t QXCFG_EnablePositionMode() override {
        Note("EnablePositionMode");
        return ForwardingDriver::QXCFG_EnablePositionMode();
    }
    std::int32_t QXCFG_DisablePositionMode() override {
        Note("DisablePositionMode");
        return ForwardingDriver::QXCFG_DisablePositionMode();
    }
    std::int32_t QXCFG_ConvertBinFileIntoRomFile(char* source, char* destination,
                                                 std::int32_t lParam1, std::int32_t lParam2,
                                                 std::int32_t lParam3) override {
        Note("Convert", lParam1, lParam2, lParam3);
        return ForwardingDriver::QXCFG_ConvertBinFileIntoRomFile(source, destination, lParam1,
                                                                 lParam2, lParam3);
    }
    std::int32_t QXCFG_ImageSave() override {
        if (m_beforeWrite)
            m_beforeWrite();
        return m_dropsWrites ? 0 : ForwardingDriver::QXCFG_ImageSave();
    }
    std::int32_t QXCFG_KeyboardParamSave(char* name) override {
        return m_dropsWrites ? 0 : ForwardingDriver::QXCFG_KeyboardParamSave(name);
    }

protected:
    std::int32_t Noted(std::string_view function, host::DriverResult kind,
                       std::int32_t result) override {
        if (m_made != nullptr)
            m_made->push_back({function, kind});
        return result;
    }

private:
    template <typename... Arguments>
    void Note(const std::string& function, Arguments... arguments) {
        if (m_noted != nullptr)
            m_noted->push_back(function +
                               (std::string() + ... + (" " + std::to_string(arguments))));
    }

    std::unique_ptr<ConfigDriver> m_inner;
    bool m_dropsWrites;
    std::function<void()> m_beforeWrite;
    std::function<void()> m_beforeRead;
    std::vector<std::string>* m_noted;
    std::vector<DriverCall>* m_made;
};

// The simulated keyboard in process, or through its driver library.
enum class Driver { InProcess, Library };

class CommandLine {
public:
    explicit CommandLine(Driver driver = Driver::InProcess, std::string model = "full")
        : m_driver(driver), m_model(std::move(model)) {}

    // Runs a command on the keyboard; `fault` applies from its first driver call on.
    Outcome Run(std::vector<std::string> arguments, const Fault& fault = {}) {
        arguments.insert(arguments.begin(),
                         {"--layouts", layouts, "--settings", File("settings.ini")});
        std::ostringstream out;
        std::ostringstream err;
        cli::Surroundings surroundings;
        std::istringstream in(input);
        surroundings.in = &in;
        surroundings.dataFolder = folder / "data";
        surroundings.openDriver = [&](const setup::KeyboardChoice&) {
            auto driver = m_driver == Driver::InProcess ? OpenInProcess(fault) : OpenLibrary(fault);
            setup::OpenedDriver opened;
            opened.simulated = dynamic_cast<sim::SimulatedDriver*>(driver.get());
            std::function<void()> cut = beforeWrite;
            if (fault.writtenBytes >= 0)
                cut = [stop = Stopper(*driver), bytes = fault.writtenBytes] { stop(bytes); };
            opened.driver = std::make_unique<LyingDriver>(std::move(driver), fault.dropsWrites, cut,
                                                          beforeRead, &noted, &made);
            made.clear();
            return opened;
        };
        const int status = cli::Run(arguments, {out, err, columns, hasColor}, surroundings);
        return {status, out.str(), err.str()};
    }

    // Runs a command that must succeed; returns its standard output.
    std::string Done(const std::vector<std::string>& arguments) {
        const Outcome outcome = Run(arguments);
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        return outcome.out;
    }

    [[nodiscard]] std::string File(const std::string& name) const {
        return (folder / name).string();
    }
    // Writes a text to a file of the folder and returns its path.
    std::string Write(const std::string& name, const std::string& text) {
        files::WriteFileAtomically(folder / name, text);
        return File(name);
    }

    // Reads or changes the keyboard's memory.
    std::string Memory() { return Open().Memory(0, sim::KeyboardMemory::kSize); }
    void Poke(Long address, const std::string& bytes) { Open().Poke(address, bytes); }

    // The number of driver calls in the last run (in process only).
    int calls = 0;
    std::vector<DriverCall> made; // the same calls, one by one
    // The calls of all runs without an effect on the memory, with their arguments.
    std::vector<std::string> noted;

    TempFolder folder{TempFolder::InMemory()};
    std::string layouts = QX_LAYOUTS;
    int columns = 0; // if standard error is a terminal; otherwise 0
    bool hasColor = false;
    std::string input;                 // standard input of the next run
    std::function<void()> beforeWrite; // called while the keyboard is written or read
    std::function<void()> beforeRead;

private:
    class Opened {
    public:
        Opened(const std::filesystem::path& file, const std::string& model)
            : m_driver(file, model) {
            EXPECT_EQ(m_driver.QXCFG_Init(), 0) << m_driver.LastError();
        }
        [[nodiscard]] std::string Memory(Long address, Long size) const {
            return m_driver.Memory(address, size);
        }
        void Poke(Long address, const std::string& bytes) { m_driver.Poke(address, bytes); }

    private:
        sim::SimulatedDriver m_driver;
    };
    Opened Open() { return {folder / "keyboard.qxk", m_model}; }

    // Reports its number of calls when it is destroyed.
    class CountedDriver : public sim::SimulatedDriver {
    public:
        CountedDriver(const std::filesystem::path& file, const std::string& model, int& calls)
            : SimulatedDriver(file, model), m_calls(calls) {}
        ~CountedDriver() override { m_calls = Calls(); }

    private:
        int& m_calls;
    };

    // A function that makes the driver's next transfer stop after a number of bytes.
    static std::function<void(std::int32_t)> Stopper(ConfigDriver& driver) {
        if (auto* simulated = dynamic_cast<sim::SimulatedDriver*>(&driver))
            return [simulated](std::int32_t bytes) { simulated->StopTransferAfter(bytes); };
        using StopTransferAfter = void(QX_DRIVER_CALL*)(std::int32_t);
        return dynamic_cast<DriverLibrary&>(driver).Find<StopTransferAfter>(
            "QXSIM_StopTransferAfter");
    }

    std::unique_ptr<ConfigDriver> OpenInProcess(const Fault& fault) {
        auto driver = std::make_unique<CountedDriver>(folder / "keyboard.qxk", m_model, calls);
        if (fault.call != 0)
            driver->FailCall(fault.call, fault.status, fault.forEver);
        if (fault.transferBytes >= 0)
            driver->StopTransferAfter(fault.transferBytes);
        for (const std::int32_t key : positionKeys)
            driver->QueuePositionKey(key);
        return driver;
    }

    std::unique_ptr<ConfigDriver> OpenLibrary(const Fault& fault) {
        auto library = std::make_unique<DriverLibrary>(QX_SIMULATOR_LIBRARY);
        using SetKeyboard = std::int32_t(QX_DRIVER_CALL*)(const char*, const char*);
        using FailCall = void(QX_DRIVER_CALL*)(std::int32_t, std::int32_t, std::int32_t);
        using StopTransferAfter = void(QX_DRIVER_CALL*)(std::int32_t);
        EXPECT_EQ(library->Find<SetKeyboard>("QXSIM_SetKeyboard")(File("keyboard.qxk").c_str(),
                                                                  m_model.c_str()),
                  0);
        if (fault.call != 0)
            library->Find<FailCall>("QXSIM_FailCall")(fault.call, fault.status,
                                                      fault.forEver ? 1 : 0);
        if (fault.transferBytes >= 0)
            library->Find<StopTransferAfter>("QXSIM_StopTransferAfter")(fault.transferBytes);
        return library;
    }

public:
    std::vector<std::int32_t> positionKeys; // pressed during the next run (in process)

private:
    Driver m_driver;
    std::string m_model;
};

// Runs a command with exactly these options for the keyboard.
inline Outcome RunOn(const TempFolder& folder, std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(),
                     {"--layouts", QX_LAYOUTS, "--settings", (folder / "settings.ini").string()});
    std::ostringstream out;
    std::ostringstream err;
    cli::Surroundings surroundings;
    surroundings.dataFolder = folder / "data";
    const int status = cli::Run(arguments, {out, err}, surroundings);
    return {status, out.str(), err.str()};
}

} // namespace qx::test
