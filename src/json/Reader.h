// Strict reading of JSON. Every fault is recorded once, with its place, and reading continues; if a
// value is missing or wrong, nothing is returned.
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

// A value and its place. The JSON and the faults must outlive it.
class Value {
public:
    Value(const Json& json, std::string place, Faults& faults)
        : m_json(&json), m_place(std::move(place)), m_faults(&faults) {}
    // A value that does not exist. Reading it yields nothing and is not a fault.
    Value(std::string place, Faults& faults) : m_place(std::move(place)), m_faults(&faults) {}

    [[nodiscard]] bool Exists() const { return m_json != nullptr; }
    [[nodiscard]] const Json& AsJson() const { return *m_json; }
    [[nodiscard]] const std::string& Place() const { return m_place; }
    [[nodiscard]] Faults& AllFaults() const { return *m_faults; }
    // Another value at its place.
    [[nodiscard]] Value With(const Json& other) const { return {other, m_place, *m_faults}; }

    [[nodiscard]] std::optional<std::string> Text() const;
    [[nodiscard]] std::optional<bool> Flag() const;
    // A whole number; the arguments of `kind` are those of NotANumber.
    template <typename Number>
    [[nodiscard]] std::optional<Number>
    WholeNumber(Number lowest = std::numeric_limits<Number>::min(),
                Number highest = std::numeric_limits<Number>::max(),
                FaultKind kind = FaultKind::NotANumber) const {
        const auto number = NumberWithin(lowest, highest, kind);
        return number ? std::optional(static_cast<Number>(*number)) : std::nullopt;
    }
    // Whether it is a list; any other value is a fault.
    [[nodiscard]] bool IsList() const;
    // The elements of a list; any other value is a fault and has none.
    [[nodiscard]] std::vector<Value> Elements() const;
    // The same, with exactly `count` elements.
    [[nodiscard]] std::vector<Value> Elements(std::size_t count) const;

    template <typename... Arguments>
    void Refuse(FaultKind kind, const Arguments&... arguments) const {
        m_faults->Add({m_place, kind, arguments...});
    }
    // Records a fault here; the fault's own place is ignored.
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

// An object, read member by member.
class Object {
public:
    // Any other value is a fault, and has no members.
    explicit Object(Value value);

    // False for a missing value, and for one of another kind, which is recorded as a fault.
    [[nodiscard]] bool IsObject() const { return m_isObject; }
    [[nodiscard]] const Value& Whole() const { return m_value; }

    // The member; one that is missing is a fault.
    [[nodiscard]] Value Get(std::string_view key);
    // The member, which may be missing.
    [[nodiscard]] Value Find(std::string_view key);
    // All members; none counts as unknown then.
    [[nodiscard]] std::vector<std::pair<std::string, Value>> All();
    // Members that have not been read are faults.
    void RefuseOthers() const;

private:
    Value m_value;
    bool m_isObject;
    std::set<std::string, std::less<>> m_asked;
};

// Reads the members "format" and "version", with which every file begins. Any others are a fault,
// and the rest must then not be read.
[[nodiscard]] bool HasFormat(Object& file, std::string_view format, int version);

} // namespace qx::json
