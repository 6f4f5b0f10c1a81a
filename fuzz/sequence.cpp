// A text that is read as a sequence, printed and read again yields the same codes; a refused text
// is refused at a place inside it.

#include "Fuzz.h"
#include "qxcontrols/keys/SequenceText.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace qx;
    const QXKeyboardLayoutData& layout = fuzz::UsLayout();
    const auto text = fuzz::AsText(data, size);
    try {
        const auto codes = ParseSequenceText(text, layout);
        const std::string printed = SequenceToText(codes, layout);
        fuzz::Require(ParseSequenceText(printed, layout) == codes, "what is printed reads back");
        fuzz::RequireEqual(SequenceToText(ParseSequenceText(printed, layout), layout), printed,
                           "what is printed is printed the same again");
    } catch (const SequenceTextError& error) {
        fuzz::Require(error.Position() <= size, "the place of a fault is in the text");
        fuzz::Require(*error.what() != '\0', "a refusal has a reason");
    }
    const std::vector<Byte> codes(data, data + size); // any codes
    fuzz::Require(ParseSequenceText(SequenceToText(codes, layout), layout) == codes,
                  "any codes read back as they were written");
    return 0;
}
