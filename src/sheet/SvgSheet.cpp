#include "sheet/SvgSheet.h"

#include <QBuffer>
#include <QPainter>
#include <QSvgGenerator>

#include <cmath>

namespace qx::sheet {

QByteArray SvgSheet(const SheetPages& pages, const QString& title) {
    constexpr double kGap = 16; // between the pages
    const double step = SheetPages::kSize.height() + kGap;
    const QRectF drawing(0, 0, SheetPages::kSize.width(), pages.Count() * step - kGap);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QSvgGenerator generator;
    generator.setOutputDevice(&buffer);
    generator.setResolution(96);
    generator.setSize({static_cast<int>(std::ceil(drawing.width())),
                       static_cast<int>(std::ceil(drawing.height()))});
    generator.setViewBox(drawing);
    generator.setTitle(title);
    QPainter painter(&generator);
    for (int page = 0; page < pages.Count(); ++page) {
        painter.save();
        painter.translate(0, page * step);
        painter.fillRect(QRectF({}, SheetPages::kSize), Qt::white);
        pages.Paint(painter, page, 1);
        painter.restore();
    }
    painter.end();
    return bytes;
}

} // namespace qx::sheet
