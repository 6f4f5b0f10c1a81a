#include "host/ErrorJson.h"

#include "host/SettingName.h"

#include <gtest/gtest.h>

namespace qx::host {
namespace {

// The error after it was written as text and read again.
std::optional<Error> Again(const Json& json, json::Faults& faults) {
    const Json read = ParseStrictly(json.dump(), 1U << 16U);
    return ErrorFrom(json::Value(read, "/error", faults));
}

Error WithAllFacts(Cause cause) {
    Error error(
        cause,
        {.name = "NAME",
         .other = "OTHER",
         .setting = {"pos", "POS", {{"keys", "key", "7"}, {"title", "", ""}}, 1},
         .names = {"one", "two"},
         .others = {"three"},
         .reason = "REASON",
         .problem = {files::Deed::Write, "FILE", files::Obstacle::Crashed, {"four"}, 11, "SYSTEM"},
         .count = 5'000'000'000,
         .index = 6,
         .found = 0x1F,
         .expected = -8,
         .call = FailedCall{"QXCFG_Init", 77, "nobody home"},
         .isSimulated = true,
         .keyboardFile = KeyboardFile::ChipcardRom,
         .place = {"till.json", "/pos", "pos", 0x2080},
         .holds = Holds::PartlyWritten,
         .backup = "B-1",
         .writes = {{"ID", WriteAction::RollBack, "new.json", "till 1", "noon"}, {}},
         .faults = {Fault("/pos", FaultKind::NoSuchModule),
                    Fault("/x", FaultKind::NotANumber, "a", 1, 2)}});
    error.suggestion = Suggestion::RestoreBackup;
    return error;
}

} // namespace

TEST(ErrorJson, EveryErrorIsReadAsItWasWritten) {
    for (int cause = 0; cause <= static_cast<int>(LastOf(Cause())); ++cause) {
        json::Faults faults;
        Error error = WithAllFacts(static_cast<Cause>(cause));
        error.related = {Error(Cause::Stopped), WithAllFacts(Cause::NoReceipt)};
        EXPECT_EQ(Again(ToJson(error), faults), error) << ToJson(error);
        const Error bare(static_cast<Cause>(cause));
        EXPECT_EQ(Again(ToJson(bare), faults), bare) << ToJson(bare);
        EXPECT_EQ(faults.Count(), 0U);
    }
    Error error(Cause::FileUnusable);
    for (int deed = 0; deed <= static_cast<int>(LastOf(files::Deed())); ++deed)
        for (int why = 0; why <= static_cast<int>(LastOf(files::Obstacle())); ++why) {
            json::Faults faults;
            error.problem.deed = static_cast<files::Deed>(deed);
            error.problem.obstacle = static_cast<files::Obstacle>(why);
            EXPECT_EQ(Again(ToJson(error), faults), error);
        }
}

TEST(ErrorJson, WhatIsNoErrorIsNamedWithItsPlace) {
    const Json good = ToJson(WithAllFacts(Cause::WritingFailed));
    const std::pair<const char*, Json> changes[] = {{"/cause", "none-such"},
                                                    {"/holds", 7},
                                                    {"/suggestion", "wait"},
                                                    {"/status", 3'000'000'000},
                                                    {"/facts/problem/deed", "sing"},
                                                    {"/facts/setting/parts/0/key", nullptr},
                                                    {"/facts/found", "1F"},
                                                    {"/writes/0/time", 1},
                                                    {"/faults/1/code", "no-such"},
                                                    {"/faults/1/arguments", Json::array()},
                                                    {"/faults/0/extra", 1},
                                                    {"/extra", 1},
                                                    {"/facts/setting/elementParts", 3}};
    for (const auto& [place, value] : changes) {
        Json changed = good;
        changed[Json::json_pointer(place)] = value;
        json::Faults faults;
        EXPECT_FALSE(Again(changed, faults)) << place;
        ASSERT_EQ(faults.Count(), 1U) << place;
        EXPECT_TRUE(std::string("/error").append(place).starts_with(faults.All()[0].place))
            << place << " " << faults.All()[0].place;
    }
}

} // namespace qx::host
