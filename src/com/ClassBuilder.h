// ClassBuilder: fills the table of a class from pointers to its members. The compiler deduces the
// types of arguments and results; names and identifiers are given.
//
// There are hundreds of members: everything that does not depend on their types is in TableBuilder,
// and the code generated for each type is kept small.
#pragma once

#include "com/Class.h"
#include "com/Environment.h"
#include "com/Object.h"
#include "qxcontrols/common/Utf.h"

#include <array>
#include <initializer_list>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>

namespace qx::com {

// A parameter's name, and the properties that its C++ type does not show.
struct Name {
    constexpr Name(const char* text) : text(text) {}
    std::string_view text;
    std::optional<Kind> kind; // replaces the deduced kind
    std::optional<Long> ifMissing;
    bool isOutput = false;
};
// A text that holds raw memory.
[[nodiscard]] constexpr Name Block(const char* text) {
    Name name(text);
    name.kind = Kind::Block;
    return name;
}
// A value that is declared as a variant.
[[nodiscard]] constexpr Name Variant(const char* text) {
    Name name(text);
    name.kind = Kind::Variant;
    return name;
}
[[nodiscard]] constexpr Name Optional(const char* text, Long ifMissing) {
    Name name(text);
    name.ifMissing = ifMissing;
    return name;
}
// A text by reference that the member writes but does not read.
[[nodiscard]] constexpr Name Out(Name name) {
    name.isOutput = true;
    return name;
}
using Names = std::initializer_list<Name>;

// Selects the non-const one of a pair of overloads.
template <typename R, typename B, typename... A>
[[nodiscard]] constexpr auto Changing(R (B::*function)(A...)) {
    return function;
}

template <typename P>
using Plain = std::remove_cv_t<std::remove_pointer_t<std::remove_cvref_t<P>>>;

template <typename T>
inline constexpr bool kIsText =
    std::is_same_v<T, std::string> || std::is_same_v<T, std::string_view>;

template <typename P>
inline constexpr bool kIsObject =
    std::is_class_v<Plain<P>> && !kIsText<Plain<P>> && !std::is_same_v<Plain<P>, Value>;

// Written by the called side, or declared by reference in the interface.
template <typename P>
inline constexpr bool kIsByReference =
    std::is_lvalue_reference_v<P> && !kIsObject<P> &&
    (!std::is_const_v<std::remove_reference_t<P>> || std::is_arithmetic_v<std::remove_cvref_t<P>>);

template <typename P>
[[nodiscard]] Type TypeOf() {
    using T = Plain<P>;
    if constexpr (std::is_void_v<T>)
        return {};
    else if constexpr (std::is_same_v<T, Value>)
        return {Kind::Variant};
    else if constexpr (kIsObject<P>)
        return {Kind::Object, nullptr, &TableOf<T>};
    else if constexpr (kIsText<T>)
        return {Kind::Text};
    else if constexpr (std::is_enum_v<T>)
        return {Kind::Enumeration, &EnumerationOf<T>()};
    else if constexpr (std::is_same_v<T, bool>)
        return {Kind::Boolean};
    else if constexpr (std::is_same_v<T, qx::Byte>)
        return {Kind::Byte};
    else if constexpr (std::is_same_v<T, qx::Integer>)
        return {Kind::Integer};
    else if constexpr (std::is_same_v<T, qx::Long>)
        return {Kind::Long};
    else {
        static_assert(std::is_same_v<T, qx::Single>, "a type that hosts do not know");
        return {Kind::Single};
    }
}

template <typename P>
[[nodiscard]] Value ValueOf(const P& native, bool isBlock = false) {
    using T = Plain<P>;
    if constexpr (kIsText<T>)
        return isBlock ? TextOfBytes(native) : Utf16FromUtf8(native);
    else if constexpr (std::is_enum_v<T>)
        return static_cast<qx::Long>(native);
    else
        return native;
}

// One argument of a call: converted from its value, held during the call, and written back.
template <typename P>
class Argument {
public:
    Argument(const Value& value, const Parameter& parameter)
        : m_isBlock(parameter.type.kind == Kind::Block), m_held(Taken(value, parameter)) {}

    [[nodiscard]] decltype(auto) Native() {
        if constexpr (kIsObject<P> && !std::is_pointer_v<std::remove_cvref_t<P>>)
            return *m_held;
        else
            return (m_held);
    }
    void Answer(Value& value) const {
        if constexpr (kIsByReference<P>)
            value = ValueOf(m_held, m_isBlock);
    }

private:
    using T = Plain<P>;
    using Held =
        std::conditional_t<kIsObject<P>, T*, std::conditional_t<kIsText<T>, std::string, T>>;

