// HeldKeys: Shift, Ctrl, Alt and Alt Gr, to be held while the next key is chosen.
#pragma once

#include "qxcontrols/common/Types.h"

#include <QWidget>

#include <vector>

class QToolButton;

namespace qx::views {

class HeldKeys : public QWidget {
    Q_OBJECT
public:
    explicit HeldKeys(QWidget* parent = nullptr);

    // Shows that these are held, and no others.
    void Show(const std::vector<Byte>& held);

signals:
    void HeldChanged(int key, bool isHeld);

protected:
    void changeEvent(QEvent* event) override;

private:
    void ShowTexts();

    std::vector<QToolButton*> m_keys;
};

} // namespace qx::views
