// A write as the user follows it: what is shown before it, its steps, and how it is cancelled.
#include "Desk.h"
#include "app/FilesPage.h"
#include "qxcontrols/keyprog/QXFreeProgKeys.h"

#include <QListWidget>
#include <QMenuBar>
#include <QProgressBar>
#include <QPushButton>
#include <QSlider>
#include <QToolBar>

namespace qx::test {
namespace {

class Writing : public testing::Test {
protected:
    Writing() { Change(9); }
    void Change(int delay) {
        desk.Page("commonKeyboard");
        desk.Find<QSlider>("slidOutputDelay")->setValue(delay);
    }
    [[nodiscard]] QPushButton& StopButton() const {
        return *desk.window->findChild<QPushButton*>(QStringLiteral("cmdStop"));
    }
    std::vector<QWidget*> Others() { // beside what shows the write
        return {desk.window->menuBar(), desk.window->findChild<QToolBar*>(),
                desk.window->findChild<QWidget*>(QStringLiteral("pages")),
                desk.window->findChild<QSlider*>(QStringLiteral("slidOutputDelay"))};
    }
    std::string Held() { return desk.Memory(MODULE_MAGNET_CONFIG, 0, 1); }

    Desk desk;
};

TEST_F(Writing, ShowsItsSteps) {
    const auto* work = desk.window->findChild<QLabel*>(QStringLiteral("lblWork"));
    const auto* steps = desk.window->findChild<QLabel*>(QStringLiteral("lblSteps"));
    const auto* progress = desk.window->findChild<QProgressBar*>(QStringLiteral("progress"));
    QStringList shown;
    QString current;
    std::string held;
    QObject::connect(&desk.workbench, &app::Workbench::Stepped, work, [&](host::Step step) {
        EXPECT_TRUE(work->isVisible());
        EXPECT_TRUE(work->text().contains(QStringLiteral("Do not unplug")));
        for (const QLabel* text : {work, steps}) {
            EXPECT_GE(text->height(), text->heightForWidth(text->width()));
            EXPECT_GE(text->height(), text->minimumSizeHint().height()) << "of two lines";
        }
        EXPECT_EQ(desk.workbench.Records().backups.List().size(),
                  step == host::Step::SavingBackup ? 0U : 1U);
        EXPECT_EQ(StopButton().isEnabled(), step < host::Step::Writing);
        EXPECT_EQ(progress->value(), progress->maximum() / 4 * static_cast<int>(step));
        for (const QWidget* other : Others())
            EXPECT_FALSE(other->isEnabled()) << other->metaObject()->className();
        shown.append(work->text().section('\n', 1).section(' ', 0, 0));
        current += steps->text().section("● ", 1).section('<', 0, 0) + '.';
        held += Held();
    });
    desk.Write();
    EXPECT_EQ(shown, QStringList({"Saving", "Checking", "Sending", "Reading"}));
    EXPECT_EQ(current, "Back up.Check.Write.Read back.");
    EXPECT_EQ(held, Bytes("06 06 06 09"));
    EXPECT_FALSE(work->isVisible());
    for (const QWidget* other : Others())
        EXPECT_TRUE(other->isEnabled()) << other->metaObject()->className();
}

TEST_F(Writing, IsCancelledUntilItsFirstByte) {
    const std::string before = desk.Held();
    for (const host::Step step : {host::Step::SavingBackup, host::Step::Checking}) {
        // A click that comes while the driver works.
        desk.AtStep(step, [&] {
            QTimer::singleShot(0, &StopButton(),
                               [&] { QTest::mouseClick(&StopButton(), Qt::LeftButton); });
        });
        desk.Write();
        EXPECT_EQ(desk.Held(), before);
        EXPECT_EQ(desk.Notice().toStdString(), "Stopped before anything was written.");
        EXPECT_TRUE(desk.workbench.Records().journal.Entries().empty());
        EXPECT_TRUE(desk.ShowsState("1 change not in the keyboard"));
    }
    EXPECT_TRUE(desk.warnings.isEmpty());
    desk.AtStep(host::Step::Writing, [&] { StopButton().click(); });
    desk.Write();
    EXPECT_EQ(Held(), Bytes("09")) << "a later click has no effect";
    Change(10);
    desk.Write();
    EXPECT_EQ(Held(), Bytes("0A")) << "and none on the next write";
}

TEST_F(Writing, ALoadOfAFileIsCancelledLikewise) {
    desk.Page("files");
    auto* page = desk.window->findChild<app::FilesPage*>();
    page->chooseFile = [&](const QString&, bool, const QString&) {
        return QString::fromStdString((desk.folder / "memory.bin").string());
    };
    page->confirm = [](const QString&) { return true; };
    desk.Click("param_save");
    desk.workbench.Simulated()->Poke(4096, "\x55");
    const std::string before = desk.Held();
    desk.AtStep(host::Step::SavingBackup, [&] { StopButton().click(); });
    desk.Click("param_load");
    EXPECT_EQ(desk.Held(), before);
    EXPECT_EQ(desk.Notice().toStdString(), "Stopped before anything was written.");
    EXPECT_TRUE(desk.warnings.isEmpty()) << desk.warnings.join(' ').toStdString();
}

// Input elsewhere is dropped meanwhile, and Esc cancels.
TEST_F(Writing, TakesNoOtherInput) {
    auto* slider = desk.Find<QSlider>("slidOutputDelay");
    desk.AtStep(host::Step::SavingBackup, [&] {
        QTest::keyClick(slider, Qt::Key_Right);
        desk.window->close();
        QTest::keyClick(slider, Qt::Key_Escape);
    });
    desk.Write();
    EXPECT_EQ(slider->value(), 9);
    EXPECT_TRUE(desk.window->isVisible());
    EXPECT_EQ(Held(), Bytes("06"));
    QTest::keyClick(slider, Qt::Key_Right);
    EXPECT_EQ(slider->value(), 10) << "afterwards it is taken again";
}

// Counts what is painted on a widget.
class Painted : public QObject {
public:
    explicit Painted(QWidget& widget) : QObject(&widget) { widget.installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override {
        count += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
    int count = 0;
};

TEST_F(Writing, TheWindowIsPaintedBeforeTheDriverIsCalledAndWhileItReports) {
    desk.workbench.Preferences().SetAutoTestdrive(false); // which would read the keyboard again
    auto* work = desk.window->findChild<QLabel*>(QStringLiteral("lblWork"));
    Painted painted(*work);
    QStringList begun;
    int calls = desk.workbench.Simulated()->Calls();
    QObject::connect(&desk.workbench, &app::Workbench::Began, work, [&](const QString& text) {
        EXPECT_EQ(desk.workbench.Simulated()->Calls(), calls) << text.toStdString();
        EXPECT_GT(painted.count, 0) << text.toStdString();
        begun.append(text.section(' ', 0, 0));
    });
    QObject::connect(&desk.workbench, &app::Workbench::Ended, work, [&] {
        calls = desk.workbench.Simulated()->Calls();
        painted.count = 0;
    });
    int reports = 0;
    int turns = 0; // of the event loop
    QObject::connect(&desk.workbench, &app::Workbench::Progressed, work, [&] {
        ++reports;
        QTimer::singleShot(0, work, [&] { ++turns; });
    });
    desk.Write();
    EXPECT_EQ(begun, QStringList({"Looking", "Comparing", "Writing"}));
    EXPECT_GT(reports, 4);
    EXPECT_GE(turns, reports - 3) << "the last of each work comes after its end";
}

TEST_F(Writing, TheReviewWarnsOfSequencesAndLeadsToThem) {
    desk.Page("freeProgKeys");
    desk.ClickKey("layoutDisplay", 75);
    desk.workbench.Edit(*desk.workbench.Configuration().Find("freeProgKeys"), [&] {
        desk.ControlOf<QXFreeProgKeys>("freeProgKeys").Sequences().Key(75).AddByte(30);
    });
    desk.Page("overview");
    desk.InDialog([](QWidget& dialog) {
        auto* warnings = dialog.findChild<QListWidget*>(QStringLiteral("warnings"));
        ASSERT_NE(warnings, nullptr);
        ASSERT_EQ(warnings->count(), 1);
        EXPECT_EQ(warnings->item(0)->text().toStdString(),
                  "Free keys › Key 75 (Ins): Key 30 (CapsLock) is pressed and never released.");
        emit warnings->itemActivated(warnings->item(0));
    });
    desk.window->Transfers().Write();
    EXPECT_EQ(Held(), Bytes("06"));
    EXPECT_EQ(desk.Find<views::KeyGrid>("layoutDisplay")->Selected(), std::vector<int>{75});
}

} // namespace
} // namespace qx::test
