#include "app/TestedKeyboard.h"

#include "app/Workbench.h"
#include "app/Working.h"
#include "app/sections/Entries.h"
#include "qxcontrols/keyprog/QXLayeredFuncKeys.h"
#include "simulator/FixedAreas.h"

#include <set>

namespace qx::app {

TestedKeyboard::TestedKeyboard(Workbench& workbench) : m_workbench(workbench) {}

TestedKeyboard::~TestedKeyboard() = default;

void TestedKeyboard::Use(Source source) {
    m_source = source;
    m_copy.reset();
}

void TestedKeyboard::ForgetDocument() {
    if (m_source == Source::Document)
        m_copy.reset();
}

void TestedKeyboard::ForgetKeyboard() {
    m_held.reset();
    m_copy.reset();
}

sim::TestDrive TestedKeyboard::Drive() {
    if (!m_held) {
        const Working working(m_workbench, tr("Reading the keyboard…"));
        m_held = m_workbench.HeldContent();
    }
    if (!m_copy) {
        const host::KeyboardContent content =
            m_source == Source::Document ? m_workbench.DocumentContent(*m_held) : *m_held;
        m_settings = m_workbench.SettingsIn(content);
        m_copy = CopyOf(content);
    }
    return {m_copy->memory, m_copy->model, m_workbench.Layout()};
}

const QXLayeredFuncKeys& TestedKeyboard::FunctionKeys() const {
    return dynamic_cast<const QXLayeredFuncKeys&>(
        m_settings->Find(kLayeredFuncKeys.key)->Control());
}

TestedKeyboard::Copy TestedKeyboard::CopyOf(const host::KeyboardContent& content) {
    Copy copy;
    copy.model.capabilities = content.identity.capabilities;
    copy.memory.assign(static_cast<std::size_t>(sim::kMemorySize), '\0');
    std::set<KeyboardModuleIDs> copied; // a real keyboard's memory may be larger
    for (const host::ContentPiece& piece : content.pieces)
        if (piece.address >= 0 && piece.End() <= sim::kMemorySize) {
            copy.memory.replace(static_cast<std::size_t>(piece.address), piece.bytes.size(),
                                piece.bytes);
            copied.insert(piece.module);
        }
    for (const auto& [module, address] : content.identity.directory)
        if (copied.contains(module))
            copy.model.directory.push_back({module, address});
    return copy;
}

} // namespace qx::app
