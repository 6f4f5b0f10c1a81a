// Host: works like a script with the library: creates objects and uses members by name.
#pragma once

#include "com/Call.h"
#include "com/Environment.h"
#include "com/Library.h"
#include "qxcontrols/common/Utf.h"
#include "qxcontrols/keys/frmSequencer.h"
#include "qxcontrols/platform/RegistryAccess.h"
#include "qxcontrols/pos/frmPOSProgrammer.h"
#include "support/TestKeyboard.h"

#include <algorithm>
#include <concepts>
#include <functional>
#include <string>
#include <vector>

namespace qx::test {

using com::ErrorNumber;
using com::ObjectRef;
using com::Value;

// Whole numbers in the script's type, texts as UTF-16.
inline Value Script(bool flag) {
    return flag;
}
inline Value Script(std::same_as<int> auto number) {
    return Long{number};
}
inline Value Script(const char* text) {
    return Utf16FromUtf8(text);
}
inline Value Script(const std::string& text) {
    return Utf16FromUtf8(text);
}
inline Value Script(Value value) {
    return value;
}

inline const com::Class& ClassNamed(std::string_view name) {
    const auto classes = com::Classes();
    const auto found = std::ranges::find(classes, name, &com::Class::name);
    if (found == classes.end())
        throw std::invalid_argument("no class " + std::string(name));
    return **found;
}

inline const com::Member& MemberNamed(const ObjectRef& object, std::string_view name,
                                      com::Use use) {
    const com::Class& type = object->ClassOf();
    const auto id = com::IdOf(type, Utf16FromUtf8(name));
    const com::Member* const member = id ? com::Find(type, *id, use) : nullptr;
    if (member == nullptr)
        throw com::Error(ErrorNumber::NoSuchMember,
                         std::string(type.name) + "." + std::string(name));
    return *member;
}

// Calls or reads a member; by-reference results come back in `arguments`.
inline Value CallWith(const ObjectRef& object, std::string_view name,
                      std::vector<Value>& arguments) {
    return com::Call(*object, MemberNamed(object, name, com::Use::Call), arguments);
}
template <typename... A>
Value Do(const ObjectRef& object, std::string_view name, const A&... arguments) {
    std::vector<Value> values{Script(arguments)...};
    return CallWith(object, name, values);
}
template <typename V>
void Let(const ObjectRef& object, std::string_view name, const V& value) {
    std::vector<Value> values{Script(value)};
    com::Call(*object, MemberNamed(object, name, com::Use::Set), values);
}

inline std::string TextIn(const Value& value) {
    return Utf8FromUtf16(std::get<std::u16string>(value));
}
inline ObjectRef ObjectIn(const Value& value) {
    return std::get<ObjectRef>(value);
}
template <typename... A>
ObjectRef ObjectOf(const ObjectRef& object, std::string_view name, const A&... arguments) {
    return ObjectIn(Do(object, name, arguments...));
}

template <typename T>
T& Native(const ObjectRef& object) {
    EXPECT_EQ(&object->ClassOf(), &com::TableOf<T>());
    return *static_cast<T*>(object->Native());
}

// The number of the error that the action throws; 0 if none.
template <typename Action>
int ErrorOf(const Action& action) {
    try {
        action();
    } catch (const com::Error& error) {
        return static_cast<int>(error.Number());
    }
    return 0;
}
inline int Of(ErrorNumber number) {
    return static_cast<int>(number);
}

class Host : private ModalForms {
public:
    explicit Host(ConfigDriver& driver) : m_environment{driver, registry, {}} {
        m_environment.platform.messageBoxes = &boxes;
        m_environment.platform.modalForms = this;
    }

    [[nodiscard]] ObjectRef New(std::string_view name) const {
        return com::Object::Create(ClassNamed(name), m_environment);
    }

    MemoryRegistry registry;
    NotedBoxes boxes;
    // The user's actions while a form is open.
    std::function<void(frmSequencer&)> inSequencer = [](frmSequencer&) {};
    std::function<void(frmPOSProgrammer&)> inProgrammer = [](frmPOSProgrammer&) {};

private:
    void ShowModal(frmSequencer& form) override { inSequencer(form); }
    void ShowModal(frmPOSProgrammer& form) override { inProgrammer(form); }

    com::Environment m_environment;
};

} // namespace qx::test
