// InPlaceEditor: shows the sequence that is selected on a section's page in an inspector, and has
// the section's control take over each change made there.
#pragma once

#include "qxcontrols/common/Event.h"
#include "views/SequenceInspector.h"

#include <QCoreApplication>

#include <string>
#include <string_view>

namespace qx::app {

class EditRequests;
class Workbench;

class InPlaceEditor {
    Q_DECLARE_TR_FUNCTIONS(InPlaceEditor)
public:
    // All three outlive this object, which belongs to the section with this key.
    InPlaceEditor(Workbench& workbench, EditRequests& edits, std::string_view sectionKey,
                  views::SequenceInspector& inspector);

private:
    void ShowLayout();
    void ShowSelected();
    void Store(const std::vector<Byte>& codes);
    [[nodiscard]] views::SequenceInspector::Remarks RemarksOn(const std::vector<Byte>& codes) const;

    Workbench& m_workbench;
    EditRequests& m_edits;
    std::string m_section; // its key
    views::SequenceInspector& m_inspector;
    Subscription m_refreshed;
};

} // namespace qx::app
