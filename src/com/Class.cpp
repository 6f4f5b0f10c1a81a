#include "com/Class.h"

#include <algorithm>

namespace qx::com {
namespace {

char16_t LowerCaseAscii(char16_t unit) {
    return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit - u'A' + u'a') : unit;
}

} // namespace

bool IsNamed(std::string_view name, std::u16string_view text) {
    return std::ranges::equal(
        name, text, [](char a, char16_t b) { return a == b; },
        [](char c) { return LowerCaseAscii(static_cast<unsigned char>(c)); }, LowerCaseAscii);
}

std::optional<Long> IdOf(const Class& type, std::u16string_view name) {
    const auto member =
        std::ranges::find_if(type.members, [&](const Member& m) { return IsNamed(m.name, name); });
    if (member == type.members.end())
        return std::nullopt;
    return member->id;
}

const Member* Find(const Class& type, Long id, Use use) {
    const auto member = std::ranges::find_if(type.members, [&](const Member& m) {
        const bool isSet = m.kind == MemberKind::Put || m.kind == MemberKind::PutObject;
        return m.id == id && isSet == (use == Use::Set);
    });
    return member == type.members.end() ? nullptr : &*member;
}

} // namespace qx::com
