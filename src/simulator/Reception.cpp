#include "simulator/Reception.h"

#include "qxcontrols/keys/KeyName.h"
#include "qxcontrols/keys/KeySequence.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "qxcontrols/keys/SequenceText.h"

#include <algorithm>

namespace qx::sim {

void Reception::Add(Stretch stretch) {
    if (!stretch.IsEmpty())
        stretches.push_back(std::move(stretch));
}

void Reception::Append(const Reception& later) {
    for (const Stretch& stretch : later.stretches) {
        const bool isSameKey = !stretches.empty() && stretch.origin == Origin::OrdinaryKey &&
                               stretches.back().origin == Origin::OrdinaryKey &&
                               stretches.back().number == stretch.number;
        if (isSameKey)
            stretches.back().keys.insert(stretches.back().keys.end(), stretch.keys.begin(),
                                         stretch.keys.end());
        else
            stretches.push_back(stretch);
    }
    for (const Remark& remark : later.remarks)
        if (std::find(remarks.begin(), remarks.end(), remark) == remarks.end())
            remarks.push_back(remark);
    outputDelay = later.outputDelay;
}

std::string RemarkText(const Remark& remark) {
    using Kind = Remark::Kind;
    const auto value = [&](std::size_t index) { return remark.values.at(index); };
    switch (remark.kind) {
    case Kind::NoKey:
        return "this keyboard has no key " + value(0);
    case Kind::PosDamaged:
        return "the POS keys' memory is damaged: " + value(0);
    case Kind::NoFunctionKeys:
        return "this keyboard has no layered function keys";
    case Kind::FunctionKeyEmpty:
        return "layer " + value(0) + ", " + value(1) + " has no sequence";
    case Kind::NoCardReader:
        return "this keyboard has no magnetic card reader";
    case Kind::NoTrack:
        return "this keyboard cannot read track " + value(0);
    case Kind::TrackOff:
        return "track " + value(0) + " is switched off";
    case Kind::WrongLrcRefused:
        return "the checksum (LRC) of track " + value(0) +
               " is wrong; the reader rejects the track";
    case Kind::WrongLrcIgnored:
        return "the checksum (LRC) of track " + value(0) +
               " is wrong; the reader does not verify it";
    case Kind::WrongLastCharRefused:
        return "the last character of track " + value(0) +
               " is wrong; the reader rejects the track";
    case Kind::WrongLastCharIgnored:
        return "the last character of track " + value(0) +
               " is wrong; the reader does not verify it";
    case Kind::TracksSentAtOnce:
        return "each track is sent as soon as it has been read";
    case Kind::TracksSentTogether:
        return "the tracks are sent once all have been read";
    case Kind::NoCodeReader:
        return "this keyboard has no barcode reader";
    case Kind::CodeEmpty:
        return "a barcode needs at least one character";
    case Kind::SymbologyOff:
        return value(0) + " is switched off";
    case Kind::CodeLengthRefused:
        return value(0) + " accepts " + value(1) + " to " + value(2) +
               " characters; the code has " + value(3);
    }
    return {};
}

std::string ReadText(const Stretch& stretch) {
    const std::string number = std::to_string(stretch.number);
    switch (stretch.origin) {
    case Origin::OrdinaryKey:
    case Origin::ProgrammedKey:
        return {};
    case Origin::TrackHeader:
        return "prefix of track " + number;
    case Origin::TrackData:
        return "data of track " + number;
    case Origin::TrackTerminator:
        return "suffix of track " + number;
    case Origin::ReaderHeader:
        return "prefix of reader " + number;
    case Origin::ReaderData:
        return "data of reader " + number;
    case Origin::ReaderTerminator:
        return "suffix of reader " + number;
    }
    return {};
}

// Keys beyond 127 cannot be addressed by a code: they only send their own make and break codes and
// never occur in a sequence.
std::optional<std::vector<Byte>> CodesOf(const Stretch& stretch) {
    if (stretch.keys.empty() || stretch.keys.front().key >= kRelease)
        return std::nullopt;
    std::vector<Byte> codes;
    codes.reserve(stretch.keys.size());
    for (const KeyStroke& stroke : stretch.keys)
        codes.push_back(
            static_cast<Byte>(stroke.key + (stroke.isReleased ? kRelease : Integer{0})));
    return codes;
}

std::string ContentText(const Stretch& stretch, const QXKeyboardLayoutData& layout) {
    if (stretch.keys.empty())
        return "\"" + stretch.data + "\"";
    if (const auto codes = CodesOf(stretch))
        return SequenceToText(*codes, layout);
    std::string text;
    for (const KeyStroke& stroke : stretch.keys)
        text.append(text.empty() ? "" : " ")
            .append(stroke.isReleased ? layout.UpCodePrefix() : "")
            .append(KeyLabel(stroke.key, &layout));
    return text;
}

} // namespace qx::sim
