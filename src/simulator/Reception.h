// Reception: the keys and data that the host PC receives from the keyboard, in order, with remarks.
#pragma once

#include "qxcontrols/common/Types.h"
#include "qxcontrols/device/KeyboardModuleIDs.h"

#include <optional>
#include <string>
#include <vector>

namespace qx {
class QXKeyboardLayoutData;
}

namespace qx::sim {

// A key that the PC sees pressed (its make code) or released (its break code).
struct KeyStroke {
    Integer key; // position code
    bool isReleased;

    bool operator==(const KeyStroke&) const = default;
};

// The origin of a stretch.
enum class Origin {
    OrdinaryKey,      // a key's own code; number: its position code
    ProgrammedKey,    // its sequence; number: of the module's key or block
    TrackHeader,      // for these three, number: the track, 1 to 4
    TrackData,        //
    TrackTerminator,  //
    ReaderHeader,     // for these three, number: the barcode reader's input, 1 or 2
    ReaderData,       //
    ReaderTerminator, //
};

// The output of one origin: either key strokes or characters of data.
struct Stretch {
    Origin origin;
    Integer number; // of a POS block: its slot
    std::vector<KeyStroke> keys = {};
    std::string data = {}; // UTF-8
    // Of a programmed key: the module that has its sequence, and the layer of a function key.
    KeyboardModuleIDs module = MODULE_NONE;
    std::optional<Integer> layer = {};

    [[nodiscard]] bool IsEmpty() const { return keys.empty() && data.empty(); }
};

// Why something was not sent, and other remarks.
struct Remark {
    enum class Kind {         // values
        NoKey,                // its position code
        PosDamaged,           // why, in English
        NoFunctionKeys,       //
        FunctionKeyEmpty,     // the layer, the key's legend
        NoCardReader,         //
        NoTrack,              // of these six: the track
        TrackOff,             //
        WrongLrcRefused,      //
        WrongLrcIgnored,      //
        WrongLastCharRefused, //
        WrongLastCharIgnored, //
        TracksSentAtOnce,     //
        TracksSentTogether,   //
        NoCodeReader,         //
        CodeEmpty,            //
        SymbologyOff,         // its name in documents
        CodeLengthRefused,    // the same; the lengths accepted, least and most; the code's
    };
    Kind kind;
    std::vector<std::string> values = {};

    bool operator==(const Remark&) const = default;
};

struct Reception {
    std::vector<Stretch> stretches; // none of them empty
    std::vector<Remark> remarks;
    // The delay between two codes; none if the keyboard does not store one.
    std::optional<Byte> outputDelay;

    // Appends the stretch, unless it is empty.
    void Add(Stretch stretch);
    // Appends a later reception. The release of an ordinary key is added to its press.
    void Append(const Reception& later);
};

// In English.
[[nodiscard]] std::string RemarkText(const Remark& remark);
// What a reader has sent, in English: "prefix of track 2". Empty for a key's stretch.
[[nodiscard]] std::string ReadText(const Stretch& stretch);
// The strokes as codes of a sequence; nothing for data, and for keys without such codes.
[[nodiscard]] std::optional<std::vector<Byte>> CodesOf(const Stretch& stretch);
// The strokes as a sequence text with the layout's labels, or the data in quotes.
[[nodiscard]] std::string ContentText(const Stretch& stretch, const QXKeyboardLayoutData& layout);

} // namespace qx::sim
