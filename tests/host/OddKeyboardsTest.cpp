// Unusual keyboards: wrong directories, unreadable names, contents that no document can express,
// layers without an identifier.
#include "SessionFixture.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace qx::host {

namespace {

using OddKeyboards = SessionFixture;

} // namespace

TEST_F(OddKeyboards, ADirectoryWithAWrongSizeOnlyStopsSectionsItMayHide) {
    struct LyingDriver : test::FakeDriver {
        std::int32_t size = 0;
        std::int32_t QXCFG_ConfigDirectorySize() override { return size; }
        std::int32_t QXCFG_ConfigDirectoryGetEntry(std::int16_t nIndex, std::int32_t* module,
                                                   std::int32_t* address) override {
            *module = MODULE_POS; // scribbles even on failure
            *address = 0x7777;
            return static_cast<std::size_t>(nIndex) < directory.size()
                       ? FakeDriver::QXCFG_ConfigDirectoryGetEntry(nIndex, module, address)
                       : 7;
        }
    } lying;
    lying.directory = {{MODULE_MAGNET_CONFIG, 0x1000}, {MODULE_MAGNET_HEADERS, 0x1100}};
    for (const std::int32_t size : {0, -1, 0x8000, 0x10000}) {
        lying.size = size;
        try {
            Session(lying).Open();
            ADD_FAILURE() << "opened with size " << size;
        } catch (const Error& error) {
            EXPECT_EQ(error.Kind(), ErrorKind::KeyboardNotOpened);
            EXPECT_EQ(error.Why(), Cause::NoDirectory) << TextOf(error);
        }
    }
    const auto magnetOnly = configuration.Write({configuration.Find("magnetCard")});
    const auto withPos =
        configuration.Write({configuration.Find("magnetCard"), configuration.Find("pos")});
    for (const auto& [size, unreadable] : {std::pair(3, 1), std::pair(0x7FFF, 32765)}) {
        lying.size = size;
        Session session(lying);
        session.Open();
        ASSERT_EQ(session.Warnings().size(), 1U);
        const Error& warning = session.Warnings()[0];
        EXPECT_EQ(warning.Why(), Cause::EntriesUnreadable) << TextOf(warning);
        EXPECT_EQ(warning.count, unreadable);
        EXPECT_EQ(warning.index, 2);
        EXPECT_EQ(warning.Status(), 7);
        EXPECT_EQ(session.Present(configuration).size(), 2U);
        auto sections = session.SectionsIn(configuration, false, &magnetOnly);
        session.Upload(sections);
        for (const auto* document : {&withPos, static_cast<const ConfigurationDocument*>(nullptr)})
            try {
                (void)session.SectionsIn(configuration, false, document);
                ADD_FAILURE() << "a section that may be hidden was treated as absent";
            } catch (const Error& error) {
                EXPECT_EQ(error.Why(), Cause::SectionUnknown);
                ASSERT_EQ(error.related.size(), 1U);
                EXPECT_EQ(error.related[0].index, 2);
            }
    }
    lying.size = 2; // now nothing is hidden
    Session session(lying);
    session.Open();
    EXPECT_EQ(session.SectionsIn(configuration).size(), 2U);
}

// The largest possible number of entries, all readable.
TEST_F(OddKeyboards, TheLargestDirectoryIsReadToItsEnd) {
    driver.notesCalls = false;
    driver.directory.assign(0x7FFF, {77, 0x7000});
    driver.directory.back() = {MODULE_POS, 0x2000};
    Session session(driver);
    session.Open();
    EXPECT_EQ(session.SectionsIn(configuration).size(), 1U);
    EXPECT_EQ(session.ReadIdentity().directory.size(), 0x7FFFU);
}

// The controls' calculations would overflow.
TEST_F(OddKeyboards, AnImpossibleAddressIsNotUsed) {
    constexpr std::int32_t kLowest = std::numeric_limits<std::int32_t>::min();
    constexpr std::int32_t kHighest = std::numeric_limits<std::int32_t>::max();
    const auto pos = configuration.Write({configuration.Find("pos")});
    for (const std::int32_t address : {kLowest, -2, 1 << 30, kHighest}) {
        driver.directory = {{MODULE_POS, 0x4000}, {MODULE_BARCODE_CONFIG, address}};
        Session session(driver);
        session.Open();
        ASSERT_EQ(session.Warnings().size(), 1U);
        EXPECT_EQ(session.Warnings()[0].Why(), Cause::AddressImpossible);
        EXPECT_EQ(session.Warnings()[0].name, "MODULE_BARCODE_CONFIG");
        EXPECT_EQ(session.Warnings()[0].place.address, address);
        EXPECT_THROW((void)session.SectionsIn(configuration), Error);
        EXPECT_EQ(session.SectionsIn(configuration, false, &pos).size(), 1U);
        (void)session.ReadContent(configuration);
    }
    driver.directory.pop_back();
    driver.directory.push_back({MODULE_BARCODE_CONFIG, -1}); // as if absent
    driver.directory.push_back({77, kLowest});               // irrelevant
    Session session(driver);
    session.Open();
    EXPECT_EQ(session.SectionsIn(configuration).size(), 1U);
}

