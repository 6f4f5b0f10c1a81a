// Object: one object of the control library as a host holds it.
//
// It keeps the objects it needs alive: a part (such as a track) keeps the control it belongs to,
// and an object with a shared service keeps that service. Code that calls Native and may raise an
// event holds an Object::InUse for that time, because a sink may release the object in use.
#pragma once

#include "com/Class.h"

#include <map>
#include <memory>
#include <utility>
#include <vector>

namespace qx::com {

class Object : public std::enable_shared_from_this<Object> {
public:
    // Keeps an object and its current services alive while its code runs.
    class InUse {
    public:
        explicit InUse(Object& object);
        ~InUse();
        InUse(const InUse&) = delete;
        InUse& operator=(const InUse&) = delete;

    private:
        ObjectRef m_object;
    };

    // A new object of the class.
    [[nodiscard]] static ObjectRef Create(const Class& type, const Environment& environment);

    Object(const Class& type, std::shared_ptr<void> native)
        : m_class(type), m_native(std::move(native)) {}
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;

    [[nodiscard]] const Class& ClassOf() const { return m_class; }
    // The library's own object; its C++ type is the one whose table ClassOf returns.
    [[nodiscard]] void* Native() const { return m_native.get(); }

    // The object for a part of this one; always the same object while a host holds it.
    [[nodiscard]] ObjectRef Part(const Class& type, void* native);

    // Keeps the service that the property with this identifier was set to. The previous one is
    // released once the object is no longer in use: an open editor still works with it.
    void Keep(Long id, ObjectRef service);
    [[nodiscard]] ObjectRef Kept(Long id) const;

private:
    const Class& m_class;
    std::map<Long, ObjectRef> m_kept; // released after the object that uses them
    std::shared_ptr<void> m_native;
    std::map<std::pair<const Class*, void*>, std::weak_ptr<Object>> m_parts;
    int m_uses = 0;
    std::vector<ObjectRef> m_replaced; // earlier services, kept until the object is not in use
};

} // namespace qx::com
