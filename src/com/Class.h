// The tables of the interface: for each class its members and events, with the names, identifiers
// and types under which hosts know them. The type library, the calls and the tests are all made
// from these tables; com/ClassBuilder.h fills them.
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
    std::optional<Long> ifMissing; // optional when it has one
    bool isOutput = false; // a text that is only answered: whatever the host hands over fits
};

constexpr std::size_t kMostParameters = 5; // of any member

enum class MemberKind { Method, Get, Put, PutObject };

struct Member;
// The arguments are complete and of their types; by-reference ones are answered in place.
using MemberCall =
    std::function<Value(const Member& member, Object& self, std::span<Value> arguments)>;

// A property has a member for each of its directions, under one identifier; the last parameter of
// one that sets is the new value.
struct Member {
    std::string_view name;
    Long id;
    MemberKind kind;
    std::vector<Parameter> parameters;
    Type result;
    MemberCall call;
};

// By-reference arguments are answered in place.
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
    // Of the class, of its interface (an underscore before the name) and of its event interface
    // (two), which every control has, with events or without; a plain class has an empty last one.
    std::string_view clsid, iid, eventsIid;
    std::vector<Member> members;
    std::vector<EventMember> events;
    std::function<std::shared_ptr<void>(const Environment&)> create;
};

// Whether the text is the name, in any case of letters.
[[nodiscard]] bool IsNamed(std::string_view name, std::u16string_view text);

// The identifier of the member of that name; none when there is none.
[[nodiscard]] std::optional<Long> IdOf(const Class& type, std::u16string_view name);

// The member that a host means: one that is called or read, which scripts cannot tell apart, or one
// that is set, to a value or to an object; null when there is none.
enum class Use { Call, Set };
[[nodiscard]] const Member* Find(const Class& type, Long id, Use use);

// The table of the class of the library that is named; defined beside its table.
template <typename T>
[[nodiscard]] const Class& TableOf();

template <typename T>
[[nodiscard]] const Enumeration& EnumerationOf();

} // namespace qx::com
