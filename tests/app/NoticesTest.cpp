// The notices above the page: what they are about, and the room that they take.
#include "Desk.h"
#include "LayoutFaults.h"
#include "app/NoticeBar.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QEventLoop>

namespace qx::test {
namespace {

void WaitForTheUser() {
    QEventLoop loop;
    QTimer::singleShot(1, &loop, &QEventLoop::quit);
    loop.exec();
}

void FailToRead(Desk& desk) {
    desk.workbench.Simulated()->StopTransferAfter(0);
    desk.window->Transfers().Read();
    desk.workbench.Simulated()->StopTransferAfter(-1);
}

TEST(Notices, AFailureStandsAloneAndGoesWithTheNextActionOfAnAccessibilityTool) {
    Desk desk; // has read
    ASSERT_TRUE(desk.Notice().contains(QStringLiteral("All settings were read")));
    FailToRead(desk);
    EXPECT_EQ(desk.Notice().toStdString(), "Nothing was read; the document is unchanged.\n"
                                           "Reading from the keyboard failed.");
    WaitForTheUser();
    EXPECT_FALSE(desk.Notice().isEmpty()) << "waiting is not an action";
    (void)desk.workbench.Document();
    EXPECT_FALSE(desk.Notice().isEmpty()) << "nor is a copy of the unsaved changes";
    desk.Page("overview");
    FailToRead(desk);
    WaitForTheUser();
    QAccessible::queryAccessibleInterface(desk.Find<QAbstractButton>("overviewRead"))
        ->actionInterface()
        ->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(desk.Notice().toStdString(),
              "All settings were read; the keyboard itself was not changed.");
}

TEST(Notices, AQuestionToTheUserDoesNotEndTheAction) {
    Desk desk;
    app::NoticeBar& bar = *desk.Find<app::NoticeBar>("notice");
    bar.Age();
    bar.Show({app::Notice::Kind::Warning, QStringLiteral("Before.")});
    desk.InDialog([](QWidget& dialog) { dialog.close(); });
    QDialog(desk.window.get()).exec();
    bar.Show({app::Notice::Kind::Success, QStringLiteral("After.")});
    EXPECT_EQ(desk.Notice().toStdString(), "Before.\nAfter.");
}

TEST(Notices, ALongFailureLeavesThePageItsRoomAndItsTextAReadableWidth) {
    Desk desk;
    auto* bar = desk.Find<QWidget>("notice");
    auto* text = desk.Find<QLabel>("lblNotice");
    const QString line = QStringLiteral("The keyboard holds parts of several writes, and this is "
                                        "one of the lines that say so.\n");
    for (const QSize& size : {QSize(1024, 600), QSize(1366, 768)}) {
        desk.window->resize(size);
        for (const int lines : {1, 20}) {
            bar->hide();
            desk.window->screen.warn(
                {line.repeated(lines), line.repeated(lines), app::Failure::Remedy::Backups});
            for (int round = 0; round < 5; ++round)
                QApplication::processEvents();
            EXPECT_LT(bar->height(), 600 / 5);
            EXPECT_GE(text->width(), 60 * text->fontMetrics().averageCharWidth());
            EXPECT_EQ(LayoutFaults(*bar).join(u'\n').toStdString(), "");
        }
    }
}

} // namespace
} // namespace qx::test
