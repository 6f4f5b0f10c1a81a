// FakeDriver: the smallest keyboard behind the driver interface, for tests of the control library.
//
// Image and memory are plain byte strings; every call is recorded by name. The functions listed in
// `statuses` return that status and only scribble over their outputs.
#pragma once

#include "qxcontrols/device/ConfigDriver.h"
#include "qxcontrols/device/KeyboardModuleIDs.h"

#include <algorithm>
#include <cstring>
#include <deque>
#include <functional>
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
    bool notesCalls = true; // false: calls are not recorded, and none fails
    std::map<std::string, std::int32_t> statuses;
    std::deque<std::int32_t> positionKeys;
    bool positionMode = false;
    std::int32_t layer = -1;
    bool layerKeysWork = true;
    std::string lastArguments;       // for functions that only receive some
    std::size_t end = kSize;         // the first address outside the image
    std::size_t fillsAtMost = kSize; // a successful read leaves the bytes after these unchanged
    // The result of functions whose result has no meaning.
    std::int32_t ignoredStatus = 0;
    // Stretches are transferred only if requested with the id of the module that owns their area.
    bool checksRequests = false;
    // Called for every call, with its arguments: "QXCFG_ImageRead(4096, 32)".
    std::function<void(const std::string&)> onCall;

    std::int32_t QXCFG_SetCommandDelta(std::int32_t lDelta) override {
        return Ask("QXCFG_SetCommandDelta", lDelta);
    }
    std::int32_t QXCFG_Init() override { return Note("QXCFG_Init"); }
    std::int32_t QXCFG_ConfigDirectorySize() override {
        Note("QXCFG_ConfigDirectorySize");
        return static_cast<std::int32_t>(directory.size());
    }
    std::int32_t QXCFG_ConfigDirectoryGetEntry(std::int16_t nIndex, std::int32_t* module,
                                               std::int32_t* address) override {
        *module = MODULE_POS; // scribbles first
        *address = 0xBAD;
        const std::int32_t status = Note("QXCFG_ConfigDirectoryGetEntry", nIndex);
        if (nIndex < 0 || static_cast<std::size_t>(nIndex) >= directory.size())
            return 1;
        const Entry& entry = directory[static_cast<std::size_t>(nIndex)];
        if (status != 0 || entry.status != 0)
            return status != 0 ? status : entry.status;
        *module = entry.module;
        *address = entry.address;
        return 0;
    }
    std::int32_t QXCFG_ImageRead(std::int32_t lAddress, char* buffer, std::int32_t lSize) override {
        return Read(Note("QXCFG_ImageRead", lAddress, lSize), lAddress, buffer, lSize);
    }
    std::int32_t QXCFG_ImageWrite(std::int32_t lAddress, const char* buffer,
                                  std::int32_t lSize) override {
        const auto size = static_cast<std::size_t>(std::max(lSize, 0));
        const std::int32_t status =
            Note("QXCFG_ImageWrite", lAddress, std::string_view(buffer, size), lSize);
        return Write(status, lAddress, buffer, lSize);
    }
    std::int32_t QXCFG_ImageReadByte(std::int32_t lAddress, std::uint8_t* value) override {
        return Read(Note("QXCFG_ImageReadByte", lAddress), lAddress, value, 1);
    }
    std::int32_t QXCFG_ImageWriteByte(std::int32_t lAddress, std::uint8_t value) override {
        return Ignored(Write(Note("QXCFG_ImageWriteByte", lAddress, value), lAddress, &value, 1));
    }
    std::int32_t QXCFG_ImageReadInt(std::int32_t lAddress, std::int16_t* value) override {
        return Read(Note("QXCFG_ImageReadInt", lAddress), lAddress, value, 2);
    }
    std::int32_t QXCFG_ImageWriteInt(std::int32_t lAddress, std::int16_t value) override {
        return Ignored(Write(Note("QXCFG_ImageWriteInt", lAddress, value), lAddress, &value, 2));
    }
    std::int32_t QXCFG_ImageReadLong(std::int32_t lAddress, std::int32_t* value) override {
        return Read(Note("QXCFG_ImageReadLong", lAddress), lAddress, value, 4);
    }
    std::int32_t QXCFG_ImageWriteLong(std::int32_t lAddress, std::int32_t value) override {
        return Ignored(Write(Note("QXCFG_ImageWriteLong", lAddress, value), lAddress, &value, 4));
    }
    std::int32_t QXCFG_MemRequestClean() override {
        requests.clear();
        return Ignored(Note("QXCFG_MemRequestClean"));
    }
    std::int32_t QXCFG_MemRequestAdd(std::int16_t nModule, std::int32_t lAddress,
                                     std::int32_t lSize) override {
        requests.push_back({nModule, lAddress, lSize});
        return Ignored(Note("QXCFG_MemRequestAdd", nModule, lAddress, lSize));
    }
    std::int32_t QXCFG_ImageLoad() override {
        const std::int32_t status = Note("QXCFG_ImageLoad");
        if (status == 0)
            Move(memory, image);
        else
            Move(std::string(kSize, kScribble), image);
        return status;
    }
    std::int32_t QXCFG_ImageSave() override {
        const std::int32_t status = Note("QXCFG_ImageSave");
        if (status == 0)
            Move(image, memory);
        return status;
    }
    std::int32_t QXCFG_TransferNotification(std::int32_t hWindow, std::int32_t lMsg,
                                            std::int32_t lWhat) override {
        return Ask("QXCFG_TransferNotification", hWindow, lMsg, lWhat);
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
        return Ask("QXCFG_ChipcardIOParam", nBaudRateIndex, nComPort);
    }
    std::int32_t QXCFG_ConvertBinFileIntoRomFile(char* source, char* destination,
                                                 std::int32_t lParam1, std::int32_t lParam2,
                                                 std::int32_t lParam3) override {
        lastArguments = std::string(source) + " " + destination + " " + std::to_string(lParam1) +
                        " " + std::to_string(lParam2) + " " + std::to_string(lParam3);
        return Note("QXCFG_ConvertBinFileIntoRomFile");
    }
    std::int32_t QXCFG_SelectLayer(std::int16_t nLayer) override {
        layer = nLayer;
        return Ignored(Note("QXCFG_SelectLayer", nLayer));
    }
    std::int32_t QXCFG_EnableLayerSelection() override {
        layerKeysWork = true;
        return Ignored(Note("QXCFG_EnableLayerSelection"));
    }
    std::int32_t QXCFG_DisableLayerSelection() override {
        layerKeysWork = false;
        return Ignored(Note("QXCFG_DisableLayerSelection"));
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
    static constexpr char kScribble = '\xBD';

    static std::string Text(std::string_view bytes) {
        std::string text = "[";
        for (std::size_t i = 0; i < bytes.size();) {
            const std::size_t next = std::min(bytes.find_first_not_of(bytes[i], i), bytes.size());
            constexpr const char* kDigits = "0123456789ABCDEF";
            const auto byte = static_cast<std::uint8_t>(bytes[i]);
            text += i == 0 ? "" : " ";
            text += {kDigits[byte / 16], kDigits[byte % 16]};
            if (next - i > 1)
                text += "*" + std::to_string(next - i);
            i = next;
        }
        return text + "]";
    }
    template <typename Number>
    static std::string Text(Number number) {
        return std::to_string(number);
    }

    template <typename... Arguments>
    std::int32_t Note(const char* name, Arguments... arguments) {
        if (!notesCalls)
            return 0;
        calls.emplace_back(name);
        if (onCall) {
            std::string text;
            ((text += (text.empty() ? "" : ", ") + Text(arguments)), ...);
            onCall(std::string(name) + "(" + text + ")");
        }
        const auto found = statuses.find(name);
        return found == statuses.end() ? 0 : found->second;
    }
    [[nodiscard]] std::int32_t Ignored(std::int32_t status) const {
        return status != 0 ? status : ignoredStatus;
    }

    template <typename... Numbers>
    std::int32_t Ask(const char* name, Numbers... numbers) {
        lastArguments.clear();
        ((lastArguments += (lastArguments.empty() ? "" : " ") + std::to_string(numbers)), ...);
        return Ignored(Note(name, numbers...));
    }

    std::int32_t File(const char* name, const char* file) {
        lastArguments = file;
        return Note(name);
    }

    [[nodiscard]] bool IsInside(std::int32_t address, std::int32_t size) const {
        return address >= 0 && size >= 0 &&
               static_cast<std::size_t>(address) + static_cast<std::size_t>(size) <= end;
    }

    std::int32_t Read(std::int32_t status, std::int32_t address, void* to, std::int32_t size) {
        const auto length = static_cast<std::size_t>(std::max(size, 0));
        if (status != 0 || !IsInside(address, size)) {
            std::memset(to, kScribble, length);
            return status != 0 ? status : 1;
        }
        if (length <= fillsAtMost)
            std::memcpy(to, image.data() + address, length);
        else
            std::memcpy(to, image.data() + address, fillsAtMost);
        return 0;
    }

    std::int32_t Write(std::int32_t status, std::int32_t address, const void* from,
                       std::int32_t size) {
        if (status != 0 || !IsInside(address, size))
            return status != 0 ? status : 1;
        std::memcpy(image.data() + address, from, static_cast<std::size_t>(size));
        return 0;
    }

    // Whether the address belongs to the module. The output delay and the code page are requested
    // with module 0, and the descriptions are not in the directory.
    [[nodiscard]] bool IsModules(const Request& request) const {
        if (request.module == MODULE_LAYER_FUNCKEY_DESC)
            return request.address >= 70000;
        const auto begins = [&](std::int32_t module, std::int32_t most) {
            return std::any_of(directory.begin(), directory.end(), [&](const Entry& entry) {
                return entry.module == module && request.address >= entry.address &&
                       request.address - entry.address <= most - request.size;
            });
        };
        if (request.module == MODULE_KEYBOARD)
            return request.address == 27776 || begins(MODULE_MAGNET_CONFIG, 1);
        return begins(request.module, 30720);
    }

    void Move(const std::string& from, std::string& to) const {
        for (const Request& request : requests)
            if (IsInside(request.address, request.size) && (!checksRequests || IsModules(request)))
                to.replace(static_cast<std::size_t>(request.address),
                           static_cast<std::size_t>(request.size), from,
                           static_cast<std::size_t>(request.address),
                           static_cast<std::size_t>(request.size));
    }
};

} // namespace qx::test
