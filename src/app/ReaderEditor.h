// ReaderEditor: shows a prefix or suffix of a reader, chosen on its page, in an inspector, and
// stores each change made there.
#pragma once

#include "qxcontrols/common/Event.h"
#include "qxcontrols/common/Types.h"

#include <QObject>
#include <QPointer>

#include <optional>
#include <string>
#include <vector>

class QWidget;

namespace qx::views {
class SequenceInspector;
class SequenceLabel;
} // namespace qx::views

namespace qx::app {

class Workbench;

class ReaderEditor : public QObject {
    Q_OBJECT
public:
    // All of them outlive this object, which belongs to the section with this key; its view shows
    // the sequences in labels.
    ReaderEditor(Workbench& workbench, std::string sectionKey, QWidget& view,
                 views::SequenceInspector& inspector);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override; // text typed on a label

private:
    void ShowLayout();
    // The label that was chosen, else the first of the page; null while none is shown.
    [[nodiscard]] views::SequenceLabel* Chosen() const;
    [[nodiscard]] std::string PlaceOf(const views::SequenceLabel& label) const;
    void ShowChosen();
    // What the PC receives if that is not the sequence.
    [[nodiscard]] std::optional<QString> Received() const;
    void Put(const std::vector<Byte>& codes, bool goesOn);

    Workbench& m_workbench;
    std::string m_section; // its key
    QWidget& m_view;
    views::SequenceInspector& m_inspector;
    QPointer<views::SequenceLabel> m_chosen;
    Subscription m_refreshed;
};

} // namespace qx::app
