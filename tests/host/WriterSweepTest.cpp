// Writes and recoveries with a failure at every possible place: a write reported as done is in the
// keyboard, and an interrupted one becomes exactly the old or exactly the new content.
#include "WriterFixture.h"

#include <iostream>

namespace qx::host {

namespace {

using test::Lie;

constexpr Writer::Way kWays[] = {Writer::Way::Finish, Writer::Way::RollBack};

class WriterSweep : public WriterFixture {
protected:
    // Runs the work with a fault at its first driver call, its second, and so on, once and
    // permanently from there on, and checks the result, for both ways of recovering. Returns the
    // number of runs.
    int SweepCalls(const std::function<void()>& prepare,
                   const std::function<std::optional<Error>(Writer::Way)>& work,
                   const std::function<void(const std::optional<Error>&, Writer::Way)>& check) {
        int runs = 0;
        for (const bool forEver : {false, true})
            for (const Writer::Way way : kWays)
                for (int call = 1;; ++call) {
                    SCOPED_TRACE("call " + std::to_string(call) + (forEver ? " for ever" : ""));
                    Reset();
                    prepare();
                    keyboard.failingCall = call;
                    keyboard.failsForEver = forEver;
                    const auto error = work(way);
                    if (keyboard.calls < call)
                        break; // there is no such call
                    ++runs;
                    check(error, way);
                    if (HasFatalFailure())
                        return runs;
                }
        return runs;
    }
    [[nodiscard]] const std::string& Wanted(Writer::Way way) const {
        return way == Writer::Way::Finish ? after : before;
    }
    std::optional<Error> TryToRecover(Writer::Way way) {
        return Use(keyboard, [&](Session&, Writer& writer) {
            if (const auto entries = writer.Interrupted(); !entries.empty())
                writer.Recover(entries.front(), way);
        });
    }
};

} // namespace

TEST_F(WriterSweep, AFaultAtEveryDriverCallOfAWrite) {
    const int runs = SweepCalls([] {}, [&](Writer::Way) { return Download(keyboard, kNew); },
                                [&](const std::optional<Error>& error, Writer::Way way) {
                                    CheckAfter(error, way, before);
                                });
    std::cout << runs << " faults of driver calls during a write\n";
    EXPECT_GT(runs, 100);
}

TEST_F(WriterSweep, AFaultAtEveryDriverCallOfARecovery) {
    const int runs = SweepCalls(
        [&] {
            keyboard.cutAfter = 2;
            ASSERT_TRUE(Download(keyboard, kNew));
            ASSERT_TRUE(keyboard.memory != before && keyboard.memory != after);
            keyboard.Replug();
        },
        [&](Writer::Way way) { return TryToRecover(way); },
        [&](const std::optional<Error>& error, Writer::Way way) {
            if (!error) {
                ASSERT_TRUE(keyboard.memory == Wanted(way));
                ASSERT_EQ(Count("journal"), 0U);
            } else if (keyboard.memory != Wanted(way)) {
                ASSERT_EQ(Count("journal"), 1U) << TextOf(*error);
            }
            Recover(keyboard, way);
            ASSERT_TRUE(keyboard.memory == Wanted(way));
        });
    std::cout << runs << " faults of driver calls during a recovery\n";
    EXPECT_GT(runs, 100);
}

// Whatever bytes a keyboard drops or changes while reporting success, it is noticed.
TEST_F(WriterSweep, NoLieIsBelieved) {
    constexpr std::uint32_t kSeeds = 250; // per kind of lie
    int found = 0;
    const Lie lies[] = {Lie::DropsWrite, Lie::CutsWrite, Lie::FlipsBit, Lie::CutsRead};
    for (const Lie lie : lies)
        for (std::uint32_t seed = 0; seed < kSeeds; ++seed) {
            SCOPED_TRACE("lie " + std::to_string(static_cast<int>(lie)) + " seed " +
                         std::to_string(seed));
            Reset();
            keyboard.lie = lie;
            keyboard.seed = seed;
            const auto error = Download(keyboard, kNew);
            keyboard.lie = Lie::None;
            ASSERT_TRUE(error);
            ++found;
            if (lie != Lie::FlipsBit) { // a flipped bit belongs to neither content
                CheckAfter(error, Writer::Way::RollBack, before);
            }
            ASSERT_FALSE(HasFatalFailure());
        }
    std::cout << found << " of " << kSeeds * std::size(lies) << " lies found\n";
}

// A cable pulled after every byte of a write, and again after every byte of the recovery.
TEST_F(WriterSweep, ACutAfterEveryByteAndASecondOneWhileRecovering) {
    int cuts = 0;
    int secondCuts = 0;
    ASSERT_FALSE(Download(keyboard, kNew));
    const Long size = outcome.bytesSent;
    for (const Writer::Way first : kWays)
        for (const Writer::Way way : kWays)
            for (Long cut = 0; cut <= size; ++cut)
                for (Long second = 0; second <= size; ++second) {
                    SCOPED_TRACE("cuts after " + std::to_string(cut) + " and " +
                                 std::to_string(second) + " bytes");
                    Reset();
                    keyboard.cutAfter = cut;
                    const auto error = Download(keyboard, kNew);
                    ASSERT_TRUE(error);
                    ++cuts;
                    ASSERT_EQ(Count("journal"), 1U) << "the failure may be another keyboard's";
                    keyboard.Replug();
                    const std::string started = keyboard.memory;
                    keyboard.cutAfter = second;
                    const auto again = TryToRecover(first);
                    secondCuts += again ? 1 : 0;
                    if (!again) {
                        ASSERT_TRUE(keyboard.memory == before || keyboard.memory == after);
                    }
                    CheckAfter(again ? again : error, way, again ? started : before,
                               again ? first : Writer::Way::Finish);
                    ASSERT_FALSE(HasFatalFailure());
                    if (!again)
                        break; // the recovery writes fewer bytes
                }
    std::cout << cuts << " cuts of a write of " << size << " bytes, " << secondCuts
              << " second cuts\n";
    EXPECT_GT(secondCuts, cuts / 2);
}

} // namespace qx::host
