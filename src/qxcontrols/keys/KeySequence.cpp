#include "qxcontrols/keys/KeySequence.h"

#include "qxcontrols/common/Trace.h"

#include <algorithm>
#include <array>
#include <limits>
#include <stdexcept>
#include <utility>

namespace qx {

namespace {

constexpr std::size_t kField = KeySequence::kFieldWidth;

using FieldText = std::array<char, kField>;

constexpr FieldText MakeField(Integer nValue) {
    FieldText field = {' ', ' ', ' '};
    std::size_t at = kField;
    int rest = nValue < 0 ? -nValue : nValue;
    do {
        field[--at] = static_cast<char>('0' + rest % 10);
        rest /= 10;
    } while (rest != 0);
    if (nValue < 0)
        field[--at] = '-';
    return field;
}

// The fields of all codes that keyboards store; whole slots are converted by table look-up.
constexpr auto kStoredFields = [] {
    std::array<FieldText, 256> fields{};
    for (std::size_t code = 0; code < fields.size(); ++code)
        fields[code] = MakeField(static_cast<Integer>(code));
    return fields;
}();

// The value of a character in a stored code's field; for any other character, a value above every
// valid code.
constexpr auto kDigits = [] {
    std::array<std::uint16_t, 256> digits{};
    digits.fill(1000);
    digits[' '] = 0;
    for (unsigned digit = 0; digit < 10; ++digit)
        digits['0' + digit] = static_cast<std::uint16_t>(digit);
    return digits;
}();

// The code in the three-character field at `field`.
Integer CodeIn(const char* field) {
    const auto digit = [field](std::size_t i) { return kDigits[static_cast<Byte>(field[i])]; };
    const unsigned code = 100U * digit(0) + 10U * digit(1) + digit(2);
    if (code < kStoredFields.size() &&
        std::equal(field, field + kField, kStoredFields[code].data()))
        return static_cast<Integer>(code);
    return CodeAt(std::string(field, kField), 0); // not in a keyboard's own form
}

FieldText Field(Integer nValue) {
    if (nValue >= 0 && nValue <= 255)
        return kStoredFields[static_cast<std::size_t>(nValue)];
    if (nValue > 999 || nValue < -99)
        throw std::invalid_argument("key code " + std::to_string(nValue) +
                                    " does not fit three characters");
    return MakeField(nValue);
}

// A third, rounded to the nearest: a trailing field counts if it has two characters.
Integer CodesIn(std::size_t characters) {
    const std::size_t codes = (characters + 1) / kField;
    if (codes > static_cast<std::size_t>(std::numeric_limits<Integer>::max()))
        throw std::overflow_error("a sequence of " + std::to_string(codes) + " key codes");
    return static_cast<Integer>(codes);
}

} // namespace

void KeySequence::AddByte(Integer nValue) {
    Trace("KeySequence.AddByte");
    const FieldText field = Field(nValue);
    if (m_length == std::numeric_limits<Integer>::max())
        throw std::overflow_error("a sequence of more than 32767 key codes");
    m_keyString.append(field.data(), field.size());
    ++m_length;
}

void KeySequence::ClearLast() {
    Trace("KeySequence.ClearLast");
    if (m_length == 0)
        return;
    m_keyString.resize(m_keyString.size() - std::min(kField, m_keyString.size()));
    --m_length;
}

void KeySequence::Clear() {
    Trace("KeySequence.Clear");
    m_keyString.clear();
    m_length = 0;
}

Integer KeySequence::GetPositionCode(Integer nIndex) const {
    Trace("KeySequence.GetPositionCode");
    if (nIndex < 1 || nIndex > m_length)
        return 0;
    return CodeAt(m_keyString, static_cast<std::size_t>(nIndex - 1) * kField);
}

std::vector<Integer> KeySequence::Codes() const {
    std::vector<Integer> codes(static_cast<std::size_t>(m_length));
    const std::size_t whole = std::min(codes.size(), m_keyString.size() / kField);
    for (std::size_t i = 0; i < whole; ++i)
        codes[i] = CodeIn(m_keyString.data() + i * kField);
    for (std::size_t i = whole; i < codes.size(); ++i) // an incomplete field
        codes[i] = CodeAt(m_keyString, i * kField);
    return codes;
}

std::optional<std::vector<Byte>> KeySequence::Bytes() const {
    std::vector<Byte> bytes;
    for (const Integer code : Codes()) {
        if (!std::in_range<Byte>(code))
            return std::nullopt;
        bytes.push_back(static_cast<Byte>(code));
    }
    return bytes;
}

void KeySequence::SetBytes(std::string_view sBytes) {
    m_length = CodesIn(sBytes.size() * kField);
    m_keyString.resize(sBytes.size() * kField);
    char* field = m_keyString.data();
    for (const char byte : sBytes) {
        std::copy_n(kStoredFields[static_cast<Byte>(byte)].data(), kField, field);
        field += kField;
    }
}

void KeySequence::SetKeyString(std::string sKeyString) {
    m_length = CodesIn(sKeyString.size());
    m_keyString = std::move(sKeyString);
}

void KeySequence::CopyContent(const KeySequence* oSource) {
    Trace("KeySequence.CopyContent");
    if (oSource != nullptr)
        *this = *oSource;
}

Integer CodeAt(const std::string& sKeyString, std::size_t offset) {
    const std::size_t end = std::min(offset + kField, sKeyString.size());
    std::size_t at = offset;
    while (at < end && sKeyString[at] == ' ')
        ++at;
    const bool isNegative = at < end && sKeyString[at] == '-';
    int code = 0;
    for (at += isNegative ? 1 : 0; at < end && sKeyString[at] >= '0' && sKeyString[at] <= '9'; ++at)
        code = 10 * code + (sKeyString[at] - '0');
    return static_cast<Integer>(isNegative ? -code : code);
}

} // namespace qx
