#include "qxcontrols/readers/QXBarcode.h"

#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "support/BlockRoundTrip.h"

namespace qx::test {
namespace {

struct QXBarcodeTest : testing::Test {
    QXBarcodeTest() { control.SetKeyboard(&keyboard.access); }

    void Open(BarcodePage page) {
        control.lstPrefGroup.ListIndex = page;
        control.lstPrefGroup_Click();
        refreshed = 0;
    }
    // Moves a slider of the current page; returns both sizes and their display.
    std::string Slide(Integer Index, Integer nValue) {
        control.slidRange[static_cast<std::size_t>(Index)].Value = nValue;
        control.slidRange_Change(Index);
        const BarcodeOptionPage& page = control.BitPage(control.lstPrefGroup.ListIndex);
        std::string text = std::to_string(page.MinSize()) + "-" + std::to_string(page.MaxSize());
        for (std::size_t i : {0U, 1U})
            text += " " + std::to_string(control.slidRange[i].Value) + "=" +
                    control.lblCurrSize[i].Caption;
        return text;
    }

    TestKeyboard keyboard{{{MODULE_BARCODE_HEADERS, 0x1000}, {MODULE_BARCODE_CONFIG, 0x2000}}};
    QXBarcode control{keyboard.Services()};
    int refreshed = 0;
    Subscription onRefreshed = control.Refreshed.Subscribe([this] { ++refreshed; });
};

TEST_F(QXBarcodeTest, ShowsEitherOptionsOrAReader) {
    BarcodeOptionPage& page = control.BitPage(BP_Code39);
    page.SetOptionNum(2);
    page.Flag(1).SetValue(true);
    control.SetReader2Msg("second");
    Open(BP_Code39);
    EXPECT_TRUE(control.chkBarOption[1].Visible && control.slidRange[0].Visible);
    EXPECT_FALSE(control.chkBarOption[2].Visible || control.chkReader[0].Visible);
    EXPECT_EQ(control.chkBarOption[1].Value, 1);
    EXPECT_EQ(control.slidRange[1].Max, 48);
    control.Reader(2).SetTerminatorEnabled(false);
    SetCodes(control.Reader(2).Header(), {30, 158});
    Open(BP_Reader_2);
    EXPECT_FALSE(control.chkBarOption[0].Visible || control.slidRange[0].Visible);
    EXPECT_EQ(control.lblHint.Caption, "second");
    EXPECT_EQ(control.chkReader[1].Value, 0);
    EXPECT_EQ(control.lblReader[0].Caption, "30 158");

    QXKeyboardLayoutData layout; // not opened, so keys have no names
    layout.SetUpCodePrefix("up");
    control.SetLayoutSource(&layout);
    EXPECT_EQ(control.lblReader[0].Caption, " ");
    control.chkShowDetails.Value = 1;
    control.chkShowDetails_Click();
    EXPECT_EQ(control.lblReader[0].Caption, " up ");

    EXPECT_THROW((void)control.BitPage(BP_Reader_1), std::out_of_range);
    EXPECT_THROW((void)page.Flag(10), std::out_of_range);
    EXPECT_THROW(control.SetListEntry(21, ""), std::out_of_range);
}

TEST_F(QXBarcodeTest, EveryTextHasItsPlace) {
    control.SetListCaption("list");
    control.SetShowDetails("details");
    control.SetMinSizeCaption("least");
    control.SetMaxSizeCaption("most");
    control.SetReader1Msg("first");
    control.SetReader2Msg("second");
    control.SetButtonEdit({"edit", "tip 1"});
    control.SetButtonRemove({"remove", "tip 2"});
    OptionBool header, terminator;
    header.SetCaption("header");
    terminator.SetCaption("terminator");
    control.SetOptionHeader(header);
    control.SetOptionTerminator(terminator);
    for (Integer entry = 0; entry <= 20; ++entry)
        control.SetListEntry(entry, "page " + std::to_string(entry));
    ASSERT_EQ(control.lstPrefGroup.Items.size(), 16U);
    for (std::size_t page = 0; page < 16; ++page)
        EXPECT_EQ(control.lstPrefGroup.Items[page], "page " + std::to_string(page));
    EXPECT_EQ(control.lblList.Caption + ", " + control.chkShowDetails.Caption + ", " +
                  control.lblRange[0].Caption + ", " + control.lblRange[1].Caption,
              "list, details, least, most");
    for (const auto& [page, hint] : {std::pair{BP_Reader_2, "second"}, {BP_Reader_1, "first"}}) {
        Open(page);
        EXPECT_EQ(control.lblHint.Caption, hint);
    }
    for (std::size_t i : {0U, 1U}) {
        EXPECT_EQ(control.cmdEdit[i].Caption + control.cmdEdit[i].ToolTip, "edittip 1");
        EXPECT_EQ(control.cmdRemove[i].Caption + control.cmdRemove[i].ToolTip, "removetip 2");
    }
    EXPECT_EQ(control.chkReader[0].Caption + ", " + control.chkReader[1].Caption,
              "header, terminator");
}

TEST_F(QXBarcodeTest, EditsHeaderAndTerminatorThroughTheSameEvent) {
    SetCodes(control.Reader(1).Header(), {30});
    SetCodes(control.Reader(1).Terminator(), {28});
    Open(BP_Reader_1);
    control.cmdEdit_Click(1); // no answer
    EXPECT_FALSE(control.DataChanged());

    std::string asked;
    bool isGranted = false;
    const auto host = control.EditHeader.Subscribe(
        [&](const std::string& sCurrSeq, bool& fCancelEdit, std::string& sNewSeq) {
            EXPECT_TRUE(fCancelEdit);
            asked += sCurrSeq;
            fCancelEdit = !isGranted;
            sNewSeq = "  7135";
        });
    control.cmdEdit_Click(1);
    EXPECT_EQ(control.Reader(1).Terminator().KeyString(), " 28");
    EXPECT_EQ(refreshed, 0);
    isGranted = true;
    control.cmdEdit_Click(1);
    EXPECT_EQ(asked, " 28 28");
    EXPECT_EQ(control.Reader(1).Terminator().Length(), 2);
    EXPECT_EQ(control.Reader(1).Header().KeyString(), " 30");
    EXPECT_EQ(control.lblReader[1].Caption, "7 135");
    EXPECT_TRUE(control.DataChanged());
    EXPECT_EQ(refreshed, 1);
}

TEST_F(QXBarcodeTest, RemovesOnlyWithTheHostsConsentAndMarksNoChange) {
    SetCodes(control.Reader(2).Header(), {30});
    SetCodes(control.Reader(2).Terminator(), {28});
    Open(BP_Reader_2);
    control.cmdRemove_Click(0); // no answer
    EXPECT_EQ(control.Reader(2).Header().Length(), 1);

    const auto host = control.RemoveHeader.Subscribe([](bool& fRemoveIt) { fRemoveIt = true; });
    Open(BP_EAN); // a page without sequences
    control.cmdRemove_Click(0);
    EXPECT_EQ(control.Reader(2).Header().Length(), 1);
    Open(BP_Reader_2);
    control.cmdRemove_Click(1); // the terminator has its own event
    control.cmdRemove_Click(0);
    EXPECT_EQ(control.Reader(2).Header().Length(), 0);
    EXPECT_EQ(control.Reader(2).Terminator().Length(), 1);
    EXPECT_EQ(control.lblReader[0].Caption, "");
    EXPECT_FALSE(control.DataChanged());
    EXPECT_EQ(refreshed, 1);
}

TEST_F(QXBarcodeTest, NavigationKeysDoNotEdit) {
    Open(BP_Reader_1);
    SetCodes(control.Reader(1).Terminator(), {28});
    std::vector<Integer> asked;
    std::string edited;
    Integer nKeyCode = 0;
    const auto host = control.AdvanceEdit.Subscribe([&](bool& fEdit) {
        asked.push_back(nKeyCode);
        fEdit = nKeyCode == 41;
    });
    const auto edit = control.EditHeader.Subscribe(
        [&](const std::string& sCurrSeq, bool&, std::string&) { edited += sCurrSeq; });
    for (nKeyCode = 31; nKeyCode <= 42; ++nKeyCode)
        control.lblReader_KeyDown(1, nKeyCode);
    EXPECT_EQ(asked, (std::vector<Integer>{31, 32, 41, 42}));
    EXPECT_EQ(edited, " 28");
}

TEST_F(QXBarcodeTest, SlidersStayInTheLimitsAndDragEachOther) {
    Open(BP_Code25_Overlapped); // 4 to 80
    EXPECT_EQ(Slide(0, 20), "20-80 20=20 80=80");
    EXPECT_EQ(Slide(1, 200), "20-80 20=20 80=80");
    EXPECT_EQ(Slide(1, 50), "20-50 20=20 50=50");
    EXPECT_EQ(Slide(0, 60), "60-60 60=60 60=60");
    EXPECT_EQ(Slide(1, 0), "4-4 4=4 4=4");
    EXPECT_FALSE(control.DataChanged());
    EXPECT_EQ(refreshed, 5);

    control.BitPage(BP_Code128).SetMinSize(200); // as stored in some keyboard: shown unchanged
    Open(BP_Code128);
    EXPECT_EQ(control.slidRange[0].Max, 200);
    EXPECT_EQ(control.lblCurrSize[0].Caption, "200");
    EXPECT_EQ(Slide(0, 199), "128-128 128=128 128=128"); // moving it brings it back into the limits
    EXPECT_EQ(control.slidRange[0].Max, 128);
    EXPECT_EQ(Slide(1, 30), "30-30 30=30 30=30");
    Open(BP_Reader_1);
    control.slidRange_Change(0);
    control.chkBarOption_Click(0);
    EXPECT_EQ(refreshed, 0);
}

TEST_F(QXBarcodeTest, MarksOptionsThatChangeAndReadersAlways) {
    Open(BP_EAN);
    control.chkBarOption_Click(0); // unchanged
    EXPECT_FALSE(control.DataChanged());
    control.chkBarOption[0].Value = 2; // greyed does not count as on
    control.chkBarOption_Click(0);
    EXPECT_FALSE(control.BitPage(BP_EAN).Flag(0).Value());
    EXPECT_TRUE(control.DataChanged());

    control.SetDataChanged(false);
    Open(BP_Reader_1);
    control.chkReader_Click(0); // unchanged
    EXPECT_TRUE(control.DataChanged());
    control.chkReader[1].Value = 0;
    control.chkReader_Click(1);
    EXPECT_FALSE(control.Reader(1).TerminatorEnabled());
    EXPECT_TRUE(control.Reader(2).TerminatorEnabled());
}

TEST_F(QXBarcodeTest, KeepsSettingsThatAreNotStoredOrNotReadable) {
    Open(BP_CommonSettings);
    keyboard.Put(MODULE_BARCODE_CONFIG, Bytes("00*50"));
    keyboard.Upload(control);
    EXPECT_EQ(refreshed, 1);
    for (Integer nID = 0; nID <= 4; ++nID)
        EXPECT_EQ(control.chkBarOption[static_cast<std::size_t>(nID)].Value, nID == 3 ? 1 : 0);
    for (Integer n : {Integer{1}, Integer{2}})
        EXPECT_FALSE(control.Reader(n).HeaderEnabled() || control.Reader(n).TerminatorEnabled());

    control.DefaultValues();
    keyboard.driver.image.assign(FakeDriver::kSize, '\xFF');
    keyboard.driver.end = 0x2031;
    const TraceLog trace;
    control.DataUpload(true); // reads the headers; the configuration's last byte is missing
    EXPECT_TRUE(trace.Has("QXBarcode.DataUpload failed at 2000"));
    EXPECT_EQ(control.Reader(1).Header().Length(), 32);
    EXPECT_EQ(control.BitPage(BP_CodaBar).MaxSize(), 60);
}

TEST_F(QXBarcodeTest, EndsTheDownloadAtACodeLengthOutOfRange) {
    keyboard.driver.image.assign(FakeDriver::kSize, '\x55');
    SetCodes(control.Reader(1).Header(), {30});
    control.BitPage(BP_Code25_Overlapped).SetMaxSize(256);
    const TraceLog trace;
    control.DataDownload(true);
    EXPECT_TRUE(trace.Has("Error in QXBarcode.DataDownload 6 - the code length 256 is not one of 0 "
                          "to 255"));
    EXPECT_EQ(keyboard.driver.image.substr(0x1000, 33), Bytes("1E 00*32"));
    EXPECT_EQ(keyboard.driver.image.substr(0x2000, 10), Bytes("01 3C 01 30 00*4 04 55"));
    control.DefaultValues();
    SetCodes(control.Reader(2).Terminator(), {256});
    keyboard.driver.image.assign(FakeDriver::kSize, '\x55');
    control.DataDownload(true);
    EXPECT_TRUE(keyboard.driver.image == std::string(FakeDriver::kSize, '\x55'));
    EXPECT_TRUE(trace.Has("Error in QXBarcode.DataDownload 6 - the key code 256 is not one of 0 to "
                          "255"));
}

TEST_F(QXBarcodeTest, EndsATransferAtTheFirstRefusedAccess) {
    keyboard.driver.image.assign(FakeDriver::kSize, '\x55');
    keyboard.driver.end = 0x200A; // refuses the eleventh byte of the configuration
    keyboard.driver.calls.clear();
    const TraceLog trace;
    control.DataDownload(true);
    EXPECT_TRUE(trace.Has("QXBarcode.DataDownload failed at 200A"));
    EXPECT_EQ(keyboard.driver.image.substr(0x2000, 11), Bytes("01 3C 01 30 00*4 04 50 55"));
    EXPECT_EQ(keyboard.driver.calls.size(), 1U + 11U);
    keyboard.driver.end = 0x107F; // refuses the headers
    keyboard.driver.calls.clear();
    control.DataDownload(true);
    control.DataUpload(true);
    EXPECT_TRUE(trace.Has("QXBarcode.DataDownload failed at 1000"));
    EXPECT_TRUE(trace.Has("QXBarcode.DataUpload / HEADERS failed at 1000"));
    EXPECT_EQ(keyboard.driver.calls,
              (std::vector<std::string>{"QXCFG_ImageWrite", "QXCFG_ImageRead"}));
}

TEST_F(QXBarcodeTest, ASequenceWithoutASlotMovesTheOthersForward) {
    SetCodes(control.Reader(1).Header(), {30, -1}); // has no slot, so the others move forward
    SetCodes(control.Reader(1).Terminator(), {28});
    keyboard.Download(control);
    EXPECT_TRUE(keyboard.Holds(MODULE_BARCODE_HEADERS, Bytes("1C 00*31 00*64 20*32")));
    EXPECT_EQ(keyboard.lastRequests,
              (std::vector<FakeDriver::Request>{{3, 0x1000, 128}, {2, 0x2000, 50}}));
}

} // namespace
} // namespace qx::test
