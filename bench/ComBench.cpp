// The cost of a call through IDispatch, compared with the same call in C++ and with calls of the
// system's own Scripting.Dictionary; bench/com-calls runs it under wine.

#include "com/windows/ClassFactory.h"
#include "com/windows/ComObject.h"
#include "qxcontrols/common/ButtonCaption.h"
#include "qxcontrols/pos/POSBlock.h"
#include "qxcontrols/readers/OptionBool.h"
#include "qxcontrols/readers/QXBarcode.h"

#include <algorithm>
#include <cstdio>
#include <functional>
#include <limits>
#include <vector>

namespace {

using namespace qx;
using namespace qx::com;

void Check(HRESULT result, const char* what) {
    if (FAILED(result)) {
        std::fprintf(stderr, "%s: 0x%08lX\n", what, static_cast<unsigned long>(result));
        ExitProcess(1);
    }
}

template <typename T>
ComPtr<IDispatch> New() {
    ComPtr<IClassFactory> factory;
    Check(GetClassFactory(ServedOf(TableOf<T>()), IID_IClassFactory,
                          reinterpret_cast<void**>(factory.Out())),
          "GetClassFactory");
    ComPtr<IDispatch> object;
    Check(factory->CreateInstance(nullptr, IID_IDispatch, reinterpret_cast<void**>(object.Out())),
          "CreateInstance");
    return object;
}

template <typename T>
T& NativeOf(IDispatch* object) {
    return *static_cast<T*>(ObjectBehind(object)->Native());
}

ComPtr<IDispatch> NewDictionary() {
    CLSID clsid{};
    Check(CLSIDFromProgID(L"Scripting.Dictionary", &clsid), "Scripting.Dictionary");
    ComPtr<IDispatch> object;
    Check(CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                           reinterpret_cast<void**>(object.Out())),
          "Scripting.Dictionary");
    return object;
}

// One member of an object, called like from a script.
class Member {
public:
    Member(ComPtr<IDispatch> object, const wchar_t* name, WORD flags = DISPATCH_PROPERTYGET)
        : m_object(std::move(object)), m_name(name), m_flags(flags), m_id(Id()) {}

    [[nodiscard]] DISPID Id() const {
        auto* name = const_cast<LPOLESTR>(m_name);
        DISPID id = DISPID_UNKNOWN;
        Check(m_object->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id),
              "GetIDsOfNames");
        return id;
    }
    void Call(std::vector<VARIANT> arguments = {}) const { CallAs(m_id, std::move(arguments)); }
    void CallByName(std::vector<VARIANT> arguments = {}) const {
        CallAs(Id(), std::move(arguments));
    }

private:
    void CallAs(DISPID id, std::vector<VARIANT> arguments) const {
        DISPPARAMS given{arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
        OwnedVariant result;
        Check(m_object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, m_flags, &given, &result.Get(),
                               nullptr, nullptr),
              "Invoke");
    }

    ComPtr<IDispatch> m_object;
    const wchar_t* m_name;
    WORD m_flags;
    DISPID m_id;
};

// A sink that refuses every edit, by reference.
class Refusing : public IDispatch {
public:
    virtual ~Refusing() = default;
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
        *out = nullptr;
        if (!IsEqualIID(iid, IID_IUnknown) && !IsEqualIID(iid, IID_IDispatch))
            return E_NOINTERFACE;
        return HandOut(this, out);
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; } // lives on the stack
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS* given, VARIANT*,
                                     EXCEPINFO*, UINT*) override {
        *V_BOOLREF(&given->rgvarg[1]) = VARIANT_TRUE; // fCancelEdit, before sNewSeq
        ++heard;
        return S_OK;
    }
    long heard = 0;
};

VARIANT Int(SHORT number) {
    VARIANT variant;
    V_VT(&variant) = VT_I2;
    V_I2(&variant) = number;
    return variant;
}

using Calls = std::vector<std::function<void()>>;

constexpr int kRounds = 100;

double SecondsFor(long count, const std::function<void()>& call) {
    LARGE_INTEGER frequency, begin, end;
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&begin);
    for (long i = 0; i < count; ++i)
        call();
    QueryPerformanceCounter(&end);
    return static_cast<double>(end.QuadPart - begin.QuadPart) /
           static_cast<double>(frequency.QuadPart);
}

