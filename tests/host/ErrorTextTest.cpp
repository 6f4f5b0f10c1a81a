#include "host/ErrorText.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace qx::host {
namespace {

// Every cause has its own text, which names no program.
TEST(ErrorText, WordsEveryCauseForAllPrograms) {
    const ErrorFacts facts = {
        .name = "NAME",
        .other = "OTHER",
        .names = {"one", "two"},
        .others = {"three"},
        .call = FailedCall{"QXCFG_Init", 77, "nobody\nhome"},
        .place = {.file = "till.json", .section = "pos", .address = 0x2080},
        .writes = {{"ID", WriteAction::Download, "new.json", "till 1", "noon"}},
        .faults = {Fault("/pos", FaultKind::NoSuchModule)}};
    std::set<std::string> texts;
    for (int i = 0; i <= static_cast<int>(LastOf(Cause())); ++i) {
        Error error(static_cast<Cause>(i), facts);
        // Faults and problems have the words of a layer below.
        const bool isWordedBelow = TextOf(error).empty() ||
                                   error.Kind() == ErrorKind::DocumentInvalid ||
                                   error.Kind() == ErrorKind::KeyboardDamaged;
        error.reason = "REASON";
        error.problem.system = "PROBLEM";
        error.related = {Error(Cause::Unforeseen, {.problem = {.system = "BELOW"}})};
        const std::string text = TextOf(error);
        EXPECT_FALSE(text.empty()) << i;
        EXPECT_TRUE(isWordedBelow || texts.insert(text).second) << i << text;
        for (const char* foreign : {"qxconf", " --", "\n", "menu", "choose the", "move "})
            EXPECT_EQ(text.find(foreign), std::string::npos) << text;
        EXPECT_FALSE(CodeOf(error.Kind()).empty());
    }
    EXPECT_GT(texts.size(), 70U);
}

// The cause is followed by the keyboard's state, the way back and further failures, in this order.
TEST(ErrorText, EndsWithTheKeyboardAndTheWayBack) {
    Error error(
        Cause::WritingFailed,
        {.call = FailedCall{"QXCFG_ImageSave", 77}, .holds = Holds::PartlyWritten, .backup = "B"},
        {Error(Cause::NoReceipt)});
    EXPECT_EQ(TextOf(error), "writing to the keyboard failed: QXCFG_ImageSave gave status 77; the "
                             "keyboard is partly written; the backup B has the previous contents; "
                             "there is no receipt");
    std::set<std::string> texts;
    for (const Holds holds :
         {Holds::NotTouched, Holds::Old, Holds::New, Holds::PartlyWritten, Holds::Unknown}) {
        error.holds = holds;
        EXPECT_TRUE(texts.insert(TextOf(error)).second);
    }
}

} // namespace
} // namespace qx::host
