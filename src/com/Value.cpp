#include "com/Value.h"

#include "com/Class.h"
#include "com/Object.h"
#include "qxcontrols/common/Utf.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <limits>
#include <optional>

namespace qx::com {
namespace {

[[noreturn]] void Refuse(ErrorNumber number, std::string_view what, std::string_view why) {
    throw Error(number, std::string(what) + ": " + std::string(why));
}

template <typename... Ts>
struct Overloaded : Ts... {
    using Ts::operator()...;
};
template <typename... Ts>
Overloaded(Ts...) -> Overloaded<Ts...>;

std::optional<double> NumberIn(std::u16string_view text) {
    const std::string utf8 = Utf8FromUtf16(text);
    const auto first = utf8.find_first_not_of(' ');
    const auto last = utf8.find_last_not_of(' ');
    if (first == std::string::npos)
        return std::nullopt;
    double number = 0;
    const char* const end = utf8.data() + last + 1;
    const auto [stop, error] = std::from_chars(utf8.data() + first, end, number);
    if (error != std::errc() || stop != end || !std::isfinite(number))
        return std::nullopt;
    return number;
}

double NumberOf(const Value& value, std::string_view what) {
    return std::visit(
        Overloaded{
            [](std::monostate) { return 0.0; },
            [](bool flag) { return flag ? -1.0 : 0.0; },
            [&](const std::u16string& text) {
                if (IsNamed("True", text))
                    return -1.0;
                if (IsNamed("False", text))
                    return 0.0;
                const auto number = NumberIn(text);
                if (!number)
                    Refuse(ErrorNumber::TypeMismatch, what, "not a number");
                return *number;
            },
            [&](const ObjectRef&) -> double {
                Refuse(ErrorNumber::TypeMismatch, what, "an object instead of a number");
            },
            [&](Missing) -> double { Refuse(ErrorNumber::TypeMismatch, what, "missing"); },
            [](auto number) { return static_cast<double>(number); },
        },
        value);
}

template <typename Number>
Number WholeNumber(const Value& value, std::string_view what) {
    const double rounded = std::nearbyint(NumberOf(value, what));
    using Limits = std::numeric_limits<Number>;
    if (!(rounded >= Limits::min() && rounded <= Limits::max()))
        Refuse(ErrorNumber::Overflow, what,
               "outside " + std::to_string(Limits::min()) + " to " + std::to_string(Limits::max()));
    return static_cast<Number>(rounded);
}

// With as many digits as classic hosts show.
template <typename Number>
std::u16string TextOfNumber(Number number) {
    if constexpr (std::is_floating_point_v<Number>) {
        char text[32];
        std::snprintf(text, sizeof(text), "%.*g", std::is_same_v<Number, Single> ? 7 : 15,
                      static_cast<double>(number));
        return Utf16FromUtf8(text);
    } else {
        return Utf16FromUtf8(std::to_string(number));
    }
}

std::u16string TextOf(const Value& value, std::string_view what) {
    return std::visit(
        Overloaded{
            [](std::monostate) { return std::u16string(); },
            [](bool flag) { return std::u16string(flag ? u"True" : u"False"); },
            [](const std::u16string& text) { return text; },
            [&](const ObjectRef&) -> std::u16string {
                Refuse(ErrorNumber::TypeMismatch, what, "an object instead of a text");
            },
            [&](Missing) -> std::u16string { Refuse(ErrorNumber::TypeMismatch, what, "missing"); },
            [](auto number) { return TextOfNumber(number); },
        },
        value);
}

ObjectRef ObjectOf(const Value& value, const Class& wanted, std::string_view what) {
    const std::string expected(wanted.name);
    const auto* const object = std::get_if<ObjectRef>(&value);
    if (object == nullptr)
        Refuse(ErrorNumber::ObjectRequired, what, "needs an object of class " + expected);
    if (*object != nullptr && &(*object)->ClassOf() != &wanted)
        Refuse(ErrorNumber::TypeMismatch, what,
               "needs an object of class " + expected + ", not of " +
                   std::string((*object)->ClassOf().name));
    return *object;
}

} // namespace

Value Coerced(const Value& value, const Type& type, std::string_view what) {
    switch (type.kind) {
    case Kind::None:
        return {};
    case Kind::Boolean:
        return NumberOf(value, what) != 0;
    case Kind::Byte:
        // True is 255 in a byte
        if (const bool* const flag = std::get_if<bool>(&value))
            return static_cast<Byte>(*flag ? 255 : 0);
        return WholeNumber<Byte>(value, what);
    case Kind::Integer:
        return WholeNumber<Integer>(value, what);
    case Kind::Long:
    case Kind::Enumeration:
        return WholeNumber<Long>(value, what);
    case Kind::Single: {
        const double number = NumberOf(value, what);
        if (std::abs(number) > static_cast<double>(std::numeric_limits<Single>::max()))
            Refuse(ErrorNumber::Overflow, what, "too large");
        return static_cast<Single>(number);
    }
    case Kind::Text:
    case Kind::Block:
        return TextOf(value, what);
    case Kind::Variant:
        return value;
    case Kind::Object:
        return ObjectOf(value, type.object(), what);
    }
    throw std::logic_error("a kind of value without a conversion");
}

std::string BytesOf(std::u16string_view text, std::string_view what) {
    std::string bytes;
    bytes.reserve(text.size());
    for (const char16_t unit : text) {
        if (unit > 0xFF)
            Refuse(ErrorNumber::InvalidProcedureCall, what, "a character that is not one byte");
        bytes.push_back(static_cast<char>(unit));
    }
    return bytes;
}

std::u16string TextOfBytes(std::string_view bytes) {
    std::u16string text;
    text.reserve(bytes.size());
    for (const char byte : bytes)
        text.push_back(static_cast<unsigned char>(byte));
    return text;
}

} // namespace qx::com
