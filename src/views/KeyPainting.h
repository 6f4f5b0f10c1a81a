// KeyPainting: what a key cap looks like, on the screen and on paper.
//
// Caps are placed in their owner's unit and scaled to fit; all else is in proportion to the height
// of a plain key, which is kNaturalKeyHeight at natural size. Colours of marks and texts follow
// from the cap's own colour.
#pragma once

#include <QColor>
#include <QFont>
#include <QRectF>
#include <QStaticText>
#include <QString>

#include <cstdint>
#include <vector>

class QPainter;

namespace qx::views {

enum class KeyState { Unused, Empty, Programmed };

struct KeyCap {
    int index = 0; // the key's number for its owner; different for every key
    QRectF place;  // in the owner's unit
    QString caption;
    QString legend; // small, in the upper left corner
    int group = 0;  // keys of one group that lie side by side are joined; 0: of none
    QString toolTip;
    QString name; // for those who hear the screen: "Key 30 (A), programmed: Ctrl C"
    QColor color; // of the cap's top; captions are drawn in black or white, whichever reads better
    KeyState state = KeyState::Unused;
    bool isCurrent = false;
    bool isEnabled = true;   // can be picked
    bool joinsRanges = true; // is selected together with the keys around it
    bool isBold = false;
    double textScale = 1; // of the caption, beside those of the other caps
};

// A colour of the preferences, 0x00BBGGRR or, with the top bit set, a system colour's index.
[[nodiscard]] QColor ToQColor(std::int32_t lColor);

// How large the texts on caps are.
struct KeyTextSize {
    double points;        // of captions at natural size
    int leastPixels = 11; // of any text, in the painter's unit; on screens that is 8 points
    int stretch = 100;    // of letters, in percent; single texts may be narrower

    bool operator==(const KeyTextSize&) const = default;
};

// Draws the caps into `area` as large as they fit, their proportions kept. `focused` is the index
// of the cap with the keyboard focus, -1 for none.
void PaintKeyCaps(QPainter& painter, const QRectF& area, const std::vector<KeyCap>& caps,
                  const KeyTextSize& textSize, int focused = -1);

// The same where a placing puts them.
class KeyPlacing;
void PaintKeyCaps(QPainter& painter, const KeyPlacing& placing, const std::vector<KeyCap>& caps,
                  const KeyTextSize& textSize, int focused = -1);

inline constexpr double kNaturalKeyHeight = 40; // pixels on a screen of 96 to the inch

// From the owner's unit to where the caps are drawn: in the upper left corner of an area, as large
// as they fit.
class KeyPlacing {
public:
    KeyPlacing() = default;
    KeyPlacing(const std::vector<KeyCap>& caps, const QRectF& area, double pixelRatio);

    // The place on whole pixels of the device, so that straight edges are sharp.
    [[nodiscard]] QRectF Map(const QRectF& place) const;
    [[nodiscard]] QRectF Board() const { return m_board; }          // around all caps
    [[nodiscard]] double KeyHeight() const { return m_keyHeight; }  // of a plain key, as drawn
    [[nodiscard]] double Pixel() const { return 1 / m_pixelRatio; } // the device's

    // The size of the board at natural size.
    [[nodiscard]] static QSizeF NaturalSize(const std::vector<KeyCap>& caps);

private:
    double m_scale = 1;
    double m_pixelRatio = 1;
    double m_keyHeight = kNaturalKeyHeight;
    QPointF m_origin;
    QRectF m_board;
};

// The size, not more than `wanted`, and the stretch in which the labels of all keys that are not
// programmed have room, so that they look alike; labels that would make all others too narrow do
// not count.
[[nodiscard]] KeyTextSize CommonTextSize(const std::vector<KeyCap>& caps, const KeyPlacing& placing,
                                         const KeyTextSize& wanted);

// The steps of drawing a cap, in their order. `rect` is where the placing maps it.

enum class KeyTouch { None, Hovered, Pressed };
void PaintKeyBody(QPainter& painter, const QRectF& rect, const KeyCap& cap,
                  const KeyPlacing& placing, KeyTouch touch = KeyTouch::None);

// A text of a cap, ready to draw many times.
struct KeyText {
    QFont font;
    QStaticText text;
    QPointF at;
    QColor color;
};
[[nodiscard]] std::vector<KeyText> KeyTexts(const QRectF& rect, const KeyCap& cap,
                                            const KeyPlacing& placing, const KeyTextSize& textSize);
void PaintKeyText(QPainter& painter, const KeyText& text);
// Crosses out what is on the key.
void PaintKeyStruck(QPainter& painter, const QRectF& rect, const KeyCap& cap,
                    const KeyPlacing& placing);

// Joins the keys of each group: fills the gaps between neighbours and goes a little around them.
// `rects` are where the placing maps the caps.
void PaintKeyGroups(QPainter& painter, const std::vector<KeyCap>& caps,
                    const std::vector<QRectF>& rects, const KeyPlacing& placing);

// Marks of a cap, drawn when all caps are. Most go beyond it, where they take no room from texts.
// A ring: the current key.
void PaintKeyCurrent(QPainter& painter, const QRectF& rect, const KeyPlacing& placing);
void PaintKeyFocus(QPainter& painter, const QRectF& rect, const KeyPlacing& placing);
// A tint and a frame, and when all keys have theirs, a tick: one of several keys that are selected,
// or the key onto which one is dragged.
void PaintKeySelected(QPainter& painter, const QRectF& rect, const KeyPlacing& placing);
void PaintKeyTick(QPainter& painter, const QRectF& rect, const KeyPlacing& placing);
// A dot in the lower right corner, below the texts.
void PaintKeyDot(QPainter& painter, const QRectF& rect, const KeyCap& cap,
                 const KeyPlacing& placing);

// The colour of such dots.
inline constexpr QColor kDotColor(0xE8, 0x71, 0x0A);

} // namespace qx::views
