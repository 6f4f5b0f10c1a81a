#include "com/ClassBuilder.h"

#include <stdexcept>

namespace qx::com {
namespace {

std::vector<Parameter> Parameters(std::initializer_list<ParameterShape> shapes, Names names) {
    if (names.size() != shapes.size() || shapes.size() > kMostParameters)
        throw std::logic_error("a member with other names than arguments, or with too many");
    std::vector<Parameter> parameters;
    parameters.reserve(shapes.size());
    const Name* name = names.begin();
    for (const ParameterShape& shape : shapes) {
        parameters.push_back(
            {name->text, shape.type, shape.byReference, name->ifMissing, name->isOutput});
        if (name->kind)
            parameters.back().type.kind = *name->kind;
        ++name;
    }
    return parameters;
}

} // namespace

TableBuilder::TableBuilder(std::string_view name, Look look, std::string_view clsid,
                           std::string_view iid, std::string_view eventsIid) {
    m_class.name = name;
    m_class.look = look;
    m_class.clsid = clsid;
    m_class.iid = iid;
    m_class.eventsIid = eventsIid;
}

void TableBuilder::AddMember(std::string_view name, Long id, MemberKind kind, Shapes shapes,
                             Names names, const Type& result, MemberCall call) {
    m_class.members.push_back({name, id, kind, Parameters(shapes, names), result, std::move(call)});
}

void TableBuilder::AddEvent(std::string_view name, Long id, Shapes shapes, Names names,
                            EventConnect connect) {
    m_class.events.push_back({name, id, Parameters(shapes, names), std::move(connect)});
}

void TableBuilder::AddService(std::string_view name, Long id, const Type& type, MemberCall call) {
    AddMember(name, id, MemberKind::PutObject, {{type, false}}, {"oNewValue"}, {}, std::move(call));
}

void TableBuilder::AddServiceGetter(std::string_view name, Long id, const Type& type) {
    AddMember(name, id, MemberKind::Get, {}, {}, type,
              [](const Member& member, Object& self, std::span<Value>) -> Value {
                  return self.Kept(member.id);
              });
}

} // namespace qx::com
