// KeyGrid: a keyboard on the screen, drawn as one widget.
//
// Its owner hands in the key caps; the grid scales them to fit, draws them crisply at every scale,
// and tells which key the user picks, by the pointer or by the keyboard. Programmed, empty, current
// and unused keys differ by colour and by a mark, for those who see no colours. Every shown key is
// an accessible object with a name.
#pragma once

#include <QColor>
#include <QRectF>
#include <QString>
#include <QWidget>

#include <vector>

class QPainter;

namespace qx::views {

enum class KeyState { Unused, Empty, Programmed };

struct KeyCap {
    int index = 0; // the key's number for its owner; different for every key
    QRectF place;  // in the owner's unit
    QString caption;
    QString toolTip;
    QString name; // for those who hear the screen: "Key 30, A, programmed: Ctrl C"
    QColor color; // of the cap's top; captions are drawn in black or white, whichever reads better
    KeyState state = KeyState::Unused;
    bool isCurrent = false;
    bool isEnabled = true; // can be picked
    bool isBold = false;
};

// Draws the caps into `area` as large as they fit, their proportions kept; pointSize is that of the
// captions at natural size. `focused` is the index of the cap with the keyboard focus, -1 for none.
void PaintKeyCaps(QPainter& painter, const QRectF& area, const std::vector<KeyCap>& caps,
                  double pointSize, int focused = -1);

// A colour of the preferences, 0x00BBGGRR or, with the top bit set, a system colour's index.
[[nodiscard]] QColor ToQColor(std::int32_t lColor);

class KeyGrid : public QWidget {
    Q_OBJECT
public:
    explicit KeyGrid(QWidget* parent = nullptr);

    // The keys, in reading order. The focus stays on its key where that is still there.
    void SetKeys(std::vector<KeyCap> caps);
    [[nodiscard]] const std::vector<KeyCap>& Keys() const { return m_caps; }
    void SetPointSize(int points);

    // The key that has the keyboard focus, -1 when there is none.
    [[nodiscard]] int FocusKey() const { return m_focusKey; }
    void SetFocusKey(int index);

    // Where the key is drawn, in this widget; an empty rectangle for an unknown key.
    [[nodiscard]] QRect KeyRect(int index) const;
    [[nodiscard]] int KeyAt(const QPoint& point) const; // -1 for none
    // As if the user had picked the key; disabled keys cannot be picked.
    void Pick(int index);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

signals:
    void KeyPicked(int index);

protected:
    bool event(QEvent* event) override; // tool tips
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override; // arrows, Home, End, Space, Enter

private:
    std::vector<KeyCap> m_caps;
    int m_pointSize = 8;
    int m_focusKey = -1;
};

} // namespace qx::views
