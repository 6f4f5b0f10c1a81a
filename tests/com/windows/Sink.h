// A host's sink that passes each event to a function of the test.
#pragma once

#include "com/windows/Client.h"

#include <algorithm>
#include <functional>
#include <vector>

namespace qx::test {

using namespace com;

struct Heard {
    DISPID id;
    std::vector<VARIANT>& arguments; // in order
};
using Handler = std::function<HRESULT(Heard)>;

class Sink : public IDispatch {
public:
    explicit Sink(Handler handler) : m_handler(std::move(handler)) {}
    virtual ~Sink() = default;
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
        *out = nullptr;
        if (!IsEqualIID(iid, IID_IUnknown) && !IsEqualIID(iid, IID_IDispatch))
            return E_NOINTERFACE;
        return HandOut(this, out);
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --m_references;
        if (left == 0)
            delete this;
        return left;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* given, VARIANT*,
                                     EXCEPINFO* exception, UINT*) override {
        std::vector<VARIANT> arguments(given->rgvarg, given->rgvarg + given->cArgs);
        std::reverse(arguments.begin(), arguments.end());
        const HRESULT result = m_handler({id, arguments});
        if (result == DISP_E_EXCEPTION) {
            exception->scode = HRESULT(0x800A0005);
            exception->bstrDescription = SysAllocString(L"the host's own fault");
        }
        return result;
    }

private:
    Handler m_handler;
    ULONG m_references = 1;
};

// Calls the handler for the control's events from here on.
inline void Listen(IDispatch* control, Handler handler) {
    const auto points =
        ComPtr<IUnknown>(control).As<IConnectionPointContainer>(IID_IConnectionPointContainer);
    ComPtr<IEnumConnectionPoints> all;
    ASSERT_EQ(points->EnumConnectionPoints(all.Out()), S_OK);
    ComPtr<IConnectionPoint> point;
    ASSERT_EQ(all->Next(1, point.Out(), nullptr), S_OK);
    DWORD cookie = 0;
    const auto sink = ComPtr<Sink>::Attach(new Sink(std::move(handler)));
    ASSERT_EQ(point->Advise(sink.Get(), &cookie), S_OK);
}

} // namespace qx::test
