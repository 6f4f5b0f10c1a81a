#include "com/windows/Control.h"

#include <vector>

namespace qx::com {
namespace {

constexpr SIZEL kFirstSize{6350, 4233};       // hundredths of a millimetre
constexpr SIZEL kFirstServiceSize{4233, 847}; // of the service objects, which show only their names

} // namespace

Control::Control(ObjectRef object)
    : ComObject(std::move(object)), m_face(MakeFace(Library(), [this] { ViewChanged(); })),
      m_extent(Served().type.look == Look::Invisible ? kFirstServiceSize : kFirstSize) {}

Control::~Control() {
    CloseWindow();
    if (m_accelerators != nullptr)
        DestroyAcceleratorTable(m_accelerators);
}

HRESULT Control::Query(REFIID iid, void** out) {
    if (IsEqualIID(iid, IID_IOleObject))
        return HandOut(static_cast<IOleObject*>(this), out);
    if (IsEqualIID(iid, IID_IOleControl))
        return HandOut(static_cast<IOleControl*>(this), out);
    if (IsEqualIID(iid, IID_IPersist) || IsEqualIID(iid, IID_IPersistStreamInit))
        return HandOut(static_cast<IPersistStreamInit*>(this), out);
    if (IsEqualIID(iid, IID_IPersistPropertyBag))
        return HandOut(static_cast<IPersistPropertyBag*>(this), out);
    if (IsEqualIID(iid, IID_IViewObject) || IsEqualIID(iid, IID_IViewObject2) ||
        IsEqualIID(iid, IID_IViewObjectEx))
        return HandOut(static_cast<IViewObjectEx*>(this), out);
    if (IsEqualIID(iid, IID_IQuickActivate))
        return HandOut(static_cast<IQuickActivate*>(this), out);
    if (IsEqualIID(iid, IID_IOleWindow) || IsEqualIID(iid, IID_IOleInPlaceObject))
        return HandOut(static_cast<IOleInPlaceObject*>(this), out);
    if (IsEqualIID(iid, IID_IOleInPlaceActiveObject))
        return HandOut(static_cast<IOleInPlaceActiveObject*>(this), out);
    return E_NOINTERFACE;
}

HRESULT Control::SetClientSite(IOleClientSite* site) {
    return Home().Enter([&] {
        m_site = site;
        TakeAmbient();
        return S_OK;
    });
}

void Control::TakeAmbient() {
    m_ambient = AmbientOf(m_site.Get());
    Events().SetLocale(m_ambient.locale);
}

HRESULT Control::GetClientSite(IOleClientSite** site) {
    return Home().Enter(site, [&] {
        *site = ComPtr<IOleClientSite>(m_site).Detach();
        return S_OK;
    });
}

HRESULT Control::Close(DWORD saveOption) {
    return Home().Enter([&] {
        if (m_site && m_isDirty && saveOption != OLECLOSE_NOSAVE)
            m_site->SaveObject();
        InPlaceDeactivate();
        if (m_advises)
            m_advises->SendOnClose();
        return S_OK;
    });
}

HRESULT Control::DoVerb(LONG verb, LPMSG, IOleClientSite*, LONG, HWND, LPCRECT) {
    return Home().Enter([&] {
        switch (verb) {
        case OLEIVERB_HIDE:
            UIDeactivate();
            if (m_window != nullptr)
                ShowWindow(m_window, SW_HIDE);
            return S_OK;
        case OLEIVERB_DISCARDUNDOSTATE:
            return S_OK;
        case OLEIVERB_INPLACEACTIVATE:
            return ActivateInPlace();
        case OLEIVERB_PRIMARY:
        case OLEIVERB_SHOW:
        case OLEIVERB_UIACTIVATE:
            return ActivateUI();
        default:
            return verb < 0 ? E_NOTIMPL : OLEOBJ_S_INVALIDVERB;
        }
    });
}

HRESULT Control::EnumVerbs(IEnumOLEVERB** verbs) {
    if (verbs == nullptr)
        return E_POINTER;
    *verbs = nullptr;
    return OleRegEnumVerbs(Served().clsid, verbs);
}

HRESULT Control::GetUserType(DWORD, LPOLESTR* type) {
    if (type == nullptr)
        return E_POINTER;
    const std::wstring name = Wide(Served().type.name);
    const std::size_t size = (name.size() + 1) * sizeof(wchar_t);
    *type = static_cast<LPOLESTR>(CoTaskMemAlloc(size));
    if (*type == nullptr)
        return E_OUTOFMEMORY;
    std::copy(name.c_str(), name.c_str() + name.size() + 1, *type);
    return S_OK;
}

HRESULT Control::SetExtent(DWORD aspect, SIZEL* extent) {
    if (extent == nullptr)
        return E_POINTER;
    if (aspect != DVASPECT_CONTENT)
        return DV_E_DVASPECT;
    if (extent->cx < 0 || extent->cy < 0)
        return E_INVALIDARG;
    return Home().Enter([&] {
        if (m_extent.cx == extent->cx && m_extent.cy == extent->cy)
            return S_OK;
        m_extent = *extent;
        m_isDirty = true;
        ViewChanged();
        return S_OK;
    });
}

HRESULT Control::GetExtent(DWORD aspect, SIZEL* extent) {
    return Home().Enter(extent, [&] {
        if (aspect != DVASPECT_CONTENT)
            return DV_E_DVASPECT;
        *extent = m_extent;
        return S_OK;
    });
}

HRESULT Control::Advise(IAdviseSink* sink, DWORD* cookie) {
    return Home().Enter(cookie, [&] {
        if (!m_advises) {
            const HRESULT result = CreateOleAdviseHolder(m_advises.Out());
            if (FAILED(result))
                return result;
        }
        return m_advises->Advise(sink, cookie);
    });
}

HRESULT Control::Unadvise(DWORD cookie) {
    return Home().Enter(
        [&] { return m_advises ? m_advises->Unadvise(cookie) : OLE_E_NOCONNECTION; });
}

HRESULT Control::EnumAdvise(IEnumSTATDATA** advises) {
    return Home().Enter(advises, [&] { return m_advises ? m_advises->EnumAdvise(advises) : S_OK; });
}

HRESULT Control::GetMiscStatus(DWORD aspect, DWORD* status) {
    if (status == nullptr)
        return E_POINTER;
    *status = aspect == DVASPECT_CONTENT ? MiscStatusOf(Served().type) : 0;
    return S_OK;
}

HRESULT Control::GetControlInfo(CONTROLINFO* info) {
    if (info == nullptr)
        return E_POINTER;
    return Home().Enter([&] {
        if (info->cb < sizeof(*info))
            return E_INVALIDARG;
        std::vector<ACCEL> keys;
        for (const wchar_t letter : m_face->Mnemonics())
            keys.push_back({FALT | FVIRTKEY, static_cast<WORD>(letter), 0});
        if (m_accelerators != nullptr)
            DestroyAcceleratorTable(std::exchange(m_accelerators, nullptr));
        if (!keys.empty())
            m_accelerators = CreateAcceleratorTableW(keys.data(), static_cast<int>(keys.size()));
        info->hAccel = m_accelerators;
        info->cAccel = static_cast<USHORT>(m_accelerators == nullptr ? 0 : keys.size());
        info->dwFlags = 0;
        return S_OK;
    });
}

HRESULT Control::OnMnemonic(MSG* message) {
    if (message == nullptr)
        return E_POINTER;
    return Home().Enter([&] {
        if (m_ambient.isUserMode && !m_ambient.isDead && SUCCEEDED(ActivateUI()))
            m_face->TakesMnemonic(static_cast<wchar_t>(message->wParam));
        return S_OK;
    });
}

HRESULT Control::OnAmbientPropertyChange(DISPID) {
    return Home().Enter([&] {
        TakeAmbient();
        m_face->Arrange(m_ambient);
        ViewChanged();
        return S_OK;
    });
}

HRESULT Control::FreezeEvents(BOOL fFreeze) {
    return Home().Enter([&] {
        Events().Freeze(fFreeze != FALSE);
        return S_OK;
    });
}

HRESULT Control::QuickActivate(QACONTAINER* container, QACONTROL* control) {
    if (container == nullptr || control == nullptr)
        return E_POINTER;
    return Home().Enter([&] {
        const ULONG size = control->cbSize;
        if (container->cbSize < sizeof(*container) || size < sizeof(*control))
            return E_INVALIDARG;
        *control = {};
        control->cbSize = size;
        const HRESULT result = SetClientSite(container->pClientSite);
        if (FAILED(result))
            return result;
        if (container->pAdviseSink != nullptr)
            SetAdvise(DVASPECT_CONTENT, 0, container->pAdviseSink);
        if (container->pUnkEventSink != nullptr)
            Events().Advise(container->pUnkEventSink, &control->dwEventCookie);
        control->dwMiscStatus = MiscStatusOf(Served().type);
        control->dwViewStatus = VIEWSTATUS_OPAQUE;
        return S_OK;
    });
}

HRESULT Control::SetContentExtent(SIZEL* extent) {
    return SetExtent(DVASPECT_CONTENT, extent);
}

HRESULT Control::GetContentExtent(SIZEL* extent) {
    return GetExtent(DVASPECT_CONTENT, extent);
}

} // namespace qx::com