// The time of each call in nanoseconds: the best of many rounds in which the calls take turns, each
// for one or two milliseconds. The best round is the one least disturbed by other processes.
std::vector<double> Nanoseconds(const Calls& calls) {
    std::vector<long> counts;
    for (const auto& call : calls) {
        long count = 100;
        while (SecondsFor(count, call) < 0.001)
            count *= 2;
        counts.push_back(count);
    }
    std::vector<double> best(calls.size(), std::numeric_limits<double>::max());
    for (int round = 0; round < kRounds; ++round)
        for (std::size_t i = 0; i < calls.size(); ++i)
            best[i] = std::min(best[i], SecondsFor(counts[i], calls[i]) /
                                            static_cast<double>(counts[i]) * 1e9);
    return best;
}

void Report(const char* what, double com, double native, double dictionary) {
    std::printf("%-38s %6.0f ns   C++ %6.1f ns, ratio %6.1f   dictionary %6.0f ns, ratio %5.2f\n",
                what, com, native, com / native, dictionary, com / dictionary);
    std::fflush(stdout);
}
void Measure(const char* what, const Calls& calls) {
    const auto times = Nanoseconds(calls);
    Report(what, times[0], times[1], times[2]);
}

// A button press that raises EditHeader, minus the same press without a sink. The dictionary has no
// events; a call with one argument is used for comparison.
void MeasureEvent(const std::function<void()>& dictionaryCall) {
    const auto unheard = New<QXBarcode>();
    const auto native = New<QXBarcode>();
    const auto heard = New<QXBarcode>();
    const auto subscription = NativeOf<QXBarcode>(native.Get())
                                  .EditHeader.Subscribe([](const std::string&, bool& fCancelEdit,
                                                           std::string&) { fCancelEdit = true; });
    const auto container = heard.As<IConnectionPointContainer>(IID_IConnectionPointContainer);
    ComPtr<IConnectionPoint> point;
    Check(container->FindConnectionPoint(ServedOf(TableOf<QXBarcode>()).eventsIid, point.Out()),
          "FindConnectionPoint");
    Refusing sink;
    DWORD cookie = 0;
    Check(point->Advise(&sink, &cookie), "Advise");
    const auto press = [](const ComPtr<IDispatch>& control) {
        return [&barcode = NativeOf<QXBarcode>(control.Get())] { barcode.cmdEdit_Click(0); };
    };
    const auto times = Nanoseconds({press(heard), press(native), dictionaryCall, press(unheard)});
    point->Unadvise(cookie);
    if (sink.heard == 0)
        ExitProcess(1);
    Report("event, answered by reference", times[0] - times[3], times[1] - times[3], times[2]);
}

void Run() {
    const auto dictionary = NewDictionary();
    OwnedVariant text;
    V_VT(&text.Get()) = VT_BSTR;
    V_BSTR(&text.Get()) = NewBstr(u"Common settings");
    for (SHORT key = 1; key <= 8; ++key)
        Member(dictionary, L"Add", DISPATCH_METHOD).Call({text.Get(), Int(key)});
    const Member count(dictionary, L"Count");
    const Member exists(dictionary, L"Exists", DISPATCH_METHOD);
    const Member item(dictionary, L"Item");

    const auto option = New<OptionBool>();
    auto& nativeOption = NativeOf<OptionBool>(option.Get());
    const Member value(option, L"CtlValue");
    volatile Integer read = 0;
    const auto readNatively = [&] { read = nativeOption.CtlValue(); };
    Measure("property get", {[&] { value.Call(); }, readNatively, [&] { count.Call(); }});
    Measure("property get, by name",
            {[&] { value.CallByName(); }, readNatively, [&] { count.CallByName(); }});

    const auto block = New<POSBlock>();
    auto& nativeBlock = NativeOf<POSBlock>(block.Get());
    for (Integer key = 1; key <= 8; ++key)
        nativeBlock.AddKey(key);
    const Member hasKey(block, L"HasKey", DISPATCH_METHOD);
    volatile bool found = false;
    const auto findNatively = [&] { found = nativeBlock.HasKey(5); };
    Measure("method with a number",
            {[&] { hasKey.Call({Int(5)}); }, findNatively, [&] { exists.Call({Int(5)}); }});
    Measure("method with a number, by name", {[&] { hasKey.CallByName({Int(5)}); }, findNatively,
                                              [&] { exists.CallByName({Int(5)}); }});

    const auto control = New<QXBarcode>();
    auto& nativeControl = NativeOf<QXBarcode>(control.Get());
    nativeControl.SetListCaption("Common settings");
    const Member caption(control, L"ListCaption");
    Measure("text of a control, by name",
            {[&] { caption.CallByName(); },
             [&] { const std::string copy = nativeControl.ListCaption(); },
             [&] { item.CallByName({Int(5)}); }});
    MeasureEvent([&] { exists.Call({Int(5)}); });
}

} // namespace

int main() {
    CoInitialize(nullptr);
    Run();
    CoUninitialize();
}
