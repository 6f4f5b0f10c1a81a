// FaultLabel: says what is wrong, in a colour that reads on light and dark windows, and keeps its
// place while there is nothing to say.
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
