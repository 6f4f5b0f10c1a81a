#include "qxcontrols/readers/QXMagnetCard.h"

#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "support/BlockRoundTrip.h"

namespace qx::test {
namespace {

struct QXMagnetCardTest : testing::Test {
    // The upper half of the capability byte reports the keyboard's tracks.
    void HasTracks(Byte bCapabilities) {
        keyboard.driver.image[0x7FF] = static_cast<char>(bCapabilities);
        keyboard.access.Init();
        control.SetKeyboard(&keyboard.access);
    }

    TestKeyboard keyboard{{{MODULE_MAGNET_HEADERS, 0x1000}, {MODULE_MAGNET_CONFIG, 0x2000}}};
    QXMagnetCard control{keyboard.Services()};
    int refreshed = 0;
    Subscription onRefreshed = control.Refreshed.Subscribe([this] { ++refreshed; });
};

TEST_F(QXMagnetCardTest, ListsTheTracksThatTheKeyboardHas) {
    HasTracks(0x60);
    EXPECT_EQ(control.trackList.Items, (std::vector<std::string>{"#Track2#", "#Track3#"}));
    EXPECT_EQ(control.trackList.ListIndex, -1); // track 1 is current but does not exist
    EXPECT_FALSE(control.cmdCreate[0].Enabled || control.lblCurrTerminator.Enabled);

    SetCodes(control.Track3().Header(), {3});
    control.trackList.ListIndex = 1;
    refreshed = 0;
    control.trackList_Click();
    EXPECT_EQ(control.lblCurrHeader.Caption, "3");
    EXPECT_TRUE(control.cmdCreate[0].Enabled && control.lblCurrTerminator.Enabled);
    EXPECT_EQ(refreshed, 1);

    HasTracks(0xF0); // the current track stays selected, at another index
    EXPECT_EQ(control.trackList.ListIndex, 2);
    control.Track1().SetCaption("Loyalty");
    control.Translate();
    EXPECT_EQ(control.trackList.Items[0], "Loyalty");
}

TEST_F(QXMagnetCardTest, EditsAsTheHostAnswers) {
    HasTracks(0x60);
    control.trackList.ListIndex = 0;
    control.trackList_Click();
    SetCodes(control.Track2().Header(), {30, 158});
    SetCodes(control.Track2().Terminator(), {28});
    std::string asked;
    const auto answers = [&](const char* name, bool fCancel, const char* sOut) {
        return [&asked, name, fCancel, sOut](Integer nTrackId, const std::string& sIn,
                                             bool& fCancelAction, std::string& sOutSequence) {
            asked = name + std::to_string(nTrackId) + sIn + (fCancelAction ? "!" : "");
            fCancelAction = fCancel;
            if (sOut != nullptr)
                sOutSequence = sOut;
        };
    };

    control.cmdCreate_Click(0); // no answer
    EXPECT_EQ(control.Track2().Header().KeyString(), " 30158");

    control.SetDataChanged(false);
    refreshed = 0;
    {
        const auto host = control.EditCurrentHeader.Subscribe(answers("header", true, "  7"));
        control.cmdCreate_Click(0);
        EXPECT_EQ(asked, "header2 30158");
        EXPECT_EQ(control.Track2().Header().KeyString(), " 30158");
        EXPECT_FALSE(control.DataChanged());
        EXPECT_EQ(refreshed, 0);
    }
    const auto host = control.EditCurrentTerminator.Subscribe(answers("term", false, "  7135"));
    control.cmdCreate_Click(1);
    EXPECT_EQ(asked, "term2 28");
    EXPECT_EQ(control.Track2().Terminator().Length(), 2);
    EXPECT_EQ(control.lblCurrTerminator.Caption, "7 135");
    EXPECT_EQ(control.lblCurrHeader.Caption, "30 158");
    QXKeyboardLayoutData layout; // not opened, so keys have no names
    layout.SetUpCodePrefix("up");
    control.chkShowDetails.Value = 1;
    control.SetLayoutSource(&layout);
    EXPECT_EQ(control.lblCurrHeader.Caption, " up ");
    control.SetLayoutSource(nullptr);
    EXPECT_TRUE(control.DataChanged());
    EXPECT_EQ(refreshed, 3); // once for the edit, twice for the layout
}

TEST_F(QXMagnetCardTest, RemovesUnlessTheHostForbids) {
    SetCodes(control.Track1().Header(), {30});
    SetCodes(control.Track1().Terminator(), {28});
    {
        const auto host = control.ClearCurrentHeader.Subscribe(
            [](Integer, bool& fCanRemoveIt) { fCanRemoveIt = false; });
        control.cmdRemove_Click(0);
        EXPECT_EQ(control.Track1().Header().Length(), 1);
        EXPECT_FALSE(control.DataChanged());
    }
    control.cmdRemove_Click(0); // no answer
    EXPECT_EQ(control.Track1().Header().Length(), 0);
    EXPECT_EQ(control.Track1().Terminator().Length(), 1);
    EXPECT_TRUE(control.DataChanged());
    EXPECT_EQ(refreshed, 1);
}

TEST_F(QXMagnetCardTest, AKeyOnASequenceEditsItWhenTheHostAgrees) {
    std::string edited;
    const auto header = control.EditCurrentHeader.Subscribe(
        [&](Integer, const std::string&, bool&, std::string&) { edited += "header "; });
    const auto terminator = control.EditCurrentTerminator.Subscribe(
        [&](Integer, const std::string&, bool&, std::string&) { edited += "terminator "; });
    control.lblCurrHeader_KeyPress();
    EXPECT_EQ(edited, "");
    const auto host = control.AdvanceEdit.Subscribe([](bool& fEdit) { fEdit = true; });
    control.lblCurrHeader_KeyPress();
    control.lblCurrTerminator_KeyPress();
    EXPECT_EQ(edited, "header terminator ");
}

TEST_F(QXMagnetCardTest, EveryTextAndOptionHasItsPlace) {
    control.Captions().SetTracks("tracks");
    control.Captions().SetCommonPrefs("common");
    control.Captions().SetTrackPreferences("track");
    control.Captions().SetHeaderAndTerminator("sequences");
    control.Captions().SetUseThisTrack("use");
    control.Captions().SetUseThisHeader("use header");
    control.Captions().SetUseThisTerminator("use terminator");
    control.Captions().SetCreateHeader({"create header", "tip 1"});
    control.Captions().SetCreateTerminator({"create terminator", "tip 2"});
    control.Captions().SetRemoveHeader({"remove header", "tip 3"});
    control.Captions().SetRemoveTerminator({"remove terminator", "tip 4"});
    control.ReaderOptions().VerifyLRC().SetCaption("LRC");
    control.ReaderOptions().VerifyLastChar().SetCaption("last");
    control.ReaderOptions().SendImmediate().SetCaption("immediate");
    control.Translate();
    EXPECT_EQ(control.lblTracks.Caption + ", " + control.lblCommonPrefs.Caption + ", " +
                  control.lblTrackPreferences.Caption + ", " +
                  control.lblHeaderAndTerminator.Caption,
              "tracks, common, track, sequences");
    EXPECT_EQ(control.chkEnableCurrentTrack.Caption + ", " + control.chkUseThisHeader.Caption +
                  ", " + control.chkUseThisTerminator.Caption,
              "use, use header, use terminator");
    EXPECT_EQ(control.cmdCreate[0].Caption + control.cmdCreate[0].ToolTip +
                  control.cmdCreate[1].Caption + control.cmdCreate[1].ToolTip,
              "create headertip 1create terminatortip 2");
    EXPECT_EQ(control.cmdRemove[0].Caption + control.cmdRemove[0].ToolTip +
                  control.cmdRemove[1].Caption + control.cmdRemove[1].ToolTip,
              "remove headertip 3remove terminatortip 4");

    const auto options = [&] {
        const MagneticOptions& all = control.ReaderOptions();
        return std::array{all.VerifyLRC().Value(), all.VerifyLastChar().Value(),
                          all.SendImmediate().Value()};
    };
    const std::string names[] = {"LRC", "last", "immediate"};
    for (Integer index = 0; index < 3; ++index) {
        const auto at = static_cast<std::size_t>(index);
        control.DefaultValues();
        control.chkMagneticOptions[at].Value = 0;
        control.chkMagneticOptions_Click(index);
        EXPECT_EQ(control.chkMagneticOptions[at].Caption, names[at]);
        for (std::size_t i = 0; i < 3; ++i)
            EXPECT_EQ(options()[i], i != at) << index;
    }
}

TEST_F(QXMagnetCardTest, StoresSwitchesOnlyWhenTheyChange) {
    control.chkEnableCurrentTrack_Click();
    control.chkMagneticOptions_Click(2);
    EXPECT_FALSE(control.DataChanged());
    EXPECT_EQ(refreshed, 0);
    control.chkMagneticOptions[2].Value = 0;
    control.chkMagneticOptions_Click(2);
    EXPECT_FALSE(control.ReaderOptions().SendImmediate().Value());
    control.chkUseThisTerminator.Value = 1;
    control.chkUseThisTerminator_Click();
    EXPECT_TRUE(control.Track1().TerminatorEnabled());
    EXPECT_FALSE(control.Track1().HeaderEnabled());
    EXPECT_TRUE(control.DataChanged());
    EXPECT_EQ(refreshed, 2);
}

TEST_F(QXMagnetCardTest, WritesItsThreeBytesOfTheConfigurationOnly) {
    HasTracks(0x80); // the other tracks are transferred too
    keyboard.Put(MODULE_MAGNET_CONFIG, Bytes("55*9"));
    control.Track1().SetEnabled(false);
    SetCodes(control.Track1().Header(), {30});
    refreshed = 0;
    control.DefaultValues();
    EXPECT_EQ(refreshed, 1);
    EXPECT_TRUE(control.Track1().Available());
    EXPECT_EQ(control.Track1().Caption(), "#Track1#");
    SetCodes(control.Track4().Terminator(), {9});
    keyboard.Download(control);
    EXPECT_TRUE(keyboard.Holds(MODULE_MAGNET_CONFIG, Bytes("55*5 FF 0F 7E 55")));
    EXPECT_TRUE(keyboard.Holds(MODULE_MAGNET_HEADERS, Bytes("00*224 09")));
    EXPECT_EQ(keyboard.lastRequests,
              (std::vector<FakeDriver::Request>{{4, 0x1000, 256}, {1, 0x2005, 3}}));

    SetCodes(control.Track1().Header(), {30, -1}); // has no slot, so the others move forward
    keyboard.Download(control);
    EXPECT_TRUE(keyboard.Holds(MODULE_MAGNET_HEADERS, Bytes("00*192 09 00*31 20*32")));
}

TEST_F(QXMagnetCardTest, KeepsSettingsThatItCannotRead) {
    HasTracks(0xF0);
    keyboard.driver.image.assign(FakeDriver::kSize, '\xFF');
    SetCodes(control.Track1().Header(), {30});
    control.ReaderOptions().VerifyLRC().SetValue(false);
    refreshed = 0;
    TraceLog trace;
    keyboard.driver.end = 0x10FF;
    control.DataUpload(true);
    EXPECT_EQ(control.Track1().Header().Length(), 1);
    EXPECT_TRUE(trace.Has("QXMagnetCard.DataUpload failed at 1000"));

    keyboard.driver.end = 0x2007;
    control.DataUpload(true); // reads the sequences but not the switches
    EXPECT_EQ(control.Track1().Header().Length(), 32);
    EXPECT_FALSE(control.ReaderOptions().VerifyLRC().Value());
    EXPECT_FALSE(control.Track1().HeaderEnabled());
    EXPECT_TRUE(trace.Has("QXMagnetCard.DataUpload failed at 2005"));
    EXPECT_EQ(refreshed, 0);
}

TEST_F(QXMagnetCardTest, ReadsEvenWhereAModuleIsMissing) {
    TestKeyboard headersOnly({{MODULE_MAGNET_HEADERS, 0x1000}});
    TestKeyboard neither({{MODULE_POS, 0x1000}});
    control.SetKeyboard(&neither.access);
    TraceLog trace;
    control.DataUpload(true);
    EXPECT_TRUE(trace.Has("QXMagnetCard.DataUpload failed at FFFFFFFF"));
    control.SetKeyboard(&headersOnly.access);
    headersOnly.driver.image.replace(4, 3, Bytes("03 00 00")); // 5 above the address -1
    control.DataUpload(true);
    EXPECT_TRUE(control.Track1().HeaderEnabled() && control.Track1().TerminatorEnabled());
    control.SetKeyboard(nullptr);
    control.DataUpload(true);
    EXPECT_TRUE(control.Track1().HeaderEnabled());
}

} // namespace
} // namespace qx::test
