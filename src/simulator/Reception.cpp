#include "simulator/Reception.h"

#include "qxcontrols/keys/KeySequence.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "qxcontrols/keys/SequenceText.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace qx::sim {

namespace {

struct OriginName {
    Origin origin;
    std::string_view text; // %1: the number, %2: the layer
};

constexpr OriginName kOriginNames[] = {
    {Origin::OrdinaryKey, "ordinary key %1"},
    {Origin::FreeKey, "free key %1"},
    {Origin::FunctionKey, "layer %2 key %1"},
    {Origin::PosBlock, "POS block %1"},
    {Origin::TrackHeader, "header of track %1"},
    {Origin::TrackData, "track %1 data"},
    {Origin::TrackTerminator, "terminator of track %1"},
    {Origin::ReaderHeader, "header of reader %1"},
    {Origin::ReaderData, "reader %1 data"},
    {Origin::ReaderTerminator, "terminator of reader %1"},
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
    for (const Remark& remark : later.remarks)
        if (std::find(remarks.begin(), remarks.end(), remark) == remarks.end())
            remarks.push_back(remark);
    outputDelay = later.outputDelay;
}

std::string RemarkText(const Remark& remark, const Words& words) {
    const std::string text = words ? words(remark.text) : std::string(remark.text);
    std::string filled;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto value = i + 1 < text.size() ? static_cast<std::size_t>(text[i + 1] - '1') : 0;
        if (text[i] == '%' && value < remark.values.size()) {
            filled += remark.values[value];
            ++i;
        } else {
            filled += text[i];
        }
    }
    return filled;
}

std::string OriginText(const Stretch& stretch, const Words& words) {
    const auto* name =
        std::find_if(std::begin(kOriginNames), std::end(kOriginNames),
                     [&](const OriginName& each) { return each.origin == stretch.origin; });
    return RemarkText({name->text, {std::to_string(stretch.number), std::to_string(stretch.layer)}},
                      words);
}

std::string ContentText(const Stretch& stretch, const QXKeyboardLayoutData& layout) {
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
