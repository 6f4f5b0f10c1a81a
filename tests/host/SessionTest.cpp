#include "host/Session.h"

#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "qxcontrols/readers/QXBarcode.h"
#include "support/FakeDriver.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <utility>

namespace qx::host {

namespace {

class SessionTest : public testing::Test {
protected:
    SessionTest() {
        layout.SetLayoutPath(QX_LAYOUTS);
        EXPECT_TRUE(layout.OpenLayoutByName("us.qxl"));
    }

    // The names of the driver's calls since the last time, without runs of the same.
    std::vector<std::string> Calls() {
        auto calls = std::exchange(driver.calls, {});
        calls.erase(std::unique(calls.begin(), calls.end()), calls.end());
        return calls;
    }

    test::FakeDriver driver;
    QXKeyboardLayoutData layout;
    Configuration configuration{Platform(), &layout, nullptr};
};

using Names = std::vector<std::string>;

} // namespace

TEST_F(SessionTest, TransfersFollowTheContractsOrder) {
    driver.directory = {{MODULE_MAGNET_CONFIG, 0x1000}, {MODULE_MAGNET_HEADERS, 0x1100}};
    Session session(driver);
    session.Open();
    const auto sections = session.SectionsIn(configuration);
    ASSERT_EQ(sections.size(), 2U);
    Calls();
    session.Upload(sections);
    EXPECT_EQ(Calls(), (Names{"QXCFG_MemRequestClean", "QXCFG_MemRequestAdd", "QXCFG_ImageLoad",
                              "QXCFG_ImageRead", "QXCFG_MemRequestClean"}));
    session.Download(sections);
    EXPECT_EQ(Calls(), (Names{"QXCFG_MemRequestClean", "QXCFG_ImageWrite", "QXCFG_MemRequestAdd",
                              "QXCFG_ImageWrite", "QXCFG_MemRequestAdd", "QXCFG_ImageSave",
                              "QXCFG_MemRequestClean"}));
}

TEST_F(SessionTest, WhateverEndsItGivesTheKeyboardBack) {
    driver.directory = {{MODULE_LAYERED_FUNCKEYS, 0x4000}};
    try {
        Session session(driver);
        session.Open();
        EXPECT_FALSE(driver.layerKeysWork);
        throw std::runtime_error("the host fails");
    } catch (const std::runtime_error&) {
        EXPECT_TRUE(driver.layerKeysWork);
    }
    driver.statuses["QXCFG_DisableLayerSelection"] = 5; // the last call of the start-up
    EXPECT_THROW(Session(driver).Open(), Error);
    EXPECT_TRUE(driver.layerKeysWork);
    driver.statuses = {{"QXCFG_EnableLayerSelection", 5}};
    Session session(driver);
    session.Open();
    EXPECT_THROW(session.Close(), Error);
}

TEST_F(SessionTest, ASettingWithoutAPlaceInItsBlockIsNotSent) {
    driver.directory = {{MODULE_BARCODE_CONFIG, 0x1000}, {MODULE_BARCODE_HEADERS, 0x1100}};
    Session session(driver);
    session.Open();
    const auto sections = session.SectionsIn(configuration);
    ASSERT_EQ(sections.size(), 1U);
    auto& barcode = dynamic_cast<QXBarcode&>(sections[0]->Control());
    barcode.BitPage(BP_Code39).SetMaxSize(300);
    driver.memory.assign(test::FakeDriver::kSize, '\x33');
    driver.calls.clear();
    EXPECT_THROW(session.Download(sections), Error);
    EXPECT_EQ(std::count(driver.calls.begin(), driver.calls.end(), "QXCFG_ImageSave"), 0);
    barcode.BitPage(BP_Code39).SetMaxSize(30);
    session.Download(sections);
    EXPECT_EQ(driver.memory[0x1003], 30);
}

TEST_F(SessionTest, ATransferThatThrowsHasFailed) {
    struct : test::FakeDriver {
        std::int32_t QXCFG_ImageLoad() override { throw std::runtime_error("no status"); }
        std::int32_t QXCFG_ImageSave() override { throw std::runtime_error("no status"); }
    } throwing;
    throwing.directory = {{MODULE_MAGNET_CONFIG, 0x1000}};
    Session session(throwing);
    session.Open();
    const auto sections = session.SectionsIn(configuration);
    EXPECT_THROW(session.Upload(sections), Error);
    EXPECT_THROW(session.Download(sections), Error);
}

TEST_F(SessionTest, ADirectoryThatIsNotAsLargeAsItSaysIsRefused) {
    struct LyingDriver : test::FakeDriver {
        std::int32_t size = 0;
        std::int32_t QXCFG_ConfigDirectorySize() override { return size; }
        std::int32_t QXCFG_ConfigDirectoryGetEntry(std::int16_t nIndex, std::int32_t* module,
                                                   std::int32_t* address) override {
            return static_cast<std::size_t>(nIndex) < directory.size()
                       ? FakeDriver::QXCFG_ConfigDirectoryGetEntry(nIndex, module, address)
                       : 7;
        }
    } lying;
    lying.directory = {{MODULE_MAGNET_CONFIG, 0x1000}, {MODULE_MAGNET_HEADERS, 0x1100}};
    const std::pair<std::int32_t, const char*> cases[] = {
        {0, "no configuration directory"},      {-1, "no configuration directory"},
        {0x8000, "no configuration directory"}, {0x10000, "no configuration directory"},
        {3, "GetEntry gave status 7"},          {0x7FFF, "GetEntry gave status 7"},
    };
    for (const auto& [size, expected] : cases) {
        lying.size = size;
        Session session(lying);
        try {
            session.Open();
            ADD_FAILURE() << "opened with size " << size;
        } catch (const Error& error) {
            EXPECT_EQ(error.Kind(), ErrorKind::KeyboardNotOpened);
            EXPECT_NE(std::string(error.what()).find(expected), std::string::npos) << error.what();
        }
    }
}

// The controls would reckon past the end of what numbers can say.
TEST_F(SessionTest, AnAddressThatNoMemoryHasIsRefused) {
    constexpr std::int32_t kLowest = std::numeric_limits<std::int32_t>::min();
    constexpr std::int32_t kHighest = std::numeric_limits<std::int32_t>::max();
    for (const std::int32_t address : {kLowest, -2, 1 << 30, kHighest}) {
        driver.directory = {{MODULE_LAYERED_FUNCKEYS, 0x4000}, {MODULE_MAGNET_CONFIG, address}};
        Session session(driver);
        try {
            session.Open();
            ADD_FAILURE() << "opened with an area at " << address;
        } catch (const Error& error) {
            EXPECT_EQ(error.Kind(), ErrorKind::KeyboardNotOpened);
            EXPECT_NE(std::string(error.what())
                          .find("MODULE_MAGNET_CONFIG begins at " + std::to_string(address)),
                      std::string::npos)
                << error.what();
        }
    }
    driver.directory.pop_back();
    driver.directory.push_back({MODULE_MAGNET_CONFIG, -1}); // as good as none
    driver.directory.push_back({77, kLowest});              // of no use to anybody
    Session session(driver);
    session.Open();
    EXPECT_EQ(session.SectionsIn(configuration).size(), 1U);
}

// Without MODULE_GUID the control works with the address -1; nothing of that reaches the driver.
TEST_F(SessionTest, AKeyboardWithLayersButNoIdentifier) {
    driver.directory = {{MODULE_LAYERED_FUNCKEYS, 0x4000}};
    driver.memory.assign(test::FakeDriver::kSize, '\x21');
    driver.image.assign(test::FakeDriver::kSize, '\x55');
    Session session(driver);
    session.Open();
    const auto sections = session.SectionsIn(configuration);
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

// The control's requests leave out keys without a sequence, and all descriptions.
TEST_F(SessionTest, WhatTheRequestsLeaveOutIsSentToo) {
    driver.directory = {{MODULE_LAYERED_FUNCKEYS, 0x4000}, {MODULE_GUID, 0x3000}};
    driver.memory.assign(test::FakeDriver::kSize, '\x21');
    Session session(driver);
    session.Open();
    const auto sections = session.SectionsIn(configuration);
    session.Download(sections); // all empty
    EXPECT_EQ(driver.memory.substr(0x4000, 30720), std::string(30720, '\0'));
    EXPECT_EQ(driver.memory.substr(70000, 30720), std::string(30720, '\0'));
    EXPECT_EQ(driver.memory.substr(0x3FF0, 16), std::string(16, '\x21'));
}

// A document without an identifier leaves the keyboard's own, and a comparison does not speak of
// it.
TEST_F(SessionTest, AnIdentifierThatTheDocumentLacksStays) {
    driver.directory = {{MODULE_LAYERED_FUNCKEYS, 0x4000}, {MODULE_GUID, 0x3000}};
    driver.memory.assign(test::FakeDriver::kSize, '\x21');
    Session session(driver);
    session.Open();
    const auto sections = session.SectionsIn(configuration);
    session.Upload(sections);
    const auto uploaded = configuration.Write(sections);
    const auto held = configuration.List(sections);
    ASSERT_EQ(uploaded.Find("layeredFuncKeys")->at("guid"),
              "{21212121-2121-2121-2121-212121212121}");
    for (const bool isAbsent : {true, false}) {
        auto document = uploaded;
        Json& section = document.Place("layeredFuncKeys");
        ASSERT_EQ(document.Identifier(), "{21212121-2121-2121-2121-212121212121}");
        if (isAbsent)
            document.RemoveIdentifier();
        else
            section["guid"] = "";
        ASSERT_EQ(section.contains("guid"), !isAbsent);
        section["keys"] = Json::array();
        const auto read = configuration.Read(document);
        EXPECT_EQ(configuration.Write(read).Find("layeredFuncKeys")->count("guid"), 0U);
        for (const auto& difference : Compare(held, configuration.List(read)))
            EXPECT_EQ(difference.name.find("identifier"), std::string::npos) << difference.name;
        session.Download(read);
        EXPECT_EQ(driver.memory.substr(0x3000, 16), std::string(16, '\x21'));
        EXPECT_EQ(driver.memory.substr(0x4000, 30720), std::string(30720, '\0'));
        session.Upload(sections);
        EXPECT_EQ(configuration.Write(sections).Find("layeredFuncKeys")->count("guid"), 1U);
    }
}

} // namespace qx::host
