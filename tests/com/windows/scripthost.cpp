// scripthost SCRIPT [ARGUMENT...]: runs a VBScript whose procedures handle the events of objects.
//
// The script has an object Host; scripts for the system's script hosts too call it WScript:
//   ConnectObject object, prefix  events call the procedure prefix + event name from now on
//   DisconnectObject object       ends the connection
//   Show control                  places a control on a new form
//   Hide control                  removes it again
//   Press control, text           the user's actions: on a button or check box,
//   Choose control, text          a line of a list,
//   Pick control, name            a key, by the beginning of its accessible name,
//   Slide control, position       a slider,
//   Type control, text            a text field
//   Echo text                     writes a line
//   Argument(index)               an argument of the command line, from 0
//   Quit status                   sets the exit status (initially 1); the script continues
// An error in the script is written to standard error, and the exit status is 1.
#include "com/windows/UserForm.h"

#include <activscp.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <memory>
#include <vector>

namespace {

using namespace qx::com;

constexpr CLSID kVBScript = {
    0xB54F3741, 0x5B07, 0x11CF, {0xA4, 0xB0, 0x00, 0xAA, 0x00, 0x4A, 0x55, 0xE8}};

void Check(HRESULT result, const char* step) {
    if (FAILED(result)) {
        char text[80];
        std::snprintf(text, sizeof(text), "%s: 0x%08lX", step, static_cast<unsigned long>(result));
        throw std::runtime_error(text);
    }
}

// IUnknown and the unused half of IDispatch.
template <typename Interface>
class Counted : public Interface {
public:
    virtual ~Counted() = default;
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
        if (!IsEqualIID(iid, IID_IUnknown) && !IsEqualIID(iid, __uuidof(Interface))) {
            *out = nullptr;
            return E_NOINTERFACE;
        }
        return HandOut(this, out);
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --m_references;
        if (left == 0)
            delete this;
        return left;
    }

private:
    ULONG m_references = 1;
};

class Dispatching : public Counted<IDispatch> {
public:
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return DISP_E_UNKNOWNNAME;
    }
};

// Calls the script's procedures. Typed references become references to variants, as the engine
// requires, and the answers are copied back.
class Sink : public Dispatching {
public:
    Sink(IDispatch* script, std::wstring prefix, ITypeInfo* events)
        : m_script(script), m_prefix(std::move(prefix)), m_events(events) {}

    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID locale, WORD, DISPPARAMS* given,
                                     VARIANT*, EXCEPINFO* exception, UINT*) override {
        DISPID procedure = DISPID_UNKNOWN;
        if (!FindProcedure(id, procedure))
            return S_OK;
        std::vector<VARIANT> places(given->cArgs), arguments(given->cArgs);
        for (UINT i = 0; i < given->cArgs; ++i) {
            VariantInit(&places[i]);
            VariantCopyInd(&places[i], &given->rgvarg[i]);
            V_VT(&arguments[i]) = VT_BYREF | VT_VARIANT;
            V_VARIANTREF(&arguments[i]) = &places[i];
        }
        DISPPARAMS call{arguments.data(), nullptr, given->cArgs, 0};
        const HRESULT result = m_script->Invoke(procedure, IID_NULL, locale, DISPATCH_METHOD, &call,
                                                nullptr, exception, nullptr);
        for (UINT i = 0; i < given->cArgs; ++i) {
            CopyBack(given->rgvarg[i], places[i]);
            VariantClear(&places[i]);
        }
        return result;
    }

private:
    bool FindProcedure(DISPID event, DISPID& procedure) const {
        BSTR name = nullptr;
        UINT count = 0;
        if (FAILED(m_events->GetNames(event, &name, 1, &count)) || count == 0)
            return false;
        std::wstring text = m_prefix + name;
        SysFreeString(name);
        LPOLESTR pointer = text.data();
        return SUCCEEDED(m_script->GetIDsOfNames(IID_NULL, &pointer, 1, 0, &procedure));
    }

    static void CopyBack(VARIANT& target, VARIANT& answer) {
        if (!V_ISBYREF(&target))
            return;
        const auto type = static_cast<VARTYPE>(V_VT(&target) & ~VT_BYREF);
        if (type == VT_VARIANT) {
            VariantCopy(V_VARIANTREF(&target), &answer);
        } else if (SUCCEEDED(VariantChangeType(&answer, &answer, 0, type))) {
            if (type == VT_BSTR) {
                std::swap(*V_BSTRREF(&target), V_BSTR(&answer));
            } else if (type == VT_I4) {
                *V_I4REF(&target) = V_I4(&answer);
            } else if (type == VT_UI1) {
                *V_UI1REF(&target) = V_UI1(&answer);
            } else { // VT_BOOL, VT_I2
                *V_I2REF(&target) = V_I2(&answer);
            }
        }
    }

    ComPtr<IDispatch> m_script;
    std::wstring m_prefix;
    ComPtr<ITypeInfo> m_events;
};

class ScriptHost : public Dispatching {
public:
    explicit ScriptHost(std::vector<std::wstring> arguments) : m_arguments(std::move(arguments)) {}

