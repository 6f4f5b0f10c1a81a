#include "host/sections/Sections.h"

#include "qxcontrols/device/MemoryMap.h"
#include "qxcontrols/device/QXCommonKeyboard.h"

namespace qx::host {

namespace {

constexpr Area kAreas[] = {{MODULE_MAGNET_CONFIG, kOutputDelaySize, 0, true, -1, MODULE_KEYBOARD}};
constexpr SectionInfo kInfo = {"commonKeyboard", "Keyboard", kAreas};

class CommonKeyboardSection : public SectionOf<QXCommonKeyboard> {
public:
    using SectionOf::SectionOf;

    void Visit(FieldVisitor& fields) override {
        QXCommonKeyboard& control = Control();
        control.SetOutputDelay(static_cast<Byte>(
            fields.Number({"outputDelay", "Output delay"}, control.OutputDelay(), 0, 255)));
    }
};

} // namespace

std::unique_ptr<Section> MakeCommonKeyboardSection(const Platform& platform) {
    return std::make_unique<CommonKeyboardSection>(kInfo, platform);
}

} // namespace qx::host
