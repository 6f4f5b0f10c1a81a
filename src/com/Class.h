// The tables of the interface: for each class its members and events, with the names, identifiers
// and types that hosts know them by. The type library, the calls and the tests are generated from
// these tables; com/ClassBuilder.h fills them.
#pragma once

#include "com/Value.h"
#include "qxcontrols/common/Event.h"

#include <functional>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace qx::com {

struct Environment;

struct EnumerationValue {
    std::string_view name;
    Long value;
};

struct Enumeration {
    std::string_view name;
    std::string_view iid;
    std::vector<EnumerationValue> values;
};

struct Parameter {
    std::string_view name;
    Type type;
    bool byReference = false;
    std::optional<Long> ifMissing; // the default; only an optional parameter has one
    bool isOutput = false;         // an output-only text: any value the host passes is accepted
};

constexpr std::size_t kMostParameters = 5; // the largest number of parameters of any member

enum class MemberKind { Method, Get, Put, PutObject };

struct Member;
// The arguments are complete and already converted; by-reference ones are written back in place.
using MemberCall =
    std::function<Value(const Member& member, Object& self, std::span<Value> arguments)>;

// A property has one member per direction (get, put), all with the same identifier; the last
// parameter of a put is the new value.
struct Member {
    std::string_view name;
    Long id;
    MemberKind kind;
    std::vector<Parameter> parameters;
    Type result;
    MemberCall call;
};

// By-reference arguments are written back in place.
using EventSink = std::function<void(std::span<Value> arguments)>;

struct EventMember;
using EventConnect =
    std::function<Subscription(const EventMember& event, Object& source, EventSink sink)>;

struct EventMember {
    std::string_view name;
    Long id;
    std::vector<Parameter> parameters;
    EventConnect connect;

    [[nodiscard]] Subscription Subscribe(Object& source, EventSink sink) const {
        return connect(*this, source, std::move(sink));
    }
};

enum class Look { None, Invisible, Visible }; // a plain class, a service object, a control

struct Class {
    std::string_view name;
    Look look;
    // The identifiers of the class, of its interface (the name with one underscore) and of its
    // event interface (two). Every control has an event interface, even without events; a plain
    // class has none (empty).
    std::string_view clsid, iid, eventsIid;
    std::vector<Member> members;
    std::vector<EventMember> events;
    std::function<std::shared_ptr<void>(const Environment&)> create;
};

// Compares ignoring case.
[[nodiscard]] bool IsNamed(std::string_view name, std::u16string_view text);

// The identifier of the member with that name; none if there is no such member.
[[nodiscard]] std::optional<Long> IdOf(const Class& type, std::u16string_view name);

// Finds the member that a host means: Call for a method or a property read (scripts cannot tell
// them apart), Set for a property put, with a value or an object. Null if there is none.
enum class Use { Call, Set };
[[nodiscard]] const Member* Find(const Class& type, Long id, Use use);

// The table of the library class T; defined beside that class's table.
template <typename T>
[[nodiscard]] const Class& TableOf();

template <typename T>
[[nodiscard]] const Enumeration& EnumerationOf();

} // namespace qx::com
