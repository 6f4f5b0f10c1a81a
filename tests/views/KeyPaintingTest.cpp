// Caps of keys as they are drawn: states differ without colours, and texts stay readable.
#include "TestCaps.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "qxcontrols/keys/QXLayoutDisplay.h"
#include "views/QXLayoutDisplayView.h"

#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <utility>

namespace qx::views {
namespace {

// A cap as it is drawn, without its colours: how bright each pixel is.
QImage Picture(const KeyCap& cap, int focused = -1) {
    QImage image(80, 80, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    PaintKeyCaps(painter, image.rect(), {cap}, {8, 6}, focused);
    painter.end();
    return image.convertToFormat(QImage::Format_Grayscale8);
}

int DifferentPixels(const QImage& a, const QImage& b) {
    int different = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x)
            different += std::abs(qGray(a.pixel(x, y)) - qGray(b.pixel(x, y))) > 40 ? 1 : 0;
    return different;
}

TEST(KeyPaintingTest, StatesDifferByMoreThanColour) {
    for (const QColor& color : {QColor(Qt::blue), QColor(Qt::yellow), QColor(60, 60, 60)}) {
        std::vector<QImage> pictures;
        for (const KeyState state : {KeyState::Unused, KeyState::Empty, KeyState::Programmed})
            for (const bool isCurrent : {false, true}) {
                KeyCap cap = Cap(1, {0, 0, 100, 100});
                cap.color = color;
                cap.state = state;
                cap.isCurrent = isCurrent;
                pictures.push_back(Picture(cap));
                EXPECT_GT(DifferentPixels(Picture(cap), Picture(cap, 1)), 100) << "focus";
            }
        for (std::size_t a = 0; a < pictures.size(); ++a)
            for (std::size_t b = a + 1; b < pictures.size(); ++b)
                EXPECT_GT(DifferentPixels(pictures[a], pictures[b]), 60) << a << " and " << b;
    }
}

TEST(KeyPaintingTest, LongTextsStayInsideTheirCaps) {
    for (const QString& text : {QStringLiteral("WWWWWWWWWWWWWWWWWW"), QStringLiteral("NumEnter"),
                                QStringLiteral("Subtotal with discount and tax")}) {
        KeyCap cap = Cap(1, {0, 0, 100, 100});
        cap.caption = cap.legend = text;
        const KeyPlacing placing({cap}, QRectF(0, 0, 40, 40), 1);
        const QRectF rect = placing.Map(cap.place);
        const std::vector<KeyText> texts = KeyTexts(rect, cap, placing, {8});
        EXPECT_GE(texts.size(), 2U);
        for (const KeyText& shown : texts)
            EXPECT_TRUE(rect.contains(QRectF(shown.at, shown.text.size())))
                << shown.text.text().toStdString();
    }
}

QString Shown(const std::vector<KeyText>& texts) {
    QString shown;
    for (const KeyText& text : texts)
        shown += text.text.text();
    return shown.remove(u' ');
}

// Every caption of the shipped layouts fits its key, at each size that people choose.
TEST(KeyPaintingTest, CaptionsThatFitAreShownWhole) {
    for (const char* name : {"us.qxl", "uk.qxl", "german.qxl", "french.qxl", "spanish.qxl"}) {
        QXKeyboardLayoutData layout;
        layout.SetLayoutPath(QX_LAYOUTS);
        ASSERT_TRUE(layout.OpenLayoutByName(name));
        QXLayoutDisplay display;
        display.SetLayoutSource(&layout);
        display.ReloadKeysSettings(KeyboardSequences());
        const QXLayoutDisplayView view(display);
        const std::vector<KeyCap>& caps = view.Grid()->Keys();
        const int least = view.Grid()->minimumSizeHint().width();
        for (const int width : {least, 960, 1100, 1900}) {
            const KeyPlacing placing(caps, QRectF(0, 0, width, width), 1);
            for (const int points : {6, 8, 10, 14})
                for (KeyCap cap : caps) {
                    cap.legend.clear();
                    const auto texts = KeyTexts(placing.Map(cap.place), cap, placing,
                                                {static_cast<double>(points)});
                    QString shown = Shown(texts);
                    QString whole = QString(cap.caption).remove(u' ');
                    if (width == least && shown.endsWith(u'\u2026')) { // the end may be cut
                        shown.chop(1);
                        EXPECT_GE(shown.size(), 4) << whole.toStdString();
                        whole.truncate(shown.size());
                    }
                    EXPECT_EQ(shown.toStdString(), whole.toStdString())
                        << name << " at " << points << " points, " << width << " pixels";
                }
        }
    }
}

// The labels of a board are all of one font, and what a key sends has two lines before it is cut.
TEST(KeyPaintingTest, LabelsLookAlike) {
    QXKeyboardLayoutData layout;
    layout.SetLayoutPath(QX_LAYOUTS);
    ASSERT_TRUE(layout.OpenLayoutByName("us.qxl"));
    QXLayoutDisplay display;
    display.SetLayoutSource(&layout);
    display.ReloadKeysSettings(KeyboardSequences());
    const QXLayoutDisplayView view(display);
    std::vector<KeyCap> caps = view.Grid()->Keys();
    caps[0].state = KeyState::Programmed;
    caps[0].caption = QStringLiteral("Subtotal with discount and tax"); // does not count
    for (const int width : {700, 960, 1100, 1900})
        for (const double points : {8.0, 12.0}) {
            const KeyPlacing placing(caps, QRectF(0, 0, width, width), 1);
            const KeyTextSize common = CommonTextSize(caps, placing, {points});
            const double least = 8.25 * kNaturalKeyHeight / placing.KeyHeight();
            EXPECT_LE(common.points, std::max(points, least) + 1e-6); // by way of pixels
            std::set<std::pair<int, int>> fonts;
            for (std::size_t i = 1; i < caps.size(); ++i)
                for (const KeyText& text :
                     KeyTexts(placing.Map(caps[i].place), caps[i], placing, common))
                    fonts.emplace(text.font.pixelSize(), text.font.stretch());
            EXPECT_EQ(fonts.size(), 1U) << width << " pixels, " << points << " points";
        }

    KeyCap cap = Cap(1, {0, 0, 575, 575});
    cap.state = KeyState::Programmed;
    cap.legend = QStringLiteral("F2");
    const KeyPlacing placing({cap}, QRectF(0, 0, 52, 52), 1);
    for (const char* sent : {"Esc\u2193 Enter\u2193", "1\u2193 2\u2193 3\u2193"}) {
        cap.caption = QString::fromUtf8(sent);
        EXPECT_EQ(KeyTexts(placing.Map(cap.place), cap, placing, {8}).size(), 3U) << sent;
    }
}

// The smallest POS key, with the longest label.
TEST(KeyPaintingTest, AWordIsNotBroken) {
    KeyCap cap = Cap(1, {0, 0, 675, 575});
    const auto shown = [&](const QString& caption, int height) {
        cap.caption = caption;
        const KeyPlacing placing({cap}, QRectF(0, 0, 2 * height, height), 1);
        QStringList lines;
        for (const KeyText& text : KeyTexts(placing.Map(cap.place), cap, placing, {8})) {
            EXPECT_GE(text.font.pixelSize(), 11);
            lines += text.text.text();
        }
        return lines.join(u'/').toStdString();
    };
    EXPECT_EQ(shown(QStringLiteral("Backspace"), 40), "Back/space");
    EXPECT_EQ(shown(QStringLiteral("NumEnter"), 40), "Num/Enter");
    EXPECT_EQ(shown(QStringLiteral("Num+"), 30), "Num+") << "no line of one sign";
    const std::string cut = shown(QStringLiteral("Umschalttaste"), 40);
    EXPECT_EQ(cut.find('/'), std::string::npos) << cut;
    EXPECT_TRUE(QString::fromStdString(cut).endsWith(u'\u2026')) << cut;
}

// A selected key has as much room as others, and its marks do not cover what it shows.
TEST(KeyPaintingTest, TheCurrentKeyShowsItsTextsAsOthersDo) {
    KeyCap cap = Cap(1, {0, 0, 675, 575});
    cap.caption = QStringLiteral("Ctrl+C");
    cap.legend = QStringLiteral("Home");
    cap.state = KeyState::Programmed;
    for (const int height : {32, 40, 61}) {
        const KeyPlacing placing({cap}, QRectF(0, 0, 2 * height, height), 1);
        const QRectF rect = placing.Map(cap.place);
        cap.isCurrent = false;
        const auto other = KeyTexts(rect, cap, placing, {8});
        cap.isCurrent = true;
        const auto current = KeyTexts(rect, cap, placing, {8});
        ASSERT_EQ(current.size(), other.size());
        QRegion texts;
        for (std::size_t i = 0; i < current.size(); ++i) {
            EXPECT_EQ(current[i].text.text(), other[i].text.text());
            EXPECT_EQ(current[i].font, other[i].font);
            const QFontMetricsF metrics(current[i].font);
            texts += QRectF(current[i].at + QPointF(0, metrics.ascent() - metrics.capHeight()),
                            QSizeF(metrics.horizontalAdvance(current[i].text.text()),
                                   metrics.capHeight()))
                         .toRect();
        }
        QImage image(2 * height, height, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        PaintKeyCurrent(painter, rect, placing);
        PaintKeyDot(painter, rect, cap, placing);
        painter.end();
        for (const QRect& text : texts)
            for (int y = text.top(); y <= text.bottom(); ++y)
                for (int x = text.left(); x <= text.right(); ++x)
                    EXPECT_EQ(qAlpha(image.pixel(x, y)), 0) << x << ", " << y << " of " << height;
    }
}

TEST(KeyPaintingTest, ALongTextIsCutAtItsEndOnly) {
    KeyCap cap = Cap(1, {0, 0, 700, 600});
    cap.caption = QStringLiteral("Milk 1 l, low-fat, from the farm next door, in bottles of glass");
    const KeyPlacing placing({cap}, QRectF(0, 0, 70, 60), 1);
    const std::vector<KeyText> texts = KeyTexts(placing.Map(cap.place), cap, placing, {8});
    ASSERT_GE(texts.size(), 2U);
    QString whole;
    for (std::size_t line = 0; line + 1 < texts.size(); ++line)
        whole += texts[line].text.text() + u' ';
    EXPECT_TRUE(cap.caption.startsWith(whole)) << whole.toStdString();
    EXPECT_TRUE(texts.back().text.text().endsWith(u'\u2026'));

    // Two sizes of captions stay apart.
    cap.caption = QStringLiteral("7");
    const auto pixels = [&](double scale) {
        cap.textScale = scale;
        return KeyTexts(placing.Map(cap.place), cap, placing, {12}).front().font.pixelSize();
    };
    EXPECT_EQ(pixels(1.25) * 4, pixels(1) * 5);
}

TEST(KeyPaintingTest, SystemColoursFollowThePalette) {
    EXPECT_EQ(ToQColor(0x00112233), QColor(0x33, 0x22, 0x11));
    const auto face = static_cast<std::int32_t>(0x8000000FU);
    const auto unknown = static_cast<std::int32_t>(0x800000FFU);
    EXPECT_EQ(ToQColor(face), QGuiApplication::palette().color(QPalette::Button));
    EXPECT_TRUE(ToQColor(unknown).isValid());
}

} // namespace
} // namespace qx::views
