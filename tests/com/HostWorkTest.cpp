// A host's complete work with the simulated keyboard, by names only.

#include "Host.h"

#include "qxcontrols/keyprog/QXFreeProgKeys.h"
#include "qxcontrols/keys/LayoutLine.h"
#include "qxcontrols/keys/QXLayoutDisplay.h"
#include "qxcontrols/pos/QXPosDisplay.h"
#include "qxcontrols/readers/BarcodePage.h"
#include "simulator/SimulatedDriver.h"
#include "support/TempFolder.h"

#include <array>
#include <fstream>

namespace qx::test {
namespace {

using namespace com;

class ComHostWork : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(Do(keyboard, "Init"), Value(true));
        Let(layout, "LayoutPath", QX_LAYOUTS);
        ASSERT_EQ(Do(layout, "OpenLayoutByName", "us.qxl"), Value(true));
        Do(settings, "Load");
    }

    struct Module {
        const char* name;
        KeyboardModuleIDs id;
    };
    static constexpr std::array<Module, 6> kModules = {{
        {"QXCommonKeyboard", MODULE_KEYBOARD},
        {"QXBarcode", MODULE_BARCODE_CONFIG},
        {"QXMagnetCard", MODULE_MAGNET_CONFIG},
        {"QXFreeProgKeys", MODULE_FREEPROGRAMMABLE_KEYS},
        {"QXLayeredFuncKeys", MODULE_LAYERED_FUNCKEYS},
        {"QXPos", MODULE_POS},
    }};

    // A host's form with one of each module control, in the order of kModules, with the services
    // set.
    [[nodiscard]] std::vector<ObjectRef> NewForm() const {
        std::vector<ObjectRef> controls;
        for (const Module& module : kModules) {
            const ObjectRef control = host.New(module.name);
            Let(control, "Keyboard", keyboard);
            Let(control, "LayoutSource", layout);
            Let(control, "PrefSource", settings);
            Let(control, "ConfigID", module.id + 0);
            Do(control, "ReloadKeySettings");
            controls.push_back(control);
        }
        return controls;
    }
    void Upload(const std::vector<ObjectRef>& controls) {
        Do(keyboard, "DataTransferPrepare");
        for (const ObjectRef& control : controls)
            Do(control, "PrepareDataUpload", true);
        EXPECT_EQ(Do(keyboard, "Upload"), Value(Long{0}));
        for (const ObjectRef& control : controls)
            Do(control, "DataUpload", true);
        Do(keyboard, "DataTransferFixUp");
    }
    void Download(const std::vector<ObjectRef>& controls) {
        Do(keyboard, "DataTransferPrepare");
        for (const ObjectRef& control : controls) {
            Do(control, "DataDownload", true);
            Do(control, "PrepareDataDownload", true);
        }
        EXPECT_EQ(Do(keyboard, "Download"), Value(Long{0}));
        Do(keyboard, "DataTransferFixUp");
    }
    [[nodiscard]] static Subscription On(const ObjectRef& source, std::string_view name,
                                         EventSink sink) {
        const auto& events = source->ClassOf().events;
        return std::ranges::find(events, name, &EventMember::name)
            ->Subscribe(*source, std::move(sink));
    }

    TempFolder folder;
    sim::SimulatedDriver driver{folder / "keyboard.qxk", "full"};
    Host host{driver};
    ObjectRef keyboard = host.New("QXKeyboardAccess");
    ObjectRef layout = host.New("QXKeyboardLayoutData");
    ObjectRef settings = host.New("QXProgSettings");
};

