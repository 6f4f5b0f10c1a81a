#include "com/Call.h"

#include <algorithm>

namespace qx::com {
namespace {

std::string NameOf(const Object& object, const Member& member) {
    return std::string(object.ClassOf().name) + "." + std::string(member.name);
}

// The arguments completed and of their types.
std::vector<Value> Complete(const Object& object, const Member& member,
                            std::span<const Value> given) {
    const std::string name = NameOf(object, member);
    const auto& parameters = member.parameters;
    if (given.size() > parameters.size())
        throw Error(ErrorNumber::WrongNumberOfArguments,
                    name + " takes " + std::to_string(parameters.size()) + " arguments, not " +
                        std::to_string(given.size()));
    std::vector<Value> arguments;
    arguments.reserve(parameters.size());
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        const Parameter& parameter = parameters[i];
        const std::string what = name + ", " + std::string(parameter.name);
        try {
            if (i < given.size() && !std::holds_alternative<Missing>(given[i]))
                arguments.push_back(Coerced(given[i], parameter.type, what));
            else if (parameter.ifMissing)
                arguments.push_back(*parameter.ifMissing);
            else
                throw Error(ErrorNumber::ArgumentNotOptional, what + ": missing");
        } catch (const Error& error) {
            throw ArgumentError(error, i);
        }
    }
    return arguments;
}

} // namespace

Value Call(Object& object, const Member& member, std::span<Value> given) {
    auto arguments = Complete(object, member, given);
    const auto kept = object.shared_from_this(); // an event may release the object meanwhile
    Value result;
    try {
        result = member.call(object, arguments);
    } catch (const Error&) {
        throw;
    } catch (const std::out_of_range& error) {
        throw Error(ErrorNumber::SubscriptOutOfRange, NameOf(object, member) + ": " + error.what());
    } catch (const std::invalid_argument& error) {
        throw Error(ErrorNumber::InvalidProcedureCall,
                    NameOf(object, member) + ": " + error.what());
    } catch (const std::overflow_error& error) {
        throw Error(ErrorNumber::Overflow, NameOf(object, member) + ": " + error.what());
    } catch (const std::exception& error) {
        throw Error(ErrorNumber::InternalError, NameOf(object, member) + ": " + error.what());
    }
    for (std::size_t i = 0; i < given.size(); ++i)
        if (member.parameters[i].byReference)
            given[i] = std::move(arguments[i]);
    return result;
}

} // namespace qx::com
