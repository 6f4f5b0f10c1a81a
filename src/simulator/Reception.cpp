#include "simulator/Reception.h"

#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "qxcontrols/keys/SequenceText.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace qx::sim {

namespace {

struct OriginName {
    Origin origin;
    std::string_view before; // the number
    std::string_view after;
};

constexpr OriginName kOriginNames[] = {
    {Origin::OrdinaryKey, "ordinary key ", ""},
    {Origin::FreeKey, "free key ", ""},
    {Origin::FunctionKey, "key ", ""},
    {Origin::PosBlock, "POS block ", ""},
    {Origin::TrackHeader, "header of track ", ""},
    {Origin::TrackData, "track ", " data"},
    {Origin::TrackTerminator, "terminator of track ", ""},
    {Origin::ReaderHeader, "header of reader ", ""},
    {Origin::ReaderData, "reader ", " data"},
    {Origin::ReaderTerminator, "terminator of reader ", ""},
};

} // namespace

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
    for (const std::string& remark : later.remarks)
        if (std::find(remarks.begin(), remarks.end(), remark) == remarks.end())
            remarks.push_back(remark);
    outputDelay = later.outputDelay;
}

std::string OriginText(const Stretch& stretch) {
    std::string text;
    if (stretch.origin == Origin::FunctionKey)
        text = "layer " + std::to_string(stretch.layer) + " ";
    for (const OriginName& name : kOriginNames)
        if (name.origin == stretch.origin)
            text.append(name.before).append(std::to_string(stretch.number)).append(name.after);
    return text;
}

std::string ContentText(const Stretch& stretch, const QXKeyboardLayoutData& layout) {
    constexpr Integer kRelease = 128;
    if (stretch.keys.empty())
        return "\"" + stretch.data + "\"";
    // The keys beyond 127, of which no code speaks, send nothing but their own make and break, and
    // so stand in no sequence.
    if (stretch.keys.front().key >= kRelease) {
        std::string text;
        for (const KeyStroke& stroke : stretch.keys)
            text.append(text.empty() ? "" : " ")
                .append(stroke.isReleased ? layout.UpCodePrefix() : "")
                .append(layout.KeyCaption(stroke.key));
        return text;
    }
    std::vector<Byte> codes;
    codes.reserve(stretch.keys.size());
    for (const KeyStroke& stroke : stretch.keys)
        codes.push_back(
            static_cast<Byte>(stroke.key + (stroke.isReleased ? kRelease : Integer{0})));
    return SequenceToText(codes, layout);
}

} // namespace qx::sim
