#include "host/Session.h"

#include "host/KeyboardFiles.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "qxcontrols/readers/QXBarcode.h"
#include "support/FakeDriver.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <limits>
#include <tuple>
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
    auto sections = session.SectionsIn(configuration);
    ASSERT_EQ(sections.size(), 2U);
    Calls();
    session.Upload(sections);
    EXPECT_EQ(Calls(), (Names{"QXCFG_MemRequestClean", "QXCFG_MemRequestAdd", "QXCFG_ImageWrite",
                              "QXCFG_ImageLoad", "QXCFG_ImageRead", "QXCFG_MemRequestClean"}));
    session.Download(sections);
    EXPECT_EQ(Calls(), (Names{"QXCFG_MemRequestClean", "QXCFG_ImageWrite", "QXCFG_MemRequestAdd",
                              "QXCFG_ImageWrite", "QXCFG_MemRequestAdd", "QXCFG_ImageSave",
                              "QXCFG_MemRequestClean"}));
}

// The output delay lies at the base of the module and the magnetic reader's switches at 5 to 7; the
// bytes in between are neither read nor written.
TEST_F(SessionTest, OfTheMagneticReadersModuleOnlyItsOwnBytesAreTouched) {
    struct Touched : test::FakeDriver {
        Stretches bytes;
        std::int32_t QXCFG_ImageRead(std::int32_t lAddress, char* buffer,
                                     std::int32_t lSize) override {
            bytes.Add(lAddress, lSize);
            return FakeDriver::QXCFG_ImageRead(lAddress, buffer, lSize);
        }
        std::int32_t QXCFG_ImageWrite(std::int32_t lAddress, const char* buffer,
                                      std::int32_t lSize) override {
            bytes.Add(lAddress, lSize);
            return FakeDriver::QXCFG_ImageWrite(lAddress, buffer, lSize);
        }
        std::int32_t QXCFG_MemRequestAdd(std::int16_t nModule, std::int32_t lAddress,
                                         std::int32_t lSize) override {
            bytes.Add(lAddress, lSize);
            return FakeDriver::QXCFG_MemRequestAdd(nModule, lAddress, lSize);
        }
    } touched;
    touched.checksRequests = true;
    touched.directory = {{MODULE_MAGNET_CONFIG, 0x1000}, {MODULE_MAGNET_HEADERS, 0x1100}};
    touched.memory.replace(0x1000, 9, "\x06\x11\x22\x33\x44\x01\x02\x1E\x55");
    Session session(touched);
    session.Open();
    touched.bytes.Clear();
    auto sections = session.SectionsIn(configuration);
    session.Upload(sections);
    KeyboardContent content = session.ReadContent(configuration);
    std::vector<std::tuple<int, Long, Long>> pieces;
    for (const ContentPiece& piece : content.pieces)
        pieces.emplace_back(piece.module, piece.address, piece.Size());
    EXPECT_EQ(pieces, (decltype(pieces){{MODULE_KEYBOARD, 0x1000, 1},
                                        {MODULE_MAGNET_HEADERS, 0x1100, 256},
                                        {MODULE_MAGNET_CONFIG, 0x1005, 3}}));
    EXPECT_EQ(content.Bytes(0x1005, 3), "\x01\x02\x1E");
    EXPECT_TRUE(session.ReadAgain(content).HoldsSame(content));
    session.PrepareSending({{MODULE_KEYBOARD, "commonKeyboard", 0x1000, "\x06", "\x07"},
                            {MODULE_MAGNET_CONFIG, "magnetCard", 0x1006, "\x02", "\x04"}});
    session.Send();
    EXPECT_EQ(touched.memory.substr(0x1000, 9), "\x07\x11\x22\x33\x44\x01\x04\x1E\x55");
    session.Download(sections);
    EXPECT_EQ(touched.memory.substr(0x1000, 9), "\x06\x11\x22\x33\x44\x01\x02\x1E\x55");
    Stretches own;
    own.Add(0x1000, 1);
    own.Add(0x1005, 3);
    own.Add(0x1100, 256);
    own.Add(QXKeyboardAccess::kIdentificationAddress, QXKeyboardAccess::kIdentificationSize);
    own.Add(QXKeyboardAccess::kCapabilityAddress, 1);
    EXPECT_TRUE(touched.bytes.Without(own).empty());
    touched.statuses["QXCFG_ImageWrite"] = 5;
    EXPECT_THROW(session.PrepareSending({{MODULE_KEYBOARD, "", 0x1000, "\x06", "\x07"}}), Error);
    EXPECT_TRUE(touched.requests.empty()) << "the transfer has ended";
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
    driver.statuses = {{"QXCFG_DisableLayerSelection", 5}, {"QXCFG_EnableLayerSelection", 5}};
    Session session(driver); // these statuses mean nothing
    session.Open();
    session.Close();
    EXPECT_TRUE(driver.layerKeysWork);
}

