// InPlaceEditor: shows the sequence of the key that is selected on a page in an inspector, and
// stores each change made there.
#pragma once

#include "app/KeyEdits.h"
#include "app/sections/SectionFace.h"
#include "qxcontrols/common/Event.h"
#include "views/KeyGrid.h"
#include "views/SequenceInspector.h"

#include <QCoreApplication>

namespace qx::app {

class InPlaceEditor {
    Q_DECLARE_TR_FUNCTIONS(InPlaceEditor)
public:
    // All three outlive this object.
    InPlaceEditor(KeyEdits& edits, views::KeyGrid& grid, views::SequenceInspector& inspector);

    [[nodiscard]] static QStringList WarningsAbout(const std::vector<Byte>& codes,
                                                   const QXKeyboardLayoutData& layout);

private:
    void ShowLayout();
    void ShowSelected();
    // The section's key that is edited, as a layout places it.
    [[nodiscard]] std::optional<SectionFace::Position> Position() const;
    [[nodiscard]] std::optional<QString> Received() const;
    [[nodiscard]] QStringList Warnings(const std::vector<Byte>& codes) const;

    KeyEdits& m_edits;
    views::KeyGrid& m_grid;
    views::SequenceInspector& m_inspector;
    Subscription m_refreshed;
};

} // namespace qx::app
