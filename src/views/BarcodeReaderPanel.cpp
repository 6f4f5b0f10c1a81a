#include "views/BarcodeReaderPanel.h"

#include "views/SequenceLabel.h"
#include "views/SequenceRow.h"

#include <QVBoxLayout>

namespace qx::views {

BarcodeReaderPanel::BarcodeReaderPanel(QXBarcode& control, QWidget* parent)
    : QWidget(parent), m_control(control) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(16);
    auto* hint = new QLabel;
    hint->setWordWrap(true);
    m_bindings.Bind(hint, QStringLiteral("lblHint"), m_control.lblHint);
    column->addWidget(hint);

    for (Integer nIndex = 0; nIndex < 2; ++nIndex) {
        const auto i = static_cast<std::size_t>(nIndex);
        const SequenceRow row(*column);
        m_bindings.Bind(row.use, ChildName("chkReader", nIndex), m_control.chkReader[i],
                        [this, nIndex] { m_control.chkReader_Click(nIndex); });
        m_bindings.Bind(row.keys, ChildName("lblReader", nIndex), m_control.lblReader[i]);
        m_bindings.Bind(row.edit, ChildName("cmdEdit", nIndex), m_control.cmdEdit[i],
                        [this, nIndex] { m_control.cmdEdit_Click(nIndex); });
        m_bindings.Bind(row.remove, ChildName("cmdRemove", nIndex), m_control.cmdRemove[i],
                        [this, nIndex] { m_control.cmdRemove_Click(nIndex); });
        m_bindings.OnShow([row] { row.ShowAccessibleNames(); });
        connect(row.keys, &SequenceLabel::KeyDown, this,
                [this, nIndex](Integer KeyCode) { m_control.lblReader_KeyDown(nIndex, KeyCode); });
    }

    auto* details = new QCheckBox;
    m_bindings.Bind(details, QStringLiteral("chkShowDetails"), m_control.chkShowDetails,
                    [this] { m_control.chkShowDetails_Click(); });
    column->addWidget(details);
    column->addStretch(1);

    m_refreshed = control.Refreshed.Subscribe([this] { m_bindings.ShowAll(); });
    m_bindings.ShowAll();
}

} // namespace qx::views
