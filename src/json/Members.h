// The members of a record, written and read by one walk, which names each once:
//
//     template <typename AnyReceipt, typename Visit>
//     void VisitMembers(AnyReceipt& receipt, Visit visit) {
//         visit("time", receipt.time);
//
// The order of the walk is that in the file. An enumeration is written as the code that its CodeOf
// gives, and has its LastOf. Types other than the usual ones have a ToJson and a Take of their own
// beside them.
#pragma once

#include "json/Reader.h"

#include <optional>
#include <string>
#include <type_traits>
#include <vector>

namespace qx::json {

template <typename Type>
constexpr bool kIsPlain = std::is_integral_v<Type> || std::is_same_v<Type, std::string>;

template <typename Type>
requires kIsPlain<Type>
[[nodiscard]] Json ToJson(const Type& value) {
    return value;
}
template <typename Enum>
requires std::is_enum_v<Enum>
[[nodiscard]] Json ToJson(Enum value) {
    return CodeOf(value);
}
template <typename Type>
[[nodiscard]] Json ToJson(const std::optional<Type>& value) {
    return value ? ToJson(*value) : Json();
}
template <typename Type>
[[nodiscard]] Json ToJson(const std::vector<Type>& values) {
    Json json = Json::array();
    for (const Type& value : values)
        json.push_back(ToJson(value));
    return json;
}

// Reads a value that is there; where it is wrong, the variable stays as it is.
template <typename Type>
requires kIsPlain<Type>
void Take(const Value& value, Type& variable) {
    if constexpr (std::is_same_v<Type, std::string>)
        variable = value.Text().value_or(variable);
    else if constexpr (std::is_same_v<Type, bool>)
        variable = value.Flag().value_or(variable);
    else
        variable = value.WholeNumber<Type>().value_or(variable);
}
template <typename Type>
void Take(const Value& value, std::optional<Type>& variable) {
    if (value.Exists() && !value.AsJson().is_null())
        Take(value, variable.emplace());
}
template <typename Type>
void Take(const Value& value, std::vector<Type>& variable) {
    for (const Value& element : value.Elements())
        Take(element, variable.emplace_back());
}

template <typename Enum>
requires std::is_enum_v<Enum>
void Take(const Value& value, Enum& variable) {
    const auto code = value.Text();
    std::string known;
    for (int i = 0; code && i <= static_cast<int>(LastOf(variable)); ++i) {
        const auto each = static_cast<Enum>(i);
        if (CodeOf(each) == *code) {
            variable = each;
            return;
        }
        known += (known.empty() ? "" : ", ") + std::string(CodeOf(each));
    }
    if (code)
        value.RefuseAs(FaultKind::NotAChoice, known);
}

// A fault as ToJson writes it; only its place where it cannot be read.
[[nodiscard]] inline Fault FaultFrom(const Value& value) {
    Object members(value);
    Fault fault("", FaultKind::MoreFaults);
    auto kind = fault.kind;
    Take(members.Get("place"), fault.place);
    Take(members.Get("code"), kind);
    const Value arguments = members.Get("arguments");
    Take(arguments, fault.arguments);
    (void)members.Find("message"); // which the others determine
    members.RefuseOthers();
    if (fault.arguments.size() >= ArgumentsOf(kind))
        fault.kind = kind;
    else if (arguments.Exists())
        arguments.RefuseAs(FaultKind::NotAListOf, ArgumentsOf(kind));
    return fault;
}

// `walk` calls what it is given with each member's name and variable.
template <typename Walk>
[[nodiscard]] Json MembersToJson(Walk walk) {
    Json json = Json::object();
    walk([&](const char* name, const auto& variable) { json[name] = ToJson(variable); });
    return json;
}
template <typename Walk>
void TakeMembers(Object& object, Walk walk) {
    walk([&](const char* name, auto&& variable) { Take(object.Get(name), variable); });
}

} // namespace qx::json