    void SetScript(IDispatch* script) { m_script = script; }
    [[nodiscard]] int Status() const { return m_status; }
    void DisconnectAll() {
        m_script = nullptr;
        m_forms.clear();
        while (!m_connections.empty())
            Disconnect(m_connections.begin()->first);
    }

    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID,
                                            DISPID* ids) override {
        const auto& known = Methods();
        const auto found = std::ranges::find_if(
            known, [&](const Method& method) { return _wcsicmp(names[0], method.name) == 0; });
        if (found == known.end())
            return DISP_E_UNKNOWNNAME;
        ids[0] = static_cast<DISPID>(found - known.begin()) + 1;
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* given,
                                     VARIANT* result, EXCEPINFO* exception, UINT*) override {
        const Method& method = Methods().at(static_cast<std::size_t>(id - 1));
        if (given->cArgs != method.arguments)
            return DISP_E_BADPARAMCOUNT;
        std::vector<VARIANT> arguments(given->cArgs); // in order
        for (UINT i = 0; i < given->cArgs; ++i)
            VariantCopyInd(&arguments[i], &given->rgvarg[given->cArgs - 1 - i]);
        HRESULT status = S_OK;
        try {
            const VARIANT answer = method.run(*this, arguments);
            if (result != nullptr)
                *result = answer;
        } catch (const std::exception& error) {
            status = DISP_E_EXCEPTION;
            const std::string text = error.what();
            exception->scode = E_FAIL;
            exception->bstrDescription = SysAllocString(Wide(text).c_str());
        }
        for (VARIANT& argument : arguments)
            VariantClear(&argument);
        return status;
    }

private:
    struct Connection {
        ComPtr<IConnectionPoint> point;
        DWORD cookie;
    };

    using Arguments = std::vector<VARIANT>;
    struct Method {
        const wchar_t* name;
        UINT arguments;
        std::function<VARIANT(ScriptHost&, Arguments&)> run;
    };
    static const std::array<Method, 12>& Methods() {
        using Form = qx::test::UserForm;
        // A user action on a form, with a text.
        const auto act = [](void (Form::*action)(const std::wstring&)) {
            return [action](ScriptHost& self, Arguments& given) {
                (self.FormOf(V_DISPATCH(&given[0])).*action)(V_BSTR(&given[1]));
                return VARIANT{};
            };
        };
        const auto simple = [](auto action) {
            return [action](ScriptHost& self, Arguments& given) {
                action(self, given);
                return VARIANT{};
            };
        };
        static const std::array<Method, 12> methods{{
            {L"ConnectObject", 2, simple([](ScriptHost& self, Arguments& given) {
                 self.Connect(V_DISPATCH(&given[0]), V_BSTR(&given[1]));
             })},
            {L"DisconnectObject", 1, simple([](ScriptHost& self, Arguments& given) {
                 self.Disconnect(V_DISPATCH(&given[0]));
             })},
            {L"Show", 1, simple([](ScriptHost& self, Arguments& given) {
                 IDispatch* const control = V_DISPATCH(&given[0]);
                 self.m_forms[control] = std::make_unique<Form>(control);
             })},
            {L"Hide", 1, simple([](ScriptHost& self, Arguments& given) {
                 self.m_forms.erase(V_DISPATCH(&given[0]));
             })},
            {L"Press", 2, act(&Form::Press)},
            {L"Choose", 2, act(&Form::Choose)},
            {L"Pick", 2, act(&Form::Pick)},
            {L"Type", 2, act(&Form::Type)},
            {L"Slide", 2, simple([](ScriptHost& self, Arguments& given) {
                 self.FormOf(V_DISPATCH(&given[0])).Slide(V_I2(&given[1]));
             })},
            {L"Echo", 1, simple([](ScriptHost&, Arguments& given) {
                 Check(VariantChangeType(&given[0], &given[0], VARIANT_ALPHABOOL, VT_BSTR), "Echo");
                 std::printf("%ls\n", V_BSTR(&given[0]));
                 std::fflush(stdout);
             })},
            {L"Argument", 1,
             [](ScriptHost& self, Arguments& given) {
                 VARIANT text;
                 V_VT(&text) = VT_BSTR;
                 V_BSTR(&text) = SysAllocString(
                     self.m_arguments.at(static_cast<size_t>(V_I2(&given[0]))).c_str());
                 return text;
             }},
            {L"Quit", 1,
             simple([](ScriptHost& self, Arguments& given) { self.m_status = V_I2(&given[0]); })},
        }};
        return methods;
    }

    qx::test::UserForm& FormOf(IDispatch* control) {
        const auto found = m_forms.find(control);
        if (found == m_forms.end())
            throw std::runtime_error("the control is on no form");
        return *found->second;
    }

    void Connect(IDispatch* object, const wchar_t* prefix) {
        const ComPtr<IUnknown> source(object);
        const auto info = source.As<IProvideClassInfo2>(IID_IProvideClassInfo2);
        const auto container = source.As<IConnectionPointContainer>(IID_IConnectionPointContainer);
        if (!info || !container)
            throw std::runtime_error("Connect: an object without events");
        GUID events{};
        Check(info->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &events), "GetGUID");
        ComPtr<ITypeInfo> description;
        ComPtr<ITypeInfo> own;
        ComPtr<ITypeLib> library;
        UINT index = 0;
        Check(info->GetClassInfo(own.Out()), "GetClassInfo");
        Check(own->GetContainingTypeLib(library.Out(), &index), "GetContainingTypeLib");
        Check(library->GetTypeInfoOfGuid(events, description.Out()), "GetTypeInfoOfGuid");
        Connection connection;
        Check(container->FindConnectionPoint(events, connection.point.Out()),
              "FindConnectionPoint");
        const auto sink = ComPtr<Sink>::Attach(new Sink(m_script.Get(), prefix, description.Get()));
        Check(connection.point->Advise(sink.Get(), &connection.cookie), "Advise");
        m_connections[object] = std::move(connection);
    }
    void Disconnect(IDispatch* object) {
        const auto found = m_connections.find(object);
        if (found == m_connections.end())
            return;
        found->second.point->Unadvise(found->second.cookie);
        m_connections.erase(found);
    }

    std::vector<std::wstring> m_arguments;
    ComPtr<IDispatch> m_script;
    std::map<IDispatch*, Connection> m_connections;
    std::map<IDispatch*, std::unique_ptr<qx::test::UserForm>> m_forms;
    int m_status = 1;
};

