// KeyGrid: a keyboard on the screen, drawn as one widget.
//
// Its owner provides the key caps; the grid scales them to fit, draws them crisply at every scale,
// and reports the key that the user reaches with the arrow keys or picks with the pointer or the
// keyboard. Programmed, empty, current and unused keys differ by a mark as well as by colour, for
// users who cannot see colours. Every shown key is an accessible object with a name.
//
// The owner can allow several selected keys: a click or an arrow key selects one, Control adds or
// removes one, Shift selects all between two (with Home or End to the edge of the row, with Control
// too to that of the keyboard), and a frame drawn with the pointer those it touches. The anchor of
// the selection is reported as a picked key.
#pragma once

#include "views/KeyPainting.h"
#include "views/KeySelection.h"

#include <QByteArray>
#include <QPixmap>
#include <QWidget>

#include <functional>
#include <map>
#include <set>
#include <tuple>
#include <utility>
#include <vector>

namespace qx::views {

class KeyGrid : public QWidget {
    Q_OBJECT
public:
    explicit KeyGrid(QWidget* parent = nullptr);

    // The keys, in reading order; keys without a place on the screen are left out. The focus stays
    // on its key if that is still present.
    void SetKeys(std::vector<KeyCap> caps);
    [[nodiscard]] const std::vector<KeyCap>& Keys() const { return m_caps; }
    [[nodiscard]] bool HasKey(int index) const { return Row(index) >= 0; }
    void SetPointSize(int points);
    // If true, Ctrl with an arrow key moves the focus without reaching a key, and Ctrl with the
    // space bar picks one. Otherwise the grid ignores these keys.
    void SetControlMoves(bool moves) { m_controlMoves = moves; }

    // The prefix of the keys' object names: with "cmdKey", key 30 is "cmdKey_30".
    void SetKeyName(const char* name) { m_keyName = name; }
    [[nodiscard]] QString KeyName(int index) const;

    // The key with the focus within the grid, -1 if none; the grid itself need not have the focus.
    [[nodiscard]] int FocusKey() const { return m_focusKey; }
    // An unknown key removes the focus. A key that is not selected becomes the only one that is.
    void SetFocusKey(int index);

    // Selecting several keys; off at first.
    void SetSelects(bool selects);
    [[nodiscard]] bool Selects() const { return m_selects; }
    [[nodiscard]] bool IsSelected(int index) const { return m_selection.Has(index); }
    [[nodiscard]] std::vector<int> Selected() const; // in the order of Keys
    void Select(const std::set<int>& keys);
    // Which keys are dragged onto others; on the rest, and at first on all, a drag draws a band.
    using WhichKeys = std::function<bool(int index)>;
    void SetCarries(WhichKeys carries) { m_carries = std::move(carries); }

    // Keys with a dot, and its meaning for tool tips and those who hear the screen.
    void SetMarked(std::set<int> keys, const QString& meaning);
    [[nodiscard]] bool IsMarked(int index) const { return m_marked.keys.contains(index); }
    // Keys that are crossed out.
    void SetStruck(std::set<int> keys, const QString& meaning);
    [[nodiscard]] bool IsStruck(int index) const { return m_struck.keys.contains(index); }
    // The tool tip of the key, with the meaning of its marks.
    [[nodiscard]] QString DescriptionOf(const KeyCap& cap) const;

    // The key's rectangle in this widget; empty for an unknown key.
    [[nodiscard]] QRect KeyRect(int index) const;
    [[nodiscard]] int KeyAt(const QPoint& point) const; // -1 if there is none
    // Like a pick by the user; the key gets the focus. Disabled keys cannot be picked.
    void Pick(int index, bool withControl = false);
    // Like a move by the user to the key, which gets the focus.
    void Reach(int index);

    // The height at this width; it leaves so much of the window's height to others, whatever these
    // show, unless the keys would be too small.
    [[nodiscard]] int HeightAt(int width, int left) const;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

signals:
    void KeyPicked(int index, bool withControl);
    // The user has moved to the key without picking it.
    void KeyReached(int index);
    // The user or SetFocusKey has moved the focus to another key.
    void FocusKeyChanged(int index);
    // Only while several keys can be selected.
    void SelectionChanged();
    void KeyActivated(int index); // by a double click
    void KeyDropped(int from, int onto, bool withShift);
    void MenuRequested(const QPoint& globalAt); // for the selected keys

protected:
    bool event(QEvent* event) override; // tooltips
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override; // picks on release, like a button
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override; // arrows, Home, End, Space, Enter; Esc in a drag

private:
    struct Marks {
        std::set<int> keys;
        QString meaning;
    };
    // A key's position, and its texts prepared for drawing.
    struct Drawn {
        bool isReady = false;
        QRectF rect;
        std::vector<KeyText> texts;
    };
    // The pointer while its button is held.
    struct Drag {
        enum class Kind { None, Press, Band, Carry };
        Kind kind = Kind::None;
        QPoint from, at;
        int key = -1;        // where it began
        KeySelection before; // the selection at that time
    };
    // Keys that look the same share an image: width, height, colour, state, touch.
    using Look = std::tuple<int, int, QRgb, KeyState, KeyTouch>;

    void Forget(); // discards everything prepared for drawing
    void Prepare();
    const QPixmap& BodyImage(const KeyCap& cap, const QSizeF& size);
    [[nodiscard]] int Row(int index) const; // in m_caps; -1 if not found
    [[nodiscard]] int RowToward(Qt::Key arrow) const;
    void ReachRow(int row);
    void MoveFocus(int index);
    enum class Move { Reach, FocusOnly, Extend };
    void MoveToward(Qt::Key arrow, Move move);
    void ExtendTo(int index);
    // To the start or the end of the row with the focus, or of all keys.
    void ExtendToEdge(bool atEnd, bool ofAll);
    void TakeSelection(KeySelection selection);
    void GoOnDragging(const QPoint& at, Qt::KeyboardModifiers modifiers);
    void EndDrag();
    [[nodiscard]] QRect Band() const { return QRect(m_drag.from, m_drag.at).normalized(); }
    [[nodiscard]] bool ShowsSelected(const KeyCap& cap) const; // by a tint and a tick
    void PaintMarks(QPainter& painter) const;
    void PaintDrag(QPainter& painter);
    bool ShowToolTip(const QPoint& at, const QPoint& globalAt);
    void Set(Marks& marks, Marks wanted);
    void UpdateKey(int index);
    void UpdateSelected();
    void Hover(int index);

    std::vector<KeyCap> m_caps;
    std::vector<Drawn> m_drawn; // parallel to m_caps; empty until the next drawing
    std::map<Look, QPixmap> m_images;
    KeyPlacing m_placing;
    double m_pixelRatio = 0; // for which the images were prepared
    QByteArray m_keyName = "key";
    int m_pointSize = 8;
    KeyTextSize m_textSize{}; // in which the texts were prepared
    bool m_isTextSizeKnown = false;
    int m_focusKey = -1;
    int m_hoveredKey = -1;
    bool m_controlMoves = false;
    bool m_selects = false;
    WhichKeys m_carries;
    KeySelection m_selection;
    Marks m_marked; // with a dot
    Marks m_struck;
    Drag m_drag;
    QPointF m_goal; // the column and row that arrow keys keep to, in the owner's unit
};

} // namespace qx::views
