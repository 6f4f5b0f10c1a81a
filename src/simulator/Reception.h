// Reception: the keys and data that the host PC receives from the keyboard, in order, with remarks.
#pragma once

#include "qxcontrols/common/Types.h"

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
    FreeKey,          // a programmed key's sequence; number: its position code
    FunctionKey,      // a layered function key's sequence; number: the key, and its layer
    PosBlock,         // a POS block's sequence; number: the block's slot
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
    Integer number;
    Integer layer = 0;
    std::vector<KeyStroke> keys;
    std::string data; // UTF-8

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

// The name of the key from which the stretch comes, an ordinary, a free or a POS key, in the
// layout, which may be null.
[[nodiscard]] std::string KeyNameOf(const Stretch& stretch, const QXKeyboardLayoutData* layout);
// In English.
[[nodiscard]] std::string RemarkText(const Remark& remark);
// "prefix of track 2", "layer 3, F6", "ordinary key 31 (A)"; keys have the names of the layout,
// which may be null.
[[nodiscard]] std::string OriginText(const Stretch& stretch, const QXKeyboardLayoutData* layout);
// The strokes as a sequence text with the layout's labels, or the data in quotes.
[[nodiscard]] std::string ContentText(const Stretch& stretch, const QXKeyboardLayoutData& layout);

} // namespace qx::sim
