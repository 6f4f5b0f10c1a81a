// A host in C++: late bound, with a sink for the keyboard's events. It reads and shows the
// configuration directory.
#include <windows.h>

#include <ocidl.h>
#include <ole2.h>

#include <cstdio>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

void Check(HRESULT result, const char* step) {
    if (FAILED(result))
        throw std::runtime_error(std::string(step) + " failed");
}

// Calls a method or reads a property by name. The caller clears the result.
VARIANT Get(IDispatch* object, const wchar_t* name, std::vector<VARIANT> arguments = {}) {
    DISPID id = 0;
    auto* text = const_cast<LPOLESTR>(name);
    Check(object->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &id), "GetIDsOfNames");
    DISPPARAMS given{arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
    VARIANT result;
    VariantInit(&result);
    Check(object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD | DISPATCH_PROPERTYGET,
                         &given, &result, nullptr, nullptr),
          "Invoke");
    return result;
}

VARIANT Number(SHORT number) {
    VARIANT variant;
    V_VT(&variant) = VT_I2;
    V_I2(&variant) = number;
    return variant;
}

// Receives the keyboard's events, which have the identifiers of the type library.
class KeyboardEvents : public IDispatch {
public:
    virtual ~KeyboardEvents() = default;
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
        *out = nullptr;
        if (!IsEqualIID(iid, IID_IUnknown) && !IsEqualIID(iid, IID_IDispatch))
            return E_NOINTERFACE;
        *out = this;
        AddRef();
        return S_OK;
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
                                     EXCEPINFO*, UINT*) override {
        if (id == 1)
            std::printf("opening the driver\n");
        else if (id == 4)
            std::printf("the driver reports error %ld\n", V_I4(&given->rgvarg[0]));
        return S_OK;
    }

private:
    ULONG m_references = 1;
};

// Connects the sink to the object's own events; returns the connection point for disconnecting.
IConnectionPoint* Connect(IDispatch* object, IDispatch* sink, DWORD& cookie) {
    IProvideClassInfo2* info = nullptr;
    IConnectionPointContainer* container = nullptr;
    IConnectionPoint* point = nullptr;
    GUID events{};
    Check(object->QueryInterface(IID_IProvideClassInfo2, reinterpret_cast<void**>(&info)),
          "IProvideClassInfo2");
    Check(info->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &events), "GetGUID");
    info->Release();
    Check(
        object->QueryInterface(IID_IConnectionPointContainer, reinterpret_cast<void**>(&container)),
        "IConnectionPointContainer");
    Check(container->FindConnectionPoint(events, &point), "FindConnectionPoint");
    container->Release();
    Check(point->Advise(sink, &cookie), "Advise");
    return point;
}

void Run() {
    CLSID clsid{};
    IDispatch* keyboard = nullptr;
    Check(CLSIDFromProgID(L"QXControls.QXKeyboardAccess", &clsid), "CLSIDFromProgID");
    Check(CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                           reinterpret_cast<void**>(&keyboard)),
          "CoCreateInstance");
    auto* const sink = new KeyboardEvents;
    DWORD cookie = 0;
    IConnectionPoint* const point = Connect(keyboard, sink, cookie);

    VARIANT opened = Get(keyboard, L"Init");
    if (V_BOOL(&opened) != VARIANT_TRUE)
        throw std::runtime_error("the keyboard cannot be opened");
    VARIANT name = Get(keyboard, L"Keyboard");
    std::printf("keyboard %ls\n", V_BSTR(&name));
    VariantClear(&name);
    VARIANT size = Get(keyboard, L"DirectorySize");
    for (SHORT i = 1; i <= V_I2(&size); ++i) {
        VARIANT entry = Get(keyboard, L"DirectoryItem", {Number(i)});
        VARIANT module = Get(V_DISPATCH(&entry), L"ModuleType");
        VARIANT address = Get(V_DISPATCH(&entry), L"StartAddress");
        std::printf("module %ld at address %ld\n", V_I4(&module), V_I4(&address));
        VariantClear(&entry);
    }

    Get(keyboard, L"Done"); // returns the layer keys to the user
    point->Unadvise(cookie);
    point->Release();
    sink->Release();
    keyboard->Release();
}

} // namespace

int main() {
    if (FAILED(CoInitialize(nullptr)))
        return 1;
    int status = 0;
    try {
        Run();
        std::printf("done\n");
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        status = 1;
    }
    CoUninitialize();
    return status;
}
