// Controls in containers of every kind, simulated by the test's own site.

#include "com/windows/Site.h"

#include "com/windows/Ambient.h"
#include "com/windows/ClassFactory.h"
#include "com/windows/ComObject.h"
#include "com/windows/Machine.h"
#include "qxcontrols/readers/QXBarcode.h"

#include <map>
#include <stdexcept>

namespace qx::test {
namespace {

class Dispatching : public OnStack<IDispatch> {
public:
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return E_NOTIMPL;
    }
};

class EventRecorder : public Dispatching {
public:
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID locale, WORD, DISPPARAMS*, VARIANT*,
                                     EXCEPINFO*, UINT*) override {
        heard.emplace_back(id, locale);
        return S_OK;
    }
    std::vector<std::pair<DISPID, LCID>> heard;
};

class Bag : public OnStack<IPropertyBag> {
public:
    ~Bag() override {
        for (auto& [name, value] : values)
            VariantClear(&value);
    }
    HRESULT STDMETHODCALLTYPE Read(LPCOLESTR name, VARIANT* value, IErrorLog*) override {
        const auto found = values.find(name);
        if (found == values.end()) {
            V_I4(value) = -77;
            return E_INVALIDARG;
        }
        return VariantCopy(value, &found->second);
    }
    HRESULT STDMETHODCALLTYPE Write(LPCOLESTR name, VARIANT* value) override {
        return fails ? E_ACCESSDENIED : VariantCopy(&values[name], value);
    }
    std::map<std::wstring, VARIANT> values;
    bool fails = false;
};

VARIANT Text(const wchar_t* text) {
    VARIANT variant;
    V_VT(&variant) = VT_BSTR;
    V_BSTR(&variant) = SysAllocString(text);
    return variant;
}

class ComControl : public ComClient {
protected:
    void TearDown() override {
        control = nullptr;
        EXPECT_TRUE(CanUnload()); // every reference was released
    }

    template <typename T>
    static ComPtr<IDispatch> New() {
        ComPtr<IClassFactory> factory;
        ComPtr<IDispatch> object;
        EXPECT_EQ(GetClassFactory(ServedOf(TableOf<T>()), IID_IClassFactory,
                                  reinterpret_cast<void**>(factory.Out())),
                  S_OK);
        EXPECT_EQ(
            factory->CreateInstance(nullptr, IID_IDispatch, reinterpret_cast<void**>(object.Out())),
            S_OK);
        return object;
    }
    void PressEdit() {
        const ObjectRef held = ObjectBehind(control.Get());
        static_cast<QXBarcode*>(held->Native())->cmdEdit_Click(0);
    }
    [[nodiscard]] SIZEL Extent() const {
        SIZEL extent{};
        const auto object = control.As<IOleObject>(IID_IOleObject);
        EXPECT_EQ(object->GetExtent(DVASPECT_CONTENT, &extent), S_OK);
        return extent;
    }

    ComPtr<IDispatch> control = New<QXBarcode>();
};

TEST_F(ComControl, AggregationIsRefused) {
    Dispatching* const none = nullptr;
    for (const ServedClass& served : ServedClasses()) {
        ComPtr<IClassFactory> factory;
        ASSERT_EQ(
            GetClassFactory(served, IID_IClassFactory, reinterpret_cast<void**>(factory.Out())),
            S_OK);
        void* out = &factory;
        EXPECT_EQ(factory->CreateInstance(control.Get(), IID_IUnknown, &out), CLASS_E_NOAGGREGATION)
            << served.type.name;
        EXPECT_EQ(out, none);
        EXPECT_EQ(factory->CreateInstance(nullptr, IID_IStream, &out), E_NOINTERFACE);
        EXPECT_EQ(out, none);
        EXPECT_EQ(factory->CreateInstance(nullptr, IID_IUnknown, nullptr), E_POINTER);
    }
}

