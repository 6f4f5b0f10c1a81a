// Drawing of the control while it has no window.
#include "com/windows/Control.h"

namespace qx::com {

HRESULT Control::Draw(DWORD aspect, LONG, void*, DVTARGETDEVICE*, HDC, HDC context, LPCRECTL bounds,
                      LPCRECTL, BOOL(CALLBACK*)(ULONG_PTR), ULONG_PTR) {
    if (aspect != DVASPECT_CONTENT && aspect != DVASPECT_OPAQUE)
        return DV_E_DVASPECT;
    if (context == nullptr || bounds == nullptr)
        return E_INVALIDARG;
    return Home().Enter([&] {
        if (!IsShown())
            return S_OK;
        const int saved = SaveDC(context);
        m_face->Draw(context, {bounds->left, bounds->top, bounds->right, bounds->bottom},
                     m_ambient);
        RestoreDC(context, saved);
        return S_OK;
    });
}

void Control::ViewChanged() {
    if (m_window != nullptr)
        InvalidateRect(m_window, nullptr, TRUE);
    const ComPtr<IAdviseSink> sink = m_viewSink;
    if (!sink)
        return;
    if ((m_viewFlags & ADVF_ONLYONCE) != 0)
        m_viewSink = nullptr;
    sink->OnViewChange(m_viewAspects, -1);
}

HRESULT Control::SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) {
    return Home().Enter([&] {
        m_viewAspects = aspects;
        m_viewFlags = flags;
        m_viewSink = sink;
        if (sink != nullptr && (flags & ADVF_PRIMEFIRST) != 0)
            ViewChanged();
        return S_OK;
    });
}

HRESULT Control::GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) {
    return Home().Enter([&] {
        if (aspects != nullptr)
            *aspects = m_viewAspects;
        if (flags != nullptr)
            *flags = m_viewFlags;
        if (sink != nullptr)
            *sink = ComPtr<IAdviseSink>(m_viewSink).Detach();
        return S_OK;
    });
}

HRESULT Control::GetExtent(DWORD aspect, LONG, DVTARGETDEVICE*, SIZEL* extent) {
    return GetExtent(aspect, extent);
}

HRESULT Control::GetRect(DWORD aspect, RECTL* bounds) {
    return Home().Enter(bounds, [&] {
        if (aspect != DVASPECT_CONTENT && aspect != DVASPECT_OPAQUE)
            return DV_E_DVASPECT;
        *bounds = {0, 0, m_extent.cx, m_extent.cy};
        return S_OK;
    });
}

HRESULT Control::GetViewStatus(DWORD* status) {
    if (status == nullptr)
        return E_POINTER;
    *status = VIEWSTATUS_OPAQUE;
    return S_OK;
}

HRESULT Control::QueryHitPoint(DWORD aspect, LPCRECT bounds, POINT point, LONG, DWORD* hit) {
    if (bounds == nullptr || hit == nullptr)
        return E_POINTER;
    if (aspect != DVASPECT_CONTENT)
        return DV_E_DVASPECT;
    *hit = PtInRect(bounds, point) != FALSE ? HITRESULT_HIT : HITRESULT_OUTSIDE;
    return S_OK;
}

HRESULT Control::QueryHitRect(DWORD aspect, LPCRECT bounds, LPCRECT area, LONG, DWORD* hit) {
    if (bounds == nullptr || area == nullptr || hit == nullptr)
        return E_POINTER;
    if (aspect != DVASPECT_CONTENT)
        return DV_E_DVASPECT;
    RECT common{};
    *hit = IntersectRect(&common, bounds, area) != FALSE ? HITRESULT_HIT : HITRESULT_OUTSIDE;
    return S_OK;
}

HRESULT Control::GetNaturalExtent(DWORD, LONG, DVTARGETDEVICE*, HDC, DVEXTENTINFO*, SIZEL*) {
    return E_NOTIMPL; // any size is acceptable
}

} // namespace qx::com
