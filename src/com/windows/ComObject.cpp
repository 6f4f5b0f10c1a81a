#include "com/windows/ComObject.h"

#include "com/windows/Enumerator.h"
#include "com/windows/Invoke.h"

#include <mutex>
#include <unordered_map>
#include <vector>

namespace qx::com {
namespace {

// Known to this server only: an object is ours if it answers this interface and is in
// LivingObjects.
constexpr IID kOwnObject = {
    0x5C0F0B2E, 0x8C0B, 0x4B0C, {0x9B, 0x52, 0x6E, 0x0C, 0x61, 0x5F, 0x7D, 0x1A}};

class LivingObjects {
public:
    void Add(const Object& object, ComObject& wrapper) {
        const std::lock_guard lock(m_mutex);
        m_byObject[&object] = &wrapper;
        m_byPointer[static_cast<IDispatch*>(&wrapper)] = &wrapper;
    }
    void Remove(const Object& object, ComObject& wrapper) {
        const std::lock_guard lock(m_mutex);
        m_byObject.erase(&object);
        m_byPointer.erase(static_cast<IDispatch*>(&wrapper));
    }
    ComPtr<ComObject> Of(const Object& object) const {
        const std::lock_guard lock(m_mutex);
        const auto found = m_byObject.find(&object);
        return found == m_byObject.end() ? nullptr : found->second;
    }
    ComPtr<ComObject> At(const void* pointer) const {
        const std::lock_guard lock(m_mutex);
        const auto found = m_byPointer.find(pointer);
        return found == m_byPointer.end() ? nullptr : found->second;
    }

private:
    mutable std::mutex m_mutex;
    std::unordered_map<const Object*, ComObject*> m_byObject;
    std::unordered_map<const void*, ComObject*> m_byPointer;
};

LivingObjects& Living() {
    static auto* const living = new LivingObjects; // see TheMachine
    return *living;
}

} // namespace

ComObject::ComObject(ObjectRef object)
    : m_served(ServedOf(object->ClassOf())), m_object(std::move(object)),
      m_events(*this, m_served) {
    Living().Add(*m_object, *this);
}

ComObject::~ComObject() {
    m_events.Close();
}

ObjectRef ComObject::Held() {
    AddRef();
    return {m_object.get(), [this](Object*) { Release(); }};
}

HRESULT ComObject::QueryInterface(REFIID iid, void** out) {
    if (out == nullptr)
        return E_POINTER;
    *out = nullptr;
    if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IDispatch) ||
        IsEqualIID(iid, m_served.iid) || IsEqualIID(iid, kOwnObject))
        return HandOut(static_cast<IDispatch*>(this), out);
    if (IsEqualIID(iid, IID_ISupportErrorInfo))
        return HandOut(static_cast<ISupportErrorInfo*>(this), out);
    if (IsEqualIID(iid, IID_IProvideClassInfo) || IsEqualIID(iid, IID_IProvideClassInfo2))
        return HandOut(static_cast<IProvideClassInfo2*>(this), out);
    if (IsEqualIID(iid, IID_IConnectionPointContainer) && !m_served.type.eventsIid.empty())
        return HandOut(static_cast<IConnectionPointContainer*>(this), out);
    return Query(iid, out);
}

ULONG ComObject::AddRef() {
    return m_apartment.AddRef();
}

ULONG ComObject::Release() {
    return m_apartment.Release([this] {
        Living().Remove(*m_object, *this); // not handed out from here on
        delete this;
    });
}

HRESULT ComObject::GetTypeInfoCount(UINT* count) {
    if (count == nullptr)
        return E_POINTER;
    *count = 1;
    return S_OK;
}

HRESULT ComObject::GetTypeInfo(UINT index, LCID, ITypeInfo** info) {
    if (info == nullptr)
        return E_POINTER;
    *info = nullptr;
    return index == 0 ? OwnTypeInfo(m_served.iid, info) : DISP_E_BADINDEX;
}

HRESULT ComObject::GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
    if (!IsEqualIID(iid, IID_NULL))
        return DISP_E_UNKNOWNINTERFACE;
    if (names == nullptr || ids == nullptr || count == 0)
        return E_INVALIDARG;
    return Guarded([&] { return FindNames(m_served.type, {names, count}, ids); });
}

HRESULT ComObject::Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* arguments,
                          VARIANT* result, EXCEPINFO* exception, UINT* wrongArgument) {
    if (!IsEqualIID(iid, IID_NULL))
        return DISP_E_UNKNOWNINTERFACE;
    return m_apartment.Enter([&] {
        return InvokeMember(*m_object,
                            {id, locale, flags, arguments, result, exception, wrongArgument});
    });
}

HRESULT ComObject::InterfaceSupportsErrorInfo(REFIID iid) {
    return IsEqualIID(iid, m_served.iid) || IsEqualIID(iid, IID_IDispatch) ? S_OK : S_FALSE;
}

HRESULT ComObject::GetClassInfo(ITypeInfo** info) {
    if (info == nullptr)
        return E_POINTER;
    *info = nullptr;
    return OwnTypeInfo(m_served.clsid, info);
}

HRESULT ComObject::GetGUID(DWORD kind, GUID* guid) {
    if (guid == nullptr)
        return E_POINTER;
    *guid = GUID_NULL;
    if (kind != GUIDKIND_DEFAULT_SOURCE_DISP_IID || m_served.type.eventsIid.empty())
        return E_INVALIDARG;
    *guid = m_served.eventsIid;
    return S_OK;
}

HRESULT ComObject::EnumConnectionPoints(IEnumConnectionPoints** points) {
    return m_apartment.Enter(points, [&] {
        return HandOutEnumerator<IEnumConnectionPoints>(std::vector<IConnectionPoint*>{&m_events},
                                                        points);
    });
}

HRESULT ComObject::FindConnectionPoint(REFIID iid, IConnectionPoint** point) {
    return m_apartment.Enter(point, [&] {
        if (!IsEqualIID(iid, m_served.eventsIid))
            return CONNECT_E_NOCONNECTION;
        m_events.AddRef();
        *point = &m_events;
        return S_OK;
    });
}

ObjectRef ObjectBehind(IUnknown* given) {
    const auto answer = ComPtr<IUnknown>(given).As<IUnknown>(kOwnObject);
    const auto own = Living().At(answer.Get());
    if (!own)
        return nullptr;
    if (!own->Home().IsHere())
        throw Error(ErrorNumber::TypeMismatch, "an object of another thread");
    return own->Held();
}

ComPtr<IDispatch> DispatchOf(const ObjectRef& object) {
    if (const auto living = Living().Of(*object))
        return static_cast<IDispatch*>(living.Get());
    return ComPtr<IDispatch>::Attach(new ComObject(object));
}

} // namespace qx::com
