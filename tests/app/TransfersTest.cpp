// Transfers: what they leave in the keyboard, and what the user is told when they break off.
#include "Desk.h"
#include "app/FilesPage.h"

#include <QLineEdit>
#include <QSlider>

#include <fstream>

namespace qx::test {
namespace {

TEST(Transfers, AFailedWriteSaysSoAndIsNeverCalledDone) {
    Desk desk;
    desk.Page("commonKeyboard");
    desk.Find<QSlider>("slidOutputDelay")->setValue(9);
    desk.InDialog([&](QWidget& dialog) {
        desk.workbench.Simulated()->StopTransferAfter(0);
        Desk::ClickIn(dialog, "cmdWrite");
    });
    desk.window->Transfers().Write();
    ASSERT_EQ(desk.warnings.size(), 1);
    EXPECT_TRUE(desk.warnings.front().contains(QStringLiteral("nothing was written")));
    EXPECT_EQ(desk.Notice(), QString()) << "it is reported once";
    EXPECT_FALSE(desk.warnings.front().contains(QStringLiteral("QXCFG_")));
    EXPECT_TRUE(desk.details.front().contains(QStringLiteral("QXCFG_")));

    // Transfers that fail and report success are noticed, and what they left can be settled.
    int noticed = 0;
    for (std::uint32_t seed = 0; seed < 12; ++seed) {
        const int delay = 20 + static_cast<int>(seed);
        desk.Page("commonKeyboard");
        desk.Find<QSlider>("slidOutputDelay")->setValue(delay);
        desk.warnings.clear();
        desk.timesAsked = 0;
        desk.recover = Desk::Ending::Later;
        desk.InDialog([&](QWidget& dialog) {
            desk.workbench.Simulated()->LieFrom(seed);
            Desk::ClickIn(dialog, "cmdWrite");
        });
        desk.window->Transfers().Write();
        desk.workbench.Simulated()->EndLies();
        const std::string wanted(1, static_cast<char>(delay));
        const bool isHeld = desk.Memory(MODULE_MAGNET_CONFIG, 0, 1) == wanted;
        EXPECT_TRUE(isHeld || desk.warnings.size() + desk.timesAsked == 1) << seed;
        desk.recover = Desk::Ending::Finish;
        desk.window->Transfers().Recover();
        EXPECT_FALSE(desk.window->Transfers().Recover()) << seed;
        noticed += isHeld ? 0 : 1;
    }
    EXPECT_GT(noticed, 0);
}

TEST(Transfers, AnInterruptedWriteIsOfferedAtTheNextStartAndBackupsAreRestored) {
    const TempFolder shop;
    std::string before;
    {
        Desk desk("full", shop / "");
        before = desk.Memory(MODULE_MAGNET_CONFIG, 0, 8);
        desk.Page("commonKeyboard");
        desk.Find<QSlider>("slidOutputDelay")->setValue(9);
        desk.Page("magnetCard");
        desk.Click("chkMagneticOptions_1");
        // The keyboard is unplugged at one call after the other, until that leaves it in doubt.
        const auto isInDoubt = [&] {
            return !desk.warnings.isEmpty() &&
                   desk.warnings.back().contains("may be partly written. Once");
        };
        for (int call = 1; !isInDoubt(); ++call) {
            ASSERT_LT(call, 5000);
            desk.InDialog([&](QWidget& dialog) {
                desk.workbench.Simulated()->FailCall(call, 77, true);
                Desk::ClickIn(dialog, "cmdWrite");
            });
            desk.window->Transfers().Write();
            desk.workbench.Simulated()->FailCall(0, 0, false);
        }
        const auto access =
            desk.workbench.Session().Access().GetBaseAddressForModule(MODULE_MAGNET_CONFIG);
        desk.workbench.Simulated()->Poke(access, "\x09"); // the one byte has arrived
        EXPECT_EQ(desk.timesAsked, 0);
    }
    Desk desk("full", shop / "");
    EXPECT_EQ(desk.timesAsked, 1);
    EXPECT_EQ(desk.Memory(MODULE_MAGNET_CONFIG, 0, 8), before);
    desk.Page("commonKeyboard");
    desk.Find<QSlider>("slidOutputDelay")->setValue(10);
    desk.Write();
    EXPECT_NE(desk.Memory(MODULE_MAGNET_CONFIG, 0, 8), before);

    desk.Page("backups");
    auto* list = desk.Find<QTreeWidget>("backups");
    ASSERT_GE(list->topLevelItemCount(), 2);
    list->setCurrentItem(list->topLevelItem(0));
    desk.unsaved = DocumentMenu::Answer::Discard;
    desk.InDialog([](QWidget& dialog) { Desk::ClickIn(dialog, "cmdWrite"); });
    desk.Click("restoreBackup");
    EXPECT_EQ(desk.Memory(MODULE_MAGNET_CONFIG, 0, 8), before);
    desk.Page("commonKeyboard");
    EXPECT_EQ(desk.Find<QSlider>("slidOutputDelay")->value(), 6);
}

// Has a write of a description break off after its first bytes: in the first, second, … of its
// transfers, until that leaves a part of it in the keyboard. Returns the text.
QString BreakOffAWrite(Desk& desk) {
    const QString text = QStringLiteral("Description");
    desk.Page("layeredFuncKeys");
    desk.ClickKey("funcKeys", 3);
    desk.Find<QLineEdit>("txtSymbolDesc")->setText(text);
    for (int transfers = 1; desk.timesAsked == 0; ++transfers) {
        if (transfers == 10)
            throw std::runtime_error("no write leaves a part of itself");
        int ended = 0;
        QObject counter;
        desk.InDialog([&](QWidget& dialog) {
            QObject::connect(&desk.workbench, &app::Workbench::Progressed, &counter,
                             [&](int percent) {
                                 if (percent == 100 && ++ended == transfers)
                                     desk.workbench.Simulated()->StopTransferAfter(5);
                             });
            Desk::ClickIn(dialog, "cmdWrite");
        });
        desk.window->Transfers().Write();
        desk.workbench.Simulated()->StopTransferAfter(-1);
    }
    return text;
}

std::string DescriptionBytes(const QString& text) {
    return {reinterpret_cast<const char*>(text.utf16()), static_cast<std::size_t>(text.size()) * 2};
}

TEST(Transfers, ABrokenOffWriteIsFinishedRolledBackOrLeftAtOnce) {
    using Ending = Desk::Ending;
    constexpr Long kDescription = 70000 + 3 * 128;
    for (const Ending ending : {Ending::Finish, Ending::RollBack, Ending::Later}) {
        Desk desk;
        desk.recover = ending;
        const QString wanted = BreakOffAWrite(desk);
        const auto holds = [&] {
            const std::string bytes = DescriptionBytes(wanted);
            return desk.workbench.Simulated()->Memory(kDescription,
                                                      static_cast<Long>(bytes.size())) == bytes;
        };
        EXPECT_EQ(holds(), ending == Ending::Finish);
        if (ending != Ending::Later) {
            EXPECT_TRUE(desk.Notice().contains(QStringLiteral("read back and found equal")));
            EXPECT_FALSE(desk.window->Transfers().Recover()) << "it is settled";
            continue;
        }
        EXPECT_TRUE(desk.Notice().contains(QStringLiteral("Settle interrupted write")));
        const std::string mixture = desk.Held();
        desk.unsaved = DocumentMenu::Answer::Discard;
        desk.window->Transfers().Read();
        EXPECT_TRUE(desk.Notice().contains(QStringLiteral("mixture")));
        EXPECT_EQ(desk.Held(), mixture) << "reading writes nothing";

        desk.timesAsked = 0;
        desk.recover = Ending::RollBack;
        desk.window->Transfers().Write();
        EXPECT_EQ(desk.timesAsked, 1) << "the interrupted write comes first, and alone";
        EXPECT_TRUE(desk.askedToWrite.isEmpty());
        const std::string rolledBack = desk.Held();
        desk.answer = false;
        desk.window->Transfers().Write();
        EXPECT_EQ(desk.askedToWrite.size(), 1) << "the document is still the mixture";
        EXPECT_EQ(desk.Held(), rolledBack);
        desk.window->Transfers().Read();
        EXPECT_FALSE(desk.workbench.IsMixture());
    }
}

TEST(Transfers, FilesOfTheKeyboardGoBothWays) {
    Desk desk;
    desk.Page("files");
    auto* page = desk.window->findChild<app::FilesPage*>();
    page->chooseFile = [&](const QString&, bool, const QString&) {
        return QString::fromStdString((desk.folder / "memory.bin").string());
    };
    bool mayReplace = false;
    page->confirm = [&](const QString&) { return mayReplace; };
    desk.Click("param_save");
    const std::string before = desk.Memory(MODULE_MAGNET_CONFIG, 0, 8);
    desk.workbench.Simulated()->Poke(4096, "\x55");
    desk.Click("param_load");
    EXPECT_NE(desk.Memory(MODULE_MAGNET_CONFIG, 0, 8), before) << "the user did not agree";
    mayReplace = true;
    desk.Click("param_load");
    EXPECT_EQ(desk.Memory(MODULE_MAGNET_CONFIG, 0, 8), before);
    std::ofstream(desk.folder / "memory.bin") << "no such file";
    desk.Click("param_load");
    EXPECT_EQ(desk.warnings.size(), 1);
    EXPECT_EQ(desk.Memory(MODULE_MAGNET_CONFIG, 0, 8), before);
}

} // namespace
} // namespace qx::test
