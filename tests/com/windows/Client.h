// For programs that use the server from outside: starting COM, and calls by name.
#pragma once

#include "com/windows/Com.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace qx::test {

using namespace com;

class ComClient : public testing::Test {
protected:
    static void SetUpTestSuite() { ASSERT_GE(CoInitialize(nullptr), 0); }
    static void TearDownTestSuite() { CoUninitialize(); }
};

inline std::string Hex(HRESULT result) {
    char text[16];
    std::snprintf(text, sizeof(text), "0x%08lX", static_cast<unsigned long>(result));
    return text;
}

inline ComPtr<IDispatch> NewObject(const std::wstring& progId) {
    CLSID clsid{};
    ComPtr<IDispatch> object;
    const HRESULT found = CLSIDFromProgID(progId.c_str(), &clsid);
    const HRESULT created =
        FAILED(found) ? found
                      : CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                                         reinterpret_cast<void**>(object.Out()));
    EXPECT_GE(created, 0) << Hex(created);
    return object;
}

// Whether the server must not be unloaded.
inline bool ServerIsInUse() {
    using CanUnload = HRESULT(STDAPICALLTYPE*)();
    const auto canUnload = reinterpret_cast<CanUnload>(reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleW(L"QXControls.ocx"), "DllCanUnloadNow")));
    return canUnload() != S_OK;
}

// A call with everything a host can pass, and its results.
struct ClientCall {
    HRESULT status = S_OK;
    HRESULT error = S_OK; // the number in the exception, if there was one
    std::wstring text;    // and its description
    UINT wrongArgument = 99;
    VARIANT result{};

    // The result, which must have this type.
    [[nodiscard]] bool Flag() const { return Typed(VT_BOOL) && V_BOOL(&result) == VARIANT_TRUE; }
    [[nodiscard]] SHORT Integer() const { return Typed(VT_I2) ? V_I2(&result) : SHORT{-99}; }
    [[nodiscard]] LONG Long() const { return Typed(VT_I4) ? V_I4(&result) : -99; }
    [[nodiscard]] ComPtr<IDispatch> Object() const { // takes ownership
        return Typed(VT_DISPATCH) ? ComPtr<IDispatch>::Attach(V_DISPATCH(&result)) : nullptr;
    }

private:
    [[nodiscard]] bool Typed(VARTYPE type) const {
        EXPECT_EQ(V_VT(&result), type);
        return V_VT(&result) == type;
    }
};

// The arguments in order; the caller clears them.
inline ClientCall Call(IDispatch* object, DISPID id, WORD flags, std::vector<VARIANT> arguments,
                       std::vector<DISPID> named = {}) {
    std::vector<VARIANT> reversed(arguments.rbegin(), arguments.rend());
    DISPPARAMS given{reversed.data(), named.data(), static_cast<UINT>(reversed.size()),
                     static_cast<UINT>(named.size())};
    EXCEPINFO exception{};
    ClientCall call;
    VariantInit(&call.result);
    call.status = object->Invoke(id, IID_NULL, 0, flags, &given, &call.result, &exception,
                                 &call.wrongArgument);
    call.error = exception.scode;
    if (exception.bstrDescription != nullptr)
        call.text = exception.bstrDescription;
    SysFreeString(exception.bstrSource);
    SysFreeString(exception.bstrDescription);
    SysFreeString(exception.bstrHelpFile);
    return call;
}

inline DISPID IdOf(IDispatch* object, const wchar_t* name) {
    auto* text = const_cast<LPOLESTR>(name);
    DISPID id = DISPID_UNKNOWN;
    EXPECT_EQ(object->GetIDsOfNames(IID_NULL, &text, 1, 0, &id), S_OK);
    return id;
}

inline VARIANT Int(SHORT number) {
    VARIANT variant;
    V_VT(&variant) = VT_I2;
    V_I2(&variant) = number;
    return variant;
}
inline VARIANT LongInt(LONG number) {
    VARIANT variant;
    V_VT(&variant) = VT_I4;
    V_I4(&variant) = number;
    return variant;
}
inline VARIANT Bool(bool flag) {
    VARIANT variant;
    V_VT(&variant) = VT_BOOL;
    V_BOOL(&variant) = flag ? VARIANT_TRUE : VARIANT_FALSE;
    return variant;
}
inline VARIANT Dispatch(IDispatch* object) { // adds no reference
    VARIANT variant;
    V_VT(&variant) = VT_DISPATCH;
    V_DISPATCH(&variant) = object;
    return variant;
}
template <typename T>
VARIANT Reference(VARTYPE type, T* target) {
    VARIANT variant;
    V_VT(&variant) = static_cast<VARTYPE>(VT_BYREF | type);
    V_BYREF(&variant) = target;
    return variant;
}

constexpr WORD kCall = DISPATCH_METHOD | DISPATCH_PROPERTYGET;

} // namespace qx::test