TEST_F(SessionTest, ASettingWithoutAPlaceInItsBlockIsNotSent) {
    driver.directory = {{MODULE_BARCODE_CONFIG, 0x1000}, {MODULE_BARCODE_HEADERS, 0x1100}};
    Session session(driver);
    session.Open();
    auto sections = session.SectionsIn(configuration);
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
    auto sections = session.SectionsIn(configuration);
    EXPECT_THROW(session.Upload(sections), Error);
    EXPECT_THROW(session.Download(sections), Error);
}

TEST_F(SessionTest, AHandlerOfMessagesThatThrowsBreaksNothingOff) {
    struct : test::FakeDriver {
        void QXSIM_SetMessagePoster(MessagePoster poster) override { post = poster; }
        std::int32_t QXCFG_TransferNotification(std::int32_t hWindow, std::int32_t lMsg,
                                                std::int32_t lWhat) override {
            tell = [=, this] { post(hWindow, lMsg, lWhat, 50); };
            return 0;
        }
        std::int32_t QXCFG_ImageLoad() override {
            tell(); // C code, through which no exception may pass
            return FakeDriver::QXCFG_ImageLoad();
        }
        MessagePoster post = nullptr;
        std::function<void()> tell;
    } posting;
    posting.directory = {{MODULE_MAGNET_CONFIG, 0x1000}};
    int told = 0;
    Session::Options options;
    options.progress = [&](int) { throw ++told; };
    Session session(posting, {}, options);
    session.Open();
    auto sections = session.SectionsIn(configuration);
    EXPECT_NO_THROW(session.Upload(sections));
    EXPECT_GT(told, 0);
}

// A driver need not return a meaningful status where the system does not look at it.
TEST_F(SessionTest, StatusesWithoutMeaningFailNothing) {
    struct Rambling : ForwardingDriver {
        using ForwardingDriver::ForwardingDriver;
        std::vector<std::string> calls;
        std::int32_t Noted(std::string_view function, DriverResult kind,
                           std::int32_t result) override {
            calls.emplace_back(function);
            return kind == DriverResult::Ignored ? 99 : result;
        }
    } rambling(driver);
    driver.directory = {{MODULE_LAYERED_FUNCKEYS, 0x4000}, {MODULE_GUID, 0x3000}};
    Session session(rambling);
    session.Open();
    EXPECT_TRUE(session.Warnings().empty());
    auto sections = session.SectionsIn(configuration);
    session.Upload(sections);
    session.Download(sections);
    session.Run("select", [&] {
        session.Access().SelectFunctionKeyLayer(3);
        session.Access().SetChipcardRomParameters(1, 2);
    });
    session.LookAgain();
    session.Close();
    const Names ignored = {
        "QXCFG_SetCommandDelta",      "QXCFG_TransferNotification", "QXCFG_MemRequestClean",
        "QXCFG_MemRequestAdd",        "QXCFG_ImageWriteByte",       "QXCFG_ImageWriteInt",
        "QXCFG_ImageWriteLong",       "QXCFG_ChipcardIOParam",      "QXCFG_SelectLayer",
        "QXCFG_EnableLayerSelection", "QXCFG_DisableLayerSelection"};
    for (const std::string& name : ignored)
        EXPECT_TRUE(std::count(rambling.calls.begin(), rambling.calls.end(), name)) << name;
    for (auto call = rambling.calls.begin(); call != rambling.calls.end(); ++call)
        if (*call == "QXCFG_Init") {
            EXPECT_EQ(*std::prev(call), "QXCFG_SetCommandDelta");
        }
    EXPECT_EQ(std::count(rambling.calls.begin(), rambling.calls.end(), "QXCFG_Init"), 2);
}

