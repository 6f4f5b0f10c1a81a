#include "com/Call.h"

#include <array>
#include <stdexcept>
#include <string>
#include <vector>

namespace qx::com {
namespace {

[[noreturn]] void Fail(const Object& object, const Member& member, ErrorNumber number,
                       std::string_view text, std::optional<std::size_t> argument = {}) {
    throw Error(number, FullName(object, member) + ": " + std::string(text), argument);
}

// A member may leave an output unchanged, so its value is passed on; an unsuitable one is ignored.
Value Taken(const Parameter& parameter, const Value& given) {
    try {
        Value value = Coerced(given, parameter.type, parameter.name);
        if (parameter.isOutput && parameter.type.kind == Kind::Block)
            static_cast<void>(BytesOf(std::get<std::u16string>(value), parameter.name));
        return value;
    } catch (const Error&) {
        if (parameter.isOutput)
            return std::u16string();
        throw;
    }
}

// The arguments, with defaults for those left out, each converted to its parameter's type.
void Complete(const std::vector<Parameter>& parameters, std::span<const Value> given,
              std::span<Value> arguments) {
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        const Parameter& parameter = parameters[i];
        try {
            if (i < given.size() && !std::holds_alternative<Missing>(given[i]))
                arguments[i] = Taken(parameter, given[i]);
            else if (parameter.ifMissing)
                arguments[i] = *parameter.ifMissing;
            else
                throw Error(ErrorNumber::ArgumentNotOptional,
                            std::string(parameter.name) + ": missing");
        } catch (const Error& error) {
            throw Error(error.Number(), error.what(), i);
        }
    }
}

} // namespace

std::string FullName(const Object& object, const Member& member) {
    return std::string(object.ClassOf().name) + "." + std::string(member.name);
}

void RefuseSurplus(const Object& object, const Member& member, std::size_t given) {
    if (const std::size_t count = member.parameters.size(); given > count)
        Fail(object, member, ErrorNumber::WrongNumberOfArguments,
             "takes " + std::to_string(count) + " arguments, not " + std::to_string(given));
}

Value Call(Object& object, const Member& member, std::span<Value> given) {
    const Object::InUse inUse(object); // an event may release the object meanwhile
    RefuseSurplus(object, member, given.size());
    try {
        std::array<Value, kMostParameters> room;
        const std::span<Value> arguments(room.data(), member.parameters.size());
        Complete(member.parameters, given, arguments);
        Value result = member.call(member, object, arguments);
        for (std::size_t i = 0; i < given.size(); ++i)
            if (member.parameters[i].byReference)
                given[i] = std::move(arguments[i]);
        return result;
    } catch (const Error& error) {
        Fail(object, member, error.Number(), error.what(), error.Argument());
    } catch (const std::out_of_range& error) {
        Fail(object, member, ErrorNumber::SubscriptOutOfRange, error.what());
    } catch (const std::invalid_argument& error) {
        Fail(object, member, ErrorNumber::InvalidProcedureCall, error.what());
    } catch (const std::overflow_error& error) {
        Fail(object, member, ErrorNumber::Overflow, error.what());
    } catch (const std::exception& error) {
        Fail(object, member, ErrorNumber::InternalError, error.what());
    }
}

} // namespace qx::com