class ScriptSite : public Counted<IActiveScriptSite> {
public:
    explicit ScriptSite(ScriptHost* host) : m_host(host) {}

    HRESULT STDMETHODCALLTYPE GetLCID(LCID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetItemInfo(LPCOLESTR, DWORD mask, IUnknown** item,
                                          ITypeInfo** info) override {
        if (info != nullptr)
            *info = nullptr;
        if ((mask & SCRIPTINFO_IUNKNOWN) != 0) {
            m_host->AddRef();
            *item = m_host.Get();
        }
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetDocVersionString(BSTR*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE OnScriptTerminate(const VARIANT*, const EXCEPINFO*) override {
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE OnStateChange(SCRIPTSTATE) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnScriptError(IActiveScriptError* error) override {
        EXCEPINFO exception{};
        DWORD context = 0;
        ULONG line = 0;
        LONG column = 0;
        error->GetExceptionInfo(&exception);
        error->GetSourcePosition(&context, &line, &column);
        std::fprintf(stderr, "line %lu: %ls (0x%08lX)\n", line + 1,
                     exception.bstrDescription == nullptr ? L"" : exception.bstrDescription,
                     static_cast<unsigned long>(exception.scode));
        SysFreeString(exception.bstrSource);
        SysFreeString(exception.bstrDescription);
        SysFreeString(exception.bstrHelpFile);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE OnEnterScript() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnLeaveScript() override { return S_OK; }

private:
    ComPtr<ScriptHost> m_host;
};

std::wstring ContentOf(const wchar_t* file) {
    std::ifstream stream(std::filesystem::path(file), std::ios::binary);
    if (!stream)
        throw std::runtime_error("cannot read the script");
    const std::string text((std::istreambuf_iterator<char>(stream)), {});
    return {text.begin(), text.end()}; // scripts are ASCII
}

int Run(int argc, wchar_t** argv) {
    ComPtr<IActiveScript> engine;
    Check(CoCreateInstance(kVBScript, nullptr, CLSCTX_INPROC_SERVER, IID_IActiveScript,
                           reinterpret_cast<void**>(engine.Out())),
          "vbscript.dll");
    const auto parser = engine.As<IActiveScriptParse>(__uuidof(IActiveScriptParse));
    const auto host = ComPtr<ScriptHost>::Attach(new ScriptHost({argv + 2, argv + argc}));
    const auto site = ComPtr<ScriptSite>::Attach(new ScriptSite(host.Get()));
    Check(engine->SetScriptSite(site.Get()), "SetScriptSite");
    Check(parser->InitNew(), "InitNew");
    for (const wchar_t* const name : {L"Host", L"WScript"})
        Check(engine->AddNamedItem(name, SCRIPTITEM_ISVISIBLE), "AddNamedItem");
    Check(engine->SetScriptState(SCRIPTSTATE_STARTED), "SetScriptState");
    ComPtr<IDispatch> script;
    Check(engine->GetScriptDispatch(nullptr, script.Out()), "GetScriptDispatch");
    host->SetScript(script.Get());
    const HRESULT result = parser->ParseScriptText(ContentOf(argv[1]).c_str(), nullptr, nullptr,
                                                   nullptr, 0, 0, 0, nullptr, nullptr);
    host->DisconnectAll();
    script = nullptr;
    engine->Close();
    return FAILED(result) ? 1 : host->Status();
}

} // namespace

int wmain(int argc, wchar_t** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: scripthost SCRIPT [ARGUMENT...]\n");
        return 2;
    }
    CoInitialize(nullptr);
    int status = 1;
    try {
        status = Run(argc, argv);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "scripthost: %s\n", error.what());
    }
    CoUninitialize();
    return status;
}