    [[nodiscard]] Held Taken(const Value& value, const Parameter& parameter) const {
        if constexpr (kIsObject<P>) {
            const auto& object = std::get<ObjectRef>(value);
            if (!std::is_pointer_v<std::remove_cvref_t<P>> && object == nullptr)
                throw Error(ErrorNumber::ObjectRequired,
                            std::string(parameter.name) + ": needs an object, not Nothing");
            return object == nullptr ? nullptr : static_cast<T*>(object->Native());
        } else if constexpr (kIsText<T>) {
            const auto& text = std::get<std::u16string>(value);
            return m_isBlock ? BytesOf(text, parameter.name) : Utf8FromUtf16(text);
        } else if constexpr (std::is_enum_v<T>) {
            // the underlying type may be smaller than Long, the type that hosts see
            const auto number = std::get<qx::Long>(value);
            if (!std::in_range<std::underlying_type_t<T>>(number))
                throw Error(ErrorNumber::Overflow, std::string(parameter.name) + ": " +
                                                       std::to_string(number) + " is out of range");
            return static_cast<T>(number);
        } else {
            return std::get<T>(value);
        }
    }

    bool m_isBlock;
    Held m_held;
};

// The properties that the C++ type of a parameter shows.
struct ParameterShape {
    Type type;
    bool byReference;
};

class TableBuilder {
public:
    [[nodiscard]] Class Built() { return std::move(m_class); }

protected:
    using Shapes = std::initializer_list<ParameterShape>;

    TableBuilder(std::string_view name, Look look, std::string_view clsid, std::string_view iid,
                 std::string_view eventsIid);

    void AddMember(std::string_view name, Long id, MemberKind kind, Shapes shapes, Names names,
                   const Type& result, MemberCall call);
    void AddEvent(std::string_view name, Long id, Shapes shapes, Names names, EventConnect connect);
    void AddService(std::string_view name, Long id, const Type& type, MemberCall call);
    void AddServiceGetter(std::string_view name, Long id, const Type& type);

    Class m_class;
};

template <typename T>
class ClassBuilder : public TableBuilder {
public:
    ClassBuilder(std::string_view name, Look look, std::string_view clsid, std::string_view iid,
                 std::string_view eventsIid = {})
        : TableBuilder(name, look, clsid, iid, eventsIid) {
        if constexpr (std::is_constructible_v<T, const Platform&>)
            CreatedBy([](const Environment& environment) {
                return std::make_shared<T>(environment.platform);
            });
        else if constexpr (std::is_default_constructible_v<T>)
            CreatedBy([](const Environment&) { return std::make_shared<T>(); });
    }

    ClassBuilder& CreatedBy(std::function<std::shared_ptr<T>(const Environment&)> create) {
        m_class.create = std::move(create);
        return *this;
    }

    template <typename Function>
    ClassBuilder& Method(std::string_view name, Long id, Function function, Names names = {}) {
        return Add(name, id, MemberKind::Method, function, names);
    }

    // A property that can be read, and set if a setter is given.
    template <typename Getter>
    ClassBuilder& Property(std::string_view name, Long id, Getter get, Names names = {}) {
        return Add(name, id, MemberKind::Get, get, names);
    }
    template <typename Getter, typename B, typename V>
    ClassBuilder& Property(std::string_view name, Long id, Getter get, void (B::*set)(V)) {
        Add(name, id, MemberKind::Get, get, {});
        return SetOnly(name, id, set);
    }
    // A write-only property; the last name is that of the new value.
    template <typename Setter>
    ClassBuilder& SetOnly(std::string_view name, Long id, Setter set, Names names = {"vNewValue"}) {
        return Add(name, id, MemberKind::Put, set, names);
    }

    // An object that belongs to this one; setting the property copies the new object into it.
    template <typename B, typename P>
    ClassBuilder& Part(std::string_view name, Long id, P& (B::*get)(), void (B::*set)(const P&)) {
        Add(name, id, MemberKind::Get, get, {});
        return Add(name, id, MemberKind::PutObject, set, {"oNewValue"});
    }

    // A write-only shared service, kept alive once set.
    template <typename B, typename S>
    ClassBuilder& Service(std::string_view name, Long id, void (B::*set)(S*)) {
        AddService(name, id, TypeOf<S*>(),
                   [set](const Member& member, Object& self, std::span<Value> arguments) -> Value {
                       const auto& service = std::get<ObjectRef>(arguments[0]);
                       (NativeOf(self).*
                        set)(service == nullptr ? nullptr : static_cast<S*>(service->Native()));
                       self.Keep(member.id, service);
                       return {};
                   });
        return *this;
    }
    // A shared service that can also be read.
    template <typename B, typename S>
    ClassBuilder& ReadableService(std::string_view name, Long id, void (B::*set)(S*)) {
        AddServiceGetter(name, id, TypeOf<S*>());
        return this->Service(name, id, set);
    }

