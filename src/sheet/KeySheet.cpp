#include "sheet/KeySheet.h"

#include "files/Files.h"
#include "files/SystemTexts.h"
#include "host/Error.h"
#include "sheet/SheetFormat.h"
#include "sheet/SheetPages.h"
#include "sheet/SvgSheet.h"

#include <QBuffer>
#include <QPainter>
#include <QPdfWriter>

namespace qx::sheet {

namespace {

constexpr int kPdfPixels = 4; // in 1/96 inch

void PaintPages(const SheetPages& pages, QPagedPaintDevice& device) {
    const double scale = device.logicalDpiX() / 96.0;
    QPainter painter(&device);
    for (int page = 0; page < pages.Count(); ++page) {
        if (page > 0)
            device.newPage();
        painter.save();
        painter.scale(scale, scale);
        pages.Paint(painter, page, scale);
        painter.restore();
    }
}

QByteArray Pdf(const SheetPages& pages, const QString& title) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    SetKeySheetPage(writer);
    writer.setResolution(96 * kPdfPixels);
    writer.setTitle(title);
    PaintPages(pages, writer);
    return bytes;
}

QByteArray BytesOf(const SheetPages& pages, const QString& title, SheetFormat format) {
    if constexpr (kHasSvg)
        if (format == SheetFormat::Svg)
            return SvgSheet(pages, title);
    return Pdf(pages, title);
}

} // namespace

void SetKeySheetPage(QPagedPaintDevice& device) {
    device.setPageLayout(
        QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Landscape, {}, QPageLayout::Millimeter));
}

void PaintKeySheet(const KeySheet& sheet, QPagedPaintDevice& device) {
    const SheetContent content = ContentOf(sheet);
    PaintPages(SheetPages(content), device);
}

void WriteKeySheet(const KeySheet& sheet, const std::filesystem::path& file) {
    const auto format = FormatOf(file);
    if (!format)
        throw host::Error(host::Cause::SheetFormatUnknown,
                          {.names = Suffixes(), .place = {.file = files::TextOf(file)}});
    const SheetContent content = ContentOf(sheet);
    const SheetPages pages(content);
    const QByteArray bytes = BytesOf(pages, content.title, *format);
    try {
        files::WriteFileAtomically(
            file, std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())));
    } catch (const std::exception& error) {
        throw host::FileError(error);
    }
}

} // namespace qx::sheet
