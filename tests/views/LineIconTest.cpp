#include "views/LineIcon.h"

#include <QDir>
#include <QFile>
#include <QImage>

#include <gtest/gtest.h>

namespace qx::views {

TEST(LineIcon, EveryIconIsDrawnWithinItsSquare) {
    EXPECT_FALSE(LineIcon("keyboard").isNull());
    const QStringList files = QDir(":/icons").entryList({"*.svg"});
    EXPECT_GT(files.size(), 30);
    for (const QString& file : files) {
        SCOPED_TRACE(file.toStdString());
        QFile svg(":/icons/" + file);
        ASSERT_TRUE(svg.open(QIODevice::ReadOnly));
        const QRectF lines = LinesOfSvg(svg.readAll()).boundingRect();
        EXPECT_TRUE(QRectF(1, 1, 22, 22).contains(lines)) << "its lines are 1.75 wide";
        EXPECT_GT(std::max(lines.width(), lines.height()), 13);

        const QIcon icon = LineIcon(file.chopped(4));
        const QImage image = icon.pixmap(QSize(48, 48)).toImage();
        int inked = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                inked += qAlpha(image.pixel(x, y)) > 128 ? 1 : 0;
        EXPECT_GT(inked, image.width() * image.height() / 50);
        EXPECT_LT(inked, image.width() * image.height() / 2);
    }
    EXPECT_TRUE(LineIcon("none of them").isNull());
}

TEST(LineIcon, ReadsAbsoluteAndRelativePaths) {
    const auto lines = [](const QByteArray& data) {
        return LinesOfSvg("<svg><path d=\"" + data + "\"/></svg>");
    };
    QPainterPath expected;
    expected.moveTo(2, 3);
    expected.lineTo(4.5, 2);
    expected.lineTo(7, 2);
    expected.lineTo(7, 0.5);
    expected.cubicTo(8, 0.5, 9, 1.5, 9, 3.5);
    expected.closeSubpath();
    EXPECT_EQ(lines("M2 3L4.5,2H7V.5C8 .5 9 1.5 9 3.5Z"), expected);
    EXPECT_EQ(lines("m2 3 2.5-1h2.5v-1.5c1 0 2 1 2 3z"), expected);
    for (const char* const faulty : {"M2", "M2 3Q4 5 6 7", "M2 3L4", "2 3", "M2 3 #"})
        EXPECT_TRUE(lines(faulty).isEmpty()) << faulty;
}

} // namespace qx::views
