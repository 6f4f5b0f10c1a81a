// ComObject: one object of the library as COM sees it. Late and early bound hosts both call through
// IDispatch.
//
// It belongs to the thread that made it (com/windows/Apartment.h). While a host holds it, or the
// library has been handed it, every way to the same object of the library leads to this one.
#pragma once

#include "com/Object.h"
#include "com/windows/Apartment.h"
#include "com/windows/ConnectionPoint.h"
#include "com/windows/Server.h"

namespace qx::com {

class ComObject : public IDispatch,
                  public ISupportErrorInfo,
                  public IProvideClassInfo2,
                  public IConnectionPointContainer {
public:
    // Counted once, for the caller.
    explicit ComObject(ObjectRef object);
    ComObject(const ComObject&) = delete;
    ComObject& operator=(const ComObject&) = delete;
    virtual ~ComObject();

    [[nodiscard]] Object& Library() { return *m_object; }
    [[nodiscard]] Apartment& Home() { return m_apartment; }
    // The library's object, which keeps this one as long as it is held itself.
    [[nodiscard]] ObjectRef Held();

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale,
                                            DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID iid, LCID locale, WORD flags,
                                     DISPPARAMS* arguments, VARIANT* result, EXCEPINFO* exception,
                                     UINT* wrongArgument) override;

    HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID iid) override;

    HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** info) override;
    HRESULT STDMETHODCALLTYPE GetGUID(DWORD kind, GUID* guid) override;

    HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints** points) override;
    HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID iid, IConnectionPoint** point) override;

protected:
    // The interfaces of a class derived from this one; `out` is null beforehand, and counted after.
    virtual HRESULT Query(REFIID /*iid*/, void** /*out*/) { return E_NOINTERFACE; }

    [[nodiscard]] const ServedClass& Served() const { return m_served; }
    [[nodiscard]] ConnectionPoint& Events() { return m_events; }

private:
    InUse m_inUse;
    const ServedClass& m_served;
    ObjectRef m_object;
    ConnectionPoint m_events;
    Apartment m_apartment{*static_cast<IDispatch*>(this)};
};

// The object of the library that the host's object is; null when it is not one of ours. Throws
// Error when it is one of another thread.
[[nodiscard]] ObjectRef ObjectBehind(IUnknown* given);

// The COM object of the library's object, made when there is none.
[[nodiscard]] ComPtr<IDispatch> DispatchOf(const ObjectRef& object);

} // namespace qx::com