TEST_F(ComHostWork, OneFormsDownloadIsAnothersUpload) {
    const std::vector<ObjectRef> form = NewForm();
    Upload(form);
    Let(ObjectOf(ObjectOf(form[1], "BitPage", BP_EAN + 0), "Flag", 3), "Value", true);
    Let(ObjectOf(form[1], "BitPage", BP_MSI + 0), "MinSize", 17);
    const ObjectRef track = ObjectOf(form[2], "Track2");
    Let(ObjectOf(track, "Header"), "KeyString", " 30158");
    Let(track, "TerminatorEnabled", false);
    const ObjectRef block = ObjectOf(ObjectOf(form[5], "PosData"), "Block", 3);
    Do(block, "AddKey", 3);
    Do(block, "AddKey", 10);
    Do(ObjectOf(block, "Sequence"), "AddByte", 31);

    // the user picks the key, and the host answers with its sequence
    auto& free = Native<QXFreeProgKeys>(form[3]);
    int key = 0;
    while (Do(layout, "KeySupport", key) != Value(Long{KEYMODE_PROG}))
        ++key;
    std::vector<Value> asked;
    const auto edits = On(form[3], "EditSequence", [&](std::span<Value> arguments) {
        asked.assign(arguments.begin(), arguments.end());
        arguments[2] = false;
        arguments[3] = u" 44172";
    });
    free.layoutDisplay.cmdKey_Click(static_cast<Integer>(key));
    free.cmdEdit_Click(0);
    EXPECT_EQ(asked, (std::vector<Value>{static_cast<Integer>(key), u"", false, u""}));
    EXPECT_EQ(Do(form[3], "DataChanged"), Value(true));
    Download(form);

    Long size = 0;
    for (const ObjectRef& control : form)
        size += std::get<Long>(Do(control, "TransferSize", false));
    EXPECT_GT(size, 1 + 178 + 259 + 30720 + 16 + 3360);

    const std::vector<ObjectRef> other = NewForm();
    Upload(other);
    EXPECT_EQ(Do(ObjectOf(ObjectOf(other[1], "BitPage", BP_EAN + 0), "Flag", 3), "Value"),
              Value(true));
    EXPECT_EQ(Do(ObjectOf(other[1], "BitPage", BP_MSI + 0), "MinSize"), Value(Integer{17}));
    EXPECT_EQ(Do(ObjectOf(ObjectOf(other[2], "Track2"), "Header"), "KeyString"), Value(u" 30158"));
    EXPECT_EQ(Do(ObjectOf(other[2], "Track2"), "TerminatorEnabled"), Value(false));
    EXPECT_EQ(Do(ObjectOf(other[5], "PosData"), "FindBlockForKey", 10), Value(Integer{3}));
    EXPECT_EQ(Native<QXFreeProgKeys>(other[3]).Sequences().Key(key).KeyString(), " 44172");
    EXPECT_EQ(Do(other[3], "DataChanged"), Value(false));
    EXPECT_TRUE(host.boxes.texts.empty());
}

TEST_F(ComHostWork, FilesAndModesWorkByName) {
    std::vector<Value> file{Script((folder / "param.bin").string())};
    EXPECT_EQ(CallWith(keyboard, "SaveParameterIntoFile", file), Value(Long{0}));
    EXPECT_EQ(CallWith(keyboard, "LoadParameterFromFile", file), Value(Long{0}));
    EXPECT_EQ(file[0], Script((folder / "param.bin").string()));
    EXPECT_NE(Do(keyboard, "LoadParameterFromFile", (folder / "none").string()), Value(Long{0}));

    driver.QueuePositionKey(42);
    EXPECT_EQ(Do(keyboard, "IsPositionProgMode"), Value(false));
    EXPECT_EQ(Do(keyboard, "EnablePositionProgMode"), Value(true));
    EXPECT_EQ(Do(keyboard, "IsPositionProgMode"), Value(true));
    EXPECT_EQ(Do(keyboard, "GetPositionCodeKey"), Value(Long{42}));
    EXPECT_EQ(Do(keyboard, "DisablePositionProgMode"), Value(true));
    Do(keyboard, "SelectFunctionKeyLayer", 7);
    EXPECT_EQ(driver.Layer(), 7);

    std::ofstream(folder / "page.bin", std::ios::binary) << std::string(256, 'P');
    const ObjectRef page = host.New("PosCodePage");
    EXPECT_EQ(Do(page, "LoadPageFromFile", (folder / "page.bin").string()), Value(true));
    EXPECT_EQ(Do(page, "GetByte", 256), Value(Byte{'P'}));
}

TEST_F(ComHostWork, PreferencesAreSavedForTheNextHost) {
    Let(settings, "AutoSave", false);
    Let(settings, "ColorProg", static_cast<int>(0x8000000F));
    Let(settings, "PosCodePage", "C:\\pages\\\u00e4.bin");
    EXPECT_EQ(Do(settings, "DataChanged"), Value(true));
    Do(settings, "Save");
    Do(settings, "SetLastDownloadFile", "last.qxc");
    const ObjectRef next = host.New("QXProgSettings");
    Do(next, "Load");
    EXPECT_EQ(Do(next, "AutoSave"), Value(false));
    EXPECT_EQ(Do(next, "ColorProg"), Value(static_cast<Long>(0x8000000F)));
    EXPECT_EQ(Do(next, "PosCodePage"), Value(u"C:\\pages\\\u00e4.bin"));
    EXPECT_EQ(Do(next, "GetLastDownloadFile"), Value(u"last.qxc"));
    EXPECT_EQ(Do(next, "POSColorBlock", 9), Value(Long{0x00FF0000}));
    EXPECT_EQ(Do(next, "POSColorBlock", 10), Value());
    EXPECT_EQ(Do(next, "POSColorBlock", -1), Value());
    EXPECT_EQ(host.boxes.texts, (std::vector<std::string>{"INVALID POSColorBlock INDEX 10",
                                                          "INVALID POSColorBlock INDEX -1"}));
}

