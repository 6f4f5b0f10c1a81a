#include "app/InPlaceEditor.h"

#include "app/EditRequests.h"
#include "app/SettingWords.h"
#include "app/Workbench.h"
#include "host/SequenceLint.h"
#include "qxcontrols/keys/KeyName.h"
#include "views/Bindings.h"

namespace qx::app {

using views::SequenceInspector;

InPlaceEditor::InPlaceEditor(Workbench& workbench, EditRequests& edits, std::string_view sectionKey,
                             SequenceInspector& inspector)
    : m_workbench(workbench), m_edits(edits), m_section(sectionKey), m_inspector(inspector),
      m_refreshed(workbench.Configuration().Find(sectionKey)->Control().Refreshed.Subscribe([this] {
          ShowSelected();
      })) {
    m_inspector.SetRemarks([this](const std::vector<Byte>& codes) { return RemarksOn(codes); });
    QObject::connect(&m_inspector, &SequenceInspector::Changed, &m_inspector,
                     [this](const std::vector<Byte>& codes) { Store(codes); });
    // Another keyboard may have another layout.
    QObject::connect(&workbench, &Workbench::KeyboardChanged, &m_inspector,
                     [this] { ShowLayout(); });
    ShowLayout();
}

void InPlaceEditor::ShowLayout() {
    m_inspector.ShowLayout(&m_workbench.Layout());
    ShowSelected();
}

void InPlaceEditor::ShowSelected() {
    const auto selected = m_workbench.Faces().Of(m_section).Selected();
    if (!selected)
        return m_inspector.Show({});
    const host::Section& section = *m_workbench.Configuration().Find(m_section);
    const auto settings = m_workbench.Configuration().List(
        section, {"/" + m_section + "/" + selected->place}, host::Listed::All);
    std::vector<Byte> codes;
    for (const Integer code : selected->sequence->Codes())
        codes.push_back(static_cast<Byte>(code));
    m_inspector.Show(SequenceInspector::Edited{
        settings.empty() ? QString() : NameInSection(settings.front().name), std::move(codes),
        static_cast<std::size_t>(selected->capacity), selected->refusal});
}

void InPlaceEditor::Store(const std::vector<Byte>& codes) {
    KeySequence sequence;
    sequence.SetBytes(std::string(codes.begin(), codes.end()));
    m_edits.AnswerWith(sequence.KeyString(),
                       [this] { m_workbench.Faces().Of(m_section).EditSelected(); });
}

SequenceInspector::Remarks InPlaceEditor::RemarksOn(const std::vector<Byte>& codes) const {
    const QXKeyboardLayoutData& layout = m_workbench.Layout();
    const auto name = [&](Long key) { return views::ToQt(KeyName(key, &layout)); };
    SequenceInspector::Remarks remarks;
    const std::vector<Integer> all(codes.begin(), codes.end());
    for (const host::SequenceWarning& warning : host::LintSequence(all, &layout)) {
        switch (warning.kind) {
        case host::SequenceWarningKind::NeverReleased:
            remarks.warnings += tr("Key %1 is pressed and never released.").arg(name(warning.key));
            break;
        case host::SequenceWarningKind::NeverPressed:
            remarks.warnings +=
                tr("Key %1 is released and was not pressed.").arg(name(warning.key));
            break;
        case host::SequenceWarningKind::KeyAbove127:
            remarks.warnings +=
                tr("Key %1 is released and was not pressed; a sequence cannot press key %2.")
                    .arg(name(warning.key), name(warning.key + kRelease));
            break;
        case host::SequenceWarningKind::NotInLayout:
            remarks.warnings += tr("This layout has no key %1.").arg(warning.key);
            break;
        }
    }
    return remarks;
}

} // namespace qx::app
