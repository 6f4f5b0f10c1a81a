// Which object keeps which alive, and when the same object is returned.

#include "Host.h"

#include "qxcontrols/readers/QXMagnetCard.h"

namespace qx::test {
namespace {

using namespace com;

class ComLifetime : public testing::Test {
protected:
    FakeDriver driver;
    Host host{driver};
};

TEST_F(ComLifetime, APartIsItsOwnersOwn) {
    const ObjectRef card = host.New("QXMagnetCard");
    const ObjectRef track = ObjectOf(card, "Track2");
    EXPECT_EQ(ObjectOf(card, "Track2"), track);
    EXPECT_NE(ObjectOf(card, "Track3"), track);
    Let(track, "Caption", "second");
    EXPECT_EQ(Native<QXMagnetCard>(card).Track2().Caption(), "second");
    // a header has the same address as its track, but is another object
    EXPECT_EQ(&ObjectOf(track, "Header")->ClassOf(), &ClassNamed("KeySequence"));
}

TEST_F(ComLifetime, ASetPartIsCopied) {
    const ObjectRef card = host.New("QXMagnetCard");
    const ObjectRef held = ObjectOf(card, "Track1");
    const ObjectRef mine = host.New("MagneticTrack");
    Let(mine, "Caption", "mine");
    Do(ObjectOf(mine, "Header"), "AddByte", 30);
    Let(card, "Track1", mine);
    EXPECT_EQ(ObjectOf(card, "Track1"), held);
    EXPECT_EQ(Do(held, "Caption"), Value(u"mine"));
    EXPECT_EQ(Do(ObjectOf(held, "Header"), "KeyString"), Value(u" 30"));
    Let(mine, "Caption", "changed");
    EXPECT_EQ(Do(held, "Caption"), Value(u"mine"));
}

TEST_F(ComLifetime, APartKeepsItsOwner) {
    ObjectRef card = host.New("QXMagnetCard");
    const std::weak_ptr<Object> owner = card;
    ObjectRef header = ObjectOf(ObjectOf(card, "Track1"), "Header");
    card.reset();
    EXPECT_FALSE(owner.expired());
    Do(header, "AddByte", 30);
    EXPECT_EQ(Do(header, "KeyString"), Value(u" 30"));
    header.reset();
    EXPECT_TRUE(owner.expired());
}

TEST_F(ComLifetime, ObjectsOfADirectoryStayWhileItGrows) {
    driver.directory = {{MODULE_POS, 0x4000}};
    const ObjectRef keyboard = host.New("QXKeyboardAccess");
    ASSERT_EQ(Do(keyboard, "Init"), Value(true));
    const ObjectRef entry = ObjectOf(keyboard, "DirectoryItem", 1);
    Let(entry, "ModuleName", "POS keys");
    for (int i = 0; i < 100; ++i)
        Do(keyboard, "Init");
    EXPECT_EQ(ObjectOf(keyboard, "DirectoryItemByModule", MODULE_POS + 0), entry);
    EXPECT_EQ(Do(entry, "ModuleName"), Value(u"POS keys"));
}

TEST_F(ComLifetime, AServiceIsKeptUntilItIsReplacedOrItsUserIsReleased) {
    driver.directory = {{MODULE_POS, 0x4000}};
    ObjectRef keyboard = host.New("QXKeyboardAccess");
    ASSERT_EQ(Do(keyboard, "Init"), Value(true));
    ObjectRef pos = host.New("QXPos");
    Let(pos, "Keyboard", keyboard);
    std::weak_ptr<Object> kept = keyboard;
    keyboard.reset();
    ASSERT_FALSE(kept.expired());
    driver.calls.clear();
    Do(pos, "PrepareDataUpload", true);
    EXPECT_EQ(driver.calls, std::vector<std::string>{"QXCFG_MemRequestAdd"});

    Let(pos, "Keyboard", Value(ObjectRef()));
    EXPECT_TRUE(kept.expired());
    Do(pos, "PrepareDataUpload", true);
    EXPECT_EQ(driver.requests.size(), 1U);

    keyboard = host.New("QXKeyboardAccess");
    Let(pos, "Keyboard", keyboard);
    kept = keyboard;
    keyboard.reset();
    pos.reset();
    EXPECT_TRUE(kept.expired());
}

// A host may remove a service while an open editor uses it.
TEST_F(ComLifetime, ARemovedServiceStaysAliveWhileItIsInUse) {
    driver.directory = {{MODULE_POS, 0x4000}};
    ObjectRef keyboard = host.New("QXKeyboardAccess");
    ASSERT_EQ(Do(keyboard, "Init"), Value(true));
    const std::weak_ptr<Object> watched = keyboard;
    const ObjectRef sequencer = host.New("QXSequencer");
    Let(sequencer, "Keyboard", keyboard);
    host.inSequencer = [&](frmSequencer& form) {
        keyboard.reset();
        Let(sequencer, "Keyboard", Value(ObjectRef()));
        EXPECT_FALSE(watched.expired());
        form.AppDeactivate();
        form.LeaveWithOK();
    };
    std::vector<Value> arguments{Script(12), Script(" 30"), Value(), Script(4)};
    EXPECT_EQ(CallWith(sequencer, "ShowSequenceEditor", arguments), Value(true));
    EXPECT_FALSE(driver.positionMode);
    EXPECT_TRUE(watched.expired());
}

TEST_F(ComLifetime, AServiceThatCanBeReadIsTheOneThatWasSet) {
    for (const char* const name : {"QXFreeProgKeys", "QXLayoutDisplay", "QXSequencer"}) {
        const ObjectRef control = host.New(name);
        EXPECT_EQ(Do(control, "LayoutSource"), Value(ObjectRef())) << name;
        const ObjectRef layout = host.New("QXKeyboardLayoutData");
        Let(control, "LayoutSource", layout);
        EXPECT_EQ(Do(control, "LayoutSource"), Value(layout)) << name;
        Let(control, "LayoutSource", Value(ObjectRef()));
        EXPECT_EQ(Do(control, "LayoutSource"), Value(ObjectRef())) << name;
        EXPECT_EQ(layout.use_count(), 1) << name;
    }
}

// Create, use, release: objects are only kept alive by their owners.
TEST_F(ComLifetime, NothingIsLeftOfObjectsThatAreReleased) {
    for (const Class* const type : Classes()) {
        ObjectRef object = host.New(type->name);
        const std::weak_ptr<Object> watched = object;
        std::vector<ObjectRef> parts;
        for (const Member& member : type->members)
            if (member.kind == MemberKind::Get && member.result.kind == Kind::Object &&
                member.parameters.empty())
                parts.push_back(ObjectOf(object, member.name));
        for (const EventMember& event : type->events)
            (void)event.Subscribe(*object, [](std::span<Value>) {});
        parts.clear();
        EXPECT_EQ(object.use_count(), 1) << type->name;
        object.reset();
        EXPECT_TRUE(watched.expired()) << type->name;
    }
}

} // namespace
} // namespace qx::test
