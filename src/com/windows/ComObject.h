// ComObject: one object of the library as COM sees it. Late and early bound hosts both call it
// through IDispatch.
//
// It belongs to the thread that created it (com/windows/Apartment.h). While a host or the library
// holds it, the same library object is always represented by this one.
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
    // Starts with one reference, the caller's.
    explicit ComObject(ObjectRef object);
    ComObject(const ComObject&) = delete;
    ComObject& operator=(const ComObject&) = delete;
    virtual ~ComObject();

    [[nodiscard]] Object& Library() { return *m_object; }
    [[nodiscard]] Apartment& Home() { return m_apartment; }
    // The library's object; it keeps this one alive while it is held.
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
    // Hook for the interfaces of derived classes; `out` is null on entry, counted on success.
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

// The library object behind a host's object; null if it is not one of ours. Throws Error if it
// belongs to another thread.
[[nodiscard]] ObjectRef ObjectBehind(IUnknown* given);

// The COM object for a library object, created if there is none yet.
[[nodiscard]] ComPtr<IDispatch> DispatchOf(const ObjectRef& object);

} // namespace qx::com
