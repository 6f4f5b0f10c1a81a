#include "com/windows/Server.h"

#include "com/Library.h"
#include "com/windows/Machine.h"

#include <algorithm>
#include <atomic>
#include <mutex>
#include <vector>

namespace qx::com {
namespace {

HINSTANCE g_module = nullptr;
std::atomic<long> g_uses = 0;

// Never destroyed: hosts unload the server while they hold the loader lock, under which nothing may
// be released.
Machine& TheMachine() {
    static auto* const machine = new Machine;
    return *machine;
}

} // namespace

GUID GuidOf(std::string_view text) {
    GUID guid{};
    if (!text.empty() && FAILED(CLSIDFromString(Wide(text).c_str(), &guid)))
        throw std::logic_error("a table with a malformed identifier");
    return guid;
}

std::span<const ServedClass> ServedClasses() {
    static const std::vector<ServedClass> classes = [] {
        std::vector<ServedClass> served;
        for (const Class* type : Classes())
            served.push_back(
                {*type, GuidOf(type->clsid), GuidOf(type->iid), GuidOf(type->eventsIid)});
        return served;
    }();
    return classes;
}

const ServedClass& ServedOf(const Class& type) {
    const auto served = std::ranges::find_if(
        ServedClasses(), [&](const ServedClass& candidate) { return &candidate.type == &type; });
    if (served == ServedClasses().end())
        throw std::logic_error("a class that the library does not list");
    return *served;
}

const ServedClass* FindServed(REFCLSID clsid) {
    const auto served = std::ranges::find_if(ServedClasses(), [&](const ServedClass& candidate) {
        return IsEqualGUID(candidate.clsid, clsid);
    });
    return served == ServedClasses().end() ? nullptr : &*served;
}

std::wstring ProgIdOf(const Class& type) {
    return Wide(kLibraryName) + L"." + Wide(type.name);
}

DWORD MiscStatusOf(const Class& type) {
    const DWORD control = OLEMISC_RECOMPOSEONRESIZE | OLEMISC_CANTLINKINSIDE | OLEMISC_INSIDEOUT |
                          OLEMISC_ACTIVATEWHENVISIBLE | OLEMISC_SETCLIENTSITEFIRST;
    return type.look == Look::Invisible ? control | OLEMISC_INVISIBLEATRUNTIME : control;
}

void SetModule(HINSTANCE module) {
    g_module = module;
}

HINSTANCE Module() {
    return g_module;
}

std::wstring FileOfModule(HINSTANCE module) {
    std::wstring file(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length =
            GetModuleFileNameW(module, file.data(), static_cast<DWORD>(file.size()));
        if (length < file.size()) {
            file.resize(length);
            return file;
        }
        file.resize(2 * file.size());
    }
}

HRESULT OwnTypeLibrary(ITypeLib** library) {
    static std::mutex mutex;
    static ITypeLib* loaded = nullptr; // never released, like the machine above
    const std::lock_guard lock(mutex);
    if (loaded == nullptr) {
        const HRESULT result = LoadTypeLibEx(FileOfModule(g_module).c_str(), REGKIND_NONE, &loaded);
        if (FAILED(result))
            return result;
    }
    loaded->AddRef();
    *library = loaded;
    return S_OK;
}

HRESULT OwnTypeInfo(REFGUID guid, ITypeInfo** info) {
    ComPtr<ITypeLib> library;
    const HRESULT result = OwnTypeLibrary(library.Out());
    return FAILED(result) ? result : library->GetTypeInfoOfGuid(guid, info);
}

const Environment& ServerEnvironment() {
    return TheMachine().ForObjects();
}

InUse::InUse() {
    ++g_uses;
}

InUse::~InUse() {
    --g_uses;
}

void LockServer(bool fLock) {
    g_uses += fLock ? 1 : -1;
}

bool CanUnload() {
    if (g_uses != 0)
        return false;
    TheMachine().LetDriverGo();
    return true;
}

} // namespace qx::com
