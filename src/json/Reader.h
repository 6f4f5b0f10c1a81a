// Reading JSON strictly. Whatever is wrong is noted among the faults with its place, once, and
// reading goes on; where a value is missing or wrong, nothing is returned.
//
//     Faults faults;
//     Object job(Value(json, "", faults));
//     const std::string layout = job.Find("layout").Text().value_or("us.qxl");
//     for (const Value& unit : job.Get("units").Elements())
//         ...
//     job.RefuseOthers();
//     faults.ThrowAny();
#pragma once

#include "json/Json.h"

#include <limits>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace qx::json {

// A value and its place. The JSON and the faults outlive it.
class Value {
public:
    Value(const Json& json, std::string place, Faults& faults)
        : m_json(&json), m_place(std::move(place)), m_faults(&faults) {}
    // A value that does not exist. It is read without a fault, and gives nothing.
    Value(std::string place, Faults& faults) : m_place(std::move(place)), m_faults(&faults) {}

    [[nodiscard]] bool Exists() const { return m_json != nullptr; }
    [[nodiscard]] const Json& AsJson() const { return *m_json; }
    [[nodiscard]] const std::string& Place() const { return m_place; }
    [[nodiscard]] Faults& AllFaults() const { return *m_faults; }
    // Another value in its place.
    [[nodiscard]] Value With(const Json& other) const { return {other, m_place, *m_faults}; }

    [[nodiscard]] std::optional<std::string> Text() const;
    [[nodiscard]] std::optional<bool> Flag() const;
    // A whole number; `kind` has the arguments of NotANumber.
    template <typename Number>
    [[nodiscard]] std::optional<Number>
    WholeNumber(Number lowest = std::numeric_limits<Number>::min(),
                Number highest = std::numeric_limits<Number>::max(),
                FaultKind kind = FaultKind::NotANumber) const {
        const auto number = NumberWithin(lowest, highest, kind);
        return number ? std::optional(static_cast<Number>(*number)) : std::nullopt;
    }
    // Whether it is a list; another value is a fault.
    [[nodiscard]] bool IsList() const;
    // The elements of a list; none where it is not a list, which is a fault.
    [[nodiscard]] std::vector<Value> Elements() const;
    // The same where there must be `count` of them.
    [[nodiscard]] std::vector<Value> Elements(std::size_t count) const;

    template <typename... Arguments>
    void Refuse(FaultKind kind, const Arguments&... arguments) const {
        m_faults->Add({m_place, kind, arguments...});
    }
    // The fault's own place does not matter.
    void Refuse(Fault fault) const;
    // The same with the beginning of the value's text as the first argument.
    template <typename... Arguments>
    void RefuseAs(FaultKind kind, const Arguments&... arguments) const {
        Refuse(kind, ShortText(*m_json), arguments...);
    }

private:
    [[nodiscard]] std::optional<std::int64_t>
    NumberWithin(std::int64_t lowest, std::int64_t highest, FaultKind kind) const;

    const Json* m_json = nullptr;
    std::string m_place;
    Faults* m_faults;
};

// An object, which is read member by member.
class Object {
public:
    // Another value is a fault, and has no members.
    explicit Object(Value value);

    // What kind of value it is has no fault, and it has at least the member that is asked for.
    [[nodiscard]] bool IsObject() const { return m_isObject; }
    [[nodiscard]] const Value& Whole() const { return m_value; }

    // The member; one that is missing is a fault.
    [[nodiscard]] Value Get(std::string_view key);
    // The member, which need not exist.
    [[nodiscard]] Value Find(std::string_view key);
    // All members; none of them is unknown then.
    [[nodiscard]] std::vector<std::pair<std::string, Value>> All();
    // Members that nothing has asked for are faults.
    void RefuseOthers() const;

private:
    Value m_value;
    bool m_isObject;
    std::set<std::string, std::less<>> m_asked;
};

// Reads the members "format" and "version", by which every file begins. Other ones than these are
// a fault; what is behind them is not read then.
[[nodiscard]] bool HasFormat(Object& file, std::string_view format, int version);

} // namespace qx::json