TEST_F(ComControl, QuickActivationBringsSiteSinkAndStatus) {
    Site site;
    EventRecorder sink;
    const auto quick = control.As<IQuickActivate>(IID_IQuickActivate);
    QACONTAINER container{};
    container.cbSize = sizeof(container);
    container.pClientSite = &site;
    container.pUnkEventSink = &sink;
    QACONTROL answer{};
    answer.cbSize = sizeof(answer);
    answer.dwMiscStatus = 0xDEAD;
    EXPECT_EQ(quick->QuickActivate(nullptr, &answer), E_POINTER);
    EXPECT_EQ(quick->QuickActivate(&container, nullptr), E_POINTER);
    // a host with another version of the structures, which must not be written to
    --answer.cbSize;
    EXPECT_EQ(quick->QuickActivate(&container, &answer), E_INVALIDARG);
    ++answer.cbSize;
    container.cbSize = 4;
    EXPECT_EQ(quick->QuickActivate(&container, &answer), E_INVALIDARG);
    EXPECT_EQ(answer.dwMiscStatus, 0xDEADU);
    container.cbSize = sizeof(container);
    const auto ole = control.As<IOleControl>(IID_IOleControl);
    CONTROLINFO info{sizeof(info) - 1, nullptr, 77, 0};
    EXPECT_EQ(ole->GetControlInfo(&info), E_INVALIDARG);
    EXPECT_EQ(info.cAccel, 77);
    ASSERT_EQ(quick->QuickActivate(&container, &answer), S_OK);
    EXPECT_EQ(answer.dwMiscStatus, MiscStatusOf(TableOf<QXBarcode>()));
    EXPECT_EQ(answer.dwViewStatus, static_cast<DWORD>(VIEWSTATUS_OPAQUE));
    EXPECT_NE(answer.dwEventCookie, 0U);
    const auto object = control.As<IOleObject>(IID_IOleObject);
    ComPtr<IOleClientSite> known;
    EXPECT_EQ(object->GetClientSite(known.Out()), S_OK);
    EXPECT_EQ(known.Get(), &site);
    known = nullptr;
    EXPECT_EQ(object->EnumVerbs(nullptr), E_POINTER);
    PressEdit();
    EXPECT_EQ(sink.heard.size(), 1U);

    SIZEL size{4100, 2300};
    EXPECT_EQ(quick->SetContentExtent(&size), S_OK);
    size = {};
    EXPECT_EQ(quick->GetContentExtent(&size), S_OK);
    EXPECT_EQ(size.cx, 4100);
    EXPECT_EQ(size.cy, 2300);

    const auto points = control.As<IConnectionPointContainer>(IID_IConnectionPointContainer);
    ComPtr<IConnectionPoint> point;
    ASSERT_EQ(points->FindConnectionPoint(ServedOf(TableOf<QXBarcode>()).eventsIid, point.Out()),
              S_OK);
    EXPECT_EQ(point->Unadvise(answer.dwEventCookie), S_OK);
    PressEdit();
    EXPECT_EQ(sink.heard.size(), 1U);
    EXPECT_EQ(object->SetClientSite(nullptr), S_OK);
}

TEST_F(ComControl, PropertyBagsCarryTheSize) {
    Bag bag;
    const auto object = control.As<IOleObject>(IID_IOleObject);
    auto persist = control.As<IPersistPropertyBag>(IID_IPersistPropertyBag);
    const SIZEL first = Extent();
    SIZEL size{5000, 3000};
    ASSERT_EQ(object->SetExtent(DVASPECT_CONTENT, &size), S_OK);
    EXPECT_EQ(persist->Save(nullptr, TRUE, TRUE), E_POINTER);
    bag.fails = true;
    EXPECT_EQ(persist->Save(&bag, TRUE, TRUE), E_ACCESSDENIED);
    const auto stream = control.As<IPersistStreamInit>(IID_IPersistStreamInit);
    EXPECT_EQ(stream->IsDirty(), S_OK); // nothing was saved
    bag.fails = false;
    EXPECT_EQ(persist->Save(&bag, TRUE, TRUE), S_OK);
    EXPECT_EQ(stream->IsDirty(), S_FALSE);

    control = New<QXBarcode>();
    persist = control.As<IPersistPropertyBag>(IID_IPersistPropertyBag);
    EXPECT_EQ(persist->Load(nullptr, nullptr), E_POINTER);
    ASSERT_EQ(persist->Load(&bag, nullptr), S_OK);
    EXPECT_EQ(Extent().cx, 5000);
    EXPECT_EQ(Extent().cy, 3000);

    // a form edited by hand: invalid values keep the current size
    VariantClear(&bag.values[L"_ExtentX"]);
    bag.values[L"_ExtentX"] = Text(L"700");
    VariantClear(&bag.values[L"_ExtentY"]);
    bag.values[L"_ExtentY"] = LongInt(-3);
    EXPECT_EQ(persist->Load(&bag, nullptr), S_OK);
    EXPECT_EQ(Extent().cx, 700);
    EXPECT_EQ(Extent().cy, 3000);
    Bag empty;
    control = New<QXBarcode>();
    persist = control.As<IPersistPropertyBag>(IID_IPersistPropertyBag);
    EXPECT_EQ(persist->Load(&empty, nullptr), S_OK);
    EXPECT_EQ(Extent().cx, first.cx);
    EXPECT_EQ(Extent().cy, first.cy);
    persist = nullptr;
}

