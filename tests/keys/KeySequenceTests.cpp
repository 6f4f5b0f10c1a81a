#include "qxcontrols/keys/KeyboardSequences.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "support/TestKeyboard.h"

#include <gtest/gtest.h>

#include <functional>

#include <stdexcept>

namespace qx::test {
namespace {

TEST(KeySequence, KeepsCodesInFieldsOfThree) {
    KeySequence sequence;
    for (const Integer code : std::initializer_list<Integer>{5, 200, 13, -99})
        sequence.AddByte(code);
    EXPECT_EQ(sequence.KeyString(), "  5200 13-99");
    EXPECT_EQ(sequence.GetPositionCode(2), 200);
    EXPECT_EQ(sequence.GetPositionCode(4), -99);
    EXPECT_EQ(sequence.GetPositionCode(0), 0);
    EXPECT_EQ(sequence.GetPositionCode(5), 0);
    for (const Integer code : std::initializer_list<Integer>{1000, -100}) {
        EXPECT_THROW(sequence.AddByte(code), std::invalid_argument);
        EXPECT_EQ(sequence.KeyString(), "  5200 13-99");
    }
    sequence.ClearLast();
    EXPECT_EQ(sequence.KeyString(), "  5200 13");
    EXPECT_EQ(sequence.Length(), 3);
}

TEST(KeySequence, RoundsTheLengthOfAnyText) {
    KeySequence sequence;
    for (const auto& [characters, codes] : {std::pair{0, 0},
                                            {1, 0},
                                            {2, 1},
                                            {3, 1},
                                            {4, 1},
                                            {5, 2},
                                            {98300, 32767},
                                            {98301, 32767}}) {
        sequence.SetKeyString(std::string(static_cast<std::size_t>(characters), '1'));
        EXPECT_EQ(sequence.Length(), codes) << characters;
    }
    EXPECT_THROW(sequence.AddByte(1), std::overflow_error);
    EXPECT_THROW(sequence.SetKeyString(std::string(98303, '1')), std::overflow_error);
    EXPECT_EQ(sequence.Length(), 32767);

    sequence.SetKeyString("12"); // one code, by rounding, whose field lacks a character
    sequence.ClearLast();
    EXPECT_EQ(sequence.KeyString(), "");
    sequence.ClearLast();
    EXPECT_EQ(sequence.Length(), 0);
}

TEST(KeySequence, ConvertsWholeSlots) {
    std::string bytes;
    std::vector<Integer> codes;
    for (Integer code = 0; code <= 255; ++code) {
        bytes += static_cast<char>(code);
        codes.push_back(code);
    }
    KeySequence sequence;
    sequence.AddByte(7);
    sequence.SetBytes(bytes);
    EXPECT_EQ(sequence.Codes(), codes);
    KeySequence singly;
    for (const Integer code : codes)
        singly.AddByte(code);
    EXPECT_EQ(sequence.KeyString(), singly.KeyString());
    EXPECT_EQ(sequence.Length(), 256);

    // Fields that no keyboard gives: read as GetPositionCode reads each of them.
    sequence.SetKeyString("1 2 5 256999-99a12 -1   007-1 12");
    EXPECT_EQ(sequence.Codes(), (std::vector<Integer>{1, 5, 256, 999, -99, 0, -1, 0, 7, -1, 12}));
    for (Integer i = 1; i <= sequence.Length(); ++i)
        EXPECT_EQ(sequence.GetPositionCode(i), sequence.Codes()[static_cast<std::size_t>(i - 1)]);
    EXPECT_THROW(sequence.SetBytes(std::string(32768, 'x')), std::overflow_error);
    EXPECT_EQ(sequence.Length(), 11);
}

TEST(KeyboardSequences, ClearsCodesAndAssignmentsApart) {
    KeyboardSequences sequences;
    EXPECT_EQ(sequences.GetNumberOfProgamableKeys(), 141);
    sequences.Key(140).SetPositionCode(140);
    sequences.Key(140).AddByte(30);
    sequences.Key(0).AddByte(30);
    sequences.CleanKey(0);
    EXPECT_EQ(sequences.Key(0).Length(), 0);
    EXPECT_EQ(sequences.Key(140).Length(), 1);
    sequences.SetAllAsUnsused();
    EXPECT_EQ(sequences.GetNumberOfProgamableKeys(), 141);
    EXPECT_EQ(sequences.Key(140).KeyString(), " 30");
    sequences.Key(140).SetPositionCode(140);
    sequences.CleanAll();
    EXPECT_EQ(sequences.Key(140).Length(), 0);
    EXPECT_EQ(sequences.GetNumberOfProgamableKeys(), 140);
    sequences.CleanKey(141); // ignored
    EXPECT_THROW((void)sequences.Key(141), std::out_of_range);
    EXPECT_THROW((void)sequences.Key(-1), std::out_of_range);
}

TEST(Keys, EveryProcedureTracesItsName) {
    KeySequence sequence;
    KeyboardSequences sequences;
    QXKeyboardLayoutData layout;
    const std::pair<const char*, std::function<void()>> procedures[] = {
        {"KeySequence.AddByte", [&] { sequence.AddByte(5); }},
        {"KeySequence.GetPositionCode", [&] { (void)sequence.GetPositionCode(1); }},
        {"KeySequence.CopyContent", [&] { sequence.CopyContent(nullptr); }},
        {"KeySequence.ClearLast", [&] { sequence.ClearLast(); }},
        {"KeySequence.Clear", [&] { sequence.Clear(); }},
        {"KeyboardSequences.Key", [&] { (void)sequences.Key(140); }},
        {"KeyboardSequences.CleanKey", [&] { sequences.CleanKey(141); }},
        {"KeyboardSequences.CleanAll", [&] { sequences.CleanAll(); }},
        {"KeyboardSequences.SetAllAsUnsused", [&] { sequences.SetAllAsUnsused(); }},
        {"KeyboardSequences.GetNumberOfProgamableKeys",
         [&] { (void)sequences.GetNumberOfProgamableKeys(); }},
        {"QXKeyboardLayoutData.GetMinKeyID", [&] { (void)layout.GetMinKeyID(); }},
        {"QXKeyboardLayoutData.GetMaxKeyID", [&] { (void)layout.GetMaxKeyID(); }},
        {"QXKeyboardLayoutData.KeyCaption", [&] { (void)layout.KeyCaption(-1); }},
        {"QXKeyboardLayoutData.KeyLongCaption", [&] { (void)layout.KeyLongCaption(1); }},
        {"QXKeyboardLayoutData.KeySupport", [&] { (void)layout.KeySupport(1); }},
        {"QXKeyboardLayoutData.KeyColor", [&] { (void)layout.KeyColor(1); }},
        {"QXKeyboardLayoutData.KeyX", [&] { (void)layout.KeyX(1); }},
        {"QXKeyboardLayoutData.KeyY", [&] { (void)layout.KeyY(1); }},
        {"QXKeyboardLayoutData.KeyWidth", [&] { (void)layout.KeyWidth(1); }},
        {"QXKeyboardLayoutData.KeyHeight", [&] { (void)layout.KeyHeight(141); }},
    };
    for (const auto& [name, call] : procedures) {
        const TraceLog log;
        call();
        EXPECT_EQ(log.lines.empty() ? "" : log.lines.front(), name);
    }
}

} // namespace
} // namespace qx::test
