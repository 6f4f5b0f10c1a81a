// KeyGrid: a keyboard on the screen, drawn as one widget.
//
// Its owner hands in the key caps; the grid scales them to fit, draws them crisply at every scale,
// and tells which key the user reaches with the arrow keys and which the user picks, by the pointer
// or by the keyboard. Programmed, empty, current
// and unused keys differ by colour and by a mark, for those who see no colours. Every shown key is
// an accessible object with a name.
#pragma once

#include "views/KeyPainting.h"

#include <QByteArray>
#include <QPixmap>
#include <QWidget>

#include <map>
#include <tuple>
#include <vector>

namespace qx::views {

class KeyGrid : public QWidget {
    Q_OBJECT
public:
    explicit KeyGrid(QWidget* parent = nullptr);

    // The keys, in reading order; those without a place on the screen are left out. The focus stays
    // on its key where that is still there.
    void SetKeys(std::vector<KeyCap> caps);
    [[nodiscard]] const std::vector<KeyCap>& Keys() const { return m_caps; }
    [[nodiscard]] bool HasKey(int index) const { return Row(index) >= 0; }
    void SetPointSize(int points);
    // Whether the arrow keys with Control move the focus without reaching a key, and the space bar
    // with Control picks one. Else these keys are left to others.
    void SetControlMoves(bool moves) { m_controlMoves = moves; }

    // What the keys are called in the owner's program: with "cmdKey", key 30 is "cmdKey_30".
    void SetKeyName(const char* name) { m_keyName = name; }
    [[nodiscard]] QString KeyName(int index) const;

    // The key that has the keyboard focus, -1 when there is none; the widget need not have it.
    [[nodiscard]] int FocusKey() const { return m_focusKey; }
    void SetFocusKey(int index); // an unknown key: none

    // Where the key is drawn, in this widget; an empty rectangle for an unknown key.
    [[nodiscard]] QRect KeyRect(int index) const;
    [[nodiscard]] int KeyAt(const QPoint& point) const; // -1 for none
    // As if the user had picked the key, which thereby has the focus; disabled keys cannot be
    // picked.
    void Pick(int index, bool withControl = false);
    // As if the user had moved to the key, which thereby has the focus.
    void Reach(int index);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

signals:
    void KeyPicked(int index, bool withControl);
    // The user has moved to the key without picking it.
    void KeyReached(int index);
    // The user or SetFocusKey has moved the focus to another key.
    void FocusKeyChanged(int index);

protected:
    bool event(QEvent* event) override; // tool tips
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override; // picks, as a button does
    void keyPressEvent(QKeyEvent* event) override;       // arrows, Home, End, Space, Enter

private:
    // Where a key is drawn, and its texts ready to draw.
    struct Drawn {
        bool isReady = false;
        QRectF rect;
        std::vector<KeyText> texts;
    };
    // Keys that look alike share an image: width, height, colour, state, current, pressed, hovered.
    using Look = std::tuple<int, int, QRgb, KeyState, bool, bool, bool>;

    void Forget(); // what has been prepared for drawing
    void Prepare();
    const QPixmap& BodyImage(const KeyCap& cap, const QSizeF& size);
    [[nodiscard]] int Row(int index) const; // in m_caps; -1 for none
    [[nodiscard]] int RowToward(Qt::Key arrow) const;
    void ReachRow(int row);
    void MoveToward(Qt::Key arrow, bool reaches);
    bool ShowToolTip(const QPoint& at, const QPoint& globalAt);
    void UpdateKey(int index);
    void Hover(int index);

    std::vector<KeyCap> m_caps;
    std::vector<Drawn> m_drawn; // as m_caps; empty until the next drawing
    std::map<Look, QPixmap> m_images;
    KeyPlacing m_placing;
    double m_pixelRatio = 0; // that of what has been prepared
    QByteArray m_keyName = "key";
    int m_pointSize = 8;
    int m_focusKey = -1;
    int m_pressedKey = -1;
    int m_hoveredKey = -1;
    bool m_controlMoves = false;
    QPointF m_goal; // the column and the row that arrow keys keep to, in the owner's unit
};

} // namespace qx::views
