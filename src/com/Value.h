// Automation values, as hosts pass them to members and receive them, and the types that members
// declare. A value of another type is converted to the declared one as classic hosts expect, or
// refused: a number out of range is an overflow and never wraps.
#pragma once

#include "qxcontrols/common/Types.h"

#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>

namespace qx::com {

struct Class;
struct Enumeration;
class Object;

// Null is the host's "Nothing".
using ObjectRef = std::shared_ptr<Object>;

// An optional argument that the host left out.
struct Missing {
    bool operator==(const Missing&) const = default;
};

// Texts are UTF-16; a text that holds raw memory has one unit per byte.
using Value = std::variant<std::monostate, Missing, bool, Byte, Integer, Long, Single, double,
                           std::u16string, ObjectRef>;

enum class Kind {
    None,
    Boolean,
    Byte,
    Integer,
    Long,
    Single,
    Text,
    Block, // a text that holds raw memory
    Variant,
    Enumeration,
    Object,
};

struct Type {
    Kind kind = Kind::None;
    const Enumeration* enumeration = nullptr; // of Kind::Enumeration, which is carried as a Long
    const Class& (*object)() = nullptr;       // of Kind::Object
};

// The errors, numbered as in classic hosts.
enum class ErrorNumber {
    InvalidProcedureCall = 5,
    Overflow = 6,
    SubscriptOutOfRange = 9,
    TypeMismatch = 13,
    InternalError = 51,
    InvalidUseOfNull = 94,
    ObjectRequired = 424,
    NoSuchMember = 438,
    NamedArgumentNotFound = 448,
    ArgumentNotOptional = 449,
    WrongNumberOfArguments = 450,
};

class Error : public std::runtime_error {
public:
    Error(ErrorNumber number, const std::string& text, std::optional<std::size_t> argument = {})
        : std::runtime_error(text), m_number(number), m_argument(argument) {}
    [[nodiscard]] ErrorNumber Number() const { return m_number; }
    // The argument at fault, counted from 0; none if the call as a whole is at fault.
    [[nodiscard]] std::optional<std::size_t> Argument() const { return m_argument; }

private:
    ErrorNumber m_number;
    std::optional<std::size_t> m_argument;
};

// Converts the value to the type's own alternative: bool, Byte, Integer, Long (enumerations too),
// Single, std::u16string or ObjectRef; a Variant is returned unchanged. Halves round to even.
// Throws Error with TypeMismatch, Overflow or ObjectRequired; `what` names the value in the
// message.
[[nodiscard]] Value Coerced(const Value& value, const Type& type, std::string_view what);

// The bytes of a text that holds raw memory. Throws Error with InvalidProcedureCall for a unit
// above 255.
[[nodiscard]] std::string BytesOf(std::u16string_view text, std::string_view what);
[[nodiscard]] std::u16string TextOfBytes(std::string_view bytes);

} // namespace qx::com
