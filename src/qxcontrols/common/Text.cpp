#include "qxcontrols/common/Text.h"

#include <algorithm>

namespace qx {

std::string Hex(Long lValue) {
    std::string digits;
    auto rest = static_cast<std::uint32_t>(lValue);
    do {
        digits += "0123456789ABCDEF"[rest & 0xFU];
        rest >>= 4U;
    } while (rest != 0);
    std::reverse(digits.begin(), digits.end());
    return digits;
}

std::string HexBytes(std::string_view sBytes) {
    std::string text;
    text.reserve(3 * sBytes.size());
    for (const char byte : sBytes) {
        if (!text.empty())
            text += ' ';
        text += Hex(static_cast<Byte>(byte));
    }
    return text;
}

std::string_view TrueFalse(bool fValue) {
    return fValue ? "True" : "False";
}

std::string_view TrimLeft(std::string_view sText) {
    return sText.substr(std::min(sText.find_first_not_of(' '), sText.size()));
}

std::string_view Trim(std::string_view sText) {
    const std::string_view left = TrimLeft(sText);
    return left.substr(0, left.find_last_not_of(' ') + 1);
}

std::string Joined(const std::vector<std::string>& texts, std::string_view sBetween) {
    std::string joined;
    for (const std::string& text : texts)
        joined.append(joined.empty() ? "" : sBetween).append(text);
    return joined;
}

std::string Filled(std::string_view sPattern, const std::vector<std::string>& arguments) {
    std::string text;
    for (std::size_t i = 0; i < sPattern.size(); ++i)
        if (sPattern[i] == '%')
            text += arguments.at(static_cast<std::size_t>(sPattern[++i] - '1'));
        else
            text += sPattern[i];
    return text;
}

std::size_t ArgumentsIn(std::string_view sPattern) {
    std::size_t count = 0;
    for (std::size_t i = 0; i + 1 < sPattern.size(); ++i)
        if (sPattern[i] == '%')
            count = std::max(count, static_cast<std::size_t>(sPattern[i + 1] - '0'));
    return count;
}

} // namespace qx
