// Control: an object that containers place on their forms.
//
// It is a windowed control that is activated in place. The service objects are controls too, since
// classic hosts place them on forms, but have no window at run time. Its face (com/windows/Face.h)
// draws it; this class handles only the duties common to all controls. Each call that reads or
// changes the control's state enters its apartment; the others answer the same on any thread.
#pragma once

#include "com/windows/Ambient.h"
#include "com/windows/ComObject.h"
#include "com/windows/FaceWindow.h"

#include <memory>

namespace qx::com {

class Control : public ComObject,
                public IOleObject,
                public IOleControl,
                public IPersistStreamInit,
                public IPersistPropertyBag,
                public IViewObjectEx,
                public IQuickActivate,
                public IOleInPlaceObject,
                public IOleInPlaceActiveObject,
                private FaceWindow {
public:
    explicit Control(ObjectRef object);
    ~Control() override;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
        return ComObject::QueryInterface(iid, out);
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ComObject::AddRef(); }
    ULONG STDMETHODCALLTYPE Release() override { return ComObject::Release(); }

    // IOleObject
    HRESULT STDMETHODCALLTYPE SetClientSite(IOleClientSite* site) override;
    HRESULT STDMETHODCALLTYPE GetClientSite(IOleClientSite** site) override;
    HRESULT STDMETHODCALLTYPE SetHostNames(LPCOLESTR, LPCOLESTR) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE Close(DWORD saveOption) override;
    HRESULT STDMETHODCALLTYPE SetMoniker(DWORD, IMoniker*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetMoniker(DWORD, DWORD, IMoniker**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE InitFromData(IDataObject*, BOOL, DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetClipboardData(DWORD, IDataObject**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE DoVerb(LONG verb, LPMSG message, IOleClientSite* site, LONG index,
                                     HWND parent, LPCRECT bounds) override;
    HRESULT STDMETHODCALLTYPE EnumVerbs(IEnumOLEVERB** verbs) override;
    HRESULT STDMETHODCALLTYPE Update() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE IsUpToDate() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetUserClassID(CLSID* clsid) override { return GetClassID(clsid); }
    HRESULT STDMETHODCALLTYPE GetUserType(DWORD form, LPOLESTR* type) override;
    HRESULT STDMETHODCALLTYPE SetExtent(DWORD aspect, SIZEL* extent) override;
    HRESULT STDMETHODCALLTYPE GetExtent(DWORD aspect, SIZEL* extent) override;
    HRESULT STDMETHODCALLTYPE Advise(IAdviseSink* sink, DWORD* cookie) override;
    HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override;
    HRESULT STDMETHODCALLTYPE EnumAdvise(IEnumSTATDATA** advises) override;
    HRESULT STDMETHODCALLTYPE GetMiscStatus(DWORD aspect, DWORD* status) override;
    HRESULT STDMETHODCALLTYPE SetColorScheme(LOGPALETTE*) override { return E_NOTIMPL; }

    // IOleControl
    HRESULT STDMETHODCALLTYPE GetControlInfo(CONTROLINFO* info) override;
    HRESULT STDMETHODCALLTYPE OnMnemonic(MSG* message) override;
    HRESULT STDMETHODCALLTYPE OnAmbientPropertyChange(DISPID id) override;
    HRESULT STDMETHODCALLTYPE FreezeEvents(BOOL fFreeze) override;

    // IPersistStreamInit and IPersistPropertyBag: only the size is stored
    HRESULT STDMETHODCALLTYPE GetClassID(CLSID* clsid) override;
    HRESULT STDMETHODCALLTYPE IsDirty() override;
    HRESULT STDMETHODCALLTYPE Load(IStream* stream) override;
    HRESULT STDMETHODCALLTYPE Save(IStream* stream, BOOL fClearDirty) override;
    HRESULT STDMETHODCALLTYPE GetSizeMax(ULARGE_INTEGER* size) override;
    HRESULT STDMETHODCALLTYPE InitNew() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE Load(IPropertyBag* bag, IErrorLog* log) override;
    HRESULT STDMETHODCALLTYPE Save(IPropertyBag* bag, BOOL fClearDirty, BOOL fAll) override;

    // IViewObjectEx
    HRESULT STDMETHODCALLTYPE Draw(DWORD aspect, LONG index, void* aspectData,
                                   DVTARGETDEVICE* device, HDC deviceContext, HDC context,
                                   LPCRECTL bounds, LPCRECTL metafileBounds,
                                   BOOL(CALLBACK* goOn)(ULONG_PTR), ULONG_PTR data) override;
    HRESULT STDMETHODCALLTYPE GetColorSet(DWORD, LONG, void*, DVTARGETDEVICE*, HDC,
                                          LOGPALETTE**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Freeze(DWORD, LONG, void*, DWORD*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Unfreeze(DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) override;
    HRESULT STDMETHODCALLTYPE GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) override;
    HRESULT STDMETHODCALLTYPE GetExtent(DWORD aspect, LONG index, DVTARGETDEVICE* device,
                                        SIZEL* extent) override;
    HRESULT STDMETHODCALLTYPE GetRect(DWORD aspect, RECTL* bounds) override;
    HRESULT STDMETHODCALLTYPE GetViewStatus(DWORD* status) override;
    HRESULT STDMETHODCALLTYPE QueryHitPoint(DWORD aspect, LPCRECT bounds, POINT point, LONG near,
                                            DWORD* hit) override;
    HRESULT STDMETHODCALLTYPE QueryHitRect(DWORD aspect, LPCRECT bounds, LPCRECT area, LONG near,
                                           DWORD* hit) override;
    HRESULT STDMETHODCALLTYPE GetNaturalExtent(DWORD aspect, LONG index, DVTARGETDEVICE* device,
                                               HDC context, DVEXTENTINFO* info,
                                               SIZEL* extent) override;

    // IQuickActivate
    HRESULT STDMETHODCALLTYPE QuickActivate(QACONTAINER* container, QACONTROL* control) override;
    HRESULT STDMETHODCALLTYPE SetContentExtent(SIZEL* extent) override;
    HRESULT STDMETHODCALLTYPE GetContentExtent(SIZEL* extent) override;

    // IOleInPlaceObject and IOleInPlaceActiveObject
    HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override;
    HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE InPlaceDeactivate() override;
    HRESULT STDMETHODCALLTYPE UIDeactivate() override;
    HRESULT STDMETHODCALLTYPE SetObjectRects(LPCRECT place, LPCRECT clip) override;
    HRESULT STDMETHODCALLTYPE ReactivateAndUndo() override { return INPLACE_E_NOTUNDOABLE; }
    HRESULT STDMETHODCALLTYPE TranslateAccelerator(LPMSG message) override;
    HRESULT STDMETHODCALLTYPE OnFrameWindowActivate(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnDocWindowActivate(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE ResizeBorder(LPCRECT, IOleInPlaceUIWindow*, BOOL) override {
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE EnableModeless(BOOL) override { return S_OK; }

protected:
    HRESULT Query(REFIID iid, void** out) override;

private:
    HRESULT ActivateInPlace();
    HRESULT ActivateUI();
    [[nodiscard]] Face& Shown() override { return *m_face; }
    [[nodiscard]] ComPtr<IUnknown> Kept() override { return static_cast<IDispatch*>(this); }
    void FollowSystem() override { OnAmbientPropertyChange(DISPID_UNKNOWN); }
    LRESULT Handle(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override;
    void ViewChanged();
    void TakeAmbient();
    [[nodiscard]] bool IsShown() const; // here and now

    std::unique_ptr<Face> m_face;
    HACCEL m_accelerators = nullptr; // as requested by the container
    SIZEL m_extent;                  // in hundredths of a millimetre
    bool m_isDirty = false;

    ComPtr<IOleClientSite> m_site;
    ComPtr<IOleAdviseHolder> m_advises;
    ComPtr<IAdviseSink> m_viewSink;
    DWORD m_viewAspects = 0;
    DWORD m_viewFlags = 0;

    ComPtr<IOleInPlaceSite> m_inPlaceSite; // while active in place
    ComPtr<IOleInPlaceFrame> m_frame;
    bool m_isUIActive = false;
};

// Unregisters the window class of the controls, when the module is unloaded.
void UnregisterControlWindows();

} // namespace qx::com