    template <typename B, typename... A>
    ClassBuilder& Event(std::string_view name, Long id, qx::Event<A...> B::*event,
                        Names names = {}) {
        AddEvent(name, id, {ParameterShape{TypeOf<A>(), kIsByReference<A>}...}, names,
                 [event](const EventMember& member, Object& source, EventSink sink) {
                     return (NativeOf(source).*event)
                         .Subscribe([sink = std::move(sink), &member](A... arguments) {
                             RaiseTo<A...>(sink, member.parameters, std::index_sequence_for<A...>(),
                                           arguments...);
                         });
                 });
        return *this;
    }

private:
    static T& NativeOf(Object& object) { return *static_cast<T*>(object.Native()); }

    template <typename R, typename B, typename... A>
    ClassBuilder& Add(std::string_view name, Long id, MemberKind kind, R (B::*function)(A...),
                      Names names) {
        return AddCall<R, A...>(name, id, kind, names, [function](T& self, A... arguments) -> R {
            return (self.*function)(std::forward<A>(arguments)...);
        });
    }
    template <typename R, typename B, typename... A>
    ClassBuilder& Add(std::string_view name, Long id, MemberKind kind, R (B::*function)(A...) const,
                      Names names) {
        return AddCall<R, A...>(name, id, kind, names, [function](T& self, A... arguments) -> R {
            return (self.*function)(std::forward<A>(arguments)...);
        });
    }
    template <typename R, typename... A>
    ClassBuilder& Add(std::string_view name, Long id, MemberKind kind, R (*function)(T&, A...),
                      Names names) {
        return AddCall<R, A...>(name, id, kind, names, function);
    }

    template <typename R, typename... A, typename Function>
    ClassBuilder& AddCall(std::string_view name, Long id, MemberKind kind, Names names,
                          Function function) {
        AddMember(name, id, kind, {ParameterShape{TypeOf<A>(), kIsByReference<A>}...}, names,
                  TypeOf<R>(),
                  [function](const Member& member, Object& self, std::span<Value> arguments) {
                      return Called<R, A...>(self, function, member.parameters, arguments,
                                             std::index_sequence_for<A...>());
                  });
        return *this;
    }

    template <typename R, typename... A, typename Function, std::size_t... I>
    static Value Called(Object& self, const Function& function,
                        [[maybe_unused]] const std::vector<Parameter>& parameters,
                        [[maybe_unused]] std::span<Value> arguments, std::index_sequence<I...>) {
        [[maybe_unused]] std::tuple<Argument<A>...> held{
            Argument<A>(arguments[I], parameters[I])...};
        Value result;
        if constexpr (std::is_void_v<R>)
            function(NativeOf(self), std::get<I>(held).Native()...);
        else
            result = ResultOf<R>(self, function(NativeOf(self), std::get<I>(held).Native()...));
        (std::get<I>(held).Answer(arguments[I]), ...);
        return result;
    }

    template <typename R>
    static Value ResultOf(Object& self, R result) {
        if constexpr (kIsObject<R>) {
            const Plain<R>* part;
            if constexpr (std::is_pointer_v<R>)
                part = result;
            else
                part = &result;
            return part == nullptr ? ObjectRef()
                                   : self.Part(TableOf<Plain<R>>(), const_cast<Plain<R>*>(part));
        } else {
            return ValueOf(result);
        }
    }

    template <typename... A, std::size_t... I>
    static void RaiseTo(const EventSink& sink,
                        [[maybe_unused]] const std::vector<Parameter>& parameters,
                        std::index_sequence<I...>,
                        std::conditional_t<std::is_reference_v<A>, A, A&>... arguments) {
        std::array<Value, sizeof...(A)> values{ValueOf(arguments)...};
        try {
            sink(values);
        } catch (...) { // a failed sink has given no answer
            return;
        }
        (TakeAnswer<A>(arguments, values[I], parameters[I]), ...);
    }

    // Hosts may answer with another type; an answer that cannot be converted is ignored.
    template <typename P, typename Native>
    static void TakeAnswer([[maybe_unused]] Native& native, [[maybe_unused]] const Value& value,
                           [[maybe_unused]] const Parameter& parameter) {
        if constexpr (kIsByReference<P>) {
            try {
                Argument<P> answer(Coerced(value, parameter.type, parameter.name), parameter);
                native = answer.Native();
            } catch (const Error&) {
            }
        }
    }
};

} // namespace qx::com
