// Object: one object of the control library as a host holds it.
//
// It keeps what it needs alive: an object that belongs to another (a track to its control) keeps
// that one, and one that was handed a shared service keeps the service. Whoever runs something on
// Native that can raise an event has an Object::InUse meanwhile: a sink may release what is used.
#pragma once

#include "com/Class.h"

#include <map>
#include <memory>
#include <utility>
#include <vector>

namespace qx::com {

class Object : public std::enable_shared_from_this<Object> {
public:
    // Keeps an object, and the services that it has at the time, while code of its own runs.
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
    // The library's own object, of the type whose table ClassOf is.
    [[nodiscard]] void* Native() const { return m_native.get(); }

    // The object that belongs to this one; always the same one while a host holds it.
    [[nodiscard]] ObjectRef Part(const Class& type, void* native);

    // Keeps a service that the property with this identifier was set to. The one before it goes
    // once the object is not in use: an open editor still works with it.
    void Keep(Long id, ObjectRef service);
    [[nodiscard]] ObjectRef Kept(Long id) const;

private:
    const Class& m_class;
    std::map<Long, ObjectRef> m_kept; // released after the object that uses them
    std::shared_ptr<void> m_native;
    std::map<std::pair<const Class*, void*>, std::weak_ptr<Object>> m_parts;
    int m_uses = 0;
    std::vector<ObjectRef> m_replaced; // services, until the object is not in use
};

} // namespace qx::com
