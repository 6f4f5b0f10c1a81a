#include "com/windows/Members.h"

#include <stdexcept>

namespace qx::test {
namespace {

constexpr GUID kLibrary = {
    0x8D6FFDE2, 0x7BDE, 0x4BBA, {0xA0, 0x43, 0xDE, 0xA5, 0x00, 0xF3, 0xAA, 0x72}};

void Check(HRESULT result, const char* step) {
    if (FAILED(result))
        throw std::runtime_error(std::string(step) + " failed");
}

std::string NameOf(ITypeInfo* info) {
    BSTR name = nullptr;
    Check(info->GetDocumentation(MEMBERID_NIL, &name, nullptr, nullptr, nullptr), "name");
    const std::string text = Narrow(name);
    SysFreeString(name);
    return text;
}

struct Described {
    std::string text;
    VARTYPE variant;
};

Described TypeOf(ITypeInfo* info, const TYPEDESC& type) {
    switch (type.vt) {
    case VT_VOID:
        return {"", VT_EMPTY};
    case VT_BOOL:
        return {"Boolean", VT_BOOL};
    case VT_UI1:
        return {"Byte", VT_UI1};
    case VT_I2:
        return {"Integer", VT_I2};
    case VT_I4:
        return {"Long", VT_I4};
    case VT_R4:
        return {"Single", VT_R4};
    case VT_BSTR:
        return {"String", VT_BSTR};
    case VT_VARIANT:
        return {"Variant", VT_VARIANT};
    case VT_PTR:
        return TypeOf(info, *type.lptdesc);
    case VT_USERDEFINED: {
        ComPtr<ITypeInfo> named;
        Check(info->GetRefTypeInfo(type.hreftype, named.Out()), "type");
        const std::string name = NameOf(named.Get());
        return name.starts_with('_') ? Described{name.substr(1), VT_DISPATCH}
                                     : Described{name, VT_I4};
    }
    default:
        throw std::runtime_error("a type that no member should have: " + std::to_string(type.vt));
    }
}

LibraryMember MemberOf(ITypeInfo* info, const FUNCDESC& function) {
    LibraryMember member;
    member.id = function.memid;
    member.kind = function.invkind;
    member.result = TypeOf(info, function.elemdescFunc.tdesc).text;
    std::vector<BSTR> names(1 + static_cast<std::size_t>(function.cParams));
    UINT count = 0;
    Check(info->GetNames(function.memid, names.data(), static_cast<UINT>(names.size()), &count),
          "names");
    member.name = Narrow(names[0]);
    for (int i = 0; i < function.cParams; ++i) {
        const ELEMDESC& element = function.lprgelemdescParam[i];
        const auto [text, variant] = TypeOf(info, element.tdesc);
        LibraryMember::Parameter parameter{"", text, variant, false, false, ""};
        if (static_cast<UINT>(i) + 1 < count) // a property's new value may be unnamed
            parameter.name = Narrow(names[static_cast<std::size_t>(i) + 1]);
        const USHORT flags = element.paramdesc.wParamFlags;
        if ((flags & PARAMFLAG_FIN) == 0)
            throw std::runtime_error(member.name + ": an argument that hosts cannot hand over");
        parameter.byReference = (flags & PARAMFLAG_FOUT) != 0;
        parameter.isOptional = (flags & PARAMFLAG_FOPT) != 0;
        if ((flags & PARAMFLAG_FHASDEFAULT) != 0)
            parameter.ifMissing =
                std::to_string(V_I4(&element.paramdesc.pparamdescex->varDefaultValue));
        member.parameters.push_back(parameter);
    }
    for (BSTR name : names)
        SysFreeString(name);
    return member;
}

std::vector<LibraryMember> MembersOf(ITypeInfo* info) {
    TYPEATTR* attributes = nullptr;
    Check(info->GetTypeAttr(&attributes), "attributes");
    std::vector<LibraryMember> members;
    for (UINT i = 0; i < attributes->cFuncs; ++i) {
        FUNCDESC* function = nullptr;
        Check(info->GetFuncDesc(i, &function), "function");
        if ((function->wFuncFlags & FUNCFLAG_FRESTRICTED) == 0) // those of IDispatch itself
            members.push_back(MemberOf(info, *function));
        info->ReleaseFuncDesc(function);
    }
    info->ReleaseTypeAttr(attributes);
    return members;
}

LibraryClass ClassOf(ITypeInfo* info, const TYPEATTR& attributes) {
    LibraryClass type;
    type.name = NameOf(info);
    type.clsid = attributes.guid;
    for (UINT i = 0; i < attributes.cImplTypes; ++i) {
        HREFTYPE reference = 0;
        INT flags = 0;
        ComPtr<ITypeInfo> interfaceInfo;
        TYPEATTR* interfaceAttributes = nullptr;
        Check(info->GetRefTypeOfImplType(i, &reference), "interface");
        Check(info->GetImplTypeFlags(i, &flags), "interface");
        Check(info->GetRefTypeInfo(reference, interfaceInfo.Out()), "interface");
        Check(interfaceInfo->GetTypeAttr(&interfaceAttributes), "interface");
        const bool isSource = (flags & IMPLTYPEFLAG_FSOURCE) != 0;
        type.interfaces[NameOf(interfaceInfo.Get())] = interfaceAttributes->guid;
        if (isSource)
            type.eventsIid = interfaceAttributes->guid;
        (isSource ? type.events : type.members) = MembersOf(interfaceInfo.Get());
        interfaceInfo->ReleaseTypeAttr(interfaceAttributes);
    }
    return type;
}

std::map<std::string, LONG> ValuesOf(ITypeInfo* info, const TYPEATTR& attributes) {
    std::map<std::string, LONG> values;
    for (UINT i = 0; i < attributes.cVars; ++i) {
        VARDESC* variable = nullptr;
        BSTR name = nullptr;
        UINT count = 0;
        Check(info->GetVarDesc(i, &variable), "value");
        Check(info->GetNames(variable->memid, &name, 1, &count), "value");
        values[Narrow(name)] = V_I4(variable->lpvarValue);
        SysFreeString(name);
        info->ReleaseVarDesc(variable);
    }
    return values;
}

} // namespace

std::string Narrow(const wchar_t* text) {
    std::string narrow;
    for (; text != nullptr && *text != L'\0'; ++text)
        narrow.push_back(static_cast<char>(*text)); // names are ASCII
    return narrow;
}

std::string GuidText(REFGUID guid) {
    wchar_t text[40];
    StringFromGUID2(guid, text, 40);
    return Narrow(text);
}

Library RegisteredLibrary() {
    ComPtr<ITypeLib> library;
    Check(LoadRegTypeLib(kLibrary, 1, 0, LOCALE_NEUTRAL, library.Out()), "the type library");
    Library found;
    TLIBATTR* libraryAttributes = nullptr;
    Check(library->GetLibAttr(&libraryAttributes), "attributes");
    found.id = libraryAttributes->guid;
    library->ReleaseTLibAttr(libraryAttributes);
    for (UINT i = 0; i < library->GetTypeInfoCount(); ++i) {
        ComPtr<ITypeInfo> info;
        TYPEATTR* attributes = nullptr;
        Check(library->GetTypeInfo(i, info.Out()), "type");
        Check(info->GetTypeAttr(&attributes), "type");
        if (attributes->typekind == TKIND_COCLASS)
            found.classes.push_back(ClassOf(info.Get(), *attributes));
        else if (attributes->typekind == TKIND_ENUM)
            found.enumerations[NameOf(info.Get())] = {attributes->guid,
                                                      ValuesOf(info.Get(), *attributes)};
        info->ReleaseTypeAttr(attributes);
    }
    return found;
}

} // namespace qx::test