TEST_F(ComControl, AmbientPropertiesAreReadAndFollowed) {
    Site site;
    site.SetFont(L"Tahoma", 24);
    site.SetAmbient(DISPID_AMBIENT_BACKCOLOR, LongInt(0x00332211));
    site.SetAmbient(DISPID_AMBIENT_FORECOLOR,
                    LongInt(static_cast<LONG>(0x80000000 | COLOR_WINDOW)));
    site.SetAmbient(DISPID_AMBIENT_LOCALEID, LongInt(0x0407));
    site.SetAmbient(DISPID_AMBIENT_USERMODE, Text(L"no truth value"));

    Ambient ambient = AmbientOf(&site);
    EXPECT_EQ(ambient.background, 0x00332211U);
    EXPECT_EQ(ambient.foreground, GetSysColor(COLOR_WINDOW));
    EXPECT_EQ(ambient.locale, 0x0407U);
    EXPECT_TRUE(ambient.isUserMode);
    EXPECT_FALSE(ambient.isDead);
    CY points{};
    ASSERT_TRUE(ambient.font);
    EXPECT_EQ(ambient.font->get_Size(&points), S_OK);
    EXPECT_NEAR(static_cast<double>(points.int64), 240'000, 10'000);
    ambient = {};
    const Ambient without = AmbientOf(nullptr);
    EXPECT_EQ(without.background, GetSysColor(COLOR_BTNFACE));
    EXPECT_FALSE(without.font);

    // events use the form's language, which the control must find out
    EventRecorder sink;
    DWORD cookie = 0;
    const auto container = control.As<IConnectionPointContainer>(IID_IConnectionPointContainer);
    ComPtr<IConnectionPoint> point;
    ASSERT_EQ(container->FindConnectionPoint(ServedOf(TableOf<QXBarcode>()).eventsIid, point.Out()),
              S_OK);
    ASSERT_EQ(point->Advise(&sink, &cookie), S_OK);
    const auto object = control.As<IOleObject>(IID_IOleObject);
    ASSERT_EQ(object->SetClientSite(&site), S_OK);
    PressEdit();
    site.SetAmbient(DISPID_AMBIENT_LOCALEID, LongInt(0x040C));
    const auto ole = control.As<IOleControl>(IID_IOleControl);
    EXPECT_EQ(ole->OnAmbientPropertyChange(DISPID_AMBIENT_LOCALEID), S_OK);
    PressEdit();
    EXPECT_EQ(ole->FreezeEvents(FALSE), S_OK); // more often than they were frozen
    EXPECT_EQ(ole->FreezeEvents(TRUE), S_OK);
    PressEdit();
    EXPECT_EQ(ole->FreezeEvents(FALSE), S_OK);
    ASSERT_EQ(sink.heard.size(), 2U);
    EXPECT_EQ(sink.heard[0].second, 0x0407U);
    EXPECT_EQ(sink.heard[1].second, 0x040CU);
    EXPECT_EQ(point->Unadvise(cookie), S_OK);
    EXPECT_EQ(object->SetClientSite(nullptr), S_OK);
}

// Dispatches messages until the condition holds, or until a generous timeout.
template <typename Condition>
bool Pumped(const Condition& condition) {
    const DWORD begin = GetTickCount();
    while (!condition()) {
        if (GetTickCount() - begin > 10000)
            return false;
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageW(&message);
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 5, QS_ALLINPUT);
    }
    return true;
}

TEST_F(ComControl, FormTimersTickWithTheHostsMessages) {
    WindowsFormTimers timers;
    auto one = timers.Create();
    auto other = timers.Create();
    int ticks = 0;
    int otherTicks = 0;
    one->SetHandler([&] {
        if (++ticks == 2)
            one->SetEnabled(false); // inside its own tick
    });
    other->SetHandler([&] {
        ++otherTicks;
        throw std::runtime_error("a fault that must not reach the host's message loop");
    });
    one->SetInterval(10);
    other->SetInterval(10);
    other->SetEnabled(true);
    EXPECT_TRUE(Pumped([&] { return otherTicks >= 3; }));
    EXPECT_EQ(ticks, 0); // not enabled yet
    one->SetEnabled(true);
    EXPECT_TRUE(Pumped([&] { return ticks == 2; }));
    const int before = otherTicks;
    EXPECT_TRUE(Pumped([&] { return otherTicks == before + 3; }));
    EXPECT_EQ(ticks, 2);
    other.reset();
    const int last = otherTicks;
    one->SetEnabled(true);
    EXPECT_TRUE(Pumped([&] { return ticks == 3; }));
    EXPECT_EQ(otherTicks, last);
}

} // namespace
} // namespace qx::test
