// Calls by hosts, correct and hostile.

#include "com/windows/Client.h"
#include "com/windows/Members.h"

#include <atomic>
#include <memory>
#include <thread>

namespace qx::test {
namespace {

// Closes the message boxes and editors that calls open, like a user.
class WindowCloser {
public:
    WindowCloser() : m_thread([this] { Run(); }) {}
    ~WindowCloser() {
        m_isDone = true;
        m_thread.join();
    }

private:
    void Run() const {
        while (!m_isDone) {
            const HWND box = FindWindowW(L"#32770", L"QXControls");
            if (box != nullptr)
                PostMessageW(box, WM_COMMAND, IDOK, 0);
            const HWND editor = FindWindowW(L"QXControls.Form", nullptr);
            if (editor != nullptr)
                PostMessageW(editor, WM_CLOSE, 0, 0);
            Sleep(5);
        }
    }
    std::atomic<bool> m_isDone = false;
    std::thread m_thread;
};

// An argument of the parameter's type that nearly every member accepts, with its variable.
class FittingArgument {
public:
    explicit FittingArgument(const LibraryMember::Parameter& parameter) {
        VariantInit(&m_place);
        V_VT(&m_place) = parameter.variant == VT_VARIANT ? VARTYPE{VT_I2} : parameter.variant;
        V_I8(&m_place) = 0;
        if (parameter.variant == VT_BSTR)
            V_BSTR(&m_place) = SysAllocString(L"");
        else if (parameter.variant == VT_DISPATCH)
            V_DISPATCH(&m_place) = NewObject(Wide("QXControls." + parameter.type)).Detach();
        else if (parameter.variant != VT_BOOL)
            V_I2(&m_place) = 1; // as an R4, close to 0
        m_argument =
            parameter.byReference ? Reference(parameter.variant, &V_I8(&m_place)) : m_place;
    }
    FittingArgument(const FittingArgument&) = delete;
    FittingArgument& operator=(const FittingArgument&) = delete;
    ~FittingArgument() { VariantClear(&m_place); }
    [[nodiscard]] VARIANT Get() const { return m_argument; }

private:
    VARIANT m_place;
    VARIANT m_argument;
};

class ForeignObject : public IUnknown {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** out) override {
        return HandOut(this, out); // falsely claims to have every interface
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references; }
    ULONG STDMETHODCALLTYPE Release() override { return --references; }
    ULONG references = 1;
};

WORD FlagsOf(INVOKEKIND kind) {
    return static_cast<WORD>(kind);
}

std::vector<DISPID> NamesOf(INVOKEKIND kind) {
    return (kind & (INVOKE_PROPERTYPUT | INVOKE_PROPERTYPUTREF)) != 0
               ? std::vector<DISPID>{DISPID_PROPERTYPUT}
               : std::vector<DISPID>();
}

class ComCalls : public ComClient {
protected:
    // Calls one member of a new object with matching arguments.
    static ClientCall CallFitting(IDispatch* object, const LibraryMember& member) {
        std::vector<std::unique_ptr<FittingArgument>> arguments;
        std::vector<VARIANT> given;
        for (const auto& parameter : member.parameters) {
            arguments.push_back(std::make_unique<FittingArgument>(parameter));
            given.push_back(arguments.back()->Get());
        }
        ClientCall call =
            Call(object, member.id, FlagsOf(member.kind), given, NamesOf(member.kind));
        return call;
    }
    static void ForEachMember(
        const std::function<void(const LibraryClass&, const LibraryMember&, IDispatch*)>& body) {
        for (const LibraryClass& type : RegisteredLibrary().classes) {
            const auto object = NewObject(Wide("QXControls." + type.name));
            ASSERT_TRUE(object) << type.name;
            for (const LibraryMember& member : type.members)
                body(type, member, object.Get());
        }
    }
};

TEST_F(ComCalls, EveryMemberCanBeCalled) {
    const WindowCloser closer;
    int called = 0;
    ForEachMember([&](const LibraryClass& type, const LibraryMember& member, IDispatch* object) {
        ClientCall call = CallFitting(object, member);
        EXPECT_EQ(call.status, S_OK)
            << type.name << "." << member.name << Hex(call.status) << Narrow(call.text.c_str());
        VariantClear(&call.result);
        ++called;
    });
    EXPECT_GT(called, 400);
}

TEST_F(ComCalls, WrongCallsAreRefusedAndNameTheArgument) {
    ForeignObject foreign;
    ForEachMember([&](const LibraryClass& type, const LibraryMember& member, IDispatch* object) {
        const std::string name = type.name + "." + member.name;
        const auto count = member.parameters.size();
        const WORD flags = FlagsOf(member.kind);
        const auto named = NamesOf(member.kind);
        std::vector<VARIANT> given(count + 1, Int(0));
        EXPECT_EQ(Call(object, member.id, flags, given, named).status, DISP_E_BADPARAMCOUNT)
            << name;
        if (count == 0)
            return;
        VARIANT alien;
        V_VT(&alien) = VT_UNKNOWN;
        V_UNKNOWN(&alien) = &foreign;
        VARIANT array;
        V_VT(&array) = VT_ARRAY | VT_UI1;
        V_ARRAY(&array) = nullptr;
        VARIANT null;
        V_VT(&null) = VT_NULL;
        for (const VARIANT& bad :
             {alien, array, null, Reference(VT_I4, static_cast<LONG*>(nullptr)),
              Reference(VT_VARIANT, static_cast<VARIANT*>(nullptr)), Reference(VT_RECORD, &null)}) {
            given.assign(count, Int(0));
            given.back() = bad;
            // arguments are checked in order, and 0 may be invalid for the others
            const ClientCall call = Call(object, member.id, flags, given, named);
            if (V_VT(&bad) == VT_NULL && member.parameters.back().variant == VT_DISPATCH) {
                // accepted as Nothing
                EXPECT_TRUE(call.status == S_OK || call.error == HRESULT(0x800A01A8)) << name;
                continue;
            }
            const bool isRefused = V_VT(&bad) == VT_NULL ? call.error == HRESULT(0x800A005E)
                                                         : call.status == DISP_E_TYPEMISMATCH;
            EXPECT_TRUE(isRefused || call.error == HRESULT(0x800A01A8)) << name << Hex(call.status);
            EXPECT_TRUE(count > 1 || call.wrongArgument == 0) << name;
        }
    });
    EXPECT_EQ(foreign.references, 1U);
}

TEST_F(ComCalls, MalformedCallsAreRefused) {
    const auto keyboard = NewObject(L"QXControls.QXKeyboardAccess");
    VARIANT one = Int(1);
    DISPID name = DISPID_PROPERTYPUT;
    DISPPARAMS none{};
    DISPPARAMS noArguments{nullptr, nullptr, 1, 0};
    DISPPARAMS noNames{&one, nullptr, 1, 1};
    DISPPARAMS moreNames{&one, &name, 1, 2};
    const auto invoke = [&](DISPID id, WORD flags, DISPPARAMS* given, REFIID iid = IID_NULL) {
        return keyboard->Invoke(id, iid, 0, flags, given, nullptr, nullptr, nullptr);
    };
    const DISPID size = IdOf(keyboard.Get(), L"DirectorySize");
    const DISPID item = IdOf(keyboard.Get(), L"DirectoryItem");
    const DISPID delta = IdOf(keyboard.Get(), L"CommandDelta");
    EXPECT_EQ(invoke(size, kCall, &none), S_OK); // no outputs are wanted
    EXPECT_EQ(invoke(size, kCall, nullptr), E_INVALIDARG);
    EXPECT_EQ(invoke(size, kCall, &none, IID_IUnknown), DISP_E_UNKNOWNINTERFACE);
    EXPECT_EQ(invoke(item, kCall, &noArguments), E_INVALIDARG);
    EXPECT_EQ(invoke(item, kCall, &noNames), E_INVALIDARG);
    EXPECT_EQ(invoke(item, kCall, &moreNames), E_INVALIDARG);
    EXPECT_EQ(invoke(item, kCall, &none), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(invoke(0, kCall, &none), DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(invoke(-5, DISPATCH_PROPERTYPUT, &none), DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(invoke(delta, DISPATCH_PROPERTYGET, &none), DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(invoke(delta, DISPATCH_PROPERTYPUTREF, &noArguments), E_INVALIDARG);

    LPOLESTR names[] = {const_cast<LPOLESTR>(L"mEmReQuEsTaDd"), const_cast<LPOLESTR>(L"lsize"),
                        const_cast<LPOLESTR>(L"nothing")};
    DISPID ids[3] = {};
    EXPECT_EQ(keyboard->GetIDsOfNames(IID_NULL, names, 3, 0, ids), DISP_E_UNKNOWNNAME);
    EXPECT_EQ(ids[1], 2);
    EXPECT_EQ(ids[2], DISPID_UNKNOWN);
    EXPECT_EQ(keyboard->GetIDsOfNames(IID_NULL, nullptr, 1, 0, ids), E_INVALIDARG);
    EXPECT_EQ(keyboard->QueryInterface(IID_IDispatch, nullptr), E_POINTER);
    EXPECT_EQ(keyboard->GetTypeInfo(0, 0, nullptr), E_POINTER);
}

TEST_F(ComCalls, NamedArgumentsGoToTheirPlaces) {
    const auto settings = NewObject(L"QXControls.QXProgSettings");
    const DISPID define = IdOf(settings.Get(), L"DefPOSColorBlock");
    const DISPID read = IdOf(settings.Get(), L"POSColorBlock");
    // named arguments first, in any order: the colour 77, then the block 3
    EXPECT_EQ(Call(settings.Get(), define, kCall, {Int(3), LongInt(77)}, {1, 0}).status, S_OK);
    EXPECT_EQ(Call(settings.Get(), read, kCall, {Int(3)}).Long(), 77);
    EXPECT_EQ(Call(settings.Get(), define, kCall, {Int(3), LongInt(77)}, {1, 1}).status,
              DISP_E_PARAMNOTFOUND);
    EXPECT_EQ(Call(settings.Get(), define, kCall, {Int(3), LongInt(77)}, {1, 9}).status,
              DISP_E_PARAMNOTFOUND);
}

// The types that a host may pass for an Integer.
TEST_F(ComCalls, NumbersOfEveryTypeAreConvertedOrOverflow) {
    const auto settings = NewObject(L"QXControls.QXProgSettings");
    const DISPID port = IdOf(settings.Get(), L"ChipcardPort");
    const auto put = [&](VARIANT value) {
        const ClientCall call =
            Call(settings.Get(), port, DISPATCH_PROPERTYPUT, {value}, {DISPID_PROPERTYPUT});
        return call.status == DISP_E_EXCEPTION ? call.error : call.status;
    };
    const auto held = [&] { return Call(settings.Get(), port, kCall, {}).Integer(); };
    for (const VARTYPE type : {VT_I1, VT_UI1, VT_I2, VT_UI2, VT_I4, VT_UI4, VT_INT, VT_UINT, VT_I8,
                               VT_UI8, VT_R4, VT_R8, VT_CY, VT_DATE, VT_DECIMAL, VT_BSTR}) {
        VARIANT seven = Int(7);
        ASSERT_EQ(VariantChangeType(&seven, &seven, 0, type), S_OK) << type;
        put(Int(1));
        EXPECT_EQ(put(seven), S_OK) << type;
        EXPECT_EQ(held(), 7) << type;
        put(Int(1));
        EXPECT_EQ(
            put(type == VT_DECIMAL ? Reference(type, &seven) : Reference(type, &V_I8(&seven))),
            S_OK)
            << type;
        EXPECT_EQ(held(), 7) << type;
        VariantClear(&seven);
    }
    for (const VARTYPE type :
         {VT_UI2, VT_I4, VT_UI4, VT_I8, VT_UI8, VT_R4, VT_R8, VT_CY, VT_BSTR}) {
        VARIANT large = LongInt(32768);
        ASSERT_EQ(VariantChangeType(&large, &large, 0, type), S_OK) << type;
        EXPECT_EQ(put(large), HRESULT(0x800A0006)) << type;
        VariantClear(&large);
    }
    VARIANT yes;
    V_VT(&yes) = VT_BOOL;
    V_BOOL(&yes) = VARIANT_TRUE;
    EXPECT_EQ(put(yes), S_OK);
    EXPECT_EQ(held(), -1);
    VARIANT inner = Reference(VT_BOOL, &V_BOOL(&yes));
    VARIANT outer = Reference(VT_VARIANT, &inner);
    put(Int(1));
    EXPECT_EQ(put(Reference(VT_VARIANT, &outer)), S_OK);
    EXPECT_EQ(held(), -1);
    VARIANT self = Reference(VT_VARIANT, &self);
    EXPECT_EQ(put(self), DISP_E_TYPEMISMATCH);
}

TEST_F(ComCalls, ResultsAreWrittenToTheHostsVariables) {
    const auto keyboard = NewObject(L"QXControls.QXKeyboardAccess");
    ASSERT_TRUE(Call(keyboard.Get(), IdOf(keyboard.Get(), L"Init"), kCall, {}).Flag())
        << "no driver beside the program";
    const DISPID write = IdOf(keyboard.Get(), L"WriteIntoMemory");
    const DISPID read = IdOf(keyboard.Get(), L"ReadFromMemory");
    const wchar_t memory[] = {0, 1, 0, 255, 65};
    VARIANT block;
    V_VT(&block) = VT_BSTR;
    V_BSTR(&block) = SysAllocStringLen(memory, 5);
    EXPECT_TRUE(Call(keyboard.Get(), write, kCall, {block, LongInt(4096), LongInt(5)}).Flag());

    BSTR text = SysAllocString(L"earlier");
    EXPECT_EQ(
        Call(keyboard.Get(), read, kCall, {Reference(VT_BSTR, &text), LongInt(4096), LongInt(5)})
            .status,
        S_OK);
    ASSERT_EQ(SysStringLen(text), 5U);
    EXPECT_EQ(std::wstring(text, 5), std::wstring(memory, 5));

    VARIANT variant = Int(9);
    EXPECT_EQ(Call(keyboard.Get(), read, kCall,
                   {Reference(VT_VARIANT, &variant), LongInt(4096), LongInt(5)})
                  .status,
              S_OK);
    EXPECT_EQ(V_VT(&variant), VT_BSTR);
    EXPECT_EQ(SysStringLen(V_BSTR(&variant)), 5U);

    // whatever the variable contained before
    VARIANT array;
    V_VT(&array) = VT_ARRAY | VT_UI1;
    V_ARRAY(&array) = SafeArrayCreateVector(VT_UI1, 0, 3);
    VARIANT null;
    V_VT(&null) = VT_NULL;
    VARIANT wide;
    V_VT(&wide) = VT_BSTR;
    V_BSTR(&wide) = SysAllocString(L"\u2026");
    for (VARIANT held : {array, null, wide, Dispatch(nullptr)}) {
        const ClientCall call = Call(keyboard.Get(), read, kCall,
                                     {Reference(VT_VARIANT, &held), LongInt(4096), LongInt(5)});
        EXPECT_EQ(call.status, S_OK) << Narrow(call.text.c_str());
        ASSERT_EQ(V_VT(&held), VT_BSTR);
        EXPECT_EQ(SysStringLen(V_BSTR(&held)), 5U);
        VariantClear(&held);
    }
    EXPECT_EQ(Call(keyboard.Get(), read, kCall,
                   {Reference(VT_BSTR, static_cast<BSTR*>(nullptr)), LongInt(4096), LongInt(5)})
                  .status,
              DISP_E_TYPEMISMATCH);

    // a failed read leaves the variable unchanged
    EXPECT_FALSE(
        Call(keyboard.Get(), read, kCall, {Reference(VT_BSTR, &text), LongInt(-1), LongInt(5)})
            .Flag());
    EXPECT_EQ(SysStringLen(text), 5U);
    SysFreeString(text);
    VariantClear(&variant);
    VariantClear(&block);
}

TEST_F(ComCalls, ProgressComesToTheHostsWindow) {
    const auto keyboard = NewObject(L"QXControls.QXKeyboardAccess");
    const auto call = [&](const wchar_t* name, std::vector<VARIANT> arguments = {}) {
        return Call(keyboard.Get(), IdOf(keyboard.Get(), name), kCall, std::move(arguments));
    };
    ASSERT_TRUE(call(L"Init").Flag());
    const HWND window = CreateWindowExW(0, L"STATIC", nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                        nullptr, nullptr);
    const auto handle = static_cast<LONG>(reinterpret_cast<LONG_PTR>(window));
    EXPECT_EQ(
        call(L"SetNotificationValues", {LongInt(handle), LongInt(WM_APP + 3), LongInt(7)}).status,
        S_OK);
    call(L"DataTransferPrepare");
    call(L"MemRequestAdd", {LongInt(2), LongInt(4352), LongInt(50)});
    EXPECT_EQ(call(L"Upload").Long(), 0);
    MSG message{};
    LPARAM percent = -1;
    while (PeekMessageW(&message, window, WM_APP + 3, WM_APP + 3, PM_REMOVE)) {
        EXPECT_EQ(message.wParam, 7U);
        EXPECT_GE(message.lParam, percent);
        percent = message.lParam;
    }
    EXPECT_EQ(percent, 100);
    call(L"SetNotificationValues", {LongInt(0), LongInt(0)});
    DestroyWindow(window);
}

TEST_F(ComCalls, ErrorsHaveTheNumbersThatHostsKnow) {
    const auto layer = NewObject(L"QXControls.FuncKeyLayer");
    ClientCall call = Call(layer.Get(), IdOf(layer.Get(), L"GetKeyDesc"), kCall, {Int(24)});
    EXPECT_EQ(call.status, DISP_E_EXCEPTION);
    EXPECT_EQ(call.error, HRESULT(0x800A0009));
    EXPECT_EQ(call.text, L"FuncKeyLayer.GetKeyDesc: function key 24 is not one of 0 to 23");
    const auto described = [] {
        ComPtr<IErrorInfo> info;
        EXPECT_EQ(GetErrorInfo(0, info.Out()), S_OK);
        BSTR text = nullptr;
        EXPECT_EQ(info->GetDescription(&text), S_OK);
        const std::wstring description = text;
        SysFreeString(text);
        return description;
    };
    EXPECT_EQ(described(), call.text);

    const auto sequence = NewObject(L"QXControls.KeySequence");
    const DISPID copy = IdOf(sequence.Get(), L"CopyContent");
    const auto barcode = NewObject(L"QXControls.QXBarcode");
    EXPECT_EQ(Call(barcode.Get(), IdOf(barcode.Get(), L"ButtonEdit"), DISPATCH_PROPERTYPUTREF,
                   {Dispatch(nullptr)}, {DISPID_PROPERTYPUT})
                  .error,
              HRESULT(0x800A01A8));
    EXPECT_EQ(Call(sequence.Get(), copy, kCall, {Int(3)}).error, HRESULT(0x800A01A8));
    EXPECT_EQ(Call(sequence.Get(), copy, kCall, {Dispatch(layer.Get())}).status,
              DISP_E_TYPEMISMATCH);
    for (const VARTYPE nothing : {VT_NULL, VT_EMPTY}) { // script hosts may use either for Nothing
        VARIANT value;
        V_VT(&value) = nothing;
        EXPECT_EQ(Call(barcode.Get(), IdOf(barcode.Get(), L"Keyboard"), DISPATCH_PROPERTYPUT,
                       {value}, {DISPID_PROPERTYPUT})
                      .status,
                  S_OK);
    }
    VARIANT error;
    V_VT(&error) = VT_ERROR;
    V_ERROR(&error) = E_FAIL;
    EXPECT_EQ(Call(sequence.Get(), copy, kCall, {error}).status, DISP_E_TYPEMISMATCH);
    EXPECT_EQ(described(), L"KeySequence.CopyContent: oSource: a value of an unsupported type");
}

} // namespace
} // namespace qx::test
