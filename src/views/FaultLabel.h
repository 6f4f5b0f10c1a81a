// FaultLabel: shows an error in a colour that is legible on light and dark windows, and keeps its
// space while there is none.
#pragma once

#include <QLabel>

namespace qx::views {

class FaultLabel : public QLabel {
    Q_OBJECT
public:
    explicit FaultLabel(QWidget* parent = nullptr);

protected:
    void changeEvent(QEvent* event) override;

private:
    void TakeColor();
};

} // namespace qx::views
