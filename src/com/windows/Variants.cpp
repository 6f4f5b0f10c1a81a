#include "com/windows/Variants.h"

#include "com/Class.h"
#include "com/windows/ComObject.h"

#include <cstring>
#include <optional>

namespace qx::com {
namespace {

[[noreturn]] void Refuse(const char* why) {
    throw Error(ErrorNumber::TypeMismatch, why);
}

// The size in bytes of a referenced value of the type; 0 for types that no member accepts.
std::size_t SizeOf(VARTYPE type) {
    switch (type) {
    case VT_I1:
    case VT_UI1:
        return 1;
    case VT_I2:
    case VT_UI2:
    case VT_BOOL:
        return 2;
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_R4:
    case VT_ERROR:
        return 4;
    case VT_I8:
    case VT_UI8:
    case VT_R8:
    case VT_CY:
    case VT_DATE:
        return 8;
    case VT_BSTR:
    case VT_DISPATCH:
    case VT_UNKNOWN:
        return sizeof(void*);
    default:
        return 0;
    }
}

constexpr int kMostReferences = 8; // of variants to variants

// The innermost variant, which may itself be a reference to a plain type.
const VARIANT& Innermost(const VARIANT& given) {
    const VARIANT* variant = &given;
    for (int i = 0; V_VT(variant) == (VT_BYREF | VT_VARIANT); ++i) {
        variant = V_VARIANTREF(variant);
        if (variant == nullptr)
            Refuse("a reference to nothing");
        if (i == kMostReferences)
            Refuse("too many references");
    }
    return *variant;
}

bool IsNumber(const Type& type) {
    switch (type.kind) {
    case Kind::Boolean:
    case Kind::Byte:
    case Kind::Integer:
    case Kind::Long:
    case Kind::Single:
    case Kind::Enumeration:
        return true;
    default:
        return false;
    }
}

bool IsText(const Type& type) {
    return type.kind == Kind::Text || type.kind == Kind::Block;
}

// The system's own conversion; throws Error if there is none.
VARIANT Converted(const VARIANT& plain, VARTYPE type, LCID locale) {
    VARIANT converted;
    VariantInit(&converted);
    VARIANT source = plain; // only read
    const HRESULT result = VariantChangeTypeEx(&converted, &source, locale, 0, type);
    if (result == DISP_E_OVERFLOW)
        throw Error(ErrorNumber::Overflow, "does not fit");
    if (result == E_OUTOFMEMORY)
        throw std::bad_alloc();
    if (FAILED(result))
        Refuse("cannot be converted");
    return converted;
}

Value AsText(const VARIANT& plain, LCID locale) {
    OwnedVariant text(Converted(plain, VT_BSTR, locale));
    return std::u16string(TextOf(V_BSTR(&text.Get())));
}

Value AsNumber(const VARIANT& plain, LCID locale) {
    return V_R8(&OwnedVariant(Converted(plain, VT_R8, locale)).Get());
}

Value FromText(const VARIANT& plain, const Type& wanted, LCID locale) {
    double number = 0;
    if (IsNumber(wanted) && SUCCEEDED(VarR8FromStr(V_BSTR(&plain), locale, 0, &number)))
        return number;
    return std::u16string(TextOf(V_BSTR(&plain)));
}

Value FromObject(const VARIANT& plain, const Type& wanted, LCID locale) {
    IUnknown* const given = V_UNKNOWN(&plain);
    if (given == nullptr)
        return ObjectRef();
    if (ObjectRef own = ObjectBehind(given))
        return own;
    if (V_VT(&plain) == VT_DISPATCH && IsNumber(wanted))
        return AsNumber(plain, locale);
    if (V_VT(&plain) == VT_DISPATCH && IsText(wanted))
        return AsText(plain, locale);
    Refuse("not an object of this library");
}

template <typename... Ts>
struct Overloaded : Ts... {
    using Ts::operator()...;
};
template <typename... Ts>
Overloaded(Ts...) -> Overloaded<Ts...>;

} // namespace

VARIANT Followed(const VARIANT& given) {
    const VARIANT& inner = Innermost(given);
    if (!V_ISBYREF(&inner))
        return inner;
    const void* const target = V_BYREF(&inner);
    if (target == nullptr)
        Refuse("a reference to nothing");
    VARIANT plain;
    VariantInit(&plain);
    const auto type = static_cast<VARTYPE>(V_VT(&inner) & ~VT_BYREF);
    if (type == VT_DECIMAL) {
        V_DECIMAL(&plain) = *static_cast<const DECIMAL*>(target);
    } else {
        const std::size_t size = SizeOf(type);
        if (size == 0)
            Refuse("a value of an unsupported type");
        std::memcpy(&V_I8(&plain), target, size);
    }
    V_VT(&plain) = type;
    return plain;
}

Value ValueFrom(const VARIANT& given, const Type& wanted, LCID locale) {
    const VARIANT plain = Followed(given);
    switch (V_VT(&plain)) {
    case VT_EMPTY:
        return wanted.kind == Kind::Object ? Value(ObjectRef()) : Value();
    case VT_NULL: // some hosts pass it for Nothing
        if (wanted.kind == Kind::Object)
            return ObjectRef();
        throw Error(ErrorNumber::InvalidUseOfNull, "invalid use of Null");
    case VT_ERROR:
        if (V_ERROR(&plain) == DISP_E_PARAMNOTFOUND)
            return Missing();
        break;
    case VT_BOOL:
        return V_BOOL(&plain) != VARIANT_FALSE;
    case VT_I1:
        return static_cast<Integer>(static_cast<signed char>(V_I1(&plain)));
    case VT_UI1:
        return static_cast<Byte>(V_UI1(&plain));
    case VT_I2:
        return static_cast<Integer>(V_I2(&plain));
    case VT_UI2:
        return static_cast<Long>(V_UI2(&plain));
    case VT_I4:
    case VT_INT:
        return static_cast<Long>(V_I4(&plain));
    case VT_UI4:
    case VT_UINT:
    case VT_I8:
    case VT_UI8:
    case VT_R4:
    case VT_R8:
    case VT_CY:
    case VT_DATE:
    case VT_DECIMAL:
        return IsText(wanted) ? AsText(plain, locale) : AsNumber(plain, locale);
    case VT_BSTR:
        return FromText(plain, wanted, locale);
    case VT_DISPATCH:
    case VT_UNKNOWN:
        return FromObject(plain, wanted, locale);
    default:
        break;
    }
    Refuse("a value of an unsupported type");
}

Value OutputFrom(const VARIANT& given, const Type& wanted, LCID locale) {
    try {
        return ValueFrom(given, wanted, locale);
    } catch (const Error&) {
        if (V_ISBYREF(&Innermost(given)))
            throw;
        return {};
    }
}

VARIANT VariantFrom(const Value& value) {
    VARIANT variant;
    VariantInit(&variant);
    std::visit(Overloaded{
                   [](std::monostate) {},
                   [&](Missing) {
                       V_VT(&variant) = VT_ERROR;
                       V_ERROR(&variant) = DISP_E_PARAMNOTFOUND;
                   },
                   [&](bool flag) {
                       V_VT(&variant) = VT_BOOL;
                       V_BOOL(&variant) = flag ? VARIANT_TRUE : VARIANT_FALSE;
                   },
                   [&](Byte number) {
                       V_VT(&variant) = VT_UI1;
                       V_UI1(&variant) = number;
                   },
                   [&](Integer number) {
                       V_VT(&variant) = VT_I2;
                       V_I2(&variant) = number;
                   },
                   [&](Long number) {
                       V_VT(&variant) = VT_I4;
                       V_I4(&variant) = number;
                   },
                   [&](Single number) {
                       V_VT(&variant) = VT_R4;
                       V_R4(&variant) = number;
                   },
                   [&](double number) {
                       V_VT(&variant) = VT_R8;
                       V_R8(&variant) = number;
                   },
                   [&](const std::u16string& text) {
                       V_BSTR(&variant) = NewBstr(text);
                       V_VT(&variant) = VT_BSTR;
                   },
                   [&](const ObjectRef& object) {
                       V_DISPATCH(&variant) =
                           object == nullptr ? nullptr : DispatchOf(object).Detach();
                       V_VT(&variant) = VT_DISPATCH;
                   },
               },
               value);
    return variant;
}

void Answer(const VARIANT& given, const Value& value, LCID locale) {
    if (!V_ISBYREF(&given))
        return;
    OwnedVariant answer(VariantFrom(value));
    // A variant that is reached by reference can hold any type, unless it is itself a reference to
    // a typed variable.
    const VARIANT& inner = Innermost(given);
    if (!V_ISBYREF(&inner)) {
        auto& target = const_cast<VARIANT&>(inner);
        VariantClear(&target);
        target = answer.Detach();
        return;
    }
    const auto type = static_cast<VARTYPE>(V_VT(&inner) & ~VT_BYREF);
    OwnedVariant fitting(Converted(answer.Get(), type, locale));
    void* const target = V_BYREF(&inner);
    if (type == VT_DECIMAL) {
        *static_cast<DECIMAL*>(target) = V_DECIMAL(&fitting.Get());
        return;
    }
    VARIANT earlier = Followed(inner);
    std::memcpy(target, &V_I8(&fitting.Get()), SizeOf(type));
    (void)fitting.Detach(); // owned by the host now
    VariantClear(&earlier);
}

} // namespace qx::com
