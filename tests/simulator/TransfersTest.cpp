// Transfers of a simulated keyboard: progress, and injected faults.

#include "Simulated.h"

#include <algorithm>
#include <functional>
#include <map>
#include <utility>
#include <vector>

namespace qx::test {

namespace {

using sim::Status;

class SimulatedTransfers : public SimulatedKeyboard {};

INSTANTIATE_TEST_SUITE_P(Drivers, SimulatedTransfers, kKinds, NameOfKind);

struct Message {
    Long window, message, what, percent;
    bool operator==(const Message&) const = default;
};
std::vector<Message> theMessages;
ConfigDriver* theDriverToCall = nullptr; // called from inside a message
Long theNestedStatus = 0;

void QX_DRIVER_CALL Post(Long hWindow, Long lMsg, Long wParam, Long lParam) {
    theMessages.push_back({hWindow, lMsg, wParam, lParam});
    if (theDriverToCall != nullptr)
        theNestedStatus = theDriverToCall->QXCFG_MemRequestClean();
}

} // namespace

TEST_P(SimulatedTransfers, StopsATransferWhereRequested) {
    ConfigDriver& driver = keyboard.Open();
    const std::string old(600, '\0');
    const std::string fresh(600, 'n');
    for (const Long end : {0, 1, 255, 256, 299, 300, 301, 556, 599}) {
        SCOPED_TRACE(end);
        const auto moved = static_cast<std::size_t>(end);
        const auto request = [&] { // the later part first
            driver.QXCFG_MemRequestClean();
            driver.QXCFG_MemRequestAdd(5, kPlace + 300, 300);
            driver.QXCFG_MemRequestAdd(5, kPlace, 300);
        };
        const auto expected = [&](const std::string& from, const std::string& to) {
            std::string mixed = from.substr(0, moved) + to.substr(moved);
            return mixed.substr(300) + mixed.substr(0, 300);
        };
        keyboard.PutImage(kPlace, fresh);
        request();
        keyboard.StopTransferAfter(end);
        EXPECT_EQ(driver.QXCFG_ImageSave(), Number(Status::TransferStopped));
        EXPECT_EQ(keyboard.Memory(kPlace, 600), expected(fresh, old));

        keyboard.PutImage(kPlace, old);
        request();
        EXPECT_EQ(driver.QXCFG_ImageSave(), 0) << "the next transfer must not be stopped";
        keyboard.PutImage(kPlace, fresh);
        keyboard.StopTransferAfter(end);
        EXPECT_EQ(driver.QXCFG_ImageLoad(), Number(Status::TransferStopped));
        EXPECT_EQ(keyboard.Image(kPlace, 600), expected(old, fresh));
    }
    keyboard.StopTransferAfter(1);
    keyboard.StopTransferAfter(-1);
    EXPECT_EQ(driver.QXCFG_ImageLoad(), 0);
}

TEST(SimulatedDriverInProcess, AnswersAgainAfterAHandlerThatThrew) {
    const TempFolder folder;
    sim::SimulatedDriver driver(folder / "keyboard.qxk", "magnet");
    ASSERT_EQ(driver.QXCFG_Init(), 0);
    driver.QXCFG_MemRequestAdd(5, kPlace, 1024);
    driver.QXCFG_TransferNotification(17, 1025, -1);
    driver.QXSIM_SetMessagePoster([](std::int32_t, std::int32_t, std::int32_t, std::int32_t) {
        throw 42; // NOLINT: anything
    });
    EXPECT_EQ(driver.QXCFG_ImageLoad(), Number(Status::FileFailed));
    driver.QXSIM_SetMessagePoster(nullptr);
    EXPECT_EQ(driver.QXCFG_ImageLoad(), 0);
}

TEST_P(SimulatedTransfers, PostsItsProgress) {
    ConfigDriver& driver = keyboard.Open();
    theMessages.clear();
    driver.QXSIM_SetMessagePoster(&Post);
    driver.QXCFG_MemRequestAdd(5, kPlace, 1024);
    driver.QXCFG_ImageLoad();
    EXPECT_TRUE(theMessages.empty()) << "none were requested";

    driver.QXCFG_TransferNotification(17, 1025, -1);
    theDriverToCall = &driver;
    EXPECT_EQ(driver.QXCFG_ImageSave(), 0);
    theDriverToCall = nullptr;
    EXPECT_EQ(theNestedStatus, Number(Status::Busy));
    const std::vector<Message> expected{{17, 1025, -1, 0},
                                        {17, 1025, -1, 25},
                                        {17, 1025, -1, 50},
                                        {17, 1025, -1, 75},
                                        {17, 1025, -1, 100}};
    EXPECT_EQ(theMessages, expected);

    theMessages.clear();
    keyboard.StopTransferAfter(600);
    driver.QXCFG_ImageLoad();
    EXPECT_EQ(theMessages.back(), (Message{17, 1025, -1, 58}));
    driver.QXSIM_SetMessagePoster(nullptr);
    EXPECT_EQ(driver.QXCFG_ImageLoad(), 0);
}

TEST_P(SimulatedTransfers, FailsTheRequestedCall) {
    ConfigDriver& driver = keyboard.Open();
    std::string buffer(3, '\0');
    const std::vector<std::function<Long()>> calls{
        [&] { return driver.QXCFG_ImageWrite(kPlace, "new", 3); },
        [&] { return driver.QXCFG_MemRequestAdd(5, kPlace, 3); },
        [&] { return driver.QXCFG_ImageSave(); },
        [&] { return driver.QXCFG_ImageWrite(kPlace, "xxx", 3); },
        [&] { return driver.QXCFG_ImageLoad(); },
        [&] { return driver.QXCFG_ImageRead(kPlace, buffer.data(), 3); },
    };
    const std::string old(3, '\0');
    // The bytes read by the last call if the n-th one fails; index 0: no call fails.
    const std::vector<std::string> readings{"new", old, "xxx", old, "new", "xxx", old};
    for (const bool forEver : {false, true})
        for (std::size_t n = 0; n <= calls.size(); ++n) {
            SCOPED_TRACE(n);
            keyboard.PutImage(kPlace, old);
            driver.QXCFG_MemRequestAdd(5, kPlace, 3);
            driver.QXCFG_ImageSave();
            driver.QXCFG_MemRequestClean();
            buffer = old;
            keyboard.FailCall(static_cast<int>(n), 77, forEver);
            for (std::size_t i = 0; i < calls.size(); ++i) {
                const bool fails = n != 0 && (i + 1 == n || (forEver && i + 1 > n));
                EXPECT_EQ(calls[i](), fails ? 77 : 0) << i;
            }
            EXPECT_EQ(buffer, forEver && n != 0 ? old : readings[n]);
            keyboard.FailCall(0, 0, false);
            driver.QXCFG_MemRequestClean();
        }
}

// Compares the result of a transfer with the bytes `sent` and the previous bytes `before`: "whole",
// "none", "part" or "bit"; "?" for anything else. The bytes are in transfer order.
std::string Judge(const std::string& sent, const std::string& before, const std::string& arrived) {
    if (arrived == sent)
        return "whole";
    if (arrived == before)
        return "none";
    const auto end = static_cast<std::size_t>(
        std::mismatch(arrived.begin(), arrived.end(), sent.begin()).first - arrived.begin());
    if (arrived.substr(end) == before.substr(end))
        return "part";
    const auto difference = static_cast<unsigned>(arrived[end] ^ sent[end]) & 0xFFU;
    const bool isLast = arrived.substr(end + 1) == sent.substr(end + 1);
    return isLast && (difference & (difference - 1)) == 0 ? "bit" : "?";
}

TEST_P(SimulatedTransfers, TheSeedDeterminesTheLie) {
    ConfigDriver& driver = keyboard.Open();
    const std::string zeros(600, '\0');
    const std::string fresh(600, '\x99');
    const std::vector<Long> places{kPlace, kPlace + 600, kPlace + 1200};
    const auto request = [&](Long place) { // the later part first
        driver.QXCFG_MemRequestClean();
        driver.QXCFG_MemRequestAdd(5, place + 300, 300);
        driver.QXCFG_MemRequestAdd(5, place, 300);
    };
    const auto save = [&](const std::string& bytes) {
        for (const Long place : places) {
            keyboard.PutImage(place, bytes);
            request(place);
            EXPECT_EQ(driver.QXCFG_ImageSave(), 0);
        }
    };
    // The results of three loads over zeros, from a keyboard with fresh bytes.
    const auto load = [&] {
        std::string outcomes;
        for (const Long place : places) {
            keyboard.PutImage(place, zeros);
            request(place);
            EXPECT_EQ(driver.QXCFG_ImageLoad(), 0);
            const std::string area = keyboard.Image(place, 600);
            outcomes += Judge(fresh, zeros, area.substr(300) + area.substr(0, 300)) + " ";
        }
        return outcomes;
    };
    const auto outcomesOf = [&](Long seed) {
        save(zeros);
        keyboard.LieFrom(seed);
        save(fresh);
        keyboard.LieFrom(-1);
        const std::string written = load();
        save(fresh);
        keyboard.LieFrom(seed);
        const std::string read = load();
        keyboard.LieFrom(-1);
        return written + "/ " + read;
    };
    std::map<std::string, int> counts;
    for (Long seed = 0; seed < 80; ++seed) {
        const std::string outcomes = outcomesOf(seed);
        if (seed % 10 == 0) {
            EXPECT_EQ(outcomesOf(seed), outcomes) << "seed " << seed;
        }
        ++counts[outcomes];
    }
    const std::string honest = "whole whole whole ";
    for (const char* lie : {"none whole whole ", "part whole whole ", "bit whole whole ",
                            "whole none whole ", "whole part whole ", "whole bit whole "})
        EXPECT_GT(std::exchange(counts[lie + ("/ " + honest)], 0), 2) << lie;
    for (const char* lie : {"part whole whole ", "whole part whole "})
        EXPECT_GT(std::exchange(counts[honest + "/ " + lie], 0), 2) << "read " << lie;
    for (const auto& [outcomes, count] : counts)
        EXPECT_EQ(count, 0) << "unexpected: " << outcomes;
}

} // namespace qx::test
