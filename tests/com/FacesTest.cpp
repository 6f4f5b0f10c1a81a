// The tables of the faces, with a toolkit that only records where parts are placed.
#include "com/faces/Faces.h"
#include "com/faces/Arrangement.h"
#include "com/faces/Forms.h"

#include "Host.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "qxcontrols/keys/QXLayoutDisplay.h"
#include "qxcontrols/pos/QXPosDisplay.h"
#include "qxcontrols/readers/QXBarcode.h"
#include "qxcontrols/readers/QXMagnetCard.h"

#include <set>

namespace qx::test {
namespace {

using com::Part;
using com::PartKind;

// A letter is 7 pixels wide; every kind of part has its own size.
class FakeMeasures : public com::Measures {
public:
    int WidthOf(const Part& part) const override {
        return 30 + static_cast<int>(part.kind) + 7 * static_cast<int>(part.state.text.size());
    }
    int HeightOf(const Part& part, int) const override {
        return part.kind == PartKind::List ? 60 : 20 + static_cast<int>(part.kind);
    }
    int Gap() const override { return 8; }
    int TitleHeight() const override { return 16; }
};

Part* Find(Part& part, std::string_view id) {
    if (part.id == id)
        return &part;
    for (Part& inner : part.parts)
        if (Part* const found = Find(inner, id))
            return found;
    return nullptr;
}

void ExpectPlacesOfTheirOwn(std::string_view name, const Part& root) {
    std::set<std::string> ids;
    std::vector<com::Place> taken;
    for (const auto& [part, place] : Arranged(root, {5, 5, 1400, 900}, FakeMeasures())) {
        EXPECT_TRUE(ids.insert(part->id).second) << name << ' ' << part->id;
        EXPECT_GT(place.width, 0) << name << ' ' << part->id;
        EXPECT_GE(place.left, 5) << name << ' ' << part->id;
        EXPECT_LE(place.left + place.width, 1405) << name << ' ' << part->id;
        EXPECT_LE(place.top + place.height, 905) << name << ' ' << part->id;
        if (part->kind == PartKind::Frame)
            continue;
        for (const com::Place& other : taken)
            EXPECT_TRUE(
                other.left + other.width <= place.left || place.left + place.width <= other.left ||
                other.top + other.height <= place.top || place.top + place.height <= other.top)
                << name << ' ' << part->id << " overlaps another";
        taken.push_back(place);
    }
    EXPECT_FALSE(taken.empty()) << name;
}

class Faces : public testing::Test {
protected:
    com::FaceTable Face(std::string_view name) {
        object = host.New(name);
        return com::FaceOf(*object).value();
    }
    FakeDriver driver;
    Host host{driver};
    ObjectRef object;
};

TEST_F(Faces, PartsOfEveryVisibleControlDoNotOverlap) {
    for (const com::Class* const type : com::Classes()) {
        const ObjectRef control = host.New(type->name);
        auto face = com::FaceOf(*control);
        ASSERT_EQ(face.has_value(), type->look == com::Look::Visible) << type->name;
        if (!face)
            continue;
        ExpectPlacesOfTheirOwn(type->name, face->root);
    }
}

TEST_F(Faces, AnActionReachesItsChildAndTheChangeIsReported) {
    com::FaceTable face = Face("QXMagnetCard");
    auto& card = Native<QXMagnetCard>(object);
    int refreshed = 0;
    const auto subscriptions = face.subscribe({[&] {
                                                   ++refreshed;
                                                   Refresh(face.root);
                                               },
                                               [](std::string_view) {}});
    for (Integer nIndex = 0; nIndex < 3; ++nIndex) {
        const auto i = static_cast<std::size_t>(nIndex);
        Part* const part = Find(face.root, com::ElementOf("chkMagneticOptions", nIndex));
        ASSERT_NE(part, nullptr);
        const Integer wanted = card.chkMagneticOptions[i].Value == 1 ? 0 : 1;
        const auto before = card.chkMagneticOptions;
        part->act({wanted, {}});
        for (std::size_t other = 0; other < 3; ++other)
            EXPECT_EQ(card.chkMagneticOptions[other].Value,
                      other == i ? wanted : before[other].Value);
    }
    EXPECT_TRUE(card.DataChanged());
    card.DefaultValues();
    EXPECT_GT(refreshed, 0);
    EXPECT_EQ(Find(face.root, "chkMagneticOptions_0")->state.value,
              card.chkMagneticOptions[0].Value);
}

TEST_F(Faces, OnlyThePageThatIsChosenIsThere) {
    com::FaceTable face = Face("QXBarcode");
    const auto isThere = [&](std::string_view id) {
        Refresh(face.root);
        for (const auto& [part, place] : Arranged(face.root, {0, 0, 900, 700}, FakeMeasures()))
            if (part->id == id)
                return true;
        return false;
    };
    EXPECT_FALSE(isThere("lblReader_0"));
    Find(face.root, "lstPrefGroup")->act({BP_Reader_1, {}});
    EXPECT_TRUE(isThere("lblReader_0"));
    EXPECT_TRUE(isThere("cmdRemove_1"));
    EXPECT_FALSE(isThere("slidRange_0"));
    EXPECT_FALSE(isThere("chkBarOption_0"));
}

TEST_F(Faces, ButtonsWrapToTheNextLine) {
    Button child;
    const auto button = [&](const char* id) { return com::PartOf(id, child, [] {}); };
    Part flow = com::Flow({button("first"), button("second"), button("third")});
    const int width = FakeMeasures().WidthOf(flow.parts[0]);
    const int height = FakeMeasures().HeightOf(flow.parts[0], width);
    const auto placed = Arranged(flow, {10, 20, 2 * width + 8, 500}, FakeMeasures());
    ASSERT_EQ(placed.size(), 3U);
    EXPECT_EQ(placed[1].place.left, 10 + width + 8);
    EXPECT_EQ(placed[1].place.top, 20);
    EXPECT_EQ(placed[2].place.left, 10);
    EXPECT_EQ(placed[2].place.top, 20 + height + 8);
    EXPECT_EQ(Arranged(flow, {10, 20, 3 * width + 16, 500}, FakeMeasures())[2].place.top, 20);
}

TEST_F(Faces, TheSequenceEditorsWindowRecordsTypesAndLeaves) {
    frmSequencer form;
    QXKeyboardLayoutData layout;
    layout.SetLayoutPath(QX_LAYOUTS);
    ASSERT_TRUE(layout.OpenLayoutByName("us.qxl"));
    form.SetLayoutSource(&layout);
    form.SetMaxSeqSize(30);
    form.lblCaption.Caption = "Edit";
    com::FormTable table = com::FormTableOf(form);
    form.PrepareDisplay();
    Refresh(table.face.root);
    ExpectPlacesOfTheirOwn("frmSequencer", table.face.root);
    EXPECT_EQ(table.title(), "Edit");
    int closed = 0;
    const Subscription subscription = table.onClosed([&] { ++closed; });

    EXPECT_FALSE(table.isChanged());
    Find(table.face.root, "layoutDisplay")->act({30, {}});
    EXPECT_TRUE(table.isChanged());
    EXPECT_EQ(form.KeyString(), " 30158");
    Part* const typed = Find(table.face.root, "txtTyped");
    typed->focus(true);
    typed->act({0, "no key has this name"});
    typed->enter();
    Refresh(table.face.root);
    EXPECT_TRUE(Find(table.face.root, "lblTypedFault")->IsVisible());
    table.accept();
    EXPECT_EQ(closed, 0); // the error keeps it open
    typed->act({0, ""});
    Find(table.face.root, "cmdApply")->act({});
    EXPECT_EQ(form.KeyString(), "");
    table.accept();
    EXPECT_EQ(closed, 1);
    EXPECT_TRUE(form.OK());
    table.cancel();
    EXPECT_EQ(closed, 2);
    EXPECT_FALSE(form.OK());
}

TEST_F(Faces, ThePosEditorsWindowTakesKeysAndShowsTheColours) {
    frmPOSProgrammer form;
    com::FormTable table = com::FormTableOf(form);
    form.PrepareDisplay();
    Refresh(table.face.root);
    ExpectPlacesOfTheirOwn("frmPOSProgrammer", table.face.root);
    Part* const keys = Find(table.face.root, "posDisplay");
    Part* const colours = Find(table.face.root, "cmdColor");
    EXPECT_FALSE(colours->state.keys[4].isEnabled); // no block exists yet
    keys->act({17, {}});
    keys->act({18, {}});
    keys->reach(40); // a free key: no block is current now
    keys->act({40, {}});
    keys->take(18);
    colours->act({4, {}});
    Refresh(table.face.root);
    EXPECT_TRUE(colours->state.keys[4].isCurrent);
    EXPECT_EQ(form.PosData().FindBlockForKey(17), 17);
    EXPECT_EQ(form.PosData().FindBlockForKey(40), 18); // the lower key is the major one
    EXPECT_EQ(form.PosData().Block(18).ColorID(), 4);
    EXPECT_EQ(keys->state.keys[17].name.substr(0, 6), "Key 18");
    table.undo();
    EXPECT_NE(form.PosData().Block(18).ColorID(), 4);
}

TEST_F(Faces, TheCaptionsOfKeysHaveTheSizesThatWereChosen) {
    com::FaceTable face = Face("QXLayoutDisplay");
    auto& layout = Native<QXLayoutDisplay>(object);
    layout.cmdKey[30].Visible = true;
    layout.cmdKey[30].Width = layout.cmdKey[30].Height = 500;
    const auto scaleOf = [&](std::string_view id, std::size_t row) {
        Refresh(face.root);
        return Find(face.root, id)->state.keys.at(row).textScale;
    };
    EXPECT_EQ(scaleOf("layoutDisplay", 0), 1);
    layout.SetUserFontSize(15);
    EXPECT_EQ(scaleOf("layoutDisplay", 0), 2.5F);
    layout.SetUserFontSize(-4);
    EXPECT_GT(scaleOf("layoutDisplay", 0), 0);

    const ObjectRef pos = host.New("QXPosDisplay");
    face = com::FaceOf(*pos).value();
    Native<QXPosDisplay>(pos).SetAsCurrentCaption(5, "9", "");
    EXPECT_EQ(scaleOf("posDisplay", 3), 1);
    EXPECT_EQ(scaleOf("posDisplay", 4), 1.25F);
    EXPECT_TRUE(Find(face.root, "posDisplay")->state.keys[4].isBold);
}

TEST_F(Faces, CaptionsLoseTheMarksOfTheirShortcuts) {
    EXPECT_EQ(com::PlainCaption("&Save && close&"), "Save & close");
}

} // namespace
} // namespace qx::test