// Names and capabilities are for display: transfers do not need them.
TEST_F(OddKeyboards, AnUnreadableNameIsAWarning) {
    driver.directory = {{MODULE_POS, 0x2000}};
    for (const auto& [end, missing] :
         {std::pair(std::size_t{0x7FD0}, Cause::NamesUnreadable),
          std::pair(std::size_t{0x7FF}, Cause::CapabilitiesUnreadable)}) {
        struct Forgetful : test::FakeDriver {
            std::size_t hidden = 0;
            std::int32_t QXCFG_ImageRead(std::int32_t lAddress, char* buffer,
                                         std::int32_t lSize) override {
                const auto start = static_cast<std::size_t>(lAddress);
                if (hidden < start || hidden >= start + static_cast<std::size_t>(lSize))
                    return FakeDriver::QXCFG_ImageRead(lAddress, buffer, lSize);
                std::fill_n(buffer, lSize, '\x77');
                return 12;
            }
        } forgetful;
        forgetful.hidden = end;
        forgetful.directory = driver.directory;
        Session session(forgetful);
        session.Open();
        ASSERT_EQ(session.Warnings().size(), 1U);
        EXPECT_EQ(session.Warnings()[0].Why(), missing) << TextOf(session.Warnings()[0]);
        EXPECT_EQ(session.Warnings()[0].Status(), 12);
        auto sections = session.SectionsIn(configuration);
        session.Upload(sections);
        session.LookAgain();
        const KeyboardIdentity identity = session.ReadIdentity();
        EXPECT_TRUE(identity.identification.empty());
        EXPECT_EQ(identity.capabilities, 0);
        KeyboardIdentity other = identity;
        other.identification = "OTHER";
        EXPECT_TRUE(identity.IsLike(other)) << "it could be the same keyboard";
    }
}

// Data that the control cannot decode is never treated as settings.
TEST_F(OddKeyboards, DamageIsNamedAndLeftOut) {
    driver.directory = {
        {MODULE_POS, 0x2000}, {MODULE_LAYERED_FUNCKEYS, 0x4000}, {MODULE_GUID, 0x3000}};
    Session session(driver);
    session.Open();
    const auto upload = [&] {
        auto sections = session.SectionsIn(configuration);
        const auto damaged = session.Upload(sections);
        EXPECT_EQ(sections.size() + damaged.size(), 2U);
        const auto document = configuration.Write(sections);
        for (const Fault& fault : damaged)
            EXPECT_EQ(document.Find(fault.place.substr(1)), nullptr);
        return damaged;
    };
    driver.memory.replace(0x2000, 3360, 3360, '\xFF');
    for (int group = 0; group <= 255; ++group) {
        driver.memory[0x2000 + 32 * 4] = static_cast<char>(group);
        const auto damaged = upload();
        ASSERT_EQ(damaged.size(), group > 105 && group < 255 ? 1U : 0U) << group;
        if (damaged.empty())
            continue;
        EXPECT_EQ(damaged[0], Fault("/pos", FaultKind::UnknownGroup, "2080", "5 (F4)", group, 105))
            << WordsOf(damaged[0]);
        EXPECT_TRUE(
            configuration.Write({configuration.Find("pos")}).Find("pos")->at("blocks").empty());
    }
    struct Case {
        std::vector<char16_t> units; // of layer 0 key 1
        std::string address;         // of the damage; empty if none
    };
    constexpr std::size_t kDescription = 70000 + 128;
    const Case cases[] = {
        {{u'a', 0xD83D, 0xDE00, u'b'}, ""},  {{0xFFFF, 0xFFFE, 1}, ""}, {{u'a', 0, 0xD800}, ""},
        {{0xD800, u'a'}, "111F0"},           {{u'a', 0xDC00}, "111F2"}, {{0xDE00, 0xD83D}, "111F0"},
        {{0xD800, 0xD800, 0xDC00}, "111F0"},
    };
    for (const Case& each : cases) {
        driver.memory.replace(kDescription, 128, 128, '\0');
        for (std::size_t i = 0; i < each.units.size(); ++i) {
            driver.memory[kDescription + 2 * i] = static_cast<char>(each.units[i] & 0xFF);
            driver.memory[kDescription + 2 * i + 1] = static_cast<char>(each.units[i] >> 8);
        }
        const auto damaged = upload();
        ASSERT_EQ(damaged.empty(), each.address.empty());
        if (!damaged.empty()) {
            EXPECT_EQ(damaged[0],
                      Fault("/layeredFuncKeys", FaultKind::HalfCharacter, each.address));
        }
    }
    driver.memory.replace(kDescription, 128, 128, 'x');
    driver.memory[kDescription + 126] = 0x00; // the last unit is half of a surrogate pair
    driver.memory[kDescription + 127] = static_cast<char>(0xD8);
    EXPECT_EQ(upload().size(), 1U);
}

