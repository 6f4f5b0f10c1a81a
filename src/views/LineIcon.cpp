#include "views/LineIcon.h"

#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QRegularExpression>
#include <QXmlStreamReader>

#include <optional>

// A static library's resources are there only when they are asked for.
static void BeginIcons() {
    Q_INIT_RESOURCE(icons);
}

namespace qx::views {

namespace {

constexpr qreal kGrid = 24;
constexpr qreal kLineWidth = 1.75;

// Reads the data of a path: a letter is a command, which the numbers after it repeat.
class PathReader {
public:
    explicit PathReader(const QString& data) {
        static const QRegularExpression token(
            QStringLiteral("([A-Za-z])|(-?(?:\\d+\\.?\\d*|\\.\\d+))|([^\\s,])"));
        for (auto match = token.globalMatch(data); match.hasNext();)
            m_tokens.append(match.next().captured());
    }

    // False when the data cannot be read.
    bool AddTo(QPainterPath& path) {
        char command = 0;
        while (m_at < m_tokens.size()) {
            const QChar first = m_tokens[m_at].front();
            if (first.isLetter()) {
                command = first.toLatin1();
                ++m_at;
            }
            if (!Run(command, path))
                return false;
            if (command == 'M' || command == 'm') // further points are joined by lines
                command = command == 'M' ? 'L' : 'l';
        }
        return true;
    }

private:
    std::optional<qreal> Number() {
        bool isNumber = false;
        const qreal number = m_at < m_tokens.size() ? m_tokens[m_at].toDouble(&isNumber) : 0;
        if (!isNumber)
            return {};
        ++m_at;
        return number;
    }
    std::optional<QPointF> Point(const QPointF& origin) {
        const auto x = Number();
        const auto y = Number();
        if (!x || !y)
            return {};
        return origin + QPointF(*x, *y);
    }

    bool Run(char command, QPainterPath& path) {
        const QPointF here = path.currentPosition();
        const QPointF origin = command >= 'a' ? here : QPointF();
        switch (command) {
        case 'M':
        case 'm':
            if (const auto to = Point(origin))
                return path.moveTo(*to), true;
            return false;
        case 'L':
        case 'l':
            if (const auto to = Point(origin))
                return path.lineTo(*to), true;
            return false;
        case 'H':
        case 'h':
            if (const auto x = Number())
                return path.lineTo(origin.x() + *x, here.y()), true;
            return false;
        case 'V':
        case 'v':
            if (const auto y = Number())
                return path.lineTo(here.x(), origin.y() + *y), true;
            return false;
        case 'C':
        case 'c': {
            const auto first = Point(origin);
            const auto second = Point(origin);
            const auto to = Point(origin);
            if (first && second && to)
                path.cubicTo(*first, *second, *to);
            return first && second && to;
        }
        case 'Z':
        case 'z':
            path.closeSubpath();
            return true;
        default:
            return false;
        }
    }

    QStringList m_tokens;
    qsizetype m_at = 0;
};

class LineEngine : public QIconEngine {
public:
    explicit LineEngine(QPainterPath lines) : m_lines(std::move(lines)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode,
               QIcon::State /*state*/) override {
        const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        const auto role =
            mode == QIcon::Selected ? QPalette::HighlightedText : QPalette::WindowText;
        const qreal scale = qMin(rect.width(), rect.height()) / kGrid;
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(rect.x() + (rect.width() - scale * kGrid) / 2,
                           rect.y() + (rect.height() - scale * kGrid) / 2);
        painter->scale(scale, scale);
        painter->setPen(QPen(QGuiApplication::palette().color(group, role), kLineWidth,
                             Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter->drawPath(m_lines);
        painter->restore();
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, {{0, 0}, size}, mode, state);
        return pixmap;
    }
    [[nodiscard]] QIconEngine* clone() const override { return new LineEngine(*this); }

private:
    QPainterPath m_lines;
};

} // namespace

QPainterPath LinesOfSvg(const QByteArray& svg) {
    QPainterPath lines;
    QXmlStreamReader xml(svg);
    while (xml.readNextStartElement()) {
        const QXmlStreamAttributes attributes = xml.attributes();
        const auto number = [&](const char* name) {
            return attributes.value(QLatin1String(name)).toDouble();
        };
        if (xml.name() == QLatin1String("svg"))
            continue; // its elements follow
        if (xml.name() == QLatin1String("rect"))
            lines.addRoundedRect(number("x"), number("y"), number("width"), number("height"),
                                 number("rx"), number("rx"));
        else if (xml.name() == QLatin1String("circle"))
            lines.addEllipse(QPointF(number("cx"), number("cy")), number("r"), number("r"));
        else if (xml.name() != QLatin1String("path") ||
                 !PathReader(attributes.value(QLatin1String("d")).toString()).AddTo(lines))
            return {};
        xml.skipCurrentElement();
    }
    return xml.hasError() ? QPainterPath() : lines;
}

QIcon LineIcon(const QString& name) {
    BeginIcons();
    QFile file(QStringLiteral(":/icons/%1.svg").arg(name));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QIcon(new LineEngine(LinesOfSvg(file.readAll())));
}

} // namespace qx::views
