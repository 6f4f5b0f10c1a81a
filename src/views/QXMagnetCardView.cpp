#include "views/QXMagnetCardView.h"

#include "views/PageList.h"
#include "views/SequenceLabel.h"
#include "views/SequenceRow.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QVBoxLayout>

namespace qx::views {

QXMagnetCardView::QXMagnetCardView(QXMagnetCard& control, QWidget* parent)
    : QWidget(parent), m_control(control) {
    QGroupBox* options = MakeOptions();
    auto* tracks = new QGroupBox; // its frame is that of the list
    auto* list = new PageList;
    list->setFrameShape(QFrame::NoFrame);
    m_bindings.Bind(tracks, QStringLiteral("lblTracks"), control.lblTracks);
    m_bindings.Bind(list, QStringLiteral("trackList"), control.trackList,
                    [&control] { control.trackList_Click(); });
    m_bindings.OnShow([tracks, list] { list->setAccessibleName(tracks->title()); });
    auto* column = new QVBoxLayout(tracks);
    column->setContentsMargins(1, 1, 1, 1);
    column->addWidget(list);

    auto* grid = new QGridLayout(this);
    grid->setHorizontalSpacing(24);
    grid->setVerticalSpacing(16);
    grid->addWidget(options, 0, 0, 1, 2);
    grid->addWidget(tracks, 1, 0);
    grid->addWidget(MakeTrack(), 1, 1, Qt::AlignTop);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(2, 1);

    m_refreshed = control.Refreshed.Subscribe([this] { m_bindings.ShowAll(); });
    m_bindings.ShowAll();
}

QGroupBox* QXMagnetCardView::MakeOptions() {
    auto* group = new QGroupBox;
    m_bindings.Bind(group, QStringLiteral("lblCommonPrefs"), m_control.lblCommonPrefs);
    auto* column = new QVBoxLayout(group);
    for (Integer nIndex = 0; nIndex < 3; ++nIndex) {
        auto* box = new QCheckBox;
        m_bindings.Bind(box, ChildName("chkMagneticOptions", nIndex),
                        m_control.chkMagneticOptions[static_cast<std::size_t>(nIndex)],
                        [this, nIndex] { m_control.chkMagneticOptions_Click(nIndex); });
        column->addWidget(box);
    }
    return group;
}

QGroupBox* QXMagnetCardView::MakeTrack() {
    auto* group = new QGroupBox;
    m_bindings.Bind(group, QStringLiteral("lblTrackPreferences"), m_control.lblTrackPreferences);
    auto* enable = new QCheckBox;
    m_bindings.Bind(enable, QStringLiteral("chkEnableCurrentTrack"),
                    m_control.chkEnableCurrentTrack,
                    [this] { m_control.chkEnableCurrentTrack_Click(); });

    auto* sequences = new QLabel;
    m_bindings.Bind(sequences, QStringLiteral("lblHeaderAndTerminator"),
                    m_control.lblHeaderAndTerminator);
    auto* column = new QVBoxLayout(group);
    column->setSpacing(16);
    column->addWidget(enable);
    column->addWidget(sequences);
    const SequenceRow header(*column);
    const SequenceRow terminator(*column);
    sequences->setBuddy(header.keys);
    m_bindings.Bind(header.use, QStringLiteral("chkUseThisHeader"), m_control.chkUseThisHeader,
                    [this] { m_control.chkUseThisHeader_Click(); });
    m_bindings.Bind(terminator.use, QStringLiteral("chkUseThisTerminator"),
                    m_control.chkUseThisTerminator,
                    [this] { m_control.chkUseThisTerminator_Click(); });
    m_bindings.Bind(header.keys, QStringLiteral("lblCurrHeader"), m_control.lblCurrHeader);
    m_bindings.Bind(terminator.keys, QStringLiteral("lblCurrTerminator"),
                    m_control.lblCurrTerminator);
    connect(header.keys, &SequenceLabel::KeyPress, this,
            [this] { m_control.lblCurrHeader_KeyPress(); });
    connect(terminator.keys, &SequenceLabel::KeyPress, this,
            [this] { m_control.lblCurrTerminator_KeyPress(); });
    Integer nIndex = 0;
    for (const SequenceRow& row : {header, terminator}) {
        const auto i = static_cast<std::size_t>(nIndex);
        m_bindings.Bind(row.edit, ChildName("cmdCreate", nIndex), m_control.cmdCreate[i],
                        [this, nIndex] { m_control.cmdCreate_Click(nIndex); });
        m_bindings.Bind(row.remove, ChildName("cmdRemove", nIndex), m_control.cmdRemove[i],
                        [this, nIndex] { m_control.cmdRemove_Click(nIndex); });
        m_bindings.OnShow([row] { row.ShowAccessibleNames(); });
        ++nIndex;
    }
    auto* details = new QCheckBox;
    m_bindings.Bind(details, QStringLiteral("chkShowDetails"), m_control.chkShowDetails,
                    [this] { m_control.chkShowDetails_Click(); });

    column->addWidget(details);
    return group;
}

} // namespace qx::views
