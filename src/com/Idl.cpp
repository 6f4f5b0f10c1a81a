#include "com/Idl.h"

#include "com/Class.h"
#include "com/Library.h"

#include <sstream>
#include <string_view>

namespace qx::com {
namespace {

// Declarations that the interface compiler needs first; they map these names to the automation
// types and add nothing to the library.
constexpr std::string_view kPrelude =
    "typedef short VARIANT_BOOL;\n"
    "typedef wchar_t* BSTR;\n"
    "typedef struct tagVARIANT { long unused; } VARIANT;\n"
    "[object, uuid(00000000-0000-0000-C000-000000000046)] interface IUnknown {}\n"
    "[object, uuid(00020400-0000-0000-C000-000000000046)] interface IDispatch : IUnknown {}\n";

// "{...}" without its braces, as the interface compiler expects it.
std::string_view Uuid(std::string_view guid) {
    return guid.substr(1, guid.size() - 2);
}

std::string TypeName(const Type& type) {
    switch (type.kind) {
    case Kind::None:
        return "void";
    case Kind::Boolean:
        return "VARIANT_BOOL";
    case Kind::Byte:
        return "unsigned char";
    case Kind::Integer:
        return "short";
    case Kind::Long:
        return "long";
    case Kind::Single:
        return "float";
    case Kind::Text:
    case Kind::Block:
        return "BSTR";
    case Kind::Variant:
        return "VARIANT";
    case Kind::Enumeration:
        return std::string(type.enumeration->name);
    case Kind::Object:
        return "_" + std::string(type.object().name) + "*";
    }
    throw std::logic_error("a kind of value without a name");
}

std::string Attributes(const Parameter& parameter) {
    std::string attributes = parameter.byReference ? "in, out" : "in";
    if (parameter.ifMissing)
        attributes += ", defaultvalue(" + std::to_string(*parameter.ifMissing) + ")";
    return attributes;
}

void WriteParameters(std::ostream& out, const std::vector<Parameter>& parameters) {
    std::string_view separator;
    for (const Parameter& parameter : parameters) {
        out << separator << "[" << Attributes(parameter) << "] " << TypeName(parameter.type)
            << (parameter.byReference ? "* " : " ") << parameter.name;
        separator = ", ";
    }
}

std::string_view Attribute(MemberKind kind) {
    switch (kind) {
    case MemberKind::Method:
        return "";
    case MemberKind::Get:
        return ", propget";
    case MemberKind::Put:
        return ", propput";
    case MemberKind::PutObject:
        return ", propputref";
    }
    throw std::logic_error("a kind of member without an attribute");
}

void WriteInterface(std::ostream& out, const Class& type) {
    out << "  [uuid(" << Uuid(type.iid) << "), hidden]\n  dispinterface _" << type.name
        << " {\n  properties:\n  methods:\n";
    for (const Member& member : type.members) {
        out << "    [id(" << member.id << ")" << Attribute(member.kind) << "] "
            << TypeName(member.result) << " " << member.name << "(";
        WriteParameters(out, member.parameters);
        out << ");\n";
    }
    out << "  };\n";
    if (type.eventsIid.empty())
        return;
    out << "  [uuid(" << Uuid(type.eventsIid) << "), hidden]\n  dispinterface __" << type.name
        << " {\n  properties:\n  methods:\n";
    for (const EventMember& event : type.events) {
        out << "    [id(" << event.id << ")] void " << event.name << "(";
        WriteParameters(out, event.parameters);
        out << ");\n";
    }
    out << "  };\n";
}

void WriteEnumeration(std::ostream& out, const Enumeration& enumeration) {
    out << "  typedef [uuid(" << Uuid(enumeration.iid) << ")] enum " << enumeration.name << " {\n";
    for (const EnumerationValue& value : enumeration.values)
        out << "    " << value.name << " = " << value.value << ",\n";
    out << "  } " << enumeration.name << ";\n";
}

} // namespace

std::string IdlText() {
    std::ostringstream out;
    out << kPrelude << "[uuid(" << Uuid(kLibraryId) << "), version(" << kLibraryVersion
        << "), helpstring(\"" << kLibraryTitle << "\")]\nlibrary " << kLibraryName
        << " {\n  importlib(\"stdole2.tlb\");\n";
    for (const Class* type : Classes())
        out << "  dispinterface _" << type->name << ";\n";
    for (const Enumeration* enumeration : Enumerations())
        WriteEnumeration(out, *enumeration);
    for (const Class* type : Classes())
        WriteInterface(out, *type);
    for (const Class* type : Classes()) {
        out << "  [uuid(" << Uuid(type->clsid) << ")"
            << (type->look == Look::None ? "" : ", control") << "]\n  coclass " << type->name
            << " {\n    [default] dispinterface _" << type->name << ";\n";
        if (!type->eventsIid.empty())
            out << "    [default, source] dispinterface __" << type->name << ";\n";
        out << "  };\n";
    }
    out << "};\n";
    return std::move(out).str();
}

} // namespace qx::com