// A transfer that moves nothing, or not all, and reports success.
TEST_F(SessionTest, AReadingThatMovesTooLittleIsRefused) {
    struct Lazy : test::FakeDriver {
        std::int32_t moved = 0; // bytes of each request
        int loads = 0;
        std::string imageBefore; // the first reading
        std::int32_t QXCFG_ImageLoad() override {
            if (loads++ == 0)
                imageBefore = image;
            const auto asked = requests;
            for (Request& request : requests)
                request.size = std::min(request.size, moved);
            FakeDriver::QXCFG_ImageLoad();
            requests = asked;
            return 0;
        }
    } lazy;
    lazy.directory = {{MODULE_MAGNET_CONFIG, 0x1000}, {MODULE_MAGNET_HEADERS, 0x1100}};
    Session session(lazy);
    session.Open();
    const test::TempFolder folder;
    const auto codePage = folder / "page.cp";
    std::ofstream(codePage) << std::string(256, 'x');
    for (const std::int32_t moved : {0, 1, 2, 255}) {
        lazy.moved = moved;
        auto sections = session.SectionsIn(configuration);
        for (const std::function<void()>& read :
             {std::function<void()>([&] { session.Upload(sections); }),
              std::function<void()>([&] { (void)session.ReadContent(configuration); }),
              std::function<void()>([&] { (void)HasCodePage(session, codePage); })})
            try {
                read();
                ADD_FAILURE() << "believed with " << moved << " bytes moved";
            } catch (const Error& error) {
                EXPECT_EQ(error.Kind(), ErrorKind::TransferFailed);
                EXPECT_NE(std::string(error.what()).find("moved nothing to address"),
                          std::string::npos)
                    << error.what();
            }
        EXPECT_TRUE(lazy.requests.empty());
    }
    // A keyboard that happens to hold what stands in the image before.
    lazy.moved = 1000;
    lazy.loads = 0;
    auto sections = session.SectionsIn(configuration);
    session.Upload(sections);
    EXPECT_EQ(lazy.loads, 1) << "one reading does for other bytes";
    lazy.memory = lazy.imageBefore;
    lazy.loads = 0;
    session.Upload(sections);
    EXPECT_EQ(lazy.loads, 2);
    for (const ContentPiece& piece : session.ReadContent(configuration).pieces)
        EXPECT_EQ(piece.bytes,
                  lazy.memory.substr(static_cast<std::size_t>(piece.address), piece.bytes.size()));
}

TEST_F(SessionTest, ADirectoryThatIsNotAsLargeAsItSaysStopsOnlyWhatItMayHide) {
    struct LyingDriver : test::FakeDriver {
        std::int32_t size = 0;
        std::int32_t QXCFG_ConfigDirectorySize() override { return size; }
        std::int32_t QXCFG_ConfigDirectoryGetEntry(std::int16_t nIndex, std::int32_t* module,
                                                   std::int32_t* address) override {
            *module = MODULE_POS; // scribbled
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
            EXPECT_NE(std::string(error.what()).find("no configuration directory"),
                      std::string::npos)
                << error.what();
        }
    }
    const auto magnetOnly = configuration.Write({configuration.Find("magnetCard")});
    const auto withPos =
        configuration.Write({configuration.Find("magnetCard"), configuration.Find("pos")});
    for (const auto& [size, unreadable] : {std::pair(3, "1,"), std::pair(0x7FFF, "32765,")}) {
        lying.size = size;
        Session session(lying);
        session.Open();
        ASSERT_EQ(session.Warnings().size(), 1U);
        EXPECT_NE(session.Warnings()[0].find(
                      std::string(unreadable) +
                      " the first of them entry 2: QXCFG_ConfigDirectoryGetEntry gave "
                      "status 7"),
                  std::string::npos)
            << session.Warnings()[0];
        EXPECT_EQ(session.Present(configuration).size(), 2U);
        auto sections = session.SectionsIn(configuration, false, &magnetOnly);
        session.Upload(sections);
        for (const auto* document : {&withPos, static_cast<const ConfigurationDocument*>(nullptr)})
            try {
                (void)session.SectionsIn(configuration, false, document);
                ADD_FAILURE() << "a section that may be hidden counts as absent";
            } catch (const Error& error) {
                EXPECT_EQ(error.Kind(), ErrorKind::TransferFailed);
                EXPECT_NE(std::string(error.what()).find("entry 2: QXCFG"), std::string::npos);
            }
    }
    lying.size = 2; // nothing hidden
    Session session(lying);
    session.Open();
    EXPECT_EQ(session.SectionsIn(configuration).size(), 2U);
}

// The most entries that there can be, all readable.
TEST_F(SessionTest, TheLargestDirectoryIsReadToItsEnd) {
    driver.notesCalls = false;
    driver.directory.assign(0x7FFF, {77, 0x7000});
    driver.directory.back() = {MODULE_POS, 0x2000};
    Session session(driver);
    session.Open();
    EXPECT_EQ(session.SectionsIn(configuration).size(), 1U);
    EXPECT_EQ(session.ReadIdentity().directory.size(), 0x7FFFU);
}