TEST_F(ComHostWork, EditorsAnswerByReference) {
    const ObjectRef sequencer = host.New("QXSequencer");
    Let(sequencer, "Keyboard", keyboard);
    Let(sequencer, "LayoutSource", layout);
    int helped = 0;
    const auto help = On(sequencer, "UserNeedsHelp", [&](std::span<Value>) { ++helped; });
    host.inSequencer = [](frmSequencer& form) {
        form.AddCode(44);
        form.imgHelp_Click();
        form.LeaveWithOK();
    };
    std::vector<Value> arguments{Script(12), Script(" 30"), Script("unset"), Script(2)};
    EXPECT_EQ(CallWith(sequencer, "ShowSequenceEditor", arguments), Value(true));
    EXPECT_EQ(arguments[2], Value(u" 30 44"));
    EXPECT_EQ(helped, 1);
    host.inSequencer = [](frmSequencer& form) { form.LeaveWithCancel(); };
    arguments[2] = u"unset";
    EXPECT_EQ(CallWith(sequencer, "ShowSequenceEditor", arguments), Value(false));
    EXPECT_EQ(arguments[2], Value(u"unset"));

    const ObjectRef programmer = host.New("QXPOSProgrammer");
    std::vector<std::string> asked;
    const auto answer = [&](const char* event, std::size_t flag) {
        return On(programmer, event, [&asked, event, flag](std::span<Value> values) {
            EXPECT_EQ(values[flag], Value(true));
            asked.emplace_back(event);
            values[flag] = false;
            if (values.size() == 4)
                values[3] = u" 31";
        });
    };
    const auto edits = answer("EditSequence", 2);
    const auto removes = answer("RemoveBlock", 1);
    const auto removesAll = answer("RemoveAllBlocks", 0);
    host.inProgrammer = [](frmPOSProgrammer& form) {
        for (const Integer key : {Integer{3}, Integer{8}}) {
            form.cmdNewBlock_Click();
            form.posDisplay.cmdPOS_Click(key);
            form.cmdEdit_Click();
        }
        form.cmdClean_Click(0);
        form.cmdClean_Click(1);
        form.posDisplay.cmdPOS_Click(5);
        form.LeaveWithOK();
    };
    const ObjectRef blocks = host.New("POSKeyboard");
    EXPECT_EQ(Do(programmer, "ShowPosProgrammer", blocks), Value(true));
    EXPECT_EQ(asked, (std::vector<std::string>{"EditSequence", "EditSequence", "RemoveBlock",
                                               "RemoveAllBlocks"}));
    EXPECT_EQ(Do(blocks, "FindBlockForKey", 5), Value(Integer{5}));
    EXPECT_EQ(Do(blocks, "FindBlockForKey", 3), Value(Integer{0}));
}

TEST_F(ComHostWork, DisplaysReportTheirKeys) {
    const ObjectRef display = host.New("QXLayoutDisplay");
    Let(display, "LayoutSource", layout);
    Do(display, "ReloadKeysSettings", host.New("KeyboardSequences"));
    std::vector<Value> clicked;
    const auto note = [&](std::span<Value> arguments) { clicked.push_back(arguments[0]); };
    const auto keys = On(display, "OnKeyClicked", note);
    Native<QXLayoutDisplay>(display).cmdKey_Click(30);

    const ObjectRef grid = host.New("QXPosDisplay");
    const auto posKeys = On(grid, "KeyClicked", note);
    Do(grid, "SetKeyCaption", 105, "7", "tip");
    EXPECT_EQ(Do(grid, "IsUsedKey", 105), Value(true));
    Do(grid, "SetAsUnused", 105, 0);
    EXPECT_EQ(Do(grid, "IsUsedKey", 105), Value(false));
    Native<QXPosDisplay>(grid).cmdPOS_Click(105);
    EXPECT_EQ(clicked, (std::vector<Value>{Long{30}, Integer{105}}));
}

} // namespace
} // namespace qx::test
