#include "com/Object.h"

namespace qx::com {

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

ObjectRef Object::Kept(Long id) const {
    const auto kept = m_kept.find(id);
    return kept == m_kept.end() ? nullptr : kept->second;
}

} // namespace qx::com
