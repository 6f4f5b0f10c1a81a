// The members that all module controls share, under the same identifiers 1 to 15.
#pragma once

#include "com/ClassBuilder.h"
#include "qxcontrols/device/ModuleControl.h"

namespace qx::com {

// LayoutSource (2) is left to each control, which may also make it readable.
template <typename Control>
void AddModuleContract(ClassBuilder<Control>& builder) {
    builder.Service("Keyboard", 1, &Control::SetKeyboard)
        .Service("PrefSource", 3, &Control::SetPrefSource)
        .Property("ConfigID", 4, &Control::ConfigID, &Control::SetConfigID)
        .Property("DataChanged", 5, &Control::DataChanged, &Control::SetDataChanged)
        .Property("TransferSize", 6, &Control::TransferSize, {"LoadInKeyboard"})
        .Method("DefaultValues", 7, &Control::DefaultValues)
        .Method("PrepareDataUpload", 8, &Control::PrepareDataUpload, {"LoadInKeyboard"})
        .Method("PrepareDataDownload", 9, &Control::PrepareDataDownload, {"LoadInKeyboard"})
        .Method("DataUpload", 10, &Control::DataUpload, {"LoadInKeyboard"})
        .Method("DataDownload", 11, &Control::DataDownload, {"LoadInKeyboard"})
        .Method("Translate", 12, &Control::Translate)
        .Method("AdjustControls", 13, &Control::AdjustControls)
        .Method("ReloadKeySettings", 14, &Control::ReloadKeySettings)
        .Method("ReloadColor", 15, &Control::ReloadColor);
}

} // namespace qx::com
