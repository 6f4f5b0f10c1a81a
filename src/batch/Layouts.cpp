#include "batch/Layouts.h"

#include "setup/LayoutSource.h"

namespace qx::batch {

QXKeyboardLayoutData& Layouts::For(const std::string& ofKeyboard) {
    const std::string name = setup::LayoutName(m_choice.chosen, ofKeyboard,
                                               [this] { return m_choice.preferredLanguage; });
    auto& layout = m_layouts[name];
    if (!layout) {
        auto opened = std::make_unique<QXKeyboardLayoutData>();
        setup::OpenLayout(*opened, m_choice.folder, name);
        layout = std::move(opened);
    }
    return *layout;
}

} // namespace qx::batch