// The controls would reckon past the end of what numbers can hold.
TEST_F(SessionTest, AnAddressThatNoMemoryHasIsNotUsed) {
    constexpr std::int32_t kLowest = std::numeric_limits<std::int32_t>::min();
    constexpr std::int32_t kHighest = std::numeric_limits<std::int32_t>::max();
    const auto pos = configuration.Write({configuration.Find("pos")});
    for (const std::int32_t address : {kLowest, -2, 1 << 30, kHighest}) {
        driver.directory = {{MODULE_POS, 0x4000}, {MODULE_BARCODE_CONFIG, address}};
        Session session(driver);
        session.Open();
        ASSERT_EQ(session.Warnings().size(), 1U);
        EXPECT_NE(session.Warnings()[0].find("MODULE_BARCODE_CONFIG at " + std::to_string(address)),
                  std::string::npos)
            << session.Warnings()[0];
        EXPECT_THROW((void)session.SectionsIn(configuration), Error);
        EXPECT_EQ(session.SectionsIn(configuration, false, &pos).size(), 1U);
        (void)session.ReadContent(configuration);
    }
    driver.directory.pop_back();
    driver.directory.push_back({MODULE_BARCODE_CONFIG, -1}); // as good as none
    driver.directory.push_back({77, kLowest});               // of no use to anybody
    Session session(driver);
    session.Open();
    EXPECT_EQ(session.SectionsIn(configuration).size(), 1U);
}

// Names and abilities are for people: a transfer does without them.
TEST_F(SessionTest, AnUnreadableNameIsAWarning) {
    driver.directory = {{MODULE_POS, 0x2000}};
    for (const auto& [end, missing] :
         {std::pair(std::size_t{0x7FD0}, "names"), std::pair(std::size_t{0x7FF}, "abilities")}) {
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
        EXPECT_NE(session.Warnings()[0].find(missing), std::string::npos) << session.Warnings()[0];
        EXPECT_NE(session.Warnings()[0].find("status 12"), std::string::npos);
        auto sections = session.SectionsIn(configuration);
        session.Upload(sections);
        session.LookAgain();
        const KeyboardIdentity identity = session.ReadIdentity();
        EXPECT_TRUE(identity.identification.empty());
        EXPECT_EQ(identity.capabilities, 0);
        KeyboardIdentity other = identity;
        other.identification = "OTHER";
        EXPECT_TRUE(identity.IsLike(other)) << "it may be";
    }
}

// What the control cannot decode is never taken for settings.
TEST_F(SessionTest, DamageIsNamedAndLeftOut) {
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
        EXPECT_EQ(damaged[0].place, "/pos");
        EXPECT_NE(damaged[0].message.find("address 2080 (hexadecimal): POS key 5 is in group " +
                                          std::to_string(group)),
                  std::string::npos)
            << damaged[0].message;
        EXPECT_TRUE(
            configuration.Write({configuration.Find("pos")}).Find("pos")->at("blocks").empty());
    }
    struct Case {
        std::vector<char16_t> units; // of layer 0 key 1
        std::string address;         // of the damage; empty: none
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
            EXPECT_NE(damaged[0].message.find("address " + each.address + " "), std::string::npos)
                << damaged[0].message;
        }
    }
    driver.memory.replace(kDescription, 128, 128, 'x');
    driver.memory[kDescription + 126] = 0x00; // the last unit is the first half of a pair
    driver.memory[kDescription + 127] = static_cast<char>(0xD8);
    EXPECT_EQ(upload().size(), 1U);
}

// Without MODULE_GUID the control works with the address -1; nothing of that reaches the driver.
TEST_F(SessionTest, AKeyboardWithLayersButNoIdentifier) {
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

// The control's requests leave out keys without a sequence, and all descriptions.
TEST_F(SessionTest, WhatTheRequestsLeaveOutIsSentToo) {
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

// A document without an identifier leaves the keyboard's own, and a comparison does not speak of
// it.
TEST_F(SessionTest, AnIdentifierThatTheDocumentLacksStays) {
    driver.directory = {{MODULE_LAYERED_FUNCKEYS, 0x4000}, {MODULE_GUID, 0x3000}};
    driver.memory.assign(test::FakeDriver::kSize, '\x21');
    Session session(driver);
    session.Open();
    auto sections = session.SectionsIn(configuration);
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
