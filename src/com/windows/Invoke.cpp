#include "com/windows/Invoke.h"

#include "com/Call.h"
#include "com/windows/Server.h"
#include "com/windows/Variants.h"
#include "qxcontrols/common/Utf.h"

#include <algorithm>
#include <array>
#include <optional>

namespace qx::com {
namespace {

constexpr HRESULT kClassicErrors = static_cast<HRESULT>(0x800A0000); // plus the error's number

HRESULT StatusOf(ErrorNumber number) {
    switch (number) {
    case ErrorNumber::TypeMismatch:
        return DISP_E_TYPEMISMATCH;
    case ErrorNumber::NoSuchMember:
        return DISP_E_MEMBERNOTFOUND;
    case ErrorNumber::NamedArgumentNotFound:
        return DISP_E_PARAMNOTFOUND;
    case ErrorNumber::ArgumentNotOptional:
        return DISP_E_PARAMNOTOPTIONAL;
    case ErrorNumber::WrongNumberOfArguments:
        return DISP_E_BADPARAMCOUNT;
    default:
        return DISP_E_EXCEPTION;
    }
}

// For hosts that look for error information besides the status.
void SetErrorInfoOf(const IID& iid, const std::u16string& source, const std::u16string& text) {
    ComPtr<ICreateErrorInfo> error;
    if (FAILED(CreateErrorInfo(error.Out())))
        return;
    error->SetGUID(iid);
    error->SetSource(Wide(source).data());
    error->SetDescription(Wide(text).data());
    if (const auto info = error.As<IErrorInfo>(IID_IErrorInfo))
        SetErrorInfo(0, info.Get());
}

HRESULT Report(const Object& object, const Error& error, EXCEPINFO* exception) {
    const auto source = Utf16FromUtf8("QXControls." + std::string(object.ClassOf().name));
    const auto text = Utf16FromUtf8(error.what());
    SetErrorInfoOf(ServedOf(object.ClassOf()).iid, source, text);
    const HRESULT status = StatusOf(error.Number());
    if (status == DISP_E_EXCEPTION && exception != nullptr) {
        *exception = {};
        exception->bstrSource = NewBstr(source);
        exception->bstrDescription = NewBstr(text);
        exception->scode = kClassicErrors + static_cast<HRESULT>(error.Number());
    }
    return status;
}

bool IsSet(const Member& member) {
    return member.kind == MemberKind::Put || member.kind == MemberKind::PutObject;
}

const Member& MemberMeant(const Class& type, const Invocation& invocation) {
    const bool fSet = (invocation.flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
    const Member* const member = Find(type, invocation.id, fSet ? Use::Set : Use::Call);
    if (member == nullptr ||
        (member->kind == MemberKind::Put && (invocation.flags & DISPATCH_PROPERTYPUT) == 0))
        throw Error(ErrorNumber::NoSuchMember, std::string(type.name) + " has no such member " +
                                                   std::to_string(invocation.id) +
                                                   (fSet ? " to be set" : ""));
    return *member;
}

constexpr std::size_t kNotGiven = static_cast<std::size_t>(-1);

// For each parameter of a member, the index of its argument among the host's variants.
using Places = std::array<std::size_t, kMostParameters>;

Places PlacesOf(const Object& object, const Member& member, const DISPPARAMS& given) {
    const std::size_t count = member.parameters.size();
    RefuseSurplus(object, member, given.cArgs);
    Places places;
    places.fill(kNotGiven);
    const auto place = [&](std::size_t argument, std::size_t variant) {
        if (argument >= count || places[argument] != kNotGiven)
            throw Error(ErrorNumber::NamedArgumentNotFound,
                        FullName(object, member) + ": no such named argument");
        places[argument] = variant;
    };
    // Variants with names come first; the others follow, last argument first. The new value of a
    // property is the last argument, named or not.
    std::size_t first = 0;
    std::size_t named = given.cNamedArgs;
    if (IsSet(member) && given.cArgs > 0 &&
        (named == 0 || given.rgdispidNamedArgs[0] == DISPID_PROPERTYPUT)) {
        place(count - 1, 0);
        first = 1;
        named = std::max<std::size_t>(named, 1);
    }
    for (std::size_t i = first; i < named; ++i)
        place(static_cast<std::size_t>(given.rgdispidNamedArgs[i]), i);
    for (std::size_t i = named; i < given.cArgs; ++i)
        place(given.cArgs - 1 - i, i);
    return places;
}

void TakeValues(const Object& object, const Member& member, const Places& places,
                const Invocation& invocation, std::span<Value> values) {
    for (std::size_t i = 0; i < values.size(); ++i) {
        values[i] = Missing();
        if (places[i] == kNotGiven)
            continue;
        const Parameter& parameter = member.parameters[i];
        try {
            const auto taken = parameter.isOutput ? OutputFrom : ValueFrom;
            values[i] =
                taken(invocation.arguments->rgvarg[places[i]], parameter.type, invocation.locale);
        } catch (const Error& error) {
            throw Error(error.Number(),
                        FullName(object, member) + ": " + std::string(parameter.name) + ": " +
                            error.what(),
                        i);
        }
    }
}

bool AreWellFormed(const Invocation& invocation) {
    const DISPPARAMS* const given = invocation.arguments;
    return given != nullptr && (given->cArgs == 0 || given->rgvarg != nullptr) &&
           (given->cNamedArgs == 0 || given->rgdispidNamedArgs != nullptr) &&
           given->cNamedArgs <= given->cArgs;
}

HRESULT Invoked(Object& object, const Invocation& invocation, Places& places) {
    const Member& member = MemberMeant(object.ClassOf(), invocation);
    places = PlacesOf(object, member, *invocation.arguments);
    std::array<Value, kMostParameters> room;
    const std::span<Value> values(room.data(), member.parameters.size());
    TakeValues(object, member, places, invocation, values);
    const Value result = Call(object, member, values);
    for (std::size_t i = 0; i < values.size(); ++i)
        if (member.parameters[i].byReference && places[i] != kNotGiven)
            Answer(invocation.arguments->rgvarg[places[i]], values[i], invocation.locale);
    if (invocation.result != nullptr)
        *invocation.result = VariantFrom(result);
    return S_OK;
}

} // namespace

HRESULT InvokeMember(Object& object, const Invocation& invocation) {
    return Guarded([&] {
        if (!AreWellFormed(invocation))
            return E_INVALIDARG;
        if (invocation.result != nullptr)
            VariantInit(invocation.result);
        Places places;
        places.fill(kNotGiven);
        try {
            return Invoked(object, invocation, places);
        } catch (const Error& error) {
            const auto argument = error.Argument();
            if (invocation.wrongArgument != nullptr && argument && places[*argument] != kNotGiven)
                *invocation.wrongArgument = static_cast<UINT>(places[*argument]);
            return Report(object, error, invocation.exception);
        }
    });
}

HRESULT FindNames(const Class& type, std::span<LPOLESTR> names, DISPID* ids) {
    const auto textOf = [](LPOLESTR name) {
        return name == nullptr ? std::u16string_view()
                               : std::u16string_view(reinterpret_cast<const char16_t*>(name));
    };
    std::fill_n(ids, names.size(), DISPID_UNKNOWN);
    const auto id = IdOf(type, textOf(names[0]));
    if (!id)
        return DISP_E_UNKNOWNNAME;
    ids[0] = *id;
    const Member* member = Find(type, *id, Use::Call);
    if (member == nullptr)
        member = Find(type, *id, Use::Set);
    HRESULT result = S_OK;
    for (std::size_t i = 1; i < names.size(); ++i) {
        const auto parameter = std::ranges::find_if(member->parameters, [&](const Parameter& p) {
            return IsNamed(p.name, textOf(names[i]));
        });
        if (parameter == member->parameters.end())
            result = DISP_E_UNKNOWNNAME;
        else
            ids[i] = static_cast<DISPID>(parameter - member->parameters.begin());
    }
    return result;
}

} // namespace qx::com