// Without MODULE_GUID the control uses the address -1; the driver never sees it.
TEST_F(OddKeyboards, AKeyboardWithLayersButNoIdentifier) {
    driver.directory = {{MODULE_LAYERED_FUNCKEYS, 0x4000}};
    driver.memory.assign(test::FakeDriver::kSize, '\x21');
    driver.image.assign(test::FakeDriver::kSize, '\x55');
    Session session(driver);
    session.Open();
    auto sections = session.SectionsIn(configuration);
    ASSERT_EQ(sections.size(), 1U);
    session.Upload(sections);
    EXPECT_EQ(driver.image.substr(0, 32), std::string(32, '\x55'));
    EXPECT_EQ(configuration.Write(sections).Find("layeredFuncKeys")->count("guid"), 0U);
    session.Download(sections);
    EXPECT_EQ(driver.image.substr(0, 32), std::string(32, '\x55'));
    EXPECT_EQ(driver.memory, std::string(test::FakeDriver::kSize, '\x21'));

    auto document = configuration.Write(sections);
    document.Place("layeredFuncKeys")["guid"] = "{01234567-89AB-CDEF-0123-456789ABCDEF}";
    EXPECT_THROW(configuration.Read(document), Error);
    (void)session.SectionsIn(configuration, true);
    EXPECT_NO_THROW(configuration.Read(document));
}

// The control's own requests omit keys without a sequence, and all descriptions.
TEST_F(OddKeyboards, BytesOutsideTheRequestsAreSentToo) {
    driver.directory = {{MODULE_LAYERED_FUNCKEYS, 0x4000}, {MODULE_GUID, 0x3000}};
    driver.memory.assign(test::FakeDriver::kSize, '\x21');
    Session session(driver);
    session.Open();
    auto sections = session.SectionsIn(configuration);
    session.Download(sections); // all empty
    EXPECT_EQ(driver.memory.substr(0x4000, 30720), std::string(30720, '\0'));
    EXPECT_EQ(driver.memory.substr(70000, 30720), std::string(30720, '\0'));
    EXPECT_EQ(driver.memory.substr(0x3FF0, 16), std::string(16, '\x21'));
}

// A document without an identifier keeps the keyboard's own, and a comparison does not mention it.
TEST_F(OddKeyboards, AMissingIdentifierKeepsTheKeyboardsOwn) {
    driver.directory = {{MODULE_LAYERED_FUNCKEYS, 0x4000}, {MODULE_GUID, 0x3000}};
    driver.memory.assign(test::FakeDriver::kSize, '\x21');
    const std::string guid = "0123456789ABCDEF";
    driver.memory.replace(0x3000, 16, guid);
    Session session(driver);
    session.Open();
    auto sections = session.SectionsIn(configuration);
    session.Upload(sections);
    const auto uploaded = configuration.Write(sections);
    const auto held = configuration.List(sections);
    ASSERT_EQ(uploaded.Find("layeredFuncKeys")->at("guid"),
              "{33323130-3534-3736-3839-414243444546}");
    for (const bool isAbsent : {true, false}) {
        auto document = uploaded;
        Json& section = document.Place("layeredFuncKeys");
        ASSERT_EQ(document.Identifier(), "{33323130-3534-3736-3839-414243444546}");
        if (isAbsent)
            document.RemoveIdentifier();
        else
            section["guid"] = "";
        ASSERT_EQ(section.contains("guid"), !isAbsent);
        section["keys"] = Json::array();
        const auto read = configuration.Read(document);
        EXPECT_EQ(configuration.Write(read).Find("layeredFuncKeys")->count("guid"), 0U);
        for (const auto& difference : Compare(held, configuration.List(read)))
            EXPECT_EQ(ToText(difference).find("identifier"), std::string::npos)
                << ToText(difference);
        session.Download(read);
        EXPECT_EQ(driver.memory.substr(0x3000, 16), guid);
        EXPECT_EQ(driver.memory.substr(0x4000, 30720), std::string(30720, '\0'));
        session.Upload(sections);
        EXPECT_EQ(configuration.Write(sections).Find("layeredFuncKeys")->count("guid"), 1U);
    }
}

} // namespace qx::host
