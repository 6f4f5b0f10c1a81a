#include "com/Object.h"

namespace qx::com {

Object::InUse::InUse(Object& object) : m_object(object.shared_from_this()) {
    ++m_object->m_uses;
}

Object::InUse::~InUse() {
    if (--m_object->m_uses == 0)
        std::vector<ObjectRef>().swap(m_object->m_replaced);
}

ObjectRef Object::Create(const Class& type, const Environment& environment) {
    return std::make_shared<Object>(type, type.create(environment));
}

ObjectRef Object::Part(const Class& type, void* native) {
    std::erase_if(m_parts, [](const auto& part) { return part.second.expired(); });
    auto& known = m_parts[{&type, native}];
    auto part = known.lock();
    if (part == nullptr) {
        part = std::make_shared<Object>(type, std::shared_ptr<void>(shared_from_this(), native));
        known = part;
    }
    return part;
}

void Object::Keep(Long id, ObjectRef service) {
    std::swap(m_kept[id], service);
    if (m_uses > 0)
        m_replaced.push_back(std::move(service));
}

ObjectRef Object::Kept(Long id) const {
    const auto kept = m_kept.find(id);
    return kept == m_kept.end() ? nullptr : kept->second;
}

} // namespace qx::com
