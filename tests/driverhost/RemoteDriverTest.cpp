// A driver in a separate process: every call is transmitted completely, and its misbehaviour does
// no harm here.
#include "driverhost/RemoteDriver.h"
#include "driverhost/Advance.h"

#include "files/Files.h"
#include "files/Installation.h"
#include "files/SystemTexts.h"
#include "support/Problems.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

namespace qx::test {

using driverhost::RemoteDriver;
using namespace std::chrono_literals;

namespace {

std::string FailureOf(const RemoteDriver& driver) {
    return driver.Failure() ? WordsOf(*driver.Failure()) : "";
}

class Remote : public testing::Test {
protected:
    // A driver in its own process that behaves like this: "FUNCTION ACTION".
    std::unique_ptr<RemoteDriver> Start(const std::string& behaviour,
                                        std::chrono::milliseconds limit = 60s) {
        files::WriteFileAtomically(file + ".wild", behaviour);
        auto driver =
            std::make_unique<RemoteDriver>(QX_WILD_DRIVER, driverhost::Isolation{{}, limit});
        EXPECT_EQ(driver->SetKeyboard(file, "full"), 0) << FailureOf(*driver);
        return driver;
    }

    TempFolder folder{TempFolder::InMemory()};
    std::string file = (folder / "keyboard.qxk").string();
};

#ifdef _WIN32
constexpr auto kImpatience = 1200ms; // wine needs longer to start a process
constexpr const char* kCrashed = "QXCFG_ImageRead: the driver crashed (access violation)";
constexpr const char* kAborted = "QXCFG_ImageRead: the driver ended its process with status 3";
#else
constexpr auto kImpatience = 120ms;
constexpr const char* kCrashed = "QXCFG_ImageRead: the driver crashed (signal 6, Aborted)";
constexpr const char* kAborted = kCrashed;
#endif

std::vector<std::string> posted;
void QX_DRIVER_CALL Post(std::int32_t hWindow, std::int32_t lMsg, std::int32_t wParam,
                         std::int32_t lParam) {
    posted.push_back(std::to_string(hWindow) + " " + std::to_string(lMsg) + " " +
                     std::to_string(wParam) + " " + std::to_string(lParam));
}
void QX_DRIVER_CALL PostAndThrow(std::int32_t, std::int32_t, std::int32_t, std::int32_t) {
    throw std::logic_error("thrown by a handler");
}

} // namespace

// All arguments and results have distinct values, so that any mix-up is noticed.
TEST_F(Remote, EveryCallArrivesAsItWasMade) {
    const auto driver = Start("* echo");
    std::uint8_t byte = 1;
    std::int16_t integer = 2;
    std::int32_t longer = -70'003;
    std::int32_t other = 4;
    char block[] = {'a', '\0', 'c'};
    char name[] = "rom.bin";
    char source[] = "source";
    char target[] = "target";
    EXPECT_EQ(driver->QXCFG_SetCommandDelta(-5), -21);
    EXPECT_EQ(driver->QXCFG_Init(), -10);
    driver->QXCFG_ConfigDirectorySize();
    driver->QXCFG_ConfigDirectoryGetEntry(-6, &longer, &other);
    driver->QXCFG_ImageRead(70'007, block, 3);
    driver->QXCFG_ImageWrite(-8, "xyz", 2);
    driver->QXCFG_ImageReadByte(9, &byte);
    driver->QXCFG_ImageWriteByte(10, 211);
    driver->QXCFG_ImageReadInt(11, &integer);
    driver->QXCFG_ImageWriteInt(12, -212);
    driver->QXCFG_ImageReadLong(13, &other);
    driver->QXCFG_ImageWriteLong(14, INT32_MIN);
    driver->QXCFG_MemRequestClean();
    driver->QXCFG_MemRequestAdd(255, 15, 16);
    driver->QXCFG_ImageLoad();
    driver->QXCFG_ImageSave();
    driver->QXCFG_TransferNotification(17, 18, -1);
    driver->QXCFG_KeyboardRomSave(name);
    driver->QXCFG_KeyboardParamLoad(name);
    driver->QXCFG_ChipcardIOParam(19, -20);
    EXPECT_EQ(driver->QXCFG_ConvertBinFileIntoRomFile(source, target, 21, 22, 23), -31);
    driver->QXCFG_SelectLayer(24);
    driver->QXCFG_IsPositionMode();
    EXPECT_EQ(driver->QXCFG_GetPositionKey(), -20);
    EXPECT_EQ(files::ReadFile(file + ".log"), "QXCFG_SetCommandDelta -5\n"
                                              "QXCFG_Init\n"
                                              "QXCFG_ConfigDirectorySize\n"
                                              "QXCFG_ConfigDirectoryGetEntry -6 out out\n"
                                              "QXCFG_ImageRead 70007 a" +
                                                  std::string(1, '\0') +
                                                  "c 3\n"
                                                  "QXCFG_ImageWrite -8 xy 2\n"
                                                  "QXCFG_ImageReadByte 9 out\n"
                                                  "QXCFG_ImageWriteByte 10 211\n"
                                                  "QXCFG_ImageReadInt 11 out\n"
                                                  "QXCFG_ImageWriteInt 12 -212\n"
                                                  "QXCFG_ImageReadLong 13 out\n"
                                                  "QXCFG_ImageWriteLong 14 -2147483648\n"
                                                  "QXCFG_MemRequestClean\n"
                                                  "QXCFG_MemRequestAdd 255 15 16\n"
                                                  "QXCFG_ImageLoad\n"
                                                  "QXCFG_ImageSave\n"
                                                  "QXCFG_TransferNotification 17 18 -1\n"
                                                  "QXCFG_KeyboardRomSave rom.bin\n"
                                                  "QXCFG_KeyboardParamLoad !om.bin\n"
                                                  "QXCFG_ChipcardIOParam 19 -20\n"
                                                  "QXCFG_ConvertBinFileIntoRomFile source target "
                                                  "21 22 23\n"
                                                  "QXCFG_SelectLayer 24\n"
                                                  "QXCFG_IsPositionMode\n"
                                                  "QXCFG_GetPositionKey\n");
    EXPECT_EQ(longer, -140'005);
    EXPECT_EQ(other, (4 * 2 + 1) * 2 + 1);
    EXPECT_EQ(std::string(block, 3), std::string("a\0!", 3));
    EXPECT_EQ(byte, 201);
    EXPECT_EQ(integer, -20'002);
    EXPECT_EQ(std::string(source) + target, "!ource!arget");
    EXPECT_EQ(driver->StatusText(-77), "wild status -77");
}

TEST_F(Remote, ATransferReportsItsProgressWhileItRuns) {
    const auto driver = Start("");
    ASSERT_EQ(driver->QXCFG_Init(), 0);
    driver->QXSIM_SetMessagePoster(&Post);
    driver->QXCFG_TransferNotification(41, 42, 43);
    driver->QXCFG_MemRequestAdd(2, 4096, 50);
    posted.clear();
    EXPECT_EQ(driver->QXCFG_ImageLoad(), 0);
    ASSERT_FALSE(posted.empty());
    EXPECT_EQ(posted.back(), "41 42 43 100");
    // A handler's exception leaves the call after the call has been completed.
    driver->QXSIM_SetMessagePoster(&PostAndThrow);
    EXPECT_THROW(driver->QXCFG_ImageLoad(), std::logic_error);
    driver->QXSIM_SetMessagePoster(nullptr);
    posted.clear();
    EXPECT_EQ(driver->QXCFG_ImageLoad(), 0);
    EXPECT_TRUE(posted.empty());
    EXPECT_EQ(FailureOf(*driver), "");
}

#ifdef _WIN32
TEST_F(Remote, MessagesPostedToAWindowArrive) {
    RemoteDriver driver(QX_POSTING_DRIVER, {});
    driver.QXSIM_SetMessagePoster(&Post);
    for (const int round : {1, 2}) {
        driver.QXCFG_TransferNotification(40 + round, 0x8000, round);
        posted.clear();
        EXPECT_EQ(driver.QXCFG_ImageLoad(), 0);
        const std::string prefix = std::to_string(40 + round) + " 32768 " + std::to_string(round);
        EXPECT_EQ(posted,
                  (std::vector<std::string>{prefix + " 0", prefix + " 50", prefix + " 100"}));
    }
    driver.QXCFG_TransferNotification(0, 0, 0);
    posted.clear();
    EXPECT_EQ(driver.QXCFG_ImageLoad(), 17);
    EXPECT_TRUE(posted.empty());
    EXPECT_EQ(FailureOf(driver), "");
}
#endif

// Whatever the driver does, the caller gets a status at once, and a one-sentence explanation.
TEST_F(Remote, ADriverThatMisbehavesIsGone) {
    struct Row {
        const char* behaviour;
        std::string failure;
    };
    const std::string late = "QXCFG_ImageRead: the driver did not answer within " +
                             std::to_string(kImpatience.count()) + " ms";
    const Row rows[] = {
        {"QXCFG_ImageRead crash", kCrashed},
        {"QXCFG_ImageRead exit", "QXCFG_ImageRead: the driver ended its process with status 0"},
        {"QXCFG_ImageRead throw", kAborted},
        {"QXCFG_ImageRead hang", late},
        {"QXCFG_ImageRead flood", late},
        {"QXCFG_ImageRead count", late},
        {"QXCFG_ImageRead rounds", late},
        {"QXCFG_ImageRead forge", "QXCFG_ImageRead: the driver gave an invalid answer"},
        {"QXCFG_ImageRead overrun 8",
         "QXCFG_ImageRead: the driver wrote beyond the end of a buffer"},
    };
    for (const Row& row : rows) {
        const auto driver = Start(
            row.behaviour, row.failure == late ? kImpatience : std::chrono::milliseconds(60s));
        driver->QXSIM_SetMessagePoster(&Post);
        ASSERT_EQ(driver->QXCFG_Init(), 0) << row.behaviour << FailureOf(*driver);
        char buffer[] = "abcdefgh";
        EXPECT_EQ(driver->QXCFG_ImageRead(0, buffer, 8), RemoteDriver::kGone);
        EXPECT_EQ(FailureOf(*driver), row.failure);
        EXPECT_STREQ(buffer, "abcdefgh");
        // It stays gone, with the same explanation.
        EXPECT_EQ(driver->QXCFG_Init(), RemoteDriver::kGone);
        EXPECT_EQ(static_cast<std::int16_t>(driver->QXCFG_ConfigDirectorySize()), 0);
        EXPECT_EQ(driver->StatusText(1), "");
        EXPECT_EQ(FailureOf(*driver), row.failure);
        // Its keyboard can be opened again.
        EXPECT_EQ(Start("")->QXCFG_Init(), 0) << row.behaviour;
    }
}

// A user who cancels does not wait for a read or a start-up that never ends; a call that writes to
// the keyboard keeps its whole time limit.
TEST_F(Remote, OnlyACallThatDoesNotWriteIsGivenUpForTheUser) {
    for (const char* function : {"QXCFG_ImageLoad", "QXCFG_ImageSave"}) {
        const bool isRead = std::string_view(function) == "QXCFG_ImageLoad";
        files::WriteFileAtomically(file + ".wild", std::string(function) + " hang");
        RemoteDriver driver(QX_WILD_DRIVER, {{}, isRead ? std::chrono::milliseconds(600s) : 5s, [] {
                                                 return true;
                                             }});
        ASSERT_EQ(driver.SetKeyboard(file, "full"), 0);
        ASSERT_EQ(driver.QXCFG_Init(), 0);
        EXPECT_EQ(isRead ? driver.QXCFG_ImageLoad() : driver.QXCFG_ImageSave(),
                  RemoteDriver::kGone);
        ASSERT_TRUE(driver.Failure());
        EXPECT_EQ(driver.Failure()->obstacle,
                  isRead ? files::Obstacle::EndedByUser : files::Obstacle::NoAnswer);
        EXPECT_EQ(driver.Failure()->subject, function);
    }
}

// The driver waits for a file, which is made after a few rounds here.
TEST_F(Remote, AWindowCanBePaintedWhileACallLasts) {
    const std::string awaited = file + ".awaited";
    files::WriteFileAtomically(file + ".wild", "QXCFG_ImageLoad meet " + awaited);
    int rounds = 0;
    std::int32_t nested = 0;
    RemoteDriver* self = nullptr;
    RemoteDriver driver(QX_WILD_DRIVER, {.onWait = [&] {
                            if (!std::filesystem::exists(file + ".here") || ++rounds < 3)
                                return;
                            nested = self->QXCFG_ImageLoad();
                            files::WriteFileAtomically(awaited, "");
                        }});
    self = &driver;
    ASSERT_EQ(driver.SetKeyboard(file, "full"), 0);
    ASSERT_EQ(driver.QXCFG_Init(), 0);
    EXPECT_EQ(driver.QXCFG_ImageLoad(), 0) << FailureOf(driver);
    EXPECT_GE(rounds, 3);
    EXPECT_EQ(nested, RemoteDriver::kGone) << "one call at a time";
    EXPECT_FALSE(driver.Failure());
}

TEST_F(Remote, AWindowCanBePaintedBetweenManyShortCalls) {
    int rounds = 0;
    RemoteDriver driver(QX_WILD_DRIVER, {.onWait = [&] { ++rounds; }});
    const auto end = std::chrono::steady_clock::now() + 60s;
    while (rounds < 3 && std::chrono::steady_clock::now() < end)
        (void)driver.QXCFG_ConfigDirectorySize();
    EXPECT_EQ(rounds, 3);
}

// A transfer that counts to 100 once per stretch has no less time than one that counts once, and no
// transfer has its time extended forever.
TEST(Advance, EndsWhateverIsPosted) {
    const auto advances = [](int stretches, std::initializer_list<std::int32_t> posts) {
        driverhost::Advance advance(stretches);
        std::string made;
        for (const std::int32_t percent : posts)
            made += advance.IsMadeBy(percent) ? '+' : '-';
        return made;
    };
    EXPECT_EQ(advances(0, {0, 1, 1, 50, 49, 100, 100, 101, 102, -1, 0}), "-+-+-+-----");
    EXPECT_EQ(advances(2, {40, 100, 0, 40, 100, 0, 100, 0, 40, 100, -1}), "+++++++----");
}

TEST_F(Remote, ADriversPrintedOutputIsDiscarded) {
    testing::internal::CaptureStdout();
    const std::int32_t status = Start("QXCFG_Init print")->QXCFG_Init();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(status, 0);
}

TEST_F(Remote, AProcessThatCannotServeIsNamed) {
    using files::Deed;
    using files::Obstacle;
    const auto refusal = [](const std::filesystem::path& library,
                            const std::filesystem::path& program) {
        return RefusalOf([&] { RemoteDriver(library, {program, 60s}); });
    };
    const auto library = refusal(folder / "none.so", {}); // each system says it in its own way
    EXPECT_EQ(library.deed, Deed::Load);
    EXPECT_EQ(library.subject, files::TextOf(folder / "none.so"));
    const auto program = refusal(QX_WILD_DRIVER, folder / "no-host");
    EXPECT_EQ(program.deed, Deed::Start);
    EXPECT_EQ(program.subject, files::TextOf(folder / "no-host"));
#ifdef _WIN32
    EXPECT_EQ(refusal("any.dll", "C:/windows/system32/hostname.exe"), // ignores its arguments
              Cannot(Deed::Load, "any.dll", Obstacle::Exited, {}, 1));
    // Starts the helper for the library's own word size, if there is one.
    const auto text = folder / "text.dll";
    files::WriteFileAtomically(text, "no library");
    EXPECT_EQ(refusal(text, {}), Cannot(Deed::Load, text, Obstacle::NoDriverLibrary));
    std::string header(0x80, '\0');
    header.replace(0, 2, "MZ").replace(0x3C, 1, "\x40").replace(0x40, 2, "PE");
    header.replace(0x44, 2, "\x4C\x01");
    files::WriteFileAtomically(text, header);
    const auto helper = files::HelperProgram("qxdriverhost32");
    if (!std::filesystem::exists(helper)) {
        EXPECT_EQ(refusal(text, {}),
                  Cannot(Deed::Load, text, Obstacle::HelperMissing, {files::TextOf(helper)}, 32));
    }
#else
    EXPECT_EQ(refusal("any.so", "/bin/true"), Cannot(Deed::Load, "any.so", Obstacle::Exited));
#endif
}

} // namespace qx::test
