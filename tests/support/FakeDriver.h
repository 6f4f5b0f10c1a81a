// FakeDriver: the smallest keyboard behind the driver interface, for tests of the control library.
//
// Image and memory are plain byte strings; every call is noted by name, and the functions named in
// `statuses` give that status and do nothing else.
#pragma once

#include "qxcontrols/device/ConfigDriver.h"
#include "qxcontrols/device/KeyboardModuleIDs.h"

#include <cstring>
#include <deque>
#include <map>
#include <string>
#include <vector>

namespace qx::test {

class FakeDriver : public ConfigDriver {
public:
    struct Entry {
        std::int32_t module;
        std::int32_t address;
        std::int32_t status = 0;
    };
    struct Request {
        std::int32_t module;
        std::int32_t address;
        std::int32_t size;
        bool operator==(const Request&) const = default;
    };

    static constexpr std::size_t kSize = 128 * 1024;
    std::string memory = std::string(kSize, '\0');
    std::string image = std::string(kSize, '\0');
    std::vector<Entry> directory;
    std::vector<Request> requests;
    std::vector<std::string> calls;
    bool notesCalls = true; // off: no call is noted, and none fails
    std::map<std::string, std::int32_t> statuses;
    std::deque<std::int32_t> positionKeys;
    bool positionMode = false;
    std::int32_t layer = -1;
    bool layerKeysWork = true;
    std::string lastArguments; // of the functions that only take some
    std::size_t end = kSize;   // the first address that the image lacks

    std::int32_t QXCFG_SetCommandDelta(std::int32_t lDelta) override {
        return Pass("QXCFG_SetCommandDelta", lDelta);
    }
    std::int32_t QXCFG_Init() override { return Note("QXCFG_Init"); }
    std::int32_t QXCFG_ConfigDirectorySize() override {
        Note("QXCFG_ConfigDirectorySize");
        return static_cast<std::int32_t>(directory.size());
    }
    std::int32_t QXCFG_ConfigDirectoryGetEntry(std::int16_t nIndex, std::int32_t* module,
                                               std::int32_t* address) override {
        if (static_cast<std::size_t>(nIndex) >= directory.size())
            return 1;
        const Entry& entry = directory[static_cast<std::size_t>(nIndex)];
        *module = entry.module;
        *address = entry.address;
        const std::int32_t status = Note("QXCFG_ConfigDirectoryGetEntry");
        return status != 0 ? status : entry.status;
    }
    std::int32_t QXCFG_ImageRead(std::int32_t lAddress, char* buffer, std::int32_t lSize) override {
        return Read("QXCFG_ImageRead", lAddress, buffer, lSize);
    }
    std::int32_t QXCFG_ImageWrite(std::int32_t lAddress, const char* buffer,
                                  std::int32_t lSize) override {
        return Write("QXCFG_ImageWrite", lAddress, buffer, lSize);
    }
    std::int32_t QXCFG_ImageReadByte(std::int32_t lAddress, std::uint8_t* value) override {
        return Read("QXCFG_ImageReadByte", lAddress, value, 1);
    }
    std::int32_t QXCFG_ImageWriteByte(std::int32_t lAddress, std::uint8_t value) override {
        return Write("QXCFG_ImageWriteByte", lAddress, &value, 1);
    }
    std::int32_t QXCFG_ImageReadInt(std::int32_t lAddress, std::int16_t* value) override {
        return Read("QXCFG_ImageReadInt", lAddress, value, 2);
    }
    std::int32_t QXCFG_ImageWriteInt(std::int32_t lAddress, std::int16_t value) override {
        return Write("QXCFG_ImageWriteInt", lAddress, &value, 2);
    }
    std::int32_t QXCFG_ImageReadLong(std::int32_t lAddress, std::int32_t* value) override {
        return Read("QXCFG_ImageReadLong", lAddress, value, 4);
    }
    std::int32_t QXCFG_ImageWriteLong(std::int32_t lAddress, std::int32_t value) override {
        return Write("QXCFG_ImageWriteLong", lAddress, &value, 4);
    }
    std::int32_t QXCFG_MemRequestClean() override {
        requests.clear();
        return Note("QXCFG_MemRequestClean");
    }
    std::int32_t QXCFG_MemRequestAdd(std::int16_t nModule, std::int32_t lAddress,
                                     std::int32_t lSize) override {
        requests.push_back({nModule, lAddress, lSize});
        return Note("QXCFG_MemRequestAdd");
    }
    std::int32_t QXCFG_ImageLoad() override { return Move("QXCFG_ImageLoad", memory, image); }
    std::int32_t QXCFG_ImageSave() override { return Move("QXCFG_ImageSave", image, memory); }
    std::int32_t QXCFG_TransferNotification(std::int32_t hWindow, std::int32_t lMsg,
                                            std::int32_t lWhat) override {
        return Pass("QXCFG_TransferNotification", hWindow, lMsg, lWhat);
    }
    std::int32_t QXCFG_KeyboardRomSave(char* name) override {
        return File("QXCFG_KeyboardRomSave", name);
    }
    std::int32_t QXCFG_KeyboardRomLoad(char* name) override {
        return File("QXCFG_KeyboardRomLoad", name);
    }
    std::int32_t QXCFG_KeyboardChipcardRomSave(char* name) override {
        return File("QXCFG_KeyboardChipcardRomSave", name);
    }
    std::int32_t QXCFG_KeyboardChipcardRomLoad(char* name) override {
        return File("QXCFG_KeyboardChipcardRomLoad", name);
    }
    std::int32_t QXCFG_KeyboardParamSave(char* name) override {
        return File("QXCFG_KeyboardParamSave", name);
    }
    std::int32_t QXCFG_KeyboardParamLoad(char* name) override {
        return File("QXCFG_KeyboardParamLoad", name);
    }
    std::int32_t QXCFG_ChipcardIOParam(std::int16_t nBaudRateIndex,
                                       std::int16_t nComPort) override {
        return Pass("QXCFG_ChipcardIOParam", nBaudRateIndex, nComPort);
    }
    std::int32_t QXCFG_ConvertBinFileIntoRomFile(char* source, char* destination,
                                                 std::int32_t lParam1, std::int32_t lParam2,
                                                 std::int32_t lParam3) override {
        const std::int32_t status =
            Pass("QXCFG_ConvertBinFileIntoRomFile", lParam1, lParam2, lParam3);
        lastArguments = std::string(source) + " " + destination + " " + lastArguments;
        return status;
    }
    std::int32_t QXCFG_SelectLayer(std::int16_t nLayer) override {
        layer = nLayer;
        return Note("QXCFG_SelectLayer");
    }
    std::int32_t QXCFG_EnableLayerSelection() override {
        layerKeysWork = true;
        return Note("QXCFG_EnableLayerSelection");
    }
    std::int32_t QXCFG_DisableLayerSelection() override {
        layerKeysWork = false;
        return Note("QXCFG_DisableLayerSelection");
    }
    std::int32_t QXCFG_EnablePositionMode() override {
        const std::int32_t status = Note("QXCFG_EnablePositionMode");
        positionMode = positionMode || status == 0;
        return status;
    }
    std::int32_t QXCFG_DisablePositionMode() override {
        const std::int32_t status = Note("QXCFG_DisablePositionMode");
        positionMode = positionMode && status != 0;
        return status;
    }
    std::int32_t QXCFG_IsPositionMode() override {
        const std::int32_t status = Note("QXCFG_IsPositionMode");
        return status != 0 ? status : (positionMode ? 0 : 1);
    }
    std::int32_t QXCFG_GetPositionKey() override {
        Note("QXCFG_GetPositionKey");
        if (positionKeys.empty())
            return 0;
        const std::int32_t key = positionKeys.front();
        positionKeys.pop_front();
        return key;
    }

private:
    std::int32_t Note(const char* name) {
        if (!notesCalls)
            return 0;
        calls.emplace_back(name);
        const auto found = statuses.find(name);
        return found == statuses.end() ? 0 : found->second;
    }

