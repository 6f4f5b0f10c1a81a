// QXMagnetCardView: the face of QXMagnetCard: the reader's options, the list of tracks, and the
// settings of the current track.
#pragma once

#include "qxcontrols/readers/QXMagnetCard.h"
#include "views/Bindings.h"

#include <QWidget>

class QGroupBox;

namespace qx::views {

class QXMagnetCardView : public QWidget {
    Q_OBJECT
public:
    // The control outlives the view.
    explicit QXMagnetCardView(QXMagnetCard& control, QWidget* parent = nullptr);

private:
    [[nodiscard]] QGroupBox* MakeOptions();
    [[nodiscard]] QGroupBox* MakeTrack();

    QXMagnetCard& m_control;
    Bindings m_bindings;
    Subscription m_refreshed;
};

} // namespace qx::views
