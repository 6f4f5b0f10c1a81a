// BlockRoundTrip: one engine for the blocks of all module controls; a new block costs one row.
//
// A test program that links BlockRoundTrip.cpp instantiates the suite with its rows:
//     INSTANTIATE_TEST_SUITE_P(Pos, BlockRoundTrip, testing::Values(PosRow()), RowName);
#pragma once

#include "qxcontrols/keys/KeySequence.h"
#include "support/TestKeyboard.h"

#include <functional>
#include <initializer_list>
#include <memory>
#include <random>

namespace qx::test {

struct GoldenBytes {
    KeyboardModuleIDs module;
    std::size_t offset;
    std::string bytes;
};

struct BlockRow {
    std::string name;
    std::vector<FakeDriver::Entry> directory;
    // Creates a control, set up as by its host but without a keyboard.
    std::function<std::unique_ptr<ModuleControl>(const Platform&)> make;
    // Sets the settings whose hand-written bytes are in `golden`.
    std::function<void(ModuleControl&)> fill;
    std::vector<GoldenBytes> golden;
    // Sets random settings that the block can hold.
    std::function<void(ModuleControl&, std::mt19937&)> randomise;
    // The settings stored in the block, as text, for comparison.
    std::function<std::string(const ModuleControl&)> describe;
    // The display of the control's child controls, and its text once `golden` has been uploaded.
    std::function<std::string(const ModuleControl&)> show;
    std::string shown;
};

class BlockRoundTrip : public testing::TestWithParam<BlockRow> {
protected:
    [[nodiscard]] std::unique_ptr<ModuleControl> Make() {
        auto control = GetParam().make(keyboard.Services());
        control->SetKeyboard(&keyboard.access);
        return control;
    }
    [[nodiscard]] std::string Describe(const ModuleControl& control) const {
        return GetParam().describe(control);
    }

    TestKeyboard keyboard{GetParam().directory};
};

inline std::string RowName(const testing::TestParamInfo<BlockRow>& info) {
    return info.param.name;
}

// Sets the sequence to `length` random codes from 1 to 255.
inline void Randomise(KeySequence& sequence, std::mt19937& random, Integer length) {
    sequence.Clear();
    for (Integer i = 0; i < length; ++i)
        sequence.AddByte(static_cast<Integer>(1 + random() % 255));
}

// Sets the sequence to these codes.
inline void SetCodes(KeySequence& sequence, std::initializer_list<int> codes) {
    sequence.Clear();
    for (const int code : codes)
        sequence.AddByte(static_cast<Integer>(code));
}

} // namespace qx::test