    template <typename... Numbers>
    std::int32_t Pass(const char* name, Numbers... numbers) {
        lastArguments.clear();
        ((lastArguments += (lastArguments.empty() ? "" : " ") + std::to_string(numbers)), ...);
        return Note(name);
    }

    std::int32_t File(const char* name, const char* file) {
        lastArguments = file;
        return Note(name);
    }

    [[nodiscard]] bool IsInside(std::int32_t address, std::int32_t size) const {
        return address >= 0 && size >= 0 &&
               static_cast<std::size_t>(address) + static_cast<std::size_t>(size) <= end;
    }

    std::int32_t Read(const char* name, std::int32_t address, void* to, std::int32_t size) {
        const std::int32_t status = Note(name);
        if (status != 0 || !IsInside(address, size))
            return status != 0 ? status : 1;
        std::memcpy(to, image.data() + address, static_cast<std::size_t>(size));
        return 0;
    }

    std::int32_t Write(const char* name, std::int32_t address, const void* from,
                       std::int32_t size) {
        const std::int32_t status = Note(name);
        if (status != 0 || !IsInside(address, size))
            return status != 0 ? status : 1;
        std::memcpy(image.data() + address, from, static_cast<std::size_t>(size));
        return 0;
    }

    std::int32_t Move(const char* name, const std::string& from, std::string& to) {
        const std::int32_t status = Note(name);
        for (const Request& request : requests)
            if (status == 0 && IsInside(request.address, request.size))
                to.replace(static_cast<std::size_t>(request.address),
                           static_cast<std::size_t>(request.size), from,
                           static_cast<std::size_t>(request.address),
                           static_cast<std::size_t>(request.size));
        return status;
    }
};

} // namespace qx::test
