// HeldKeys: Shift, Ctrl, Alt and Alt Gr, to be held while the next key is chosen.
#pragma once

#include "qxcontrols/common/Types.h"

#include <QWidget>

#include <vector>

class QToolButton;

namespace qx {
class QXKeyboardLayoutData;
}

namespace qx::views {

class HeldKeys : public QWidget {
    Q_OBJECT
public:
    explicit HeldKeys(QWidget* parent = nullptr);

    // Names the keys as the layout does; without one, as the language does.
    void ShowLayout(const QXKeyboardLayoutData* layout);
    // Shows that these are held, and no others.
    void Show(const std::vector<Byte>& held);

signals:
    void HeldChanged(int key, bool isHeld);

protected:
    void changeEvent(QEvent* event) override;

private:
    void ShowTexts();

    std::vector<QToolButton*> m_keys;
    std::vector<QString> m_captions; // of the layout
};

} // namespace qx::views
