// The window on the smallest screen and on a large one: nothing is cut, crowded or crooked.
#include "Desk.h"
#include "LayoutFaults.h"

#include <QAbstractButton>
#include <QTabWidget>

namespace qx::test {
namespace {

class Layout : public testing::Test {
protected:
    void Resize(const QSize& size) {
        desk.window->resize(size);
        Settle();
        EXPECT_EQ(desk.window->size(), size) << "the window does not become so small";
    }
    // A layout may ask for another.
    static void Settle() {
        for (int round = 0; round < 5; ++round)
            QApplication::processEvents();
    }
    void Expect(const std::string& state) {
        Settle();
        const QSize size = desk.window->size();
        for (const QString& fault : LayoutFaults(*desk.window))
            ADD_FAILURE() << size.width() << "x" << size.height() << " " << state << ": "
                          << fault.toStdString();
    }
    // All pages with their tabs, and those of keys with one and with several selected.
    void ExpectAllPages() {
        desk.window->findChild<QWidget*>(QStringLiteral("notice"))->hide();
        auto* pages = desk.Find<QListWidget>("pages");
        for (int row = 0; row < pages->count(); ++row) {
            const QString id = pages->item(row)->data(Qt::UserRole).toString();
            if (id.isEmpty())
                continue;
            desk.Page(qPrintable(id));
            Expect(id.toStdString());
            for (auto* tabs : desk.window->findChildren<QTabWidget*>())
                for (int tab = tabs->isVisible() ? tabs->count() - 1 : -1; tab >= 0; --tab) {
                    tabs->setCurrentIndex(tab);
                    Expect(id.toStdString() + ", tab " + std::to_string(tab));
                }
            for (auto* grid : desk.window->findChildren<views::KeyGrid*>())
                if (grid->isVisible() && grid->isEnabled() && grid->Selects())
                    ExpectKeys(*grid, id.toStdString());
        }
    }
    void ExpectKeys(views::KeyGrid& grid, const std::string& page) {
        std::set<int> keys;
        for (const views::KeyCap& cap : grid.Keys())
            if (cap.joinsRanges && keys.size() < 4)
                keys.insert(cap.index);
        grid.Pick(*keys.begin());
        desk.Click("key_48"); // with a remark: it can be longer than a line
        Expect(page + ", a key");
        desk.Find<QAbstractButton>("record")->setChecked(true);
        Expect(page + ", recording");
        desk.Find<QAbstractButton>("record")->setChecked(false);
        grid.Select(keys);
        Expect(page + ", several keys");
    }

    Desk desk;
};

TEST_F(Layout, NothingIsCutOrCrowdedOnASmallScreenInBothLanguages) {
    for (const Integer language : {Integer{1031}, Integer{1033}}) {
        desk.Speak(language);
        desk.window->findChild<QAbstractButton*>(QStringLiteral("absentPages"))->setChecked(true);
        Resize({1024, 600});
        ExpectAllPages();
    }
}

TEST_F(Layout, NoKeyMovesOnTheScreenWhileTheWindowKeepsItsSize) {
    constexpr std::pair<const char*, const char*> kBoards[] = {
        {"freeProgKeys", "layoutDisplay"}, {"layeredFuncKeys", "funcKeys"}, {"pos", "posDisplay"}};
    for (const Integer language : {Integer{1031}, Integer{1033}})
        for (const QSize& size : {QSize(1024, 600), QSize(1366, 768), QSize(1920, 1080)}) {
            desk.Speak(language);
            Resize(size);
            for (const auto& [page, board] : kBoards) {
                desk.window->findChild<QWidget*>(QStringLiteral("notice"))->hide();
                desk.Page(page);
                Settle();
                auto& grid = *desk.Find<views::KeyGrid>(board);
                const auto isAt = [&] {
                    Settle();
                    return QRect(grid.mapTo(desk.window.get(), QPoint()), grid.size());
                };
                const QRect before = isAt();
                const std::string which = std::to_string(size.width()) + " " + page;
                const int key = grid.Keys().back().index;
                grid.Pick(key);
                EXPECT_EQ(isAt(), before) << which << ", a key";
                desk.Find<QAbstractButton>("record")->setChecked(true);
                EXPECT_EQ(isAt(), before) << which << ", recording";
                grid.Select({key, grid.Keys().front().index});
                EXPECT_EQ(isAt(), before) << which << ", several keys";
                desk.window->screen.warn({QStringLiteral("One line.\nAnother one."),
                                          QStringLiteral("This\nand\nthat\nas well."),
                                          {}});
                EXPECT_EQ(isAt(), before) << which << ", a notice";
                desk.Click("noticeDetails");
                EXPECT_EQ(isAt(), before) << which << ", its details";
                grid.Select({});
            }
        }
}

TEST_F(Layout, NoMessageChangesTheSizeOfTheOtherBoardsEither) {
    for (const QSize& size : {QSize(1024, 600), QSize(1366, 768), QSize(1920, 1080)})
        for (const auto& [page, board] :
             {std::pair("overview", "keyboardPicture"), {"testDrive", "testDriveKeys"}}) {
            Resize(size);
            desk.window->findChild<QWidget*>(QStringLiteral("notice"))->hide();
            desk.Page(page);
            Settle();
            const auto& grid = *desk.Find<views::KeyGrid>(board);
            const QSize before = grid.size();
            EXPECT_GT(before.width(), size.width() / 2) << page;
            desk.window->screen.warn({QStringLiteral("One line.\nAnother one."), {}, {}});
            Settle();
            EXPECT_EQ(grid.size().height(), before.height()) << size.width() << " " << page;
        }
}

TEST_F(Layout, ANoticeMakesPagesScrollByARowOrNotAtAll) {
    Resize({1024, 600});
    for (const char* page : {"overview", "freeProgKeys", "pos", "barcode", "testDrive"}) {
        desk.Page(page);
        desk.window->screen.warn({QStringLiteral("One line.\nAnother one."), {}, {}});
        Expect(page);
    }
}

TEST_F(Layout, ThePanelIsWhereTheKeysAreLarger) {
    const auto isBeside = [&] {
        Settle();
        const QWidget* title = desk.Find<QLabel>("keyTitle");
        const QWidget* grid = desk.Find<views::KeyGrid>("layoutDisplay");
        return title->mapTo(desk.window.get(), QPoint()).x() >
               grid->mapTo(desk.window.get(), QPoint(grid->width(), 0)).x();
    };
    for (const auto& [size, beside] : {std::pair(QSize(1920, 800), true),
                                       {QSize(1366, 768), false},
                                       {QSize(1920, 1080), false},
                                       {QSize(1920, 800), true}}) {
        Resize(size);
        desk.Page("freeProgKeys");
        desk.ClickKey("layoutDisplay", 75);
        EXPECT_EQ(isBeside(), beside) << size.width();
        ExpectAllPages();
    }
}

} // namespace
} // namespace qx::test
