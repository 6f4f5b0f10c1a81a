#include "qxcontrols/keys/KeySequence.h"

#include "qxcontrols/common/Text.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <stdexcept>
#include <string_view>

namespace qx {

namespace {

constexpr std::size_t kField = KeySequence::kFieldWidth;

std::string Field(Integer nValue) {
    const std::string digits = std::to_string(nValue);
    if (digits.size() > kField)
        throw std::invalid_argument("key code " + digits + " does not fit three characters");
    return std::string(kField - digits.size(), ' ') + digits;
}

// A third, rounded to the nearest: a trailing field counts when two of its characters are there.
Integer CodesIn(std::size_t characters) {
    const std::size_t codes = (characters + 1) / kField;
    if (codes > static_cast<std::size_t>(std::numeric_limits<Integer>::max()))
        throw std::overflow_error("a sequence of " + std::to_string(codes) + " key codes");
    return static_cast<Integer>(codes);
}

} // namespace

void KeySequence::AddByte(Integer nValue) {
    const std::string field = Field(nValue);
    if (m_length == std::numeric_limits<Integer>::max())
        throw std::overflow_error("a sequence of more than 32767 key codes");
    m_keyString += field;
    ++m_length;
}

void KeySequence::ClearLast() {
    if (m_length == 0)
        return;
    m_keyString.resize(m_keyString.size() - std::min(kField, m_keyString.size()));
    --m_length;
}

void KeySequence::Clear() {
    m_keyString.clear();
    m_length = 0;
}

Integer KeySequence::GetPositionCode(Integer nIndex) const {
    if (nIndex < 1 || nIndex > m_length)
        return 0;
    return CodeAt(m_keyString, static_cast<std::size_t>(nIndex - 1) * kField);
}

void KeySequence::SetKeyString(std::string sKeyString) {
    m_length = CodesIn(sKeyString.size());
    m_keyString = std::move(sKeyString);
}

void KeySequence::CopyContent(const KeySequence* oSource) {
    if (oSource != nullptr)
        *this = *oSource;
}

Integer CodeAt(const std::string& sKeyString, std::size_t offset) {
    if (offset >= sKeyString.size())
        return 0;
    const std::string_view digits = TrimLeft(std::string_view(sKeyString).substr(offset, kField));
    Integer code = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), code);
    return code;
}

} // namespace qx
