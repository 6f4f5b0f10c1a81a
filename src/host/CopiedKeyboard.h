// CopiedKeyboard: a driver whose keyboard is a copy of what another one held.
//
// On it a write is tried out before the keyboard itself sees any of it, and saved bytes are read as
// settings. It answers what transfers need, refuses files and modes, and ignores layers.
#pragma once

#include "host/KeyboardContent.h"
#include "host/Stretches.h"
#include "qxcontrols/device/ConfigDriver.h"

#include <map>

namespace qx::host {

class CopiedKeyboard : public ConfigDriver {
public:
    struct Request {
        KeyboardModuleIDs module;
        Long address;
        Long size;
    };

    explicit CopiedKeyboard(KeyboardContent content);

    // What the copy holds, and has been made to hold.
    [[nodiscard]] const KeyboardContent& Content() const { return m_content; }
    // What the last transfer to the copy has moved, in the order of its requests.
    [[nodiscard]] const std::vector<Request>& LastSaved() const { return m_saved; }

#define QX_DRIVER_FUNCTION(name, parameters, arguments, result)                                    \
    std::int32_t name parameters override;
#include "qxcontrols/device/DriverFunctions.def"

private:
    using Block = std::pair<const Long, std::string>;
    // The image's block that has all these bytes; null when there is none.
    [[nodiscard]] Block* Find(Long address, Long size);
    void PutIntoImage(Long address, std::string_view bytes);
    void FillImage();
    std::int32_t ReadNumber(Long address, std::uint32_t& value, Long size);
    std::int32_t WriteNumber(Long address, std::uint32_t value, Long size);

    KeyboardContent m_content;
    std::map<Long, std::string> m_image; // by address, blocks that do not touch
    std::vector<Request> m_requests;
    std::vector<Request> m_saved;
};

} // namespace qx::host
