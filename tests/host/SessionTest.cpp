// Sessions: the order of a transfer's calls, the bytes it touches, and failing drivers and hosts.
#include "SessionFixture.h"

#include "host/KeyboardFiles.h"
#include "qxcontrols/device/MemoryMap.h"
#include "qxcontrols/readers/QXBarcode.h"
#include "support/TempFolder.h"

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <tuple>
#include <utility>

namespace qx::host {

namespace {

using Names = std::vector<std::string>;

class SessionTest : public SessionFixture {
protected:
    // The names of the driver's calls since the last time; repeated ones appear once.
    Names Calls() {
        auto calls = std::exchange(driver.calls, {});
        calls.erase(std::unique(calls.begin(), calls.end()), calls.end());
        return calls;
    }
};

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

// The output delay is at the module's base address and the magnetic reader's switches at 5 to 7;
// the bytes in between are not read or written.
TEST_F(SessionTest, BytesBetweenSettingsAreNotTouched) {
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
    own.Add(kIdentificationAddress, kIdentificationSize);
    own.Add(kCapabilityAddress, 1);
    EXPECT_TRUE(touched.bytes.Without(own).empty());
    touched.statuses["QXCFG_ImageWrite"] = 5;
    EXPECT_THROW(session.PrepareSending({{MODULE_KEYBOARD, "", 0x1000, "\x06", "\x07"}}), Error);
    EXPECT_TRUE(touched.requests.empty()) << "the transfer has ended";
}

TEST_F(SessionTest, EveryEndReturnsTheKeyboard) {
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
    Session session(driver); // these statuses have no meaning
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

// The first failure caused the others.
TEST_F(SessionTest, TheFirstOfSeveralFailedCallsIsReported) {
    struct : test::FakeDriver {
        std::int32_t QXCFG_ImageWrite(std::int32_t, const char*, std::int32_t) override {
            return ++status;
        }
        std::int32_t status = 30;
    } failing;
    failing.directory = {
        {MODULE_MAGNET_CONFIG, 0x1000}, {MODULE_MAGNET_HEADERS, 0x1100}, {MODULE_POS, 0x2000}};
    Session session(failing);
    session.Open();
    auto sections = session.SectionsIn(configuration);
    try {
        session.Download(sections);
        ADD_FAILURE() << "downloaded";
    } catch (const Error& error) {
        EXPECT_EQ(error.Status(), 31);
        EXPECT_GT(failing.status, 31);
    }
}

TEST_F(SessionTest, AHandlerOfMessagesThatThrowsBreaksNothingOff) {
    struct : test::FakeDriver {
        void QXSIM_SetMessagePoster(MessagePoster poster) override { post = poster; }
        std::int32_t QXCFG_TransferNotification(std::int32_t hWindow, std::int32_t lMsg,
                                                std::int32_t lWhat) override {
            tell = [=, this] { post(hWindow, lMsg, lWhat, 150); };
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
    options.progress = [&](int percent) {
        EXPECT_EQ(percent, 100);
        throw ++told;
    };
    Session session(posting, {}, options);
    session.Open();
    auto sections = session.SectionsIn(configuration);
    EXPECT_NO_THROW(session.Upload(sections));
    EXPECT_GT(told, 0);
}

// Where the status is not checked, a driver need not return a meaningful one.
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
    driver.memory.replace(0x3000, 16, "0123456789ABCDEF");
    Session session(rambling);
    session.Open();
    EXPECT_TRUE(session.Warnings().empty());
    auto sections = session.SectionsIn(configuration);
    session.Upload(sections);
    session.Download(sections);
    session.Run(Error(Cause::LayerNotSelected), [&] {
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

// A transfer that moves nothing or too little but reports success.
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
                ADD_FAILURE() << "accepted with " << moved << " bytes moved";
            } catch (const Error& error) {
                EXPECT_EQ(error.Why(), Cause::NothingMoved) << TextOf(error);
            }
        EXPECT_TRUE(lazy.requests.empty());
    }
    // A keyboard that happens to contain the bytes that were in the image before.
    lazy.moved = 1000;
    lazy.loads = 0;
    auto sections = session.SectionsIn(configuration);
    session.Upload(sections);
    EXPECT_EQ(lazy.loads, 1) << "one read is enough for different bytes";
    lazy.memory = lazy.imageBefore;
    lazy.loads = 0;
    session.Upload(sections);
    EXPECT_EQ(lazy.loads, 2);
    for (const ContentPiece& piece : session.ReadContent(configuration).pieces)
        EXPECT_EQ(piece.bytes,
                  lazy.memory.substr(static_cast<std::size_t>(piece.address), piece.bytes.size()));
}

} // namespace qx::host
