// TestKeyboard: a keyboard with the modules that a test names, and the services for a control.
#pragma once

#include "qxcontrols/common/Trace.h"
#include "qxcontrols/device/ModuleControl.h"
#include "qxcontrols/device/QXKeyboardAccess.h"
#include "support/FakeDriver.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

namespace qx::test {

// The bytes listed in hexadecimal; "00*30" repeats one. "1E 9E 00*30" is a slot.
inline std::string Bytes(const std::string& text) {
    std::string bytes;
    std::istringstream words(text);
    for (std::string word; words >> word;) {
        std::size_t used = 0;
        const auto byte = static_cast<char>(std::stoi(word, &used, 16));
        const bool repeated = used < word.size() && word[used] == '*';
        bytes.append(repeated ? std::stoul(word.substr(used + 1)) : 1, byte);
    }
    return bytes;
}

// Records the texts of all message boxes.
class NotedBoxes : public MessageBoxes {
public:
    void Show(std::string_view sText) override { texts.emplace_back(sText); }
    std::vector<std::string> texts;
};

// Records the trace during its lifetime.
class TraceLog {
public:
    TraceLog() {
        SetTraceSink([this](std::string_view text) { lines.emplace_back(text); });
    }
    ~TraceLog() { SetTraceSink({}); }
    TraceLog(const TraceLog&) = delete;
    TraceLog& operator=(const TraceLog&) = delete;

    [[nodiscard]] bool Has(std::string_view text) const {
        return std::find(lines.begin(), lines.end(), text) != lines.end();
    }

    std::vector<std::string> lines;
};

class TestKeyboard {
public:
    // A keyboard with these modules, ready for transfers.
    explicit TestKeyboard(std::vector<FakeDriver::Entry> directory) {
        driver.directory = std::move(directory);
        driver.ignoredStatus = 4711;
        driver.checksRequests = true;
        EXPECT_TRUE(access.Init());
        driver.calls.clear();
    }

    // The services to pass to controls; message boxes are recorded.
    [[nodiscard]] Platform Services() {
        Platform platform;
        platform.messageBoxes = &boxes;
        return platform;
    }

    // Writes bytes to the keyboard's memory, at an offset of a module's area.
    void Put(KeyboardModuleIDs module, const std::string& bytes, std::size_t offset = 0) {
        driver.memory.replace(Base(module) + offset, bytes.size(), bytes);
    }

    // Whether the keyboard's memory holds the bytes at an offset of a module's area.
    [[nodiscard]] testing::AssertionResult Holds(KeyboardModuleIDs module, const std::string& bytes,
                                                 std::size_t offset = 0) const {
        const std::string held = driver.memory.substr(Base(module) + offset, bytes.size());
        for (std::size_t i = 0; i < bytes.size(); ++i)
            if (held[i] != bytes[i])
                return testing::AssertionFailure()
                       << "offset " << offset + i << ": " << int(static_cast<Byte>(held[i]))
                       << " instead of " << int(static_cast<Byte>(bytes[i]));
        return testing::AssertionSuccess();
    }

    // Complete transfers of one control, in the contract's order; they return the driver's status.
    // The image contains garbage before, so that only the requested and written bytes are correct.
    Long Upload(ModuleControl& control) {
        ScribbleImage();
        access.DataTransferPrepare();
        control.PrepareDataUpload(true);
        const Long status = access.Upload();
        control.DataUpload(true);
        access.DataTransferFixUp();
        return status;
    }
    Long Download(ModuleControl& control) {
        ScribbleImage();
        access.DataTransferPrepare();
        control.DataDownload(true);
        control.PrepareDataDownload(true);
        lastRequests = driver.requests;
        const Long status = access.Download();
        access.DataTransferFixUp();
        return status;
    }

    FakeDriver driver;
    QXKeyboardAccess access{driver};
    NotedBoxes boxes;
    std::vector<FakeDriver::Request> lastRequests; // in the last download

private:
    void ScribbleImage() { driver.image.assign(FakeDriver::kSize, '\xEE'); }

    [[nodiscard]] std::size_t Base(KeyboardModuleIDs module) const {
        if (module == MODULE_LAYER_FUNCKEY_DESC)
            return 70000; // not in the directory
        return static_cast<std::size_t>(access.GetBaseAddressForModule(module));
    }
};

} // namespace qx::test
