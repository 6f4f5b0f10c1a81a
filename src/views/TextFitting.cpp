#include "views/TextFitting.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <span>

namespace qx::views {

namespace {

constexpr double kLeastTextScale = 0.6; // smaller than that only where a text would be cut else
constexpr double kLineStep = 0.85;      // of the font's height
constexpr int kStretches[] = {100, 88, 76, 66, 58}; // of letters, in percent: narrow before a cut
constexpr int kLeastPart = 2; // characters of a line that is not broken at a blank

double Advance(const QFont& font, const QString& text) {
    return QFontMetricsF(font).horizontalAdvance(text);
}

// The stretches of letters to try, from the font's own.
std::span<const int> NarrowerThan(const QFont& font) {
    const auto* first =
        std::find_if(std::begin(kStretches), std::end(kStretches), [&](int stretch) {
            return font.stretch() == QFont::AnyStretch || stretch <= font.stretch();
        });
    return {first, std::end(kStretches)};
}

// Between words, in "NumLock" too; and as keyboards print the one word that is long on all of them.
bool IsBreak(const QString& text, qsizetype at) {
    if (text[at] == u' ')
        return true;
    if (at < kLeastPart || text.size() - at < kLeastPart)
        return false;
    return (text[at - 1].isLower() && !text[at].isLower()) ||
           (at == 4 && text == QLatin1String("Backspace"));
}

// The text as the two lines that are shortest, broken between words; else as one.
QStringList BetweenWords(const QString& text, const QFont& font) {
    QStringList best{text};
    double least = Advance(font, text);
    for (qsizetype at = 1; at < text.size(); ++at) {
        if (!IsBreak(text, at))
            continue;
        const QStringList lines{text.left(at).trimmed(), text.mid(at).trimmed()};
        const double width = std::max(Advance(font, lines[0]), Advance(font, lines[1]));
        if (width < least) {
            least = width;
            best = lines;
        }
    }
    return best;
}

// The parts of a font's height in which the lines have no ink: above capitals, and below the last
// line if nothing hangs there.
double Blank(const QStringList& lines, const QFontMetricsF& metrics) {
    const QString& last = lines.back();
    const bool hangs = std::any_of(last.begin(), last.end(), [](QChar c) {
        return !c.isUpper() &&
               !QStringView(u"abcdefhiklmnorstuvwxz0123456789+-*. \u2193\u2026").contains(c);
    });
    return metrics.ascent() - metrics.capHeight() + (hangs ? 0 : metrics.descent());
}

// Whether the lines fit into the area in a font of that size. Fonts without subpixel positions do
// not scale evenly, so each size is measured.
bool Fits(const QStringList& lines, QFont font, int pixels, const QSizeF& area) {
    font.setPixelSize(pixels);
    const QFontMetricsF metrics(font);
    const double spare = lines.size() > 1 ? Blank(lines, metrics) : 0;
    return HeightOfLines(metrics, lines.size()) - spare <= area.height() &&
           std::all_of(lines.begin(), lines.end(), [&](const QString& line) {
               return metrics.horizontalAdvance(line) <= area.width();
           });
}

// The largest size from `least` to `most` in which the lines fit into the area; 0: none.
int FittingPixels(const QStringList& lines, const QFont& font, int least, int most,
                  const QSizeF& area) {
    for (int pixels = most; pixels >= least; --pixels)
        if (Fits(lines, font, pixels, area))
            return pixels;
    return 0;
}

// The text in as many lines as the area is high, blank parts beyond it, broken between words where
// the lines are full; the last line has all the rest.
QStringList Wrapped(const QString& text, const QFont& font, const QSizeF& area) {
    const QFontMetricsF metrics(font);
    const double height = area.height() + Blank({text}, metrics);
    const auto most =
        std::max(1, static_cast<int>((height - metrics.height()) / LineStep(metrics)) + 1);
    QStringList lines;
    QString rest = text;
    while (static_cast<int>(lines.size()) + 1 < most) {
        qsizetype end = 0;
        for (qsizetype at = 1; at < rest.size(); ++at)
            if (IsBreak(rest, at) && metrics.horizontalAdvance(rest.left(at)) <= area.width())
                end = at;
        if (end == 0 || metrics.horizontalAdvance(rest) <= area.width())
            break;
        lines.append(rest.left(end).trimmed());
        rest = rest.mid(end).trimmed();
    }
    lines.append(rest);
    return lines;
}

} // namespace

double LineStep(const QFontMetricsF& metrics) {
    return kLineStep * metrics.height();
}

double HeightOfLines(const QFontMetricsF& metrics, qsizetype lines) {
    return metrics.height() + LineStep(metrics) * static_cast<double>(lines - 1);
}

QStringList FittingLines(const QString& text, QFont& font, double size, const QSizeF& area,
                         int leastPixels) {
    const int most = std::max(leastPixels, static_cast<int>(std::lround(size)));
    const int least = std::max(leastPixels, static_cast<int>(std::lround(most * kLeastTextScale)));
    const auto stretches = NarrowerThan(font);
    for (const int stretch : stretches) {
        font.setStretch(stretch);
        QStringList lines{text};
        int pixels = FittingPixels(lines, font, least, most, area);
        if (pixels < most) {
            font.setPixelSize(most);
            const QStringList two = BetweenWords(text, font);
            int inTwo = FittingPixels(two, font, least, most, area);
            if (pixels == 0 && inTwo == 0) {
                pixels = FittingPixels(lines, font, leastPixels, least, area);
                inTwo = FittingPixels(two, font, leastPixels, least, area);
            }
            if (inTwo > pixels) {
                lines = two;
                pixels = inTwo;
            }
        }
        if (pixels != 0) {
            font.setPixelSize(pixels);
            return lines;
        }
    }
    font.setPixelSize(least);
    QStringList lines;
    for (const int stretch : stretches) { // narrow letters help only where lines are too wide
        font.setStretch(stretch);
        lines = Wrapped(text, font, area);
        if (Advance(font, lines.back()) <= area.width())
            break;
    }
    return lines;
}

} // namespace qx::views
